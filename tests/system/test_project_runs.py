"""Runs with project work on the sample project, as far as the command line decides them."""

from __future__ import annotations

import pytest

from harness import archive
from harness.logs import SUCCESS, started, without_times


@pytest.fixture
def pump(installed):
    """A sandbox with an installation and the sample project in the exchange folder."""
    archive.write(installed.path("exchange", "Pump.kvp"), archive.sample_files())
    return installed


def run(pump, *arguments):
    return pump.run("-IN", pump.windows("exchange", "Pump.kvp"), "-M", "job", "-LOG",
                    pump.windows("run.log"), *arguments)


def project(pump) -> archive.Project:
    return archive.read(pump.path("exchange", "Pump.kvp"))


def test_typical_run_tells_every_step_and_rewrites_the_archive(pump):
    pump.path("exchange", "Note.xml").write_bytes(b"<document/>")
    arguments = ("-META", "Title", "T", "-PROJECTNAME", "Pump2", "-EDIT", "KVDev.SampleEdit",
                 "Touch", "-DM", "Note.xml", "-NR")
    ended = run(pump, *arguments)
    assert ended.stdout == b""
    echo = (f" -IN {pump.windows('exchange', 'Pump.kvp')} -M job -LOG {pump.windows('run.log')} "
            + " ".join(arguments))
    assert without_times(pump.read("run.log")) == started(echo) + (
        b"Processing project 'Pump'\r\n"
        b"Specification 'Manual', v.3 loaded\r\n"
        b"Project loaded by Zeltor Development Installation v.1.4.0.12\r\n"
        b"Value of metadata 'Title' set to 'T'\r\n"
        b"Project name changed to 'Pump2'\r\n"
        b"Edit handler (ProgID: 'KVDev.SampleEdit', Method: 'Touch') succeeded\r\n"
        b"Document 'Note.xml' attached to the project\r\n"
        b"New revision of the project started\r\n"
        b"Project saved to KVP file\r\n"
        b"SUCCESS: Project 'Pump' successfully processed\r\n") + SUCCESS
    assert pump.names("exchange") == ["Note.xml", "Pump.kvp", "job_DONE"]
    after = project(pump)
    assert (after.name, after.revision) == ("Pump2", "B")
    assert after.metadata["Title"] == "T"
    assert after.metadata["EditedBy"] == "KVDev.SampleEdit"
    assert after.documents["Note.xml"] == b"<document/>"


def test_first_of_two_values_for_one_metadata_name_stays(pump):
    run(pump, "-META", "Title", "A", "-META", "Title", "B")
    assert project(pump).metadata["Title"] == "A"


def test_pair_that_only_adds_keeps_its_name_from_a_later_one_that_sets(pump):
    run(pump, "-ADDMETA", "Title", "A", "-META", "Title", "B", "-ADDMETA", "Author", "A", "-META",
        "Author", "B")
    metadata = project(pump).metadata
    assert (metadata["Title"], metadata["Author"]) == ("Feed pump FP-100", "A")


def test_metadata_is_set_in_the_order_of_the_names(pump):
    run(pump, "-META", "Title", "1", "-META", "Author", "2", "-META", "Customer", "3")
    lines = [line for line in pump.read("run.log").split(b"\r\n") if line.startswith(b"Value of")]
    assert lines == [b"Value of metadata 'Author' set to '2'",
                     b"Value of metadata 'Customer' set to '3'",
                     b"Value of metadata 'Title' set to '1'"]


def test_document_update_or_new_revision_alone_is_no_work(pump):
    before = pump.read("exchange", "Pump.kvp")
    ended = run(pump, "-NR")
    assert ended.trace == []
    assert pump.read("exchange", "Pump.kvp") == before


def test_failure_of_the_project_work_is_logged_after_the_steps_that_went_well(pump):
    run(pump, "-META", "NoSuchName", "x")
    assert without_times(pump.read("run.log")).endswith(
        b"Project loaded by Zeltor Development Installation v.1.4.0.12\r\n"
        b"ERROR: Can't create declaration for metadata: NoSuchName")
    assert pump.names("exchange") == ["Pump.kvp", "job_ERROR"]
    assert pump.read("exchange", "job_ERROR") == (
        b"Can't create declaration for metadata: NoSuchName")


@pytest.mark.parametrize("content", [b"", b"no zip", b"PK\x03\x04"], ids=["empty", "text", "cut"])
def test_archive_that_is_no_zip_is_a_failure_and_stays_as_it_is(pump, content):
    pump.path("exchange", "Pump.kvp").write_bytes(content)
    run(pump, "-META", "Title", "A")
    assert pump.read("exchange", "job_ERROR") == b"No project in source zip"
    assert pump.read("exchange", "Pump.kvp") == content


def test_missing_archive_is_a_failure(installed):
    run(installed, "-META", "Title", "A")
    assert installed.names("exchange") == ["job_ERROR"]
    assert installed.read("exchange", "job_ERROR") == b"No project in source zip"
