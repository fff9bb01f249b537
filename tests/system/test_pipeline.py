"""The main job: from the archive through the kernel and back."""

from __future__ import annotations

import pytest

from harness.job import OPENED, PROCESSING, SAVED, SPECIFICATION
from harness.projects import Project


def test_every_component_call_of_the_main_job_is_made_in_its_order(job):
    job.sandbox.path("exchange", "New.xml").write_bytes(b"<document/>")
    job("-META", "Title", "New", "-PROJECTNAME", "Two", "-EDIT", "KVDev.SampleEdit", "Count",
        "-DM", "New.xml", "-NR")
    installation = job.sandbox.windows("installation").replace("\\", "\\\\")
    manual = installation + r"\\data\\Morvenit\\KVProductFamily\\IPCCFG\\Manual"
    archive = job.sandbox.windows("exchange", "Pump.kvp").replace("\\", "\\\\")
    folder = f'KernelAdmin#1 GetSpecificationFolder [89] () -> S_OK, "{manual}"'
    document = job.sandbox.windows("exchange", "New.xml").replace("\\", "\\\\")
    assert [call for call in job.calls() if "CreateInstance" not in call
            and "GetIDsOfNames" not in call] == [
        "KernelAdmin#1 SetSite [3] (object) -> S_OK",
        'KernelAdmin#1 PutClientName [49] ("ZeltorAuthor_Invisible") -> S_OK',
        'Administration#1 OpenConfiguration [method 6] ("Pump") -> S_OK, VT_DISPATCH Configuration#1',
        'Configuration#1 ClientName [put 11] ("ZeltorAuthor_Invisible") -> S_OK',
        "Configuration#1 Open [method 12] () -> S_OK",
        "Configuration#1 ConfigurationFile [get 10] () -> S_OK, VT_BSTR "
        f'"{installation}\\\\configuration.xml"',
        f'KernelAdmin#1 SetProjectsLocation [64] ("{installation}\\\\work\\\\Projects") -> S_OK',
        f'Administration#1 OpenArchive [method 2] ("{archive}", 2) -> S_OK, VT_DISPATCH Archive#1',
        "Archive#1 Projects [get 1] () -> S_OK, array(2 of type 8)",
        f'Configuration#1 WorkFolder [get 5] () -> S_OK, VT_BSTR "{installation}\\\\work"',
        f'Archive#1 ExtractProject [method 2] ("Pump", "{installation}\\\\work\\\\Representations")'
        " -> S_OK, VT_DISPATCH ExtractedProject#1",
        "Configuration#1 ImportProject [method 15] (ExtractedProject#1) -> S_OK",
        "Configuration#1 ImportedProjects [get 9] () -> S_OK, array(2 of type 8)",
        'KernelAdmin#1 OpenProject [66] (-1, "P0001/new/A") -> S_OK, KernelProject#1',
        'KernelProject#1 GetSpecificationName [50] () -> S_OK, "Manual"',
        'KernelProject#1 GetSpecificationVersion [52] () -> S_OK, "3"',
        'KernelProject#1 GetLanguage [64] () -> S_OK, "en"',
        f'KernelAdmin#1 PutSpecificationFolder [90] ("{manual}") -> S_OK',
        folder,
        folder,
        f'KernelAdmin#1 LoadDeclarations [34] ("{manual}\\\\Declarations.xml") -> S_OK',
        folder,
        f'KernelAdmin#1 LoadTypes [33] ("{manual}\\\\Types.xml") -> S_OK',
        folder,
        f'SampleExport#1 LoadScript [3] ("{manual}\\\\Export.script") -> S_OK',
        folder,
        f'KernelAdmin#1 LoadMetadata [86] ("{manual}\\\\Metadata.xml") -> S_OK',
        'KernelProject#1 PutLanguage [65] ("en") -> S_OK',
        "KernelAdmin#1 SelectProduct [97] (11) -> S_OK",
        "KernelProject#1 Load [15] (0) -> S_OK",
        "KernelProject#1 GetMetadata [44] () -> S_OK, MetadataCollection#1",
        'KernelProject#1 GetDeclaration [35] ("Title") -> S_OK, MetadataDeclaration#1',
        "MetadataCollection#1 FindItem [7] (VT_DISPATCH MetadataDeclaration#1) -> S_OK, MetadataItem#1",
        'MetadataItem#1 GetValue [12] () -> S_OK, VT_BSTR "Feed pump"',
        'MetadataItem#1 SetValue [9] ("New") -> S_OK',
        'KernelProject#1 Rename [22] ("Two") -> S_OK',
        "SampleEdit#1 Count [method 6] (object) -> S_OK, VT_I4 1",
        f'KernelProject#1 AttachDocument [59] ("{document}", "KVDev.Manual") -> S_OK',
        "KernelProject#1 StartNewRevision [49] () -> S_OK",
        "KernelAdmin#1 SetSaveMode [35] (1) -> S_OK",
        f'Administration#1 OpenArchive [method 2] ("{archive}", 0) -> S_OK, VT_DISPATCH Archive#2',
        'KernelProject#1 GetConfigurationKey [54] () -> S_OK, "P0001"',
        'KernelProject#1 GetStoredName [7] () -> S_OK, "Pump"',
        'Configuration#1 ExportProject [method 14] ("P0001", -1) -> S_OK, VT_DISPATCH ExportedProject#1',
        f'Configuration#1 WorkFolder [get 5] () -> S_OK, VT_BSTR "{installation}\\\\work"',
        'Archive#2 AddProject [method 3] (ExportedProject#1, "Pump", '
        f'"{installation}\\\\work\\\\Representations") -> S_OK',
        "KernelAdmin#1 CloseProjects [42] (-1) -> S_OK",
        "KernelAdmin#1 ShutDown [17] (-1) -> S_OK",
        "Configuration#1 Close [method 13] (true) -> S_OK",
    ]


