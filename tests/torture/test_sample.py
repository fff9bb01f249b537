"""A fixed sample of the sweep; ./run-tests --torture runs all of it."""

from __future__ import annotations

import random

import pytest

from torture import cases, hostile, kill
from torture.shapes import SHAPES

CASES_A_SHAPE = 24
KILLS_A_SHAPE = 4
MOMENTS = 20
DAMAGED = 20


def failures(found: dict[str, list[str]]) -> str:
    return "\n".join(f"{name}: " + "\n".join(problems) for name, problems in found.items()
                     if problems)


@pytest.mark.parametrize("shape", SHAPES, ids=lambda shape: shape.name)
def test_spoiled_calls_end_as_the_rules_say(bench, shape):
    calls = cases.clean_calls(bench, shape)
    chosen = random.Random(shape.name).sample(cases.cases_of(shape, calls), CASES_A_SHAPE)
    assert not failures({f"calls/{case}": cases.run_case(bench, case) for case in chosen})


@pytest.mark.parametrize("shape", SHAPES, ids=lambda shape: shape.name)
def test_process_that_ends_in_a_call_leaves_everything_in_order(bench, shape):
    calls = cases.clean_calls(bench, shape)
    chosen = random.Random(shape.name).sample(calls, KILLS_A_SHAPE)
    assert not failures({f"kill/{shape.name}:{call.number}":
                         kill.kill_at_call(bench, shape, call.number) for call in chosen})


def test_process_that_ends_at_any_moment_leaves_everything_in_order(bench):
    assert not failures({f"moment/{number}": kill.kill_at_moment(bench, number)
                         for number in range(MOMENTS)})


@pytest.mark.parametrize("part", hostile.PARTS)
def test_damaged_file_ends_the_run_in_order(bench, part):
    assert not failures({f"{part}/{number}": hostile.run(bench, part, number)
                         for number in range(DAMAGED)})


# ---- the instruments: what they are to find is found ----

def test_text_that_is_never_freed_is_found(bench):
    run = bench.run(SHAPES[0], "KernelProject.Load 1 leak\n").run
    assert [line for line in run.trace if line.startswith("allocations: ")] \
        == ["allocations: 1 (32 bytes)"]


def test_step_that_is_left_out_is_found(bench):
    shape = SHAPES[0]
    calls = [call for call in cases.clean_calls(bench, shape)
             if call.operation != "KernelAdmin.SetSaveMode"]
    with pytest.raises(cases.Disagreement, match="not KernelAdmin.SetSaveMode"):
        cases.Model(shape, bench.paths(shape), cases.Flow(calls, lambda number: False, "")).follow()
