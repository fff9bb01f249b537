"""Command line, outcome and exit code of runs without project work."""

from __future__ import annotations

from datetime import timedelta

import pytest

from harness.logs import SUCCESS, started, times, without_times


def log_of(sandbox, *parts) -> bytes:
    return without_times(sandbox.read(*(parts or ("run.log",))))


def test_run_without_project_work_logs_its_start_and_its_success(sandbox):
    project, log = sandbox.windows("exchange", "P.zip"), sandbox.windows("run.log")
    run = sandbox.run("-IN", project, "-LOG", log)
    assert run.stdout == b""
    assert log_of(sandbox) == started(f" -IN {project} -LOG {log}") + SUCCESS
    assert sandbox.names("exchange") == []


def test_time_stamps_are_the_local_time_of_the_run(sandbox):
    run = sandbox.run("-IN", sandbox.windows("exchange", "P.zip"), "-LOG", sandbox.windows("a.log"))
    stamps = times(sandbox.read("a.log"))
    allowed = {(run.started + timedelta(seconds=second)).strftime("%H:%M:%S")
               for second in range(-1, int((run.ended - run.started).total_seconds()) + 3)}
    assert len(stamps) == 2 and set(stamps) <= allowed


def test_command_line_without_project_fails(sandbox):
    run = sandbox.run("-LOG", sandbox.windows("run.log"))
    assert run.stdout == b"Project name is not specified.\r\n"
    assert log_of(sandbox) == b"ERROR: Project name is not specified."


def test_command_line_without_any_argument_fails(sandbox):
    assert sandbox.run().stdout == b"Project name is not specified.\r\n"


def test_failure_before_the_log_is_prepared_is_appended_to_what_the_log_holds(sandbox):
    sandbox.path("run.log").write_bytes(b"earlier\r\n")
    sandbox.run("-LOG", sandbox.windows("run.log"))
    assert sandbox.read("run.log") == b"earlier\r\nERROR: Project name is not specified."


def test_failure_before_the_log_is_prepared_is_lost_when_the_folder_of_the_log_is_missing(sandbox):
    run = sandbox.run("-LOG", sandbox.windows("missing", "run.log"))
    assert run.stdout == b"Project name is not specified.\r\n"
    assert not sandbox.path("missing").exists()


@pytest.mark.parametrize("arguments", [
    ("-UPDATEDOC",), ("-NR",), ("-UPDATEDOC", "-NR"), ("-EDIT", "", "Method"),
    ("-EDIT", "Some.Handler", ""), ("-DM", ""), ("-PROJECTNAME", ""), ("-META", "Title")])
def test_command_line_without_work_succeeds_without_touching_a_project(sandbox, arguments):
    run = sandbox.run("-IN", sandbox.windows("exchange", "P.zip"), "-M", "job", *arguments)
    assert run.stdout == b""
    assert sandbox.names("exchange") == ["job_DONE"]
    assert run.trace == []


@pytest.mark.parametrize("arguments", [
    ("-META", "Title", "A"), ("-ADDMETA", "Title", "A"), ("-META", "", ""), ("-PUB",), ("-KVB",),
    ("-EDIT", "Some.Handler", "Method"), ("-DM", "d.xml"), ("-PROJECTNAME", "New")])
def test_failure_of_the_project_work_leaves_the_error_file_and_exit_code_0(sandbox, arguments):
    """There is no installation here, so that every work fails."""
    run = sandbox.run("-IN", sandbox.windows("exchange", "P.zip"), "-M", "job", "-LOG",
                      sandbox.windows("run.log"), *arguments)
    assert run.stdout == b""
    assert sandbox.names("exchange") == ["job_ERROR"]
    failure = sandbox.read("exchange", "job_ERROR")
    assert failure
    assert sandbox.read("run.log").endswith(b"ERROR: " + failure)
    assert b"SUCCESS" not in sandbox.read("run.log")


# ---- the echo of the command line ----


def test_echo_shows_the_arguments_as_they_were_quoted(sandbox):
    project, log = sandbox.windows("exchange", "P 1.zip"), sandbox.windows("run.log")
    sandbox.run("-IN", project, "-LOG", log, "-x", "", "a b", 'say "hi"')
    echo = f' -IN "{project}" -LOG {log} -x "" "a b" "say \\"hi\\""'
    assert log_of(sandbox) == started(echo) + SUCCESS
