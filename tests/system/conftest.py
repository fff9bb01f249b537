"""Fixtures of the system tests. Each xdist worker has a machine (a Wine prefix) of its own, so its
tests own the machine's registry while they run."""

from __future__ import annotations

import os
import re
import sys
from pathlib import Path

import pytest

sys.path.insert(0, str(Path(__file__).resolve().parent))

from harness.job import Job  # noqa: E402
from harness.link import Link  # noqa: E402
from harness.machine import this_machine  # noqa: E402
from harness.process import Starter  # noqa: E402
from harness.publishing import Publishing  # noqa: E402
from harness.sandbox import DEVSETUP, Sandbox  # noqa: E402
from harness.specification import Specification  # noqa: E402


@pytest.fixture(scope="session")
def machine():
    machine = this_machine(os.environ.get("PYTEST_XDIST_WORKER", "master"))
    machine.start()
    yield machine
    machine.stop()


@pytest.fixture
def sandbox(machine, request):
    """A test without an installation: its runs do no project work."""
    sandbox = Sandbox(machine, re.sub(r"\W", "_", request.node.name)[:32])
    request.node.sandbox = sandbox
    yield sandbox
    if getattr(request.node, "failed", False):
        return  # its folder stays, to be looked at
    sandbox.check_nothing_left()
    sandbox.remove()


@pytest.fixture(scope="session")
def registered_components(machine, tmp_path_factory):
    """Registers the components, and again when it is called."""
    capture = tmp_path_factory.mktemp("register")

    def register() -> None:
        run = Starter(machine, capture).run(str(DEVSETUP), ["--register"], folder=capture)
        assert run.exit_code == 0, run.describe()

    register()
    return register


@pytest.fixture
def installed(registered_components, sandbox):
    """A test with a development installation of its own."""
    sandbox.install()
    return sandbox


@pytest.fixture
def job(installed):
    """Runs on the project Pump, with an installation of the test's own."""
    return Job(installed)


@pytest.fixture
def link(sandbox):
    return Link(sandbox)


@pytest.fixture
def own(job):
    """A specification "Own" and runs on a project that asks for it."""
    return Specification(job)


@pytest.fixture
def publish(job):
    """Publications of a project, with an installation of the test's own."""
    return Publishing(job)


@pytest.fixture
def unknown_3d_component(installed, registered_components):
    """The programmatic identifier of the 3D component is not registered."""
    installed.delete_registry_keys(r"Software\Classes\KV.3D.1")
    yield
    registered_components()


@pytest.hookimpl(hookwrapper=True)
def pytest_runtest_makereport(item, call):
    report = (yield).get_result()
    sandbox = getattr(item, "sandbox", None)
    if not report.failed or sandbox is None:
        return
    item.failed = True
    for number, run in enumerate(sandbox.runs, 1):
        report.sections.append((f"run {number}", run.describe()))
    for file in sorted(sandbox.folder.rglob("*.log")):
        report.sections.append((str(file.relative_to(sandbox.folder)), repr(file.read_bytes())))
    report.sections.append(("its folder", str(sandbox.folder)))
