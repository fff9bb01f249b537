"""Files and folders that are locked, full, or vanish in the middle of a run. (What is missing, or
something else, when a run starts is the system tests' topic.)"""

from __future__ import annotations

import random
import resource
import shutil
import subprocess
import threading
import time
from contextlib import contextmanager
from pathlib import Path

import pytest

from harness.job import LOADED, PROCESSING, SAVED, SPECIFICATION
from harness.logs import without_times
from harness.machine import BUILD
from torture.bench import SECONDS, Bench, Result
from torture.checks import is_sound
from torture.scenarios import BY_NAME, Scenario

METADATA = BY_NAME["rename"]
RENAMED = b"Project name changed to 'Two'\r\n"
OPENED = PROCESSING + SPECIFICATION + LOADED
PROBE = BUILD / "tests" / "system" / "zt-test-probe.exe"
DONE = (b"SUCCESS: Project 'Pump' successfully processed\r\n"
        b"SUCCESS: ZeltorAuthorInvisible finished successfully at <time>\r\n")
# How long a component waits while the test changes the files.
PAUSE = 1200  # milliseconds


def start(bench: Bench, scenario: Scenario) -> bytes:
    bench.reset()
    return bench.lay_out(scenario)


def log_of(result: Result) -> bytes:
    """Behind its first line."""
    log = without_times(result.log)
    return log[log.index(b"\r\n") + 2:]


@contextmanager
def held(bench: Bench, path: Path):
    """The file is open in another process, which shares it with nobody."""
    mark = bench.box.path("capture", "held")
    mark.unlink(missing_ok=True)
    machine = bench.machine
    command = machine.command(str(PROBE), ["hold", machine.windows_path(path),
                                           machine.windows_path(mark)])
    holder = subprocess.Popen(command, env=machine.environment({}), stdin=subprocess.DEVNULL)
    try:
        _wait_until(mark.exists)
        yield
    finally:
        mark.unlink(missing_ok=True)
        assert holder.wait(10) == 0


def _wait_until(condition) -> None:
    end = time.monotonic() + SECONDS
    while not condition():
        assert time.monotonic() < end
        time.sleep(0.01)


@contextmanager
def meanwhile(bench: Bench, operation: str, action):
    """While the run in this block waits in the operation, the action takes place. Gives the plan.
    """
    def act() -> None:
        _wait_until(lambda: f"fault {operation}" in _trace(bench))
        action()

    thread = threading.Thread(target=act)
    thread.start()
    name = operation.replace("#1 ", ".")
    yield f"{name} 1 sleep {PAUSE}\n"
    thread.join()


def _trace(bench: Bench) -> str:
    file = bench.box.path("trace-1.txt")
    return file.read_text() if file.exists() else ""


def status(result: Result) -> list[str]:
    return sorted(name for name in result.exchange if name.startswith("job_"))


# ---- locked ----

def test_log_that_another_process_holds_cannot_be_created(bench):
    before = start(bench, METADATA)
    log = bench.box.path("run.log")
    log.write_bytes(b"old\r\n")
    with held(bench, log):
        result = bench.run_as_it_is(METADATA, "", 0, before)
    assert result.log == b"old\r\n"
    assert result.exchange == {"Pump.kvp": before, "job_ERROR": b"Can't create log file."}


def test_error_file_that_another_process_holds_stops_nothing_and_stays(bench):
    before = start(bench, METADATA)
    error = bench.box.path("exchange", "job_ERROR")
    error.write_bytes(b"old")
    with held(bench, error):
        result = bench.run_as_it_is(METADATA, "", 0, before)
    assert log_of(result) == OPENED + RENAMED + SAVED + DONE
    assert status(result) == ["job_ERROR"]
    assert result.exchange["job_ERROR"] == b"old"


