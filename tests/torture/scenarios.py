"""The command lines that are tortured, each with the project that it works on."""

from __future__ import annotations

from dataclasses import dataclass, field

from harness.documents import MARKED
from harness.projects import Project

VERSIONS = {"Catalog": "2", "Manual": "3", "Learning": "1", "Text": "1", "Illustrator": "1"}
CLASSES = {"Catalog": "IPC", "Manual": "PROC", "Learning": "TRNG", "Text": "TEXT",
           "Illustrator": "ILLUS"}


@dataclass(frozen=True)
class Shape:
    name: str
    actions: tuple[str, ...]
    specification: str = "Manual"
    metadata: tuple[tuple[str, str, bool], ...] = ()  # name, value, whether by -META; by name
    new_name: str = ""
    edit: tuple[str, str] = ()
    document: str = ""  # below the exchange folder
    update: bool = False
    revision: bool = False
    publish: bool = False
    package: bool = False
    notify: bool = False
    project: dict = field(default_factory=dict)

    @property
    def version(self) -> str:
        return VERSIONS[self.specification]

    @property
    def kind(self) -> str:
        return CLASSES[self.specification]

    def make_project(self) -> Project:
        return Project(specification=self.specification, version=self.version,
                       **{**_NODES, **self.project})


# One object twice, one node without any, one below another.
_NODES = {"objects": ("o1", "o2"), "nodes": ((1, "o1"), (2, ""), (2, "o2"), (1, "o1"))}
_DOCUMENT = {"documents": {"Manual.xml": MARKED.encode()}, "main": "Manual.xml"}
_TITLE = (("Title", "Boiler pump", True),)
_META = ("-META", "Title", "Boiler pump")


def _published(name: str, specification: str, package: bool = False) -> Shape:
    return Shape(name, ("-KVB" if package else "-PUB",), specification, publish=True,
                 package=package)


SHAPES = [
    Shape("metadata", (*_META, "-ADDMETA", "Author", "Me", "-ADDMETA", "Status", "final"),
          metadata=(("Author", "Me", False), ("Status", "final", False), *_TITLE)),
    Shape("rename", ("-PROJECTNAME", "Two"), new_name="Two"),
    Shape("edit", ("-EDIT", "KVDev.SampleEdit", "Touch"), edit=("KVDev.SampleEdit", "Touch")),
    Shape("document", ("-DM", "New.xml"), document="New.xml"),
    Shape("update", ("-UPDATEDOC", *_META), metadata=_TITLE, update=True, project=_DOCUMENT),
    Shape("generate", ("-UPDATEDOC", *_META), metadata=_TITLE, update=True,
          project={"documents": {}, "main": ""}),
    Shape("revision", ("-UPDATEDOC", "-NR", *_META), metadata=_TITLE, update=True, revision=True,
          project=_DOCUMENT),
    _published("publish-ipc", "Catalog"),
    _published("publish-proc", "Manual"),
    _published("publish-trng", "Learning"),
    _published("publish-text", "Text"),
    _published("publish-illus", "Illustrator"),
    _published("package-ipc", "Catalog", package=True),
    _published("package-text", "Text", package=True),
    _published("package-trng", "Learning", package=True),
    Shape("notify", ("-S", *_META), metadata=_TITLE, notify=True),
    Shape("notify-package", ("-S", "-KVB", *_META), "Catalog", metadata=_TITLE, publish=True,
          package=True, notify=True),
    Shape("everything", ("-S", "-KVB", "-NR", "-UPDATEDOC", "-PROJECTNAME", "Two", "-DM",
                         "New.xml", "-EDIT", "KVDev.SampleEdit", "Touch", *_META), "Manual",
          metadata=_TITLE, new_name="Two", edit=("KVDev.SampleEdit", "Touch"), document="New.xml",
          update=True, revision=True, publish=True, package=True, notify=True, project=_DOCUMENT),
]
BY_NAME = {shape.name: shape for shape in SHAPES}
