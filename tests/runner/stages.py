"""How a stage's runner is started, limited to a name, and made to report."""

from __future__ import annotations

import os
import subprocess
import sys
import xml.etree.ElementTree as ElementTree
from pathlib import Path

from .progress import Progress
from .results import Failure, Results, read_report

ROOT = Path(__file__).resolve().parents[2]
BUILD = ROOT / "build"
REPORTS = BUILD / "reports"
JOBS = "2"
STAGE_SECONDS = 1800


def start(command: list[str], report: Path, environment: dict[str, str] | None = None):
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


def collect(stage: str, report: Path, code: int | None, output: str, good=(0,)) -> Results:
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
    progress = REPORTS / f"{stage}.progress"
    command = [sys.executable, "-m", "pytest", "-q", "-n", JOBS, "--dist", "loadgroup",
               "-p", "runner.name_option", "-p", "runner.pytest_progress",
               f"--name={name}", f"--progress={progress}", f"--junitxml={report}",
               "-c", f"{folder}/pytest.ini", folder]
    variables = {"PYTHONPATH": str(ROOT / "tests"), **(environment or {})}
    with Progress(stage, "tests", progress):
        code, output = start(command, report, variables)
    return collect(stage, report, code, output, good=(0, 5))  # 5: no test of that name


SANITIZERS = {
    "ASAN_OPTIONS": "detect_leaks=1:strict_string_checks=1:detect_stack_use_after_return=1",
    "UBSAN_OPTIONS": "print_stacktrace=1:halt_on_error=1",
}
