"""The configuration file: where projects and publications go."""

from __future__ import annotations

import sys

import pytest

from harness.job import OPENED, PROCESSING, SAVED
from harness.registry import Value, text

TITLE = b"Value of metadata 'Title' set to 'x'\r\n"
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


def test_missing_file_is_told_with_its_path(job):
    job.sandbox.path(*FILE).unlink()
    job(*ACTIONS)
    job.check_failed(b"Configuration file does not exist: " + path_of(job), PROCESSING)


@pytest.mark.parametrize("content", [b"", b"no xml", b"<configuration>", b"\0\0\0\0",
                                     b"<a/>" * 2, b"<?xml version='1.0' encoding='nothing'?><a/>"],
                         ids=["empty", "text", "open", "zeros", "two roots", "unknown encoding"])
def test_file_that_is_no_xml_is_told_with_its_path(job, content):
    job.sandbox.path(*FILE).write_bytes(content)
    job(*ACTIONS)
    job.check_failed(b"Invalid configuration file format: " + path_of(job), PROCESSING)


def test_path_that_names_a_folder_is_of_the_wrong_format(job):
    job.sandbox.path(*FILE).unlink()
    job.sandbox.path(*FILE).mkdir()
    job(*ACTIONS)
    job.check_failed(b"Invalid configuration file format: " + path_of(job), PROCESSING)


@pytest.mark.parametrize("content", ["<other/>", "<configuration/>",
                                     "<x><configuration><proj-location>y</proj-location>"
                                     "</configuration></x>"])
def test_file_without_a_projects_location_gives_the_kernel_none(job, content):
    job.sandbox.path(*FILE).write_text(content)
    job(*ACTIONS)
    assert job.calls(" SetProjectsLocation ") == [
        "KernelAdmin#1 SetProjectsLocation [64] (null) -> S_FALSE"]
    job.check_succeeded(OPENED, TITLE, SAVED)


def test_locations_are_taken_as_they_stand(job):
    job.sandbox.path(*FILE).write_text(
        "<configuration><proj-location>%TEMP%\\a  b<b>bold</b>;x</proj-location></configuration>")
    job(*ACTIONS, faults="KernelAdmin.SetProjectsLocation 1 result S_FALSE")
    assert job.calls(" SetProjectsLocation ") == [
        'KernelAdmin#1 SetProjectsLocation [64] ("%TEMP%\\\\a  bbold;x") -> S_FALSE']


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


def test_missing_xml_parser_is_told_as_a_configuration_that_is_not_loaded(without_parser):
    without_parser(*ACTIONS)
    without_parser.check_failed(b"Couldn't load configuration", PROCESSING)
