"""Both modes in every state that is quick to make, with the exit status and the lines that the manual promises."""

import re
import time
from itertools import compress, product

import pytest
from conftest import BAD_PAGE, GOOD_PAGE, NAME_SERVERS, PROJECT, WEB_SERVERS, leading_to, right_answer

IPV4 = 1  # what an outcome is multiplied by in the exit status
IPV6 = 16
FAMILIES = {"": [IPV4], "-6": [IPV6], "-46": [IPV4, IPV6]}
MANUAL = (PROJECT / "docs/tolvane.8").read_text()
ROWS = [(int(code), line + "\n") for code, line in re.findall(r"(?m)^\.It (\d+) Ta (.*[.])$", MANUAL)]
LINES = dict(ROWS[:-2])
CONFIRMED = dict(ROWS[-2:])  # by the DNS query
TERMINAL_LINES = {code: line for code, line in LINES.items() if not line.startswith("Network Interface")}

MAKE = {
    (IPV4, "address"): "ip addr add 192.0.2.10/24 dev eth0",
    (IPV6, "address"): "ip addr add 2001:db8:0:1::10/64 dev eth0",
    (IPV4, "gateway"): "ip route add 192.0.2.1 dev eth0; ip route add default via 192.0.2.1",
    (IPV6, "gateway"): "ip -6 route add default via fe80::1 dev eth0",
    (IPV4, "server"): f"echo nameserver {NAME_SERVERS[0]} >>/etc/resolv.conf",
    (IPV6, "server"): f"echo nameserver {NAME_SERVERS[1]} >>/etc/resolv.conf",
}
MAKE_NOTHING = """
ip addr flush dev eth0 scope global; ip route flush table main; ip -6 route del default
: >/etc/resolv.conf; echo 0 >/tmp/tolvaneresult
"""


def expected_end(outcomes, is_terminal, confirmed=()):
    """The exit status, the printed lines and the stored code, of the outcomes of the enabled families."""
    failures = TERMINAL_LINES if is_terminal else LINES
    code = stored = 0
    stages = successes = ""
    for family, outcome in outcomes.items():
        code += outcome * family
        if outcome != 1:
            stored += outcome * family
            stages += failures.get(outcome * family, "")
            continue
        successes += LINES[family]
        stored += family if family in confirmed else 14 * family
        stages += CONFIRMED[family] if family in confirmed else ""
    return code, stages + successes, [f"{stored}"] if is_terminal else []


def expected_outcome(family, present, is_terminal):
    """What the README's table says of an interface that has what is `present`."""
    servers = [IPV4, IPV6] if family == IPV4 and not is_terminal else [family]
    has_server = any((server, "server") in present for server in servers)
    if (family, "address") not in present:
        return 4
    if is_terminal and not has_server:
        return 6
    if (family, "gateway") not in present:
        return 5
    return 1 if has_server else 6


@pytest.mark.parametrize("options", FAMILIES, ids=["IPv4", "IPv6", "both"])
@pytest.mark.parametrize("mode", ["", "-trm eth7,eth0"], ids=["every-time", "terminal"])
def test_each_state_of_the_interface(device, mode, options):
    # On the device itself, the servers answer whatever the state of its eth0.
    device.change("".join(f"ip addr add {server} dev lo\n" for server in NAME_SERVERS + WEB_SERVERS))
    device.servers = device.network
    device.dns(right_answer)
    device.web([GOOD_PAGE])
    states = [set(compress(MAKE, chosen)) for chosen in product([False, True], repeat=len(MAKE))]
    commands = [MAKE_NOTHING + "\n".join(MAKE[item] for item in state) for state in states]
    for state, run in zip(states, device.run_each(commands, f"{mode} {options}")):
        outcomes = {family: expected_outcome(family, state, bool(mode)) for family in FAMILIES[options]}
        expected = expected_end(outcomes, bool(mode))
        if mode and not state & {(IPV4, "address"), (IPV6, "address")}:
            expected = 2, "", ["2"]
        assert (*run[:2], run[2][:1]) == expected, state


# Name servers that lead to an outcome; no route leads to the first.
SERVERS = {
    8: {IPV4: "198.51.100.8", IPV6: "2001:db8:53::8"},
    9: {IPV4: "198.51.100.9", IPV6: "2001:db8:53::9"},
    10: {IPV4: "198.51.100.10", IPV6: "2001:db8:53::10"},
    1: {IPV4: NAME_SERVERS[0], IPV6: NAME_SERVERS[1]},
}


