"""A fixed sample of the sweep; ./run-tests --torture runs all of it."""

from __future__ import annotations

import copy
import random

import pytest

from torture import cases, hostile, kill
from torture.expectation import Expectation
from torture.scenarios import SCENARIOS

CASES_A_SCENARIO = 24
KILLS_A_SCENARIO = 4
MOMENTS = 20
DAMAGED = 20


def failures(found: dict[str, list[str]]) -> str:
    return "\n".join(f"{name}: " + "\n".join(problems) for name, problems in found.items()
                     if problems)


@pytest.mark.parametrize("scenario", SCENARIOS, ids=lambda scenario: scenario.name)
def test_injected_fault_ends_as_the_rules_say(bench, scenario):
    calls = cases.clean_calls(bench, scenario)
    chosen = random.Random(scenario.name).sample(cases.cases_of(scenario, calls), CASES_A_SCENARIO)
    assert not failures({f"calls/{case}": cases.run_case(bench, case) for case in chosen})


@pytest.mark.parametrize("scenario", SCENARIOS, ids=lambda scenario: scenario.name)
def test_process_that_ends_in_a_call_leaves_everything_in_order(bench, scenario):
    calls = cases.clean_calls(bench, scenario)
    chosen = random.Random(scenario.name).sample(calls, KILLS_A_SCENARIO)
    assert not failures({f"kill/{scenario.name}:{call.number}":
                         kill.kill_at_call(bench, scenario, call.number) for call in chosen})


def test_process_that_ends_at_any_moment_leaves_everything_in_order(bench):
    assert not failures({f"moment/{number}": kill.kill_at_moment(bench, number)
                         for number in range(MOMENTS)})


@pytest.mark.parametrize("part", hostile.PARTS)
def test_damaged_file_ends_the_run_in_order(bench, part):
    assert not failures({f"{part}/{number}": hostile.run(bench, part, number)
                         for number in range(DAMAGED)})


# ---- the instruments: what they are to find is found ----

def test_text_that_is_never_freed_is_found(bench):
    run = bench.run(SCENARIOS[0], "KernelProject.Load 1 leak\n").run
    assert [line for line in run.trace if line.startswith("allocations: ")] \
        == ["allocations: 1 (32 bytes)"]


def test_step_that_is_left_out_is_found(bench):
    scenario = SCENARIOS[0]
    calls = cases.clean_calls(bench, scenario)
    fewer = [call for call in calls if call.operation != "KernelAdmin.SetSaveMode"]
    found = Expectation(scenario, fewer, calls).problems
    assert len(found) == 1 and "in place of ['KernelAdmin.SetSaveMode'" in found[0]


def test_call_behind_a_failure_is_found(bench):
    scenario = SCENARIOS[0]
    calls = copy.deepcopy(cases.clean_calls(bench, scenario))
    failing = next(call for call in calls if call.operation == "KernelProject.Load")
    failing.result = "E_FAIL"
    found = Expectation(scenario, calls, calls).problems
    assert "behind the failure of KernelProject.Load came KernelProject.GetMetadata" in found
