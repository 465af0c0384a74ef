"""What the device scripts say, log and return, and when."""

import json
import re
import time
from pathlib import Path

import pytest

ROOT = Path(__file__).resolve().parents[2]
EXPLAIN = "scripts/tolvane-explain"
CRON = "scripts/cron-tolvane"
EVERY_STATUS = 'for code in $(seq 0 255); do (set -- {} "$code"; . "$0"); done; exit 0'
LOGGER = 'logger() { echo "$*" >>"$LOG"; }\n'
CHECKER = """#!/bin/sh
echo "checks $*" | tee -a "$LOG"
status=$(echo "$STATUSES" | cut -d' ' -f"$(grep -c ^checks "$LOG")")
[ "$status" != hangs ] || exec sleep 50
sleep "${SECONDS_OF_A_CHECK:-0}"
exit "$status"
"""


@pytest.fixture
def device(run_script, tmp_path):
    """Runs a script with a checker that returns the given statuses in turn; what is checked and logged is in `log`."""
    log = tmp_path / "log"
    checker = tmp_path / "checker"
    checker.write_text(CHECKER)
    checker.chmod(0o755)

    def run(script, *arguments, stubs="", **environment):
        log.write_text("")
        own = {"TOLVANE": str(checker), "TOLVANE_EXPLAIN": EXPLAIN, "LOG": str(log), "STATUSES": "17",
               "TOLVANE_STATE": str(tmp_path / "state"), "TOLVANE_LOCK": str(tmp_path / "lock")}
        return run_script(script, *arguments, stubs=LOGGER + stubs, **{**own, **environment})

    run.log = log
    return run


