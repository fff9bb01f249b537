"""Publications that fail, each with its text, and failures that a publication passes over."""

from __future__ import annotations

import pytest

from harness.publishing import PUBLISHED

EXPORTER_SETTERS = ["PutLanguage", "PutSpecificationFileName", "Load", "PutAxesModelPath",
                    "PutAxesPosition", "PutOptionA", "PutOptionB"]
TEXT_SETTERS = ["PutLanguage", "PutSpecificationFileName", "Load", "PutOptionC"]
VIEW_SETTERS = TEXT_SETTERS + ["PutResourceTag", "PutLearningMode", "PutAxesFolder"]


def check_nothing_published(publish, text: bytes) -> None:
    publish.check_failed(text)
    assert publish.exchange == ["Pump.kvp", "job_ERROR"]


# ---- what ends the run ----

@pytest.mark.parametrize("what", ["result E_FAIL", "result 0x80040154", "null"])
@pytest.mark.parametrize("specification, operation, text", [
    ("Catalog", "Exporter.CreateInstance", b"Couldn't load IPC Exporter"),
    ("Illustrator", "Exporter.CreateInstance", b"Couldn't load IPC Exporter"),
    ("Text", "Component3D.CreateInstance", b"Can't create KV3D"),
    ("Manual", "Component3D.CreateInstance", b"Can't create KV3D"),
    ("Learning", "Component3D.CreateInstance", b"Can't create KV3D")])
def test_component_that_cannot_be_created_ends_the_run(publish, specification, operation, text,
                                                       what):
    publish(specification=specification, faults=f"{operation} 1 {what}")
    check_nothing_published(publish, text)


@pytest.mark.parametrize("specification", ["Text", "Manual"])
def test_unknown_identifier_of_the_3d_component_ends_the_run(publish, specification,
                                                             unknown_3d_component):
    publish(specification=specification)
    check_nothing_published(publish, b"Can't create KV3D")
    assert not any("Component3D" in line for line in publish.job.run.trace)


OUTCOMES = [  # operation and specification, what happens, the text
    ("Catalog", "Exporter.Export", "error E_FAIL No disk space left.",
     b"ERROR publishing project: No disk space left."),
    ("Catalog", "Exporter.Export", "error E_ACCESSDENIED Line one \u00e4",
     b"ERROR publishing project: Line one \xe4"),
    ("Catalog", "Exporter.Export", "result E_FAIL", b"ERROR publishing project: "),
    ("Catalog", "Exporter.Export", "error E_FAIL", b"ERROR publishing project: "),
    ("Illustrator", "Exporter.Export", "result E_UNEXPECTED", b"ERROR publishing project: "),
    ("Text", "Component3D.PublishText", "error E_FAIL It does not matter.",
     b"Error publishing project"),
    ("Text", "Component3D.PublishText", "result E_FAIL", b"Error publishing project"),
    ("Manual", "Component3D.PublishView", "error E_FAIL No scene was found.",
     b"Error publishing project:\nNo scene was found."),
    ("Manual", "Component3D.PublishView", "result E_FAIL", b"Error publishing project"),
    ("Manual", "Component3D.PublishView", "error E_FAIL", b"Error publishing project"),
    ("Learning", "Component3D.PublishView", "error 0x80004004 Stopped.",
     b"Error publishing project:\nStopped."),
]


@pytest.mark.parametrize("specification, operation, what, text", OUTCOMES,
                         ids=[" ".join(row[:3]) for row in OUTCOMES])
def test_publication_that_fails_ends_the_run_with_its_text(publish, specification, operation,
                                                           what, text):
    publish(specification=specification, faults=f"{operation} 1 {what}")
    check_nothing_published(publish, text)


@pytest.mark.parametrize("specification, earlier, operation, text", [
    ("Catalog", "Exporter.PutLanguage", "Exporter.Export", b"ERROR publishing project: "),
    ("Manual", "Component3D.Execute", "Component3D.PublishView", b"Error publishing project")])
def test_what_an_earlier_call_told_does_not_pass_for_the_publications_description(
        publish, specification, earlier, operation, text):
    publish(specification=specification, faults=f"{earlier} 1 error E_FAIL Told earlier.\n"
                                                f"{operation} 1 result E_FAIL")
    check_nothing_published(publish, text)


