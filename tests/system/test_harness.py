"""The harness itself: what it promises to notice, it notices."""

from __future__ import annotations

import os

import pytest

from harness.machine import BUILD
from harness.process import RunHung

PROBE = str(BUILD / "tests" / "system" / "zt-test-probe.exe")


def problems(sandbox) -> str:
    with pytest.raises(AssertionError) as caught:
        sandbox.check_nothing_left()
    return str(caught.value)


def test_watchdog_ends_a_hanging_run_and_nothing_of_it_is_left(sandbox):
    with pytest.raises(RunHung, match="still running after 2 s"):
        sandbox.run("hang", program=PROBE, seconds=2)
    sandbox.check_nothing_left()


def test_watchdog_shows_the_trace_so_far(sandbox):
    sandbox.path("trace-1.txt").write_text("Kernel.Open(1)\n")
    with pytest.raises(RunHung, match=r"Kernel\.Open\(1\)"):
        sandbox.run("hang", program=PROBE, seconds=2)


def test_file_outside_the_folders_of_the_test_is_noticed(sandbox):
    outside = sandbox.machine.drive / "outside.txt"
    try:
        sandbox.run("write", sandbox.machine.windows_path(outside), program=PROBE)
        assert f"new: {outside}" in problems(sandbox)
    finally:
        outside.unlink()


@pytest.fixture
def file_outside(machine):
    path = machine.drive / "zt" / "outside.txt"
    path.parent.mkdir(exist_ok=True)
    path.write_text("before")
    yield path
    path.unlink(missing_ok=True)


def test_changed_file_outside_the_folders_of_the_test_is_noticed(file_outside, sandbox):
    before = file_outside.stat()
    sandbox.run("write", sandbox.machine.windows_path(file_outside), program=PROBE)
    assert problems(sandbox) == f"changed: {file_outside}"
    file_outside.write_text("before")
    os.utime(file_outside, ns=(before.st_atime_ns, before.st_mtime_ns))


def test_deleted_file_outside_the_folders_of_the_test_is_noticed(file_outside, sandbox):
    file_outside.unlink()
    assert problems(sandbox) == f"gone: {file_outside}"
    sandbox._before.pop(str(file_outside))


def test_file_left_in_the_temporary_folder_is_noticed(sandbox):
    sandbox.run("write", sandbox.windows("temp", "left"), program=PROBE)
    assert problems(sandbox) == "left in the temporary folder: left"
    sandbox.path("temp", "left").unlink()


def test_process_left_behind_is_noticed(sandbox):
    sandbox.run("orphan", program=PROBE)
    assert "zt-test-probe.exe hang" in problems(sandbox).replace('"', "")
    # Ends the orphan with everything else in this prefix, which starts again at once.
    sandbox.machine.stop()
    sandbox.machine.start()


@pytest.mark.parametrize("trace, problem", [
    ("live zt-components: KernelProject 1, MetadataItem 2",
     "live zt-components: KernelProject 1, MetadataItem 2"),
    ("misuse: no method 98", "misuse: no method 98"),
    ("Kernel.Open(1)", "the trace has no closing count of live objects")])
def test_object_alive_or_misused_in_a_trace_is_noticed(sandbox, trace, problem):
    more = "" if problem.startswith(("live", "the trace")) else "\nlive zt-components: 0"
    sandbox.run("trace", trace + more, program=PROBE)
    assert problems(sandbox) == f"run 1: {problem}"
    sandbox.runs.clear()


def test_trace_without_live_objects_is_no_problem(sandbox):
    sandbox.run("trace", "Kernel.Open(1)\nlive zt-components: 0\nlive zt-handlers: 0", program=PROBE)


def test_unexpected_exit_code_fails_the_run(sandbox):
    with pytest.raises(AssertionError, match="exit code:    7"):
        sandbox.run("exit", "7", program=PROBE)


def test_crash_is_an_exit_code_and_no_dialog(sandbox):
    with pytest.raises(AssertionError, match="exit code:    5"):
        sandbox.run("crash", program=PROBE, seconds=20)


def test_temporary_folder_of_a_run_is_the_one_of_the_test(sandbox):
    sandbox.run("temp", "here", program=PROBE)
    assert sandbox.names("temp") == ["here"]
    sandbox.path("temp", "here").unlink()
