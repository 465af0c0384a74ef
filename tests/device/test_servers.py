"""Name servers and web servers that are late, silent, wrong or hostile."""

import subprocess

import pytest
from conftest import (A, AAAA, CNAME, RESET, WEB_SERVERS, document, packed, page, record, response,
                      right_answer)

NAME = b"\x01x\x00"
ADDRESS = packed(WEB_SERVERS[0])
HEAD, TAIL = page()[:90], page()[90:]


def lying(*records, **options):
    return lambda query, kind: response(query, *records, **options)


@pytest.mark.parametrize("step", [
    lambda query, kind: b"", lambda query, kind: query[:11],
    lambda query, kind: query[:12] + b"\x07example" * 40,             # a question without an end
    lying(count=65535), lying(record(A, b"\x01\x02\x03")), lying(record(A, ADDRESS, length=65535)),
    lying(record(AAAA, packed(WEB_SERVERS[1]))), lying(record(A, ADDRESS, owner=b"\xff")[:1]),
    lying(record(CNAME, b"\x3fxyz")),                                  # a label beyond the end
    lying(record(CNAME, b"\xc0\x0c", length=9000), record(A, ADDRESS)[:9]),
    lying(*[record(CNAME, NAME)] * 20, record(A, packed("203.0.113.99"))),  # the 21st record
    lambda query, kind: response(query, *[record(CNAME, NAME, owner=NAME)] * 4000),
])
def test_useless_datagram_before_the_answer(device, step):
    device.dns(step, 1.5, step, 2.5, lying(record(CNAME, NAME), record(A, ADDRESS)))
    device.web([page()])
    run = device.run()
    assert run.code == 1 and 4 < run.seconds < 6 and run.cpu < 0.5 and len(device.queries) == 1


def test_name_servers_are_asked_in_order_until_one_answers(device):
    device.name_servers("198.51.100.1", "198.51.100.53", "198.51.100.2")
    for address in "198.51.100.1", "198.51.100.2":
        device.on_internet(lambda a=address: subprocess.run(["ip", "addr", "add", a, "dev", "lo"], check=True))
    device.dns(4, right_answer, servers=["198.51.100.1"])
    device.dns(right_answer, servers=["198.51.100.53", "198.51.100.2"])
    device.web([page()])
    run = device.run()
    assert run.code == 1 and 3 <= run.seconds < 4.5
    assert [query.server for query in device.queries] == ["198.51.100.1", "198.51.100.53"]
    assert len({query.source[1] for query in device.queries}) == 2 and device.queries[0].source[1] != 53


@pytest.mark.parametrize("servers, asked", [
    (["198.51.100.53", "0.0.0.0", "198.51.100.53"], 1), (["0.0.0.0", "2001:db8:53::53", "2001:db8:53::53"], 2),
    (["2001:db8:53::53", "198.51.100.53", "1.2.3.4.5", "198.51.100.53"], 1),
])
def test_list_ends_at_an_unset_server(device, servers, asked):
    device.name_servers(*servers)
    device.dns(lying())
    run = device.run("-woi", "-nrt")
    assert run.code == 8 and len(device.queries) == asked and 3 * asked <= run.seconds < 3 * asked + 2


CONFIGURED = "xmluri=http://backup.example:8080/probe.xml\r\ncheckserver=other.example\r\n"


BAD, GOOD = [page(b"bad")], [page()]


# `known` is a part of the only host names that are resolved; the last two columns count queries and requests.
@pytest.mark.parametrize("arguments, config, known, scripts, code, queries, requests", [
    ([], None, b"", [BAD], 10, 3, 3),
    (["-nrt"], None, b"", [BAD], 10, 1, 1),
    ([], None, b"", [BAD, BAD, GOOD], 1, 3, 3),
    ([], CONFIGURED, b"", [BAD, BAD, BAD, GOOD], 1, 4, 4),
    ([], CONFIGURED, b"", [BAD], 10, 4, 4),
    ([], CONFIGURED, b"backup", [GOOD], 1, 2, 1),                       # no second query of the first host
    (["-nrt"], CONFIGURED, b"v4-b", [BAD], 8, 2, 1),
    ([], "checkserver=backup.example\n", b"none", [GOOD], 10, 1, 0),
    ([], "xmluri=https://backup.example/\n", b"", [BAD], 10, 3, 3),
    ([], CONFIGURED, b"", [], 9, 4, 0),
    (["-6"], CONFIGURED, b"", [BAD], 160, 4, 4),
    (["-6"], None, b"", [BAD, GOOD], 16, 2, 2),
])
def test_budget_and_fallback(device, arguments, config, known, scripts, code, queries, requests):
    if config:
        device.write("/etc/tolvane.cfg", config)
    device.dns(lambda query, kind: right_answer(query, kind) if known in query else response(query))
    if scripts:
        device.web(*scripts)
    assert device.run(*arguments).code == code
    assert (len(device.queries), len(device.requests)) == (queries, requests)
    if requests == 4:
        assert device.requests[3] == b"GET /probe.xml HTTP/1.0\r\nHost: backup.example:8080\r\n\r\n"


