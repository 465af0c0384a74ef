"""Files, limits and surroundings that are not as they should be."""

import shutil
import time

import pytest
from conftest import page, response, unhosted

FRESH = f"17\n{int(time.time())}\n"
PATHS = {"auto": "/tmp/resolv.conf.auto", "resolver": "/etc/resolv.conf", "config": "/etc/tolvane.cfg",
         "result": "/tmp/tolvaneresult"}
FAULTS = {
    "fifo": 'mkfifo "$1"', "directory": 'mkdir "$1"', "device": 'mknod "$1" c 5 0', "empty": ': >"$1"',
    "dangling link": 'ln -s /tmp/nowhere "$1"',
    "link to a FIFO": 'mkfifo /tmp/fifo; ln -s /tmp/fifo "$1"',
    "one long line": 'yes 17 | tr -d "\\n" | head -c 10000000 >"$1"',
    "zero bytes": 'head -c 1000000 /dev/zero >"$1"',
}


@pytest.mark.parametrize("fault", FAULTS)
@pytest.mark.parametrize("path, arguments, code", [
    ("auto", [], 17),
    ("resolver", [], 6 + 96),
    ("config", ["-dev0"], 10 + 160),          # its document is wrong, and the file names no other
    ("result", ["-trm", "eth0"], 17),
])
def test_file_that_is_none(online, path, arguments, code, fault):
    online.pages = {"/lib/tolvane.xml": page(b"wrong")}
    made = online.command("sh", "-c", f'rm -f "$1"; {FAULTS[fault]}', "sh", PATHS[path])
    assert made.code == 0, made
    run = online.run("-46", "-nrt", *arguments)
    assert run.code == code and run.seconds < 2 and run.cpu < 0.5
    if path == "result":
        assert len(online.requests) == 2
        kept = fault in ("fifo", "directory", "dangling link", "link to a FIFO", "device")
        assert online.command("sh", "-c", 'test -f "$1" -a ! -L "$1"', "sh", PATHS[path]).code == (1 if kept else 0)


def test_result_file_through_a_link(online):
    online.write("/tmp/elsewhere", FRESH)
    online.command("ln", "-s", "/tmp/elsewhere", PATHS["result"])
    assert online.run("-46", "-trm", "eth0").code == 17 and not online.requests
    assert (online.root / "tmp/elsewhere").read_text() == FRESH and online.result_file.read_text() == FRESH


@pytest.mark.parametrize("unreadable", ["resolver", "config"])
def test_unreadable_file(online, unreadable):
    online.write(PATHS[unreadable], "")
    online.command("chmod", "0", PATHS[unreadable])
    online.pages = {"/lib/tolvane1.xml": page(b"wrong")}
    run = online.run("-nrt", before=["setpriv", "--inh-caps=-dac_override,-dac_read_search",
                                     "--bounding-set=-dac_override,-dac_read_search"])
    assert run.code == {"resolver": 6, "config": 10}[unreadable]


def test_full_file_system(online):
    online.command("sh", "-c", "mount -t tmpfs -o size=8k full /tmp; cat /dev/zero >/tmp/filler")
    for _ in range(2):
        assert online.run("-46", "-trm", "eth0", "-nrt").code == 17
    assert len(online.requests) == 4
    assert online.command("sh", "-c", "cat /tmp/tolvaneresult").out == ""


@pytest.mark.parametrize("shell, arguments, code, out", [
    ('exec "$@" <&-', ["-d"], 1, "IPv4 Internet connection is successful.\n"),
    ('exec "$@" >&-', ["-d"], 1, ""), ('exec "$@" <&- >&- 2>&-', ["-d"], 1, ""),
    ('exec "$@" 2>&-', ["-d"], 1, "IPv4 Internet connection is successful.\n"),
    ('{ sleep 0.2; "$@"; echo $? >/tmp/code; } | true; sleep 1; read code </tmp/code; rm /tmp/code; exit $code',
     ["-d", "-i", "eth7"], 3, ""),
    pytest.param('ulimit -n 4; exec "$@"', [], 10, "", marks=unhosted),
    pytest.param('ulimit -n 5; exec "$@"', [], 10, "", marks=unhosted),
    pytest.param('ulimit -n 6; exec "$@"', [], 1, "", marks=unhosted),
    pytest.param('umount /proc; exec "$@"', [], 5, "", marks=unhosted),
    ('umount /sys; exec "$@"', ["-trm", "eth0"], 1, ""),
    ('umount /dev/null; rm /dev/null; exec "$@"', [], 1, ""),
    ('rm /sbin/ifconfig; exec "$@"', ["-d"], 3, "Network Interface eth0 does not exist.\n"),
    ('rm /sbin/ifconfig; exec "$@"', ["-trm", "eth0"], 3, ""),
    ('ln -sf dash /bin/sh; rm /bin/md5sum; exec "$@"', [], 10, ""),
    pytest.param('rm /bin/sh; exec "$@"', ["-trm", "eth0"], 3, "", marks=unhosted),
    pytest.param('rm /bin/sh; exec "$@"', [], 10, "", marks=unhosted),  # no examination, but no digest either
    ('exec env -i /sbin/"$@"', [], 1, ""),
    ('ln -sf dash /bin/sh; echo "echo no" >/dev/md5sum; chmod +x /dev/md5sum; PATH=/dev:$PATH; exec "$@"', [], 10, ""),
])
def test_surroundings(online, shell, arguments, code, out):
    shutil.copy("/bin/dash", online.root / "bin")  # BusyBox's shell runs its own md5sum, whatever is on PATH
    assert online.run("-nrt", *arguments, shell=shell)[:2] == (code, out)


@unhosted
def test_no_process_to_be_had(online):
    run = online.run("-nrt", "-d", before=["prlimit", "--nproc=1"], user="54321:54321")  # root has no limit
    assert run[:2] == (10, "XML Data is mismatch.\n") and len(online.requests) == 1


def test_flood_of_datagrams(device):
    device.dns(*[lambda query, kind: response(query)] * 20000)
    run = device.run()
    assert run.code == 8 and run.seconds > 3 and run.cpu < run.seconds - 2


@pytest.mark.parametrize("host, path", [("$(id)", "/;$(id)|id"), ("-n", "/%s%n"), ("a" * 130, "/" + "b" * 800),
                                        ("..", "/"), ("\x01\xff", "/'\x02")])
def test_hostile_configuration(online, host, path):
    online.write("/etc/tolvane.cfg", f"xmluri=http://{host}{path}\n".encode("latin-1"))
    online.pages = {"/lib/tolvane1.xml": page(b"wrong")}
    assert online.run("-nrt").code == 1
    assert online.requests[1] == f"GET {path} HTTP/1.0\r\nHost: {host}:80\r\n\r\n".encode("latin-1")
