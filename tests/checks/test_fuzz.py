"""./run-tests --fuzz: what its runner counts, and that every target has what it needs."""

from __future__ import annotations

import sys

import pytest

import tree

sys.path.insert(0, str(tree.ROOT / "tests"))

from runner import fuzz  # noqa: E402

GOOD = "INFO: ...\nstat::number_of_executed_units: 12345\nstat::peak_rss_mb: 40\n"


@pytest.mark.parametrize("code, output, executions, failed", [
    (0, GOOD, 12345, False), (77, GOOD, 12345, True), (0, "nothing was run", 0, True),
    (None, "", 0, True)])
def test_fuzzer_has_passed_only_when_it_ended_well_and_ran_something(code, output, executions,
                                                                     failed):
    result = fuzz.outcome("echo", code, output)
    assert (result.executions, bool(result.failure)) == (executions, failed)


def test_fuzzer_that_breaks_leaves_its_input_and_counts_as_failed(tmp_path, monkeypatch):
    monkeypatch.setattr(fuzz, "INPUTS", tmp_path)
    monkeypatch.setattr(fuzz, "CORPUS", tmp_path / "corpus")
    program = tmp_path / "fuzz-echo"
    program.write_text('#!/bin/sh\nfor a; do case $a in -artifact_prefix=*) '
                       'echo x >"${a#*=}crash-1";; esac; done\nexit 77\n')
    program.chmod(0o755)
    assert fuzz.fuzz("echo", 1, programs=tmp_path).failure.startswith("ended with exit code 77")
    assert (tmp_path / "found" / "echo" / "crash-1").exists()


def test_every_target_has_seeds():
    assert fuzz.targets()
    seeded = {path.name for path in (tree.ROOT / "tests" / "fuzz" / "seeds").iterdir()}
    assert seeded == set(fuzz.targets())
