"""The project's specification: found, checked against the project's needs, chosen by language."""

from __future__ import annotations

import pytest

from harness.job import LOADED, PROCESSING, SAVED, SPECIFICATION
from harness.projects import Project
from harness.registry import REG_EXPAND_SZ, Value, text
from harness.specification import ACTIONS, STORE, TITLE, check_two, loaded


# ---- finding it ----

def test_missing_description_file_is_told_with_its_path(own):
    own.process()
    check_two(own.job, b"Specification cfg-file does not exist: " + own.windows_file, PROCESSING)


def test_missing_folder_is_told_over_several_lines(own):
    own.of_class("TEXT")
    for file in own.folder.iterdir():
        file.unlink()
    own.folder.rmdir()
    own.process()
    folder = own.job.sandbox.windows(*STORE, "Own").encode()
    check_two(own.job, b"Specification Own is not valid.\nData folder does not exist:\n\n" + folder,
              PROCESSING)


@pytest.mark.parametrize("content", ["", "no xml", "<configuration>", "<other/>"],
                         ids=["empty", "text", "not well-formed", "without a configuration"])
def test_description_file_without_a_configuration_is_told_with_its_path(own, content):
    own.describe(content)
    own.process()
    check_two(own.job, b"Invalid specification cfg-file format: " + own.windows_file, PROCESSING)


def test_description_file_that_is_a_folder_is_told_with_its_path(own):
    own.file.mkdir()
    own.process()
    check_two(own.job, b"Invalid specification cfg-file format: " + own.windows_file, PROCESSING)


@pytest.mark.parametrize("content", [
    '<configuration><version>1</version></configuration>',
    '<configuration class="text"><version>1</version></configuration>',
    '<configuration class="OTHER"><version>1</version></configuration>'])
def test_class_that_is_none_of_the_five_is_told(own, content):
    own.describe(content)
    own.process()
    check_two(own.job, b"Project specification class unknown", PROCESSING)


def test_specification_named_by_hostile_characters_is_not_found(job):
    job(*ACTIONS, project=Project(specification="100%s'<x>"))
    first = (b"Specification cfg-file does not exist: "
             + job.sandbox.windows(*STORE).encode() + b"\\100%s'<x>.cfg")
    check_two(job, first, PROCESSING)


# ---- version ----

@pytest.mark.parametrize("required, current", [
    ("10", "9"), ("3", "2"), ("1", ""), ("7x", "6"), (" 2", "1"), ("1", "none")])
def test_requirement_above_the_installed_version_is_told(own, required, current):
    own.of_class("TEXT", version=current)
    own.process(version=required)
    check_two(own.job, b"Project requires specification version " + required.encode()
              + b". Current version is " + current.encode()
              + b". Please install the required version of specification.", PROCESSING)


def test_missing_version_element_reads_as_nothing(own):
    own.describe('<configuration class="TEXT"/>')
    own.process(version="1")
    check_two(own.job, b"Project requires specification version 1. Current version is "
              b". Please install the required version of specification.", PROCESSING)


@pytest.mark.parametrize("required, current", [
    ("9", "10"), ("2a", "2"), ("", "1"), ("", ""), ("-5", "0"), ("3", "3")])
def test_requirement_that_is_met_passes(own, required, current):
    own.of_class("TEXT", version=current)
    own.process(version=required)
    own.job.check_succeeded(loaded(version=required))


def test_requirement_that_the_kernel_does_not_tell_passes(own):
    own.of_class("TEXT")
    own.process(version="99", faults="KernelProject.GetSpecificationVersion 1 result E_FAIL")
    own.job.check_succeeded(loaded(version=""))


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


def test_language_without_a_configuration_below_another_root_is_told(own):
    own.describe(TWO)
    own.process(language="fr")
    check_two(own.job, b"Invalid specification cfg-file format: " + own.windows_file, PROCESSING)


@pytest.mark.parametrize("language", ["de\"", "'de'", 'en" or "1"="1', "]"])
def test_hostile_language_selects_the_root(own, language):
    own.describe(NESTED)
    own.process(language=language)
    assert product(own.job) == ["127"]


def test_project_without_a_language_takes_the_configurations(own):
    own.describe(NESTED)
    own.process(language="")
    assert own.job.calls(" PutLanguage ") == ['KernelProject#1 PutLanguage [65] ("en") -> S_OK']
    assert own.job.stored.index["language"] == "en"


def test_project_keeps_the_language_that_it_has(own):
    own.describe(NESTED)
    own.process(language="fr")
    assert own.job.calls(" PutLanguage ") == ['KernelProject#1 PutLanguage [65] ("fr") -> S_OK']


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


def test_empty_data_folder_is_taken_as_it_is(job):
    job.sandbox.set_registry(Value(r"Software\Morvenit", "ZeltorDataFolder", 1, b""))
    job(*ACTIONS)
    check_two(job, rb"Specification cfg-file does not exist: "
                   rb"\Morvenit\KVProductFamily\IPCCFG\Manual.cfg", PROCESSING)


@pytest.mark.parametrize("type, data", [
    (1, ("x" * 300 + "\0").encode("utf-16-le")), (1, "C:\\unterminated".encode("utf-16-le")),
    (1, b"odd"), (4, b"\1\0\0\0"), (3, b"\0\0")],
    ids=["too long", "unterminated", "odd", "number", "binary"])
def test_data_folder_that_is_no_text_gives_the_common_one(job, type, data):
    job.sandbox.set_registry(Value(r"Software\Morvenit", "ZeltorDataFolder", type, data))
    job(*ACTIONS)
    check_two(job, rb"Specification cfg-file does not exist: "
                   rb"C:\ProgramData\Morvenit\KVProductFamily\IPCCFG\Manual.cfg", PROCESSING)


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
