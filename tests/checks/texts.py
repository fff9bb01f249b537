"""What the program says to people and to its client, and the tests that prove it.

A text is a literal of the program. The tests that prove it are those that spell it out, in their own
body, in their table of cases, or in a constant that they name. Run by itself this module writes
docs/texts.md.
"""

from __future__ import annotations

import ast
import functools
import re
from dataclasses import dataclass
from pathlib import Path

import tree
from text_table import SILENT, TEXTS

TABLE = tree.ROOT / "docs" / "texts.md"
NO_SPEECH = (Path("app/CommandLine.cpp"),)  # its words are read, not said
MOST_TESTS = 3  # shown for one text
GAP = "\0"      # stands for what a test computes

_LITERAL = re.compile(r'(?:L?"(?:[^"\\\n]|\\.)*"\s*)+')
_PART = re.compile(r'"((?:[^"\\\n]|\\.)*)"')
_COMMENT = re.compile(r"^\s*//.*$|^\s*#include.*$", re.MULTILINE)
_DIRECTIVE = re.compile(r"%w?s")
_CPP_TEST = re.compile(r"^TEST(?:_F|_P)?\((\w+),\s*(\w+)\)", re.MULTILINE)


@dataclass(frozen=True)
class Test:
    name: str            # as ./run-tests knows it
    texts: tuple[str, ...]


# ---- the program ----

def literals(source: str) -> list[str]:
    """The string literals of C++ source, adjacent ones joined, escapes resolved."""
    found = []
    for run in _LITERAL.findall(_COMMENT.sub("", source)):
        joined = "".join(_PART.findall(run))
        found.append(joined.encode().decode("unicode_escape"))
    return found


@functools.cache
def program_literals() -> dict[str, list[Path]]:
    found: dict[str, list[Path]] = {}
    for path in tree.files(".cpp", ".h", below=tree.PRODUCT):
        for text in literals((tree.ROOT / path).read_text(encoding="utf-8")):
            found.setdefault(text, []).append(path)
    return found


def is_said(text: str, places: list[Path]) -> bool:
    """Words with blanks between them; elsewhere than in the keywords also a word in capitals."""
    if text in SILENT:
        return False
    if re.search(r"\w{2,}[:.]? |: \w| \w{2,}|%s", text):
        return any(path not in NO_SPEECH for path in places) and text != "%s" and text != "%s\n"
    return bool(re.match(r"_?[A-Z][A-Z_]{3,}", text)) and any(
        path.parts[0] in ("app", "cms") and path not in NO_SPEECH for path in places)


def untold() -> list[str]:
    """Texts of the program that the table lacks."""
    told = {piece for pieces in TEXTS for piece in pieces}
    return [text for text, places in program_literals().items()
            if is_said(text, places) and text not in told]


# ---- the tests ----

class PythonTexts:
    """The texts that the functions of one module spell out."""

    def __init__(self, path: Path):
        self.path = path
        self.module = ast.parse(path.read_text(encoding="utf-8"))
        self.values: dict[str, ast.AST] = {}
        for node in self.module.body:
            if isinstance(node, ast.Assign):
                for target in node.targets:
                    if isinstance(target, ast.Name):
                        self.values[target.id] = node.value
            elif isinstance(node, ast.FunctionDef) and not node.name.startswith("test_"):
                self.values[node.name] = node

    def tests(self) -> list[Test]:
        return [Test(f"{self.path.stem}::{node.name}", tuple(self.texts_of(node, set())))
                for node in self.module.body
                if isinstance(node, ast.FunctionDef) and node.name.startswith("test_")]

    def texts_of(self, node: ast.AST, seen: set[str]) -> list[str]:
        if isinstance(node, ast.JoinedStr):
            parts = [str(part.value) if isinstance(part, ast.Constant) else GAP
                     for part in node.values]
            named = [text for part in node.values for text in self.texts_of(part, seen)]
            return ["".join(parts), *named]
        if isinstance(node, ast.Constant):
            if isinstance(node.value, bytes):
                return [node.value.decode("latin-1")]
            return [node.value] if isinstance(node.value, str) else []
        if isinstance(node, ast.Name) and node.id in self.values and node.id not in seen:
            return self.texts_of(self.values[node.id], seen | {node.id})
        return [text for child in ast.iter_child_nodes(node) for text in self.texts_of(child, seen)]


def _harness_constants() -> dict[str, ast.AST]:
    found: dict[str, ast.AST] = {}
    for path in sorted((tree.ROOT / "tests" / "system" / "harness").glob("*.py")):
        found |= {name: node for name, node in PythonTexts(path).values.items() if name.isupper()}
    return found


def _python_tests() -> list[Test]:
    shared = _harness_constants()
    found = []
    for path in sorted((tree.ROOT / "tests" / "system").glob("test_*.py")):
        module = PythonTexts(path)
        module.values = shared | module.values
        found += module.tests()
    return found


def _cpp_tests() -> list[Test]:
    found = []
    for folder in ("native", "unit"):
        for path in sorted((tree.ROOT / "tests" / folder).glob("*Test.cpp")):
            source = path.read_text(encoding="utf-8")
            starts = list(_CPP_TEST.finditer(source))
            ends = [match.start() for match in starts[1:]] + [len(source)]
            found += [Test(f"{start[1]}.{start[2]}", tuple(literals(source[start.end():end])))
                      for start, end in zip(starts, ends)]
    return found


@functools.cache
def tests() -> tuple[Test, ...]:
    return (*_python_tests(), *_cpp_tests())


# ---- the two together ----

def pattern(pieces: tuple[str, ...]) -> re.Pattern:
    """Matches what a test may write for the text: any value where the program puts one."""
    shapes = []
    for piece in pieces:
        parts = [re.escape(part) for part in _DIRECTIVE.split(piece.rstrip("\n"))]
        shapes.append(".*".join(parts).replace("\\\n", "\r?\n"))
    return re.compile(".*".join(shapes), re.DOTALL)


def proofs(pieces: tuple[str, ...]) -> list[str]:
    """Names of the tests that spell the text out, those of the real program first."""
    wanted = pattern(pieces)
    longer = [pattern(others) for others in TEXTS
              if others != pieces and pieces[0].rstrip("\n") in others[0]]

    def spelt(text: str) -> bool:
        for other in longer:
            text = other.sub(GAP, text)
        return bool(wanted.search(text))
    return [test.name for test in tests() if any(spelt(text) for text in test.texts)]


def _cell(text: str) -> str:
    return "`" + text.replace("\n", "\\n").replace("|", "\\|") + "`"


def row(pieces: tuple[str, ...], when: str, named: list[str]) -> str:
    return f"| {_cell('...'.join(pieces))} | {when} | {'<br>'.join(map(_cell, named))} |"


def named_in(line: str) -> list[str]:
    """The tests that a row of the table names."""
    return re.findall(r"`([^`]*)`", line.rsplit(" | ", 1)[1])


def table() -> str:
    lines = ["# What the program says", "",
             "Generated from the program's sources and the tests: `python3 tests/checks/texts.py`. "
             "`...` and",
             "`%s` stand for what the run puts in. Of many tests the first three are named.", "",
             "| text | when | proved by |", "|---|---|---|"]
    lines += [row(pieces, when, proofs(pieces)[:MOST_TESTS]) for pieces, when in TEXTS.items()]
    return "\n".join(lines) + "\n"


if __name__ == "__main__":
    TABLE.write_text(table(), encoding="utf-8")
