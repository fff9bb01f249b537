"""The main job: from the archive through the kernel and back."""

from __future__ import annotations

import pytest

from harness.job import OPENED, PROCESSING, SAVED, SPECIFICATION
from harness.projects import Project


def test_main_job_rewrites_the_archive_and_keeps_what_it_did_not_change(job):
    job.sandbox.path("exchange", "New.xml").write_bytes(b"<document>new</document>")
    job("-META", "Title", "New", "-ADDMETA", "Author", "Me", "-PROJECTNAME", "Two",
        "-EDIT", "KVDev.SampleEdit", "Touch", "-DM", "New.xml", "-NR")
    job.check_succeeded(
        OPENED, b"Value of metadata 'Author' set to 'Me'\r\n",
        b"Value of metadata 'Title' set to 'New'\r\n", b"Project name changed to 'Two'\r\n",
        b"Edit handler (ProgID: 'KVDev.SampleEdit', Method: 'Touch') succeeded\r\n",
        b"Document 'New.xml' attached to the project\r\n",
        b"New revision of the project started\r\n", SAVED)
    stored = job.stored
    assert stored.index == {"id": "P0001", "name": "Two", "storedName": "Pump", "revision": "B",
                            "specification": "Manual", "version": "3", "language": "en"}
    assert stored.metadata == {"Title": "New", "Status": "draft", "Author": "Me",
                               "EditedBy": "KVDev.SampleEdit"}
    assert stored.main == "New.xml"
    assert stored.documents == {"Pump.xml": b"<document/>", "New.xml": b"<document>new</document>"}
    assert stored.representations == {"pump.svg": b"<svg/>"}


def test_archive_written_is_one_that_can_be_processed_again(job):
    job("-META", "Title", "One", "-NR")
    job("-META", "Title", "Two", "-NR")
    job.check_succeeded(OPENED, b"Value of metadata 'Title' set to 'Two'\r\n",
                        b"New revision of the project started\r\n", SAVED)
    assert (job.stored.metadata["Title"], job.stored.index["revision"]) == ("Two", "C")


# ---- metadata ----

def test_added_metadata_leaves_an_item_with_a_value_alone(job):
    job("-ADDMETA", "Title", "Other")
    job.check_succeeded(OPENED)
    assert job.untouched


def test_value_that_the_item_has_already_is_silent_and_saves_nothing(job):
    job("-META", "Title", "Feed pump")
    job.check_succeeded(OPENED)
    assert 'MetadataItem#1 SetValue [9] ("Feed pump") -> S_FALSE' in job.calls()
    assert job.untouched


def test_added_metadata_sets_an_item_that_has_no_value(job):
    job("-ADDMETA", "Author", "Me")
    job.check_succeeded(OPENED, b"Value of metadata 'Author' set to 'Me'\r\n", SAVED)
    assert job.stored.metadata["Author"] == "Me"


def test_metadata_applied_before_a_failure_is_not_saved(job):
    job("-META", "Author", "Me", "-META", "Unknown", "x")
    job.check_failed(b"Can't create declaration for metadata: Unknown", OPENED,
                     b"Value of metadata 'Author' set to 'Me'\r\n")


@pytest.mark.parametrize("name, value", [
    ("100%s %d", "50% of %n"), ("Name 'quoted' \"twice\"", "'\""), ("<Tag> & more", "a < b & c"),
])
def test_hostile_metadata_arrives_as_it_was_given(job, name, value):
    job("-META", name, value, project=Project(declarations=(name,)))
    job.check_succeeded(OPENED, f"Value of metadata '{name}' set to '{value}'\r\n".encode(), SAVED)
    assert job.stored.metadata[name] == value


def test_metadata_in_other_scripts_arrives_whole_and_is_logged_with_question_marks(job):
    job("-META", "Название", "Насос 泵 🙂 end", project=Project(declarations=("Название",)))
    job.check_succeeded(OPENED, b"Value of metadata '????????' set to '????? ? ? end'\r\n", SAVED)
    assert job.stored.metadata["Название"] == "Насос 泵 🙂 end"


def test_value_of_thirty_thousand_characters_arrives_whole(job):
    value = "0123456789" * 3000
    job("-META", "Title", value)
    job.check_succeeded(OPENED, b"Value of metadata 'Title' set to '" + value.encode() + b"'\r\n",
                        SAVED)
    assert job.stored.metadata["Title"] == value


# ---- rename ----


