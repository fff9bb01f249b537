"""One publication of a project of the test's own, and what it left."""

from __future__ import annotations

import re

from .job import LOADED, PROCESSING, SUCCEEDED
from .projects import Project
from .publication import Publication, read_folder, read_package

VERSIONS = {"Catalog": "2", "Manual": "3", "Learning": "1", "Text": "1", "Illustrator": "1"}

PUBLISHED = b"Project published successfully\r\n"
PACKED = b"KVB file created sucessfully\r\n"

_CALL = re.compile(r"(\w+)#\d+ (\w+) (?:\[(?:\w+ )?-?\d+\] )?(\(.*\)) -> (.*)")


def quoted(path: str) -> str:
    """A text as the trace has it."""
    return '"' + path.replace("\\", "\\\\") + '"'


class Publishing:
    """Runs the program with -PUB, or -KVB, on exchange\\Pump.kvp."""

    def __init__(self, job):
        self.job = job
        self.sandbox = job.sandbox
        self.specification = "Manual"

    def __call__(self, *actions: str, package: bool = False, specification: str = "Manual",
                 faults: str = "", environment=None, seconds: int = 60, **project) -> "Publishing":
        self.specification = specification
        version = VERSIONS.get(specification, "1")
        self.job("-KVB" if package else "-PUB", *actions, faults=faults, environment=environment,
                 seconds=seconds,
                 project=Project(specification=specification, version=version, **project))
        return self

    # ---- what it published ----

    @property
    def folder(self) -> Publication:
        return read_folder(self.sandbox.path("exchange", "Pump"))

    @property
    def package(self) -> Publication:
        return read_package(self.sandbox.path("exchange", "Pump.kvb"))

    @property
    def exchange(self) -> list[str]:
        return self.sandbox.names("exchange")

    # ---- what it called ----

    def calls(self, *classes: str) -> list[str]:
        """Operation and arguments of the calls on objects of the classes, and their creation."""
        found = []
        for line in self.job.calls():
            match = _CALL.match(line)
            if match and match[1] in classes:
                found.append(f"{match[1]} {match[2]} {match[3]}")
            elif line.startswith(tuple(f"{name} CreateInstance" for name in classes)):
                found.append(line.split(" (")[0])
        return found

    def reads(self) -> dict[str, str]:
        """What publishing components read from their property bag: name, outcome."""
        reads = [re.match(r'program Read \("(\w+)", type \d+\) -> (.*)', line)
                 for line in self.job.run.trace if line.startswith("program Read ")]
        return {match[1]: match[2] for match in reads}

    # ---- outcomes ----

    @property
    def opened(self) -> bytes:
        version = VERSIONS.get(self.specification, "1")
        return (PROCESSING + f"Specification '{self.specification}', v.{version} loaded\r\n".encode()
                + LOADED)

    def check_published(self) -> None:
        self.job.check_succeeded(self.opened, PUBLISHED)
        assert self.exchange == ["Pump", "Pump.kvp", "job_DONE"]
        assert self.job.untouched

    def check_packed(self) -> None:
        self.job.check_succeeded(self.opened, PUBLISHED, PACKED)
        assert self.exchange == ["Pump.kvb", "Pump.kvp", "job_DONE"]
        assert self.sandbox.names("temp") == []

    def check_failed(self, text: bytes, *steps: bytes) -> None:
        self.job.check_failed(text, self.opened, *steps)


__all__ = ["PACKED", "PUBLISHED", "SUCCEEDED", "Publishing", "quoted"]
