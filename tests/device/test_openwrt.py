"""A current OpenWrt: where it lists its name servers, and the link that its package makes for the checker."""

from conftest import PROJECT

INIT = PROJECT / "packaging/openwrt/tolvane/files/tolvane.init"


def test_name_servers_are_found_after_boot(online):
    online.change("mkdir /tmp/resolv.conf.d; mv /etc/resolv.conf /tmp/resolv.conf.d/resolv.conf.auto")
    online.name_servers("127.0.0.1", "::1")
    assert online.run("-46").code == 6 + 96
    online.write("/sbin/init-script", INIT.read_text())
    online.change("set -e; . /sbin/init-script; start; start")
    assert online.run("-46").code == 17
