"""Project archives with a document of the test's choice, made and read without the installation."""

from __future__ import annotations

import zipfile
from pathlib import Path
from xml.etree import ElementTree

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

INDEX = """<?xml version="1.0" encoding="UTF-8"?>
<archive>
  <project id="P0001" name="{project}" storedName="{project}" revision="A"
           specification="{name}" version="{version}" language="en"/>
</archive>
"""

PROJECT = """<?xml version="1.0" encoding="UTF-8"?>
<project>
  <declarations><declaration name="Title"/><declaration name="Status"/></declarations>
  <metadata><item name="Title">Feed pump</item><item name="Status">draft</item></metadata>
  {documents}
  <messages/>
  <nodes/>
</project>
"""


def make_archive(path: Path, document: str | None, specification=None) -> None:
    """A project whose document is `document`; None: it has none."""
    documents = f'<documents main="{NAME}"><document name="{NAME}" file="documents/{NAME}"/></documents>'
    index = INDEX.format(project=path.stem, **(specification or SPECIFICATION))
    with zipfile.ZipFile(path, "w", zipfile.ZIP_DEFLATED) as archive:
        archive.writestr("index.xml", index)
        archive.writestr("project.xml", PROJECT.format(documents=documents if document else ""))
        if document:
            archive.writestr(f"documents/{NAME}", document)


def document_in(path: Path, name: str = NAME) -> ElementTree.Element:
    with zipfile.ZipFile(path) as archive:
        assert archive.testzip() is None
        return ElementTree.fromstring(archive.read(f"documents/{name}"))


def paragraphs(document: ElementTree.Element) -> list[str]:
    """The text of each paragraph, without its elements."""
    return ["".join(paragraph.itertext()) for paragraph in document.iter("para")]


def change_marks(document: ElementTree.Element) -> int:
    return sum(1 for element in document.iter() if element.tag in ("insert", "delete"))
