"""./run-tests --coverage: which lines and branches of the program its tests run.

The presets coverage-windows and coverage-native count what runs. Programs that run side by side
get a folder of their own for what they counted; afterwards these profiles are added up, and gcovr
joins the Windows figures with the native ones.
"""

from __future__ import annotations

import functools
import os
import shutil
import subprocess
import sys
from pathlib import Path

from . import programs, stages
from .__main__ import RUN_WINDOWS, native_stage, show, wine_prefix
from .coverage_report import Figures, check_reasons, read_reasons
from .results import Failure, Results

FOLDER = stages.BUILD / "coverage"
WINDOWS = stages.BUILD / "coverage-windows"
NATIVE = stages.BUILD / "coverage-native"
PROFILES = FOLDER / "profiles"
SUMS = FOLDER / "sums"
PAGE = FOLDER / "html" / "index.html"
REASONS = stages.ROOT / "tests" / "coverage" / "uncovered.txt"

MEASURED = ("app", "cms", "components", "config", "framework", "project", "publish", "support")
TARGET_LINES, TARGET_BRANCHES = 95.0, 90.0

# The compilers' own readers: each compiler's profiles have a format of their own.
WINDOWS_GCOV = "x86_64-w64-mingw32-gcov-posix"
WINDOWS_GCOV_TOOL = "x86_64-w64-mingw32-gcov-tool-posix"
NATIVE_GCOV = "gcov"


def profile_folder(name: str) -> str:
    """Where Windows programs write their profiles, as GCOV_PREFIX wants it."""
    return f"Z:{PROFILES / name}"


def forget_earlier_runs() -> None:
    shutil.rmtree(PROFILES, ignore_errors=True)
    shutil.rmtree(PAGE.parent, ignore_errors=True)
    for build in (WINDOWS, NATIVE):
        for profile in build.rglob("*.gcda"):
            profile.unlink()
    PROFILES.mkdir(parents=True)
    PAGE.parent.mkdir(parents=True)


# ---- the stages ----

def unit_stage() -> Results:
    """Every program of unit tests that the coverage preset builds."""
    found = sorted((WINDOWS / "tests" / "unit").glob("unit-*.exe"))
    return programs.program_stage("unit", found, "", RUN_WINDOWS, lambda part: {
        "GCOV_PREFIX": profile_folder(part.name)})


def system_stage() -> Results:
    """The program of the coverage preset with the installation of the release preset."""
    return stages.pytest_stage("system", "tests/system", "", {
        "ZT_PROGRAM": str(WINDOWS / "ZTInvisible.exe"),
        "PYTEST_ADDOPTS": "-p runner.coverage_worker"})


def run_stages() -> Results:
    total = Results()
    for stage, perform in (
        ("native", lambda: native_stage("", NATIVE)),
        ("unit", unit_stage),
        ("system", system_stage),
    ):
        total.add(show(stage, perform))
    return total


# ---- the profiles ----

def collect_profiles() -> None:
    """Adds the profiles of all Windows programs up, and lays them beside the compiler's notes."""
    parts = [part for part in (inner(folder) for folder in sorted(PROFILES.iterdir()))
             if part.is_dir()]
    if not parts:
        raise RuntimeError("no Windows program has written a profile")
    shutil.rmtree(SUMS, ignore_errors=True)
    SUMS.mkdir()
    shutil.copytree(functools.reduce(add_profiles, parts), WINDOWS, dirs_exist_ok=True)


def inner(folder: Path) -> Path:
    """A program writes below the folder under the whole path of its object files."""
    return folder / WINDOWS.relative_to("/")


def add_profiles(one: Path, other: Path) -> Path:
    result = SUMS / str(len(list(SUMS.iterdir())))
    for part in (one, other):  # the tool makes no folders
        for folder in (path for path in part.rglob("*") if path.is_dir()):
            (result / folder.relative_to(part)).mkdir(parents=True, exist_ok=True)
    run(WINDOWS_GCOV_TOOL, "merge", str(one), str(other), "-o", str(result))
    return result


def measure(name: str, build: Path, gcov: str) -> Path:
    report = FOLDER / f"{name}.json"
    filters = [f"--filter={stages.ROOT}/{folder}/" for folder in MEASURED]
    run("gcovr", f"--root={stages.ROOT}", f"--gcov-executable={gcov}", f"--object-directory={build}",
        "-j2", "--exclude-throw-branches", "--exclude-unreachable-branches", *filters,
        f"--json={report}", str(build))
    return report


def join(*reports: Path) -> Path:
    report = FOLDER / "coverage.json"
    run("gcovr", f"--root={stages.ROOT}", *(f"--add-tracefile={part}" for part in reports),
        f"--json={report}", f"--html-details={PAGE}", "--html-title=ZTInvisible")
    return report


def run(*command: str) -> None:
    done = subprocess.run(command, cwd=FOLDER, env={**os.environ, "LC_ALL": "C.UTF-8"},
                          stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
    if done.returncode:
        raise RuntimeError(f"{' '.join(command)} failed:\n{done.stdout}")


# ---- the outcome ----

def problems(figures: Figures) -> list[str]:
    found = check_reasons(figures.uncovered(stages.ROOT), read_reasons(REASONS))
    if figures.lines < TARGET_LINES:
        found.append(f"lines: the target of {TARGET_LINES} % is missed")
    if figures.branches < TARGET_BRANCHES:
        found.append(f"branches: the target of {TARGET_BRANCHES} % is missed")
    return found


def evaluate() -> Figures:
    collect_profiles()
    return Figures.read(join(measure("windows", WINDOWS, WINDOWS_GCOV),
                             measure("native", NATIVE, NATIVE_GCOV)))


def main() -> int:
    forget_earlier_runs()
    try:
        wine_prefix("start")
        total = run_stages()
    finally:
        wine_prefix("stop")
    figures = evaluate()
    found = problems(figures)
    print(f"\nThe page: {PAGE.relative_to(stages.ROOT)}")
    if total.failed:
        print("\nFailed:", *(f"  {failure.name}" for failure in total.failures), sep="\n")
    if found:
        print("\nNot in order:", *(f"  {problem}" for problem in found), sep="\n")
    print(f"coverage: {figures}")
    return 1 if total.failed or found else 0


if __name__ == "__main__":
    sys.exit(main())
