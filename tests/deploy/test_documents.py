"""The manual agrees with the program, with tolvane-run and with the packaging files."""

import re

import pytest
from conftest import ROOT, run

MANUAL = (ROOT / "docs/tolvane.8").read_text()
OPTIONS = set(re.findall(r"(?m)^\.It Fl (\w+)", MANUAL.partition("\n.Sh ENVIRONMENT")[0]))
RELEASED = ["CMakeLists.txt", "CHANGELOG.md", "packaging/debian/changelog", "packaging/openwrt/tolvane/Makefile"]


@pytest.mark.laboratory
def test_options_and_version_are_the_programs():
    usage = run("lab/laboratory", "on-device", "sh", "-c", "tolvane -v || true", cwd=ROOT)
    options = {word.lower() for word in re.findall(r"(?<!\S)-(\w+)", usage)}
    synopsis = MANUAL.partition("\n.Sh SYNOPSIS\n")[2].partition("\n.Sh ")[0]
    assert options == OPTIONS
    assert set(re.findall(r"\w+", synopsis)) - set("Nm Op Fl Ar Ns interface".split()) == OPTIONS
    version = re.search("Ver[.](.*)", usage)[1]
    for path in [*RELEASED, "packaging/buildroot/package/tolvane/tolvane.mk"]:
        assert version in (ROOT / path).read_text()
    assert (ROOT / f"packaging/yocto/tolvane_{version}.bb").exists()


def test_tolvane_run_takes_every_option(run_script):
    options = " -".join(["", *OPTIONS - {"v"}]).replace("-trm", "-trm eth0").replace("-i", "-i eth0").split()
    assert run_script("scripts/tolvane-run", "-r", *options, "-46").returncode == 0
