"""Reading the trace that the development installation's components write."""

from __future__ import annotations


def problems(trace: list[str], ended_normally: bool) -> list[str]:
    """What a trace shows that must never be, whatever the test is about.

    At the end of the process each component library writes "live LIBRARY: 0", or the objects that
    were never released in place of the 0; a use that no contract allows is a line of its own."""
    found = [line for line in trace if line.startswith("misuse: ")]
    closing = [line for line in trace if line.startswith("live ")]
    found += [line for line in closing if not line.endswith(": 0")]
    if trace and not closing and ended_normally:
        found.append("the trace has no closing count of live objects")
    return found
