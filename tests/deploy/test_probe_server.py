"""The probe documents, and what the check of a probe server says of real web servers in a network of their own."""
import datetime, hashlib, os, pathlib, re, subprocess, time
import pytest

ROOT = pathlib.Path(__file__).resolve().parents[2]
MAKE, NAMES = "server/make-probe-documents", ["tolvane.xml", *(f"tolvane{number}.xml" for number in range(1, 6))]


@pytest.mark.parametrize("date", ["2030-01-31", "-n $(id) `x` \\t;* #~", None])
def test_documents_are_exact_readable_and_replaced_in_one_step(run_script, tmp_path, date):
    lib = tmp_path / "www/lib"
    assert run_script(MAKE, str(tmp_path / "www"), "old", stubs="umask 077").returncode == 0
    os.link(lib / NAMES[0], tmp_path / "old")
    assert run_script(MAKE, str(tmp_path / "www"), *([date] if date else []), stubs="umask 077").returncode == 0
    assert b'date="old"' in (tmp_path / "old").read_bytes() and sorted(os.listdir(lib)) == NAMES
    if date is None:
        date = re.search('date="(.{1,20})"', (lib / NAMES[0]).read_text())[1]
        assert 0 <= time.time() - datetime.datetime.fromisoformat(date).timestamp() < 60
    text = (f'<?xml version="1.0" encoding="UTF-8"?>\n<tolvane date="{date}">\n'
            f'\t<checksum>{hashlib.md5(date.encode()).hexdigest()}</checksum>\n</tolvane>\n')
    assert {(path.read_text(), path.stat().st_mode & 0o777) for path in lib.iterdir()} == {(text, 0o644)}
    assert run_script(MAKE, str(tmp_path / "www"), "new", stubs="mv() { return 1; }").returncode != 0
    assert sorted(os.listdir(lib)) == NAMES and (lib / NAMES[0]).read_text() == text and lib.stat().st_mode == 0o40755


@pytest.mark.parametrize("date, reason", [("", "empty"), ("x" * 21, "20"), ('a"b', "quote"), ("a'b", "quote"),
                                          ("a<b", "<"), ("a>", ">"), ("&", "&"), ("a\n", "control"), ("é", "ASCII")])
def test_a_date_no_device_accepts_is_refused(run_script, tmp_path, date, reason):
    done = run_script(MAKE, str(tmp_path / "www"), date)
    assert done.returncode == 1 and reason in done.stderr and done.stderr.count("\n") == 1
    assert not (tmp_path / "www").exists()


HOST, FILL = "v6-a.probe.varnoko.example", "x" * 900
REQUEST = f'set $asked $http_host$http_accept$server_protocol; if ($asked != "{HOST}:80HTTP/1.0") {{ return 403; }}'
# What is said of every document; a change of the documents; lines added to the configurations of nginx and lighttpd.
CASES = [
    ("accepted", ":", REQUEST, ""),
    ("accepted", "rm *[1-5]*", "error_page 404 /lib/tolvane.xml;", 'server.error-handler-404 = "/lib/tolvane.xml"'),
    ("redirect to https://login.example/", ":", "return 302 https://login.example/;",
     'server.modules += ("mod_redirect")\nurl.redirect = ("" => "https://login.example/")'),
    ("split", ":", f"add_header X-Fill {FILL};",
     f'server.modules += ("mod_setenv")\nsetenv.add-response-header = ("X-Fill" => "{FILL}")'),
    ("no probe document", "rm *", "", ""), ("wrong declaration", "sed -i s/UTF-8/utf-8/ *", "", ""),
    ("blanks", "sed -i 's/\t/    /' *", "", ""), ("wrong checksum", "sed -i 's/m>./m>x/' *", "", ""),
    ("stale", f"{ROOT}/{MAKE} /srv/tolvane 2020-01-01", "", ""), ("unreachable", ":", "", "")]
NETWORK = """set -eu; ip link set lo up; mount -t tmpfs tmpfs /srv; mount -t tmpfs tmpfs /var/lib/nginx
server/make-probe-documents /srv/tolvane; (cd /srv/tolvane/lib; eval "$2"); echo "$3" >/srv/conf
[ -z "$4" ] || $4 /srv/conf >&2 & until [ -z "$4" ] || curl -s -o /srv/first 'http://[::1]/'; do sleep 0.05; done
server/check-probe-server -a 127.0.0.1 -a ::1 "$1" || echo "status $?"
server/check-probe-server -6 -s 99999 -a ::1 "$1" || echo "status $?" """


@pytest.mark.parametrize("server", ["nginx", "lighttpd"])
@pytest.mark.parametrize("outcome, change, nginx, lighttpd", CASES, ids=[case[0] for case in CASES])
def test_each_document_gets_its_verdict(server, outcome, change, nginx, lighttpd):
    text, root = (ROOT / f"server/{server}.conf").read_text(), os.geteuid() == 0
    if server == "nginx":
        text = ("daemon off; pid /srv/pid; error_log stderr;" + ("user www-data;" if root else "user root;")
                + "events { } http { access_log off; " + text.rpartition("}")[0] + nginx + "} }")
    else:
        text = (text if root else re.sub("(?m)^server.*name .*", "", text)) + lighttpd
    command = {"nginx": "nginx -e stderr -c", "lighttpd": "lighttpd -D -f"}[server] * (outcome != "unreachable")
    done = subprocess.run(["unshare", *([] if root else ["-r"]), "-mnpf", "--kill-child", "sh", "-c", NETWORK, "sh",
                           HOST, change, text, command], cwd=ROOT, capture_output=True, text=True, timeout=30)
    lines = [f"{HOST} {family} /lib/{name}: {outcome}" for family in ("IPv4", "IPv6") for name in NAMES]
    expected = lines + ["status 1"] * (outcome != "accepted")
    expected += [line.replace("stale", "accepted") for line in lines[6:]] + expected[12:] * (outcome != "stale")
    said = done.stdout.splitlines()
    assert len(said) == len(expected) and all(map(str.startswith, said, expected)), done
