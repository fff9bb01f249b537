"""Test programs of GoogleTest: each runs whole, its tests shuffled, for they must not depend on an
order, and in two halves, so that both cores have work to the end."""

from __future__ import annotations

import re
import time
from concurrent.futures import ThreadPoolExecutor
from dataclasses import dataclass
from pathlib import Path
from typing import Callable

from . import stages
from .progress import Progress
from .results import Failure, Results

SHARDS = 2
MOST_CRASHES = 10  # of one half of a program, before it is given up

_EVENT = re.compile(r"^\[( RUN      |       OK |  FAILED  |  SKIPPED )\] ([\w/.]+)", re.MULTILINE)


@dataclass(frozen=True)
class Part:
    """One half of a program's tests."""

    program: Path
    shard: int

    @property
    def name(self) -> str:
        return f"{self.program.stem}-{self.shard}"


def filter_for(program: str, name: str) -> str | None:
    """The positive filter for the tests whose whole name, "program.Suite.Test", holds the text;
    None when there can be none."""
    if name in program:
        return "*"
    if not re.fullmatch(r"[\w/.-]+", name):
        return None
    patterns = [] if "-" in name else [f"*{name}*"]
    for at, character in enumerate(name):
        rest = name[at + 1:]
        if character == "." and f"{program}.".endswith(name[:at + 1]) and "-" not in rest:
            patterns.append(f"{rest}*")
    return ":".join(patterns) or None


def unfinished_test(output: str) -> str | None:
    """The test that was running when the output broke off."""
    events = _EVENT.findall(output)
    return events[-1][1] if events and events[-1][0].strip() == "RUN" else None


def program_stage(stage: str, programs: list[Path], name: str, launcher: tuple[str, ...] = (),
                  environment: Callable[[Part], dict[str, str]] = lambda part: {}) -> Results:
    """Runs the programs' tests whose name holds the text; no program at all is a failure."""
    if not programs:
        return Results(failures=[Failure(f"{stage} (the stage itself)", "no test program is there")])
    largest_first = sorted(programs, key=lambda program: program.stat().st_size, reverse=True)
    parts = [Part(program, shard) for program in largest_first for shard in range(SHARDS)
             if filter_for(program.stem, name)]
    total = Results()
    with Progress(stage, "halves of test programs") as progress:
        progress.expect(len(parts))

        def run(part: Part) -> Results:
            results = _run_part(stage, part, filter_for(part.program.stem, name) or "", launcher,
                                environment(part))
            progress.advance()
            return results

        with ThreadPoolExecutor(int(stages.JOBS)) as pool:
            for results in pool.map(run, parts):
                total.add(results)
    return total


def _run_part(stage: str, part: Part, tests: str, launcher: tuple[str, ...],
              environment: dict[str, str]) -> Results:
    """A test that ends the process is a failure, and the others are run again without it."""
    report = stages.REPORTS / f"{stage}-{part.name}.xml"
    seed = int(time.time()) % 99999 + 1
    variables = {"ZT_WATCHDOG": "300", "GTEST_TOTAL_SHARDS": str(SHARDS),
                 "GTEST_SHARD_INDEX": str(part.shard), **stages.SANITIZERS, **environment}
    windows = part.program.suffix == ".exe"
    crashes: list[Failure] = []
    ended: list[str] = []
    while True:
        command = [*launcher, str(part.program), "--gtest_shuffle", f"--gtest_random_seed={seed}",
                   f"--gtest_output=xml:{'Z:' if windows else ''}{report}",
                   f"--gtest_filter={tests}" + ("-" + ":".join(ended) if ended else "")]
        code, output = stages.start(command, report, variables)
        test = None if report.exists() else unfinished_test(output)
        if test is None or len(crashes) == MOST_CRASHES:
            break
        ended.append(test)
        tail = "\n".join(output.splitlines()[-20:])
        crashes.append(Failure(f"{part.program.stem}.{test}",
                               f"ended the process with exit code {code}, seed {seed}\n{tail}"))
    results = stages.collect(f"{stage} {part.name}, seed {seed}", report, code, output)
    for failure in results.failures:
        failure.name = f"{part.program.stem}.{failure.name.replace('::', '.')}"
    results.failures[:0] = crashes
    return results
