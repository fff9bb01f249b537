"""A specification of the test's own in the installation's store, and what a run reports of it."""

from __future__ import annotations

import re
import shutil

from .job import LOADED, PROCESSING, SAVED
from .projects import Project
from .sandbox import DEVSETUP

TITLE = b"Value of metadata 'Title' set to 'x'\r\n"
ACTIONS = ("-META", "Title", "x")
ABORTING = b"Can't load specification - aborting..."
STORE = ("installation", "data", "Morvenit", "KVProductFamily", "IPCCFG")

HANDLERS = '<handlers><handler platform="x64">zt-handlers.dll</handler></handlers>'


class Specification:
    """A specification of the test's own in the installation's store."""

    def __init__(self, job, name: str = "Own"):
        self.job = job
        self.name = name
        self.folder = job.sandbox.path(*STORE, name)
        self.file = job.sandbox.path(*STORE, name + ".cfg")
        for part in ("RefTables.xml", "RefTables.bak", "Templates.xml", "Declarations.xml",
                     "Types.xml", "Metadata.xml"):
            self.put(part, "<library/>")
        # Each run registers the copy of its own specification.
        shutil.copy(DEVSETUP.with_name("zt-handlers.dll"), self.folder)

    def put(self, name: str, content: str) -> None:
        path = self.folder / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(content, encoding="utf-8")

    def describe(self, content: str) -> None:
        self.file.write_text(content, encoding="utf-8")

    def of_class(self, name: str, content: str = "", version: str = "1") -> "Specification":
        self.describe(f'<configuration lang="en" class="{name}"><version>{version}</version>'
                      f"{HANDLERS}{content}</configuration>")
        return self

    @property
    def windows_file(self) -> bytes:
        return self.job.sandbox.windows(*STORE, self.name + ".cfg").encode()

    def process(self, *actions: str, version: str = "1", language: str = "en", faults: str = ""):
        project = Project(specification=self.name, version=version, language=language)
        return self.job(*(actions or ACTIONS), project=project, faults=faults)

    def loads(self) -> list[str]:
        """Library files that the kernel was given: operation, file below the specification."""
        folder = self.job.sandbox.windows(*STORE, self.name).replace("\\", "\\\\") + r"\\"
        found = []
        for call in self.job.calls(" Load"):
            match = re.search(r' (Load\w+) \[\d+\] \("(.*)"\) -> (\w+)', call)
            if match:
                found.append(f"{match[1]} {match[2].replace(folder, '')} {match[3]}")
        return found


def loaded(name: str = "Own", version: str = "1") -> bytes:
    return PROCESSING + f"Specification '{name}', v.{version} loaded\r\n".encode() + LOADED + TITLE \
        + SAVED


def check_two(job, first: bytes, *steps: bytes) -> None:
    """Two reports: why the specification is not loaded, and that the run ends."""
    first = first.replace(b"\n", b"\r\n")
    assert job.log == b"".join(steps) + b"ERROR: " + first + b"ERROR: " + ABORTING
    assert job.sandbox.read("exchange", "job_ERROR") == first + ABORTING
    assert job.untouched
