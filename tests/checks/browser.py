"""Pages as a browser without a window shows them."""

from __future__ import annotations

import os
import signal
import subprocess
from pathlib import Path

from PIL import Image

BROWSER = Path("/usr/bin/chromium")
SECONDS = 60

_OPTIONS = ["--headless", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run",
            "--disable-background-networking", "--disable-component-update", "--disable-sync",
            "--hide-scrollbars"]


def content(page: str, profile: Path) -> str:
    """The page's tree once it is loaded, as HTML. The profile is an empty folder."""
    return _run(["--dump-dom", page], profile).decode("utf-8")


def picture(page: str, width: int, height: int, profile: Path) -> Image.Image:
    """The upper left part of the page, in RGB. The profile is an empty folder."""
    file = profile / "page.png"
    _run([f"--window-size={width},{height}", f"--screenshot={file}", page], profile)
    with Image.open(file) as image:
        return image.convert("RGB")


def _run(arguments: list[str], profile: Path) -> bytes:
    process = subprocess.Popen([BROWSER, *_OPTIONS, f"--user-data-dir={profile}", *arguments],
                               stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                               stderr=subprocess.DEVNULL, start_new_session=True)
    try:
        output, _ = process.communicate(timeout=SECONDS)
    except subprocess.TimeoutExpired:
        os.killpg(process.pid, signal.SIGKILL)  # with the processes that it started
        process.communicate()
        raise
    assert process.returncode == 0
    return output