@pytest.mark.parametrize("specification, text", [
    ("Catalog", "ERROR publishing project: The publication cannot be written: {}"),
    ("Text", "Error publishing project"),
    ("Manual", "Error publishing project:\nThe publication cannot be written: {}")])
def test_file_in_the_place_of_the_folder_ends_the_run_and_stays(publish, specification, text):
    file = publish.sandbox.path("exchange", "Pump")
    file.write_bytes(b"mine")
    publish(specification=specification)
    publish.check_failed(text.format(publish.sandbox.windows("exchange", "Pump")).encode())
    assert publish.exchange == ["Pump", "Pump.kvp", "job_ERROR"]
    assert file.read_bytes() == b"mine"


def test_viewer_is_not_cleared_after_a_failed_publication_but_the_control_is_closed(publish):
    publish(faults="Component3D.PublishView 1 result E_FAIL")
    assert publish.calls("Component3D", "ViewerControl")[-3:] == [
        "ViewerControl InPlaceDeactivate ()", "ViewerControl Close (1)",
        "ViewerControl SetClientSite (null)"]
    assert publish.calls("Component3D")[-1].startswith("Component3D PublishView (")


def test_project_stays_saved_where_its_publication_fails(publish):
    publish("-META", "Title", "New", faults="Component3D.PublishView 1 result E_FAIL")
    assert publish.job.stored.metadata["Title"] == "New"
    assert publish.exchange == ["Pump.kvp", "job_ERROR"]
    assert publish.job.log.endswith(b"Project saved to KVP file\r\nERROR: Error publishing project")


# ---- the viewer ----

@pytest.mark.parametrize("what", ["result E_FAIL", "null"])
def test_control_that_cannot_be_created_leaves_the_viewer_unset(publish, what):
    # What becomes of a publication without a viewer, the 3D component decides: this one refuses.
    publish(faults=f"ViewerControl.CreateInstance 1 {what}")
    calls = publish.calls("Component3D", "Viewer")
    assert "Component3D PutViewer (null)" in calls
    assert not any(call.startswith("Viewer ") for call in calls)
    assert calls[-1].startswith("Component3D PublishView (")
    check_nothing_published(publish,
                            b"Error publishing project:\nThe 3D component has no viewer.")


def test_control_without_a_viewer_leaves_it_unset(publish):
    publish(faults="ViewerControl.Viewer 1 null")
    assert "Component3D PutViewer (null)" in publish.calls("Component3D")
    check_nothing_published(publish,
                            b"Error publishing project:\nThe 3D component has no viewer.")


def test_3d_component_that_does_without_a_viewer_publishes(publish):
    publish(faults="ViewerControl.CreateInstance 1 result E_FAIL\nComponent3D.PublishView 1 null")
    publish.job.check_succeeded(publish.opened, PUBLISHED)


def test_control_that_refuses_to_tell_its_viewer_ends_the_run(publish):
    publish(faults="ViewerControl.Viewer 1 error E_FAIL The viewer is gone.")
    check_nothing_published(publish, b"The viewer is gone.")


@pytest.mark.parametrize("fault, call", [
    ("Viewer.GetIDsOfNames 1 result DISP_E_UNKNOWNNAME", None),
    ("Viewer.PutValidateNodes 1 result E_FAIL", "Viewer PutValidateNodes (VT_I2 -1)")])
def test_viewer_that_does_not_validate_nodes_is_used_as_it_is(publish, fault, call):
    publish(faults=fault)
    publish.check_published()
    puts = [call for call in publish.calls("Viewer") if "Put" in call]
    assert puts == ([call] if call else [])
    assert "Component3D PutViewer (Viewer#1)" in publish.calls("Component3D")
    assert publish.folder.index.facts["validates nodes"] == "no"


# ---- setters that fail are passed over ----

@pytest.mark.parametrize("specification, component, setter", [
    *[("Catalog", "Exporter", setter) for setter in ["SetSite", *EXPORTER_SETTERS]],
    *[("Text", "Component3D", setter) for setter in TEXT_SETTERS],
    *[("Manual", "Component3D", setter) for setter in VIEW_SETTERS]])
def test_setter_that_fails_is_passed_over(publish, specification, component, setter):
    publish(specification=specification, faults=f"{component}.{setter} * error E_FAIL Refused.")
    publish.check_published()


