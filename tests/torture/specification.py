"""The steps that load a specification into the kernel."""

from __future__ import annotations

# Of a result code: the family that the loading of command templates is reported for.
FACILITY_BITS, TEMPLATES = 0x1FFF0000, 0x00400000


def load_specification(model) -> None:
    flow, kind = model.flow, model.shape.kind
    flow.call("KernelAdmin.PutSpecificationFolder")
    _resolve(model)  # the one library for this platform
    if kind in ("IPC", "ILLUS"):
        _kernel_handler(flow, "SequenceNumbers")
        _kernel_handler(flow, "Notifications")
        _reference_tables(model)
        if kind == "IPC":
            _command_templates(model)
    else:
        if kind != "TEXT":
            _resolve(model)
            flow.call("KernelAdmin.LoadDeclarations")
            _resolve(model)
            flow.call("KernelAdmin.LoadTypes")
        _export_handler(model)
    _resolve(model)
    flow.call("KernelAdmin.LoadMetadata")


def _resolve(model) -> str:
    """Asks for the folder that a file is looked for in."""
    return model.flow.call("KernelAdmin.GetSpecificationFolder").text


def _kernel_handler(flow, name: str) -> None:
    if not flow.call(f"{name}.CreateInstance").gave_object:
        return
    if not flow.call(f"{name}.QueryInterface").gave_object:
        return
    lookup = flow.call(f"{name}.GetIDsOfNames")
    if not lookup.succeeded or lookup.outputs == "0":
        return
    if not flow.call(f"{name}.PutRefKernel").succeeded:
        flow.call(f"{name}.PutKernel")


def _reference_tables(model) -> None:
    _resolve(model)
    if not model.flow.call("KernelAdmin.LoadRefTables").succeeded:
        return
    folder = _resolve(model)
    if folder == model.paths.specification:  # where there is a backup
        model.backup_gone = model.flow.call("KernelAdmin.LoadRefTablesBackup").succeeded


def _command_templates(model) -> None:
    _resolve(model)
    loaded = model.flow.call("KernelAdmin.LoadCommandTemplates")
    code = int(loaded.result, 16) if loaded.result.startswith("0x") else 0
    if code & FACILITY_BITS == TEMPLATES:
        model.flow.report("Error loading IPC DPL command templates.")


def _export_handler(model) -> None:
    flow = model.flow
    if not flow.call("SampleExport.CreateInstance").gave_object:
        return
    model.has_export_handler = True
    if not flow.call("SampleExport.QueryInterface").gave_object:
        return
    _resolve(model)
    model.has_export_handler = flow.call("SampleExport.LoadScript").succeeded
