"""The command lines that are run, each with the project that it works on."""

from __future__ import annotations

from dataclasses import dataclass, field

from harness.documents import MARKED
from harness.projects import Project

VERSIONS = {"Catalog": "2", "Manual": "3", "Learning": "1", "Text": "1", "Illustrator": "1"}


@dataclass(frozen=True)
class Scenario:
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
    def has_backup(self) -> bool:
        """Whether its specification has reference tables, and so a backup of them."""
        return self.specification in ("Catalog", "Illustrator")

    def make_project(self) -> Project:
        return Project(specification=self.specification, version=self.version,
                       **{**_NODES, **self.project})


# One object twice, one node without any, one below another.
_NODES = {"objects": ("o1", "o2"), "nodes": ((1, "o1"), (2, ""), (2, "o2"), (1, "o1"))}
_DOCUMENT = {"documents": {"Manual.xml": MARKED.encode()}, "main": "Manual.xml"}
_TITLE = (("Title", "Boiler pump", True),)
_META = ("-META", "Title", "Boiler pump")


def _published(name: str, specification: str, package: bool = False) -> Scenario:
    return Scenario(name, ("-KVB" if package else "-PUB",), specification, publish=True,
                 package=package)


SCENARIOS = [
    Scenario("metadata", (*_META, "-ADDMETA", "Author", "Me", "-ADDMETA", "Status", "final"),
          metadata=(("Author", "Me", False), ("Status", "final", False), *_TITLE)),
    Scenario("rename", ("-PROJECTNAME", "Two"), new_name="Two"),
    Scenario("edit", ("-EDIT", "KVDev.SampleEdit", "Touch"), edit=("KVDev.SampleEdit", "Touch")),
    Scenario("document", ("-DM", "New.xml"), document="New.xml"),
    Scenario("update", ("-UPDATEDOC", *_META), metadata=_TITLE, update=True, project=_DOCUMENT),
    Scenario("generate", ("-UPDATEDOC", *_META), metadata=_TITLE, update=True,
          project={"documents": {}, "main": ""}),
    Scenario("revision", ("-UPDATEDOC", "-NR", *_META), metadata=_TITLE, update=True, revision=True,
          project=_DOCUMENT),
    _published("publish-ipc", "Catalog"),
    _published("publish-proc", "Manual"),
    _published("publish-trng", "Learning"),
    _published("publish-text", "Text"),
    _published("publish-illus", "Illustrator"),
    _published("package-ipc", "Catalog", package=True),
    _published("package-text", "Text", package=True),
    _published("package-trng", "Learning", package=True),
    Scenario("notify", ("-S", *_META), metadata=_TITLE, notify=True),
    Scenario("notify-package", ("-S", "-KVB", *_META), "Catalog", metadata=_TITLE, publish=True,
          package=True, notify=True),
    Scenario("everything", ("-S", "-KVB", "-NR", "-UPDATEDOC", "-PROJECTNAME", "Two", "-DM",
                         "New.xml", "-EDIT", "KVDev.SampleEdit", "Touch", *_META), "Manual",
          metadata=_TITLE, new_name="Two", edit=("KVDev.SampleEdit", "Touch"), document="New.xml",
          update=True, revision=True, publish=True, package=True, notify=True, project=_DOCUMENT),
]
BY_NAME = {scenario.name: scenario for scenario in SCENARIOS}
