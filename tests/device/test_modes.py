"""Both modes from end to end: each outcome, what is printed for it, and what a terminal run leaves behind."""

import time

import pytest
from conftest import BAD_PAGE, leading_to, no_record, right_answer

NO_IPV4_ADDRESS = "ip -4 addr flush eth0"
NO_IPV6_ADDRESS = "ip -6 addr flush eth0 scope global"
NO_IPV6_GATEWAY = "ip -6 route del default"
NO_NAME_SERVER = ": >/etc/resolv.conf"
NO_IPV4_GATEWAY_NOR_SERVER = f"ip route del default; {NO_NAME_SERVER}"
ONLY_IPV6_SERVER = "echo nameserver 2001:db8:53::53 >/etc/resolv.conf"


def missing(*items):
    return "".join(f"Network Interface eth0 does not set {item} address.\n" for item in items)


def works(*families):
    return "".join(f"{family} Internet connection is successful.\n" for family in families)


BOTH_WORK = works("IPv4", "IPv6")


@pytest.mark.parametrize("arguments, code, out", [
    pytest.param([], 1, "", id="silent"),
    pytest.param(["-6", "-D"], 16, works("IPv6"), id="IPv6"),
])
def test_working_connection(online, arguments, code, out):
    run = online.run(*arguments)
    assert run.code == code
    assert run.out == out


@pytest.mark.parametrize("change, code, out", [
    pytest.param(NO_IPV4_ADDRESS, 4 + 16, missing("IPv4 IP") + works("IPv6"), id="no IPv4 address"),
    pytest.param(NO_IPV6_ADDRESS, 1 + 64, missing("IPv6 IP") + works("IPv4"), id="no IPv6 address"),
    pytest.param(NO_IPV6_GATEWAY, 1 + 80, missing("IPv6 Gateway") + works("IPv4"), id="no IPv6 gateway"),
    pytest.param(NO_NAME_SERVER, 6 + 96, missing("IPv4 DNS Server", "IPv6 DNS Server"), id="no name server"),
    pytest.param(NO_IPV4_GATEWAY_NOR_SERVER, 5 + 96, missing("IPv4 Gateway", "IPv6 DNS Server"), id="gateway first"),
    pytest.param(ONLY_IPV6_SERVER, 17, BOTH_WORK, id="IPv6 server is enough"),
])
def test_examined_interface(online, change, code, out):
    online.change(change)
    online.write("/tmp/tolvaneresult", "17\n")
    run = online.run("-46", "-d")
    assert run.code == code
    assert run.out == out
    assert not online.result_file.exists()


def test_no_usable_name_server(online):
    online.name_servers("1..2", "::")
    run = online.run("-46", "-d", "-woi")
    assert run.code == 15 + 240
    assert run.out == ""


@pytest.mark.parametrize("answer, pages, code, line", [
    pytest.param(no_record, [], 8 + 128, "DNS query is error.\n", id="DNS"),
    pytest.param(right_answer, [], 9 + 144, "Connection Server is failed.\n", id="connection"),
    pytest.param(right_answer, [BAD_PAGE], 10 + 160, "XML Data is mismatch.\n", id="document"),
])
def test_probe_failure(device, answer, pages, code, line):
    device.dns(answer)
    if pages:
        device.web(pages)
    run = device.run("-46", "-d")
    assert run.code == code
    assert run.out == line + "IPv6 " + line


def test_wrong_document_at_a_private_address(device):
    device.add_to_internet("addr", "add", "172.31.0.1", "dev", "lo")
    device.dns(leading_to("172.31.0.1", "::"))
    device.web([BAD_PAGE], servers=["172.31.0.1"])
    assert device.run().code == 8


def seconds_ago(seconds):
    return int(time.time()) - seconds


@pytest.mark.parametrize("code, age, requests, stored", [
    pytest.param(255, 0, 2, 14 + 224, id="no success"),
    pytest.param(17, 86400, 2, 14 + 224, id="success a day ago"),
    pytest.param(9 + 16, 10, 1, 14 + 16, id="success of IPv6 only"),
])
def test_terminal_run_with_full_probes(online, code, age, requests, stored):
    online.write("/tmp/tolvaneresult", f"{code}\n{seconds_ago(age)}\n")
    assert online.run("-trm", "wlan0,eth0", "-46").code == 17
    assert len(online.requests) == requests
    new_code, stamp = online.result_file.read_text().splitlines()
    assert new_code == str(stored)
    assert seconds_ago(5) <= int(stamp) <= seconds_ago(0)


def test_terminal_run_after_a_success(online):
    text = f"17\n{seconds_ago(86300)}\n"
    online.write("/tmp/tolvaneresult", text)
    run = online.run("-trm", "eth0", "-46", "-d")
    assert run.code == 17
    assert run.out == "DNS query is successful.\nIPv6 DNS query is successful.\n" + BOTH_WORK
    assert online.result_file.read_text() == text
    assert not online.requests


def test_terminal_dns_failure_ends_the_success(device):
    device.dns(no_record)
    stamp = seconds_ago(50)
    device.write("/tmp/tolvaneresult", f"1\n{stamp}\n")
    run = device.run("-trm", "eth0", "-d")
    assert run.code == 8
    assert run.out == "DNS query is error.\n"
    assert device.result_file.read_text() == f"8\n{stamp}\n"


@pytest.mark.parametrize("change, arguments, code, out", [
    pytest.param("true", ["eth7,,eth8", "-6"], 3, "", id="none exists"),
    pytest.param("ip addr flush eth0", ["eth7,eth0"], 2, "", id="none has an address"),
    pytest.param("true", ["lo,eth0"], 5, "", id="first with an address"),
    pytest.param(NO_IPV4_ADDRESS, ["eth0", "-46"], 4 + 16, works("IPv6"), id="no IPv4 address"),
    pytest.param(NO_IPV4_GATEWAY_NOR_SERVER, ["eth0"], 6, "", id="name server first"),
])
def test_chosen_interface(online, change, arguments, code, out):
    online.change(change)
    run = online.run("-d", "-trm", *arguments)
    assert run.code == code
    assert run.out == out
    assert online.result_file.exists()


def test_refused_command_line_leaves_no_trace(device):
    device.write("/tmp/tolvaneresult", "17\n0\n")
    usage = device.run("-d", "-V")
    assert usage.code == 255
    assert usage.out.startswith("Varnoko Internet Connection Checker Ver.2.5.0\n")
    assert "\n        -46       : Check IPv4 and IPv6.\n" in usage.out
    assert usage.out.count("\n") == 23
    refused = device.run("-x", "-v")
    assert refused.code == 255
    assert refused.out == ""
    assert device.result_file.read_text() == "17\n0\n"
