"""The stages: how each one's runner is started, limited to a name, and made to report."""

from __future__ import annotations

import os
import re
import subprocess
import sys
import time
import xml.etree.ElementTree as ElementTree
from pathlib import Path

from .results import Failure, Results, read_report

ROOT = Path(__file__).resolve().parents[2]
BUILD = ROOT / "build"
REPORTS = BUILD / "reports"
JOBS = "2"
STAGE_SECONDS = 1800


def _start(command: list[str], report: Path, environment: dict[str, str] | None = None):
    """Runs a stage's runner; returns its exit code (None when it had to be ended) and output."""
    REPORTS.mkdir(parents=True, exist_ok=True)
    report.unlink(missing_ok=True)
    try:
        done = subprocess.run(command, cwd=ROOT, env={**os.environ, **(environment or {})},
                              stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                              stderr=subprocess.STDOUT, timeout=STAGE_SECONDS)
        return done.returncode, done.stdout.decode(errors="replace")
    except subprocess.TimeoutExpired as expired:
        return None, (expired.stdout or b"").decode(errors="replace")


def _collect(stage: str, report: Path, code: int | None, output: str, good=(0,)) -> Results:
    """What the runner counted; a runner that ended badly without naming a failure is one itself."""
    try:
        results = read_report(report)
    except (OSError, ElementTree.ParseError) as error:
        results = Results()
        output += f"\nno report: {error}"
        code = None
    if code not in good and not results.failures:
        how = "was ended after its time" if code is None else f"ended with exit code {code}"
        text = "\n".join(output.splitlines()[-60:])
        results.failures.append(Failure(f"{stage} (the stage itself)", f"{how}\n{text}"))
    return results


def pytest_stage(stage: str, folder: str, name: str,
                 environment: dict[str, str] | None = None) -> Results:
    report = REPORTS / f"{stage}.xml"
    # loadgroup hands out test by test, to whichever worker is free, and not in advance.
    command = [sys.executable, "-m", "pytest", "-q", "-n", JOBS, "--dist", "loadgroup",
               "-p", "runner.name_option",
               f"--name={name}", f"--junitxml={report}", "-c", f"{folder}/pytest.ini", folder]
    variables = {"PYTHONPATH": str(ROOT / "tests"), **(environment or {})}
    code, output = _start(command, report, variables)
    return _collect(stage, report, code, output, good=(0, 5))  # 5: no test of that name


def ctest_stage(stage: str, preset: str, name: str) -> Results:
    report = REPORTS / f"{stage}.xml"
    command = ["ctest", "--test-dir", str(BUILD / preset), "-j", JOBS, "--output-on-failure",
               "--no-tests=ignore", "--output-junit", str(report)]
    if name:
        command += ["-R", re.escape(name)]
    code, output = _start(command, report, SANITIZERS)
    return _collect(stage, report, code, output)


SANITIZERS = {
    "ASAN_OPTIONS": "detect_leaks=1:strict_string_checks=1:detect_stack_use_after_return=1",
    "UBSAN_OPTIONS": "print_stacktrace=1:halt_on_error=1",
}


def debug_stage(stage: str, name: str) -> Results:
    """Every unit-test program whole, its tests shuffled: they must not lean on an order."""
    results = Results()
    for program in sorted((BUILD / "debug" / "tests" / "unit").glob("unit-*.exe")):
        results.add(program_stage(stage, program, name))
    return results


def program_stage(stage: str, program: Path, name: str,
                  environment: dict[str, str] | None = None) -> Results:
    """One unit-test program as one process."""
    report = REPORTS / f"{stage}-{program.stem}.xml"
    seed = int(time.time()) % 99999 + 1
    command = [str(ROOT / "tests" / "run-windows"), str(program), "--gtest_shuffle",
               f"--gtest_random_seed={seed}", f"--gtest_output=xml:Z:{report}"]
    if name and name not in f"{stage}.{program.stem}":
        command.append(f"--gtest_filter=*{name}*")
    variables = {"ZT_WATCHDOG": "600", **(environment or {})}
    code, output = _start(command, report, variables)
    results = _collect(f"{stage} {program.stem}, seed {seed}", report, code, output)
    for failure in results.failures:
        failure.name = f"{stage}.{program.stem}.{failure.name}"
    return results