@pytest.mark.parametrize("specification, component, setter, text", [
    ("Catalog", "Exporter", "PutKernel", b"ERROR publishing project: "),
    ("Catalog", "Exporter", "PutDestinationFolder", b"ERROR publishing project: "),
    ("Manual", "Component3D", "PutKernel", b"Error publishing project:\n")])
def test_what_a_missing_kernel_or_folder_means_the_component_decides(publish, specification,
                                                                     component, setter, text):
    publish(specification=specification, faults=f"{component}.{setter} 1 result E_FAIL")
    assert f"\r\nERROR: {text.decode()}".replace(":\n", ":\r\n").encode() in publish.job.log
    last = publish.calls(component)[-1]
    assert last.startswith((f"{component} Export (", f"{component} PublishView ("))


# The loading of the specification asks for the folder too, once for each library.
@pytest.mark.parametrize("specification, component, last", [
    ("Catalog", "Exporter", 6), ("Text", "Component3D", 4), ("Manual", "Component3D", 6)])
def test_folder_that_the_kernel_does_not_tell_leaves_the_bare_extension(publish, specification,
                                                                        component, last):
    publish(specification=specification,
            faults=f"KernelAdmin.GetSpecificationFolder {last} result E_FAIL")
    publish.check_published()
    assert f'{component} PutSpecificationFileName (".cfg")' in publish.calls(component)
    assert publish.folder.index.facts["specification"] == ".cfg (missing)"


# ---- names ----

@pytest.mark.parametrize("faults, first, second", [
    ("SampleExport.GetFirstName 1 empty", "Pump", "Contents"),
    ("SampleExport.GetFirstName 1 result E_FAIL", "Pump", "Contents"),
    ("SampleExport.GetSecondName 1 empty", "Index", "Index"),
    ("SampleExport.GetSecondName 1 null", "Index", "Index"),
    ("SampleExport.GetFirstName 1 empty\nSampleExport.GetSecondName 1 empty", "Pump", "Pump"),
    ("SampleExport.CreateInstance 1 result E_FAIL", "Pump", "Pump")])
def test_missing_names_of_a_view_fall_back(publish, faults, first, second):
    publish(faults=faults)
    publish.check_published()
    facts = publish.folder.index.facts
    assert (facts["first name"], facts["second name"]) == (first, second)


@pytest.mark.parametrize("fault, asked", [
    ("SampleExport.GetSecondName 1 empty", True), ("SampleExport.GetSecondName 1 null", True),
    ("SampleExport.GetSecondName 1 result E_FAIL", True),
    ("SampleExport.CreateInstance 1 result E_FAIL", False)])
def test_missing_name_of_a_text_falls_back_to_the_projects(publish, fault, asked):
    publish(specification="Text", faults=fault)
    publish.check_published()
    assert publish.folder.index.facts["name"] == "Pump"
    names = [call for call in publish.calls("SampleExport") if "Name (" in call]
    assert names == (["SampleExport GetSecondName (object)"] if asked else [])


# ---- referenced objects ----

@pytest.mark.parametrize("fault, found", [
    ("Component3D.Execute 1 result E_FAIL", ["seal"]),
    ("Component3D.Execute 2 result E_FAIL", []),
    ("Component3D.QueryInterface 3 result E_NOINTERFACE", []),
    ("KernelProject.GetNodeTree 1 result E_FAIL", []),
    ("KernelProject.GetNodeTree 1 null", []),
    ("NodeTree.GetChildren 1 result E_FAIL", []),
    ("ProjectNode.GetAttachedObject 1 result E_FAIL", [])])
def test_failures_on_the_way_to_the_objects_are_passed_over(publish, fault, found):
    publish(objects=("seal",), nodes=((1, "seal"),), faults=fault)
    publish.check_published()
    assert publish.folder.index.objects == found


def test_tree_without_a_first_item_is_announced_without_it(publish):
    # This component refuses an object that comes without one.
    publish(objects=("seal",), nodes=((1, "seal"),), faults="NodeTree.GetItem 1 result E_FAIL")
    publish.check_published()
    commands = [line for line in publish.job.run.trace if " Execute " in line]
    assert commands[-1].endswith("-> E_INVALIDARG")
