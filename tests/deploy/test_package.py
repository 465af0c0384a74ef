"""What a build links and refuses, the installed tree, Debian's package, and what the packaging files have in common."""

import re
import shutil
import subprocess
from pathlib import Path

import pytest
from conftest import ROOT, SLOTS, install, run

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
    "644 usr/share/man/man1/tolvane-explain.1",
    "644 usr/share/man/man1/tolvane-wait.1",
    "644 usr/share/man/man8/tolvane.8",
}


def files(root):
    """Modes and paths of what is below `root`, except dpkg's own files."""
    listed = run("find", "-path", "./var", "-prune", "-o", "!", "-type", "d", "-printf", "%m %P\n", cwd=root)
    return set(listed.splitlines())


# Debian's gcc drops libraries that are not needed; the compilers of many build systems do not.
@pytest.mark.parametrize("options", [
    pytest.param(["-DCMAKE_EXE_LINKER_FLAGS=-Wl,--no-as-needed"], id="gcc whose linker keeps every library"),
    pytest.param(["-DCMAKE_C_COMPILER=clang", "-DCMAKE_CXX_COMPILER=clang++"], id="clang"),
])
def test_only_the_c_library_is_linked(tmp_path, options):
    run("cmake", "-S", ROOT, "-B", tmp_path, "-DCMAKE_CXX_FLAGS=-Werror", *options)
    run("cmake", "--build", tmp_path, "--parallel", "2")
    libraries = re.findall(r"NEEDED.*\[(.*)\]", run("readelf", "-d", tmp_path / "tolvane"))
    assert libraries == ["libc.so.6"]


@pytest.mark.parametrize("host, problem", [
    pytest.param("", "empty", id="empty"),
    pytest.param("a" * 63 + "." + "b" * 63, "127 characters", id="one character too long"),
    pytest.param("http://a.example", "not a DNS name", id="URL"),
])
def test_host_name_that_no_device_can_resolve_is_refused(tmp_path, host, problem):
    command = ["cmake", "-S", ROOT, "-B", tmp_path, f"-DTOLVANE_V6_HOST_C={host}"]
    assert problem in subprocess.run(command, stderr=subprocess.PIPE, text=True).stderr


@pytest.fixture(scope="module")
def package(build, tmp_path_factory):
    directory = tmp_path_factory.mktemp("package")
    run("cpack", "-G", "DEB", "-B", directory, cwd=build, umask=0o077)
    return next(directory.glob("tolvane_*.deb"))


def dpkg(root, *arguments):
    options = [f"--root={root}", "--log=/dev/null", "--force-depends", "--path-include=*"]
    run("fakeroot", "dpkg", *options, *arguments)


def test_installed_tree(build, tmp_path):
    install(build, tmp_path)
    assert files(tmp_path) == INSTALLED


def test_host_names_are_in_the_program(build):
    program = (build / "tolvane").read_bytes()
    for host in SLOTS.values():
        assert host.encode() in program


def test_debian_policy(package):
    run("lintian", "--no-cfg", "--fail-on", "error,warning", package)


def test_debian_package_comes_and_goes(package, tmp_path):
    dpkg(tmp_path, "--install", package)
    assert {file.removesuffix(".gz") for file in files(tmp_path)} > INSTALLED
    dpkg(tmp_path, "--remove", "tolvane")
    assert files(tmp_path) == {"644 etc/default/tolvane"}, "a user's options stay"


def test_systemd_accepts_the_units(build, package, tmp_path):
    dpkg(tmp_path, "--install", package)
    install(build, tmp_path, "--component", "server")
    units = {file.name for file in (tmp_path / UNITS).iterdir()}
    assert len(units) == 4
    for target in Path("/lib/systemd/system").glob("*.target"):
        shutil.copy(target, tmp_path / UNITS)
    verify = ["systemd-analyze", "verify", "--man=no", f"--root={tmp_path}"]
    assert run(*verify, *units, stderr=subprocess.STDOUT) == ""


@pytest.mark.parametrize("file", [
    "openwrt/tolvane/Makefile",
    "buildroot/package/tolvane/tolvane.mk",
    "buildroot/package/tolvane/Config.in",
    "yocto/tolvane_2.5.0.bb",
])
def test_host_options_are_the_builds(file):
    assert set(re.findall(r"V\d_HOST_\w", (PACKAGING / file).read_text())) == SLOTS.keys()


def test_busybox_is_configured_alike():
    buildroot = (PACKAGING / "buildroot/package/tolvane/tolvane.mk").read_text()
    yocto = (PACKAGING / "yocto/busybox/tolvane.cfg").read_text()
    assert re.findall(r",(CONFIG_\w+)", buildroot) == re.findall(r"CONFIG_\w+", yocto)
