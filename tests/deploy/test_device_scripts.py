"""What the device scripts say and log, and when."""
import time
import pytest

OUTCOMES = {0: "not tested", 1: "works", 4: "no address", 5: "no default gateway", 6: "no DNS server",
            8: "DNS query", 9: "connection", 10: "did not verify", 15: "no usable name server"}
LOGGER = 'logger() { printf "%s|" "$@" >>"$LOG"; echo >>"$LOG"; }\n'


def test_every_exit_status_is_explained_or_refused(run_script):
    for code in range(256):
        done = run_script("contrib/tolvane-explain", str(code))
        lines, ipv4, ipv6 = done.stdout.splitlines(), code % 16, code // 16
        if code in (2, 3):
            assert done.returncode == 0 and len(lines) == 2 and "interface" in lines[0], done
        elif code == 0 or ipv4 not in OUTCOMES or ipv6 not in OUTCOMES:
            assert done.returncode == 1 and not lines and str(code) in done.stderr, done
        else:
            first, second = lines[0].split("; IPv6: ")
            assert done.returncode == 0 and first.startswith(f"{code}: IPv4: ") and not done.stderr, done
            assert OUTCOMES[ipv4] in first and OUTCOMES[ipv6] in second and "IPv6" not in first, done
            looks = [line[:13] for line in lines[1:]][:(ipv4 > 1) + (ipv6 > 1)]
            assert looks == ["IPv4: look at"] * (ipv4 > 1) + ["IPv6: look at"] * (ipv6 > 1), done
            assert ("private" in done.stdout) == (ipv4 == 8) and ("unknown argument" in done.stdout) == (code == 255)
    for text in ["", "x", "300", "256", "-1", "025", "2 5", "1e1", "99999999999999999999"]:
        done = run_script("contrib/tolvane-explain", text)
        assert (done.returncode, done.stdout, done.stderr.count("\n")) == (1, "", 1), done


@pytest.mark.parametrize("action, device, logged", [
    ("ifup", "eth1", "-t|tolvane|wan (eth1): 25: IPv4: connection to the probe server failed; IPv6: works|\n"),
    ("ifdown", "eth1", ""), ("ifup", "", ""), ("ifup", "lo", "")])
def test_hotplug_checks_the_device_that_came_up(run_script, tmp_path, action, device, logged):
    (log := tmp_path / "log").touch()
    tolvane = 'tolvane() { sleep 0.5; [ "$*" != "-i eth1 -46" ] || return 25; }\n'
    done = run_script("contrib/hotplug-tolvane", stubs=LOGGER + tolvane, ACTION=action,
                      INTERFACE="wan", DEVICE=device, LOG=str(log), TOLVANE_EXPLAIN="contrib/tolvane-explain")
    assert (done.returncode, done.stderr) == (0, "") and log.read_text() == ""
    time.sleep(1)
    assert log.read_text() == logged


def test_cron_logs_a_change_alone_and_waits_a_fraction(run_script, tmp_path):
    log, state = tmp_path / "log", tmp_path / "state"
    stubs = LOGGER + 'tolvane() { echo "$*" >>"$LOG"; return "$CODE"; }\nsleep() { echo "sleep $1" >>"$LOG"; }\n'

    def logged(code, *options, spread="0"):
        log.write_text("")
        done = run_script("contrib/cron-tolvane", "eth0,wlan0", *options, stubs=stubs, CODE=code, LOG=str(log),
                          TOLVANE_SPREAD=spread, TOLVANE_STATE=str(state), TOLVANE_EXPLAIN="contrib/tolvane-explain")
        assert (done.returncode, done.stderr) == (0, "")
        return log.read_text().splitlines()

    works = "-t|tolvane|eth0,wlan0: 17: IPv4: works; IPv6: works|"
    assert logged("17") == ["-trm eth0,wlan0 -46 -dev2", works]
    assert logged("17") == ["-trm eth0,wlan0 -46 -dev2"]
    assert [line[:25] for line in logged("9", "-nrt")] == ["-trm eth0,wlan0 -nrt", "-t|tolvane|eth0,wlan0: 9:"]
    assert logged("17")[1:] == [works]
    waits = [int(logged("17", spread="1000")[0].split()[1]) for _ in range(8)]
    assert 100 < max(waits) < 1000 and len(set(waits)) > 1
