"""Runs that end in the middle: by an exception of an unknown type, or with a
component that ends their process."""

from __future__ import annotations

import pytest

from harness.cms import Peer
from harness.job import PROCESSING, SPECIFICATION

ACTIONS = ("-META", "Title", "x")
UNKNOWN = "Archive.Projects 1 throw"


def check_ended_in_the_middle(job, *steps: bytes) -> None:
    assert job.log == b"".join(steps)
    assert job.sandbox.names("exchange") == ["Pump.kvp", "job_ERROR"]
    assert job.sandbox.read("exchange", "job_ERROR") == b""
    assert job.run.stdout == b""
    assert job.untouched


def test_exception_of_an_unknown_type_ends_the_process_at_once_without_a_report(job):
    job(*ACTIONS, faults=UNKNOWN, exit_code=3)
    check_ended_in_the_middle(job, PROCESSING)
    assert job.run.trace[-1] == "fault Archive#1 Projects"


def test_exception_of_an_unknown_type_is_not_reported_to_the_client(job):
    with Peer() as client:
        settings = job.sandbox.path("exchange", "cms.ini")
        settings.write_text(client.settings())
        job("-S", *ACTIONS, faults=UNKNOWN, exit_code=3)
        settings.unlink()
        assert client.frames == []
    check_ended_in_the_middle(job, PROCESSING)


@pytest.mark.parametrize("operation, steps", [
    ("KernelAdmin.PutClientName", PROCESSING),
    ("KernelProject.Load", PROCESSING + SPECIFICATION)])
def test_component_that_ends_the_process_leaves_the_error_file_and_no_success(
        job, operation, steps):
    job(*ACTIONS, faults=f"{operation} 1 exit 9", exit_code=9)
    check_ended_in_the_middle(job, steps)
