"""The cases of the sweep: which call a fault is injected into, and which fault."""

from __future__ import annotations

from dataclasses import dataclass

from .bench import Bench
from .calls import Call, read_calls
from .checks import problems, steps_of
from .expectation import Expectation
from .scenarios import BY_NAME, Scenario

DESCRIPTION = "The component: 100% refused."
CODE = "0xA0041234"  # the platform has no text for it

# name, what the plan says, for every call from that one on
KINDS = {
    "result": (f"result {CODE}", False),
    "error": (f"error {CODE} {DESCRIPTION}", False),
    "null": ("null", False),
    "empty": ("empty", False),
    "number": ("variant i4", False),
    "text": ("variant bstr", False),
    "array": ("variant array-i4", False),
    "all-result": (f"result {CODE}", True),
    "all-null": ("null", True),
    "throw": ("throw", False),
    "templates": ("result 0x80400001", False),
}
_OF_VARIANTS = ("number", "text", "array")
_ONLY_FOR = {"templates": "KernelAdmin.LoadCommandTemplates"}  # whose family of codes it is

# The edit handler's result counts by its first 16 bits, which in a text or an array are part of an
# address and so no rule's matter.
_NOT_FOR = {"SampleEdit.Touch": ("text", "array")}


@dataclass(frozen=True)
class Case:
    scenario: str
    number: int
    kind: str

    def __str__(self) -> str:
        return f"{self.scenario}:{self.number}:{self.kind}"

    @staticmethod
    def parse(text: str) -> Case:
        scenario, number, kind = text.split(":")
        return Case(scenario, int(number), kind)

    @property
    def plan(self) -> str:
        what, onwards = KINDS[self.kind]
        return f"*.* {self.number}{'+' if onwards else ''} {what}\n"

    def is_faulted(self, number: int) -> bool:
        return number >= self.number if KINDS[self.kind][1] else number == self.number


def clean_calls(bench: Bench, scenario: Scenario) -> list[Call]:
    """The calls of an undisturbed run, which must be held to the rules too."""
    return undisturbed(bench, scenario)[0]


def undisturbed(bench: Bench, scenario: Scenario) -> tuple[list[Call], list[str]]:
    """Calls and steps of the log of an undisturbed run; it takes place once on a bench."""
    if scenario.name not in bench.undisturbed:
        result = bench.run(scenario)
        calls = read_calls(result.run.trace)
        expected = Expectation(scenario, calls, calls)
        found = problems(expected, result)
        assert expected.succeeded and not found, "\n".join(
            [f"{scenario.name}, undisturbed:", *found])
        bench.undisturbed[scenario.name] = calls, steps_of(result.log)
    return bench.undisturbed[scenario.name]


def cases_of(scenario: Scenario, calls: list[Call]) -> list[Case]:
    return [Case(scenario.name, call.number, kind) for call in calls for kind in KINDS
            if _makes_sense(call, kind)]


def _makes_sense(call: Call, kind: str) -> bool:
    if kind in _ONLY_FOR:
        return call.operation == _ONLY_FOR[kind]
    if kind in _NOT_FOR.get(call.operation, ()):
        return False
    if kind in _OF_VARIANTS:
        return call.depth == 0 and call.gives_variant
    if kind == "throw":
        return call.depth == 0  # within a component it is that component's own end
    return kind != "empty" or call.outputs != ""  # without outputs, "null" is the same


def run_case(bench: Bench, case: Case) -> list[str]:
    """What is wrong with the case's run; nothing when it went as the rules say."""
    scenario = BY_NAME[case.scenario]
    description = DESCRIPTION if case.kind == "error" else ""
    clean, clean_log = undisturbed(bench, scenario)
    try:
        result = bench.run(scenario, case.plan, exit_code=None)
    except AssertionError as error:  # the run hung, or wrote what it must not
        return [str(error)]
    expected = Expectation(scenario, read_calls(result.run.trace), clean, case.is_faulted,
                           description)
    found = problems(expected, result, clean_log)
    abnormal = result.run.exit_code != 0
    if abnormal != expected.died or (expected.died and case.kind != "throw"):
        found.append(f"exit code {result.run.exit_code}")
    return [*found, result.run.describe()] if found else []