def test_main_job_rewrites_the_archive_and_keeps_what_it_did_not_change(job):
    job.sandbox.path("exchange", "New.xml").write_bytes(b"<document>new</document>")
    job("-META", "Title", "New", "-ADDMETA", "Author", "Me", "-PROJECTNAME", "Two",
        "-EDIT", "KVDev.SampleEdit", "Touch", "-DM", "New.xml", "-NR")
    job.check_succeeded(
        OPENED, b"Value of metadata 'Author' set to 'Me'\r\n",
        b"Value of metadata 'Title' set to 'New'\r\n", b"Project name changed to 'Two'\r\n",
        b"Edit handler (ProgID: 'KVDev.SampleEdit', Method: 'Touch') succeeded\r\n",
        b"Document 'New.xml' attached to the project\r\n",
        b"New revision of the project started\r\n", SAVED)
    stored = job.stored
    assert stored.index == {"id": "P0001", "name": "Two", "storedName": "Pump", "revision": "B",
                            "specification": "Manual", "version": "3", "language": "en"}
    assert stored.metadata == {"Title": "New", "Status": "draft", "Author": "Me",
                               "EditedBy": "KVDev.SampleEdit"}
    assert stored.main == "New.xml"
    assert stored.documents == {"Pump.xml": b"<document/>", "New.xml": b"<document>new</document>"}
    assert stored.representations == {"pump.svg": b"<svg/>"}


def test_archive_written_is_one_that_can_be_processed_again(job):
    job("-META", "Title", "One", "-NR")
    job("-META", "Title", "Two", "-NR")
    job.check_succeeded(OPENED, b"Value of metadata 'Title' set to 'Two'\r\n",
                        b"New revision of the project started\r\n", SAVED)
    assert (job.stored.metadata["Title"], job.stored.index["revision"]) == ("Two", "C")


def test_open_path_ends_behind_new_without_a_revision(job):
    job("-META", "Title", "x", project=Project(revision=""))
    assert job.calls(" OpenProject ") == [
        'KernelAdmin#1 OpenProject [66] (-1, "P0001/new/") -> S_OK, KernelProject#1']
    job.check_succeeded(OPENED, b"Value of metadata 'Title' set to 'x'\r\n", SAVED)


# ---- metadata ----

def test_added_metadata_leaves_an_item_with_a_value_alone(job):
    job("-ADDMETA", "Title", "Other")
    job.check_succeeded(OPENED)
    assert job.untouched


def test_value_that_the_item_has_already_is_silent_and_saves_nothing(job):
    job("-META", "Title", "Feed pump")
    job.check_succeeded(OPENED)
    assert 'MetadataItem#1 SetValue [9] ("Feed pump") -> S_FALSE' in job.calls()
    assert job.untouched


def test_added_metadata_sets_an_item_that_has_no_value(job):
    job("-ADDMETA", "Author", "Me")
    job.check_succeeded(OPENED, b"Value of metadata 'Author' set to 'Me'\r\n", SAVED)
    assert job.stored.metadata["Author"] == "Me"


def test_undeclared_metadata_is_a_failure(job):
    job("-META", "Unknown", "x")
    job.check_failed(b"Can't create declaration for metadata: Unknown", OPENED)


