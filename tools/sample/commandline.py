"""Command lines: the sample's own, and the user's with the paths of this machine translated."""

from __future__ import annotations

from collections.abc import Iterator
from pathlib import Path, PureWindowsPath


def windows_path(path: Path, drive: Path) -> str:
    """How a program in the Wine prefix with this drive C: names a path of this machine."""
    if path.is_relative_to(drive):
        return "C:\\" + str(path.relative_to(drive)).replace("/", "\\")
    return "Z:" + str(path).replace("/", "\\")


def linux_path(path: str, drive: Path) -> Path | None:
    """The way back; None for a path on no drive that is here."""
    windows = PureWindowsPath(path)
    root = {"C:": drive, "Z:": Path("/")}.get(windows.drive.upper())
    return root.joinpath(*windows.parts[1:]) if root and windows.root else None


def translate(argument: str, folder: Path, drive: Path) -> str:
    """An argument that names something in a folder of this machine, as the program names it.

    A single slash with a word behind it is left alone: it may be a keyword."""
    if not argument.startswith(("/", "./", "../")):
        return argument
    path = Path(folder, argument)
    is_keyword = argument.count("/") == 1 and argument.startswith("/") and not path.exists()
    if is_keyword or not path.parent.is_dir():
        return argument
    return windows_path(path.resolve(), drive)


def value_of(arguments: list[str], keyword: str) -> str:
    """The last value that the command line gives a keyword, empty without one."""
    values = [values[0] for found, values in _keywords(arguments) if found == keyword and values]
    return values[-1] if values else ""


def has_keyword(arguments: list[str], *keywords: str) -> bool:
    return any(found in keywords for found, _ in _keywords(arguments))


_VALUES = {"IN": 1, "EXCHANGEPATH": 1, "LOG": 1, "M": 1, "EDIT": 2, "META": 2, "ADDMETA": 2,
           "PROJECTNAME": 1, "DM": 1}


def _keywords(arguments: list[str]) -> Iterator[tuple[str, list[str]]]:
    """Each keyword, in capitals, with its values; one that lacks some takes none."""
    at = 0
    while at < len(arguments):
        word = arguments[at].lstrip()
        at += 1
        if word.startswith(("-", "/")):
            wanted = _VALUES.get(word[1:].upper(), 0)
            values = arguments[at:at + wanted]
            if len(values) == wanted:
                yield word[1:].upper(), values
                at += wanted
