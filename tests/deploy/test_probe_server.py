"""The probe documents, the files made for a maker's own hosts, and the check of web servers that use them."""

import hashlib
import os
import re
import subprocess

import pytest
from conftest import BOTH_HOST, IPV4_HOST, LONG_HOST, ROOT, every_shell

MAKE = "server/make-probe-documents"
NAMES = ["tolvane.xml", *(f"tolvane{number}.xml" for number in range(1, 6))]


@every_shell
def test_documents_are_exact_readable_and_replaced_in_one_step(run_script, tmp_path):
    lib = tmp_path / "lib"
    date = "-n $(id) `x` \\t;* #~"
    digest = hashlib.md5(date.encode()).hexdigest()
    declaration = '<?xml version="1.0" encoding="UTF-8"?>\n'
    text = f'{declaration}<tolvane date="{date}">\n\t<checksum>{digest}</checksum>\n</tolvane>\n'
    run_script(MAKE, str(tmp_path), stubs="umask 077")
    os.link(lib / NAMES[0], tmp_path / "old")
    assert run_script(MAKE, str(tmp_path), date, stubs="umask 077").returncode == 0
    assert run_script(MAKE, str(tmp_path), "x" * 21).returncode == 1
    assert re.search('date="20..-..-..T..:..:..Z"', (tmp_path / "old").read_text())
    assert sorted(os.listdir(lib)) == NAMES
    assert {path.read_text() for path in lib.iterdir()} == {text}
    assert {path.stat().st_mode & 0o777 for path in lib.iterdir()} == {0o644}
    assert lib.stat().st_mode & 0o777 == 0o755


# The laboratory's servers use the build's own files. Its web server has a default site, too.
CHECK = """
add() {
    web-server stop
    sed -i "s|root|$1 root|" /run/probe-server.conf
    sed -i 's/daemon off/daemon on/' /run/nginx.conf
    nginx -c /run/nginx.conf
}
mount --bind "$LAB_DEVICE_ROOT/etc/resolv.conf" /etc/resolv.conf
dns-server start
web-server start
(eval "$CHANGE") >&2
exec server/check-probe-server "$@"
"""


@pytest.fixture
def check(build):
    def call(*arguments, change=":"):
        command = ["lab/laboratory", "sh", "-euc", CHECK, "sh", *arguments]
        variables = {**os.environ, "TOLVANE": str(build / "tolvane"), "CHANGE": change}
        return subprocess.run(command, cwd=ROOT, env=variables, capture_output=True, text=True, timeout=60)

    return call


def lines(host, family, verdict="accepted"):
    return [f"{host} {family} /lib/{name}: {verdict}" for name in NAMES]


@pytest.mark.laboratory
def test_own_hosts_are_served_next_to_the_default_site(check, build):
    assert (build / "server/probe.zone").read_text().count("\t60\tIN\t") == 4
    done = check(IPV4_HOST, LONG_HOST)
    assert done.stderr == ""
    assert done.stdout.count("skipped") == 2
    assert done.stdout.splitlines()[:6] == lines(IPV4_HOST, "IPv4")
    assert done.stdout.splitlines()[-6:] == lines(LONG_HOST, "IPv6")
    assert done.returncode == 0
    assert "no probe document (HTTP status 404)" in check("-4", "-a", "203.0.113.80", "other.example").stdout


LIGHTTPD = "web-server stop; lighttpd -f server/lighttpd.conf"
# A server that is gone as soon as somebody has taken all of its 100 MB.
ENDLESS = """web-server stop
printf '#!/bin/sh\nyes | head -c 99999999 && kill $PPID\n' >/run/flood
chmod 755 /run/flood
busybox nc -ll -p 80 -e /run/flood &"""
OLD = f"{MAKE} /srv/tolvane 2020-01-01"


@pytest.mark.laboratory
@pytest.mark.parametrize("change, verdict", [
    pytest.param(LIGHTTPD, "accepted", id="lighttpd"),
    pytest.param("add 'return 302 https://login.example/;'", "redirect to https://login", id="redirect"),
    pytest.param(f"add 'add_header X-Fill {'x' * 900};'", "split", id="too-many-headers"),
    pytest.param(ENDLESS, "no probe document", id="no-end"),
])
def test_each_document_gets_its_verdict(check, change, verdict):
    done = check(BOTH_HOST, change=change)
    expected = lines(BOTH_HOST, "IPv4", verdict) + lines(BOTH_HOST, "IPv6", verdict)
    assert len(done.stdout.splitlines()) == len(expected)
    assert all(map(str.startswith, done.stdout.splitlines(), expected))
    assert done.returncode == (verdict != "accepted")


@pytest.mark.laboratory
@pytest.mark.parametrize("host, change, status, text", [
    pytest.param(IPV4_HOST, ":", 0, f"OK - 6 of 6 documents accepted; no address for {IPV4_HOST}", id="good"),
    pytest.param(BOTH_HOST, OLD, 1, f"WARNING - {BOTH_HOST} IPv4 /lib/tolvane.xml: stale", id="old"),
    pytest.param(BOTH_HOST, "rm /srv/tolvane/lib/*3*", 2, f"CRITICAL - {BOTH_HOST} IPv4 /lib/tolvane3", id="one-lost"),
    pytest.param("no.example", ":", 3, "UNKNOWN - no.example has no address; 0 of 0", id="no-address"),
])
def test_monitoring_plugin_prints_one_line(check, host, change, status, text):
    done = check("-n", host, change=change)
    assert done.stdout.startswith(f"TOLVANE {text}")
    assert re.fullmatch(r"[^|\n]*( \| accepted=\d+;;;0;\d+ age_days=\d+;2;;0)?\n", done.stdout)
    assert done.returncode == status