def test_name_that_the_project_has_already_changes_nothing(job):
    job("-PROJECTNAME", "Pump")
    job.check_succeeded(OPENED)
    assert job.untouched


# ---- edit handler ----

EDIT = ("-EDIT", "KVDev.SampleEdit")


def test_edit_handler_gets_the_kernel_admin_and_changes_the_project(job):
    job(*EDIT, "Touch")
    job.check_succeeded(OPENED, b"Edit handler (ProgID: 'KVDev.SampleEdit', Method: 'Touch')"
                                b" succeeded\r\n", SAVED)
    assert job.stored.metadata["EditedBy"] == "KVDev.SampleEdit"


@pytest.mark.parametrize("method", ["Refuse", "Count"])
def test_any_boolean_and_any_other_non_zero_value_is_a_success(job, method):
    job(*EDIT, method)
    job.check_succeeded(OPENED, b"Edit handler (ProgID: 'KVDev.SampleEdit', Method: '%s')"
                                b" succeeded\r\n" % method.encode(), SAVED)


@pytest.mark.parametrize("method, description", [
    ("Nothing", b""), ("Zero", b""), ("RaiseSilently", b""),
    ("Raise", b"The sample handler raised this."),
])
def test_method_that_fails_or_returns_nothing_ends_the_run(job, method, description):
    job(*EDIT, method)
    job.check_failed(b"Error calling EDIT method '%s'. " % method.encode() + description, OPENED)


def test_method_that_the_handler_lacks_ends_the_run(job):
    job(*EDIT, "Missing")
    job.check_failed(b"EDIT method not found: Missing", OPENED)


def test_handler_that_does_not_exist_ends_the_run(job):
    job("-EDIT", "KVDev.NotThere", "Touch")
    job.check_failed(b"Can't create edit handler: KVDev.NotThere", OPENED)


# ---- document ----

def test_document_without_a_folder_is_taken_from_the_exchange_folder(job):
    job.sandbox.path("exchange", "New.xml").write_bytes(b"<new/>")
    job("-DM", "New.xml")
    job.check_succeeded(OPENED, b"Document 'New.xml' attached to the project\r\n", SAVED)
    assert job.stored.documents["New.xml"] == b"<new/>"


def test_document_that_is_missing_ends_the_run_with_its_full_path(job):
    job("-DM", "Missing.xml")
    job.check_failed(b"Error attaching document: "
                     + job.sandbox.windows("exchange", "Missing.xml").encode(), OPENED)


# ---- what the archive holds ----

@pytest.mark.parametrize("content", [b"", b"no zip at all", b"PK\x03\x04",
                                     b"PK\x05\x06" + b"\0" * 18],
                         ids=["empty", "text", "cut", "zip without entries"])
def test_archive_that_holds_no_project_is_a_failure(job, content):
    job.archive.write_bytes(content)
    job.on_what_is_there("-META", "Title", "x")
    job.check_failed(b"No project in source zip", PROCESSING)


def test_archive_that_is_cut_off_is_a_failure(job):
    Project().write(job.archive)
    job.archive.write_bytes(job.archive.read_bytes()[:-40])
    job.on_what_is_there("-META", "Title", "x")
    job.check_failed(b"No project in source zip", PROCESSING)


def test_archive_that_is_missing_is_a_failure(job):
    job.on_what_is_there("-META", "Title", "x")
    job.check_failed(b"No project in source zip", PROCESSING)
    assert not job.archive.exists()


def test_archive_that_is_a_folder_is_a_failure(job):
    job.archive.mkdir()
    job.on_what_is_there("-META", "Title", "x")
    job.check_failed(b"No project in source zip", PROCESSING)


def test_damaged_project_is_a_failure_with_the_kernels_description(job):
    Project().write(job.archive, project=b"<project><open></project>")
    job.on_what_is_there("-META", "Title", "x")
    start = PROCESSING + SPECIFICATION + b"ERROR: ERROR loading project: project.xml is damaged (line "
    assert job.log.startswith(start)
    assert job.untouched


def test_paths_of_three_hundred_characters_are_failures_and_not_crashes(job):
    name = "x" * 300
    run = job.sandbox.run("-IN", job.sandbox.windows("exchange") + f"\\{name}.kvp", "-M", "job",
                          "-META", "Title", "x")
    assert run.stdout == b""
    assert job.sandbox.read("exchange", "job_ERROR") == b"No project in source zip"
