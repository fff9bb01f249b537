"""The configuration file: where projects and publications go."""

from __future__ import annotations

import sys

import pytest

from harness.job import PROCESSING
from harness.registry import Value, text

ACTIONS = ("-META", "Title", "x")
FILE = ("installation", "configuration.xml")


PARSER = r"Software\Classes\CLSID\{2933BF90-7B36-11D2-B20E-00C04F983E60}\InprocServer32"


@pytest.fixture
def without_parser(job):
    """The machine has no XML parser while the test runs."""
    if sys.platform == "win32":
        pytest.skip("the parser is the machine's own there")
    job.sandbox.set_registry(text(PARSER, "", r"C:\missing.dll"))
    yield job
    job.sandbox.set_registry(text(PARSER, "", r"C:\windows\system32\msxml.dll"))


def path_of(job) -> bytes:
    return job.sandbox.windows(*FILE).encode()


def test_missing_file_is_reported_with_its_path(job):
    job.sandbox.path(*FILE).unlink()
    job(*ACTIONS)
    job.check_failed(b"Configuration file does not exist: " + path_of(job), PROCESSING)


@pytest.mark.parametrize("content", [b"", b"no xml", b"<configuration>", b"\0\0\0\0",
                                     b"<a/>" * 2, b"<?xml version='1.0' encoding='nothing'?><a/>"],
                         ids=["empty", "text", "open", "zeros", "two roots", "unknown encoding"])
def test_file_that_is_no_xml_is_reported_with_its_path(job, content):
    job.sandbox.path(*FILE).write_bytes(content)
    job(*ACTIONS)
    job.check_failed(b"Invalid configuration file format: " + path_of(job), PROCESSING)


def test_location_that_the_kernel_refuses_ends_the_run(job):
    job.sandbox.path("installation", "file").write_bytes(b"")
    location = job.sandbox.windows("installation", "file")
    job.sandbox.path(*FILE).write_text(
        f"<configuration><proj-location>{location}</proj-location></configuration>")
    job(*ACTIONS)
    job.check_failed(b"Projects location cannot be set.", PROCESSING)


def test_path_that_the_registry_holds_wrongly_is_of_no_file(job):
    job.sandbox.set_registry(Value(r"Software\Morvenit\DevelopmentInstallation",
                                   "ConfigurationFile", 4, b"\1\0\0\0"))
    job(*ACTIONS)
    job.check_failed(b"Configuration file does not exist: ", PROCESSING)


def test_missing_xml_parser_is_reported_as_a_configuration_that_is_not_loaded(without_parser):
    without_parser(*ACTIONS)
    without_parser.check_failed(b"Couldn't load configuration", PROCESSING)
