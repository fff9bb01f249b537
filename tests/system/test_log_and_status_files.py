"""The log file and the pair of status files."""

from __future__ import annotations

import os

import pytest

from harness.logs import SUCCESS, started, without_times

FOLDER_FAILURE = b"Can't create log-file folder"


def project(sandbox) -> str:
    return sandbox.windows("exchange", "P.zip")


# ---- the log file ----


def test_log_without_backslash_fails(sandbox):
    run = sandbox.run("-IN", project(sandbox), "-LOG", "run.log")
    assert run.stdout == FOLDER_FAILURE + b"\r\n"
    # The failure itself is written to where the relative path leads.
    assert sandbox.read("work", "run.log") == b"ERROR: Can't create log-file folder"


def test_folder_of_the_log_is_created_with_all_its_levels(sandbox):
    log = sandbox.windows("new", "a", "b", "run.log")
    sandbox.run("-IN", project(sandbox), "-LOG", log)
    assert sandbox.names("new", "a", "b") == ["run.log"]
    assert without_times(sandbox.read("new", "a", "b", "run.log")) == (
        started(f" -IN {project(sandbox)} -LOG {log}") + SUCCESS)


def test_log_is_emptied_when_the_run_starts(sandbox):
    log = sandbox.windows("run.log")
    sandbox.path("run.log").write_bytes(b"of an earlier run\r\n" * 100)
    sandbox.run("-IN", project(sandbox), "-LOG", log)
    assert without_times(sandbox.read("run.log")) == (
        started(f" -IN {project(sandbox)} -LOG {log}") + SUCCESS)


def test_relative_log_folder_that_is_missing_is_not_created(sandbox):
    run = sandbox.run("-IN", project(sandbox), "-LOG", "new\\run.log")
    assert run.stdout == FOLDER_FAILURE + b"\r\n"
    assert sandbox.names("work") == []


def test_relative_log_folder_that_is_there_is_used(sandbox):
    sandbox.path("work", "here").mkdir()
    sandbox.run("-IN", project(sandbox), "-LOG", "here\\run.log")
    assert without_times(sandbox.read("work", "here", "run.log")) == (
        started(f" -IN {project(sandbox)} -LOG here\\run.log") + SUCCESS)


def test_log_below_a_file_fails_for_its_folder(sandbox):
    sandbox.path("file").write_bytes(b"")
    run = sandbox.run("-IN", project(sandbox), "-LOG", sandbox.windows("file", "sub", "run.log"))
    assert run.stdout == FOLDER_FAILURE + b"\r\n"


def test_log_below_a_file_that_counts_as_its_folder_fails_for_the_log(sandbox):
    sandbox.path("file").write_bytes(b"")
    run = sandbox.run("-IN", project(sandbox), "-LOG", sandbox.windows("file", "run.log"))
    assert run.stdout == b"Can't create log file.\r\n"


def test_log_that_names_a_folder_cannot_be_created(sandbox):
    sandbox.path("folder").mkdir()
    run = sandbox.run("-IN", project(sandbox), "-LOG", sandbox.windows("folder"), "-M", "job")
    assert run.stdout == b""
    assert sandbox.read("exchange", "job_ERROR") == b"Can't create log file."


@pytest.mark.parametrize("name", ["100%s.log", "Größe.log", "漢字.log", "with blank.log", "x" * 200])
def test_log_of_any_name_is_written(sandbox, name):
    sandbox.run("-IN", project(sandbox), "-LOG", sandbox.windows("logs", name))
    assert sandbox.names("logs") == [name]
    assert without_times(sandbox.read("logs", name)).endswith(b"'\r\n" + SUCCESS)


@pytest.mark.parametrize("name", ["x" * 300, "a?b", "a*b"])
def test_log_of_an_impossible_name_cannot_be_created(sandbox, name):
    run = sandbox.run("-IN", project(sandbox), "-LOG", sandbox.windows("logs") + "\\" + name)
    assert run.stdout == b"Can't create log file.\r\n"
    assert sandbox.names("logs") == []


def test_run_without_log_keeps_none(sandbox):
    run = sandbox.run("-IN", project(sandbox), "-M", "job")
    assert run.stdout == b""
    assert sandbox.names("work") == []
    assert sandbox.names("exchange") == ["job_DONE"]


# ---- status files ----


def test_success_leaves_an_empty_done_file_alone(sandbox):
    sandbox.run("-IN", project(sandbox), "-M", "job42")
    assert sandbox.names("exchange") == ["job42_DONE"]
    assert sandbox.read("exchange", "job42_DONE") == b""


