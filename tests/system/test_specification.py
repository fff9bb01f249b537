"""The project's specification: found, checked against the project's needs, chosen by language."""

from __future__ import annotations

import pytest

from harness.job import LOADED, PROCESSING, SAVED, SPECIFICATION
from harness.projects import Project
from harness.registry import REG_EXPAND_SZ, text
from harness.specification import ACTIONS, STORE, TITLE, check_two


# ---- finding it ----

def test_missing_description_file_is_reported_with_its_path(own):
    own.process()
    check_two(own.job, b"Specification cfg-file does not exist: " + own.windows_file, PROCESSING)


@pytest.mark.parametrize("content", ["", "no xml", "<configuration>", "<other/>"],
                         ids=["empty", "text", "not well-formed", "without a configuration"])
def test_description_file_without_a_configuration_is_reported_with_its_path(own, content):
    own.describe(content)
    own.process()
    check_two(own.job, b"Invalid specification cfg-file format: " + own.windows_file, PROCESSING)


def test_description_file_that_is_a_folder_is_reported_with_its_path(own):
    own.file.mkdir()
    own.process()
    check_two(own.job, b"Invalid specification cfg-file format: " + own.windows_file, PROCESSING)


def test_specification_named_by_hostile_characters_is_not_found(job):
    job(*ACTIONS, project=Project(specification="100%s'<x>"))
    first = (b"Specification cfg-file does not exist: "
             + job.sandbox.windows(*STORE).encode() + b"\\100%s'<x>.cfg")
    check_two(job, first, PROCESSING)


# ---- version ----

@pytest.mark.parametrize("required, current", [
    ("10", "9"), ("3", "2"), ("1", ""), ("7x", "6"), (" 2", "1"), ("1", "none")])
def test_requirement_above_the_installed_version_is_reported(own, required, current):
    own.of_class("TEXT", version=current)
    own.process(version=required)
    check_two(own.job, b"Project requires specification version " + required.encode()
              + b". Current version is " + current.encode()
              + b". Please install the required version of specification.", PROCESSING)


# ---- language ----

TWO = ('<configurations><configuration lang="en" class="TEXT"><version>1</version></configuration>'
       '<group><configuration lang="de" class="PROC"><version>1</version></configuration></group>'
       '</configurations>')
NESTED = ('<configuration lang="en" class="TEXT"><version>1</version>'
          '<configuration lang="de" class="PROC"><version>1</version></configuration>'
          '</configuration>')


def product(job) -> list[str]:
    return [call.split("(")[1].split(")")[0] for call in job.calls(" SelectProduct ")]


@pytest.mark.parametrize("content, language, code", [
    (TWO, "en", "127"), (TWO, "de", "11"), (NESTED, "de", "11"), (NESTED, "fr", "127"),
    (NESTED, "DE", "127"), (NESTED, "", "127")])
def test_configuration_is_chosen_by_the_projects_language(own, content, language, code):
    own.describe(content)
    own.process(language=language)
    assert product(own.job) == [code]


def test_language_without_a_configuration_below_another_root_is_reported(own):
    own.describe(TWO)
    own.process(language="fr")
    check_two(own.job, b"Invalid specification cfg-file format: " + own.windows_file, PROCESSING)


def test_library_file_is_taken_from_the_languages_folder_where_it_is_there(own):
    own.of_class("PROC")
    own.put("en/Types.xml", "<library/>")
    own.process()
    assert own.loads() == ["LoadDeclarations Declarations.xml S_OK",
                           r"LoadTypes en\\Types.xml S_OK", "LoadMetadata Metadata.xml S_OK"]


# ---- the data folder ----

def test_data_folder_of_the_registry_is_not_expanded(job):
    job.sandbox.set_registry(text(r"Software\Morvenit", "ZeltorDataFolder", r"%NOWHERE%\data",
                                  type=REG_EXPAND_SZ))
    job(*ACTIONS)
    check_two(job, rb"Specification cfg-file does not exist: "
                   rb"%NOWHERE%\data\Morvenit\KVProductFamily\IPCCFG\Manual.cfg", PROCESSING)


@pytest.mark.parametrize("path, product", [
    ("{exe}", LOADED), ('"{exe}" /arguments "more" x', b"Project loaded by  v.\r\n"),
    ('"{exe}" /arguments', LOADED), ("", b"Project loaded by  v.\r\n"),
    ('"', b"Project loaded by  v.\r\n"), (r"C:\missing.exe", b"Project loaded by  v.\r\n")])
def test_product_executable_is_what_the_registry_names(job, path, product):
    executable = job.sandbox.windows("installation", "product", "ZTProduct.exe")
    job.sandbox.set_registry(text(r"Software\Morvenit\ZeltorCompiler", "InstallPathLite",
                                  path.format(exe=executable)))
    job(*ACTIONS)
    job.check_succeeded(PROCESSING, SPECIFICATION, product, TITLE, SAVED)
