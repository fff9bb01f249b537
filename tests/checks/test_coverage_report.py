"""./run-tests --coverage: its figures, and the reasons for lines that no test runs."""

from __future__ import annotations

import json
import sys
from collections import Counter

import pytest

import tree

sys.path.insert(0, str(tree.ROOT / "tests"))

from runner.coverage_report import Figures, check_reasons, read_reasons  # noqa: E402


def line(number: int, count: int, *branches: int, noncode: bool = False) -> dict:
    return {"line_number": number, "count": count, "gcovr/noncode": noncode,
            "branches": [{"count": branch} for branch in branches]}


def figures(tmp_path, *lines: dict) -> Figures:
    report = tmp_path / "coverage.json"
    report.write_text(json.dumps({"files": [{"file": "app/a.cpp", "lines": lines}]}))
    return Figures.read(report)


@pytest.fixture
def reasons(tmp_path):
    def read(text: str) -> Counter:
        path = tmp_path / "uncovered.txt"
        path.write_text(text)
        return read_reasons(path)
    return read


def test_lines_and_branches_are_counted_without_what_is_no_code(tmp_path):
    measured = figures(tmp_path, line(1, 4, 3, 1), line(2, 0, 0, 0, noncode=True), line(3, 0),
                       line(4, 1, 1, 0))
    assert str(measured) == "lines 66.6 %, branches 75.0 %"


def test_figure_just_below_a_target_does_not_read_as_the_target(tmp_path):
    lines = [line(number, number > 1, 1) for number in range(1, 2002)]
    assert str(figures(tmp_path, *lines)) == "lines 99.9 %, branches 100.0 %"


def test_nothing_measured_is_an_error(tmp_path):
    with pytest.raises(ValueError):
        str(figures(tmp_path))


def test_uncovered_lines_are_reported_by_file_number_and_text(tmp_path):
    (tmp_path / "app").mkdir()
    (tmp_path / "app" / "a.cpp").write_text("int a() {\n    return 1;\n}\n")
    measured = figures(tmp_path, line(1, 1), line(2, 0), line(3, 0, noncode=True))
    assert measured.uncovered(tmp_path) == [("app/a.cpp", 2, "return 1;")]


def test_reason_stands_for_the_lines_below_it(reasons):
    text = "# Never\n# comes.\napp/a.cpp: case 1: f();\napp/a.cpp: }\napp/a.cpp: }\n\n# Nor\nb.h: g();\n"
    assert reasons(text) == {("app/a.cpp", "case 1: f();"): 1, ("app/a.cpp", "}"): 2,
                             ("b.h", "g();"): 1}


@pytest.mark.parametrize("text", ["app/a.cpp: f();\n", "# Reason\n\napp/a.cpp: f();\n",
                                  "# Reason\napp/a.cpp f();\n"])
def test_line_without_a_reason_of_its_own_is_refused(reasons, text):
    with pytest.raises(ValueError):
        reasons(text)


def test_uncovered_line_needs_a_reason_each_time_it_occurs():
    uncovered = [("a.cpp", 3, "}"), ("a.cpp", 9, "}")]
    assert check_reasons(uncovered, Counter({("a.cpp", "}"): 2})) == []
    assert check_reasons(uncovered, Counter({("a.cpp", "}"): 1})) == [
        "no test runs it, and no reason is given: a.cpp:9: }"]


def test_reason_for_a_line_that_is_covered_or_gone_is_a_problem():
    assert check_reasons([], Counter({("a.cpp", "f();"): 1})) == [
        "a reason is given, but a test runs it, or it is gone: a.cpp: f();"]
