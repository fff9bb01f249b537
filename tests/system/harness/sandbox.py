"""Folders, registry values and runs of one test."""

from __future__ import annotations

import os
import shutil
from pathlib import Path

from . import registry, snapshot, trace
from .machine import BUILD
from .process import Run, Starter

# The program under test; its installation is always the build folder's.
PROGRAM = Path(os.environ.get("ZT_PROGRAM", BUILD / "ZTInvisible.exe"))
REGISTRY_WRITER = BUILD / "tests" / "system" / "zt-test-registry.exe"
DEVSETUP = BUILD / "installation" / "zt-devsetup.exe"


class Sandbox:
    """C:\\zt\\<name> on the machine's drive, with

    exchange       the exchange folder
    work           current folder of the runs
    temp           temporary folder of the runs; it must be empty again when the test ends
    installation   the development installation, when the test lays one out
    """

    def __init__(self, machine, name: str):
        self.machine = machine
        self.folder = machine.drive / "zt" / name
        self.runs: list[Run] = []
        self.allow_temp_leftovers = False
        shutil.rmtree(self.folder, ignore_errors=True)
        for part in ("exchange", "work", "temp", "capture"):
            (self.folder / part).mkdir(parents=True)
        self._starter = Starter(machine, self.path("capture"))
        self._before = snapshot.take(machine.watched_folders(), self.folder)
        self._reset_registry()

    # ---- paths ----

    def path(self, *parts: str) -> Path:
        return self.folder.joinpath(*parts)

    def windows(self, *parts: str) -> str:
        """The same path as the program names it."""
        return self.machine.windows_path(self.path(*parts))

    # ---- registry ----

    def set_registry(self, *values: registry.Value) -> None:
        self._change_registry([value.line() for value in values])

    def delete_registry_keys(self, *keys: str, root: str = "HKLM") -> None:
        self._change_registry([registry.deletion(root, key) for key in keys])

    def use_temporary_folder(self, path: str) -> None:
        """The folder, or what stands in its place, of all later runs; a Windows path."""
        self._temp = path
        # Wine takes the variables from here and not from its own environment.
        self.set_registry(registry.text("Environment", "TEMP", path, "HKCU"),
                          registry.text("Environment", "TMP", path, "HKCU"))

    def _reset_registry(self) -> None:
        self._change_registry([registry.deletion("HKLM", r"Software\Morvenit"),
                               registry.deletion("HKCU", r"Software\Morvenit")])
        self.use_temporary_folder(self.windows("temp"))

    def _change_registry(self, lines: list[str]) -> None:
        changes = self.path("capture", "registry.txt")
        changes.write_text("".join(line + "\n" for line in lines), encoding="utf-8")
        run = self._starter.run(str(REGISTRY_WRITER), [self.machine.windows_path(changes)],
                                folder=self.path("work"))
        assert run.exit_code == 0, run.describe()

    # ---- the development installation ----

    def install(self) -> None:
        """Lays out an installation of this test's own and points the registry at it."""
        run = self._starter.run(str(DEVSETUP), ["--root", self.windows("installation")],
                                folder=self.path("work"))
        assert run.exit_code == 0, run.describe()

    # ---- runs ----

    def run(self, *arguments: str, program: str = str(PROGRAM), faults: str = "",
            environment: dict[str, str] | None = None, exit_code: int | None = 0, **options) -> Run:
        """One run of the program in the folder `work`.

        faults     text of the plan that makes stand-in components fail
        exit_code  what the run must end with; None: anything, and it may have written errors
        """
        number = len(self.runs) + 1
        trace_file = self.path(f"trace-{number}.txt")
        variables = {"ZT_TRACE": self.machine.windows_path(trace_file), "TEMP": self._temp,
                     "TMP": self._temp, **(environment or {})}
        if faults:
            plan = self.path(f"faults-{number}.txt")
            plan.write_text(faults, encoding="utf-8")
            variables["ZT_FAULTS"] = self.machine.windows_path(plan)
        options.setdefault("folder", self.path("work"))
        run = self._starter.run(program, arguments, environment=variables, trace=trace_file,
                                **options)
        self.runs.append(run)
        assert exit_code is None or run.exit_code == exit_code, run.describe()
        assert exit_code is None or run.stderr == b"", run.describe()
        return run

    # ---- what a run left ----

    def read(self, *parts: str) -> bytes:
        return self.path(*parts).read_bytes()

    def names(self, *parts: str) -> list[str]:
        """Names in a folder, sorted."""
        return sorted(entry.name for entry in self.path(*parts).iterdir())

    # ---- the end of the test ----

    def check_nothing_left(self) -> None:
        problems = [f"process left: {line}" for line in self.machine.programs()]
        after = snapshot.take(self.machine.watched_folders(), self.folder)
        problems += snapshot.differences(self._before, after)
        if not self.allow_temp_leftovers:
            problems += [f"left in the temporary folder: {name}" for name in self.names("temp")]
        for number, run in enumerate(self.runs, 1):
            ended_normally = run.exit_code == 0
            problems += [f"run {number}: {line}"
                         for line in trace.problems(run.trace, ended_normally)]
        assert not problems, "\n".join(problems)

    def remove(self) -> None:
        shutil.rmtree(self.folder, ignore_errors=True)
