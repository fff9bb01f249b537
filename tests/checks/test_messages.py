"""docs/messages.md has every message of the program, and no other."""

from __future__ import annotations

import re

import pytest

import tree

DOCUMENT = tree.ROOT / "docs" / "messages.md"

# Literals that look like a message and are none: keywords of the command line, names of classes,
# words of the client's answers and settings, names in other programs, characters to be skipped.
NO_MESSAGES = {
    "EXCHANGEPATH", "LOG", "KVB", "PUB", "EDIT", "META", "ADDMETA", "PROJECTNAME", "UPDATEDOC",
    "IPC", "PROC", "TRNG", "TEXT", "ILLUS", "TOOL_RESPONSE_MESSAGE", "ERROR", "CMS", "KVE", "XMED",
    " \t\n\v\f\r", " \r\n"}

_LITERALS = re.compile(r'L"(?:[^"\\\n]|\\.)*"(?:\s*L?"(?:[^"\\\n]|\\.)*")*')
_PART = re.compile(r'"((?:[^"\\\n]|\\.)*)"')
_COMMENT = re.compile(r"^\s*//.*$", re.MULTILINE)
# Where a literal is a message, whatever it looks like.
_SAYS = re.compile(r"\b(?:throw|\w*Log|LogError|Fail\w*|ConsolePrint|Notify)\b[\s(]*(?:CString\()?$")


def messages(source: str) -> set[str]:
    """The literals of C++ source that are messages, adjacent ones joined."""
    source = _COMMENT.sub("", source)
    found = set()
    for match in _LITERALS.finditer(source):
        text = "".join(_PART.findall(match[0])).encode().decode("unicode_escape")
        looks = re.search(r"\w[^\w\s]* |: |\n", text) or re.fullmatch(r"_?[A-Z_]{3,}(\|.*)?", text)
        if (looks or _SAYS.search(source[:match.start()][-40:])) and text not in NO_MESSAGES:
            found.add(text)
    return found


def parts(text: str, value: str) -> set[str]:
    """What stands between the values of a text, where it has letters."""
    return {part.strip() for part in re.split(value, text) if re.search(r"[A-Za-z]", part)}


def program_literals() -> str:
    return "\n".join((tree.ROOT / path).read_text(encoding="utf-8")
                     for path in tree.files(".cpp", ".h", below=tree.PRODUCT))


def parts_of_program(source: str) -> set[str]:
    return {part for text in messages(source) for part in parts(text, "%w?s")}


def parts_of_document(document: str) -> set[str]:
    cells = re.findall(r"^\| (`.*?`) \| ", document, re.MULTILINE)
    texts = [text for cell in cells for text in re.findall(r"`([^`]*)`", cell)]
    plain = [text.replace("\\n", "\n").replace("\\|", "|") for text in texts]
    return {part for text in plain for part in parts(text, "<[^>]*>")}


def test_document_has_every_message_of_the_program_and_no_other():
    program = parts_of_program(program_literals())
    document = parts_of_document(DOCUMENT.read_text())
    assert sorted(program - document) == [], "docs/messages.md lacks these"
    assert sorted(document - program) == [], "no source has these"


def test_literals_that_are_no_messages_are_all_in_the_sources():
    found = {"".join(_PART.findall(literals)).encode().decode("unicode_escape")
             for literals in _LITERALS.findall(program_literals())}
    assert NO_MESSAGES - found == set()


@pytest.mark.parametrize("planted", [
    'throw L"Can\'t do it.";', 'throw L"Impossible";', 'app.Log(L"Done\\n");',
    'return Fail(L"No way: " + path);', 'throw CString(L"Gone") + name;', 'Notify(L"Begin", L"");',
    'const auto text = L"One "\n    L"two";', 'file = base + L"_STATE";'])
def test_message_that_the_document_lacks_is_found(planted):
    assert parts_of_program(planted) - parts_of_document(DOCUMENT.read_text())


@pytest.mark.parametrize("harmless", [
    '// says L"nothing at all"', 'Select(L"configuration/version")', 'folder + L"\\\\cms.ini"'])
def test_other_literal_is_no_message(harmless):
    assert messages(harmless) == set()
