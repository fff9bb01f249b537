"""The cases of the sweep: which call is spoiled, and how."""

from __future__ import annotations

from dataclasses import dataclass

from .bench import Bench
from .calls import Call, read_calls
from .checks import problems
from .flow import Disagreement, Flow
from .model import Model
from .shapes import BY_NAME, Shape

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
    shape: str
    number: int
    kind: str

    def __str__(self) -> str:
        return f"{self.shape}:{self.number}:{self.kind}"

    @staticmethod
    def parse(text: str) -> Case:
        shape, number, kind = text.split(":")
        return Case(shape, int(number), kind)

    @property
    def plan(self) -> str:
        what, onwards = KINDS[self.kind]
        return f"*.* {self.number}{'+' if onwards else ''} {what}\n"

    def is_faulted(self, number: int) -> bool:
        return number >= self.number if KINDS[self.kind][1] else number == self.number


def clean_calls(bench: Bench, shape: Shape) -> list[Call]:
    """The calls of an undisturbed run, which the model must agree with too."""
    result = bench.run(shape)
    calls = read_calls(result.run.trace)
    model = Model(shape, bench.paths(shape), Flow(calls, lambda number: False, "")).follow()
    found = problems(model, result)
    assert model.succeeded and not found, "\n".join([f"{shape.name}, undisturbed:", *found])
    return calls


def cases_of(shape: Shape, calls: list[Call]) -> list[Case]:
    return [Case(shape.name, call.number, kind) for call in calls for kind in KINDS
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
    shape = BY_NAME[case.shape]
    description = DESCRIPTION if case.kind == "error" else ""
    try:
        result = bench.run(shape, case.plan, exit_code=None)
        flow = Flow(read_calls(result.run.trace), case.is_faulted, description)
        model = Model(shape, bench.paths(shape), flow).follow()
    except Disagreement as error:
        return [str(error), result.run.describe()]
    except AssertionError as error:  # the run hung, or wrote what it must not
        return [str(error)]
    found = problems(model, result)
    abnormal = result.run.exit_code != 0
    if abnormal != model.died or (model.died and case.kind != "throw"):
        found.append(f"exit code {result.run.exit_code}")
    return [*found, result.run.describe()] if found else []
