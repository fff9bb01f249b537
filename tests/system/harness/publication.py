"""Published folders and packages, read without the installation's code."""

from __future__ import annotations

import zipfile
from html.parser import HTMLParser
from pathlib import Path
from urllib.parse import unquote

_VOID = {"meta", "link", "img"}


class _Element:
    def __init__(self, tag: str, attributes: dict[str, str]):
        self.tag = tag
        self.attributes = attributes
        self.children: list[_Element | str] = []

    def all(self, tag: str) -> list["_Element"]:
        found = []
        for child in self.children:
            if isinstance(child, _Element):
                found += ([child] if child.tag == tag else []) + child.all(tag)
        return found

    def by_id(self, id: str) -> "_Element | None":
        for child in self.children:
            if isinstance(child, _Element):
                if child.attributes.get("id") == id:
                    return child
                found = child.by_id(id)
                if found:
                    return found
        return None

    @property
    def text(self) -> str:
        return "".join(child if isinstance(child, str) else child.text for child in self.children)


class _Reader(HTMLParser):
    def __init__(self):
        super().__init__()
        self.root = _Element("", {})
        self._open = [self.root]

    def handle_starttag(self, tag, attributes):
        element = _Element(tag, {name: value or "" for name, value in attributes})
        self._open[-1].children.append(element)
        if tag not in _VOID:
            self._open.append(element)

    def handle_endtag(self, tag):
        assert self._open[-1].tag == tag, f"</{tag}> closes <{self._open[-1].tag}>"
        self._open.pop()

    def handle_data(self, data):
        self._open[-1].children.append(data)


class Page:
    """A page that a browser opens."""

    def __init__(self, content: bytes):
        reader = _Reader()
        reader.feed(content.decode("utf-8"))
        assert reader._open == [reader.root]
        self.root = reader.root
        self.language = self.root.all("html")[0].attributes["lang"]
        self.kind = self.root.all("body")[0].attributes["class"]
        self.title = self.root.all("h1")[0].text

    def links(self) -> list[str]:
        return ([link.attributes["href"] for tag in ("link", "a") for link in self.root.all(tag)]
                + [image.attributes["src"] for image in self.root.all("img")])

    def heading(self, section: str) -> str:
        return self.root.by_id(section).all("h2")[0].text


class Index(Page):
    """The page with which a publication begins."""

    def _table(self, id: str) -> dict[str, str]:
        rows = self.root.by_id(id).all("tr")
        return {row.all("th")[0].text: row.all("td")[0].text for row in rows}

    @property
    def metadata(self) -> dict[str, str]:
        return self._table("metadata")

    @property
    def facts(self) -> dict[str, str]:
        """What the publishing component was given, by its name."""
        return self._table("facts")

    @property
    def settings(self) -> dict[str, str]:
        return self._table("settings")

    @property
    def documents(self) -> list[str] | None:
        section = self.root.by_id("documents")
        return None if section is None else [entry.text for entry in section.all("li")]

    @property
    def objects(self) -> list[str]:
        """Ids of the referenced objects, in the order of the page."""
        return [row.attributes["data-id"] for row in self.root.all("tr")
                if row.attributes.get("class") == "object"]


class Publication:
    def __init__(self, files: dict[str, bytes]):
        self.files = files

    @property
    def index(self) -> Index:
        return Index(self.files["index.html"])

    def page(self, name: str) -> Page:
        return Page(self.files[name])

    def broken_links(self) -> list[str]:
        """Links of all pages that lead to no file of the publication."""
        broken = []
        for name, content in self.files.items():
            if name.endswith(".html"):
                base = Path(name).parent
                broken += [f"{name}: {link}" for link in Page(content).links()
                           if _resolved(base, link) not in self.files]
        return broken


def _resolved(base: Path, link: str) -> str:
    parts: list[str] = []
    for part in [*base.parts, *unquote(link).split("/")]:
        if part == "..":
            parts.pop()
        elif part != ".":
            parts.append(part)
    return "/".join(parts)


def read_folder(folder: Path) -> Publication:
    return Publication({file.relative_to(folder).as_posix(): file.read_bytes()
                        for file in folder.rglob("*") if file.is_file()})


def read_package(path: Path) -> Publication:
    with zipfile.ZipFile(path) as package:
        assert package.testzip() is None
        names = package.namelist()
        assert len(names) == len(set(names))
        return Publication({name: package.read(name) for name in names})
