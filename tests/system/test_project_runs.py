"""Runs with project work, as far as the command line decides them."""

from __future__ import annotations

from harness.job import OPENED, SAVED, SUCCEEDED
from harness.logs import started, without_times


def test_typical_run_logs_every_step_behind_the_echo_of_its_command_line(job):
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


def test_new_revision_alone_is_no_work(job):
    job("-NR")
    assert job.run.trace == []
    assert job.untouched
