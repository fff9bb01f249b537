"""Project archives, written and read without any of the program's code."""

from __future__ import annotations

import xml.etree.ElementTree as ElementTree
import zipfile
from dataclasses import dataclass
from pathlib import Path

from .machine import ROOT

SAMPLE = ROOT / "installation" / "sample" / "Pump"


def sample_files() -> dict[str, bytes]:
    """Name and content of everything in the sample project "Pump"."""
    return {str(path.relative_to(SAMPLE)).replace("\\", "/"): path.read_bytes()
            for path in sorted(SAMPLE.rglob("*")) if path.is_file()}


def write(path: Path, files: dict[str, bytes]) -> None:
    with zipfile.ZipFile(path, "w", zipfile.ZIP_DEFLATED) as file:
        for name, content in files.items():
            file.writestr(name, content)


@dataclass
class Project:
    """What an archive says of its project."""

    files: dict[str, bytes]
    name: str
    stored_name: str
    revision: str
    language: str
    metadata: dict[str, str]
    documents: dict[str, bytes]


def read(path: Path) -> Project:
    with zipfile.ZipFile(path) as file:
        assert file.testzip() is None
        files = {name: file.read(name) for name in file.namelist()}
    entry = ElementTree.fromstring(files["index.xml"]).find("project")
    project = ElementTree.fromstring(files["project.xml"])
    documents = {document.get("name"): files[document.get("file")]
                 for document in project.iterfind("documents/document")}
    metadata = {item.get("name"): item.text or "" for item in project.iterfind("metadata/item")}
    return Project(files, entry.get("name"), entry.get("storedName"), entry.get("revision"),
                   entry.get("language"), metadata, documents)
