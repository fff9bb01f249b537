"""Command line, outcome and exit code of runs without project work."""

from __future__ import annotations

import shutil
from datetime import timedelta

import pytest

from harness.client import ContentManager
from harness.logs import SUCCESS, started, times, without_times
from harness.sandbox import PROGRAM


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


def test_empty_project_fails_before_anything_is_created(sandbox):
    run = sandbox.run("-IN", "", "-EXCHANGEPATH", sandbox.windows("new"), "-M", "job")
    assert run.stdout == b"Project name is not specified.\r\n"
    assert not sandbox.path("new").exists()


def test_failure_before_the_log_is_prepared_is_appended_to_what_the_log_holds(sandbox):
    sandbox.path("run.log").write_bytes(b"earlier\r\n")
    sandbox.run("-LOG", sandbox.windows("run.log"))
    assert sandbox.read("run.log") == b"earlier\r\nERROR: Project name is not specified."


def test_failure_before_the_log_is_prepared_is_lost_when_the_folder_of_the_log_is_missing(sandbox):
    run = sandbox.run("-LOG", sandbox.windows("missing", "run.log"))
    assert run.stdout == b"Project name is not specified.\r\n"
    assert not sandbox.path("missing").exists()


@pytest.mark.parametrize("keyword", ["-IN", "-in", "/IN", "/iN", "  -IN", "\t/in"])
def test_keyword_is_known_in_every_case_with_either_mark_and_blanks_before_it(sandbox, keyword):
    run = sandbox.run(keyword, sandbox.windows("exchange", "Proj.zip"), "-M", "job")
    assert run.stdout == b""
    assert sandbox.names("exchange") == ["job_DONE"]


@pytest.mark.parametrize("argument", ["IN", "-IN ", "-INN", "--IN", "- IN", "-", "/", "", "\\IN"])
def test_argument_that_is_no_keyword_is_skipped(sandbox, argument):
    run = sandbox.run(argument, sandbox.windows("exchange", "Proj.zip"))
    assert run.stdout == b"Project name is not specified.\r\n"


def test_value_is_taken_as_it_stands_even_when_it_looks_like_a_keyword(sandbox):
    run = sandbox.run("-IN", "-LOG", sandbox.windows("run.log"), "-EXCHANGEPATH",
                      sandbox.windows("exchange"), "-M", "job")
    assert run.stdout == b""
    assert not sandbox.path("run.log").exists()
    assert sandbox.names("exchange") == ["job_DONE"]


def test_last_of_a_repeated_keyword_wins(sandbox):
    sandbox.run("-IN", "", "-M", "first", "-IN", sandbox.windows("exchange", "P.zip"), "-M", "second")
    assert sandbox.names("exchange") == ["second_DONE"]


def test_keyword_without_its_value_at_the_end_is_skipped(sandbox):
    run = sandbox.run("-M", "job", "-EXCHANGEPATH", sandbox.windows("exchange"), "-IN")
    assert run.stdout == b"Project name is not specified.\r\n"


def test_edit_with_one_argument_behind_it_takes_none_and_makes_no_work(sandbox):
    project, log = sandbox.windows("exchange", "P.zip"), sandbox.windows("run.log")
    run = sandbox.run("-IN", project, "-LOG", log, "-EDIT", "Some.Handler")
    assert run.stdout == b""
    assert log_of(sandbox) == started(f" -IN {project} -LOG {log} -EDIT Some.Handler") + SUCCESS


def test_argument_behind_an_edit_without_its_values_is_a_keyword_in_its_own_right(sandbox):
    sandbox.run("-IN", sandbox.windows("exchange", "P.zip"), "-M", "job", "-EDIT", "-S")
    assert sandbox.names("exchange") == ["job_DONE"]


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


def test_echo_begins_behind_a_program_path_with_blanks(sandbox):
    program = sandbox.path("with blanks", "ZTInvisible.exe")
    program.parent.mkdir()
    shutil.copy(PROGRAM, program)
    project, log = sandbox.windows("exchange", "P.zip"), sandbox.windows("run.log")
    sandbox.run("-IN", project, "-LOG", log, program=str(program))
    assert log_of(sandbox) == started(f" -IN {project} -LOG {log}") + SUCCESS


def test_echo_begins_at_the_first_blank_behind_an_unquoted_program_path(sandbox):
    shutil.copy(PROGRAM, sandbox.path("ZTInvisible.exe"))
    project, log = sandbox.windows("exchange", "P.zip"), sandbox.windows("run.log")
    sandbox.run("/c", f"{sandbox.windows('ZTInvisible.exe')}  -IN {project} -LOG {log}",
                program="cmd")
    assert log_of(sandbox) == started(f"  -IN {project} -LOG {log}") + SUCCESS


@pytest.mark.parametrize("value", ["%s%s%s%n", "100%", "%%", "%1!s!"])
def test_percent_signs_are_no_directives(sandbox, value):
    project, log = sandbox.windows("exchange", "P.zip"), sandbox.windows("run.log")
    sandbox.run("-IN", project, "-LOG", log, "-x", value)
    assert log_of(sandbox) == started(f" -IN {project} -LOG {log} -x {value}") + SUCCESS


