"""The project's own files and how each is compiled."""

from __future__ import annotations

import json
import re
import shlex
import subprocess
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
BUILD = ROOT / "build"
PRODUCT = ("app", "cms", "components", "config", "framework", "project", "publish", "support")

_INCLUDE = re.compile(r'^[ \t]*#[ \t]*include[ \t]+"([^"]+)"', re.MULTILINE)


def files(*suffixes: str, below: tuple[str, ...] = ("",)) -> list[Path]:
    """Files that stand in the work tree, ignored ones left out, relative to the root."""
    listing = subprocess.run(["git", "ls-files", "-z", "--cached", "--others", "--exclude-standard"],
                             cwd=ROOT, check=True, capture_output=True).stdout.decode()
    paths = [Path(name) for name in sorted(set(listing.split("\0"))) if name]
    return [path for path in paths
            if path.suffix in suffixes and (ROOT / path).exists()
            and any(not folder or path.parts[0] == folder for folder in below)]


def own_includes(text: str, folder: Path) -> list[Path]:
    """The project's own files that the text includes, absolute."""
    found = []
    for name in _INCLUDE.findall(text):
        for base in (folder, ROOT):
            if (base / name).is_file():
                found.append((base / name).resolve())
                break
    return found


def own_closure(sources: list[Path]) -> set[Path]:
    """The sources and all of the project's own files that they include, at any depth."""
    seen: set[Path] = set()
    waiting = [ROOT / source for source in sources]
    while waiting:
        path = waiting.pop()
        if path not in seen:
            seen.add(path)
            waiting += own_includes(path.read_text(encoding="utf-8"), path.parent)
    return seen


def compile_options(preset: str) -> dict[Path, tuple[str, ...]]:
    """The options that matter to an analyser (-D, -I, -isystem, -std), by source file."""
    commands = json.loads((BUILD / preset / "compile_commands.json").read_text())
    found = {}
    for entry in commands:
        source = Path(entry["file"])
        if source.is_relative_to(ROOT) and not source.is_relative_to(BUILD):
            found[source.relative_to(ROOT)] = _options(shlex.split(entry["command"]))
    return found


def _options(words: list[str]) -> tuple[str, ...]:
    kept = []
    for at, word in enumerate(words):
        if word == "-isystem":
            kept += [word, words[at + 1]]
        elif word.startswith(("-D", "-I", "-std=", "-isystem")):
            kept.append(word)
    return tuple(kept)
