"""Runs with project work, as far as the command line decides them."""

from __future__ import annotations

from harness.job import OPENED, SAVED, SUCCEEDED
from harness.logs import started, without_times


def test_typical_run_tells_every_step_behind_the_echo_of_its_command_line(job):
    job.sandbox.path("exchange", "Note.xml").write_bytes(b"<document/>")
    actions = ("-META", "Title", "T", "-PROJECTNAME", "Pump2", "-EDIT", "KVDev.SampleEdit", "Touch",
               "-DM", "Note.xml", "-NR")
    job(*actions)
    echo = (f" -IN {job.sandbox.windows('exchange', 'Pump.kvp')} -M job -LOG "
            f"{job.sandbox.windows('run.log')} " + " ".join(actions))
    assert without_times(job.sandbox.read("run.log")) == started(echo) + OPENED + (
        b"Value of metadata 'Title' set to 'T'\r\n"
        b"Project name changed to 'Pump2'\r\n"
        b"Edit handler (ProgID: 'KVDev.SampleEdit', Method: 'Touch') succeeded\r\n"
        b"Document 'Note.xml' attached to the project\r\n"
        b"New revision of the project started\r\n") + SAVED + SUCCEEDED
    assert job.sandbox.names("exchange") == ["Note.xml", "Pump.kvp", "job_DONE"]


def test_first_of_two_values_for_one_metadata_name_stays(job):
    job("-META", "Title", "A", "-META", "Title", "B")
    assert job.stored.metadata["Title"] == "A"


def test_pair_that_only_adds_keeps_its_name_from_a_later_one_that_sets(job):
    job("-ADDMETA", "Title", "A", "-META", "Title", "B", "-ADDMETA", "Author", "A", "-META",
        "Author", "B")
    metadata = job.stored.metadata
    assert (metadata["Title"], metadata["Author"]) == ("Feed pump", "A")


def test_metadata_is_set_in_the_order_of_the_names(job):
    job("-META", "Title", "1", "-META", "Author", "2", "-META", "Status", "3")
    job.check_succeeded(OPENED, b"Value of metadata 'Author' set to '2'\r\n",
                        b"Value of metadata 'Status' set to '3'\r\n",
                        b"Value of metadata 'Title' set to '1'\r\n", SAVED)


def test_new_revision_alone_is_no_work(job):
    job("-NR")
    assert job.run.trace == []
    assert job.untouched