def test_metadata_applied_before_a_failure_is_not_saved(job):
    job("-META", "Author", "Me", "-META", "Unknown", "x")
    job.check_failed(b"Can't create declaration for metadata: Unknown", OPENED,
                     b"Value of metadata 'Author' set to 'Me'\r\n")


@pytest.mark.parametrize("name, value", [
    ("100%s %d", "50% of %n"), ("Name 'quoted' \"twice\"", "'\""), ("<Tag> & more", "a < b & c"),
])
def test_hostile_metadata_arrives_as_it_was_given(job, name, value):
    job("-META", name, value, project=Project(declarations=(name,)))
    job.check_succeeded(OPENED, f"Value of metadata '{name}' set to '{value}'\r\n".encode(), SAVED)
    assert job.stored.metadata[name] == value


def test_metadata_in_other_scripts_arrives_whole_and_is_logged_with_question_marks(job):
    job("-META", "Название", "Насос 泵 🙂 end", project=Project(declarations=("Название",)))
    job.check_succeeded(OPENED, b"Value of metadata '????????' set to '????? ? ? end'\r\n", SAVED)
    assert job.stored.metadata["Название"] == "Насос 泵 🙂 end"


def test_value_of_thirty_thousand_characters_arrives_whole(job):
    value = "0123456789" * 3000
    job("-META", "Title", value)
    job.check_succeeded(OPENED, b"Value of metadata 'Title' set to '" + value.encode() + b"'\r\n",
                        SAVED)
    assert job.stored.metadata["Title"] == value


# ---- rename ----

def test_refused_name_is_silent_and_the_run_goes_on(job):
    job("-PROJECTNAME", "a/b", "-META", "Author", "Me")
    assert job.calls(" Rename ") == ['KernelProject#1 Rename [22] ("a/b") -> E_INVALIDARG']
    job.check_succeeded(OPENED, b"Value of metadata 'Author' set to 'Me'\r\n", SAVED)
    assert job.stored.index["name"] == "Pump"


def test_name_that_the_project_has_already_changes_nothing(job):
    job("-PROJECTNAME", "Pump")
    job.check_succeeded(OPENED)
    assert job.untouched


# ---- edit handler ----

EDIT = ("-EDIT", "KVDev.SampleEdit")


def test_edit_handler_gets_the_kernel_admin_and_changes_the_project(job):
    job(*EDIT, "Touch")
    job.check_succeeded(OPENED, b"Edit handler (ProgID: 'KVDev.SampleEdit', Method: 'Touch')"
                                b" succeeded\r\n", SAVED)
    assert job.stored.metadata["EditedBy"] == "KVDev.SampleEdit"


@pytest.mark.parametrize("method", ["Refuse", "Count"])
def test_any_boolean_and_any_other_non_zero_value_is_a_success(job, method):
    job(*EDIT, method)
    job.check_succeeded(OPENED, b"Edit handler (ProgID: 'KVDev.SampleEdit', Method: '%s')"
                                b" succeeded\r\n" % method.encode(), SAVED)


@pytest.mark.parametrize("method, description", [
    ("Nothing", b""), ("Zero", b""), ("RaiseSilently", b""),
    ("Raise", b"The sample handler raised this."),
])
def test_method_that_fails_or_returns_nothing_ends_the_run(job, method, description):
    job(*EDIT, method)
    job.check_failed(b"Error calling EDIT method '%s'. " % method.encode() + description, OPENED)


def test_method_that_the_handler_lacks_ends_the_run(job):
    job(*EDIT, "Missing")
    job.check_failed(b"EDIT method not found: Missing", OPENED)


def test_handler_that_does_not_exist_ends_the_run(job):
    job("-EDIT", "KVDev.NotThere", "Touch")
    job.check_failed(b"Can't create edit handler: KVDev.NotThere", OPENED)


@pytest.mark.parametrize("plan", ["SampleEdit.CreateInstance 1 result E_FAIL",
                                  "SampleEdit.CreateInstance 1 null"])
def test_handler_that_cannot_be_created_ends_the_run(job, plan):
    job(*EDIT, "Touch", faults=plan)
    job.check_failed(b"Can't create edit handler: KVDev.SampleEdit", OPENED)


# ---- document ----

def test_document_without_a_folder_is_taken_from_the_exchange_folder(job):
    job.sandbox.path("exchange", "New.xml").write_bytes(b"<new/>")
    job("-DM", "New.xml")
    job.check_succeeded(OPENED, b"Document 'New.xml' attached to the project\r\n", SAVED)
    assert job.stored.documents["New.xml"] == b"<new/>"


