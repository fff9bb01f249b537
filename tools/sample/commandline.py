"""Command lines: the sample's own, and the user's with the paths of this machine translated."""

from __future__ import annotations

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
    value = ""
    at = 0
    while at < len(arguments):
        taken = _values_taken(arguments, at)
        if taken and arguments[at].lstrip()[1:].upper() == keyword:
            value = arguments[at + 1]
        at += 1 + taken
    return value


_VALUES = {"IN": 1, "EXCHANGEPATH": 1, "LOG": 1, "M": 1, "EDIT": 2, "META": 2, "ADDMETA": 2,
           "PROJECTNAME": 1, "DM": 1}


def _values_taken(arguments: list[str], at: int) -> int:
    word = arguments[at].lstrip()
    if not word.startswith(("-", "/")):
        return 0
    wanted = _VALUES.get(word[1:].upper(), 0)
    return wanted if at + wanted < len(arguments) else 0