@pytest.mark.parametrize("value, shown", [
    ("Größe", "Gr\u00f6\u00dfe"), ("Łódź", "?\u00f3d?"), ("漢字", "??"), ("😀", "?"), ("€", "?")])
def test_character_without_a_form_in_the_log_becomes_a_question_mark(sandbox, value, shown):
    project, log = sandbox.windows("exchange", "P.zip"), sandbox.windows("run.log")
    sandbox.run("-IN", project, "-LOG", log, "-x", value)
    assert log_of(sandbox) == started(f" -IN {project} -LOG {log} -x {shown}") + SUCCESS


def test_command_line_of_30000_characters_is_echoed_whole(sandbox):
    project, log = sandbox.windows("exchange", "P.zip"), sandbox.windows("run.log")
    long = "x" * 30_000
    sandbox.run("-IN", project, "-LOG", log, long)
    assert log_of(sandbox) == started(f" -IN {project} -LOG {log} {long}") + SUCCESS


def test_command_line_of_10000_arguments_is_read_to_its_end(sandbox):
    run = sandbox.run(*["-x"] * 9_000, "-IN", sandbox.windows("exchange", "P.zip"), "-M", "job")
    assert run.stdout == b""
    assert sandbox.names("exchange") == ["job_DONE"]


# ---- the content-management client ----


@pytest.fixture
def client(sandbox):
    with ContentManager() as client:
        sandbox.path("exchange", "cms.ini").write_text(client.settings())
        yield client


def test_success_is_reported_to_the_client_with_the_name_of_the_archive(sandbox, client):
    run = sandbox.run("-IN", sandbox.windows("exchange", "P.zip"), "-S")
    assert run.stdout == b""
    assert client.messages == ["TOOL_ACTION_MESSAGE|ZELTOR_MANUAL|STATUS|SUCCESS",
                               "TOOL_ACTION_MESSAGE|ZELTOR_MANUAL|SAVE_AND_CLOSE|P.kvp"]


def test_success_of_a_document_update_without_work_is_reported_too(sandbox, client):
    project, log = sandbox.windows("exchange", "P.zip"), sandbox.windows("run.log")
    sandbox.run("-IN", project, "-UPDATEDOC", "-S", "-LOG", log)
    assert log_of(sandbox) == started(f" -IN {project} -UPDATEDOC -S -LOG {log}") + SUCCESS
    assert client.messages[-1] == "TOOL_ACTION_MESSAGE|ZELTOR_MANUAL|SAVE_AND_CLOSE|P.kvp"


def test_failure_is_reported_to_the_client_with_its_text_and_the_name_of_the_project(sandbox, client):
    run = sandbox.run("-IN", sandbox.windows("exchange", "P.zip"), "-S", "-M", "job", "-LOG", "run.log")
    assert run.stdout == b""
    assert client.messages == [
        "TOOL_ACTION_MESSAGE|ZELTOR_MANUAL|MESSAGE|Can't create log-file folder",
        "TOOL_ACTION_MESSAGE|ZELTOR_MANUAL|STATUS|FAILED",
        "TOOL_ACTION_MESSAGE|ZELTOR_MANUAL|CLOSE|P"]
    assert sandbox.read("exchange", "job_ERROR") == b""


def test_failure_without_a_project_closes_an_empty_name(sandbox, client):
    run = sandbox.run("-S", "-EXCHANGEPATH", sandbox.windows("exchange"))
    assert run.stdout == b""
    assert client.messages == [
        "TOOL_ACTION_MESSAGE|ZELTOR_MANUAL|MESSAGE|Project name is not specified.",
        "TOOL_ACTION_MESSAGE|ZELTOR_MANUAL|STATUS|FAILED",
        "TOOL_ACTION_MESSAGE|ZELTOR_MANUAL|CLOSE|"]


@pytest.mark.parametrize("project, name", [
    ("Proj", "Proj"), ("Proj.rev2.zip", "Proj.rev2"), ("Proj.", "Proj"), (".zip", ""),
    ("100%s.zip", "100%s"), ("Größe 漢字.zip", "Größe 漢字")])
def test_name_of_the_project_ends_before_its_last_dot(sandbox, client, project, name):
    sandbox.run("-IN", sandbox.windows("exchange") + "\\" + project, "-S")
    assert client.messages[-1] == f"TOOL_ACTION_MESSAGE|ZELTOR_MANUAL|SAVE_AND_CLOSE|{name}.kvp"


def test_dot_in_the_folder_plays_no_role_in_the_name_of_the_project(sandbox):
    folder = sandbox.path("a.b")
    folder.mkdir()
    with ContentManager() as client:
        (folder / "cms.ini").write_text(client.settings())
        sandbox.run("-IN", sandbox.windows("a.b", "Proj"), "-S")
        assert client.messages[-1] == "TOOL_ACTION_MESSAGE|ZELTOR_MANUAL|SAVE_AND_CLOSE|Proj.kvp"


def test_project_without_folder_keeps_its_whole_name(sandbox, client):
    sandbox.run("-IN", "Proj.zip", "-EXCHANGEPATH", sandbox.windows("exchange") + "\\", "-S")
    assert client.messages[-1] == "TOOL_ACTION_MESSAGE|ZELTOR_MANUAL|SAVE_AND_CLOSE|Proj.kvp"
