"""The project's specification: found, checked and loaded in the order of its class."""

from __future__ import annotations

import re

import pytest

from harness.job import LOADED, PROCESSING, SAVED, SPECIFICATION
from harness.projects import Project
from harness.registry import REG_EXPAND_SZ, Value, text

TITLE = b"Value of metadata 'Title' set to 'x'\r\n"
ACTIONS = ("-META", "Title", "x")
ABORTING = b"Can't load specification - aborting..."
STORE = ("installation", "data", "Morvenit", "KVProductFamily", "IPCCFG")

HANDLERS = '<handlers><handler platform="x64">zt-handlers.dll</handler></handlers>'


class Specification:
    """A specification of the test's own in the installation's store."""

    def __init__(self, job, name: str = "Own"):
        self.job = job
        self.name = name
        self.folder = job.sandbox.path(*STORE, name)
        self.file = job.sandbox.path(*STORE, name + ".cfg")
        for part in ("RefTables.xml", "RefTables.bak", "Templates.xml", "Declarations.xml",
                     "Types.xml", "Metadata.xml"):
            self.put(part, "<library/>")

    def put(self, name: str, content: str) -> None:
        path = self.folder / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(content, encoding="utf-8")

    def describe(self, content: str) -> None:
        self.file.write_text(content, encoding="utf-8")

    def of_class(self, name: str, content: str = "", version: str = "1") -> "Specification":
        self.describe(f'<configuration lang="en" class="{name}"><version>{version}</version>'
                      f"{HANDLERS}{content}</configuration>")
        return self

    @property
    def windows_file(self) -> bytes:
        return self.job.sandbox.windows(*STORE, self.name + ".cfg").encode()

    def process(self, *actions: str, version: str = "1", language: str = "en", faults: str = ""):
        project = Project(specification=self.name, version=version, language=language)
        return self.job(*(actions or ACTIONS), project=project, faults=faults)

    def loads(self) -> list[str]:
        """Library files that the kernel was given: operation, file below the specification."""
        folder = self.job.sandbox.windows(*STORE, self.name).replace("\\", "\\\\") + r"\\"
        found = []
        for call in self.job.calls(" Load"):
            match = re.search(r' (Load\w+) \[\d+\] \("(.*)"\) -> (\w+)', call)
            if match:
                found.append(f"{match[1]} {match[2].replace(folder, '')} {match[3]}")
        return found


@pytest.fixture
def own(job):
    return Specification(job)


def loaded(name: str = "Own", version: str = "1") -> bytes:
    return PROCESSING + f"Specification '{name}', v.{version} loaded\r\n".encode() + LOADED + TITLE \
        + SAVED


def check_two(job, first: bytes, *steps: bytes) -> None:
    """Two reports: why the specification is not loaded, and that the run ends."""
    first = first.replace(b"\n", b"\r\n")
    assert job.log == b"".join(steps) + b"ERROR: " + first + b"ERROR: " + ABORTING
    assert job.sandbox.read("exchange", "job_ERROR") == first + ABORTING
    assert job.untouched


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


# ---- what is loaded, by class ----

@pytest.mark.parametrize("name, loads", [
    ("IPC", ["LoadRefTables RefTables.xml S_OK", "LoadRefTablesBackup RefTables.bak S_OK",
             "LoadCommandTemplates Templates.xml S_OK", "LoadMetadata Metadata.xml S_OK"]),
    ("PROC", ["LoadDeclarations Declarations.xml S_OK", "LoadTypes Types.xml S_OK",
              "LoadMetadata Metadata.xml S_OK"]),
    ("TRNG", ["LoadDeclarations Declarations.xml S_OK", "LoadTypes Types.xml S_OK",
              "LoadMetadata Metadata.xml S_OK"]),
    ("TEXT", ["LoadMetadata Metadata.xml S_OK"]),
    ("ILLUS", ["LoadRefTables RefTables.xml S_OK", "LoadRefTablesBackup RefTables.bak S_OK",
               "LoadMetadata Metadata.xml S_OK"]),
])
def test_library_files_are_loaded_in_the_order_of_the_class(own, name, loads):
    own.of_class(name)
    own.process()
    assert own.loads() == loads
    own.job.check_succeeded(loaded())


# ---- reference tables and their backup ----

def test_backup_is_deleted_once_it_was_loaded(own):
    own.of_class("IPC").process()
    assert not (own.folder / "RefTables.bak").exists()


@pytest.mark.parametrize("operation, loads", [
    ("LoadRefTables", ["LoadRefTables RefTables.xml E_FAIL"]),
    ("LoadRefTablesBackup", ["LoadRefTables RefTables.xml S_OK",
                             "LoadRefTablesBackup RefTables.bak E_FAIL"])])
def test_backup_stays_when_it_or_the_tables_were_not_loaded(own, operation, loads):
    own.of_class("ILLUS").process(faults=f"KernelAdmin.{operation} 1 result E_FAIL")
    assert (own.folder / "RefTables.bak").exists()
    assert own.loads() == [*loads, "LoadMetadata Metadata.xml S_OK"]
    own.job.check_succeeded(loaded())