FLOOD = [page(b"x" * 100000)] * 100000


@pytest.mark.parametrize("script, code, shortest, longest", [
    ([0.5, page()], 1, 0.5, 2), ([4.5, page()], 1, 4.5, 5.5), ([HEAD, 0.3, TAIL], 10, 0, 2),
    ([b"x" * 1023, 0.3, page()], 1, 0, 2),                              # each read is examined alone
    ([page(document(checksum="0" * 32)), 0.3, page()], 1, 0, 2),
    ([60], 10, 5, 6), ([b"x", 0.5] * 20, 10, 5, 6),
    ([HEAD, 0.1, RESET], 10, 0, 2), (FLOOD, 10, 5, 6),
    ([document().rjust(1046)], 1, 0, 2), ([document().rjust(1047)], 10, 0, 2),  # cut behind or in the digest
    ([b"HTTP/1.0 500 Oops\r\n\r\n" + document()], 1, 0, 2),
    ([b"HTTP/1.0 302 Found\r\nLocation: http://backup.example/\r\n\r\n"], 10, 0, 2),
])
def test_web_answers(device, script, code, shortest, longest):
    device.dns(right_answer)
    device.web(script)
    run = device.run("-nrt")
    assert run.code == code and shortest <= run.seconds < longest
    assert script is FLOOD or run.cpu < 0.5


def test_connections_that_lead_nowhere(device):
    nowhere = {A: packed("203.0.113.1"), AAAA: packed("2001:db8:80::1")}
    device.dns(lambda query, kind: response(query, record(kind, nowhere[kind])))
    blackhole = "ip route add blackhole 203.0.113.1; ip -6 route add blackhole 2001:db8:80::1"
    device.on_internet(lambda: subprocess.run(["sh", "-c", blackhole], check=True))
    run = device.run("-46", "-nrt")
    assert run.code == 153 and 6 <= run.seconds < 7.5 and run.cpu < 0.5


def test_reset_before_the_request(device):
    device.dns(right_answer)
    device.web([RESET])
    assert device.run().code in (9, 10)  # the reset comes before the second look at the connection or after it


DATES = ["a b", "'", "''';touch /tmp/x;'", "$(touch /tmp/x)", "`touch /tmp/x`", "\\n\\\\", "-n", "%s%d", "a\nb", "*",
         ";touch /tmp/x", '"', "\t|", "<&>", b"\x01\x80\x81\x88\xff"]


def test_date_reaches_the_digest_byte_for_byte(device):
    device.dns(right_answer)
    device.web(*[[page(document(date))] for date in DATES])
    for date in DATES:
        assert device.run("-nrt").code == 1, date
    assert not (device.root / "tmp/x").exists()


def test_interface_name_is_one_word(device):
    for name in ["eth0;touch /tmp/x", "$(touch /tmp/x)", "'`touch /tmp/x`'", "", "eth0 lo", "eth0\nid", "../x"]:
        assert device.run("-i", name, "-d")[:2] == (3, f"Network Interface {name} does not exist.\n"), name
        assert device.run("-trm", name)[0] in (1, 3, 5)
    assert not (device.root / "tmp/x").exists()


@pytest.mark.parametrize("arguments, change, code, source, bound", [
    (["-46"], "true", 17, "fe80::10", True),
    (["-46", "-woi"], "true", 17, "fe80::10", True),                    # through the interface with a global address
    (["-woi"], "ip -6 addr flush eth0 scope global", 1, "fe80::10", False),  # no interface qualifies
    (["-46"], "ip -6 addr del fe80::10/64 dev eth0; ip -6 route add fe80::/64 dev eth0", 17, "2001:db8:0:1::10", True),
    (["-46", "-i", "eth1", "-woi", "-i", "eth1"], "true", 136, None, None),
])
def test_link_local_name_server(device, arguments, change, code, source, bound):
    device.name_servers("fe80::1")
    device.dns(right_answer, servers=["fe80::1%uplink"])
    device.web([page()])
    assert device.command("sh", "-c", change).code == 0
    assert device.run(*arguments).code == code
    sources = {(query.source[0], query.source[1] == 53) for query in device.queries}
    assert sources == ({(source, bound)} if source else set())
