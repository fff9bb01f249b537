"""The sweep's own accounts: every case is counted, whatever becomes of it."""

from __future__ import annotations

import os
from contextlib import nullcontext

import pytest

from torture import sweep


@pytest.fixture
def swept(monkeypatch, capsys):
    """Sweeps tasks that are performed by a function; gives exit code and output."""
    def run(tasks, perform, wanted=("",)):
        monkeypatch.setattr(sweep, "Bench", nullcontext)
        monkeypatch.setattr(sweep, "first_tasks", lambda: tasks)
        monkeypatch.setattr(sweep, "perform", perform)
        return sweep.Sweep(wanted).run(), capsys.readouterr().out

    return run


def test_cases_that_follow_are_counted_with_those_that_were_known(swept):
    follow = {"count/a": ["calls/a:1:null", "kill/a:1"]}
    code, output = swept(["count/a", "moment/1"], lambda bench, task: ([], follow.get(task, [])))
    assert code == 0
    assert output.endswith("\n4 passed, 0 failed\n")


def test_case_that_goes_wrong_is_shown_and_counted(swept):
    code, output = swept(["moment/1", "moment/2"], lambda bench, task:
                         (["it went wrong"] if task == "moment/2" else [], []))
    assert code == 1
    assert "---- FAILED: moment/2\nit went wrong\n" in output
    assert output.endswith("\n1 passed, 1 failed\n")


def test_case_that_breaks_is_a_failure(swept):
    def perform(bench, task):
        raise ValueError("no such scenario")

    code, output = swept(["moment/1"], perform)
    assert code == 1
    assert "ValueError: no such scenario" in output
    assert output.endswith("\n0 passed, 1 failed\n")


def test_cases_of_a_worker_that_dies_are_failures(swept):
    code, output = swept(["moment/1", "moment/2", "moment/3"], lambda bench, task: os._exit(3))
    assert code == 1
    assert output.endswith("\n0 passed, 3 failed\n")


def test_only_wanted_cases_are_run(swept):
    code, output = swept(["count/a", "moment/1", "axes/1", "archive/1"],
                         lambda bench, task: ([], []), ("moment/", "axes/"))
    assert code == 0
    assert output.endswith("\n3 passed, 0 failed\n")