def test_done_file_that_another_process_holds_stays_beside_the_error_file(bench):
    before = start(bench, METADATA)
    done = bench.box.path("exchange", "job_DONE")
    done.write_bytes(b"old")
    with held(bench, done):
        result = bench.run_as_it_is(METADATA, "", 0, before)
    assert log_of(result) == OPENED + RENAMED + SAVED + DONE
    assert status(result) == ["job_DONE", "job_ERROR"]
    assert result.exchange["job_DONE"] == b"old"


def test_archive_that_another_process_holds_lists_no_project(bench):
    before = start(bench, METADATA)
    with held(bench, bench.box.path("exchange", "Pump.kvp")):
        result = bench.run_as_it_is(METADATA, "", 0, before)
    assert log_of(result) == PROCESSING + b"ERROR: No project in source zip"
    assert result.exchange == {"Pump.kvp": before, "job_ERROR": b"No project in source zip"}


def test_archive_that_is_taken_in_the_middle_is_not_replaced(bench):
    before = start(bench, METADATA)
    archive = bench.box.path("exchange", "Pump.kvp")
    holder = held(bench, archive)
    with meanwhile(bench, "KernelProject#1 Rename", holder.__enter__) as plan:
        result = bench.run_as_it_is(METADATA, plan, 0, before)
    holder.__exit__(None, None, None)
    assert log_of(result).startswith(OPENED + RENAMED + b"ERROR: The archive cannot be replaced: ")
    assert sorted(result.exchange) == ["Pump.kvp", "job_ERROR"]
    assert result.exchange["Pump.kvp"] == before


# ---- vanishing in the middle ----

def test_log_that_vanishes_is_made_anew_with_what_comes_later(bench):
    before = start(bench, METADATA)
    with meanwhile(bench, "KernelProject#1 Load", bench.box.path("run.log").unlink) as plan:
        result = bench.run_as_it_is(METADATA, plan, 0, before)
    assert without_times(result.log) == LOADED + RENAMED + SAVED + DONE
    assert status(result) == ["job_DONE"]


def test_lines_of_a_log_whose_folder_vanishes_are_lost(bench):
    scenario = METADATA
    before = start(bench, scenario)
    folder = bench.box.path("work", "logs")
    arguments = ["-LOG", bench.box.windows("work", "logs", "run.log")]
    with meanwhile(bench, "KernelProject#1 Load", lambda: shutil.rmtree(folder)) as plan:
        result = bench.run_as_it_is(scenario, plan, 0, before, arguments)
    assert not folder.exists()
    assert status(result) == ["job_DONE"]
    assert is_sound(result.exchange["Pump.kvp"]) and result.exchange["Pump.kvp"] != before


def test_error_file_that_vanishes_leaves_a_success_without_a_file(bench):
    before = start(bench, METADATA)
    error = bench.box.path("exchange", "job_ERROR")
    with meanwhile(bench, "KernelProject#1 Load", error.unlink) as plan:
        result = bench.run_as_it_is(METADATA, plan, 0, before)
    assert log_of(result) == OPENED + RENAMED + SAVED + DONE
    assert status(result) == []


def test_error_file_that_vanishes_is_made_anew_for_a_failure(bench):
    before = start(bench, METADATA)
    error = bench.box.path("exchange", "job_ERROR")
    with meanwhile(bench, "KernelProject#1 GetLanguage", error.unlink) as plan:
        result = bench.run_as_it_is(METADATA, plan + "KernelProject.Load 1 result E_FAIL\n", 0,
                                    before)
    assert log_of(result) == PROCESSING + SPECIFICATION + b"ERROR: ERROR loading project: "
    assert result.exchange["job_ERROR"] == b"ERROR loading project: "


def test_exchange_folder_that_vanishes_cannot_take_the_archive(bench):
    before = start(bench, METADATA)
    folder = bench.box.path("exchange")
    try:
        with meanwhile(bench, "KernelProject#1 Rename", lambda: shutil.rmtree(folder)) as plan:
            bench.box.run(*bench.arguments(METADATA), faults=plan)
        assert not folder.exists()
    finally:
        folder.mkdir(exist_ok=True)
    result = bench.result(METADATA, bench.box.runs[-1], before)
    assert log_of(result) == OPENED + RENAMED + b"ERROR: Can't create KVP-file"


