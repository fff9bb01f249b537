"""The steps that publish a project and pack what was published."""

from __future__ import annotations

from .flow import Failed
from .hosting import hosted


def publish(model) -> None:
    kind = model.shape.kind
    route = _exporter if kind in ("IPC", "ILLUS") else _text if kind == "TEXT" else _viewer
    model.temporary_left = model.shape.package
    published = model.published = route(model)
    model.flow.line("Project published successfully")
    if model.shape.package:
        _pack(model, published)


def _exporter(model) -> bool:
    flow = model.flow
    flow.call("Exporter.CreateInstance")
    if flow.call("Exporter.QueryInterface").gave_object:
        flow.call("Exporter.SetSite")
    flow.call("KernelAdmin.GetSpecificationFolder")
    flow.call("Exporter.PutLanguage")
    flow.call("Exporter.PutSpecificationFileName")
    _settings(flow, "Exporter")
    for setter in ("PutAxesModelPath", "PutAxesPosition", "PutKernel", "PutDestinationFolder",
                   "PutOptionA", "PutOptionB"):
        flow.call(f"Exporter.{setter}")
    return not flow.is_lie(flow.call("Exporter.Export"))


def _text(model) -> bool:
    flow = model.flow
    flow.call("Component3D.CreateInstance")
    _name_specification(flow)
    flow.call("Component3D.PutOptionC")
    if model.has_export_handler:
        flow.call("SampleExport.GetSecondName")
    return not flow.is_lie(flow.call("Component3D.PublishText"))


def _viewer(model) -> bool:
    flow = model.flow
    with hosted(flow, "ViewerControl") as control:
        automation = control and flow.call("ViewerControl.QueryInterface").gave_object
        viewer = automation and flow.object_of(flow.call("ViewerControl.Viewer"))
        flow.call("Component3D.CreateInstance")
        if viewer:
            lookup = flow.call("Viewer.GetIDsOfNames")
            if lookup.succeeded and lookup.outputs != "0":
                flow.call("Viewer.PutValidateNodes")
        for setter in ("PutKernel", "PutViewer", "PutResourceTag", "PutLearningMode"):
            flow.call(f"Component3D.{setter}")
        _name_specification(flow)
        flow.call("Component3D.PutAxesFolder")
        if flow.call("Component3D.QueryInterface").gave_object:
            _announce_objects(flow)
        flow.call("Component3D.PutOptionC")
        if model.has_export_handler:
            flow.call("SampleExport.GetFirstName")
            flow.call("SampleExport.GetSecondName")
        published = flow.call("Component3D.PublishView")
        flow.call("Component3D.PutViewer")
        return not flow.is_lie(published)


def _name_specification(flow) -> None:
    flow.call("KernelAdmin.GetSpecificationFolder")
    flow.call("Component3D.PutLanguage")
    flow.call("Component3D.PutSpecificationFileName")
    _settings(flow, "Component3D")


def _settings(flow, component: str) -> None:
    if flow.call(f"{component}.QueryInterface").gave_object:
        flow.call(f"{component}.Load")


def _announce_objects(flow) -> None:
    flow.call("Component3D.Execute")
    if not flow.call("KernelProject.GetNodeTree").gave_object:
        return
    flow.call("NodeTree.GetItem")
    for _ in _attached_objects(flow):
        flow.call("Component3D.Execute")


def _attached_objects(flow) -> set[str]:
    found: set[str] = set()
    depth = int(flow.call("NodeTree.GetChildren").gave_object)
    while depth:
        child = flow.call("NodeChildren.Next")
        if child.result != "S_OK" or child.outputs.startswith("null"):
            depth -= 1
            continue
        if not flow.call("ProjectNode.QueryInterface").gave_object:
            continue
        attached = flow.call("ProjectNode.GetAttachedObject")
        if attached.gave_object:
            flow.call("ReferencedObject.QueryInterface")
            found.add(attached.outputs)
        depth += flow.call("ProjectNode.GetChildren").gave_object
    return found


def _pack(model, published: bool) -> None:
    """published: whether there is a folder to pack."""
    flow = model.flow
    flow.call("ArchiveComponent.CreateInstance")
    done = [flow.call("ArchiveComponent.Create")]
    model.package_begun = True
    added = published
    while published and added and flow.peek() == "ArchiveComponent.AddFile":
        done.append(flow.call("ArchiveComponent.AddFile"))
        added = done[-1].succeeded
    done.append(flow.call("ArchiveComponent.Close"))
    model.packed = added and all(call.succeeded and not flow.is_lie(call) for call in done)
    model.temporary_left = False
    if not added:
        raise Failed("Error generating KVB-file")
    flow.line("KVB file created sucessfully")
