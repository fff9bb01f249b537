"""Project archives of the tests' own, made and read back without the installation's code."""

from __future__ import annotations

import zipfile
from dataclasses import dataclass, field
from pathlib import Path
from xml.etree import ElementTree
from xml.sax.saxutils import escape, quoteattr


@dataclass
class Project:
    """The content of an archive. Its parts stand in the archive as they are given here."""

    name: str = "Pump"
    id: str = "P0001"
    stored_name: str = "Pump"
    revision: str = "A"
    specification: str = "Manual"
    version: str = "3"
    language: str = "en"
    declarations: tuple[str, ...] = ("Title", "Status", "Author")
    metadata: dict[str, str] = field(default_factory=lambda: {"Title": "Feed pump",
                                                              "Status": "draft"})
    documents: dict[str, bytes] = field(default_factory=lambda: {"Pump.xml": b"<document/>"})
    main: str = "Pump.xml"
    messages: tuple[tuple[int, str], ...] = ()
    representations: dict[str, bytes] = field(default_factory=lambda: {"pump.svg": b"<svg/>"})
    objects: tuple[str, ...] = ()  # ids of what the nodes may refer to
    nodes: tuple[tuple[int, str], ...] = ()  # level, and the id of an object or nothing

    def index(self) -> str:
        names = {"id": self.id, "name": self.name, "storedName": self.stored_name,
                 "revision": self.revision, "specification": self.specification,
                 "version": self.version, "language": self.language}
        attributes = " ".join(f"{key}={quoteattr(value)}" for key, value in names.items())
        return f'<?xml version="1.0" encoding="UTF-8"?>\n<archive><project {attributes}/></archive>'

    def content(self) -> str:
        declared = "".join(f"<declaration name={quoteattr(name)}/>" for name in self.declarations)
        items = "".join(f"<item name={quoteattr(name)}>{escape(value)}</item>"
                        for name, value in self.metadata.items())
        documents = "".join(f"<document name={quoteattr(name)} file={quoteattr('documents/' + name)}/>"
                            for name in self.documents)
        messages = "".join(f'<message style="{style}">{escape(text)}</message>'
                           for style, text in self.messages)
        objects = "".join(f"<object id={quoteattr(id)} name={quoteattr(id.title())}/>"
                          for id in self.objects)
        nodes = "".join(f"<node level='{level}' object={quoteattr(id)}/>"
                        for level, id in self.nodes)
        return ('<?xml version="1.0" encoding="UTF-8"?>\n<project>'
                f"<declarations>{declared}</declarations><metadata>{items}</metadata>"
                f"<documents main={quoteattr(self.main)}>{documents}</documents>"
                f"<messages>{messages}</messages><objects>{objects}</objects>"
                f"<nodes>{nodes}</nodes></project>")

    def write(self, path: Path, **replaced: bytes) -> None:
        """replaced: other bytes for "index" or "project"."""
        with zipfile.ZipFile(path, "w", zipfile.ZIP_DEFLATED) as archive:
            archive.writestr("index.xml", replaced.get("index", self.index().encode()))
            archive.writestr("project.xml", replaced.get("project", self.content().encode()))
            for name, content in self.documents.items():
                archive.writestr(f"documents/{name}", content)
            for name, content in self.representations.items():
                archive.writestr(f"representations/{name}", content)


@dataclass
class StoredProject:
    """What an archive holds."""

    index: dict[str, str]
    metadata: dict[str, str]
    main: str
    documents: dict[str, bytes]
    representations: dict[str, bytes]


def read_project(path: Path) -> StoredProject:
    with zipfile.ZipFile(path) as archive:
        assert archive.testzip() is None
        index = ElementTree.fromstring(archive.read("index.xml")).find("project").attrib
        project = ElementTree.fromstring(archive.read("project.xml"))
        parts = {name: archive.read(name) for name in archive.namelist()}

    def below(prefix):
        return {name.removeprefix(prefix): data for name, data in parts.items()
                if name.startswith(prefix)}

    metadata = {item.get("name"): item.text or "" for item in project.findall("metadata/item")}
    documents = project.find("documents")
    return StoredProject(dict(index), metadata, documents.get("main", ""), below("documents/"),
                         below("representations/"))