def test_archive_that_vanishes_is_written_anew(bench):
    before = start(bench, METADATA)
    archive = bench.box.path("exchange", "Pump.kvp")
    with meanwhile(bench, "KernelProject#1 Rename", archive.unlink) as plan:
        result = bench.run_as_it_is(METADATA, plan, 0, before)
    assert log_of(result) == OPENED + RENAMED + SAVED + DONE
    assert is_sound(result.exchange["Pump.kvp"])


def test_temporary_folder_that_vanishes_is_made_anew_by_the_publication(bench):
    scenario = BY_NAME["package-ipc"]
    before = start(bench, scenario)
    folder = bench.box.path("temp")
    try:
        with meanwhile(bench, "Exporter#1 PutOptionB", lambda: shutil.rmtree(folder)) as plan:
            result = bench.run_as_it_is(scenario, plan, 0, before)
        assert folder.is_dir()
    finally:
        folder.mkdir(exist_ok=True)
    assert status(result) == ["job_DONE"]
    assert is_sound(result.exchange["Pump.kvb"])
    assert result.temporary == []


# ---- full: no file grows beyond a size, which is what a full disk comes to ----

@contextmanager
def no_file_beyond(size: int):
    """For the programs that are started in this block."""
    soft, hard = resource.getrlimit(resource.RLIMIT_FSIZE)
    resource.setrlimit(resource.RLIMIT_FSIZE, (size, hard))
    try:
        yield
    finally:
        resource.setrlimit(resource.RLIMIT_FSIZE, (soft, hard))


def noise(size: int) -> bytes:
    return random.Random(size).randbytes(size)


def test_archive_that_finds_no_room_leaves_the_old_one(bench):
    scenario = Scenario("full-archive", METADATA.actions, project={
        "representations": {f"{number}.bin": noise(20_000) for number in range(12)}})
    before = start(bench, scenario)
    with no_file_beyond(100_000):
        result = bench.run_as_it_is(scenario, "", None, before)
    assert result.run.exit_code == 0
    assert log_of(result) == OPENED + RENAMED + b"ERROR: the archive cannot be written"
    assert sorted(result.exchange) == ["Pump.kvp", "job_ERROR"]
    assert result.exchange["Pump.kvp"] == before
    assert result.exchange["job_ERROR"] == b"the archive cannot be written"


def test_log_that_finds_no_room_loses_lines_and_nothing_else(bench):
    echo = "x" * 30_000  # stands in the log's first line
    before = start(bench, METADATA)
    with no_file_beyond(20_000):
        result = bench.run_as_it_is(METADATA, "", None, before, ["-IGNORED", echo])
    assert result.run.exit_code == 0
    assert len(result.log) <= 20_000
    assert status(result) == ["job_DONE"]
    assert is_sound(result.exchange["Pump.kvp"]) and result.exchange["Pump.kvp"] != before


def test_document_that_finds_no_room_cannot_be_attached(bench):
    scenario = BY_NAME["document"]
    before = start(bench, scenario)
    bench.box.path("exchange", scenario.document).write_bytes(noise(200_000))
    with no_file_beyond(100_000):
        result = bench.run_as_it_is(scenario, "", None, before)
    path = bench.box.windows("exchange", scenario.document)
    assert result.run.exit_code == 0
    assert log_of(result) == OPENED + b"ERROR: Error attaching document: " + path.encode()
    assert result.exchange["Pump.kvp"] == before


@pytest.fixture(autouse=True)
def no_signal_for_files_that_are_too_large(monkeypatch):
    """Python takes back, for the programs that it starts, that the signal is ignored."""
    monkeypatch.setattr(subprocess.Popen, "__init__", _keeping_signals(subprocess.Popen.__init__))


def _keeping_signals(original):
    def popen(self, *arguments, **options):
        original(self, *arguments, **{"restore_signals": False, **options})
    return popen
