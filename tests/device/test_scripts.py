"""The device scripts, with the real program under them."""

import shutil

from conftest import PROJECT

LOGGER = 'logger() { echo "$*" >>/tmp/log; }; export PATH; '
HOTPLUG = "ACTION=ifup INTERFACE=wan DEVICE=eth0; . /sbin/hotplug-tolvane; wait"
CRON = "TOLVANE_SPREAD=0 TOLVANE_STATE=/tmp/state; set -- wlan0,eth0 -46; . /sbin/cron-tolvane"


def test_each_script_logs_its_sentence(online):
    for script in "hotplug-tolvane", "cron-tolvane", "tolvane-explain":
        shutil.copy(PROJECT / "scripts" / script, online.root / "sbin")
    online.command("ip", "route", "del", "default")
    for command in HOTPLUG, CRON, CRON:
        assert online.command("sh", "-c", LOGGER + command).code == 0
    found = "21: IPv4: the interface has no default gateway; IPv6: works\n"
    assert (online.root / "tmp/log").read_text() == f"-t tolvane wan (eth0): {found}-t tolvane wlan0,eth0: {found}"
    assert (online.root / "tmp/state").read_text() == "21\n" and online.result_file.read_text().startswith("21\n")
