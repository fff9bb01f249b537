"""What the program says: every text is known, and proved by a test."""

import pytest
import texts
from text_table import SILENT, TEXTS


def test_texts_of_the_program_all_stand_in_the_table():
    assert texts.program_literals()
    assert texts.untold() == []


def test_texts_of_the_table_are_all_the_programs():
    pieces = [piece for row in TEXTS for piece in row] + list(SILENT)
    assert [piece for piece in pieces if piece not in texts.program_literals()] == []


@pytest.mark.parametrize("pieces", TEXTS, ids=lambda pieces: pieces[0].strip())
def test_text_is_proved_by_a_test(pieces):
    assert texts.proofs(pieces)


@pytest.mark.parametrize("pieces", TEXTS, ids=lambda pieces: pieces[0].strip())
def test_table_names_tests_that_prove_the_text(pieces):
    rows = texts.TABLE.read_text(encoding="utf-8").splitlines()
    begin = texts.row(pieces, TEXTS[pieces], []).rstrip("| ")
    found = [line for line in rows if line.startswith(begin + " | ")]
    assert len(found) == 1, "docs/texts.md lacks the text: python3 tests/checks/texts.py"
    named = texts.named_in(found[0])
    assert named and set(named) <= set(texts.proofs(pieces)), (
        "docs/texts.md names other tests: python3 tests/checks/texts.py")


@pytest.mark.parametrize("source, found", [
    ('Log(L"One two\\n");', ["One two\n"]),
    ('f(L"one "\n  L"two");', ["one two"]),
    ('// says "nothing"\n#include "x.h"\ng("a \\"b\\"");', ['a "b"'])])
def test_literals_of_a_source_are_found_with_their_parts_joined(source, found):
    assert texts.literals(source) == found


@pytest.mark.parametrize("pieces, text, matches", [
    (("Value of '%s' is '%s'\n",), "Value of 'a' is 'b'\r\n", True),
    (("Value of '%s' is '%s'\n",), "Value of 'a'", False),
    (("First ", " second\n\nthird"), "First x second\r\n\r\nthird", True),
    (("First.",), "First?", False)])
def test_text_is_recognised_with_any_value_in_its_gaps(pieces, text, matches):
    assert bool(texts.pattern(pieces).search(text)) == matches
