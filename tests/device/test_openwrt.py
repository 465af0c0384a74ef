"""A current OpenWrt: where it lists its name servers, and the link that its package makes for the checker."""

import pytest
from conftest import PROJECT

INIT = PROJECT / "packaging/openwrt/tolvane/files/tolvane.init"
LINK = "/tmp/resolv.conf.auto"
LIST = "/tmp/resolv.conf.d/resolv.conf.auto"
SERVERS = "# Interface wan\nnameserver 198.51.100.53\n# Interface wan6\nnameserver 2001:db8:53::53\n"


@pytest.fixture
def openwrt(online):
    (online.root / "tmp/resolv.conf.d").mkdir()
    online.write(LIST, SERVERS)
    online.write("/etc/resolv.conf", "search lan\nnameserver 127.0.0.1\nnameserver ::1\n")
    online.write("/sbin/init-script", INIT.read_text())
    return online


def call(device, function):
    """Calls a function of the init script as OpenWrt's rc.common does."""
    done = device.command("sh", "-c", f"set -e; . /sbin/init-script; {function}")
    assert done.err == ""


@pytest.mark.parametrize("option, code", [
    pytest.param("-46", 102, id="interface stage"),
    pytest.param("-woi", 255, id="without it"),
])
def test_no_name_server_without_the_link(openwrt, option, code):
    assert openwrt.run("-46", option).code == code


def test_name_servers_are_found_after_boot(openwrt):
    call(openwrt, "start")
    assert openwrt.run("-46").code == 17


def test_link_is_made_before_there_is_a_list(openwrt):
    (openwrt.root / LIST[1:]).unlink()
    call(openwrt, "start")
    openwrt.write(LIST, SERVERS)
    assert openwrt.run("-46").code == 17


def test_second_start_changes_nothing(openwrt):
    call(openwrt, "start; start")
    assert openwrt.run("-46").code == 17


@pytest.mark.parametrize("make", [
    pytest.param(f"echo mine >{LINK}", id="file"),
    pytest.param(f"mkdir {LINK}", id="directory"),
    pytest.param(f"ln -s /tmp {LINK}", id="link to a directory"),
    pytest.param(f"ln -s nowhere {LINK}", id="dangling link"),
])
def test_what_is_in_the_place_of_the_link_stays(openwrt, make):
    look = f"ls -ld {LINK}; ls -a {LINK}"
    before = openwrt.command("sh", "-c", f"{make}; {look}").out
    call(openwrt, "start; stop")
    assert openwrt.command("sh", "-c", look).out == before


def test_stop_removes_the_link(openwrt):
    call(openwrt, "start; stop")
    assert not (openwrt.root / LINK[1:]).is_symlink()
