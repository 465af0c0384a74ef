"""The installed tree, Debian's package in a root of its own, and what the packaging files have in common."""

import os
import re
import shutil
import subprocess
from pathlib import Path

import pytest

ROOT = Path(__file__).resolve().parents[2]
PACKAGING = ROOT / "packaging"
DOC = "usr/share/doc/tolvane"
UNITS = "usr/lib/systemd/system"
INSTALLED = {
    "755 usr/sbin/tolvane",
    "755 usr/bin/tolvane-explain",
    "755 usr/bin/tolvane-wait",
    f"755 {DOC}/examples/cron-tolvane",
    f"755 {DOC}/examples/hotplug-tolvane",
    f"644 {DOC}/examples/tolvane.cfg",
}
PAGES = {
    "644 usr/share/man/man1/tolvane-explain.1",
    "644 usr/share/man/man1/tolvane-wait.1",
    "644 usr/share/man/man8/tolvane.8",
}
DEBIAN_ONLY = {
    f"644 {DOC}/README.Debian",
    f"644 {DOC}/changelog.gz",
    f"644 {DOC}/copyright",
    f"644 {UNITS}/tolvane.service",
    f"644 {UNITS}/tolvane.timer",
    "644 etc/default/tolvane",
}
SLOTS = {f"V{version}_HOST_{letter}" for version in "46" for letter in "ABC"}


def run(*command, **options):
    return subprocess.run(command, check=True, stdout=subprocess.PIPE, text=True, **options).stdout


def files(root):
    """Modes and paths of what is below `root`, except dpkg's own files."""
    listed = run("find", "-path", "./var", "-prune", "-o", "!", "-type", "d", "-printf", "%m %P\n", cwd=root)
    return set(listed.splitlines())


@pytest.fixture(scope="module")
def build(tmp_path_factory):
    directory = tmp_path_factory.mktemp("build")
    hosts = [f"-DTOLVANE_{slot}={slot}.example" for slot in SLOTS]
    run("cmake", "-S", ROOT, "-B", directory, "-DCMAKE_INSTALL_PREFIX=/usr", *hosts)
    run("cmake", "--build", directory, "--parallel", "2")
    return directory


@pytest.fixture(scope="module")
def package(build, tmp_path_factory):
    directory = tmp_path_factory.mktemp("package")
    run("cpack", "-G", "DEB", "-B", directory, cwd=build, umask=0o077)
    return next(directory.glob("tolvane_*.deb"))


@pytest.fixture
def dpkg(tmp_path):
    """Debian's package manager, with a root of its own as its attribute."""
    def call(*arguments):
        options = [f"--root={tmp_path}", "--log=/dev/null", "--force-depends", "--path-include=*"]
        run("fakeroot", "dpkg", *options, *arguments)

    call.root = tmp_path
    return call


def test_installed_tree(build, tmp_path):
    run("cmake", "--install", build, env={**os.environ, "DESTDIR": str(tmp_path)})
    assert files(tmp_path) == INSTALLED | PAGES


def test_host_names_are_in_the_program(build):
    found = re.findall(rb"V\d_HOST_\w(?=[.]example)", (build / "tolvane").read_bytes())
    assert {slot.decode() for slot in found} == SLOTS


def test_debian_policy(package):
    run("lintian", "--no-cfg", "--fail-on", "error,warning", package)


def test_debian_package_comes_and_goes(package, dpkg):
    dpkg("--install", package)
    assert files(dpkg.root) == INSTALLED | DEBIAN_ONLY | {f"{page}.gz" for page in PAGES}
    dpkg("--remove", "tolvane")
    assert files(dpkg.root) == {"644 etc/default/tolvane"}, "a user's options stay"
    dpkg("--purge", "tolvane")
    assert not files(dpkg.root)


def test_systemd_accepts_the_units(package, dpkg):
    dpkg("--install", package)
    for target in Path("/lib/systemd/system").glob("*.target"):
        shutil.copy(target, dpkg.root / UNITS)
    verify = ["systemd-analyze", "verify", "--man=no", f"--root={dpkg.root}"]
    assert run(*verify, "tolvane.service", "tolvane.timer", stderr=subprocess.STDOUT) == ""


@pytest.mark.parametrize("file", [
    "openwrt/tolvane/Makefile",
    "buildroot/package/tolvane/tolvane.mk",
    "buildroot/package/tolvane/Config.in",
    "yocto/tolvane_2.5.0.bb",
])
def test_host_options_are_the_builds(file):
    assert set(re.findall(r"V\d_HOST_\w", (PACKAGING / file).read_text())) == SLOTS


def test_busybox_is_configured_alike():
    buildroot = (PACKAGING / "buildroot/package/tolvane/tolvane.mk").read_text()
    yocto = (PACKAGING / "yocto/busybox/tolvane.cfg").read_text()
    assert re.findall(r",(CONFIG_\w+)", buildroot) == re.findall(r"CONFIG_\w+", yocto)
