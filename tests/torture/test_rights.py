"""Files and folders that the program may not write, under Wine, where a file's rights are those of
its Unix file."""

from __future__ import annotations

import os
import subprocess
import sys
from contextlib import contextmanager
from pathlib import Path

import pytest

from harness.job import LOADED, PROCESSING, SAVED, SPECIFICATION
from harness.machine import WineMachine
from torture.bench import Bench
from torture.scenarios import BY_NAME
from torture.test_files import DONE, METADATA, RENAMED, log_of, start, status

pytestmark = pytest.mark.skipif(sys.platform == "win32", reason="Windows has access lists instead")

OPENED = PROCESSING + SPECIFICATION + LOADED


@pytest.fixture(scope="module")
def bound():
    """A bench whose programs are held to the rights of files, whoever runs the tests."""
    worker = os.environ.get("PYTEST_XDIST_WORKER", "master")
    try:
        machine = WineMachine(f"torture-rights-{worker}", privileged=False)
    except subprocess.CalledProcessError:
        pytest.skip("root may not give up its privilege here, and so everything can be written")
    with Bench(worker, machine) as bench:
        yield bench


@contextmanager
def read_only(path: Path):
    rights = path.stat().st_mode
    path.chmod(rights & ~0o222)
    try:
        yield
    finally:
        if path.exists():
            path.chmod(rights)


def written(path: Path) -> Path:
    path.write_bytes(b"old")
    return path


def test_log_that_may_not_be_written_cannot_be_created(bound):
    before = start(bound, METADATA)
    with read_only(written(bound.box.path("run.log"))):
        result = bound.run_as_it_is(METADATA, "", 0, before)
    assert result.log == b"old"
    assert result.exchange == {"Pump.kvp": before, "job_ERROR": b"Can't create log file."}


def test_log_folder_that_may_not_be_made_is_reported(bound):
    before = start(bound, METADATA)
    log = ["-LOG", bound.box.windows("work", "new", "run.log")]
    with read_only(bound.box.path("work")):
        result = bound.run_as_it_is(METADATA, "", 0, before, log)
    assert bound.box.names("work") == []
    assert result.exchange == {"Pump.kvp": before, "job_ERROR": b"Can't create log-file folder"}


def test_error_file_that_may_not_be_written_becomes_the_done_file_as_it_is(bound):
    before = start(bound, METADATA)
    with read_only(written(bound.box.path("exchange", "job_ERROR"))):
        result = bound.run_as_it_is(METADATA, "", 0, before)
    assert log_of(result) == OPENED + RENAMED + SAVED + DONE
    assert status(result) == ["job_DONE"]
    assert result.exchange["job_DONE"] == b"old"


def test_failure_that_its_file_may_not_take_stands_in_the_log_alone(bound):
    before = start(bound, METADATA)
    with read_only(written(bound.box.path("exchange", "job_ERROR"))):
        result = bound.run_as_it_is(METADATA, "KernelAdmin.OpenProject 1 null\n", 0, before)
    assert log_of(result) == PROCESSING + b"ERROR: Can't open project"
    assert result.exchange == {"Pump.kvp": before, "job_ERROR": b"old"}


def test_exchange_folder_that_may_not_be_made_is_reported(bound):
    before = start(bound, METADATA)
    project = ["-IN", bound.box.windows("work", "new", "Pump.kvp")]
    with read_only(bound.box.path("work")):
        result = bound.run_as_it_is(METADATA, "", None, before, project)
    assert result.run.exit_code == 0
    assert result.run.stdout == b"Can't create exchange folder\r\n"
    assert result.log == b"ERROR: Can't create exchange folder"
    assert result.exchange == {"Pump.kvp": before}


def test_exchange_folder_that_may_not_be_written_cannot_take_the_archive(bound):
    before = start(bound, METADATA)
    with read_only(bound.box.path("exchange")):
        result = bound.run_as_it_is(METADATA, "", 0, before)
    assert log_of(result) == OPENED + RENAMED + b"ERROR: the archive cannot be created"
    assert result.exchange == {"Pump.kvp": before}


def test_archive_that_may_not_be_read_lists_no_project(bound):
    before = start(bound, METADATA)
    archive = bound.box.path("exchange", "Pump.kvp")
    archive.chmod(0)
    result = bound.run_as_it_is(METADATA, "", 0, before)
    assert log_of(result) == PROCESSING + b"ERROR: No project in source zip"
    assert result.exchange == {"Pump.kvp": before, "job_ERROR": b"No project in source zip"}


def test_temporary_folder_that_may_not_be_written_fails_the_publication(bound):
    # Wine names a file that it could not make there; Windows names none, and the package's folder
    # is another one then.
    scenario = BY_NAME["package-ipc"]
    before = start(bound, scenario)
    with read_only(bound.box.path("temp")):
        result = bound.run_as_it_is(scenario, "", 0, before)
    opened = PROCESSING + b"Specification 'Catalog', v.2 loaded\r\n" + LOADED
    assert log_of(result).startswith(
        opened + b"ERROR: ERROR publishing project: The publication cannot be written: ")
    assert sorted(result.exchange) == ["Pump.kvp", "job_ERROR"]
    assert result.exchange["Pump.kvp"] == before
    assert result.temporary == []
