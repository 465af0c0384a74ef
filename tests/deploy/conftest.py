"""The shells that scripts for devices must run under: dash with this system's tools, busybox with its own alone."""
import os, pathlib, shutil, subprocess
import pytest

ROOT = pathlib.Path(__file__).resolve().parents[2]


@pytest.fixture(params=["dash", "busybox"])
def run_script(request, tmp_path):
    """Runs a script of the repository after stubs: shell functions, which go before busybox's built-in tools too."""
    path, shell = os.environ["PATH"], ["dash"]
    if request.param == "busybox":
        busybox, tools = shutil.which("busybox"), tmp_path / "tools"
        tools.mkdir()
        for name in subprocess.run([busybox, "--list"], capture_output=True, text=True, check=True).stdout.split():
            (tools / name).symlink_to(busybox)
        path, shell = str(tools), [busybox, "sh"]

    def run(script, *arguments, stubs="", **environment):
        return subprocess.run([*shell, "-c", stubs + '\n. "$0"', script, *arguments], cwd=ROOT, timeout=60,
                              env={"PATH": path, **environment}, capture_output=True, text=True)
    return run
