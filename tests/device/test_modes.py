"""Both modes from end to end: each outcome, what is printed for it, and what a terminal run leaves behind."""

import subprocess
import time

import pytest
from conftest import A, AAAA, document, packed, page, record, response, right_answer

IPV4_WORKS, IPV6_WORKS = (f"{family} Internet connection is successful.\n" for family in ("IPv4", "IPv6"))
MISSING = "Network Interface eth0 does not set {} address.\n".format


def test_working_connection(online):
    for arguments, code, out in [([], 1, ""), (["-d"], 1, IPV4_WORKS), (["-6", "-D"], 16, IPV6_WORKS),
                                 (["-46", "-d", "-i", "eth0"], 17, IPV4_WORKS + IPV6_WORKS),
                                 (["-WOI", "-DEV4", "-d"], 1, IPV4_WORKS)]:
        assert online.run(*arguments)[:2] == (code, out), arguments
    hosts = [(query.name.split(".")[0], query.kind) for query in online.queries]
    assert hosts == [("v4-b", A), ("v4-b", A), ("v6-b", AAAA), ("v4-b", A), ("v6-b", AAAA), ("v4-c", A)]
    assert online.requests[-1] == b"GET /lib/tolvane4.xml HTTP/1.0\r\nHost: v4-c.probe.varnoko.example:80\r\n\r\n"


@pytest.mark.parametrize("change, arguments, code, out", [
    ("true", ["-i", "eth7"], 3, "Network Interface eth7 does not exist.\n"),
    ("ip -4 addr flush eth0", [], 4 + 16, MISSING("IPv4 IP") + IPV6_WORKS),
    ("ip -6 addr flush eth0 scope global", [], 1 + 64, MISSING("IPv6 IP") + IPV4_WORKS),
    ("ip route del default", [], 5 + 16, MISSING("IPv4 Gateway") + IPV6_WORKS),
    ("ip -6 route del default", [], 1 + 80, MISSING("IPv6 Gateway") + IPV4_WORKS),
    (": >/etc/resolv.conf", [], 6 + 96, MISSING("IPv4 DNS Server") + MISSING("IPv6 DNS Server")),
    ("ip route del default; : >/etc/resolv.conf", [], 5 + 96, MISSING("IPv4 Gateway") + MISSING("IPv6 DNS Server")),
    ("echo nameserver 2001:db8:53::53 >/etc/resolv.conf", [], 17, IPV4_WORKS + IPV6_WORKS),
    ("echo nameserver :: >/etc/resolv.conf", ["-woi"], 255, ""),
    ("echo 'nameserver 1..2' >/etc/resolv.conf; echo 'nameserver ::' >>/etc/resolv.conf", ["-woi"], 255, ""),
    ("echo 'nameserver 1..2' >/tmp/resolv.conf.auto", [], 17, IPV4_WORKS + IPV6_WORKS),
])
def test_interface_stage(online, change, arguments, code, out):
    assert online.command("sh", "-c", change).code == 0
    online.write("/tmp/tolvaneresult", f"17\n{int(time.time())}\n")
    assert online.run("-46", "-d", *arguments)[:2] == (code, out)
    assert not online.result_file.exists()


@pytest.mark.parametrize("answer, scripts, code, out", [
    (lambda query, kind: response(query), [[page()]], 136, "DNS query is error.\nIPv6 DNS query is error.\n"),
    (right_answer, None, 153, "Connection Server is failed.\nIPv6 Connection Server is failed.\n"),
    (right_answer, [[page(document(checksum="0" * 32))]], 170, "XML Data is mismatch.\nIPv6 XML Data is mismatch.\n"),
])
def test_server_stages(device, answer, scripts, code, out):
    device.dns(answer)
    if scripts:
        device.web(*scripts)
    assert device.run("-46", "-d")[:2] == (code, out)


@pytest.mark.parametrize("address, code", [("10.9.0.1", 8), ("172.31.0.1", 8), ("192.168.0.1", 8), ("172.32.0.1", 10)])
def test_unverified_document_at_a_private_address(device, address, code):
    device.on_internet(lambda: subprocess.run(["ip", "addr", "add", address, "dev", "lo"], check=True))
    device.dns(lambda query, kind: response(query, record(kind, packed(address))))
    device.web([page(b"captured")], servers=[address])
    assert device.run().code == code


