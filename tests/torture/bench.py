"""One machine with one installation on which run follows run, put back in a moment in between."""

from __future__ import annotations

import shutil
from contextlib import ExitStack
from dataclasses import dataclass
from pathlib import Path

from harness.cms import Peer
from harness.machine import this_machine
from harness.process import Run, Starter
from harness.sandbox import DEVSETUP, PROGRAM, Sandbox
from harness.specification import STORE

from .scenarios import Scenario

NUMBERED = "*.* * sleep 0\n"  # writes a line when a call begins, and so numbers them
SECONDS = 20
# Counts what is allocated; the second keeps the automation library from keeping what was freed.
COUNTED = {"ZT_ALLOCATIONS": "1", "OANOCACHE": "1"}
LIBRARY = Path(__file__).resolve().parents[2] / "installation" / "data" / "library"


@dataclass
class Result:
    """What a run left."""

    run: Run
    log: bytes
    exchange: dict[str, bytes | None]  # content of each file; None for a folder
    temporary: list[str]
    frames: list[str]
    before: bytes  # the project's archive
    backup_left: bool


class Bench:
    """Use it in a with statement. worker keeps benches apart that run at the same time."""

    def __init__(self, worker: str, machine=None):
        self.machine = machine or this_machine(f"torture-{worker}")
        self.durations: dict[str, float] = {}  # of a scenario's latest undisturbed run, in seconds
        self.undisturbed: dict[str, tuple] = {}  # calls and log of a scenario's undisturbed run
        self._archives: dict[str, bytes] = {}

    def __enter__(self) -> Bench:
        self.machine.start()
        self.box = Sandbox(self.machine, "torture")
        starter = Starter(self.machine, self.box.path("capture"))
        registered = starter.run(str(DEVSETUP), ["--register"], folder=self.box.path("work"))
        assert registered.exit_code == 0, registered.describe()
        self.box.install()
        return self

    def __exit__(self, *_) -> None:
        self.machine.stop()

    # ---- between runs ----

    def reset(self) -> None:
        for part in ("exchange", "temp", "work"):
            empty(self.box.path(part))
        for file in self.box.folder.glob("*.txt"):
            file.unlink()
        self.box.path("run.log").unlink(missing_ok=True)
        self.box.runs.clear()

    def lay_out(self, scenario: Scenario) -> bytes:
        """Puts down what the scenario's command line works on; returns the archive's bytes."""
        if scenario.name not in self._archives:
            scenario.make_project().write(self.box.path("exchange", "Pump.kvp"))
            self._archives[scenario.name] = self.box.read("exchange", "Pump.kvp")
        archive = self._archives[scenario.name]
        self.box.path("exchange", "Pump.kvp").write_bytes(archive)
        if scenario.document:
            self.box.path("exchange", scenario.document).write_bytes(b"<document/>")
        shutil.copy(LIBRARY / "RefTables.bak", self._backup(scenario))
        return archive

    def _backup(self, scenario: Scenario) -> Path:
        return self.box.path(*STORE, scenario.specification, "RefTables.bak")

    # ---- runs ----

    def arguments(self, scenario: Scenario) -> list[str]:
        return ["-IN", self.box.windows("exchange", "Pump.kvp"), "-M", "job", "-LOG",
                self.box.windows("run.log"), *scenario.actions]

    def run(self, scenario: Scenario, plan: str = "", exit_code: int | None = 0) -> Result:
        """A run of the scenario from a clean start. exit_code None: any."""
        self.reset()
        before = self.lay_out(scenario)
        return self.run_as_it_is(scenario, plan, exit_code, before)

    def run_as_it_is(self, scenario: Scenario, plan: str, exit_code: int | None, before: bytes,
                     more: list[str] = ()) -> Result:
        """more: what the command line has besides; a later "-LOG" takes the place of the first."""
        with ExitStack() as stack:
            client = stack.enter_context(Peer()) if scenario.notify else None
            if client is not None:
                self.box.path("exchange", "cms.ini").write_text(client.settings())
            run = self.box.run(*self.arguments(scenario), *more, program=str(PROGRAM),
                               faults=plan + NUMBERED, environment=COUNTED,
                               exit_code=exit_code, seconds=SECONDS)
        return self.result(scenario, run, before, client.messages if client else [])

    def result(self, scenario: Scenario, run: Run, before: bytes, frames=()) -> Result:
        log = self.box.path("run.log")
        exchange = {entry.name: None if entry.is_dir() else entry.read_bytes()
                    for entry in self.box.path("exchange").iterdir() if entry.name != "cms.ini"}
        return Result(run, log.read_bytes() if log.is_file() else b"", exchange,
                      self.box.names("temp"), list(frames), before, self._backup(scenario).exists())


def empty(folder: Path) -> None:
    for entry in folder.iterdir():
        if entry.is_dir() and not entry.is_symlink():
            shutil.rmtree(entry)
        else:
            entry.unlink()
