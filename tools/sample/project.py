"""What a project archive holds, read with nothing but a zip reader and an XML reader."""

from __future__ import annotations

import hashlib
import xml.etree.ElementTree as ElementTree
import zipfile
from pathlib import Path


def describe(archive: Path) -> dict[str, str]:
    """Label and value of everything that a run can change, in the order in which to show it."""
    if not archive.exists():
        return {"archive": "is not there"}
    try:
        with zipfile.ZipFile(archive) as file:
            return _describe(file)
    except (zipfile.BadZipFile, KeyError, ElementTree.ParseError) as error:
        return {"archive": f"cannot be read: {error}"}


def _describe(file: zipfile.ZipFile) -> dict[str, str]:
    damaged = file.testzip()
    if damaged:
        return {"archive": f"is damaged in {damaged}"}
    entry = ElementTree.fromstring(file.read("index.xml")).find("project")
    if entry is None:
        return {"archive": "holds no project"}
    project = ElementTree.fromstring(file.read("project.xml"))
    shown = {label: entry.get(label, "") for label in ("name", "revision", "language")}
    for item in project.iterfind("metadata/item"):
        shown[f"metadata {item.get('name')}"] = item.text or ""
    for document in project.iterfind("documents/document"):
        shown[f"document {document.get('name')}"] = _content(file, document.get("file", ""))
    return shown


def _content(file: zipfile.ZipFile, name: str) -> str:
    try:
        content = file.read(name)
    except KeyError:
        return f"{name} is missing"
    return (f"{name}, {len(content)} bytes, SHA-256 {hashlib.sha256(content).hexdigest()[:12]}"
            + _change_marks(content))


def _change_marks(content: bytes) -> str:
    try:
        document = ElementTree.fromstring(content)
    except ElementTree.ParseError:
        return ""
    marks = sum(1 for element in document.iter() if element.tag in ("insert", "delete"))
    return f", change marks: {marks or 'none'}"


def compare(before: dict[str, str], after: dict[str, str]) -> str:
    """A table of both states; a mark stands before each line that differs."""
    labels = list(dict.fromkeys([*before, *after]))
    width = max(len(label) for label in labels)
    lines = []
    for label in labels:
        old, new = before.get(label, "-"), after.get(label, "-")
        if old == new:
            lines.append(f"    {label:{width}}  {old}")
        else:
            lines += [f"  * {label:{width}}  {old}", f"    {'':{width}}  -> {new}"]
    return "\n".join(lines)
