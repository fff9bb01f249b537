"""./run-tests [STAGE] [NAME], once the machine is set up and what the stages need is built."""

from __future__ import annotations

import argparse
import subprocess
import sys
import time
from pathlib import Path
from typing import Callable

from . import programs, stages, tidy_stage
from .results import Results

UNIT_PREFIX = stages.BUILD / "wine"
RUN_WINDOWS = (str(stages.ROOT / "tests" / "run-windows"),)


def wine_prefix(what: str) -> None:
    subprocess.run([str(stages.ROOT / "tools" / "wine-prefix"), what, str(UNIT_PREFIX)], check=True)


def native_stage(name: str, build: Path = stages.BUILD / "native") -> Results:
    found = [program for program in (build / "tests").glob("*/native-*")
             if program.is_file() and not program.suffix]
    return programs.program_stage("native", found, name)


def unit_stage(name: str) -> Results:
    found = list((stages.BUILD / "unit" / "tests" / "unit").glob("unit-*.exe"))
    wine_prefix("start")
    try:
        return programs.program_stage("unit", found, name, RUN_WINDOWS)
    finally:
        wine_prefix("stop")


def pytest_stage(stage: str) -> Callable[[str], Results]:
    return lambda name: stages.pytest_stage(stage, f"tests/{stage}", name)


# In the order in which they run; run-tests knows what each needs built.
STAGES: dict[str, Callable[[str], Results]] = {
    "tidy": tidy_stage.run,
    "checks": pytest_stage("checks"),
    "native": native_stage,
    "unit": unit_stage,
    "system": pytest_stage("system"),
    "torture": pytest_stage("torture"),
}


def show(stage: str, perform: Callable[[], Results]) -> Results:
    """Performs a stage and prints its result."""
    started = time.monotonic()
    results = perform()
    seconds = time.monotonic() - started
    for failure in results.failures:
        print(f"\n---- FAILED: {failure.name}\n{failure.text}\n", flush=True)
    for skipped in results.skipped:
        print(f"skipped: {skipped}")
    counts = f"{results.passed:5} ok {results.failed:4} not ok"
    print(f"{stage:8}{counts}   {seconds:5.0f} s", flush=True)
    return results


def run(chosen: list[str], name: str) -> Results:
    total = Results()
    for stage in chosen:
        total.add(show(stage, lambda: STAGES[stage](name)))
    return total


def main() -> int:
    parser = argparse.ArgumentParser(prog="./run-tests", allow_abbrev=False)
    parser.add_argument("--stage", choices=STAGES, help="only this stage")
    parser.add_argument("name", nargs="?", default="", help="only tests whose name holds this text")
    arguments = parser.parse_args()
    total = run([arguments.stage] if arguments.stage else list(STAGES), arguments.name)
    if not (total.passed or total.failed):
        print(f"No test's name holds {arguments.name!r}." if arguments.name else "There is no test.")
    elif total.failed:
        print("\nFailed:", *(f"  {failure.name}" for failure in total.failures), sep="\n")
    print(f"{total.passed} passed, {total.failed} failed")
    return 0 if total.passed and not total.failed else 1


if __name__ == "__main__":
    sys.exit(main())
