"""The calls of one run, read from a trace in which every call has a "fault" line.

A plan that ends with `*.* * sleep 0` makes each call write one line when it begins and one when it
returns. So the lines nest, the calls can be numbered as the plan counts them, and a call that the
program makes can be distinguished from one that a component makes inside it."""

from __future__ import annotations

import re
from dataclasses import dataclass, field

_CALL = re.compile(r"(\w+)(?:#\d+)? (\w+)(?: \[([^\]]*)\])? \((.*)\) -> (\w+)(?:, (.*))?$", re.S)

# Of the results that a trace spells with a name, those that mean success.
_SUCCESSES = ("S_OK", "S_FALSE")


@dataclass
class Call:
    number: int  # as `*.* number` in a plan counts it
    label: str  # "KernelAdmin#1"
    operation: str  # "KernelAdmin.OpenProject"
    depth: int  # 0: the program's own call
    key: str = ""  # "66", "get 9"; empty for the platform's own methods
    arguments: str = ""
    result: str = ""  # empty: the call never returned
    outputs: str = ""
    callbacks: list[str] = field(default_factory=list)  # what it called of the program's, by name

    @property
    def returned(self) -> bool:
        return self.result != ""

    @property
    def succeeded(self) -> bool:
        return self.result in _SUCCESSES

    @property
    def text(self) -> str:
        """The text that the call gave, also in a VARIANT; empty where it gave none."""
        match = re.fullmatch(r'(?:VT_BSTR )?"(.*)"', self.outputs, re.S)
        if not match:
            return ""
        return re.sub(r"\\(.)", lambda m: {"n": "\n", "r": "\r"}.get(m[1], m[1]), match[1])

    @property
    def gave_object(self) -> bool:
        return self.succeeded and bool(re.match(r"(VT_DISPATCH )?\w+(#\d+)?$", self.outputs)) \
            and self.outputs.split(" ")[-1] not in ("null", "empty", "VT_NULL")

    @property
    def gives_variant(self) -> bool:
        """Whether the call has a result that a component may give in any type."""
        return self.key.startswith(("get ", "method ")) and self.outputs != "" \
            or self.operation == "MetadataItem.GetValue"


def read_calls(trace: list[str]) -> list[Call]:
    """All calls, in the order in which they began."""
    calls: list[Call] = []
    open_calls: list[Call] = []
    for line in trace:
        if line.startswith("fault "):
            _, label, operation = line.split(" ")
            call = Call(len(calls) + 1, label, f"{label.split('#')[0]}.{operation}",
                        len(open_calls))
            calls.append(call)
            open_calls.append(call)
        elif line.startswith("program ") and open_calls:
            open_calls[-1].callbacks.append(line.split(" ")[1])
        elif open_calls and line.startswith(_beginning(open_calls[-1])):
            _complete(open_calls.pop(), line)
    return calls


def _beginning(call: Call) -> str:
    return f"{call.label} {call.operation.split('.')[1]} "


def _complete(call: Call, line: str) -> None:
    match = _CALL.match(line)
    assert match, f"a trace line of unknown form: {line}"
    call.key, call.arguments = match[3] or "", match[4]
    call.result, call.outputs = match[5], match[6] or ""
