"""The kernel's messages and questions while it works for the program."""

from __future__ import annotations

from harness.cms import Peer
from harness.job import LOADED, PROCESSING, SAVED, SPECIFICATION
from harness.projects import Project

TITLE = b"Value of metadata 'Title' set to 'x'\r\n"


def answers(job) -> list[str]:
    return [line for line in job.run.trace if line.startswith("program ShowMessage ")]


def test_message_is_logged_as_an_error_report_and_the_run_goes_on(job):
    job("-META", "Title", "x", project=Project(messages=((0, "Disk\n100% full."), (4, "Sure?"))))
    assert job.log == (PROCESSING + SPECIFICATION + b"ERROR: Disk\r\n100% full.ERROR: Sure?" + LOADED
                       + TITLE + SAVED + b"SUCCESS: Project 'Pump' successfully processed\r\n"
                       b"SUCCESS: ZeltorAuthorInvisible finished successfully at <time>\r\n")
    # The status file takes the texts while it still has the name for a run that goes on.
    assert job.sandbox.read("exchange", "job_DONE") == b"Disk\r\n100% full.Sure?"


def test_message_goes_to_the_client_of_a_run_that_reports_to_one(job):
    with Peer() as client:
        job.sandbox.path("exchange", "cms.ini").write_text(client.settings())
        job("-S", "-META", "Title", "x", project=Project(messages=((4, "Sure?"),)))
        assert client.messages == ["TOOL_ACTION_MESSAGE|ZELTOR_MANUAL|MESSAGE|Sure?",
                                   "TOOL_ACTION_MESSAGE|ZELTOR_MANUAL|STATUS|SUCCESS",
                                   "TOOL_ACTION_MESSAGE|ZELTOR_MANUAL|SAVE_AND_CLOSE|Pump.kvp"]
    assert answers(job) == ['program ShowMessage ("Sure?", 4) -> S_OK, 6']
    assert job.sandbox.read("exchange", "job_DONE") == b""


def test_kernel_finds_its_display_as_a_service_of_the_site(job):
    job("-META", "Title", "x")
    assert "program QueryService (IOKStatusDisplay) -> S_OK" in job.run.trace


def test_kernel_gets_the_product_of_the_installed_executable(job):
    job("-META", "Title", "x")
    assert 'program GetProductName () -> S_OK, "Zeltor Development Installation"' in job.run.trace
    assert ('program GetProductVersion () -> S_OK, "1, 4, 0, 0", "1.4.0.12"'
            in job.run.trace)
