"""The program links the C library and nothing else, with every compiler."""

import re
import subprocess
from pathlib import Path

import pytest

PROJECT = Path(__file__).resolve().parents[2]


def output_of(*command):
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
    assert done.returncode == 0, done.stdout
    return done.stdout


# Debian's gcc drops libraries that are not needed; the compilers of many build systems do not.
@pytest.mark.parametrize("options", [
    pytest.param(["-DCMAKE_EXE_LINKER_FLAGS=-Wl,--no-as-needed"], id="gcc whose linker keeps every library"),
    pytest.param(["-DCMAKE_C_COMPILER=clang", "-DCMAKE_CXX_COMPILER=clang++"], id="clang"),
])
def test_only_the_c_library_is_linked(tmp_path, options):
    output_of("cmake", "-S", PROJECT, "-B", tmp_path, "-DCMAKE_CXX_FLAGS=-Werror", *options)
    output_of("cmake", "--build", tmp_path, "--parallel", "2")
    libraries = re.findall(r"NEEDED.*\[(.*)\]", output_of("readelf", "-d", tmp_path / "tolvane"))
    assert libraries == ["libc.so.6"]


@pytest.mark.parametrize("host, problem", [
    pytest.param("", "empty", id="empty"),
    pytest.param("a" * 63 + "." + "b" * 63, "127 characters", id="one character too long"),
    pytest.param("http://a.example", "not a DNS name", id="URL"),
    pytest.param("a.example:80", "not a DNS name", id="port"),
    pytest.param("192.0.2.1", "address", id="address"),
])
def test_host_name_that_no_device_can_resolve_is_refused(tmp_path, host, problem):
    command = ["cmake", "-S", PROJECT, "-B", tmp_path, f"-DTOLVANE_V6_HOST_C={host}"]
    done = subprocess.run(command, capture_output=True, text=True)
    assert done.returncode != 0
    assert problem in done.stderr
