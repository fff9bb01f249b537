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
    document: str = ""  # below the exchange folder
    project: dict = field(default_factory=dict)

    @property
    def edit(self) -> tuple[str, ...]:
        """Component and method of the edit handler; empty without one."""
        at = self.actions.index("-EDIT") if "-EDIT" in self.actions else len(self.actions)
        return self.actions[at + 1:at + 3]

    @property
    def update(self) -> bool:
        return "-UPDATEDOC" in self.actions

    @property
    def package(self) -> bool:
        return "-KVB" in self.actions

    @property
    def publish(self) -> bool:
        return self.package or "-PUB" in self.actions

    @property
    def notify(self) -> bool:
        return "-S" in self.actions

    @property
    def has_backup(self) -> bool:
        """Whether its specification has reference tables, and so a backup of them."""
        return self.specification in ("Catalog", "Illustrator")

    def make_project(self) -> Project:
        return Project(specification=self.specification, version=VERSIONS[self.specification],
                       **{**_NODES, **self.project})


# One object twice, one node without any, one below another.
_NODES = {"objects": ("o1", "o2"), "nodes": ((1, "o1"), (2, ""), (2, "o2"), (1, "o1"))}
_DOCUMENT = {"documents": {"Manual.xml": MARKED.encode()}, "main": "Manual.xml"}
_META = ("-META", "Title", "Boiler pump")
_EDIT = ("-EDIT", "KVDev.SampleEdit", "Touch")

SCENARIOS = [
    Scenario("metadata", (*_META, "-ADDMETA", "Author", "Me", "-ADDMETA", "Status", "final")),
    Scenario("rename", ("-PROJECTNAME", "Two")),
    Scenario("edit", _EDIT),
    Scenario("document", ("-DM", "New.xml"), document="New.xml"),
    Scenario("update", ("-UPDATEDOC", *_META), project=_DOCUMENT),
    Scenario("generate", ("-UPDATEDOC", *_META), project={"documents": {}, "main": ""}),
    Scenario("revision", ("-UPDATEDOC", "-NR", *_META), project=_DOCUMENT),
    Scenario("publish-ipc", ("-PUB",), "Catalog"),
    Scenario("publish-proc", ("-PUB",), "Manual"),
    Scenario("publish-trng", ("-PUB",), "Learning"),
    Scenario("publish-text", ("-PUB",), "Text"),
    Scenario("publish-illus", ("-PUB",), "Illustrator"),
    Scenario("package-ipc", ("-KVB",), "Catalog"),
    Scenario("package-text", ("-KVB",), "Text"),
    Scenario("package-trng", ("-KVB",), "Learning"),
    Scenario("notify", ("-S", *_META)),
    Scenario("notify-package", ("-S", "-KVB", *_META), "Catalog"),
    Scenario("everything", ("-S", "-KVB", "-NR", "-UPDATEDOC", "-PROJECTNAME", "Two", "-DM",
                            "New.xml", *_EDIT, *_META), document="New.xml", project=_DOCUMENT),
]
BY_NAME = {scenario.name: scenario for scenario in SCENARIOS}
