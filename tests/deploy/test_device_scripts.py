"""What the device scripts say, log and return, and when."""

import json
import re

import pytest
from conftest import ROOT, every_shell

EXPLAIN = "scripts/tolvane-explain"
WAIT = "scripts/tolvane-wait"
CRON = "scripts/cron-tolvane"
HOTPLUG = "scripts/hotplug-tolvane"
EVERY_STATUS = 'for status in $(seq 0 255); do (set -- -j "$status"; . "$0"); done; exit 0'
LOGGER = 'logger() { echo "$*" >>"$LOG"; }\n'
CHECKER = """#!/bin/sh
echo "checks $*" | tee -a "$LOG"
status=$(echo "$STATUSES" | cut -d' ' -f"$(grep -c ^checks "$LOG")")
[ "$status" != hangs ] || exec sleep 1000
sleep "${SECONDS_OF_A_CHECK:-0}"
exit "$status"
"""


def rows_of_manual(page, row):
    return re.findall(rf"(?m)^\.It {row}$", (ROOT / "docs" / page).read_text())


@every_shell
def test_every_status_is_json_in_the_words_of_the_manuals(run_script):
    words = {}
    for numbers, word in rows_of_manual("tolvane-explain.1", r"([\d, ]+) Ta ([a-z-]+)"):
        words.update({int(number): word for number in numbers.split(",")})
    ipv4 = dict(rows_of_manual("tolvane.8", r"(\d+) Ta [\d\\&]+ Ta (.*)"))
    ipv6 = dict(rows_of_manual("tolvane.8", r"[\d\\&]+ Ta (\d+) Ta (.*)"))
    lines = run_script(EXPLAIN, stubs=EVERY_STATUS).stdout.splitlines()
    assert len(lines) == 256
    for status, line in enumerate(lines):
        said = json.loads(line)
        assert said["status"] == status
        low = status % 16
        high = status // 16
        if status not in (0, 2, 3) and {f"{16 * low}", f"{16 * high}"} <= ipv6.keys():
            for_ipv4 = {"code": low, "word": words[low], "sentence": ipv4[f"{low}"]}
            for_ipv6 = {"code": high, "word": words[high], "sentence": ipv6[f"{16 * high}"]}
            assert said["ipv4"].items() >= for_ipv4.items()
            assert said["ipv6"].items() >= for_ipv6.items()
        else:
            other = "ended-by-signal" if 130 <= status < 160 else "unknown"
            assert said["ipv4"]["word"] == words.get(status or None, other)
            assert said["ipv6"] == said["ipv4"]
        if status in (2, 3):
            assert said["ipv4"]["sentence"] == ipv4[f"{status}"]


def test_sentences_and_metrics(run_script):
    sentences = run_script(EXPLAIN, "136").stdout
    assert re.fullmatch("136: IPv4: .*; IPv6: .*\nIPv4: look at .*\nIPv6: look at .*\n", sentences)
    metrics = run_script(EXPLAIN, "-p", "25").stdout
    assert 'tolvane_outcome{family="ipv4",word="connection-failed"} 9\n' in metrics
    assert metrics.endswith('tolvane_works{family="ipv4"} 0\ntolvane_works{family="ipv6"} 1\n')
    assert run_script(EXPLAIN, "025").returncode == 1
    assert '{family="ipv6",word="time-limit"} NaN\n' in run_script(EXPLAIN, "-p", "142").stdout


@pytest.fixture
def device(run_script, tmp_path):
    """Runs a script with a checker that returns the given statuses in turn; what is checked and logged is in `log`."""
    log = tmp_path / "log"
    checker = tmp_path / "checker"
    checker.write_text(CHECKER)
    checker.chmod(0o755)
    paths = {"TOLVANE": str(checker), "TOLVANE_STATE": str(tmp_path / "state"), "TOLVANE_LOCK": str(tmp_path / "lock")}
    others = {"TOLVANE_EXPLAIN": EXPLAIN, "TOLVANE_SPREAD": "0", "STATUSES": "17", "LOG": str(log)}

    def call(script, *arguments, stubs="", **environment):
        log.write_text("")
        return run_script(script, *arguments, stubs=LOGGER + stubs, **{**paths, **others, **environment})

    call.log = log
    return call


