"""The installed tree, Debian's package in a root of its own, and the rules for OpenWrt and Buildroot under stubs."""
import pathlib, re, subprocess, pytest

ROOT = pathlib.Path(__file__).resolve().parents[2]
SLOTS = sorted(set(re.findall(r"V\d_HOST_\w", (ROOT / "CMakeLists.txt").read_text())))
PROGRAMS, DOC = {"755 usr/sbin/tolvane", "755 usr/bin/tolvane-explain"}, "usr/share/doc/tolvane/"
EXAMPLES = {f"755 {DOC}examples/cron-tolvane", f"755 {DOC}examples/hotplug-tolvane", f"644 {DOC}examples/tolvane.cfg"}
PAGES = {"644 usr/share/man/man1/tolvane-explain.1", "644 usr/share/man/man8/tolvane.8"}
STUB = ('qstrip = $(strip $(subst ",,$(1)))\nCP = cp -fpR\nINSTALL_BIN = install\nINSTALL_DIR = install -d\ndefine '
        "BuildPackage\n$(1): ; $$(call Package/$(1)/install,$(OUT))\nendef\nINCLUDE_DIR = $(TOPDIR)\nprepare: ; "
        "$(Build/Prepare)\noptions: ; $(info $(Package/tolvane/config))@echo $(CMAKE_OPTIONS)\ndefine cmake-package\n"
        "conf: ; @echo $(notdir $(realpath $(dir $(lastword $(MAKEFILE_LIST))))) $(TOLVANE_CONF_OPTS)\nendef\n"
        "include $(EXTERNAL)\n")


def run(*command, **options):
    return subprocess.run(command, **{"cwd": ROOT, **options}, stdout=subprocess.PIPE, text=True, check=True).stdout


def files(root):
    return set(run("find", "-path", "./var", "-prune", "-o", "-type", "f", "-printf", "%m %P\n", cwd=root).splitlines())


@pytest.fixture(scope="module")
def openwrt(tmp_path_factory):
    work = tmp_path_factory.mktemp("openwrt")
    for name in ("rules.mk", "package.mk", "cmake.mk"):
        (work / name).write_text(STUB * (name == "rules.mk"))
    make = ["make", "-s", "-C", "packaging/openwrt/tolvane", f"TOPDIR={work}", f"PKG_BUILD_DIR={work}/source",
            f"PKG_INSTALL_DIR={work}/tree", f"OUT={work}/image", *(f'CONFIG_TOLVANE_{s}="{s}.example"' for s in SLOTS)]
    config, _, options = run(*make, "prepare", "options").rpartition("\n\n")
    assert re.findall("config TOLVANE_(.*)", config) == SLOTS
    run("cmake", "-S", work / "source", "-B", work / "build", "-DCMAKE_INSTALL_PREFIX=/usr", *options.split())
    run("cmake", "--build", work / "build", "-j2")
    run("env", f"DESTDIR={work}/tree", "cmake", "--install", work / "build")
    run(*make, "tolvane", "tolvane-hotplug")
    return work


def test_openwrt_builds_with_its_hosts_and_installs_the_programs(openwrt):
    assert all(f"{slot}.example".encode() in (openwrt / "tree/usr/sbin/tolvane").read_bytes() for slot in SLOTS)
    assert files(openwrt / "tree") == PROGRAMS | EXAMPLES | PAGES
    assert files(openwrt / "image") == PROGRAMS | {"755 etc/hotplug.d/iface/95-tolvane"}


def test_buildroot_hands_on_the_hosts_that_are_named(openwrt):
    path = ROOT / "packaging/buildroot"
    hosts = (f'BR2_PACKAGE_TOLVANE_{slot}="{slot}"' for slot in SLOTS[1:])
    make = ["make", "-sf", openwrt / "rules.mk", f"EXTERNAL={path}/external.mk", f"BR2_EXTERNAL_TOLVANE_PATH={path}"]
    assert run(*make, *hosts, "conf").split() == ["tolvane", *(f"-DTOLVANE_{slot}={slot}" for slot in SLOTS[1:])]
    assert re.findall("TOLVANE_(V.*)", (path / "package/tolvane/Config.in").read_text()) == SLOTS


def test_debian_package_installs_and_leaves_nothing(openwrt, tmp_path):
    run("cpack", "-G", "DEB", "-B", openwrt / "packages", cwd=openwrt / "build", umask=0o077)
    [package] = (openwrt / "packages").glob("tolvane_*.deb")
    run("lintian", "--no-cfg", "--fail-on", "error,warning", package)
    dpkg = ["fakeroot", "dpkg", f"--root={tmp_path}", f"--log={openwrt}/log", "--force-depends", "--path-include=*"]
    run(*dpkg, "--install", package)
    policy = {f"644 {DOC}{name}" for name in ("changelog.gz", "copyright", "README.Debian")}
    assert files(tmp_path) == PROGRAMS | EXAMPLES | policy | {page + ".gz" for page in PAGES}
    run(*dpkg, "--purge", "tolvane")
    assert not files(tmp_path)
