"""A current OpenWrt: where it lists its name servers, and the link that its package makes for the checker."""

from conftest import PROJECT

INIT = PROJECT / "packaging/openwrt/tolvane/files/tolvane.init"
LINK = "/tmp/resolv.conf.auto"


def call(device, function):
    """Calls a function of the init script as OpenWrt's rc.common does."""
    device.write("/sbin/init-script", INIT.read_text())
    device.change(f"set -e; . /sbin/init-script; {function}")


def test_name_servers_are_found_after_boot(online):
    online.change("mkdir /tmp/resolv.conf.d; mv /etc/resolv.conf /tmp/resolv.conf.d/resolv.conf.auto")
    online.name_servers("127.0.0.1", "::1")
    assert online.run("-46").code == 6 + 96
    call(online, "start; start")
    assert online.run("-46").code == 17


def test_what_is_in_the_place_of_the_link_stays(device):
    device.change(f"ln -s nowhere {LINK}")
    call(device, "start; stop")
    device.change(f"test $(readlink {LINK}) = nowhere")
