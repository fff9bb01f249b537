"""The process is ended in the middle, at a component call or at any moment."""

from __future__ import annotations

import random
import subprocess
import time

from harness.logs import without_times
from harness.process import Run
from harness.sandbox import PROGRAM

from .bench import COUNTED, Bench, Result
from .calls import read_calls
from .cases import undisturbed
from .checks import is_sound, problems
from .expectation import Expectation
from .scenarios import BY_NAME, Scenario

EXIT_CODE = 9
SEED = 20261121
# Of the time that an undisturbed run takes; the tail of the moments lies behind its end.
LONGEST_DELAY = 1.1
SCENARIOS = ("metadata", "revision", "package-ipc", "everything")


def kill_at_call(bench: Bench, scenario: Scenario, number: int) -> list[str]:
    """What is wrong with a run that ends in the call of that number, and with the run after it."""
    clean, clean_log = undisturbed(bench, scenario)
    result = bench.run(scenario, f"*.* {number} exit {EXIT_CODE}\n", exit_code=None)
    expected = Expectation(scenario, read_calls(result.run.trace), clean, lambda at: at == number)
    found = problems(expected, result, clean_log)
    if result.run.exit_code != EXIT_CODE or not expected.died:
        found.append(f"exit code {result.run.exit_code}")
    # Now and then: what several runs have left behind stands in the way then.
    return [*found, *(run_afresh(bench, scenario) if number % 4 == 0 else [])]


def kill_at_moment(bench: Bench, number: int) -> list[str]:
    """The same for the random moment of that number."""
    moment = random.Random(SEED + number)
    scenario = BY_NAME[SCENARIOS[number % len(SCENARIOS)]]
    if scenario.name not in bench.durations:
        run_afresh(bench, scenario)
    delay = bench.durations[scenario.name] * moment.uniform(0, LONGEST_DELAY)
    bench.reset()
    before = bench.lay_out(scenario)
    run = _run_and_kill(bench, scenario, delay)
    found = _left_in_order(scenario, bench.result(scenario, run, before))
    return [*found, *(run_afresh(bench, scenario) if number % 4 == 0 else [])]


def run_afresh(bench: Bench, scenario: Scenario) -> list[str]:
    """Whatever the run before left behind, one on a fresh copy succeeds."""
    try:
        result = bench.run(scenario)
    except AssertionError as error:
        return [f"the run after it: {error}"]
    bench.durations[scenario.name] = (result.run.ended - result.run.started).total_seconds()
    if "job_DONE" not in result.exchange:
        return [f"the run after it: {sorted(result.exchange)}, {result.log!r}"]
    return []


def _run_and_kill(bench: Bench, scenario: Scenario, delay: float) -> Run:
    box, machine = bench.box, bench.machine
    command = machine.command(str(PROGRAM), bench.arguments(scenario))
    environment = machine.environment({"TEMP": box.windows("temp"), "TMP": box.windows("temp"),
                                       **COUNTED})
    process = subprocess.Popen(command, cwd=box.path("work"), env=environment,
                               stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                               stderr=subprocess.DEVNULL)
    time.sleep(delay)
    process.kill()
    process.wait()
    return Run(command, process.returncode, b"", b"", None, None)


def _left_in_order(scenario: Scenario, result: Result) -> list[str]:
    files = result.exchange
    status = sorted(name for name in files if name.startswith("job_"))
    found = []
    if len(status) > 1:
        found.append(f"two status files: {status}")
    if not is_sound(files.get("Pump.kvp")):
        found.append("the archive is no sound one")
    if "job_DONE" in status:
        log = without_times(result.log)
        if not log.endswith(b"SUCCESS: ZeltorAuthorInvisible finished successfully at <time>\r\n"):
            found.append(f"done, but the log is {log!r}")
        if not scenario.publish and files["Pump.kvp"] == result.before:
            found.append("done, but the archive is as it was")
        if scenario.package and not is_sound(files.get("Pump.kvb")):
            found.append("done, but the package is no sound one")
    return found
