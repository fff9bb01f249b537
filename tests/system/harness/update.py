"""One document update on a project of the test's own, and what it left."""

from __future__ import annotations

from .documents import MARKED, document_in, make_archive
from .logs import without_times

UPDATING = b"Updating document 'Manual.xml'\r\n"


class Update:
    """One run on the project Pump of the test's own."""

    def __init__(self, sandbox):
        self._sandbox = sandbox
        self.archive = sandbox.path("exchange", "Pump.kvp")
        self.run = None
        self.before = b""

    def make(self, document: str | None = MARKED, specification=None) -> None:
        make_archive(self.archive, document, specification)

    # A new title changes the document, the status that the project has already changes nothing.
    def __call__(self, *arguments: str, title: str = "Boiler pump", faults: str = "",
                 update: bool = True) -> "Update":
        if not self.archive.exists():
            self.make()
        self.before = self.archive.read_bytes()
        action = ["-META", "Title", title] if title else ["-META", "Status", "draft"]
        self.run = self._sandbox.run(
            "-IN", self._sandbox.windows("exchange", "Pump.kvp"), "-LOG",
            self._sandbox.windows("run.log"), "-M", "job", *action,
            *(["-UPDATEDOC"] if update else []), *arguments, faults=faults)
        return self

    @property
    def log(self) -> bytes:
        return without_times(self._sandbox.read("run.log"))

    @property
    def log_of_update(self) -> bytes:
        """What the log has behind the metadata, or behind the loading where none was set."""
        for line in (b"Value of metadata 'Title' set to 'Boiler pump'\r\n", b"Project loaded by "):
            if line in self.log:
                rest = self.log[self.log.index(line):]
                return rest[rest.index(b"\r\n") + 2:]
        raise AssertionError(self.log)

    @property
    def succeeded(self) -> bool:
        return self._sandbox.names("exchange") == ["Pump.kvp", "job_DONE"]

    def check_failed_with(self, text: bytes, log: bytes = UPDATING) -> None:
        assert self.log_of_update == log + b"ERROR: " + text
        assert self._sandbox.names("exchange") == ["Pump.kvp", "job_ERROR"]
        assert self._sandbox.read("exchange", "job_ERROR") == text
        assert self.archive.read_bytes() == self.before
        self.check_control_is_gone()

    def check_control_is_gone(self) -> None:
        """Deactivated (where it was active), closed, its site cleared, in this order and last."""
        calls = [line.split()[1] for line in self.run.trace
                 if line.startswith("EditorControl#1 ")]
        if "SetClientSite" in calls:
            assert calls[-2:] == ["Close", "SetClientSite"]
            if any("program OnInPlaceActivate" in line for line in self.run.trace):
                assert calls[-3] == "InPlaceDeactivate"

    def calls(self, *objects: str) -> list[str]:
        """The calls on the objects, from object to result, without the queries for interfaces."""
        return [line for line in self.run.trace
                if line.startswith(tuple(f"{name}#" for name in objects))
                and " QueryInterface " not in line]

    @property
    def commands(self) -> list[str]:
        return [line.split('"')[1] for line in self.calls("EditorHost") if " Run " in line]

    @property
    def document(self):
        return document_in(self.archive)
