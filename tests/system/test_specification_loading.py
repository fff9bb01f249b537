"""What the kernel loads of a specification, and the handlers that it names."""

from __future__ import annotations

import pytest

from harness.job import PROCESSING
from harness.specification import STORE, loaded


# ---- reference tables and their backup ----

def test_backup_is_deleted_once_it_was_loaded(own):
    own.of_class("IPC").process()
    assert not (own.folder / "RefTables.bak").exists()


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
def test_library_that_does_not_load_is_reported_and_the_run_goes_on(own, file, text, content):
    own.of_class("PROC")
    if content is None:
        (own.folder / file).unlink()
    else:
        own.put(file, content)
    own.process()
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


@pytest.mark.parametrize("content", [None, b"", b"no library"], ids=["missing", "empty", "text"])
def test_handler_library_that_cannot_be_loaded_is_ignored(unregistered, content):
    library = unregistered.folder / "zt-handlers.dll"
    library.unlink() if content is None else library.write_bytes(content)
    unregistered.of_class("ILLUS", KERNEL_HANDLERS).process()
    assert unregistered.job.calls("SequenceNumbers", "Notifications") == []
    unregistered.job.check_succeeded(loaded())


def test_handlers_are_released_when_the_kernel_is_shut_down_after_a_failure(own):
    own.of_class("IPC", KERNEL_HANDLERS).process("-META", "Unknown", "x")
    assert own.job.shut_down == ["KernelAdmin#1 CloseProjects [42] (-1) -> S_OK",
                                 "KernelAdmin#1 ShutDown [17] (-1) -> S_OK",
                                 "Configuration#1 Close [method 13] (true) -> S_OK"]
    assert {"live zt-components.dll: 0", "live zt-handlers.dll: 0"} <= set(own.job.run.trace)


def test_export_handler_loads_its_script_from_the_specification(own):
    own.put("en/My.script", "export-script 1\nfirst = A\n")
    own.of_class("TEXT", '<exportHandler script="My.script">KVDev.Export</exportHandler>').process()
    script = own.job.sandbox.windows(*STORE, "Own", "en", "My.script").replace("\\", "\\\\")
    assert own.job.calls(" LoadScript ") == [
        f'SampleExport#1 LoadScript [3] ("{script}") -> S_OK']
