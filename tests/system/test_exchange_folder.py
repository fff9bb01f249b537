"""Where the exchange folder comes from, and that it is there."""

from __future__ import annotations

import pytest

from harness.registry import text

KEY = r"Software\Morvenit\CMSTC"
NO_FOLDER = b"Can't create exchange folder\r\n"


def test_folder_of_the_project_beats_the_exchange_path_given_before_and_behind(sandbox):
    project = sandbox.windows("exchange", "Proj.zip")
    other = sandbox.windows("other")
    sandbox.run("-EXCHANGEPATH", other, "-IN", project, "-M", "a")
    sandbox.run("-IN", project, "-EXCHANGEPATH", other, "-M", "b")
    assert sandbox.names("exchange") == ["a_DONE", "b_DONE"]
    assert not sandbox.path("other").exists()


def test_exchange_path_serves_a_project_without_folder(sandbox):
    sandbox.run("-IN", "Proj.zip", "-EXCHANGEPATH", sandbox.windows("exchange"), "-M", "job")
    assert sandbox.names("exchange") == ["job_DONE"]


def test_one_trailing_backslash_is_cut(sandbox):
    sandbox.run("-IN", "P", "-EXCHANGEPATH", sandbox.windows("new") + "\\", "-M", "job")
    assert sandbox.names("new") == ["job_DONE"]


def test_missing_folder_is_created_with_all_its_levels(sandbox):
    sandbox.run("-IN", sandbox.windows("new", "a", "b", "P.zip"), "-M", "job")
    assert sandbox.names("new", "a", "b") == ["job_DONE"]


def test_relative_folder_that_is_missing_is_not_created(sandbox):
    run = sandbox.run("-IN", "new\\P.zip", "-LOG", sandbox.windows("run.log"))
    assert run.stdout == NO_FOLDER
    assert sandbox.read("run.log") == b"ERROR: Can't create exchange folder"
    assert sandbox.names("work") == []


def test_relative_folder_that_is_there_is_used(sandbox):
    sandbox.path("work", "here").mkdir()
    run = sandbox.run("-IN", "here\\P.zip", "-M", "job")
    assert run.stdout == b""
    assert sandbox.names("work", "here") == ["job_DONE"]


def test_file_named_like_the_folder_counts_as_the_folder(sandbox):
    sandbox.path("file").write_bytes(b"content")
    run = sandbox.run("-IN", sandbox.windows("file", "P.zip"), "-M", "job")
    assert run.stdout == b""
    assert sandbox.read("file") == b"content"


def test_folder_below_a_file_cannot_be_created(sandbox):
    sandbox.path("file").write_bytes(b"")
    assert sandbox.run("-IN", sandbox.windows("file", "sub", "P.zip")).stdout == NO_FOLDER


def test_root_of_a_drive_as_the_folder_fails_when_the_drive_is_missing(sandbox):
    assert sandbox.run("-IN", "Q:\\P.zip").stdout == NO_FOLDER


def test_project_directly_behind_a_leading_backslash_has_no_folder_and_takes_the_registry_s(sandbox):
    sandbox.set_registry(text(KEY, "ExchangePath", sandbox.windows("exchange")))
    sandbox.run("-IN", "\\P.zip", "-M", "job")
    assert sandbox.names("exchange") == ["job_DONE"]


# ---- the registry ----


def test_registry_gives_the_folder_of_a_project_without_one(sandbox):
    sandbox.set_registry(text(KEY, "ExchangePath", sandbox.windows("exchange") + "\\"))
    sandbox.run("-IN", "P.zip", "-M", "job")
    assert sandbox.names("exchange") == ["job_DONE"]


def test_exchange_path_beats_the_registry(sandbox):
    sandbox.set_registry(text(KEY, "ExchangePath", sandbox.windows("other")))
    sandbox.run("-IN", "P.zip", "-EXCHANGEPATH", sandbox.windows("exchange"), "-M", "job")
    assert sandbox.names("exchange") == ["job_DONE"]
    assert not sandbox.path("other").exists()


def test_no_folder_at_all_fails(sandbox):
    run = sandbox.run("-IN", "P.zip", "-M", "job", "-LOG", sandbox.windows("run.log"))
    assert run.stdout == NO_FOLDER
    assert sandbox.read("run.log") == b"ERROR: Can't create exchange folder"
    assert sandbox.names("work") == []


def test_registry_value_of_the_user_is_not_read(sandbox):
    sandbox.set_registry(text(KEY, "ExchangePath", sandbox.windows("exchange"), root="HKCU"))
    assert sandbox.run("-IN", "P.zip").stdout == NO_FOLDER


# ---- hostile paths ----


def test_folder_of_300_characters_in_one_name_cannot_be_created(sandbox):
    run = sandbox.run("-IN", sandbox.windows("x" * 300, "P.zip"), "-M", "job")
    assert run.stdout == NO_FOLDER


def test_path_of_300_characters_fails_or_works_as_a_whole(sandbox):
    folder = "\\".join(["y" * 50] * 6)
    run = sandbox.run("-IN", f"{sandbox.windows('deep')}\\{folder}\\P.zip", "-M", "job")
    done = list(sandbox.path("deep").rglob("job_DONE"))
    assert (run.stdout, len(done)) in [(NO_FOLDER, 0), (b"", 1)]


@pytest.mark.parametrize("name", ["100%s%n", "Größe", "漢字 Łódź", "it's", "a&b;c", "😀"])
def test_folder_of_any_name_is_created_and_used(sandbox, name):
    run = sandbox.run("-IN", sandbox.windows(name, "P.zip"), "-M", "job")
    assert run.stdout == b""
    assert sandbox.names(name) == ["job_DONE"]


@pytest.mark.parametrize("name", ["a?b", "a*b", "a<b", "a|b"])
def test_folder_of_a_forbidden_name_cannot_be_created(sandbox, name):
    assert sandbox.run("-IN", sandbox.windows(name, "P.zip")).stdout == NO_FOLDER
