"""Name servers and web servers that are late, silent, wrong or hostile."""

import itertools
import struct
import subprocess
import threading

import pytest
from conftest import (A, AAAA, CNAME, PROGRAM, RESET, WEB_SERVERS, document, packed, page, record, response,
                      right_answer, unhosted)

NAME = b"\x01x\x00"
ADDRESS = packed(WEB_SERVERS[0])
HEAD, TAIL = page()[:90], page()[90:]


def lying(*records, **options):
    return lambda query, kind: response(query, *records, **options)


@pytest.mark.parametrize("step", [
    lambda query, kind: b"",
    lambda query, kind: query[:11],
    lambda query, kind: query[:12] + b"\x07example" * 40,             # a question without an end
    lying(count=65535),
    lying(record(A, b"\x01\x02\x03")),
    lying(record(A, ADDRESS, length=65535)),
    lying(record(AAAA, packed(WEB_SERVERS[1]))),
    lying(record(CNAME, b"\x3fxyz")),                                  # a label beyond the end
    lying(record(A, ADDRESS, owner=b"\xff")[:1]),
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
    (["198.51.100.53", "0.0.0.0", "198.51.100.53"], 1),
    (["2001:db8:53::53", "198.51.100.53", "1.2.3.4.5", "198.51.100.53"], 1),
    (["0.0.0.0", "2001:db8:53::53", "2001:db8:53::53"], 2),
])
def test_list_ends_at_an_unset_server(device, servers, asked):
    device.name_servers(*servers)
    device.dns(lying())
    run = device.run("-woi", "-nrt")
    assert run.code == 8 and len(device.queries) == asked and 3 * asked <= run.seconds < 3 * asked + 2


CONFIGURED = "xmluri=http://backup.example:8080/probe.xml\r\ncheckserver=other.example\r\n"


@pytest.mark.parametrize("arguments, config, answered, scripts, code, requests", [
    ([], None, "all", [["bad"]], 10, 3),
    (["-nrt"], None, "all", [["bad"]], 10, 1),
    ([], None, "all", [["bad"], ["bad"], [page()]], 1, 3),
    ([], CONFIGURED, "all", [["bad"], ["bad"], ["bad"], [page()]], 1, 4),
    ([], CONFIGURED, "all", [["bad"]], 10, 4),
    (["-nrt"], CONFIGURED, "backup", [[page()]], 1, 1),                 # no second query of the first host
    (["-nrt"], CONFIGURED, "v4", [["bad"]], 8, 1),
    (["-nrt"], "checkserver=backup.example\n", "none", [[page()]], 10, 0),
    ([], "xmluri=https://backup.example/\n", "all", [["bad"]], 10, 3),
    ([], CONFIGURED, "all", None, 9, 0),
    (["-6"], CONFIGURED, "all", [["bad"]], 160, 4),
    (["-6"], None, "all", [["bad"], [page()]], 16, 2),
])
def test_budget_and_fallback(device, arguments, config, answered, scripts, code, requests):
    def answer(query, kind):
        wanted = {"all": b"", "none": b"!", "v4": b"v4-b", "backup": b"backup"}[answered]
        return right_answer(query, kind) if wanted in query else response(query)

    if config:
        device.write("/etc/tolvane.cfg", config)
    device.dns(answer)
    if scripts:
        device.web(*[[page(b"bad") if step == "bad" else step for step in script] for script in scripts])
    assert device.run(*arguments).code == code and len(device.requests) == requests
    if requests == 4:
        assert device.requests[3] == b"GET /probe.xml HTTP/1.0\r\nHost: backup.example:8080\r\n\r\n"
    assert len(device.queries) == {("none", 10): 1, ("backup", 1): 2, ("v4", 8): 2}.get((answered, code), max(
        requests, 4 if scripts is None else 0))


FLOOD = itertools.repeat(page(b"x" * 100000))


@pytest.mark.parametrize("script, code, shortest, longest", [
    ([0.5, page()], 1, 0.5, 2),
    ([4.5, page()], 1, 4.5, 5.5),
    ([HEAD, 0.3, TAIL], 10, 0, 2),
    ([b"x" * 1023, 0.3, page()], 1, 0, 2),                              # each read is examined alone
    ([page(document(checksum="0" * 32)), 0.3, page()], 1, 0, 2),
    ([60], 10, 5, 6),
    ([b"x", 0.5] * 20, 10, 5, 6),
    ([HEAD, 0.1, RESET], 10, 0, 2),
    (FLOOD, 10, 5, 6),
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
    device.dns(lambda query, kind: response(query, record(kind, packed(["203.0.113.1", "2001:db8:80::1"][kind == AAAA]))))
    blackhole = "ip route add blackhole 203.0.113.1; ip -6 route add blackhole 2001:db8:80::1"
    device.on_internet(lambda: subprocess.run(["sh", "-c", blackhole], check=True))
    device.command("sh", "-c", "echo 0 >/proc/sys/net/ipv4/tcp_syncookies")
    run = device.run("-46", "-nrt")
    assert run.code == 153 and 6 <= run.seconds < 7.5 and run.cpu < 0.5


def test_reset_before_the_request(device):
    """The listener resets each connection as soon as it stands, so that the request meets a dead one."""
    device.dns(right_answer)
    listener = device.listen(WEB_SERVERS[0], 80, 1)
    listener.listen()
    listener.setsockopt(1, 13, struct.pack("ii", 1, 0))  # SO_LINGER, inherited by what is accepted

    def drop():
        while True:
            listener.accept()[0].close()

    threading.Thread(target=drop, daemon=True).start()
    assert device.run().code in (9, 10)


DATES = ["a b", "'", "''';touch /tmp/x;'", "$(touch /tmp/x)", "`touch /tmp/x`", "\\n\\\\", "-n", "%s%d", "a\nb", "*",
         ";touch /tmp/x", '"', "\t|", "<&>", b"\x01\x80\x81\x88\xff"]


def test_date_reaches_the_digest_byte_for_byte(device):
    device.dns(right_answer)
    device.web(*[[page(document(date))] for date in DATES])
    for date in DATES:
        assert device.run("-nrt").code == 1, date
    assert not (device.root / "tmp/x").exists()


def test_interface_name_is_one_word(device):
    for name in ["eth0;touch /tmp/x", "$(touch /tmp/x)", "'`touch /tmp/x`'", "", "eth0 lo", "eth0\ntouch /tmp/x", "../x"]:
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
    assert {(query.source[0], query.source[1] == 53) for query in device.queries} == ({(source, bound)} if source else set())


@unhosted
def test_what_the_program_is_linked_with():
    dynamic = subprocess.run(["readelf", "-d", PROGRAM], stdout=subprocess.PIPE, check=True).stdout
    needed = [line.split(b"[")[1] for line in dynamic.splitlines() if b"NEEDED" in line]
    assert all(name.startswith(b"libc.") for name in needed)
