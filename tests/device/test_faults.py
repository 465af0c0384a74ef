"""Files, tools, limits and surroundings that are not as they should be, and other users of the device."""

import signal
import subprocess
import time

import pytest
from conftest import NAME_SERVERS, unhosted

AUTO = "/tmp/resolv.conf.auto"
RESULT = "/tmp/tolvaneresult"
OTHER = "/tmp/other"


def test_endless_file_costs_no_time(online):
    online.change(f"truncate -s 1000G {AUTO}")
    run = online.run()
    assert run.code == 1
    assert run.seconds < 10


BY_USER = f"chown -h 54321 {AUTO}"
ENVIRONMENT = "/proc/self/environ"
ALIAS = "/sys/class/net/eth0/ifalias"


# Both files of the kernel name the name server here.
@pytest.mark.parametrize("make, code", [
    pytest.param(f"ln -s {ENVIRONMENT} {AUTO}", 1, id="of-root-to-procfs"),
    pytest.param(f"ln -s ..{ALIAS} {AUTO}", 1, id="of-root-to-sysfs"),
    pytest.param(f"ln -s {ENVIRONMENT} {AUTO}; {BY_USER}; ln -s {AUTO} /etc/resolv.conf", 15, id="of-root-by-a-users"),
    pytest.param(f"ln -s {ALIAS} {AUTO}; {BY_USER}; umount /proc", 15, marks=unhosted, id="of-a-user-without-proc"),
])
def test_link_to_a_file_of_the_kernel(online, make, code):
    line = f"nameserver {NAME_SERVERS[0]}"
    alias = ["ip", "link", "set", "eth0", "alias", line]
    subprocess.run(["nsenter", f"--net={online.network}", *alias], check=True)
    online.change(f"rm /etc/resolv.conf; {make}")
    assert online.run("-woi", shell=f"exec env LINES='\n{line}\n' \"$@\"").code == code


# Except for the links in /proc, which lead wherever a process is.
def test_no_path_from_the_device_leads_to_the_machine(device):
    places = ["/mnt/device", "-xdev", "!", "-path", "/mnt/device/proc", "!", "-path", "/mnt/device/dev/*"]
    files = ["-type", "f,d", "-writable", "-printf", "%D\n"]
    find = ["nsenter", "-t", device.pid, "-m", "find", "-L", *places, *files]
    file_systems = subprocess.run(find, stdout=subprocess.PIPE, text=True).stdout.split()
    assert len(file_systems) > 10
    assert len(set(file_systems)) == 1


# Whoever opens the other end of a FIFO wakes the reader or writer that waits there.
@pytest.mark.parametrize("path, make, waiter", [
    pytest.param(AUTO, f"mkfifo /tmp/fifo; ln -s fifo {AUTO}", ": >/tmp/fifo", id="link-for-the-resolver-file"),
    pytest.param(RESULT, f"mkfifo {RESULT}", f": <{RESULT}", id="result-file"),
])
def test_special_file_is_not_even_opened(online, path, make, waiter):
    online.change(f"{make}; ({waiter}; : >/tmp/woken) >/dev/null 2>&1 &")
    time.sleep(0.5)
    online.run("-trm", "eth0")
    time.sleep(0.5)
    assert not (online.root / "tmp/woken").exists()
    online.change(f"test -p {path}")


def test_result_is_not_written_through_a_link(online):
    online.change(f"ln -s /tmp/nowhere {RESULT}")
    assert online.run("-trm", "eth0").code == 1
    assert online.result_file.is_symlink()


# Another user puts something in place of the result file while the checker runs.
@pytest.mark.parametrize("put", [
    pytest.param(f"ln {OTHER} {RESULT}", id="hard-link"),
    pytest.param(f": >{RESULT}; chmod 666 {RESULT}; chown 54321 {RESULT}", id="file-of-another-user"),
])
def test_result_file_is_a_new_one(online, put):
    online.write(OTHER, "precious\n")
    online.install("/sbin/ifconfig", f'#!/bin/sh\n{put}\nexec busybox ifconfig "$@"\n')
    assert online.run("-trm", "eth0").code == 1
    assert (online.root / "tmp/other").read_text() == "precious\n"
    assert online.result_file.read_text().startswith("14\n")
    status = online.result_file.stat()
    assert status.st_uid == 0
    assert oct(status.st_mode) == "0o100644"


def test_hung_tool_ends_with_the_checker(online):
    online.install("/bin/md5sum", "#!/bin/sh\nexec sleep 1234\n")
    online.command("timeout", "-s", "KILL", "1", "tolvane", "-nrt")
    time.sleep(0.5)
    assert "sleep 1234" not in online.command("ps").out


@pytest.mark.parametrize("name, code", [("ALRM", 128 + 14), ("TERM", 128 + 15), ("HUP", 8)])
def test_signals_that_the_caller_blocks_or_ignores(device, name, code):
    blocked = signal.pthread_sigmask(signal.SIG_BLOCK, [signal.SIGALRM, signal.SIGTERM])
    run = device.run(shell=f"exec 2>/dev/null; trap '' ALRM TERM HUP; timeout -s {name} 1 \"$@\"; exit $?")
    signal.pthread_sigmask(signal.SIG_SETMASK, blocked)
    assert run.code == code


WORKS = "IPv4 Internet connection is successful.\n"
MISMATCH = "XML Data is mismatch.\n"
BROKEN_PIPE = '{ sleep 0.2; "$@"; echo $? >/tmp/code; } | true; sleep 1; exit $(cat /tmp/code)'
NO_ROOM = 'ulimit -f 0; "$@"; code=$?; [ ! -e /tmp/tolvaneresult ] || exit 99; exit $code'


@pytest.mark.parametrize("shell, arguments, code, out", [
    pytest.param('exec "$@" <&- >&- 2>&-', [], 1, "", id="no-standard-descriptor"),
    pytest.param('umount /dev/null; rm /dev/null; exec "$@" 2>&-', [], 1, WORKS, id="no-null-device"),
    pytest.param(BROKEN_PIPE, ["-i", "eth7"], 3, "", id="reader-that-went-away"),
    pytest.param(NO_ROOM, ["-trm", "eth0"], 1, WORKS, marks=unhosted, id="no-file-may-grow"),
    pytest.param('ulimit -n 7; exec "$@"', [], 1, WORKS, marks=unhosted, id="7-descriptors"),
    pytest.param('rm /bin/md5sum; exec "$@"', [], 10, MISMATCH, id="no-md5sum"),
    pytest.param('rm /sbin/ifconfig; exec "$@"', ["-trm", "eth0"], 3, "", id="no-ifconfig"),
    pytest.param('rm /bin/sh; exec "$@"', [], 1, WORKS, marks=unhosted, id="no-shell"),
])
def test_surroundings(online, shell, arguments, code, out):
    run = online.run("-nrt", "-d", *arguments, shell=shell)
    assert run.code == code
    assert run.out == out
