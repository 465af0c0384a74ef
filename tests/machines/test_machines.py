"""The checker on a kernel, a BusyBox and a byte order of its own. One machine runs every case."""

import os
import re
import subprocess
from pathlib import Path

import pytest

MACHINE = Path(__file__).resolve().parents[2] / "lab/machine"
IN_64_BITS = pytest.mark.skipif(os.environ["MACHINE"] != "s390x", reason="its BusyBox has times of 32 bits")
RESTORE = """
machine-network
rm -f /tmp/*
printf 'nameserver %s\\n' 198.51.100.53 2001:db8:53::53 >/etc/resolv.conf
"""
WITHOUT_NEXT_HOP = """
for version in 4 6; do
    ip -$version route del default
    ip -$version route add default dev eth0
done
"""
OUR_WEB_SERVER = "ip addr add 203.0.113.80/32 dev lo; ip addr add 2001:db8:80::80/128 dev lo\n"
BEFORE_2038 = "date -s @2147483600; tolvane -trm eth0; date -s @2147483700\n"
CASES = [
    pytest.param("tolvane -46", 17, id="both-families"),
    pytest.param(WITHOUT_NEXT_HOP + "tolvane -46", 5 + 80, id="default-routes-without-a-next-hop"),
    pytest.param("echo nameserver fe80::1 >/etc/resolv.conf; tolvane -46", 17, id="link-local-name-server"),
    pytest.param("tolvane -trm eth1,eth0 -46 && exit 1; grep -qx 238 /tmp/tolvaneresult", 0, id="terminal-mode"),
    pytest.param(BEFORE_2038 + OUR_WEB_SERVER + "tolvane -trm eth0", 1, id="a-success-before-2038", marks=IN_64_BITS),
    pytest.param("date -s @4102444800; tolvane -trm eth0; grep -q ^41024448 /tmp/tolvaneresult", 0, id="in-2100",
                 marks=IN_64_BITS),
]


# Each case is a subshell of one script, which prints its status after its name.
@pytest.fixture(scope="module")
def statuses():
    script = "".join(f"{RESTORE}(\n{case.values[0]}\n) 2>&1\necho '{case.id} ->' $?\n" for case in CASES)
    command = [MACHINE, os.environ["MACHINE"], "sh", "-c", script]
    printed = subprocess.run(command, stdout=subprocess.PIPE, text=True, check=True).stdout
    print(printed)
    return dict(re.findall("^(.*) -> (.*)$", printed, re.MULTILINE))


@pytest.mark.parametrize("commands, status", CASES)
def test_machine(statuses, request, commands, status):
    assert statuses[request.node.callspec.id] == str(status)
