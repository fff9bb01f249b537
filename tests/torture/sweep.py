"""The full sweep: every case on two benches at a time.

    python -m torture [NAME ...]    the cases whose name begins with one; without any all

A case is named after its part: calls/metadata:17:null, kill/metadata:17, moment/17. The last line
is "N passed, N failed"."""

from __future__ import annotations

import multiprocessing
import queue
import sys
import time
import traceback

from . import cases, hostile, kill
from .bench import Bench
from .scenarios import BY_NAME, SCENARIOS

WORKERS = 2
MOMENTS = 1000
DAMAGED = 1000  # files of each part
PROGRESS_SECONDS = 20


def first_tasks() -> list[str]:
    """What is known before anything has run. Counting a scenario's calls gives its cases."""
    return [*(f"count/{scenario.name}" for scenario in SCENARIOS),
            *(f"moment/{number}" for number in range(MOMENTS)),
            *(f"{part}/{number}" for part in hostile.PARTS for number in range(DAMAGED))]


def perform(bench: Bench, task: str) -> tuple[list[str], list[str]]:
    """What is wrong, and the further tasks that follow."""
    part, name = task.split("/", 1)
    if part == "count":
        calls = cases.clean_calls(bench, BY_NAME[name])
        further = [f"calls/{case}" for case in cases.cases_of(BY_NAME[name], calls)]
        return [], [*further, *(f"kill/{name}:{call.number}" for call in calls)]
    if part == "calls":
        return cases.run_case(bench, cases.Case.parse(name)), []
    if part == "kill":
        scenario, number = name.split(":")
        return kill.kill_at_call(bench, BY_NAME[scenario], int(number)), []
    if part == "moment":
        return kill.kill_at_moment(bench, int(name)), []
    return hostile.run(bench, part, int(name)), []


def _work(worker: int, waiting, done) -> None:
    with Bench(str(worker)) as bench:
        while (task := waiting.get()) is not None:
            try:
                problems, further = perform(bench, task)
            except Exception:  # reported as the case's failure
                problems, further = [traceback.format_exc()], []
            done.put((task, problems, further))


class Sweep:
    def __init__(self, wanted: tuple[str, ...]):
        self._wanted = wanted
        self.passed, self.failed = 0, 0
        self._waiting, self._done = multiprocessing.Queue(), multiprocessing.Queue()
        self._open = 0
        self._shown = self._started = time.monotonic()

    def run(self) -> int:
        workers = [multiprocessing.Process(target=_work, args=(n, self._waiting, self._done))
                   for n in range(WORKERS)]
        for worker in workers:
            worker.start()
        for task in first_tasks():
            self._add(task)
        while self._open and any(worker.is_alive() for worker in workers):
            self._take()
        for _ in workers:
            self._waiting.put(None)
        for worker in workers:
            worker.join()
        self.failed += self._open  # a worker that broke took its cases with it
        print(f"{time.monotonic() - self._started:.0f} s")
        print(f"{self.passed} passed, {self.failed} failed", flush=True)
        return 0 if self.passed and not self.failed else 1

    def _add(self, task: str) -> None:
        if task.startswith((*self._wanted, "count/")):
            self._waiting.put(task)
            self._open += 1

    def _take(self) -> None:
        try:
            task, problems, further = self._done.get(timeout=5)
        except queue.Empty:
            return
        self._open -= 1
        for more in further:
            self._add(more)
        if problems:
            self.failed += 1
            print(f"---- FAILED: {task}\n" + "\n".join(problems), flush=True)
        else:
            self.passed += 1
        if time.monotonic() - self._shown > PROGRESS_SECONDS:
            self._shown = time.monotonic()
            print(f"{self.passed + self.failed:6} done, {self._open:6} to come, "
                  f"{self.failed} failed", flush=True)


def main() -> int:
    return Sweep(tuple(sys.argv[1:] or [""])).run()