def test_failure_leaves_its_text_in_the_error_file_and_standard_output_empty(sandbox):
    run = sandbox.run("-IN", project(sandbox), "-M", "job", "-LOG", "run.log")
    assert run.stdout == b""
    assert sandbox.names("exchange") == ["job_ERROR"]
    assert sandbox.read("exchange", "job_ERROR") == FOLDER_FAILURE


def test_done_file_of_an_earlier_run_is_deleted_and_its_error_file_emptied(sandbox):
    sandbox.path("exchange", "job_DONE").write_bytes(b"old")
    sandbox.path("exchange", "job_ERROR").write_bytes(b"old failure")
    sandbox.run("-IN", project(sandbox), "-M", "job", "-LOG", "run.log")
    assert sandbox.names("exchange") == ["job_ERROR"]
    assert sandbox.read("exchange", "job_ERROR") == FOLDER_FAILURE


def test_success_after_an_earlier_success_leaves_one_new_done_file(sandbox):
    sandbox.path("exchange", "job_DONE").write_bytes(b"old")
    sandbox.run("-IN", project(sandbox), "-M", "job")
    assert sandbox.names("exchange") == ["job_DONE"]
    assert sandbox.read("exchange", "job_DONE") == b""


def test_status_files_of_other_jobs_are_left_alone(sandbox):
    sandbox.path("exchange", "other_DONE").write_bytes(b"1")
    sandbox.path("exchange", "other_ERROR").write_bytes(b"2")
    sandbox.run("-IN", project(sandbox), "-M", "job")
    assert sandbox.names("exchange") == ["job_DONE", "other_DONE", "other_ERROR"]
    assert sandbox.read("exchange", "other_ERROR") == b"2"


def test_run_without_status_id_touches_no_status_file_and_prints_its_failure(sandbox):
    sandbox.path("exchange", "_DONE").write_bytes(b"kept")
    run = sandbox.run("-IN", project(sandbox), "-LOG", "run.log")
    assert run.stdout == FOLDER_FAILURE + b"\r\n"
    assert sandbox.names("exchange") == ["_DONE"]


def test_failure_of_a_run_that_reports_to_a_client_leaves_an_empty_error_file(sandbox):
    run = sandbox.run("-IN", project(sandbox), "-M", "job", "-S", "-LOG", "run.log")
    assert run.stdout == b""
    assert sandbox.names("exchange") == ["job_ERROR"]
    assert sandbox.read("exchange", "job_ERROR") == b""
    assert sandbox.read("work", "run.log") == b"ERROR: Can't create log-file folder"


def test_failure_before_the_status_id_counts_is_printed(sandbox):
    run = sandbox.run("-M", "job", "-EXCHANGEPATH", sandbox.windows("exchange"))
    assert run.stdout == b"Project name is not specified.\r\n"
    assert sandbox.names("exchange") == []


def test_error_file_that_cannot_be_created_stops_nothing(sandbox):
    sandbox.path("exchange", "job_ERROR").mkdir()
    run = sandbox.run("-IN", project(sandbox), "-M", "job", "-LOG", "run.log")
    assert run.stdout == b""
    assert sandbox.read("work", "run.log") == FOLDER_FAILURE.join([b"ERROR: ", b""])
    assert os.listdir(sandbox.path("exchange", "job_ERROR")) == []


def test_done_file_that_cannot_be_deleted_stops_nothing_and_keeps_the_error_file(sandbox):
    sandbox.path("exchange", "job_DONE").mkdir()
    run = sandbox.run("-IN", project(sandbox), "-M", "job")
    assert run.stdout == b""
    assert sandbox.names("exchange") == ["job_DONE", "job_ERROR"]


@pytest.mark.parametrize("status_id", ["100%s%n", "Größe", "漢字", "with blank", "a.b", "-S"])
def test_status_id_of_any_name_names_the_files(sandbox, status_id):
    sandbox.run("-IN", project(sandbox), "-M", status_id)
    assert sandbox.names("exchange") == [status_id + "_DONE"]


def test_status_id_that_no_file_can_have_stops_nothing(sandbox):
    run = sandbox.run("-IN", project(sandbox), "-M", "x" * 300, "-LOG", sandbox.windows("run.log"))
    assert run.stdout == b""
    assert sandbox.names("exchange") == []
    assert without_times(sandbox.read("run.log")).endswith(SUCCESS)