def test_every_status_is_json_with_the_words_of_the_manual(run_script):
    lines = run_script(EXPLAIN, stubs=EVERY_STATUS.format("-j")).stdout.splitlines()
    rows = re.findall(r"(?m)^\.It ([\d, ]+) Ta ([a-z-]+)$", (ROOT / "docs/tolvane-explain.1").read_text())
    words = {int(number): word for numbers, word in rows for number in numbers.split(",")}
    outcomes = {0, 1, 4, 5, 6, 8, 9, 10, 15}
    assert len(lines) == 256
    for status, line in enumerate(lines):
        said = json.loads(line)
        assert said["status"] == status
        if status > 3 and {status % 16, status // 16} <= outcomes or status == 1:
            assert [said[family]["code"] for family in ("ipv4", "ipv6")] == [status % 16, status // 16]
            assert [said[family]["word"] for family in ("ipv4", "ipv6")] == [words[status % 16], words[status // 16]]
        else:
            others = "ended-by-signal" if 130 <= status < 160 else "unknown"
            assert said["ipv4"] == said["ipv6"]
            assert said["ipv4"]["word"] == (words.get(status, others) if status else "unknown")


def test_every_status_is_metrics_with_their_types(run_script):
    typed = set()
    sample = r'(\w+)(\{family="ipv[46]"(,word="[a-z-]+")?\})? (\d+|NaN)'
    for line in run_script(EXPLAIN, stubs=EVERY_STATUS.format("-p")).stdout.splitlines():
        if line.startswith("# TYPE"):
            typed.add(re.fullmatch(r"# TYPE (\w+) gauge", line)[1])
        elif not line.startswith("# HELP"):
            assert re.fullmatch(sample, line)[1] in typed
    one = run_script(EXPLAIN, "-p", "25").stdout
    assert 'tolvane_outcome{family="ipv4",word="connection-failed"} 9\n' in one
    assert 'tolvane_works{family="ipv4"} 0\ntolvane_works{family="ipv6"} 1\n' in one


@pytest.mark.parametrize("status, lines", [
    pytest.param("136", ["IPv4: look at .* private", "IPv6: look at"], id="both"),
    pytest.param("3", ["look at .* -woi"], id="interfaces without a hardware address"),
    pytest.param("80", ["IPv6: look at .* lifetime"], id="routes that do not count"),
    pytest.param("96", ["IPv6: look at .* IPv6 address"], id="IPv6 name server"),
    pytest.param("15", ["IPv4: look at .* 15 is 6 found without"], id="name server without the check"),
    pytest.param("137", ["IPv4", "IPv6", "137 can also mean that the run was ended by SIGKILL"], id="also a signal"),
    pytest.param("139", ["look at the system log"], id="only a signal"),
    pytest.param("255", ["IPv4", "IPv6", ".*unknown argument"], id="also wrong usage")])
def test_advice(run_script, status, lines):
    done = run_script(EXPLAIN, status)
    assert done.returncode == 0
    said = done.stdout.splitlines()[1:]
    assert len(said) == len(lines)
    assert all(map(re.match, lines, said))


@pytest.mark.parametrize("text", ["", "x", "0", "7", "14", "256", "-1", "025", "2 5", "99999999999999999999"])
def test_what_no_run_ends_with_is_refused(run_script, text):
    done = run_script(EXPLAIN, text)
    assert (done.returncode, done.stdout, done.stderr.count("\n")) == (1, "", 1)


@pytest.mark.parametrize("statuses, options, code, checks", [
    pytest.param("17 9", "-46", 0, 1, id="both families work"),
    pytest.param("85 25 17", "-p 1 -46 -i eth1", 0, 3, id="both must work"),
    pytest.param("85 25", "-p 1 -a -46", 0, 2, id="one family is enough"),
    pytest.param("17 1 16", "-p 1 -46 -6 -tRm -46 -D", 0, 3, id="the last family option counts, a value does not"),
    pytest.param("9 9", "-t 0", 1, 1, id="a single check"),
    pytest.param("9 9 9", "-t 3 -p 60", 1, 2, id="a last check before the time is up"),
    pytest.param("142 255 17", "-p 1 -46", 0, 3, id="a killed run and an ambiguous status"),
    pytest.param("hangs", "-t 1", 1, 1, id="a check that takes too long"),
    pytest.param("255", "-woi", 2, 1, id="one family cannot end with 255"),
    pytest.param("127", "", 2, 1, id="no checker"),
    pytest.param("17", "-46 -V", 2, 0, id="an option that checks nothing"),
    pytest.param("17", "-46 -x", 2, 0, id="an unknown option"),
    pytest.param("17", "-46 -i", 2, 0, id="a missing value"),
    pytest.param("17", "-i interface-of-20-chars", 2, 0, id="a value that is too long"),
    pytest.param("17", "-p 0", 2, 0, id="a busy loop")])
def test_waiting(device, statuses, options, code, checks):
    start = time.monotonic()
    done = device("scripts/tolvane-wait", *options.split(), STATUSES=statuses)
    assert done.returncode == code, done
    assert device.log.read_text().count("checks") == checks
    assert done.stderr.startswith("tolvane-wait: ")
    assert time.monotonic() - start < 20


def test_waiting_takes_every_option_of_the_manual(device):
    description = (ROOT / "docs/tolvane.8").read_text().partition("\n.Sh ENVIRONMENT")[0]
    words = set(re.findall(r"(?m)^\.It Fl (\w+)", description)) - {"v"}
    options = [f"-{word} eth0" if word in ("i", "trm") else f"-{word}" for word in sorted(words)]
    done = device("scripts/tolvane-wait", "-q", *" ".join(options).upper().split(), STATUSES="16 17")
    assert (done.returncode, done.stdout, done.stderr) == (0, "", "")


@pytest.mark.parametrize("signal", ["HUP", "INT", "TERM"])
@pytest.mark.parametrize("statuses", ["hangs", "9"])
def test_a_signal_ends_waiting_and_the_running_check(device, signal, statuses):
    start = time.monotonic()
    stubs = f"(sleep 1; kill -{signal} $$) >/dev/null 2>&1 &"
    done = device("scripts/tolvane-wait", "-p", "50", STATUSES=statuses, stubs=stubs)
    assert done.returncode < 0
    assert time.monotonic() - start < 20  # a process that is left would keep the output open


@pytest.mark.parametrize("status, sentence", [
    pytest.param("25", "25: IPv4: connection to the probe server failed; IPv6: works", id="outcome"),
    pytest.param("142", "142: no outcome: a time limit ended the run", id="time limit"),
    pytest.param("137", "137: .*; 137 can also mean that the run was ended by SIGKILL", id="perhaps killed")])
def test_cron_and_hotplug_log_the_outcome(device, status, sentence):
    assert device(CRON, "eth0", STATUSES=status, TOLVANE_SPREAD="0").returncode == 0
    assert re.fullmatch(f"checks -trm eth0 -46 -dev2\n-t tolvane eth0: {sentence}\n", device.log.read_text())
    event(device, STATUSES=status)
    assert re.fullmatch(f"checks -46 -i eth1\n-t tolvane wan \\(eth1\\): {sentence}\n", device.log.read_text())


def test_cron_logs_only_changes_whatever_its_path(device):
    for status, lines in ("17", 2), ("17", 1), ("9", 2), ("17", 2):
        device(CRON, "eth0", "-nrt", STATUSES=status, TOLVANE_SPREAD="0", PATH="/none")
        assert len(device.log.read_text().splitlines()) == lines


def test_cron_waits_a_fraction_of_the_spread(device):
    waits = set()
    for _ in range(8):
        device(CRON, "eth0", TOLVANE_SPREAD="1000", stubs='sleep() { echo "$1" >>"$LOG"; }')
        waits.add(int(device.log.read_text().splitlines()[0]))
    assert 100 < max(waits) < 1000
    assert len(waits) > 1


def test_cron_reports_what_it_cannot_do(device):
    wrong = device(CRON, "eth0", TOLVANE_SPREAD="5m")
    assert (wrong.returncode, wrong.stderr.count("\n")) == (2, 1)
    missing = device(CRON, "eth0", TOLVANE_SPREAD="0", TOLVANE="/no/checker")
    assert (missing.returncode, "127: no outcome" in device.log.read_text()) == (127, True)


def event(device, stubs="", logged=1, **environment):
    """What is logged after an event, when there has been time for as many outcomes and a few more."""
    known = {"ACTION": "ifup", "INTERFACE": "wan", "DEVICE": "eth1", "PATH": "/none", **environment}
    done = device("scripts/hotplug-tolvane", stubs=stubs, **known)
    assert (done.returncode, done.stderr) == (0, "")
    for _ in range(100):
        if device.log.read_text().count("-t tolvane") < logged:
            time.sleep(0.1)
    time.sleep(0.3)
    return device.log.read_text()


UCI = 'uci() { case $3 in *.interfaces) echo "lte wan" ;; *.options) echo "-6 -nrt" ;; *) echo 1 ;; esac; }'


@pytest.mark.parametrize("stubs, variables, checked", [
    pytest.param("", {}, "-46 -i eth1", id="default"),
    pytest.param("", {"INTERFACE": "lan"}, None, id="LAN"),
    pytest.param("", {"ACTION": "ifdown"}, None, id="down"),
    pytest.param("", {"DEVICE": ""}, None, id="no device"),
    pytest.param("cat() { echo 512; }", {}, "-46 -woi -i eth1", id="PPP"),
    pytest.param(UCI, {"INTERFACE": "lte"}, "-6 -nrt -i eth1", id="configured"),
    pytest.param(UCI, {"INTERFACE": "wan6"}, None, id="not configured")])
def test_hotplug_checks_the_configured_interfaces(device, stubs, variables, checked):
    log = event(device, stubs, checked is not None, **variables)
    assert log.partition("\n")[0] == (f"checks {checked}" if checked else "")


def test_hotplug_ends_a_check_after_the_configured_time(device):
    assert "no outcome: a time limit ended the run" in event(device, UCI, STATUSES="hangs")


@pytest.mark.parametrize("stubs, checks", [
    pytest.param("", 2, id="a waiting check serves later events"),
    pytest.param("command() { return 1; }", 3, id="without flock")])
def test_hotplug_runs_one_check_at_a_time(device, stubs, checks):
    more_events = '\n(. "$0"); /bin/sleep 0.3; (. "$0"); /bin/sleep 0.1'
    log = event(device, stubs + more_events, checks, STATUSES="17 17 17", SECONDS_OF_A_CHECK="0.8")
    assert re.fullmatch(r"(checks .*\n-t tolvane .*\n)+", log)
    assert log.count("checks") == checks
