"""./run-tests itself: what its runners count, and what counts when one breaks."""

from __future__ import annotations

import subprocess
import sys

import pytest

import tree

sys.path.insert(0, str(tree.ROOT / "tests"))

from runner import stages  # noqa: E402
from runner.results import read_report  # noqa: E402

REPORT = """<testsuites><testsuite>
<testcase classname="Log" name="IsEmptied" status="run"/>
<testcase classname="Log" name="IsClosed" status="run"><failure message="expected 1">got 2</failure></testcase>
<testcase classname="a.b" name="broke"><error message="no such fixture"/></testcase>
<testcase classname="a.b" name="left_out"><skipped/></testcase>
</testsuite></testsuites>"""

CTEST_REPORT = """<testsuite>
<testcase name="unit-app.Log.IsEmptied" status="run"><system-out>OK</system-out></testcase>
<testcase name="unit-app.Log.IsClosed" status="fail"><failure message=""/><system-out>got 2</system-out></testcase>
</testsuite>"""


@pytest.fixture
def report(tmp_path):
    return tmp_path / "report.xml"


def test_counts_and_failures_are_read_from_a_report(report):
    report.write_text(REPORT)
    results = read_report(report)
    assert results.passed == 1
    assert [(failure.name, failure.text) for failure in results.failures] == [
        ("Log::IsClosed", "got 2"), ("a.b::broke", "no such fixture")]
    assert results.skipped == ["a.b::left_out"]


def test_counts_and_failures_are_read_from_ctest_s_report(report):
    report.write_text(CTEST_REPORT)
    results = read_report(report)
    assert results.passed == 1
    assert [(failure.name, failure.text) for failure in results.failures] == [
        ("unit-app.Log.IsClosed", "got 2")]


@pytest.mark.parametrize("content", [None, "", REPORT[:200]], ids=["missing", "empty", "cut"])
def test_stage_without_a_whole_report_is_a_failure(report, content):
    if content is not None:
        report.write_text(content)
    results = stages._collect("unit", report, 0, "some output")
    assert (results.passed, results.failed) == (0, 1)
    assert "some output" in results.failures[0].text


@pytest.mark.parametrize("code", [3, -11, None])
def test_stage_that_ends_badly_without_naming_a_failure_is_one_itself(report, code):
    report.write_text('<testsuite><testcase name="a"/></testsuite>')
    results = stages._collect("unit", report, code, "it broke")
    assert (results.passed, results.failed) == (1, 1)


def test_stage_that_ends_badly_for_the_failures_that_it_names_is_counted_once(report):
    report.write_text(REPORT)
    assert stages._collect("unit", report, 1, "").failed == 2


@pytest.mark.parametrize("arguments", [["--torture-me"], ["-x"], ["a", "b"], ["--coverage", "a"]])
def test_command_line_without_sense_is_refused_at_once(arguments):
    run = subprocess.run([str(tree.ROOT / "run-tests"), *arguments], capture_output=True, text=True)
    assert run.returncode == 2
    assert run.stdout == ""
    assert "see ./run-tests --help" in run.stderr
