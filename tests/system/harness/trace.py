"""Reading the trace that the development installation's components write."""

from __future__ import annotations


def objects_left(trace: list[str]) -> list[str]:
    """Closing lines of a trace that count objects still alive: "live <kind> <count>"."""
    return [line for line in trace
            if line.startswith("live") and line.split()[-1:] not in ([], ["0"])]
