"""clang-tidy as a stage: one result a source, and only those read that have none yet."""

from __future__ import annotations

import sys
from concurrent.futures import ThreadPoolExecutor

from . import stages
from .progress import Progress
from .results import Failure, Results

sys.path.insert(0, str(stages.ROOT / "tests" / "checks"))

import tidy  # noqa: E402


def run(name: str) -> Results:
    chosen = {source: options for source, options in tidy.sources().items()
              if name in f"tidy {source}"}
    unread = {source: options for source, options in chosen.items()
              if tidy.kept(source, options) is None}
    with Progress("tidy", "sources that have changed") as progress:
        progress.expect(len(unread))

        def read(group: tidy.Group) -> None:
            tidy.read(group)
            progress.advance(len(group.sources))

        with ThreadPoolExecutor(int(stages.JOBS)) as pool:
            for _ in pool.map(read, tidy.groups(unread)):
                pass
    results = Results()
    for source, options in chosen.items():
        found = tidy.kept(source, options)
        if found == "":
            results.passed += 1
        else:
            results.failures.append(Failure(f"tidy {source}", found or "it changed while it was read"))
    return results