def seconds_ago(seconds):
    return int(time.time()) - seconds


@pytest.mark.parametrize("code, age, arguments, result, stored, requests", [
    (None, 0, [], 17, 14 + 224, 2),          # no file: full probes
    (17, 86300, ["-d"], 17, 17, 0),          # fresh: DNS alone, the time stamp stays
    (14 + 224, 10, [], 17, 17, 0),           # markers count as successes
    (17, 86400, [], 17, 14 + 224, 2),        # a day old
    (17, -100, [], 17, 14 + 224, 2),         # the clock was set back
    (17, 10 - 2**32, [], 17, 14 + 224, 2),   # would be fresh in 32 bits
    (9 + 16, 10, [], 17, 14 + 16, 1),        # only IPv6 is confirmed by DNS
    (254, 10, [], 17, 14 + 224, 2),          # stands for a stale one
    ("nonsense", 10, [], 17, 14 + 224, 2),
])
def test_terminal_memory(online, code, age, arguments, result, stored, requests):
    stamp = seconds_ago(age)
    if code is not None:
        online.write("/tmp/tolvaneresult", f"{code}\n{stamp}\n")
    run = online.run("-trm", "wlan0,eth0", "-46", *arguments)
    assert (run.code, len(online.requests)) == (result, requests)
    if "-d" in arguments:
        assert run.out == "DNS query is successful.\nIPv6 DNS query is successful.\n" + IPV4_WORKS + IPV6_WORKS
    lines = online.result_file.read_text().splitlines()
    written = seconds_ago(0) if requests else stamp
    assert int(lines[0]) == stored and abs(int(lines[1]) - written) <= 2 * bool(requests) and len(lines) == 2


@pytest.mark.parametrize("change, arguments, code", [
    ("true", ["-trm"], 3), ("true", ["-trm", "eth7,,eth8", "-6"], 3),
    ("true", ["-trm", "lo,eth0"], 5),                       # an address, but no gateway of its own
    ("ip addr flush eth0", ["-trm", "eth7,eth0"], 2),
    ("ip -4 addr flush eth0", ["-trm", "eth0", "-46"], 4 + 16),
    ("ip -6 addr flush eth0 scope global", ["-trm", "eth0", "-46"], 1 + 64),
    ("ip route del default; : >/etc/resolv.conf", ["-trm", "eth0", "-46"], 6 + 96),
    ("ip route del default", ["-trm", "eth0", "-46"], 5 + 16),
])
def test_terminal_interface_stage(online, change, arguments, code):
    assert online.command("sh", "-c", change).code == 0
    run = online.run("-d", *arguments)
    assert run.code == code and "Network Interface" not in run.out
    marked = {1: 14 - 1, 16: 224 - 16}  # what the markers add
    stored = int(online.result_file.read_text().split()[0])
    assert stored == code + marked.get(code & 0x0F, 0) + marked.get(code & 0xF0, 0)


def test_terminal_dns_failure_brings_the_full_probe_back(device):
    device.dns(lambda query, kind: response(query))
    stamp = seconds_ago(50)
    device.write("/tmp/tolvaneresult", f"1\n{stamp}\n")
    assert device.run("-trm", "eth0", "-d")[:2] == (8, "DNS query is error.\n")
    assert device.result_file.read_text() == f"8\n{stamp}\n"


def test_command_line_refusals_leave_no_trace(device):
    stamp = f"17\n{seconds_ago(10)}\n"
    device.write("/tmp/tolvaneresult", stamp)
    usage = device.run("-V")
    assert usage.code == 255 and usage.out.count("\n") == 23
    assert usage.out.startswith("Varnoko Internet Connection Checker Ver.2.5.0\n" + " " * 26 + "Copyright (C) 2026")
    assert "\n        -46       : Check IPv4 and IPv6.\n" in usage.out
    assert device.run("-d", "-v")[:2] == (255, usage.out)
    for arguments in [["-x", "-v"], ["eth0"], [""], ["-dev6"], ["-ieth0"], ["-i", "n" * 20, "-v"],
                      ["-trm", "n" * 70, "-v"]]:
        assert device.run(*arguments)[:2] == (255, ""), arguments
    assert device.result_file.read_text() == stamp
    assert device.run("-i", "-d")[:2] == (3, "")
    assert device.run("-i", "n" * 19, "-d").out == "Network Interface " + "n" * 19 + " does not exist.\n"
