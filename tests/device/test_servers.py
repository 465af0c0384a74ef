"""Name servers and web servers that are late, silent, wrong or hostile."""

import pytest
from conftest import (
    AAAA,
    BAD_PAGE,
    DOCUMENT,
    GOOD_PAGE,
    RESET,
    leading_to,
    no_record,
    record,
    response,
    right_answer,
)


def longest_response(query, kind):
    answer = right_answer(query, kind)[len(query) :]
    room = 65507 - len(query) - len(record(AAAA, b"")) - len(answer)
    return response(query, record(AAAA, bytes(room)), answer)


def test_each_useless_datagram_starts_the_wait_afresh(device):
    device.dns(lambda *_: b"", 1.5, no_record, 2, longest_response)
    device.web([GOOD_PAGE])
    run = device.run()
    assert run.code == 1
    assert run.seconds >= 3.5
    assert run.cpu < 1
    assert len(device.queries) == 1


def test_name_servers_are_asked_in_order_until_one_answers(device):
    late = "198.51.100.1"
    good = "198.51.100.53"
    device.add_to_internet("addr", "add", late, "dev", "lo")
    device.write("/tmp/resolv.conf.auto", f"nameserver {late}\n")
    device.name_servers(good, late)
    device.dns(3.5, right_answer, servers=[late])
    device.dns(right_answer, servers=[good])
    device.web([GOOD_PAGE])
    run = device.run()
    assert run.code == 1
    assert 3 <= run.seconds < 6
    assert [query.server for query in device.queries] == [late, good]
    assert device.queries[0].port != 53
    assert device.queries[0].port != device.queries[1].port


@pytest.mark.parametrize("servers, asked", [
    pytest.param(["198.51.100.53", "0.0.0.0", "198.51.100.53"], ["198.51.100.53"], id="IPv4"),
    pytest.param(["0.0.0.0", "2001:db8:53::53", "::", "2001:db8:53::53"], ["2001:db8:53::53"], id="IPv6-for-IPv4"),
    pytest.param(["0.0.0.0", "198.51.100.53"], [], id="this-device-itself"),
])
def test_list_ends_at_an_unset_server(device, servers, asked):
    device.name_servers(*servers)
    device.dns(no_record)
    run = device.run("-woi")
    assert run.code == 8
    assert 3 <= run.seconds < 6
    assert [query.server for query in device.queries] == asked


CONFIGURED = "xmluri=http://backup.example:8080/probe.xml\r\ncheckserver=other.example\r\n"
NO_DOCUMENT = "checkserver=backup.example\n"


# `known` is a part of the only host names that are resolved.
@pytest.mark.parametrize("arguments, config, known, scripts, code, queries, requests", [
    pytest.param(["-6"], "", "", [[BAD_PAGE], [GOOD_PAGE]], 16, 2, 2, id="no-attempt-after-a-success"),
    pytest.param(["-6"], CONFIGURED, "", [[BAD_PAGE]], 160, 4, 4, id="fallback-has-one-attempt"),
    pytest.param([], CONFIGURED, "", [], 9, 4, 0, id="fallback-after-refused-connections"),
    pytest.param([], CONFIGURED, "backup", [[GOOD_PAGE]], 1, 2, 1, id="fallback-after-one-failed-query"),
    pytest.param([], NO_DOCUMENT, "none", [], 10, 1, 0, id="fallback-without-a-document"),
])
def test_attempts_and_fallback(device, arguments, config, known, scripts, code, queries, requests):
    def answer(query, kind):
        if known.encode() in query:
            return right_answer(query, kind)
        return no_record(query, kind)

    if config:
        device.write("/etc/tolvane.cfg", config)
    device.dns(answer)
    if scripts:
        device.web(*scripts)
    assert device.run(*arguments).code == code
    assert len(device.queries) == queries
    assert len(device.requests) == requests


@pytest.mark.parametrize("script, code, seconds", [
    pytest.param([b"x", 0.5] * 11 + [GOOD_PAGE], 10, 5, id="trickle"),
    pytest.param([GOOD_PAGE[:90], 0.5, RESET], 10, 0, id="reset"),
    pytest.param([b"x" * 1023, 1, BAD_PAGE, 1, GOOD_PAGE], 1, 0, id="third-read"),
    pytest.param([DOCUMENT.rjust(1046)], 1, 0, id="digest-ends-with-the-read"),
    pytest.param([DOCUMENT.rjust(1047)], 10, 0, id="digest-is-cut"),
])
def test_web_answers(device, script, code, seconds):
    device.dns(right_answer)
    device.web(script)
    run = device.run("-nrt")
    assert run.code == code
    assert seconds <= run.seconds < seconds + 5
    assert run.cpu < 1


def test_connections_that_lead_nowhere(device):
    device.add_to_internet("route", "add", "blackhole", "203.0.113.1")
    device.add_to_internet("-6", "route", "add", "blackhole", "2001:db8:80::1")
    device.dns(leading_to("203.0.113.1", "2001:db8:80::1"))
    run = device.run("-46", "-nrt")
    assert run.code == 9 + 144
    assert 6 <= run.seconds < 8


@pytest.mark.parametrize("arguments, change, is_bound", [
    pytest.param([], "true", True, id="examined-interface"),
    pytest.param(["-woi"], "true", True, id="interface-with-a-global-address"),
    pytest.param(["-woi"], "ip -6 addr flush eth0 scope global", False, id="no-global-address"),
])
def test_link_local_name_server(device, arguments, change, is_bound):
    device.name_servers("fe80::1")
    device.dns(right_answer, servers=["fe80::1%uplink"])
    device.web([GOOD_PAGE])
    device.change(change)
    assert device.run(*arguments).code == 1
    [query] = device.queries
    assert query.address == "fe80::10"
    assert (query.port == 53) == is_bound
