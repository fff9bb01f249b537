"""Damaged configuration files, specifications, axes catalogues and archives: whatever they hold,
the run ends in order and says nothing but what it has texts for."""

from __future__ import annotations

import random
import re
from pathlib import Path

from harness import trace
from harness.logs import without_times
from harness.specification import STORE

from .bench import Bench, Result
from .checks import is_sound
from .mutation import mutated_archive, mutated_xml
from .scenarios import BY_NAME, Scenario

# What is damaged, and the scenario that reads it.
PARTS = {"configuration": "metadata", "specification": "publish-proc", "axes": "publish-ipc",
         "archive": "metadata"}

# All that a log may hold behind its first line. Names and descriptions come from the files.
_STEPS = [
    r"Processing project 'Pump'\r\n",
    r"Specification '.*?', v\..*? loaded\r\n",
    r"Project loaded by Zeltor Development Installation v\.1\.4\.0\.12\r\n",
    r"Value of metadata '(Author|Status|Title)' set to '(Me|final|Boiler pump)'\r\n",
    r"Project saved to KVP file\r\n",
    r"Project published successfully\r\n",
    r"SUCCESS: Project 'Pump' successfully processed\r\n",
    r"SUCCESS: ZeltorAuthorInvisible finished successfully at <time>\r\n",
]
_SPECIFICATION_REPORTS = [
    r"ERROR: Invalid specification cfg-file format: .*?",
    r"ERROR: Specification cfg-file does not exist: .*?",
    r"ERROR: Project specification class unknown",
    r"ERROR: Project requires specification version .*?\. Current version is .*?\. "
    r"Please install the required version of specification\.",
    r"ERROR: Couldn't load library of declarations\.",
    r"ERROR: Couldn't load library of types\.",
    r"ERROR: Error loading IPC DPL command templates\.",
]
_ENDS = {
    "configuration": [
        r"ERROR: Invalid configuration file format: .*", r"ERROR: Can't open project",
        r"ERROR: Projects location cannot be set\.",
        r"ERROR: Project could not be imported into configuration"],
    "specification": [r"ERROR: Can't load specification - aborting\.\.\.",
                      r"ERROR: Error publishing project(:\r\n.*)?",
                      r"ERROR: ERROR publishing project: .*"],
    "axes": [r"ERROR: ERROR publishing project: .*"],
    "archive": [r"ERROR: .+"],  # a component that cannot read it says why in its own words
}


def run(bench: Bench, part: str, number: int) -> list[str]:
    """What is wrong with the run on the damaged file of that number."""
    scenario = BY_NAME[PARTS[part]]
    rng = random.Random(f"{part}/{number}")
    bench.reset()
    bench.lay_out(scenario)
    file = _file(bench, part, scenario)
    sound = file.read_bytes()
    damaged = (mutated_archive if part == "archive" else mutated_xml)(sound, rng)
    file.write_bytes(damaged)
    before = bench.box.read("exchange", "Pump.kvp")
    try:
        result = bench.run_as_it_is(scenario, "", 0, before)
    except AssertionError as error:
        return [f"{damaged[:2000]!r}", str(error)]
    finally:
        file.write_bytes(sound)
    found = _problems(part, result)
    return [*found, f"{damaged[:2000]!r}", result.run.describe()] if found else []


def _file(bench: Bench, part: str, scenario: Scenario) -> Path:
    return {"configuration": bench.box.path("installation", "configuration.xml"),
            "specification": bench.box.path(*STORE, scenario.specification + ".cfg"),
            "axes": bench.box.path(*STORE[:-1], "Axes", "axes.xml"),
            "archive": bench.box.path("exchange", "Pump.kvp")}[part]


def _problems(part: str, result: Result) -> list[str]:
    found = trace.problems(result.run.trace, True)
    found += [line for line in result.run.trace
              if line.startswith("allocations: ") and line != "allocations: 0"]
    log = without_times(result.log)
    log = log[log.index(b"\r\n") + 2:]
    steps = "|".join(_STEPS + (_SPECIFICATION_REPORTS if part != "axes" else []))
    allowed = f"({steps})*({'|'.join(_ENDS[part])})?"
    if not re.fullmatch(allowed.encode("latin-1"), log, re.S):
        found.append(f"the log is {log!r}")
    succeeded = log.endswith(b"finished successfully at <time>\r\n")
    status = sorted(name for name in result.exchange if name.startswith("job_"))
    if status != ["job_DONE" if succeeded else "job_ERROR"]:
        found.append(f"the status files are {status}")
    after = result.exchange.get("Pump.kvp")
    if after != result.before and not is_sound(after):
        found.append("the archive is neither as it was nor a sound one")
    if result.temporary:
        found.append(f"left in the temporary folder: {result.temporary}")
    return found
