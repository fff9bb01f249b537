"""Pages as a browser without a window shows them."""

from __future__ import annotations

import os
import signal
import struct
import subprocess
import zlib
from pathlib import Path

BROWSER = Path("/usr/bin/chromium")
SECONDS = 60

_OPTIONS = ["--headless", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run",
            "--disable-background-networking", "--disable-component-update", "--disable-sync",
            "--hide-scrollbars"]


def content(page: str, profile: Path) -> str:
    """The page's tree once it is loaded, as HTML. The profile is an empty folder."""
    return _run(["--dump-dom", page], profile).decode("utf-8")


def picture(page: str, width: int, height: int, profile: Path) -> "Picture":
    """The upper left part of the page. The profile is an empty folder."""
    file = profile / "page.png"
    _run([f"--window-size={width},{height}", f"--screenshot={file}", page], profile)
    return Picture(file.read_bytes())


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


class Picture:
    """A PNG file of eight bits a channel, without interlacing, as browsers write it."""

    def __init__(self, png: bytes):
        assert png.startswith(b"\x89PNG\r\n\x1a\n")
        chunks = list(_chunks(png))
        self.width, self.height, depth, kind, _, _, interlaced = struct.unpack(
            ">IIBBBBB", dict(chunks)[b"IHDR"])
        assert depth == 8 and not interlaced
        self._channels = {2: 3, 6: 4}[kind]
        self._rows = self._unfilter(zlib.decompress(b"".join(
            data for name, data in chunks if name == b"IDAT")))

    def colour(self, x: int, y: int) -> str:
        at = x * self._channels
        return "#" + self._rows[y][at:at + 3].hex()

    def _unfilter(self, data: bytes) -> list[bytearray]:
        length = self.width * self._channels
        rows = [bytearray(length)]  # the one above the first
        for start in range(0, self.height * (length + 1), length + 1):
            row = bytearray(data[start + 1:start + 1 + length])
            _undo(data[start], row, rows[-1], self._channels)
            rows.append(row)
        return rows[1:]


def _chunks(png: bytes):
    at = 8
    while at < len(png):
        length, name = struct.unpack_from(">I4s", png, at)
        yield name, png[at + 8:at + 8 + length]
        at += length + 12


def _undo(kind: int, row: bytearray, above: bytearray, step: int) -> None:
    """Turns the differences in a row into what they stand for, by the kind of the row's filter."""
    if kind == 0:
        return
    for i in range(len(row)):
        left = row[i - step] if i >= step else 0
        corner = above[i - step] if i >= step else 0
        expected = {1: left, 2: above[i], 3: (left + above[i]) // 2}.get(kind)
        if expected is None:
            expected = _nearest(left, above[i], corner)
        row[i] = (row[i] + expected) & 0xFF


def _nearest(left: int, above: int, corner: int) -> int:
    sum_ = left + above - corner
    return min((left, above, corner), key=lambda value: abs(sum_ - value))
