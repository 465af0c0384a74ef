"""What the device scripts say, record and return, when, and what they leave."""

import json
import os
import re
import signal
import subprocess

import pytest
from conftest import ROOT, every_shell, run

EXPLAIN = "scripts/tolvane-explain"
RUN = "scripts/tolvane-run"
WAIT = "scripts/tolvane-wait"
HOTPLUG = "packaging/openwrt/tolvane/files/tolvane.hotplug"
EVERY_STATUS = 'for status in $(seq 0 255); do (set -- -j "$status"; . "$0"); done; exit 0'
LOGGER = 'logger() { echo "$3" >>"$LOG"; }\n'
WITHOUT_FLOCK = "command() { return 1; }\n"
CHECKER = """#!/bin/sh
echo "checks $*" >>"$LOG"
status=$(echo "$STATUSES" | cut -d' ' -f"$(grep -c ^checks "$LOG")")
if [ "$status" = hangs ]; then
    trap '' TERM
    sleep 1000 >/dev/null &
    echo >"$HANGS"
    sleep 1000
fi
exit "$status"
"""
HOOK = """#!/bin/sh
echo "hook $1 $2 $3" >>"$LOG"
grep -q "\\"status\\":$2," "$4"
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


@pytest.fixture
def device(run_script, tmp_path):
    """Runs a script with a checker that returns the given statuses in turn; what is checked and logged is in `log`."""
    hooks = tmp_path / "hooks"
    hooks.mkdir()
    hooks.chmod(0o755)
    files = {tmp_path / "checker": CHECKER, tmp_path / "run": f'#!/bin/sh\n{LOGGER}. {RUN}\n', hooks / "hook": HOOK}
    for path, text in files.items():
        path.write_text(text)
        path.chmod(0o755)
    log = tmp_path / "log"
    os.mkfifo(tmp_path / "hangs")
    names = {"TOLVANE": "checker", "TOLVANE_RUN": "run", "TOLVANE_RECORDS": "records", "TOLVANE_HOOKS": "hooks",
             "TOLVANE_SLOT": "slot", "LOG": "log", "HANGS": "hangs"}
    variables = {"TOLVANE_EXPLAIN": EXPLAIN, **{name: f"{tmp_path}/{file}" for name, file in names.items()}}

    def call(script, *arguments, stubs="", **environment):
        log.write_text("")
        return run_script(script, *arguments, stubs=LOGGER + stubs, **{**variables, "STATUSES": "17", **environment})

    call.log, call.tmp, call.variables = log, tmp_path, variables
    return call


@every_shell
def test_a_check_is_recorded_and_reported(device):
    for status, last, lines in ("17", "", 3), ("17", "17", 2), ("137", "17", 3):
        done = device(RUN, "-n", "a", "-46", "-i", 'eth"0', STATUSES=status)
        assert (done.returncode, done.stderr) == (int(status), "")
        record = json.loads((device.tmp / "records/a.json").read_text())
        assert record["status"] == int(status)
        assert (record["interface"], record["families"]) == ('eth"0', ["ipv4", "ipv6"])
        logged = device.log.read_text()
        assert f"hook a {status} {last}\n" in logged
        assert logged.count("\n") == lines
    assert "can also mean that the run was ended by SIGKILL" in logged


@every_shell
@pytest.mark.parametrize("arguments", [["-n", "../a"], ["-46", "-dev9"], ["-l", "$(id)"], ["-i", "a\nb"]])
def test_wrong_usage_checks_nothing_and_is_logged(device, arguments):
    assert device(RUN, *arguments).returncode == 78
    assert re.fullmatch("tolvane-run: .*\n", device.log.read_text())


def start(device, script, *arguments, shell="sh", stubs="", statuses="hangs 17"):
    words = [*shell.split(), "-c", f'{LOGGER}{stubs}. "$0"', script, *arguments]
    environment = {**os.environ, **device.variables, "STATUSES": statuses}
    return subprocess.Popen(words, cwd=ROOT, env=environment, stderr=subprocess.PIPE)


def start_until_it_hangs(device, *arguments, **options):
    device.log.write_text("")
    process = start(device, *arguments, **options)
    (device.tmp / "hangs").read_text()
    return process


# A process that is left keeps the standard error open, and the time limit fails the test.
def end(process):
    process.communicate(timeout=30)
    return process.returncode


in_every_shell = pytest.mark.parametrize("shell", ["busybox sh", "dash", "bash"])


@in_every_shell
@pytest.mark.parametrize("script, number, stubs", [
    pytest.param(RUN, signal.SIGKILL, "", id="tolvane-run"),
    pytest.param(RUN, signal.SIGKILL, WITHOUT_FLOCK, id="tolvane-run-without-flock"),
    pytest.param(WAIT, signal.SIGALRM, "", id="tolvane-wait"),
])
def test_a_signal_ends_the_check_and_frees_the_lock(device, shell, script, number, stubs):
    process = start_until_it_hangs(device, script, shell=shell, stubs=stubs)
    waiting = start(device, RUN, stubs=stubs)
    process.send_signal(number)
    assert end(process) == -number
    assert end(waiting) == 17


@in_every_shell
@pytest.mark.parametrize("stubs", ["", WITHOUT_FLOCK], ids=["flock", "without-flock"])
def test_one_check_at_a_time_until_its_limit(device, shell, stubs):
    blocked = signal.pthread_sigmask(signal.SIG_BLOCK, [signal.SIGALRM, signal.SIGTERM])
    process = start_until_it_hangs(device, RUN, "-l", "4", shell=shell, stubs=stubs)
    signal.pthread_sigmask(signal.SIG_SETMASK, blocked)
    assert end(start(device, RUN, "-l", "1", shell=shell, stubs=stubs)) == 75
    assert end(process) == 142


def test_hooks_and_a_full_directory_harm_nothing(device):
    (device.tmp / "hooks/fails").symlink_to("/bin/false")
    (device.tmp / "records").write_text("This is no directory.")
    assert device(RUN).returncode == 17
    assert "hook eth0 17 \n" in device.log.read_text()
    (device.tmp / "hooks").chmod(0o777)
    device(RUN)
    assert "somebody other than root can write to it" in device.log.read_text()
    assert "hook eth0" not in device.log.read_text()


@every_shell
@pytest.mark.parametrize("statuses, options, code, checks", [
    pytest.param("85 25 17", "-p 1 -46 -i eth1", 0, [3], id="both-must-work"),
    pytest.param("85 25", "-p 1 -a -46", 0, [2], id="one-family-is-enough"),
    pytest.param("9 9 9 9 9", "-t 9 -p 60", 1, range(2, 6), id="a-last-check-before-the-time-is-up"),
    pytest.param("hangs", "-t 1", 1, [1], id="a-check-that-takes-too-long"),
    pytest.param("127", "", 2, [1], id="no-checker"),
])
def test_waiting(device, statuses, options, code, checks):
    done = device(WAIT, "-j", *options.split(), STATUSES=statuses, HANGS="/dev/null")
    assert done.returncode == code
    assert re.search("(?m)^tolvane-wait: ", done.stderr)
    assert code == 2 or json.loads(done.stdout)["status"] in (142, int(statuses.split()[-1].replace("hangs", "142")))
    assert device.log.read_text().count("checks ") in checks


@pytest.mark.parametrize("uci, logged", [
    pytest.param('uci() { case $3 in *.options) echo "-6 * $(id)";; *) return 1;; esac; }',
                 'tolvane-run: "[*]" is not an option of a check', id="hostile-options"),
    pytest.param("cat() { echo 512; }", "checks -46 -woi -i eth1", id="PPP"),
])
def test_hotplug_checks_as_configured(device, uci, logged):
    event = {"ACTION": "ifup", "INTERFACE": "wan", "DEVICE": "eth1"}
    assert device(HOTPLUG, stubs=uci + "\n", after="wait", **event).stderr == ""
    assert re.match(logged, device.log.read_text())


def test_metrics(device):
    metrics = ROOT / "scripts/prometheus-hook"
    (device.tmp / "hooks/metrics").write_bytes(metrics.read_bytes())
    (device.tmp / "hooks/metrics").chmod(0o755)
    device(RUN, "-46", STATUSES="25", TOLVANE_METRICS=str(device.tmp))
    text = (device.tmp / "tolvane-eth0.prom").read_text()
    works = re.findall(r'(?m)^tolvane_works{check="eth0",family="(\w+)"} (\d)$', text)
    assert works == [("ipv4", "0"), ("ipv6", "1")]
    run("promtool", "check", "metrics", input=text)


def test_alerts():
    run("promtool", "test", "rules", ROOT / "tests/deploy/alerts.yml")
