"""One run on a project of the test's own, and what it left."""

from __future__ import annotations

from .logs import without_times
from .projects import Project, StoredProject, read_project

PROCESSING = b"Processing project 'Pump'\r\n"
SPECIFICATION = b"Specification 'Manual', v.3 loaded\r\n"
LOADED = b"Project loaded by Zeltor Development Installation v.1.4.0.12\r\n"
OPENED = PROCESSING + SPECIFICATION + LOADED
SAVED = b"Project saved to KVP file\r\n"
SUCCEEDED = (b"SUCCESS: Project 'Pump' successfully processed\r\n"
             b"SUCCESS: ZeltorAuthorInvisible finished successfully at <time>\r\n")

# What the kernel says back to the program, and what COM asks of every object on the way.
_NOT_CALLS = (" QueryInterface ", "program ", "live ", "fault ")


class Job:
    """Runs the program on exchange\\Pump.kvp with the log run.log and the status id "job"."""

    def __init__(self, sandbox):
        self.sandbox = sandbox
        self.archive = sandbox.path("exchange", "Pump.kvp")
        self.run = None
        self.before = None

    def __call__(self, *actions: str, project: Project | None = None, **options) -> "Job":
        """options: those of Sandbox.run."""
        if project is not None or not self.archive.exists():
            (project or Project()).write(self.archive)
        return self.on_what_is_there(*actions, **options)

    def on_what_is_there(self, *actions: str, **options) -> "Job":
        self.before = self.archive.read_bytes() if self.archive.is_file() else None
        self.run = self.sandbox.run(
            "-IN", self.sandbox.windows("exchange", "Pump.kvp"), "-M", "job", "-LOG",
            self.sandbox.windows("run.log"), *actions, **options)
        return self

    # ---- what it left ----

    @property
    def log(self) -> bytes:
        """The log behind its first line, without the times."""
        log = without_times(self.sandbox.read("run.log"))
        assert log.startswith(b"ZeltorAuthorInvisible started at <time> with command line: '")
        return log[log.index(b"\r\n") + 2:]

    @property
    def stored(self) -> StoredProject:
        return read_project(self.archive)

    @property
    def untouched(self) -> bool:
        return self.archive.read_bytes() == self.before

    def calls(self, *parts: str) -> list[str]:
        """Calls in their order; with parts only those that contain one of them."""
        calls = [line for line in self.run.trace if not any(mark in line for mark in _NOT_CALLS)]
        return [line for line in calls if not parts or any(part in line for part in parts)]

    @property
    def shut_down(self) -> list[str]:
        """The calls that end the use of the kernel and of the configuration."""
        return self.calls(" CloseProjects ", " ShutDown ", " Close ")

    # ---- outcomes ----

    def check_succeeded(self, *steps: bytes) -> None:
        assert self.log == b"".join(steps) + SUCCEEDED
        assert self.sandbox.read("exchange", "job_DONE") == b""
        assert not self.sandbox.path("exchange", "job_ERROR").exists()
        assert self.run.stdout == b""

    def check_failed(self, text: bytes, *steps: bytes) -> None:
        """The steps went well, then the run failed with that text; the archive is as it was."""
        assert self.log == b"".join(steps) + b"ERROR: " + text.replace(b"\n", b"\r\n")
        assert self.sandbox.read("exchange", "job_ERROR") == text.replace(b"\n", b"\r\n")
        assert not self.sandbox.path("exchange", "job_DONE").exists()
        assert self.run.stdout == b""
        if self.before is not None:
            assert self.untouched
