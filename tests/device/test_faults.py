"""Files, tools, limits and surroundings that are not as they should be, and other users of the device."""

import time

import pytest
from conftest import unhosted

AUTO = "/tmp/resolv.conf.auto"
RESULT = "/tmp/tolvaneresult"
OTHER = "/tmp/other"


@pytest.mark.parametrize("make", [
    pytest.param(f"truncate -s 1000G {AUTO}", id="endless file"),
    pytest.param(f"mkfifo {AUTO}", id="FIFO"),
    pytest.param(f"ln -s /proc/kmsg {AUTO}; chown -h 54321 {AUTO}", id="link of a user to the kernel's messages"),
])
def test_useless_file_costs_no_time(online, make):
    online.change(make)
    run = online.run()
    assert run.code == 1
    assert run.seconds < 2
    assert run.cpu < 0.5


# Whoever opens the other end of a FIFO wakes the reader or writer that waits there.
@pytest.mark.parametrize("path, make, waiter", [
    pytest.param(AUTO, f"mkfifo /tmp/fifo; ln -s fifo {AUTO}", ": >/tmp/fifo", id="link for the resolver file"),
    pytest.param(RESULT, f"mkfifo {RESULT}", f": <{RESULT}", id="result file"),
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
    pytest.param(f"ln {OTHER} {RESULT}", id="hard link"),
    pytest.param(f": >{RESULT}; chmod 666 {RESULT}; chown 54321 {RESULT}", id="file of another user"),
])
def test_result_file_is_a_new_one(online, put):
    online.write(OTHER, "precious\n")
    online.install("/sbin/ifconfig", f'#!/bin/sh\n{put}\nexec busybox ifconfig "$@"\n')
    assert online.run("-trm", "eth0").code == 1
    assert online.read(OTHER) == "precious\n"
    assert online.read(RESULT).startswith("14\n")
    status = online.result_file.stat()
    assert status.st_uid == 0
    assert oct(status.st_mode) == "0o100644"


def test_hung_tool_ends_with_the_checker(online):
    online.install("/bin/md5sum", "#!/bin/sh\nexec sleep 1234\n")
    online.command("timeout", "-s", "KILL", "1", "tolvane", "-nrt")
    time.sleep(0.5)
    assert "sleep 1234" not in online.command("ps").out


WORKS = "IPv4 Internet connection is successful.\n"
MISMATCH = "XML Data is mismatch.\n"
BROKEN_PIPE = '{ sleep 0.2; "$@"; echo $? >/tmp/code; } | true; sleep 1; exit $(cat /tmp/code)'


@pytest.mark.parametrize("shell, arguments, code, out", [
    pytest.param('exec "$@" <&- >&- 2>&-', [], 1, "", id="no standard descriptor"),
    pytest.param('umount /dev/null; rm /dev/null; exec "$@" 2>&-', [], 1, WORKS, id="no null device"),
    pytest.param(BROKEN_PIPE, ["-i", "eth7"], 3, "", id="reader that went away"),
    pytest.param('ulimit -f 0; exec "$@"', ["-trm", "eth0"], 1, WORKS, marks=unhosted, id="no file may grow"),
    pytest.param('ulimit -n 7; exec "$@"', [], 1, WORKS, marks=unhosted, id="7 descriptors"),
    pytest.param('rm /bin/md5sum; exec "$@"', [], 10, MISMATCH, id="no md5sum"),
    pytest.param('rm /sbin/ifconfig; exec "$@"', ["-trm", "eth0"], 3, "", id="no ifconfig"),
    pytest.param('rm /bin/sh; exec "$@"', [], 1, WORKS, marks=unhosted, id="no shell"),
    pytest.param('exec env -i /sbin/"$@"', [], 1, WORKS, id="no environment"),
])
def test_surroundings(online, shell, arguments, code, out):
    run = online.run("-nrt", "-d", *arguments, shell=shell)
    assert run.code == code
    assert run.out == out
