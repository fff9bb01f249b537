"""Components that refuse, hand nothing over or hand over what nobody asked for: each such call gives
the text of its step, or is passed over where its result does not matter."""

from __future__ import annotations

import pytest

from harness.job import LOADED, OPENED, PROCESSING, SAVED, SPECIFICATION

TITLE = b"Value of metadata 'Title' set to 'x'\r\n"
ACTIONS = ("-META", "Title", "x")

# What an array of another form, or no array at all, looks like to who expects texts in two
# dimensions.
NO_TEXTS = ["empty", "variant null", "variant i4", "variant bstr", "variant array-i4",
            "variant array-bstr-1", "variant array-bstr-2-empty", "null"]

# operation of the plan, what happens to it, the text, the steps before
FAILURES = [
    ("KernelAdmin.CreateInstance", "result E_FAIL", b"Couldn't load KV Kernel", PROCESSING),
    ("KernelAdmin.CreateInstance", "null", b"Couldn't load KV Kernel", PROCESSING),
    ("Administration.CreateInstance", "result E_FAIL", b"Couldn't create KVAdmin", PROCESSING),
    ("Administration.CreateInstance", "null", b"Couldn't create KVAdmin", PROCESSING),
    ("KernelAdmin.SetProjectsLocation", "result E_ACCESSDENIED",
     b"Projects location cannot be set.", PROCESSING),
    ("Administration.OpenArchive", "null", b"No project in source zip", PROCESSING),
    *[("Archive.Projects", what, b"No project in source zip", PROCESSING) for what in NO_TEXTS],
    *[("Configuration.ImportedProjects", what,
       b"Project could not be imported into configuration", PROCESSING) for what in NO_TEXTS],
    ("KernelAdmin.OpenProject", "result E_FAIL", b"Can't open project", PROCESSING),
    ("KernelAdmin.OpenProject", "null", b"Can't open project", PROCESSING),
    ("KernelProject.GetSpecificationName", "result E_FAIL",
     b"Project specification is not defined", PROCESSING),
    ("KernelProject.GetSpecificationName", "null", b"Project specification is not defined",
     PROCESSING),
    ("KernelProject.GetSpecificationName", "empty", b"Project specification is not defined",
     PROCESSING),
    ("KernelProject.Load", 'error E_FAIL "The project is locked."',
     b"ERROR loading project: The project is locked.", PROCESSING + SPECIFICATION),
    ("KernelProject.Load", "result E_FAIL", b"ERROR loading project: ",
     PROCESSING + SPECIFICATION),
    ("KernelProject.GetDeclaration", "result E_FAIL",
     b"Can't create declaration for metadata: Title", OPENED),
    ("KernelProject.GetDeclaration", "null", b"Can't create declaration for metadata: Title",
     OPENED),
    ("MetadataItem.SetValue", "result E_FAIL", b"Can't set value of metadata: Title", OPENED),
]


@pytest.mark.parametrize("operation, what, text, steps", FAILURES,
                         ids=[f"{operation} {what}" for operation, what, _, _ in FAILURES])
def test_step_that_fails_ends_the_run_with_its_text(job, operation, what, text, steps):
    job(*ACTIONS, faults=f"{operation} 1 {what}")
    job.check_failed(text, steps)


@pytest.mark.parametrize("what", ["result E_FAIL", "null"])
def test_item_that_is_neither_found_nor_inserted_ends_the_run(job, what):
    job(*ACTIONS, faults=f"MetadataCollection.FindItem 1 null\n"
                         f"KernelProject.InsertMetadata 1 {what}")
    job.check_failed(b"Can't insert metadata: Title", OPENED)


@pytest.mark.parametrize("what", ["result E_FAIL", "null"])
def test_collection_that_is_not_handed_over_counts_as_one_without_items(job, what):
    job("-META", "Author", "Me", faults=f"KernelProject.GetMetadata 1 {what}")
    job.check_succeeded(OPENED, b"Value of metadata 'Author' set to 'Me'\r\n", SAVED)


def test_attaching_that_fails_ends_the_run_with_the_full_path(job):
    job.sandbox.path("exchange", "New.xml").write_bytes(b"<new/>")
    job("-DM", "New.xml", faults="KernelProject.AttachDocument 1 result E_FAIL")
    job.check_failed(b"Error attaching document: "
                     + job.sandbox.windows("exchange", "New.xml").encode(), OPENED)


# ---- automation: every failing call ends the run ----

AUTOMATION = [
    ("Administration.OpenConfiguration", 1, PROCESSING),
    ("Configuration.ClientName", 1, PROCESSING),
    ("Configuration.Open", 1, PROCESSING),
    ("Configuration.ConfigurationFile", 1, PROCESSING),
    ("Administration.OpenArchive", 1, PROCESSING),
    ("Archive.Projects", 1, PROCESSING),
    ("Configuration.WorkFolder", 1, PROCESSING),
    ("Archive.ExtractProject", 1, PROCESSING),
    ("Configuration.ImportProject", 1, PROCESSING),
    ("Configuration.ImportedProjects", 1, PROCESSING),
    ("Administration.OpenArchive", 2, OPENED + TITLE),
    ("Configuration.ExportProject", 1, OPENED + TITLE),
    ("Configuration.WorkFolder", 2, OPENED + TITLE),
    ("Archive.AddProject", 1, OPENED + TITLE),
]


