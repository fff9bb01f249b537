"""./run-tests [NAME], once the machine is set up and everything is built."""

from __future__ import annotations

import argparse
import subprocess
import sys
import time
from typing import Callable

from . import stages
from .results import Results

UNIT_PREFIX = stages.BUILD / "wine"


def wine_prefix(what: str) -> None:
    subprocess.run([str(stages.ROOT / "tools" / "wine-prefix"), what, str(UNIT_PREFIX)], check=True)


def all_stages(name: str):
    yield "checks", lambda: stages.pytest_stage("checks", "tests/checks", name)
    yield "native", lambda: stages.ctest_stage("native", "native", name)
    yield "unit", lambda: stages.ctest_stage("unit", "release", name)
    yield "debug", lambda: stages.debug_stage("debug", name)
    yield "system", lambda: stages.pytest_stage("system", "tests/system", name)
    yield "torture", lambda: stages.pytest_stage("torture", "tests/torture", name)


def run(name: str) -> Results:
    total = Results()
    for stage, perform in all_stages(name):
        total.add(show(stage, perform))
    return total


def show(stage: str, perform: Callable[[], Results]) -> Results:
    """Performs a stage and prints what came of it."""
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


def main() -> int:
    parser = argparse.ArgumentParser(prog="./run-tests", allow_abbrev=False)
    parser.add_argument("name", nargs="?", default="", help="only tests whose name holds this text")
    name = parser.parse_args().name
    try:
        wine_prefix("start")
        total = run(name)
    finally:
        wine_prefix("stop")
    if not (total.passed or total.failed):
        print(f"No test's name holds {name!r}." if name else "There is no test.")
    elif total.failed:
        print("\nFailed:", *(f"  {failure.name}" for failure in total.failures), sep="\n")
    print(f"{total.passed} passed, {total.failed} failed")
    return 0 if total.passed and not total.failed else 1


if __name__ == "__main__":
    sys.exit(main())
