"""Files, tools, limits and surroundings that are not as they should be, and other users of the device."""

import time

import pytest
from conftest import (
    BAD_PAGE,
    right_answer,
    unhosted,
)

AUTO = "/tmp/resolv.conf.auto"
CONFIG = "/etc/tolvane.cfg"
RESULT = "/tmp/tolvaneresult"
OTHER = "/tmp/other"
LINK_TO_FIFO = "mkfifo /tmp/fifo; ln -s /tmp/fifo {}"


@pytest.fixture
def failing(device):
    """A device that gets wrong documents, so that the checker reads the configuration file as well."""
    device.dns(right_answer)
    device.web([BAD_PAGE])
    return device


@pytest.mark.parametrize("path, make", [
    pytest.param(AUTO, "truncate -s 1000G {}", id="endless file"),
    pytest.param(AUTO, "ln -s /dev/zero {}", id="endless device"),
    pytest.param(AUTO, "mkfifo {}", id="FIFO"),
    pytest.param(CONFIG, "truncate -s 1000G {}", id="endless configuration file"),
])
def test_useless_file_costs_no_time(failing, path, make):
    failing.change(make.format(path))
    run = failing.run("-46", "-nrt")
    assert run.code == 10 + 160
    assert run.seconds < 2
    assert run.cpu < 0.5


# Whoever opens the other end of a FIFO wakes the reader or writer that waits there.
@pytest.mark.parametrize("path, make, waiter", [
    pytest.param(AUTO, LINK_TO_FIFO, ": >/tmp/fifo", id="link for the resolver file"),
    pytest.param(CONFIG, LINK_TO_FIFO, ": >/tmp/fifo", id="link for the configuration file"),
    pytest.param(RESULT, LINK_TO_FIFO, ": >/tmp/fifo", id="link for the result file"),
    pytest.param(RESULT, "mkfifo {}", f": <{RESULT}", id="result file"),
])
def test_special_file_is_not_even_opened(failing, path, make, waiter):
    failing.change(make.format(path))
    failing.change(f"({waiter}; : >/tmp/woken) >/dev/null 2>&1 &")
    time.sleep(0.5)
    failing.run("-46", "-nrt", "-trm", "eth0")
    time.sleep(0.5)
    assert not (failing.root / "tmp/woken").exists()
    failing.change(f"test -p {path}")


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


def test_interface_name_reaches_ifconfig_as_it_is(online):
    name = "a b;'$(id)`id`\n*?\\n"
    online.install("/sbin/ifconfig", "#!/bin/sh\nprintf '%s.' \"$@\" $LANG >/tmp/words\n")
    run = online.run("-d", "-i", name, shell='exec "$@"')
    assert run.code == 3
    assert run.out == f"Network Interface {name} does not exist.\n"
    assert online.read("/tmp/words") == f"{name}.C."


@pytest.mark.parametrize("tool", ["/sbin/ifconfig", "/bin/md5sum"])
def test_hung_tool_ends_with_the_checker(online, tool):
    online.install(tool, "#!/bin/sh\nexec sleep 1234\n")
    online.command("timeout", "-s", "KILL", "1", "tolvane", "-nrt")
    time.sleep(0.5)
    assert "sleep 1234" not in online.command("ps").out


WORKS = "IPv4 Internet connection is successful.\n"
MISMATCH = "XML Data is mismatch.\n"
BROKEN_PIPE = '{ sleep 0.2; "$@"; echo $? >/tmp/code; } | true; sleep 1; exit $(cat /tmp/code)'
NO_PROCESS = 'echo u:x:54321:54321::/:/bin/sh >/etc/passwd; su u -c "ulimit -u 1; exec $*"'


@pytest.mark.parametrize("shell, arguments, code, out", [
    pytest.param('exec "$@" <&-', [], 1, WORKS, id="no standard input"),
    pytest.param('exec "$@" <&- >&- 2>&-', [], 1, "", id="no standard descriptor"),
    pytest.param('umount /dev/null; rm /dev/null; exec "$@" 2>&-', [], 1, WORKS, id="no null device"),
    pytest.param(BROKEN_PIPE, ["-i", "eth7"], 3, "", id="reader that went away"),
    pytest.param('ulimit -f 0; exec "$@"', ["-trm", "eth0"], 1, WORKS, id="no file may grow"),
    pytest.param('ulimit -n 6; exec "$@"', [], 10, MISMATCH, marks=unhosted, id="6 descriptors"),
    pytest.param('ulimit -n 7; exec "$@"', [], 1, WORKS, marks=unhosted, id="7 descriptors"),
    pytest.param(NO_PROCESS, [], 10, MISMATCH, marks=unhosted, id="no process"),
    pytest.param('rm /bin/md5sum; exec "$@"', [], 10, MISMATCH, id="no md5sum"),
    pytest.param('rm /sbin/ifconfig; exec "$@"', ["-trm", "eth0"], 3, "", id="no ifconfig"),
    pytest.param('rm /bin/sh; exec "$@"', [], 1, WORKS, marks=unhosted, id="no shell"),
    pytest.param('rm /bin/sh; exec "$@"', ["-trm", "eth0"], 1, WORKS, marks=unhosted, id="no shell, terminal mode"),
    pytest.param('exec env -i /sbin/"$@"', [], 1, WORKS, id="no environment"),
])
def test_surroundings(online, shell, arguments, code, out):
    run = online.run("-nrt", "-d", *arguments, shell=shell)
    assert run.code == code
    assert run.out == out
    # An examination that cannot run is passed over.
    assert len(online.requests) == (0 if code == 3 else 1)
