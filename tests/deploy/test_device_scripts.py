"""What the device scripts say and log, and when."""
import time
import pytest

LOGGER = 'logger() { printf "%s|" "$@" >>"$LOG"; echo >>"$LOG"; }\n'


def test_exit_statuses_are_explained_with_the_stage_to_look_at_or_refused(run_script):
    both = ["IPv4", "IPv6"]
    for code, looks in [(1, []), (17, []), (25, both[:1]), (129, both[1:]), (136, both), (84, both)]:
        done = run_script("scripts/tolvane-explain", str(code))
        assert [line.partition(": look at ")[0] for line in done.stdout.splitlines()[1:]] == looks, done
        assert done.returncode == 0 and ("private" in done.stdout) == (code % 16 == 8)
    assert "unknown argument" in run_script("scripts/tolvane-explain", "255").stdout
    for text in ["", "x", "0", "7", "14", "300", "256", "-1", "025", "2 5", "1e1", "99999999999999999999"]:
        done = run_script("scripts/tolvane-explain", text)
        assert (done.returncode, done.stdout, done.stderr.count("\n")) == (1, "", 1), done


@pytest.mark.parametrize("action, device, logged", [
    ("ifup", "eth1", "-t|tolvane|wan (eth1): 25: IPv4: connection to the probe server failed; IPv6: works|\n"),
    ("ifdown", "eth1", ""), ("ifup", "", ""), ("ifup", "lo", "")])
def test_hotplug_checks_the_device_that_came_up(run_script, tmp_path, action, device, logged):
    (log := tmp_path / "log").touch()
    tolvane = 'tolvane() { sleep 0.5; [ "$*" != "-i eth1 -46" ] || return 25; }\n'
    done = run_script("scripts/hotplug-tolvane", stubs=LOGGER + tolvane, ACTION=action,
                      INTERFACE="wan", DEVICE=device, LOG=str(log), TOLVANE_EXPLAIN="scripts/tolvane-explain")
    assert (done.returncode, done.stderr) == (0, "") and log.read_text() == ""
    time.sleep(1)
    assert log.read_text() == logged


def test_cron_logs_a_change_alone_and_waits_a_fraction(run_script, tmp_path):
    log, state = tmp_path / "log", tmp_path / "state"
    stubs = LOGGER + 'tolvane() { echo "$*" >>"$LOG"; return "$CODE"; }\nsleep() { echo "sleep $1" >>"$LOG"; }\n'

    def logged(code, *options, spread="0"):
        log.write_text("")
        done = run_script("scripts/cron-tolvane", "eth0,wlan0", *options, stubs=stubs, CODE=code, LOG=str(log),
                          TOLVANE_SPREAD=spread, TOLVANE_STATE=str(state), TOLVANE_EXPLAIN="scripts/tolvane-explain")
        assert (done.returncode, done.stderr) == (0, "")
        return log.read_text().splitlines()

    works = "-t|tolvane|eth0,wlan0: 17: IPv4: works; IPv6: works|"
    assert logged("17") == ["-trm eth0,wlan0 -46 -dev2", works]
    assert logged("17") == ["-trm eth0,wlan0 -46 -dev2"]
    assert [line[:25] for line in logged("9", "-nrt")] == ["-trm eth0,wlan0 -nrt", "-t|tolvane|eth0,wlan0: 9:"]
    assert logged("17")[1:] == [works]
    waits = [int(logged("17", spread="1000")[0].split()[1]) for _ in range(8)]
    assert 100 < max(waits) < 1000 and len(set(waits)) > 1
