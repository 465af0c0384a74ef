"""The probe documents, the files made for a maker's own hosts, and the check of real web servers that use them."""
import datetime
import hashlib
import os
import pathlib
import re
import subprocess
import time

import pytest

ROOT = pathlib.Path(__file__).resolve().parents[2]
MAKE = "server/make-probe-documents"
NAMES = ["tolvane.xml", *(f"tolvane{number}.xml" for number in range(1, 6))]


def test_documents_are_exact_readable_and_replaced_in_one_step(run_script, tmp_path):
    lib, date = tmp_path / "www/lib", "-n $(id) `x` \\t;* #~"
    text = (f'<?xml version="1.0" encoding="UTF-8"?>\n<tolvane date="{date}">\n'
            f"\t<checksum>{hashlib.md5(date.encode()).hexdigest()}</checksum>\n</tolvane>\n")
    assert run_script(MAKE, str(tmp_path / "www"), stubs="umask 077").returncode == 0
    os.link(lib / NAMES[0], tmp_path / "old")
    now = re.search('date="(.{1,20})"', (tmp_path / "old").read_text())[1]
    assert 0 <= time.time() - datetime.datetime.fromisoformat(now).timestamp() < 60
    assert run_script(MAKE, str(tmp_path / "www"), date, stubs="umask 077").returncode == 0
    assert run_script(MAKE, str(tmp_path / "www"), "new", stubs="mv() { return 1; }").returncode != 0
    assert now in (tmp_path / "old").read_text()
    assert sorted(os.listdir(lib)) == NAMES
    assert {path.read_text() for path in lib.iterdir()} == {text}
    assert {path.stat().st_mode & 0o777 for path in lib.iterdir()} == {0o644}
    assert lib.stat().st_mode & 0o777 == 0o755


@pytest.mark.parametrize("date, reason", [
    pytest.param("", "empty", id="nothing"),
    pytest.param("x" * 21, "21 characters", id="21st character"),
    pytest.param('a"b', "quote", id="quote"),
    pytest.param("a<b", "XML", id="markup"),
    pytest.param("é", "ASCII", id="outside ASCII"),
])
def test_a_date_no_device_accepts_is_refused(run_script, tmp_path, date, reason):
    done = run_script(MAKE, str(tmp_path / "www"), date)
    assert done.returncode == 1
    assert reason in done.stderr
    assert not (tmp_path / "www").exists()


IPV4_HOST = "v4.maker.example"
BOTH = "both.maker.example"
LONG_HOST = "a-name-of-more-than-46-characters.in-a-zone-of-its-own.example"
SLOTS = {"V4_HOST_A": IPV4_HOST, "V4_HOST_B": BOTH, "V4_HOST_C": BOTH.title() + ".",
         "V6_HOST_A": BOTH, "V6_HOST_B": LONG_HOST, "V6_HOST_C": LONG_HOST, "FALLBACK_HOST": "fallback.example"}


@pytest.fixture(scope="module")
def installed(tmp_path_factory):
    """What the server component of a build for the maker's own hosts installs."""
    work = tmp_path_factory.mktemp("server")
    hosts = [f"-DTOLVANE_{slot}={host}" for slot, host in SLOTS.items()]
    subprocess.run(["cmake", "-S", ROOT, "-B", work / "build", *hosts], check=True)
    subprocess.run(["cmake", "--install", work / "build", "--component", "server"], check=True,
                   env=os.environ | {"DESTDIR": str(work / "root")})
    return work / "root/usr/local"


def test_each_host_has_one_record_of_a_family(installed):
    ipv4 = [f"{host} A 203.0.113.80" for host in (IPV4_HOST, BOTH, "fallback.example")]
    ipv6 = [f"{host} AAAA 2001:db8:80::80" for host in (BOTH, LONG_HOST, "fallback.example")]
    files = installed / "share/tolvane-server"
    zone = re.findall(r"(?m)^(\S+)[.]\t3600\tIN\t(A+)\t(\S+)$", (files / "probe.zone").read_text())
    assert [" ".join(record) for record in zone] == ipv4 + ipv6
    hosts = re.findall("(?m)^([0-9].*) (.*)", (files / "hosts").read_text())
    assert [(host, address) for address, host in hosts] == [(host, address) for host, _, address in zone]


# Debian's own nginx.conf and default site serve next to the file under test. /etc/hosts stands for the name server.
NETWORK = """
ip link set lo up
ip addr add 203.0.113.80/32 dev lo
ip addr add 2001:db8:80::80/128 dev lo
for directory in /srv /run /var/lib/nginx /var/log/nginx /etc/nginx/conf.d; do mount -t tmpfs tmpfs $directory; done
mount --bind "$FILES/hosts" /etc/hosts
mount --bind /dev/null /etc/resolv.conf
server/make-probe-documents /srv/tolvane
(cd /srv/tolvane/lib; eval "$CHANGE")
case $SERVER in
    nginx) { sed '$d' "$FILES/nginx.conf"; echo "$EXTRA }"; } >/etc/nginx/conf.d/tolvane.conf; nginx -q ;;
    lighttpd) { cat "$FILES/lighttpd.conf"; echo "$EXTRA"; } >/run/conf; lighttpd -f /run/conf ;;
esac >&2
exec server/check-probe-server "$@"
"""


@pytest.fixture
def check(installed):
    def run(*arguments, server="nginx", change=":", extra=""):
        names = {"FILES": str(installed / "share/tolvane-server"), "SERVER": server, "CHANGE": change, "EXTRA": extra}
        return subprocess.run(["unshare", "-mnpf", "--kill-child", "sh", "-euc", NETWORK, "sh", *arguments], cwd=ROOT,
                              env=os.environ | names, capture_output=True, text=True, timeout=60)
    return run


