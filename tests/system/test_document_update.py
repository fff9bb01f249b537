"""-UPDATEDOC: the project's document, generated where it is missing, goes through the hidden editor
control and back into the archive."""

from __future__ import annotations

from xml.etree import ElementTree

import pytest

from harness import registry
from harness.documents import MARKED, change_marks, document_in, paragraphs
from harness.update import UPDATING, Update

UPDATED = b"Document in the project was updated\r\n"
UP_TO_DATE = b"Document is up-to-date and has not been modified\r\n"
SAVED = b"Project saved to KVP file\r\n"

NOT_INITIALISED = b"ERROR initializing KVXMed"
NOT_LOADED = (b"Error updating document - document could not be loaded into XMED. "
              b"It can be invalid.")
NOT_SAVED = b"Error updating document"

# The lookups of the control's names, counted; the plan makes the n-th of them fail.
KERNEL, HAS_DOCUMENT, UNSAVED, XMED, SAVE = 1, 2, 3, 4, 5


@pytest.fixture
def update(installed):
    return Update(installed)


@pytest.fixture(params=["no class", "{00000000-1111-2222-3333-444444444444}"])
def without_editor_class(installed, request):
    """The control's name stands for nothing, or for a class that nobody has registered."""
    key = r"Software\Classes\KV.XMedCtrl.1\CLSID"
    installed.set_registry(registry.text(key, "", request.param))
    yield
    installed.set_registry(registry.text(key, "", "{4C1DE9A7-63B0-4F2A-8E57-2190BC6D0F38}"))


# ---- the document ----

def test_document_without_unsaved_changes_is_left_alone(update):
    update(title="")
    assert update.log_of_update.startswith(UPDATING + UP_TO_DATE + b"SUCCESS: ")
    assert update.commands == []
    assert not any("PutCmdSave" in line for line in update.run.trace)
    assert update.archive.read_bytes() == update.before
    assert update.succeeded


def test_changed_document_is_saved_with_its_change_marks(update):
    update.make()
    assert change_marks(document_in(update.archive)) == 6
    update()
    assert update.log_of_update.startswith(UPDATING + UPDATED + SAVED)
    assert update.commands == ["OnSaveToCMS"]
    assert update.document.get("title") == "Boiler pump"
    assert update.document.get("saves") == "1"
    assert update.document.get("savedRevision") == "A"
    assert change_marks(update.document) == 6
    assert paragraphs(update.document) == paragraphs(ElementTree.fromstring(MARKED.encode()))
    assert update.succeeded


def test_change_marks_are_removed_first_for_a_new_revision(update):
    update("-NR")
    assert update.log_of_update.startswith(
        UPDATING + UPDATED + b"New revision of the project started\r\n" + SAVED)
    assert update.commands == ["cmd_removeChangeMarks", "OnSaveToCMS"]
    assert change_marks(update.document) == 0
    assert paragraphs(update.document) == ["Switch off and lock the motor.",
                                           "Drain the housing.", "Take eight screws."]
    assert update.document.get("saves") == "1"


def test_saves_are_counted_from_run_to_run(update):
    update()
    update(title="Drain pump")
    assert update.document.get("saves") == "2"
    assert update.document.get("title") == "Drain pump"


def test_document_is_not_touched_without_updatedoc(update):
    update("-NR", update=False)
    assert b"document" not in update.log_of_update.lower()
    assert not any("Editor" in line for line in update.run.trace)
    assert change_marks(update.document) == 6


def test_document_name_of_other_letters_is_logged_by_the_runtimes_rule(update, installed):
    # The log's character set has "\xe4", but not the Greek letter.
    attached = installed.path("work", "B\xe4r \u03a9.xml")
    attached.write_text(MARKED, encoding="utf-8")
    update("-DM", installed.windows("work", "B\xe4r \u03a9.xml"))
    assert b"Updating document 'B\xe4r ?.xml'\r\n" + UPDATED in update.log_of_update
    assert document_in(update.archive, "B\xe4r \u03a9.xml").get("saves") == "1"


# ---- a missing document ----

