"""The checker on a kernel, a BusyBox and a byte order of its own. One machine runs every case."""

import os
import re
import shlex
import subprocess
from pathlib import Path

import pytest

MACHINE = Path(__file__).resolve().parents[2] / "lab/machine"
OUR_WEB_SERVER = "ip addr add 203.0.113.80/32 dev lo; ip addr add 2001:db8:80::80/128 dev lo"
IN_64_BITS = pytest.mark.skipif(os.environ["MACHINE"] != "s390x", reason="its BusyBox has times of 32 bits")
RUN_CASES = """
check() {
    machine-network
    rm -f /tmp/*
    printf 'nameserver %s\\n' 198.51.100.53 2001:db8:53::53 >/etc/resolv.conf
    sh -c "$2" 2>&1
    echo "$1 -> $?"
}
"""
CASES = [
    pytest.param("tolvane -46", 17, id="both families"),
    pytest.param("ip addr del 192.0.2.10/24 dev eth0; tolvane -46", 4 + 16, id="no IPv4 address"),
    pytest.param("ip addr del 2001:db8:0:1::10/64 dev eth0; tolvane -46", 1 + 64, id="no IPv6 address"),
    pytest.param("ip route del default; tolvane -46", 5 + 16, id="no IPv4 route"),
    pytest.param("ip -6 route del default; tolvane -46", 1 + 80, id="no IPv6 route"),
    pytest.param("for v in 4 6; do ip -$v route del default; ip -$v route add default dev eth0; done; tolvane -46",
                 5 + 80, id="default routes without a next hop"),
    pytest.param("for i in $(seq 9); do ip route add 198.18.$i.0/24 via 192.0.2.1;"
                 "ip -6 route add 2001:db8:$i::/48 via 2001:db8:0:1::1; done; tolvane -46", 17, id="many routes"),
    pytest.param("ip -6 route del default; ip -6 route add default via fe80::1 dev eth0; tolvane -46", 17,
                 id="link-local next hop"),
    pytest.param(": >/etc/resolv.conf; tolvane -46", 6 + 96, id="no name server"),
    pytest.param("sed -i s/53$/99/ /etc/resolv.conf; tolvane -46", 8 + 128, id="silent name servers"),
    pytest.param("echo nameserver fe80::1 >/etc/resolv.conf; tolvane -46", 17, id="link-local name server"),
    pytest.param(OUR_WEB_SERVER + "; tolvane -46", 9 + 144, id="web server refuses"),
    pytest.param("ip route add 203.0.113.80 via 192.0.2.66; arp -s 192.0.2.66 00:00:5e:00:53:66;"
                 "ip -6 route add 2001:db8:80::80 via 2001:db8:0:1::66; tolvane -46 -nrt", 9 + 144,
                 id="web server does not connect"),
    pytest.param(OUR_WEB_SERVER + "; httpd -h /tmp; tolvane -46; code=$?; kill $(pidof httpd); exit $code", 10 + 160,
                 id="no document"),
    pytest.param("tolvane -trm eth1,eth0 -46 && exit 1; grep -qx 238 /tmp/tolvaneresult", 0, id="terminal mode"),
    pytest.param("tolvane -trm eth0 -46; " + OUR_WEB_SERVER + "; tolvane -trm eth0 -46", 17, id="confirmed by DNS"),
    pytest.param("ip addr flush dev eth0; tolvane -trm eth0", 2, id="terminal mode without an address"),
    pytest.param("tolvane-explain 145 | grep -qx 'IPv6: look at the firewall, then the router, then the probe server'",
                 0, id="tolvane-explain"),
    pytest.param("date -s @2147483600; tolvane -trm eth0; date -s @2147483700; " + OUR_WEB_SERVER + "; tolvane -trm eth0",
                 1, id="a success before 2038, later", marks=IN_64_BITS),
    pytest.param("date -s @4102444800; tolvane -trm eth0; grep -q ^41024448 /tmp/tolvaneresult", 0, id="in 2100",
                 marks=IN_64_BITS),
    pytest.param("tolvane-wait -q -t 9 -46", 0, id="waiting for what works"),
    pytest.param("ip route del default; tolvane-wait -q -t 3", 1, id="waiting in vain"),
]


@pytest.fixture(scope="module")
def statuses():
    calls = [f"check {shlex.quote(case.id)} {shlex.quote(case.values[0])}" for case in CASES]
    command = [MACHINE, os.environ["MACHINE"], "sh", "-c", RUN_CASES + "\n".join(calls)]
    printed = subprocess.run(command, stdout=subprocess.PIPE, text=True, check=True).stdout
    print(printed)
    return dict(re.findall("^(.*) -> (.*)$", printed, re.MULTILINE))


@pytest.mark.parametrize("commands, status", CASES)
def test_machine(statuses, request, commands, status):
    assert statuses[request.node.callspec.id] == str(status)
