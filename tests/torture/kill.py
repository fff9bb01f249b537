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
from .checks import is_sound, problems
from .flow import Disagreement, Flow
from .model import Model
from .shapes import BY_NAME, Shape

EXIT_CODE = 9
SEED = 20261121
# Of the time that an undisturbed run takes; the tail of the moments lies behind its end.
LONGEST_DELAY = 1.1
SHAPES = ("metadata", "revision", "package-ipc", "everything")


def kill_at_call(bench: Bench, shape: Shape, number: int) -> list[str]:
    """What is wrong with a run that ends in the call of that number, and with the run after it."""
    try:
        result = bench.run(shape, f"*.* {number} exit {EXIT_CODE}\n", exit_code=None)
        flow = Flow(read_calls(result.run.trace), lambda at: at == number, "")
        model = Model(shape, bench.paths(shape), flow).follow()
    except Disagreement as error:
        return [str(error)]
    found = problems(model, result)
    if result.run.exit_code != EXIT_CODE or not model.died:
        found.append(f"exit code {result.run.exit_code}")
    # Now and then: what several runs have left behind stands in the way then.
    return [*found, *(run_afresh(bench, shape) if number % 4 == 0 else [])]


def kill_at_moment(bench: Bench, number: int) -> list[str]:
    """The same for the random moment of that number."""
    moment = random.Random(SEED + number)
    shape = BY_NAME[SHAPES[number % len(SHAPES)]]
    if shape.name not in bench.durations:
        run_afresh(bench, shape)
    delay = bench.durations[shape.name] * moment.uniform(0, LONGEST_DELAY)
    bench.reset()
    before = bench.lay_out(shape)
    run = _run_and_kill(bench, shape, delay)
    found = _left_in_order(shape, bench.result(shape, run, before))
    return [*found, *(run_afresh(bench, shape) if number % 4 == 0 else [])]


def run_afresh(bench: Bench, shape: Shape) -> list[str]:
    """Whatever the run before left behind, one on a fresh copy succeeds."""
    try:
        result = bench.run(shape)
    except AssertionError as error:
        return [f"the run after it: {error}"]
    bench.durations[shape.name] = (result.run.ended - result.run.started).total_seconds()
    if "job_DONE" not in result.exchange:
        return [f"the run after it: {sorted(result.exchange)}, {result.log!r}"]
    return []


def _run_and_kill(bench: Bench, shape: Shape, delay: float) -> Run:
    box, machine = bench.box, bench.machine
    command = machine.command(str(PROGRAM), bench.arguments(shape))
    environment = machine.environment({"TEMP": box.windows("temp"), "TMP": box.windows("temp"),
                                       **COUNTED})
    process = subprocess.Popen(command, cwd=box.path("work"), env=environment,
                               stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                               stderr=subprocess.DEVNULL)
    time.sleep(delay)
    process.kill()
    process.wait()
    return Run(command, process.returncode, b"", b"", None, None)


def _left_in_order(shape: Shape, result: Result) -> list[str]:
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
        if not shape.publish and files["Pump.kvp"] == result.before:
            found.append("done, but the archive is as it was")
        if shape.package and not is_sound(files.get("Pump.kvb")):
            found.append("done, but the package is no sound one")
    return found
