"""How far a stage is, printed while it runs."""

from __future__ import annotations

import sys
import threading
import time
from pathlib import Path


class Progress:
    """Prints "STAGE: N of M ..." in one line of a terminal every two seconds, and otherwise in a
    line of its own every twenty, until it is closed."""

    def __init__(self, stage: str, what: str, source: Path | None = None):
        """what: the things counted; source: a file "N M" that another process keeps up to date."""
        self._stage, self._what, self._source = stage, what, source
        self._done, self._total = 0, 0
        self._lock = threading.Lock()
        self._closed = threading.Event()
        self._started = time.monotonic()
        self._thread = threading.Thread(target=self._run, daemon=True)

    def __enter__(self) -> Progress:
        if self._source:
            self._source.unlink(missing_ok=True)
        print(f"{self._stage}: starting", flush=True)
        self._thread.start()
        return self

    def __exit__(self, *_) -> None:
        self._closed.set()
        self._thread.join()

    def expect(self, total: int) -> None:
        with self._lock:
            self._total = total

    def advance(self, count: int = 1) -> None:
        with self._lock:
            self._done += count

    def line(self) -> str:
        done, total = self._counts()
        count = f"{done} of {total} {self._what}" if total else "starting"
        return f"{self._stage}: {count}, {time.monotonic() - self._started:.0f} s"

    def _counts(self) -> tuple[int, int]:
        if self._source:
            try:
                done, total = self._source.read_text().split()
                return int(done), int(total)
            except (OSError, ValueError):  # not there yet, or being written
                return 0, 0
        with self._lock:
            return self._done, self._total

    def _run(self) -> None:
        terminal = sys.stdout.isatty()
        while not self._closed.wait(2 if terminal else 20):
            if terminal:
                print(f"\r\x1b[K{self.line()}", end="\r", flush=True)
            else:
                print(self.line(), flush=True)
        if terminal:
            print("\x1b[K", end="", flush=True)