def test_missing_document_is_generated_by_the_specifications_handler(update):
    update.make(None)
    update(title="")
    assert update.log_of_update.startswith(
        b"Document 'Pump.xml' was generated in the project\r\n"
        b"Updating document 'Pump.xml'\r\n" + UP_TO_DATE + SAVED)
    generated = document_in(update.archive, "Pump.xml")
    assert generated.get("generator") == "KVDev.Manual"
    assert generated.get("title") == "Feed pump"
    assert [line.split(" -> ")[0] for line in update.calls("KernelProject")
            if "Document" in line][:3] == [
                'KernelProject#1 GetDocumentName [36] ()',
                'KernelProject#1 GenerateDocument [61] ("KVDev.Manual")',
                'KernelProject#1 GetDocumentName [36] ()']


# ---- the calls ----


def test_editor_is_hosted_in_an_invisible_window_of_sixteen_pixels(update):
    update()
    host = next(line for line in update.run.trace if line.startswith("program GetWindow"))
    # The system adds 0x04000000 to every window that overlaps others.
    assert host == ("program GetWindow () -> S_OK, style 0x84000000, extended style 0x00000000, "
                    'class style 0x00000000, (0,0)-(16,16), title "", invisible')
    control = next(line for line in update.run.trace if line.startswith("window of EditorControl"))
    assert control == ("window of EditorControl#1: style 0x50000000, extended style 0x00000000, "
                       'class style 0x00000000, (0,0)-(16,16), id 0, title "", invisible')


# ---- the control cannot be had ----

@pytest.mark.parametrize("fault", [
    "CreateInstance 1 result E_OUTOFMEMORY",
    "CreateInstance 1 error E_FAIL no licence",
    "CreateInstance 1 null",
    "SetClientSite 1 result E_FAIL",
    "InitNew 1 result E_FAIL",
    "QueryInterface * result E_NOINTERFACE",
])
def test_control_that_cannot_be_created_fails_the_run(update, fault):
    update(faults=f"EditorControl.{fault}")
    update.check_failed_with(NOT_INITIALISED)
    assert not any("PutRefKernel" in line for line in update.run.trace)


def test_control_of_an_unknown_class_fails_the_run(update, without_editor_class):
    update()
    update.check_failed_with(NOT_INITIALISED)


@pytest.mark.parametrize("fault", ["SetExtent 1 result E_FAIL", "InPlaceDeactivate 1 result E_FAIL",
                                   "Close 1 result E_FAIL"])
def test_control_that_refuses_what_is_not_needed_is_used_all_the_same(update, fault):
    update(faults=f"EditorControl.{fault}")
    assert update.log_of_update.startswith(UPDATING + UPDATED)
    update.check_control_is_gone()


def test_control_that_gives_nothing_to_be_run_is_used_all_the_same(update):
    # Asked for before: itself, its place as an object, its state in a stream.
    update(faults="EditorControl.QueryInterface 4 null")
    assert update.log_of_update.startswith(UPDATING + UPDATED)
    assert update.succeeded


def test_control_that_does_not_activate_is_used_all_the_same(update):
    update(faults="EditorControl.DoVerb 1 result E_FAIL")
    assert update.log_of_update.startswith(UPDATING + UPDATED)
    assert not any("InPlaceDeactivate" in line for line in update.run.trace)
    assert update.document.get("saves") == "1"


# ---- "cmdHasDocument" ----

@pytest.mark.parametrize("document", [
    "", "no XML", "<document>", "<document></dokument>", MARKED[:200], "<document>&unknown;</document>",
])
def test_document_that_is_not_well_formed_fails_the_run(update, document):
    update.make(document or "\n")
    update()
    update.check_failed_with(NOT_LOADED)


# ---- "cmdSave", put ----

@pytest.mark.parametrize("fault", [
    f"GetIDsOfNames {SAVE} result DISP_E_UNKNOWNNAME",
    "PutCmdSave 1 result E_ACCESSDENIED",
    "PutCmdSave 1 raise E_FAIL the disk is full",
])
def test_document_that_cannot_be_saved_fails_the_run(update, fault):
    update(faults=f"EditorControl.{fault}")
    update.check_failed_with(NOT_SAVED)
    assert update.commands == ["OnSaveToCMS"]
