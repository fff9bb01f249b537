"""Project archives with a document of the test's choice, made and read without the installation."""

from __future__ import annotations

import zipfile
from pathlib import Path
from xml.etree import ElementTree

from .projects import Project

NAME = "Manual.xml"
SPECIFICATION = {"name": "Manual", "version": "3"}

# One of each: text, a mark around text, a mark around an element, marks within an element.
MARKED = """<?xml version="1.0" encoding="UTF-8"?>
<document title="Feed pump" language="en">
  <para>Switch off<insert by="mk"> and lock</insert> the motor<delete by="mk"> quickly</delete>.</para>
  <insert by="jr"><para>Drain <b>the</b> <i>housing</i>.</para></insert>
  <para>Take <delete by="jr">six </delete><insert by="jr">eight <delete>short </delete></insert>screws.</para>
</document>
"""


def make_archive(path: Path, document: str | None, specification=None) -> None:
    """A project whose document is `document`; None: it has none."""
    of = specification or SPECIFICATION
    documents = {NAME: document.encode()} if document else {}
    Project(name=path.stem, stored_name=path.stem, specification=of["name"], version=of["version"],
            documents=documents, main=NAME if document else "", representations={}).write(path)


def document_in(path: Path, name: str = NAME) -> ElementTree.Element:
    with zipfile.ZipFile(path) as archive:
        assert archive.testzip() is None
        return ElementTree.fromstring(archive.read(f"documents/{name}"))


def paragraphs(document: ElementTree.Element) -> list[str]:
    """The text of each paragraph, without its elements."""
    return ["".join(paragraph.itertext()) for paragraph in document.iter("para")]


def change_marks(document: ElementTree.Element) -> int:
    return sum(1 for element in document.iter() if element.tag in ("insert", "delete"))
