"""What a build links and refuses, and Debian's package."""

import re
import shutil
import subprocess
from pathlib import Path

import pytest
from conftest import ROOT, install, run

UNITS = "usr/lib/systemd/system"
TIMER = "etc/systemd/system/timers.target.wants/tolvane.timer"


def files(root):
    """Modes and paths of what is below `root`, except what dpkg and systemd note."""
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


@pytest.mark.parametrize("hosts, problem", [
    pytest.param(["V6_HOST_C=" + "a" * 63 + "." + "b" * 63], "127 characters", id="one character too long"),
    pytest.param(["V4_HOST=http://a.example"], "not a DNS name", id="URL"),
    pytest.param(["V4_HOST=a.example.com", "V6_HOST_C=b.example.com"], "V6_HOST_B, device classes 1 and 2",
                 id="some classes without a host"),
])
def test_hosts_that_no_device_can_ask_are_refused(tmp_path, hosts, problem):
    options = [f"-DTOLVANE_{host}" for host in hosts]
    made = subprocess.run(["cmake", "-S", ROOT, "-B", tmp_path, *options], stderr=subprocess.PIPE, text=True)
    assert made.returncode != 0 and problem in made.stderr


# In a copy of the source tree itself, as Buildroot and OpenWrt build.
def test_a_changed_host_is_in_the_next_build(tmp_path):
    run("cp", "-r", "CMakeLists.txt", "cmake", "docs", "include", "scripts", "src", tmp_path, cwd=ROOT)
    for host in ("a.example.com", "b.example.com"):
        run("cmake", "-S", tmp_path, "-B", tmp_path, f"-DTOLVANE_V4_HOST={host}", "-DTOLVANE_V6_HOST_C=")
        run("cmake", "--build", tmp_path, "--parallel", "2")
        run("cmake", "--install", tmp_path, "--prefix", tmp_path / "installed")
        for file in ("sbin/tolvane", "bin/tolvane-explain", "share/man/man8/tolvane.8"):
            assert host.encode() in (tmp_path / "installed" / file).read_bytes()


@pytest.fixture(scope="module")
def package(build, tmp_path_factory):
    directory = tmp_path_factory.mktemp("package")
    run("cpack", "-G", "DEB", "-B", directory, cwd=build, umask=0o077)
    return next(directory.glob("tolvane_*.deb"))


def dpkg(root, *arguments):
    options = [f"--root={root}", "--log=/dev/null", "--force-depends,script-chrootless", "--path-include=*"]
    run("fakeroot", "dpkg", *options, *arguments)


def test_debian_policy(package):
    run("lintian", "--no-cfg", "--fail-on", "error,warning", package)


def test_debian_package_comes_and_goes(package, tmp_path):
    dpkg(tmp_path, "--install", package)
    assert {"755 usr/sbin/tolvane", "644 usr/share/doc/tolvane/examples/tolvane.cfg"} <= files(tmp_path)
    assert not (tmp_path / TIMER).is_symlink()
    run("systemctl", f"--root={tmp_path}", "enable", "tolvane.timer")
    dpkg(tmp_path, "--install", package)
    dpkg(tmp_path, "--remove", "tolvane")
    assert files(tmp_path) == {"644 etc/default/tolvane", f"777 {TIMER}"}, "a user's choices stay"
    dpkg(tmp_path, "--purge", "tolvane")
    assert files(tmp_path) == set()


def test_systemd_accepts_the_units(build, package, tmp_path):
    dpkg(tmp_path, "--install", package)
    install(build, tmp_path, "--component", "server")
    units = {file.name for file in (tmp_path / UNITS).iterdir()}
    assert len(units) >= 4
    for target in Path("/lib/systemd/system").glob("*.target"):
        shutil.copy(target, tmp_path / UNITS)
    verify = ["systemd-analyze", "verify", "--man=no", f"--root={tmp_path}"]
    assert run(*verify, *units, stderr=subprocess.STDOUT) == ""
