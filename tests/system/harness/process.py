"""One start of a Windows program, with everything that it gave back."""

from __future__ import annotations

import os
import select
import subprocess
from dataclasses import dataclass, field
from datetime import datetime
from pathlib import Path

WATCHDOG_SECONDS = 60


class RunHung(AssertionError):
    """The program did not end in time and was ended by the watchdog."""


@dataclass
class Run:
    command: list[str]
    exit_code: int
    stdout: bytes
    stderr: bytes
    started: datetime
    ended: datetime
    trace: list[str] = field(default_factory=list)

    def describe(self) -> str:
        shown = [
            f"command line: {' '.join(self.command)}",
            f"exit code:    {self.exit_code}",
            f"stdout:       {self.stdout!r}",
            f"stderr:       {self.stderr!r}",
        ]
        if self.trace:
            shown += ["trace, its end:", *("  " + line for line in self.trace[-40:])]
        return "\n".join(shown)


def read_trace(path: Path | None) -> list[str]:
    if path is None or not path.exists():
        return []
    return path.read_text(encoding="utf-8", errors="replace").splitlines()


class Starter:
    """Starts programs on a machine, output captured in files below `capture`."""

    def __init__(self, machine, capture: Path):
        self._machine = machine
        self._capture = capture

    def run(self, program, arguments, *, folder, environment=None, trace=None,
            seconds=WATCHDOG_SECONDS) -> Run:
        command = self._machine.command(program, list(arguments))
        variables = self._machine.environment(environment or {})
        run = self._once(command, folder, variables, trace, seconds)
        if run.exit_code == 1 and not (run.stdout or run.stderr or run.trace):
            # About one start in 2,000 under Wine ends before the program's first instruction. Such
            # a start, which wrote nothing at all, is made once more; nothing else ever is.
            run = self._once(command, folder, variables, trace, seconds)
        return run

    def _once(self, command, folder, variables, trace, seconds) -> Run:
        # Files and not pipes: a service that Wine starts on demand would inherit a pipe and keep
        # its end open.
        out, err = self._capture / "stdout", self._capture / "stderr"
        started = datetime.now()
        with out.open("wb") as stdout, err.open("wb") as stderr:
            process = subprocess.Popen(command, cwd=folder, env=variables, stdout=stdout,
                                       stderr=stderr, stdin=subprocess.DEVNULL)
            hung = self._wait(process, seconds)
        run = Run(command, process.returncode, out.read_bytes(), err.read_bytes(), started,
                  datetime.now(), read_trace(trace))
        if hung:
            raise RunHung(f"still running after {seconds} s; ended by the watchdog\n"
                          + run.describe())
        return run

    @staticmethod
    def _wait(process, seconds) -> bool:
        if not _ends_within(process, seconds):
            process.kill()
            process.wait()
            return True
        return False


def _ends_within(process, seconds) -> bool:
    if hasattr(os, "pidfd_open"):  # wakes at once, where wait() looks only now and then
        ending = os.pidfd_open(process.pid)
        try:
            if not select.select([ending], [], [], seconds)[0]:
                return False
        finally:
            os.close(ending)
    try:
        process.wait(timeout=seconds)
        return True
    except subprocess.TimeoutExpired:
        return False
