"""./run-tests --fuzz SECONDS, once the fuzzers are built: each runs for that time."""

from __future__ import annotations

import argparse
import os
import re
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor
from dataclasses import dataclass
from pathlib import Path

from . import stages

INPUTS = stages.ROOT / "tests" / "fuzz"
PROGRAMS = stages.BUILD / "fuzz" / "tests" / "fuzz"
CORPUS = stages.BUILD / "fuzz" / "corpus"
LONGEST_INPUT = 4096  # bytes; no parser looks further back
GRACE_SECONDS = 120   # for start and end

_EXECUTIONS = re.compile(r"stat::number_of_executed_units:\s*(\d+)")


@dataclass(frozen=True)
class Outcome:
    target: str
    executions: int
    failure: str  # empty: nothing was broken


def targets() -> list[str]:
    """The targets' names, as the table of Targets.h has them."""
    lines = (INPUTS / "Targets.h").read_text(encoding="utf-8").splitlines()
    return [match[1] for match in map(re.compile(r'\s*\{"([^"]+)", \w+\},').match, lines) if match]


def outcome(target: str, code: int | None, output: str) -> Outcome:
    """code: the fuzzer's exit code, None when it had to be ended."""
    executions = _EXECUTIONS.search(output)
    if code == 0 and executions:
        return Outcome(target, int(executions[1]), "")
    tail = "\n".join(output.splitlines()[-40:])
    return Outcome(target, int(executions[1]) if executions else 0,
                   f"ended with exit code {code}\n{tail}")


def fuzz(target: str, seconds: int, programs: Path = PROGRAMS) -> Outcome:
    corpus = CORPUS / target
    found = INPUTS / "found" / target
    folders = [corpus, INPUTS / "seeds" / target, found]
    for folder in (corpus, found):
        folder.mkdir(parents=True, exist_ok=True)
    command = [str(programs / f"fuzz-{target}"), f"-max_total_time={seconds}",
               f"-artifact_prefix={found}/", f"-max_len={LONGEST_INPUT}", "-timeout=10",
               "-print_final_stats=1", *map(str, folders)]
    try:
        run = subprocess.run(command, env={**os.environ, **stages.SANITIZERS},
                             stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                             stderr=subprocess.STDOUT, timeout=seconds + GRACE_SECONDS)
        return outcome(target, run.returncode, run.stdout.decode(errors="replace"))
    except subprocess.TimeoutExpired as expired:
        return outcome(target, None, (expired.stdout or b"").decode(errors="replace"))
    finally:
        if not any(found.iterdir()):
            found.rmdir()


def main() -> int:
    parser = argparse.ArgumentParser(prog="./run-tests --fuzz", allow_abbrev=False)
    parser.add_argument("seconds", type=int, help="for each target")
    seconds = parser.parse_args().seconds
    failed = 0
    names = targets()
    with ThreadPoolExecutor(int(stages.JOBS)) as pool:
        for result in pool.map(lambda name: fuzz(name, seconds), names):
            failed += bool(result.failure)
            print(f"{result.target:16}{result.executions:12,} executions", flush=True)
            if result.failure:
                print(f"\n---- FAILED: {result.target}\n{result.failure}\n", flush=True)
    print(f"{len(names) - failed} passed, {failed} failed")
    return 1 if failed or not names else 0


if __name__ == "__main__":
    sys.exit(main())
