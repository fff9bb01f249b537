"""Components that refuse, return nothing or return what nobody asked for: the run ends with the
text of the step."""

from __future__ import annotations

import pytest

from harness.job import OPENED, PROCESSING, SAVED, SPECIFICATION

TITLE = b"Value of metadata 'Title' set to 'x'\r\n"
ACTIONS = ("-META", "Title", "x")

# One row for each way in which a failure reaches the run; what each call's failure means, the unit
# tests say.
FAILURES = [  # operation of the plan, what happens to it, the text, the steps before
    ("KernelAdmin.CreateInstance", "result E_FAIL", b"Couldn't load KV Kernel", PROCESSING),
    ("KernelAdmin.OpenProject", "null", b"Can't open project", PROCESSING),
    ("Archive.Projects", "variant array-bstr-1", b"No project in source zip", PROCESSING),
    ("KernelProject.Load", 'error E_FAIL "The project is locked."',
     b"ERROR loading project: The project is locked.", PROCESSING + SPECIFICATION),
    ("MetadataItem.SetValue", "result E_FAIL", b"Can't set value of metadata: Title", OPENED),
    ("Configuration.Open", 'raise E_FAIL "The component: 100% refused."',
     b"The component: 100% refused.", PROCESSING),
    ("Archive.AddProject", "result 0xA0041234", b"0xA0041234", OPENED + TITLE),
]


@pytest.mark.parametrize("operation, what, text, steps", FAILURES,
                         ids=[f"{operation} {what}" for operation, what, _, _ in FAILURES])
def test_step_that_fails_ends_the_run_with_its_text(job, operation, what, text, steps):
    job(*ACTIONS, faults=f"{operation} 1 {what}")
    job.check_failed(text, steps)


def test_component_that_misses_its_time_delays_the_run_and_nothing_else(job):
    job(*ACTIONS, faults="KernelProject.Load 1 sleep 700")
    job.check_succeeded(OPENED, TITLE, SAVED)
    assert (job.run.ended - job.run.started).total_seconds() >= 0.7
