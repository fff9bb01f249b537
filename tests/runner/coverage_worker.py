"""pytest plugin: the programs that a worker starts keep their profiles apart from other workers'."""

from __future__ import annotations

import os

from .coverage import profile_folder


def pytest_configure(config):
    worker = os.environ.get("PYTEST_XDIST_WORKER", "master")
    os.environ["GCOV_PREFIX"] = profile_folder(f"system-{worker}")
