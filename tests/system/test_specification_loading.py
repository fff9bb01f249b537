"""What the kernel loads of a specification, and the handlers that it names."""

from __future__ import annotations

import pytest

from harness.job import PROCESSING
from harness.specification import STORE, loaded


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

KERNEL_HANDLERS = ("<seqnoHandler>KVDev.SequenceNumbers</seqnoHandler>"
                   "<notifyHandler>KVDev.Notifications</notifyHandler>")


@pytest.fixture
def unregistered(own):
    """A specification whose handlers no run has registered yet."""
    own.job.sandbox.delete_registry_keys(
        r"Software\Classes\KVDev.SequenceNumbers", r"Software\Classes\KVDev.Notifications")
    return own


@pytest.mark.parametrize("name", ["IPC", "ILLUS"])
def test_handlers_are_registered_created_and_given_the_kernel_before_the_tables(unregistered, name):
    unregistered.of_class(name, KERNEL_HANDLERS).process()
    assert unregistered.job.calls("SequenceNumbers", "Notifications", " LoadRefTables ")[:6] == [
        "SequenceNumbers CreateInstance (IUnknown) -> S_OK, SequenceNumbers#1",
        'SequenceNumbers#1 GetIDsOfNames ("Kernel") -> S_OK, 1',
        "SequenceNumbers#1 PutRefKernel [putref 1] (object) -> S_OK",
        "Notifications CreateInstance (IUnknown) -> S_OK, Notifications#1",
        'Notifications#1 GetIDsOfNames ("Kernel") -> S_OK, 1',
        "Notifications#1 PutRefKernel [putref 1] (object) -> S_OK"]
    assert [load.split()[0] for load in unregistered.loads()][0] == "LoadRefTables"
    unregistered.job.check_succeeded(loaded())


@pytest.mark.parametrize("name", ["PROC", "TRNG", "TEXT"])
def test_classes_with_documents_create_no_kernel_handlers(own, name):
    own.of_class(name, KERNEL_HANDLERS).process()
    assert own.job.calls("SequenceNumbers", "Notifications") == []


@pytest.mark.parametrize("attribute", ["", 'platform=""', 'platform="x86"', 'platform="X64"',
                                       'platform="x64 "'])
def test_handler_library_of_another_platform_is_not_registered(unregistered, attribute):
    unregistered.describe('<configuration class="ILLUS"><version>1</version><handlers><handler '
                          f"{attribute}>zt-handlers.dll</handler></handlers>{KERNEL_HANDLERS}"
                          "</configuration>")
    unregistered.process()
    assert unregistered.job.calls("SequenceNumbers", "Notifications") == []
    unregistered.job.check_succeeded(loaded())


@pytest.mark.parametrize("content", [None, b"", b"no library"], ids=["missing", "empty", "text"])
def test_handler_library_that_cannot_be_loaded_is_passed_over(unregistered, content):
    library = unregistered.folder / "zt-handlers.dll"
    library.unlink() if content is None else library.write_bytes(content)
    unregistered.of_class("ILLUS", KERNEL_HANDLERS).process()
    assert unregistered.job.calls("SequenceNumbers", "Notifications") == []
    unregistered.job.check_succeeded(loaded())


@pytest.mark.parametrize("plan, last", [
    ("SequenceNumbers.GetIDsOfNames 1 result DISP_E_UNKNOWNNAME",
     'SequenceNumbers#1 GetIDsOfNames ("Kernel") -> DISP_E_UNKNOWNNAME'),
    ("SequenceNumbers.PutRefKernel 1 raise E_FAIL\nSequenceNumbers.PutKernel 1 raise E_FAIL",
     "SequenceNumbers#1 PutKernel [put 1] (object) -> DISP_E_EXCEPTION")])
def test_handler_that_does_not_take_the_kernel_is_kept_silently(own, plan, last):
    own.of_class("ILLUS", KERNEL_HANDLERS).process(faults=plan)
    assert own.job.calls("SequenceNumbers#1 ")[-1] == last
    own.job.check_succeeded(loaded())


@pytest.mark.parametrize("element", ["seqnoHandler", "notifyHandler"])
@pytest.mark.parametrize("text", ["", "KVDev.NotThere", "no ProgID at all"])
def test_handler_that_cannot_be_created_is_passed_over(own, element, text):
    own.of_class("ILLUS", f"<{element}>{text}</{element}>").process()
    own.job.check_succeeded(loaded())


def test_handlers_are_released_when_the_kernel_is_shut_down_after_a_failure(own):
    own.of_class("IPC", KERNEL_HANDLERS).process("-META", "Unknown", "x")
    assert own.job.shut_down == ["KernelAdmin#1 CloseProjects [42] (-1) -> S_OK",
                                 "KernelAdmin#1 ShutDown [17] (-1) -> S_OK",
                                 "Configuration#1 Close [method 13] (true) -> S_OK"]
    assert {"live zt-components.dll: 0", "live zt-handlers.dll: 0"} <= set(own.job.run.trace)


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
    own.put("en/My.script", "export-script 1\nfirst = A\n")
    own.of_class("TEXT", '<exportHandler script="My.script">KVDev.Export</exportHandler>').process()
    script = own.job.sandbox.windows(*STORE, "Own", "en", "My.script").replace("\\", "\\\\")
    assert own.job.calls(" LoadScript ") == [
        f'SampleExport#1 LoadScript [3] ("{script}") -> S_OK']


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