def prepare(ends, remembered, stamp):
    lines = "".join(f"nameserver {SERVERS[outcome][family]}\\n" for family, outcome in ends.items())
    code = sum(family * outcome for family, outcome in remembered.items())
    return f"printf '{lines}' >/etc/resolv.conf; printf '{code}\\n{stamp}\\n' >/tmp/tolvaneresult"


def each_pair(outcomes):
    return [{IPV4: ipv4, IPV6: ipv6} for ipv4, ipv6 in product(outcomes, repeat=2)]


@pytest.mark.parametrize("options", ["", "-46"], ids=["IPv4", "both"])
@pytest.mark.parametrize("mode, age", [
    pytest.param("-trm eth0", 50000, id="fresh"),
    pytest.param("-trm eth0", 86400, id="a-day-old"),
    pytest.param("-trm eth0 -et", 0, id="every-time"),
])
def test_each_memory_with_each_outcome(device, mode, age, options):
    for outcome in (9, 10):
        servers = SERVERS[outcome].values()
        for server in servers:
            device.add_to_internet("addr", "add", server, "dev", "lo")
        device.dns(leading_to(*servers), servers=servers)
    device.change("ip route add unreachable 198.51.100.8; ip -6 route add unreachable 2001:db8:53::8")
    device.dns(right_answer)
    device.web([GOOD_PAGE])
    device.web([BAD_PAGE], servers=SERVERS[10].values())

    now = int(time.time())
    # Each pair of outcomes where the memory counts, otherwise the same outcome of both families.
    choices = each_pair(SERVERS) if age == 50000 else each_pair(SERVERS)[::5]
    cases = list(product(choices, each_pair([8, 1, 14])))
    commands = [prepare(ends, remembered, now - age) for ends, remembered in cases]
    for case, (code, out, stored) in zip(cases, device.run_each(commands, f"{mode} {options} -nrt")):
        ends, remembered = case
        is_kept = age == 50000 and {1, 14} & set(remembered.values())
        confirmed = [family for family in ends if is_kept and remembered[family] != 8 and ends[family] != 8]
        outcomes = {family: 1 if family in confirmed else ends[family] for family in FAMILIES[options]}
        assert (code, out, stored[:1]) == expected_end(outcomes, "-et" not in mode, confirmed), case
        is_probed = any(outcome == 1 and family not in confirmed for family, outcome in outcomes.items())
        for stamp in map(int, stored[1:]):
            assert now <= stamp < now + 300 if is_probed else stamp == (now - age if is_kept else 0), case


def test_each_device_class_asks_for_its_document(online):
    blocks = re.findall(r"@TOLVANE_V4_HOST_(.)@\n.*@TOLVANE_V6_HOST_\1@\n((?: *-dev\d .*\n)+)", MANUAL)
    rows = [(slot.lower(), *row) for slot, text in blocks for row in re.findall(r"(-dev\d) +(/\S+)", text)]
    assert len(rows) == 6
    for slot, option, path in rows:
        hosts = [f"v{version}-{slot}.probe.varnoko.example" for version in (4, 6)]
        run = online.run("-46", option)
        assert run.code == 17
        assert run.out == ""
        for host, query, request in zip(hosts, online.queries[-2:], online.requests[-2:]):
            assert host.replace(".", "?").encode() in re.sub(rb"[\x01-\x1f]", b"?", query.message)
            assert request.decode() == f"GET {path} HTTP/1.0\r\nHost: {host}:80\r\n\r\n"


@pytest.mark.parametrize("arguments, code, out", [
    pytest.param(["-i", "eth7"], 3, LINES[3].replace("eth0", "eth7"), id="missing"),
    pytest.param(["-trm", "eth7,,eth8", "-6"], 3, "", id="all-missing"),
    pytest.param(["-trm", "lo,eth0"], 5, "", id="first-with-an-address"),
])
def test_chosen_interface(device, arguments, code, out):
    run = device.run("-d", *arguments, shell='exec "$@" <&-')
    assert run.code == code
    assert run.out == out
    assert device.result_file.exists() == ("-trm" in arguments)


def test_no_usable_name_server(device):
    device.name_servers()
    run = device.run("-46", "-d", "-woi")
    assert run.code == 15 + 240
    assert run.out == ""


def test_wrong_document_at_a_private_address(device):
    device.add_to_internet("addr", "add", "172.31.0.1", "dev", "lo")
    device.dns(leading_to("172.31.0.1", "::"))
    device.web([BAD_PAGE], servers=["172.31.0.1"])
    assert device.run().code == 8
    assert len(device.requests) == 3  # attempts
