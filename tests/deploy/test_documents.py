"""The documents agree with each other and with the program."""
import pathlib, re, subprocess

ROOT = pathlib.Path(__file__).resolve().parents[2]
EVERY_PRINTED_OUTCOME = r"""check() { status=0; on-device tolvane -d "$@" || status=$?; echo "= $status"; }
dns-server start; web-server start; check -46 -trm eth0; check -46 -trm eth0; check -i eth9; etc=$LAB_DEVICE_ROOT/etc
sed -i 's/ date="/&x/' /srv/tolvane/lib/tolvane1.xml; check -46
sed 's/fallback/v4-a.probe/; s/1.xml/.xml/' docs/tolvane.cfg.example >"$etc/tolvane.cfg"; check; rm "$etc/"*.cfg
web-server stop; check -46; dns-server stop; check -46; : >"$etc/resolv.conf"; check -46; check -46 -woi
for cut in 'route del default' 'addr flush eth0'; do for ip in 4 6; do on-device ip -$ip $cut; done; check -46; done"""


def section(name):
    return (ROOT / "docs/tolvane.8").read_text().partition(f"\n.Sh {name}\n")[2].partition("\n.Sh ")[0]


def output_of(*command):
    return subprocess.run(command, cwd=ROOT, stdout=subprocess.PIPE, text=True).stdout


def test_exit_statuses_mean_the_same_everywhere(run_script):
    rows = re.findall(r"(?m)^\.It (\d+|\\&) Ta (\d+|\\&) Ta (.*)", section("EXIT STATUS"))
    ipv4, ipv6 = ({int(row[i]): row[2] for row in rows if row[i] != r"\&"} for i in (0, 1))
    said = {code: f"{code}: {ipv4.pop(code)}" for code in (2, 3)}
    named = set(map(int, re.findall(r"(?m)^    \w+ = (\d+),", (ROOT / "include/result_code.h").read_text()))) - {7, 14}
    assert set(ipv4) == named and set(ipv6) == {16 * outcome for outcome in named}
    said.update({a + b: f"{a + b}: IPv4: {ipv4[a]}; IPv6: {ipv6[b]}" for a in ipv4 for b in ipv6 if a + b})
    for code in range(256):
        line = run_script("scripts/tolvane-explain", str(code)).stdout.partition("\n")[0]
        assert line == said.get(code, "") or code not in said and "no outcome" in line


def test_printed_lines_are_those_of_the_man_page():
    listed = {line: int(value) for value, line in re.findall(r"(?m)^\.It (\d+) Ta (.*)", section("DIAGNOSTICS"))}
    said = output_of("lab/laboratory", "sh", "-euc", EVERY_PRINTED_OUTCOME).replace("eth9", "eth0")
    runs = [(lines.splitlines(), int(status)) for lines, status in re.findall(r"((?:[^=].*\n)*)= (\d+)\n", said)]
    assert [status for _, status in runs] == [17, 17, 3, 170, 1, 153, 136, 102, 255, 85, 68], said
    assert {line for lines, _ in runs for line in lines} == set(listed), said
    for lines, status in runs:
        outcomes = {3} if status == 3 else {status & 15, status & 240}
        assert {listed[line] for line in lines} == outcomes & set(listed.values()), (status, lines)


def test_options_and_version_are_the_programs():
    usage = output_of("lab/laboratory", "on-device", "tolvane", "-v")
    options = {word.lower() for word in re.findall(r"(?<!\S)-(\w+)", usage)}
    assert options and set(re.findall(r"(?m)^\.It Fl (\w+)", section("DESCRIPTION"))) == options
    assert set(re.findall(r"\w+", section("SYNOPSIS"))) - set("Nm Op Fl Ar Ns interface".split()) == options
    version = re.search("Ver[.](.*)", usage)[1]
    paths = "CMakeLists.txt CHANGELOG.md packaging/debian/changelog packaging/openwrt/tolvane/Makefile packaging/*/*/*/*.mk"
    assert not output_of("sh", "-c", f"grep -FL '{version}' {paths}")
    assert (ROOT / f"packaging/yocto/tolvane_{version}.bb").exists()
