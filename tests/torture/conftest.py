"""A bench for each worker: a Wine prefix with an installation, used by one run after another."""

from __future__ import annotations

import os

import pytest

from torture.bench import Bench


@pytest.fixture(scope="session")
def bench():
    with Bench(os.environ.get("PYTEST_XDIST_WORKER", "master")) as bench:
        yield bench
