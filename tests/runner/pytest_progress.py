"""pytest plugin: keeps the file that the option --progress names at "N M", N of M tests done."""

from __future__ import annotations

from pathlib import Path

import pytest


def pytest_addoption(parser):
    parser.addoption("--progress", default="", help="file for the count of tests done, and of all")


def pytest_configure(config):
    if config.getoption("--progress") and not hasattr(config, "workerinput"):
        config.pluginmanager.register(_Counter(Path(config.getoption("--progress"))))


class _Counter:
    def __init__(self, file: Path):
        self._file = file
        self._done: set[str] = set()
        self._total = 0

    def pytest_collection_finish(self, session):
        self._total = len(session.items)

    @pytest.hookimpl(optionalhook=True)
    def pytest_xdist_node_collection_finished(self, ids):
        self._total = len(ids)

    def pytest_runtest_logreport(self, report):
        if report.when == "teardown":
            self._done.add(report.nodeid)
            self._file.write_text(f"{len(self._done)} {self._total}")