def lines(host, family, verdict="accepted"):
    return [f"{host} {family} /lib/{name}: {verdict}" for name in NAMES]


def test_own_hosts_are_served_next_to_the_default_site(check):
    done = check(IPV4_HOST, BOTH, LONG_HOST, "fallback.example")
    assert done.stderr == ""
    assert done.stdout.splitlines() == [
        *lines(IPV4_HOST, "IPv4"), f"{IPV4_HOST} IPv6: skipped: no address record found",
        *lines(BOTH, "IPv4"), *lines(BOTH, "IPv6"),
        f"{LONG_HOST} IPv4: skipped: no address record found", *lines(LONG_HOST, "IPv6"),
        *lines("fallback.example", "IPv4"), *lines("fallback.example", "IPv6")]
    assert done.returncode == 0
    assert "no probe document (HTTP status 404)" in check("-4", "-a", "203.0.113.80", "other.example").stdout


AS_DEVICE = f'set $asked $http_host$http_accept$server_protocol; if ($asked != "{BOTH}:80HTTP/1.0") {{ return 403; }}'
FILL = "x" * 900
REDIRECT = "redirect to https://login.example/"
LIGHTTPD_REDIRECT = 'server.modules += ("mod_redirect")\nurl.redirect = ("" => "https://login.example/")'
LIGHTTPD_FILL = f'server.modules += ("mod_setenv")\nsetenv.add-response-header = ("X-Fill" => "{FILL}")'
OLD = f"{ROOT}/{MAKE} /srv/tolvane 2020-01-01"


@pytest.mark.parametrize("server, change, extra, verdict", [
    pytest.param("nginx", ":", AS_DEVICE, "accepted", id="nginx, asked as by a device"),
    pytest.param("lighttpd", ":", "", "accepted", id="lighttpd"),
    pytest.param("nginx", OLD, "", "stale", id="old date"),
    pytest.param("nginx", "rm *[1-5]*", "error_page 404 /lib/tolvane.xml;", "accepted", id="documents with status 404"),
    pytest.param("nginx", ":", "return 302 https://login.example/;", REDIRECT, id="nginx redirects"),
    pytest.param("lighttpd", ":", LIGHTTPD_REDIRECT, REDIRECT, id="lighttpd redirects"),
    pytest.param("nginx", ":", f"add_header X-Fill {FILL};", "split", id="nginx sends too many headers"),
    pytest.param("lighttpd", ":", LIGHTTPD_FILL, "split", id="lighttpd sends too many headers"),
    pytest.param("nginx", "sed -i s/UTF-8/utf-8/ *", "", "wrong declaration", id="lower-case declaration"),
    pytest.param("nginx", "sed -i 's/\t/    /' *", "", "blanks", id="tab became blanks"),
    pytest.param("nginx", "sed -i 's/m>./m>x/' *", "", "wrong checksum", id="another checksum"),
    pytest.param("none", ":", "", "unreachable", id="no server"),
])
def test_each_document_gets_its_verdict(check, server, change, extra, verdict):
    done = check(BOTH, server=server, change=change, extra=extra)
    expected = lines(BOTH, "IPv4", verdict) + lines(BOTH, "IPv6", verdict)
    assert len(done.stdout.splitlines()) == len(expected)
    assert all(map(str.startswith, done.stdout.splitlines(), expected)), done
    assert done.returncode == (verdict != "accepted")


@pytest.mark.parametrize("host, setting, status, text", [
    pytest.param(IPV4_HOST, {}, 0, f"OK - 6 of 6 documents accepted; no address for {IPV4_HOST} over IPv6", id="good"),
    pytest.param(BOTH, {"change": OLD}, 1, f"WARNING - {BOTH} IPv4 /lib/tolvane.xml: stale", id="old"),
    pytest.param(BOTH, {"change": "rm *3*"}, 2, f"CRITICAL - {BOTH} IPv4 /lib/tolvane3.xml: no probe", id="one lost"),
    pytest.param(BOTH, {"extra": "return 302 '/|x=1';"}, 2, "CRITICAL - ", id="a bar in the server's text"),
    pytest.param("no.example", {}, 3, "UNKNOWN - no.example has no address; 0 of 0", id="no address"),
])
def test_monitoring_plugin_prints_one_line(check, host, setting, status, text):
    done = check("-n", host, **setting)
    assert done.stdout.startswith(f"TOLVANE {text}")
    assert re.fullmatch(r"[^|\n]* \| accepted=\d+;;;0;\d+ age_days=\d+;2;;0\n", done.stdout)
    assert done.returncode == status


@pytest.mark.parametrize("options, reason", [
    pytest.param(["-n"], "curl is not installed", id="no curl"),
    pytest.param(["-s", "x", "-n"], "wrong usage: see check-probe-server -h", id="fault before -n"),
])
def test_nothing_checked_is_unknown_to_a_plugin(run_script, options, reason):
    done = run_script("server/check-probe-server", *options, "host.example", stubs="command() { return 1; }")
    assert done.stdout == f"TOLVANE UNKNOWN - {reason}\n"
    assert done.returncode == 3


def test_units_are_valid_where_they_are_installed(installed):
    script = 'mount --bind "$0" /usr/local; exec systemd-analyze verify /usr/local/lib/systemd/system/*'
    done = subprocess.run(["unshare", "-m", "sh", "-euc", script, installed], capture_output=True, text=True)
    assert done.stderr == ""
    assert done.returncode == 0
