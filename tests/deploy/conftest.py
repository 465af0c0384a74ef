"""The shells of device scripts, and a build for a maker's own probe hosts."""

import os
import shutil
import subprocess
from pathlib import Path

import pytest

ROOT = Path(__file__).resolve().parents[2]
IPV4_HOST = "v4.maker.example"
BOTH_HOST = "both.maker.example"
LONG_HOST = "a-name-of-more-than-46-characters.in-a-zone-of-its-own.example"
V4_HOSTS = {"V4_HOST_A": IPV4_HOST, "V4_HOST_B": BOTH_HOST, "V4_HOST_C": BOTH_HOST.title() + "."}
V6_HOSTS = {"V6_HOST_A": BOTH_HOST, "V6_HOST_B": LONG_HOST, "V6_HOST_C": LONG_HOST}
SLOTS = {**V4_HOSTS, **V6_HOSTS}

every_shell = pytest.mark.parametrize("shell", ["busybox", "dash", "bash"])


def pytest_configure(config):
    config.addinivalue_line("markers", "laboratory: needs a laboratory")


def run(*command, **options):
    return subprocess.run(command, check=True, stdout=subprocess.PIPE, text=True, **options).stdout


def install(build, root, *options):
    run("cmake", "--install", build, *options, env={**os.environ, "DESTDIR": str(root)})


@pytest.fixture(scope="session")
def build(tmp_path_factory):
    directory = tmp_path_factory.mktemp("build")
    hosts = [f"-DTOLVANE_{slot}={host}" for slot, host in SLOTS.items()]
    run("cmake", "-S", ROOT, "-B", directory, "-DCMAKE_INSTALL_PREFIX=/usr", *hosts)
    run("cmake", "--build", directory, "--parallel", "2")
    return directory


@pytest.fixture
def shell():
    return "busybox"


@pytest.fixture
def run_script(shell, tmp_path):
    """Runs a script after stubs: shell functions, which go before BusyBox's built-in tools too."""
    path = os.environ["PATH"]
    command = [shutil.which(shell)]
    if shell == "busybox":
        path = str(tmp_path / "tools")
        os.mkdir(path)
        run("busybox", "--install", "-s", path)
        command.append("sh")

    def call(script, *arguments, stubs="", after="", **environment):
        words = [*command, "-c", f'{stubs}\n. "$0"\n{after}', script, *arguments]
        variables = {"PATH": path, **environment}
        return subprocess.run(words, cwd=ROOT, timeout=60, env=variables, capture_output=True, text=True)

    return call