@pytest.mark.parametrize("operation, number, steps", AUTOMATION,
                         ids=[f"{operation} {number}" for operation, number, _ in AUTOMATION])
def test_automation_call_that_raises_ends_the_run_with_the_components_description(
        job, operation, number, steps):
    job(*ACTIONS, faults=f'{operation} {number} raise E_FAIL "The component: 100% refused."')
    job.check_failed(b"The component: 100% refused.", steps)


@pytest.mark.parametrize("operation, number, steps", AUTOMATION,
                         ids=[f"{operation} {number}" for operation, number, _ in AUTOMATION])
def test_automation_call_that_fails_without_a_text_ends_the_run_with_its_code(
        job, operation, number, steps):
    job(*ACTIONS, faults=f"{operation} {number} result 0xA0041234")
    job.check_failed(b"0xA0041234", steps)


def test_description_longer_than_the_buffer_is_cut_to_1023_characters(job):
    job(*ACTIONS, faults=f'Configuration.Open 1 raise E_FAIL "{"d" * 3000}"')
    job.check_failed(b"d" * 1023, PROCESSING)


# ---- early-bound calls whose result does not matter ----

@pytest.mark.parametrize("operation", [
    "KernelAdmin.SetSite", "KernelAdmin.PutClientName", "KernelProject.PutLanguage",
    "KernelProject.GetSpecificationVersion", "KernelProject.GetLanguage",
    "KernelAdmin.SelectProduct", "KernelAdmin.CloseProjects", "KernelAdmin.ShutDown",
    "KernelAdmin.LoadMetadata", "MetadataItem.GetValue",
])
def test_call_whose_result_does_not_matter_is_passed_over(job, operation):
    job(*ACTIONS, faults=f"{operation} 1 result E_FAIL")
    assert job.log.endswith(LOADED + TITLE + SAVED
                            + b"SUCCESS: Project 'Pump' successfully processed\r\n"
                            + b"SUCCESS: ZeltorAuthorInvisible finished successfully at <time>\r\n")
    assert job.stored.metadata["Title"] == "x"


def test_new_revision_that_the_kernel_refuses_is_still_logged_and_saved(job):
    job("-NR", "-PROJECTNAME", "Pump", faults="KernelProject.StartNewRevision 1 result E_FAIL")
    job.check_succeeded(OPENED, b"New revision of the project started\r\n", SAVED)
    assert job.stored.index["revision"] == "A"


@pytest.mark.parametrize("what", ["result E_NOINTERFACE", "null"])
def test_administration_that_cannot_be_run_is_used_as_it_is(job, what):
    # The first question is asked while it is created, the second is whether it can be run.
    job(*ACTIONS, faults=f"Administration.QueryInterface 2 {what}")
    job.check_succeeded(OPENED, TITLE, SAVED)


def test_kernel_without_a_place_for_a_site_is_used_without_one(job):
    # The first question of COM's own is for the kernel's interface, the second the program's.
    job(*ACTIONS, faults="KernelAdmin.QueryInterface 2 result E_NOINTERFACE")
    assert not job.calls(" SetSite ")
    job.check_succeeded(OPENED, TITLE, SAVED)


def test_set_that_succeeds_with_another_code_is_silent_and_saves_nothing(job):
    job(*ACTIONS, faults="MetadataItem.SetValue 1 then S_FALSE")
    job.check_succeeded(OPENED)
    assert job.untouched


@pytest.mark.parametrize("what", ["result E_FAIL", "then S_FALSE"])
def test_rename_with_any_other_result_is_silent(job, what):
    job("-PROJECTNAME", "Two", faults=f"KernelProject.Rename 1 {what}")
    job.check_succeeded(OPENED)
    assert job.untouched


# ---- components that succeed and hand nothing over, where no step has a text for it ----

def test_configuration_that_is_not_handed_over_names_no_configuration_file(job):
    job(*ACTIONS, faults="Administration.OpenConfiguration 1 null")
    job.check_failed(b"Configuration file does not exist: ", PROCESSING)


def test_extracted_project_that_is_not_handed_over_is_imported_as_nothing(job):
    job(*ACTIONS, faults="Archive.ExtractProject 1 null")
    assert "Configuration#1 ImportProject [method 15] (null) -> DISP_E_EXCEPTION" in job.calls()
    job.check_failed(b"There is no project to import.", PROCESSING)


def test_component_that_misses_its_time_delays_the_run_and_nothing_else(job):
    job(*ACTIONS, faults="KernelProject.Load 1 sleep 700")
    job.check_succeeded(OPENED, TITLE, SAVED)
    assert (job.run.ended - job.run.started).total_seconds() >= 0.7
