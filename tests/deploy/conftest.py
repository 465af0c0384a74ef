"""The shells of device scripts: dash and bash with this system's tools, BusyBox with only its own."""

import os
import shutil
import subprocess
from pathlib import Path

import pytest

ROOT = Path(__file__).resolve().parents[2]


@pytest.fixture(params=["dash", "bash", "busybox"])
def run_script(request, tmp_path):
    """Runs a script of the repository after stubs: shell functions, which go before BusyBox's built-in tools too."""
    path = os.environ["PATH"]
    shell = [shutil.which(request.param)]
    if request.param == "busybox":
        [busybox] = shell
        tools = tmp_path / "tools"
        tools.mkdir()
        applets = subprocess.run([busybox, "--list"], capture_output=True, text=True, check=True)
        for name in applets.stdout.split():
            (tools / name).symlink_to(busybox)
        path = str(tools)
        shell = [busybox, "sh"]

    def run(script, *arguments, stubs="", **environment):
        command = [*shell, "-c", stubs + '\n. "$0"', script, *arguments]
        variables = {"PATH": path, **environment}
        return subprocess.run(command, cwd=ROOT, timeout=60, env=variables, capture_output=True, text=True)

    return run
