"""The device scripts with the real program."""

import shutil

from conftest import PROJECT

LOGGER = 'logger() { echo "$*" >>/tmp/log; }; '
HOTPLUG = "ACTION=ifup INTERFACE=wan DEVICE=eth0; . /sbin/hotplug-tolvane; wait"
CRON = "TOLVANE_SPREAD=0 TOLVANE_STATE=/tmp/state; set -- wlan0,eth0 -46; . /sbin/cron-tolvane"
FOUND = "21: IPv4: the interface has no default gateway; IPv6: works\n"


def test_scripts_log_what_the_checker_found(online):
    for script in ["hotplug-tolvane", "cron-tolvane", "tolvane-explain"]:
        shutil.copy(PROJECT / "scripts" / script, online.root / "sbin")
    online.change("ip route del default")
    online.change(LOGGER + HOTPLUG)
    online.change(LOGGER + CRON)
    assert online.read("/tmp/log") == f"-t tolvane wan (eth0): {FOUND}-t tolvane wlan0,eth0: {FOUND}"
