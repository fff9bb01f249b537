"""./run-tests itself: what its runners count, and what counts when one breaks."""

from __future__ import annotations

import subprocess
import sys

import pytest

import tree

sys.path.insert(0, str(tree.ROOT / "tests"))

from runner import programs, stages  # noqa: E402
from runner.progress import Progress  # noqa: E402
from runner.results import read_report  # noqa: E402

REPORT = """<testsuites><testsuite>
<testcase classname="Log" name="IsEmptied" status="run"/>
<testcase classname="Log" name="IsClosed" status="run"><failure message="expected 1">got 2</failure></testcase>
<testcase classname="a.b" name="broke"><error message="no such fixture"/></testcase>
<testcase classname="a.b" name="left_out"><skipped/></testcase>
</testsuite></testsuites>"""


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


@pytest.mark.parametrize("content", [None, "", REPORT[:200]], ids=["missing", "empty", "cut"])
def test_stage_without_a_whole_report_is_a_failure(report, content):
    if content is not None:
        report.write_text(content)
    results = stages.collect("unit", report, 0, "some output")
    assert (results.passed, results.failed) == (0, 1)
    assert "some output" in results.failures[0].text


@pytest.mark.parametrize("code", [3, -11, None])
def test_stage_that_ends_badly_without_naming_a_failure_is_one_itself(report, code):
    report.write_text('<testsuite><testcase name="a"/></testsuite>')
    results = stages.collect("unit", report, code, "it broke")
    assert (results.passed, results.failed) == (1, 1)


def test_stage_that_ends_badly_for_the_failures_that_it_names_is_counted_once(report):
    report.write_text(REPORT)
    assert stages.collect("unit", report, 1, "").failed == 2


@pytest.mark.parametrize("arguments", [
    ["--torture-me"], ["-x"], ["a", "b"], ["unit", "a", "b"], ["--coverage", "a"]])
def test_invalid_command_line_is_rejected_at_once(arguments):
    run = subprocess.run([str(tree.ROOT / "run-tests"), *arguments], capture_output=True, text=True)
    assert run.returncode == 2
    assert run.stdout == ""
    assert "see ./run-tests --help" in run.stderr


# A test program: Log.Crashes ends it, Log.Fails fails, the others pass.
PROGRAM = """#!/usr/bin/python3
import os, re, sys
options = dict(word[len("--gtest_"):].split("=") for word in sys.argv[1:] if "=" in word)
tests = ["Log.IsEmptied", "Log.Crashes", "Log.Fails", "Text.IsCut"]
without = options["filter"].partition("-")[2].split(":")
cases = ""
for at, test in enumerate(tests):
    if test in without or at % 2 != int(os.environ["GTEST_SHARD_INDEX"]):
        continue
    print("[ RUN      ]", test, flush=True)
    if test == "Log.Crashes":
        os.abort()
    print("[       OK ]", test, flush=True)
    suite, name = test.split(".")
    broken = "<failure>expected 1</failure>" if name == "Fails" else ""
    cases += f'<testcase classname="{suite}" name="{name}">{broken}</testcase>'
with open(options["output"][len("xml:"):], "w") as report:
    report.write(f"<testsuites>{cases}</testsuites>")
sys.exit("Log.Fails" in tests and "<failure>" in cases)
"""


@pytest.fixture
def crashing_program(tmp_path, monkeypatch):
    monkeypatch.setattr(stages, "REPORTS", tmp_path)
    program = tmp_path / "unit-app"
    program.write_text(PROGRAM)
    program.chmod(0o755)
    return program


def test_a_crash_is_the_failure_of_its_test_and_the_others_are_counted(crashing_program):
    results = programs.program_stage("unit", [crashing_program], "")
    assert results.passed == 2
    assert [failure.name for failure in results.failures] == [
        "unit-app.Log.Fails", "unit-app.Log.Crashes"]
    assert "exit code -6" in results.failures[1].text


def test_a_stage_without_a_program_is_a_failure():
    assert programs.program_stage("unit", [], "").failed == 1


@pytest.mark.parametrize("name, tests", [
    ("", "*"),
    ("unit-app", "*"),
    ("Log", "*Log*"),
    ("unit-app.Log.Is", "Log.Is*"),
    ("app.Log", "*app.Log*:Log*"),
    ("unit-cms", None),
    ("test_runner.py::test", None),
    ("a*", None)])
def test_a_name_chooses_the_tests_whose_whole_name_holds_it(name, tests):
    assert programs.filter_for("unit-app", name) == tests


@pytest.mark.parametrize("output, test", [
    ("", None),
    ("[ RUN      ] A.B\n[       OK ] A.B (0 ms)\n", None),
    ("[ RUN      ] A.B\n[  FAILED  ] A.B (0 ms)\n[ RUN      ] A/1.C/0\nsome text", "A/1.C/0")])
def test_the_test_that_ended_its_process_is_the_one_without_an_end(output, test):
    assert programs.unfinished_test(output) == test


def test_progress_says_how_far_the_stage_is(tmp_path, capsys):
    source = tmp_path / "progress"
    with Progress("system", "tests", source) as progress:
        assert "system: starting" in capsys.readouterr().out
        source.write_text("3 14")
        assert progress.line().startswith("system: 3 of 14 tests, ")
    with Progress("unit", "programs") as progress:
        progress.expect(2)
        progress.advance()
        assert progress.line().startswith("unit: 1 of 2 programs, ")


def test_stages_of_the_command_are_those_of_the_runner():
    from runner.__main__ import STAGES
    script = (tree.ROOT / "run-tests").read_text()
    assert f'all_stages="{" ".join(STAGES)}"' in script
    for stage in STAGES:
        assert f"\n  {stage:9}" in script