@every_shell
@pytest.mark.parametrize("statuses, options, code, checks", [
    pytest.param("85 25 17", "-p 1 -46 -i eth1", 0, 3, id="both must work"),
    pytest.param("85 25", "-p 1 -a -46", 0, 2, id="one family is enough"),
    pytest.param("9 9", "-t 0", 1, 1, id="a single check"),
    pytest.param("9 9 9", "-t 3 -p 60", 1, 2, id="a last check before the time is up"),
    pytest.param("142 255 17", "-p 1 -46", 0, 3, id="a killed run and an ambiguous status"),
    pytest.param("hangs", "-t 1", 1, 1, id="a check that takes too long"),
    pytest.param("127", "", 2, 1, id="no checker"),
    pytest.param("17", "-46 -x", 2, 0, id="an unknown option"),
])
def test_waiting(device, statuses, options, code, checks):
    done = device(WAIT, *options.split(), STATUSES=statuses)
    assert done.returncode == code
    assert done.stderr.startswith("tolvane-wait: ")
    assert device.log.read_text().count("checks") == checks


@every_shell
@pytest.mark.parametrize("statuses", ["hangs", "9"])
def test_a_signal_ends_waiting_and_the_running_check(device, statuses):
    stubs = "(sleep 1; kill $$) >/dev/null 2>&1 &"
    # A process that is left would keep the output open, and the time limit of run_script would fail the test.
    assert device(WAIT, "-p", "1000", "-t", "2000", STATUSES=statuses, stubs=stubs).returncode < 0


def event(device, stubs="", after="", **environment):
    """What is logged after an event, when the script's background process has ended."""
    known = {"ACTION": "ifup", "INTERFACE": "wan", "DEVICE": "eth1", "PATH": "/none", **environment}
    assert device(HOTPLUG, stubs=stubs, after=after + "wait", **known).stderr == ""
    return device.log.read_text()


@every_shell
@pytest.mark.parametrize("status, code, sentence", [
    pytest.param("25", 0, "25: IPv4: connection to the probe server failed; IPv6: works", id="outcome"),
    pytest.param("137", 0, "137: .*; 137 can also mean that the run was ended by SIGKILL", id="perhaps killed"),
    pytest.param("127", 127, "127: no outcome: tolvane was not found", id="no checker"),
])
def test_cron_and_hotplug_log_the_outcome(device, status, code, sentence):
    assert device(CRON, "eth0", STATUSES=status).returncode == code
    assert re.fullmatch(f"checks -trm eth0 -46 -dev2\n-t tolvane eth0: {sentence}\n", device.log.read_text())
    log = event(device, STATUSES=status)
    assert re.fullmatch(f"checks -46 -i eth1\n-t tolvane wan .eth1.: {sentence}\n", log)


def test_cron_logs_only_changes_whatever_its_path(device):
    for status, lines in ("17", 2), ("17", 1), ("9", 2), ("17", 2):
        device(CRON, "eth0", "-nrt", STATUSES=status, PATH="/none")
        assert device.log.read_text().count("\n") == lines


@pytest.mark.parametrize("stubs, variables, checks", [
    pytest.param("", {"INTERFACE": "lan"}, "", id="LAN"),
    pytest.param("", {"ACTION": "ifdown"}, "", id="down"),
    pytest.param("cat() { echo 512; }", {}, "checks -46 -woi -i eth1", id="PPP"),
])
def test_hotplug_checks_the_default_interfaces(device, stubs, variables, checks):
    assert event(device, stubs, **variables).partition("\n")[0] == checks


def test_hotplug_checks_as_configured(device):
    uci = 'uci() { case $3 in *.interfaces) echo "lte" ;; *.options) echo "-6 -nrt" ;; *) echo 1 ;; esac; }'
    logged = "checks -6 -nrt -i eth1\n-t tolvane lte (eth1): 142: no outcome: a time limit ended the run\n"
    assert event(device, uci, INTERFACE="lte", STATUSES="hangs") == logged
    assert event(device, uci) == ""


@pytest.mark.parametrize("stubs, checks", [
    pytest.param("", 2, id="a waiting check serves later events"),
    pytest.param("command() { return 1; }", 3, id="without flock"),
])
def test_hotplug_runs_one_check_at_a_time(device, stubs, checks):
    more_events = 'sleep 0.3; . "$0"; sleep 0.1; . "$0"\n'
    log = event(device, stubs, more_events, STATUSES="17 17 17", SECONDS_OF_A_CHECK="0.8")
    assert re.fullmatch(r"(checks .*\n-t tolvane .*\n)+", log)
    assert log.count("checks") == checks