def test_document_with_a_folder_is_taken_from_there(job):
    job.sandbox.path("work", "New.xml").write_bytes(b"<new/>")
    path = job.sandbox.windows("work", "New.xml")
    job("-DM", path)
    job.check_succeeded(OPENED, f"Document '{path}' attached to the project\r\n".encode(), SAVED)
    assert job.stored.documents["New.xml"] == b"<new/>"


def test_document_that_is_missing_ends_the_run_with_its_full_path(job):
    job("-DM", "Missing.xml")
    job.check_failed(b"Error attaching document: "
                     + job.sandbox.windows("exchange", "Missing.xml").encode(), OPENED)


# ---- revision, saving ----

def test_new_revision_is_saved_without_any_other_change(job):
    job("-NR", "-PROJECTNAME", "Pump")
    job.check_succeeded(OPENED, b"New revision of the project started\r\n", SAVED)
    assert job.stored.index["revision"] == "B"


def test_archive_that_cannot_be_written_anew_is_a_failure_that_leaves_the_old_one(job):
    job("-NR", "-PROJECTNAME", "Pump", faults="Administration.OpenArchive 2 null")
    job.check_failed(b"Can't create KVP-file", OPENED, b"New revision of the project started\r\n")


def test_kernel_is_shut_down_in_its_order_after_a_failure(job):
    job("-META", "Unknown", "x")
    assert job.shut_down == ["KernelAdmin#1 CloseProjects [42] (-1) -> S_OK",
                             "KernelAdmin#1 ShutDown [17] (-1) -> S_OK",
                             "Configuration#1 Close [method 13] (true) -> S_OK"]


def test_failure_of_the_shut_down_changes_no_outcome(job):
    job("-META", "Title", "x", faults='Configuration.Close 1 raise E_FAIL "It stays open."')
    job.check_succeeded(OPENED, b"Value of metadata 'Title' set to 'x'\r\n", SAVED)


# ---- what the archive holds ----

@pytest.mark.parametrize("content", [b"", b"no zip at all", b"PK\x03\x04",
                                     b"PK\x05\x06" + b"\0" * 18],
                         ids=["empty", "text", "cut", "zip without entries"])
def test_archive_that_holds_no_project_is_a_failure(job, content):
    job.archive.write_bytes(content)
    job.on_what_is_there("-META", "Title", "x")
    job.check_failed(b"No project in source zip", PROCESSING)


def test_archive_that_is_cut_off_is_a_failure(job):
    Project().write(job.archive)
    job.archive.write_bytes(job.archive.read_bytes()[:-40])
    job.on_what_is_there("-META", "Title", "x")
    job.check_failed(b"No project in source zip", PROCESSING)


def test_archive_that_is_missing_is_a_failure(job):
    job.on_what_is_there("-META", "Title", "x")
    job.check_failed(b"No project in source zip", PROCESSING)
    assert not job.archive.exists()


def test_archive_that_is_a_folder_is_a_failure(job):
    job.archive.mkdir()
    job.on_what_is_there("-META", "Title", "x")
    job.check_failed(b"No project in source zip", PROCESSING)


def test_damaged_project_is_a_failure_with_the_kernels_description(job):
    Project().write(job.archive, project=b"<project><open></project>")
    job.on_what_is_there("-META", "Title", "x")
    start = PROCESSING + SPECIFICATION + b"ERROR: ERROR loading project: project.xml is damaged (line "
    assert job.log.startswith(start)
    assert job.untouched


def test_project_without_a_specification_is_a_failure(job):
    job("-META", "Title", "x", project=Project(specification=""))
    job.check_failed(b"Project specification is not defined", PROCESSING)


def test_paths_of_three_hundred_characters_are_failures_and_not_crashes(job):
    name = "x" * 300
    run = job.sandbox.run("-IN", job.sandbox.windows("exchange") + f"\\{name}.kvp", "-M", "job",
                          "-META", "Title", "x")
    assert run.stdout == b""
    assert job.sandbox.read("exchange", "job_ERROR") == b"No project in source zip"


# ---- product ----

@pytest.mark.parametrize("specification, code", [
    ("Catalog", 13), ("Manual", 11), ("Learning", 3), ("Text", 127), ("Illustrator", 141)])
def test_product_is_selected_by_the_class_of_the_specification(job, specification, code):
    job("-META", "Title", "x", project=Project(specification=specification, version="1"))
    assert job.calls(" SelectProduct ") == [f"KernelAdmin#1 SelectProduct [97] ({code}) -> S_OK"]
    assert job.log.endswith(b"successfully at <time>\r\n")