def test_backup_that_is_not_there_is_not_loaded(own):
    (own.folder / "RefTables.bak").unlink()
    own.of_class("ILLUS").process()
    assert own.loads() == ["LoadRefTables RefTables.xml S_OK", "LoadMetadata Metadata.xml S_OK"]


# ---- library files that do not load ----

def check_goes_on(own, text: bytes) -> None:
    steps = loaded()
    assert own.job.log.startswith(PROCESSING + (b"ERROR: " + text if text else b"")
                                  + steps.removeprefix(PROCESSING))
    assert own.job.stored.metadata["Title"] == "x"


@pytest.mark.parametrize("file, text", [
    ("Declarations.xml", b"Couldn't load library of declarations."),
    ("Types.xml", b"Couldn't load library of types."),
    ("Metadata.xml", b"")])
@pytest.mark.parametrize("content", ["<open>", None], ids=["damaged", "missing"])
def test_library_that_does_not_load_is_told_and_the_run_goes_on(own, file, text, content):
    own.of_class("PROC")
    if content is None:
        (own.folder / file).unlink()
    else:
        own.put(file, content)
    own.process()
    check_goes_on(own, text)


@pytest.mark.parametrize("code, text", [
    ("0x80400001", b"Error loading IPC DPL command templates."),
    ("0xA0400001", b""), ("0x80410001", b""), ("E_FAIL", b""), ("0x80070002", b"")])
def test_command_templates_are_told_only_for_failures_of_their_own_facility(own, code, text):
    own.of_class("IPC").process(faults=f"KernelAdmin.LoadCommandTemplates 1 result {code}")
    if code == "0xA0400001":  # its facility bits are the templates' with one more set outside them
        text = b"Error loading IPC DPL command templates."
    check_goes_on(own, text)


# ---- handlers ----

def test_handler_library_registers_its_classes_before_they_are_created(own):
    own.of_class("IPC", "<seqnoHandler>KVDev.SequenceNumbers</seqnoHandler>"
                        "<notifyHandler>KVDev.Notifications</notifyHandler>").process()
    assert [call for call in own.job.calls("Kernel [") if "Get" not in call] == [
        call for call in own.job.calls("Kernel [put")]
    assert len(own.job.calls("CreateInstance")) >= 4
    own.job.check_succeeded(loaded())


def test_handlers_of_other_platforms_and_missing_libraries_are_passed_over(own):
    own.describe('<configuration class="TEXT"><version>1</version><handlers>'
                 '<handler>a.dll</handler><handler platform="x86">b.dll</handler>'
                 '<handler platform="X64">c.dll</handler><handler platform="x64">d.dll</handler>'
                 "</handlers></configuration>")
    own.process()
    own.job.check_succeeded(loaded())


@pytest.mark.parametrize("element", ["seqnoHandler", "notifyHandler"])
@pytest.mark.parametrize("text", ["", "KVDev.NotThere", "no ProgID at all"])
def test_handler_that_cannot_be_created_is_passed_over(own, element, text):
    own.of_class("ILLUS", f"<{element}>{text}</{element}>").process()
    own.job.check_succeeded(loaded())


def test_document_handler_reaches_the_attached_document(own):
    own.job.sandbox.path("exchange", "New.xml").write_bytes(b"<new/>")
    own.of_class("TEXT", "<docHandler>Own Handler</docHandler>").process("-DM", "New.xml")
    assert own.job.calls(" AttachDocument ")[0].endswith(', "Own Handler") -> S_OK')


@pytest.mark.parametrize("name", ["IPC", "ILLUS"])
def test_classes_without_documents_read_neither_document_nor_export_handler(own, name):
    own.job.sandbox.path("exchange", "New.xml").write_bytes(b"<new/>")
    own.of_class(name, "<docHandler>H</docHandler><exportHandler>KVDev.Export</exportHandler>")
    own.process("-DM", "New.xml")
    assert own.job.calls(" AttachDocument ")[0].endswith(', null) -> S_OK')
    assert not own.job.calls("SampleExport")


def test_export_handler_loads_its_script_from_the_specification(own):
    own.put("en/My.script", "first=A\nsecond=B\n")
    own.of_class("TEXT", '<exportHandler script="My.script">KVDev.Export</exportHandler>').process()
    script = own.job.sandbox.windows(*STORE, "Own", "en", "My.script").replace("\\", "\\\\")
    assert [call.split(" -> ")[0] for call in own.job.calls(" LoadScript ")] == [
        f'SampleExport#1 LoadScript [3] ("{script}")']


def test_export_handler_whose_script_does_not_load_is_dropped_silently(own):
    own.of_class("TEXT", '<exportHandler script="Missing.script">KVDev.Export</exportHandler>')
    own.process()
    assert len(own.job.calls(" LoadScript ")) == 1
    own.job.check_succeeded(loaded())


@pytest.mark.parametrize("plan", ["SampleExport.CreateInstance 1 result E_FAIL",
                                  "SampleExport.CreateInstance 1 null"])
def test_export_handler_that_cannot_be_created_is_passed_over(own, plan):
    own.of_class("TEXT", '<exportHandler script="x">KVDev.Export</exportHandler>')
    own.process(faults=plan)
    assert not own.job.calls(" LoadScript ")
    own.job.check_succeeded(loaded())


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
