"""What each component call's failure means for the run. Written by hand: this table is what the
program is held to, so a run that disagrees is looked into and the table is not made to follow it.
rule.py explains the columns.
"""

from __future__ import annotations

import sys

from .rule import Checked, Described, Follows, Ignored, Raises, Reported, Rule

# The platform's own texts for the codes that a run can end with. A code without one is shown in
# hexadecimal, as is this one under Wine; Windows has a text for it.
SYSTEM_TEXTS = {
    "DISP_E_TYPEMISMATCH": "Type mismatch." if sys.platform == "win32" else "0x80020005"}

FAMILY_BITS, TEMPLATES = 0x1FFF0000, 0x00400000

TEXT, OBJECT = r'VT_BSTR "(.*)"|VT_BSTR null|VT_I4 (\d+)', r"VT_DISPATCH .*"

_SAVE = ("KernelAdmin.SetSaveMode", "Administration.OpenArchive",
         "KernelProject.GetConfigurationKey", "KernelProject.GetStoredName", "Configuration.ExportProject", "Configuration.WorkFolder",
         "Archive.AddProject")
_FILES = ("ArchiveComponent.AddFile",)
_LOADED_LATER = ("KernelAdmin.LoadRefTablesBackup", "KernelAdmin.GetSpecificationFolder",
                 "SampleExport.Get*", *_FILES)
_COMMANDS = ("Editor.*", "EditorDocument.*", "EditorHost.*", "EditorControl.GetXMED",
             "EditorDocument.GetHost", 'EditorControl.GetIDsOfNames "XMED"')
_OBJECTS = ("Component3D.Execute", "KernelProject.GetNodeTree", "NodeTree.*", "NodeChildren.*",
            "ProjectNode.*", "ReferencedObject.*")
_PLACE = "{00000113-0000-0000-C000-000000000046}"  # an object that is active in its place

_SETTER = Ignored("a setting that is not taken is the component's own business", may=_FILES)
_TEARDOWN = Ignored("what is torn down cannot be torn down better")
_FOLDER = Ignored("the loading of the file reports", may=_LOADED_LATER)
_TREE = Ignored("what cannot be reached is not announced", may=_OBJECTS + _FILES)
_VALUE_SET = (r"Value of metadata '\w+' set to '.*'",)


def _kernel_handler(name: str) -> dict[str, Rule]:
    rule = Ignored("a handler that cannot be made, or takes no kernel, is done without",
                   may=(f"{name}.*",))
    return {f"{name}.CreateInstance": rule, f"{name}.QueryInterface": rule,
            f"{name}.GetIDsOfNames": rule, f"{name}.PutKernel": rule,
            f"{name}.PutRefKernel": Ignored("refused by reference, it is put plainly",
                                            may=(f"{name}.PutKernel",), next=f"{name}.PutKernel")}


def _control(name: str, failing: Rule) -> dict[str, Rule]:
    """failing: what it means that there is no control."""
    return {
        f"{name}.CreateInstance": failing,
        f"{name}.QueryInterface IOleObject": failing,
        f"{name}.GetMiscStatus": Ignored("no status has no bits", may=(f"{name}.SetClientSite*",)),
        f"{name}.SetClientSite object": failing,
        f"{name}.SetClientSite null": _TEARDOWN,
        f"{name}.QueryInterface IPersistStreamInit": Ignored(
            "a control may have its state in a storage, or none",
            may=(f"{name}.QueryInterface *", f"{name}.InitNew")),
        f"{name}.InitNew": failing,
        f"{name}.QueryInterface IDispatch": failing,
        f"{name}.QueryInterface {_PLACE}": Ignored(
            "a control may have no window", may=(f"{name}.GetWindow", f"{name}.InPlaceDeactivate")),
        f"{name}.QueryInterface": Ignored("a control may lack every other interface"),
        f"{name}.SetExtent": Ignored("the rectangle of the activation counts"),
        f"{name}.DoVerb": Ignored("a control that does not become active works all the same",
                                  may=(f"{name}.QueryInterface {_PLACE}", f"{name}.GetWindow",
                                       f"{name}.InPlaceDeactivate")),
        f"{name}.GetWindow": Ignored("a control may have no window"),
        f"{name}.InPlaceDeactivate": _TEARDOWN,
        f"{name}.Close": _TEARDOWN}


_NO_EDITOR = "ERROR initializing KVXMed"
_NO_DOCUMENT = ("Error updating document - document could not be loaded into XMED. "
                "It can be invalid.")
_EDIT_FAILED = "Error calling EDIT method '{method}'. "
_UP_TO_DATE = Ignored("anything but true means that nothing is to be saved",
                      may=(*_COMMANDS, "EditorControl.GetCmdSave", "EditorControl.PutCmdSave",
                           'EditorControl.GetIDsOfNames "cmdSave"'),
                      says=("Document is up-to-date and has not been modified",))
_CHAIN = Ignored("without the host no command is sent", may=_COMMANDS)
_GENERATED = Ignored("the document's name counts",
                     may=("KernelProject.G*Document*", "Editor*", *_SAVE, *_FILES),
                     says=("Failed to generate document", "Updating document '.*'",
                           "Document '.*' was generated in the project", *_UP_TO_DATE.says))

RULES: dict[str, Rule] = {
    # ---- start ----
    "KernelAdmin.CreateInstance": Checked("Couldn't load KV Kernel", nothing=True),
    "KernelAdmin.QueryInterface": Ignored("a kernel without a place for a site gets none",
                                          may=("KernelAdmin.SetSite",)),
    "KernelAdmin.SetSite": Ignored("a kernel that refuses its host works without messages"),
    "KernelAdmin.PutClientName": Ignored("the name is for the kernel's own records"),
    "Administration.CreateInstance": Checked("Couldn't create KVAdmin", nothing=True),
    "Administration.QueryInterface IDispatch": Checked("Couldn't create KVAdmin", nothing=True),
    "Administration.QueryInterface": Ignored("whether it can run elsewhere is not needed"),
    "Administration.OpenConfiguration": Raises(
        gives=OBJECT, other="Configuration file does not exist: "),
    "Configuration.ClientName": Raises(),
    "Configuration.Open": Raises(),
    "Configuration.ConfigurationFile": Raises(
        gives=TEXT, other="Configuration file does not exist: {value}"),
    "KernelAdmin.SetProjectsLocation": Checked("Projects location cannot be set."),
    # ---- import ----
    "Administration.OpenArchive": Raises(gives=OBJECT, other="No project in source zip"),
    "Archive.Projects": Raises(other="No project in source zip"),
    "Configuration.WorkFolder": Raises(gives=TEXT),
    "Archive.ExtractProject": Raises(gives=OBJECT),
    "Configuration.ImportProject": Raises(),
    "Configuration.ImportedProjects": Raises(
        other="Project could not be imported into configuration"),
    # ---- open ----
    "KernelAdmin.OpenProject": Checked("Can't open project", nothing=True),
    "KernelProject.GetSpecificationName": Checked(
        "Project specification is not defined", nothing=True,
        then=("KernelProject.GetSpecificationVersion", "KernelProject.GetLanguage")),
    "KernelProject.GetSpecificationVersion": Ignored("no version asks for none",
                                                     says=("Specification '.*', v. loaded",)),
    "KernelProject.GetLanguage": Ignored("no language takes the specification's own"),
    # ---- specification ----
    "KernelAdmin.PutSpecificationFolder": _FOLDER,
    "KernelAdmin.GetSpecificationFolder": _FOLDER,
    **_kernel_handler("SequenceNumbers"),
    **_kernel_handler("Notifications"),
    "KernelAdmin.LoadRefTables": Ignored(
        "only tables that were loaded get their backup",
        may=("KernelAdmin.LoadRefTablesBackup", "KernelAdmin.GetSpecificationFolder")),
    "KernelAdmin.LoadRefTablesBackup": Ignored("only a backup that was loaded goes"),
    "KernelAdmin.LoadCommandTemplates": Reported("Error loading IPC DPL command templates.",
                                                 family=TEMPLATES),
    "KernelAdmin.LoadDeclarations": Reported("Couldn't load library of declarations."),
    "KernelAdmin.LoadTypes": Reported("Couldn't load library of types."),
    "SampleExport.CreateInstance": Ignored(
        "a handler that cannot be made is done without",
        may=("SampleExport.*", "KernelAdmin.GetSpecificationFolder", *_FILES)),
    "SampleExport.QueryInterface": Ignored(
        "a handler that is no exporter gets no script",
        may=("SampleExport.LoadScript", "KernelAdmin.GetSpecificationFolder")),
    "SampleExport.LoadScript": Ignored("a handler that refuses its script is dropped",
                                       may=("SampleExport.Get*",)),
    "KernelAdmin.LoadMetadata": Ignored("the specification may have none"),
    "KernelProject.PutLanguage": Ignored("the project keeps the language it has"),
    "KernelAdmin.SelectProduct": Ignored("the kernel's own business"),
    "KernelProject.Load": Described("ERROR loading project: "),
    # ---- metadata, rename, edit handler, document ----
    "KernelProject.GetMetadata": Ignored(
        "every item is then inserted anew", says=_VALUE_SET,
        may=("MetadataCollection.*", "KernelProject.InsertMetadata", "MetadataItem.SetValue")),
    "KernelProject.GetDeclaration": Checked("Can't create declaration for metadata: {name}",
                                            nothing=True),
    "MetadataCollection.FindItem": Ignored(
        "an item that is not found is inserted", says=_VALUE_SET,
        may=("KernelProject.InsertMetadata", "MetadataItem.SetValue"),
        next="KernelProject.InsertMetadata"),
    "KernelProject.InsertMetadata": Checked("Can't insert metadata: {name}", nothing=True),
    "MetadataItem.GetValue": Ignored("no value counts as unset", says=_VALUE_SET,
                                     may=("MetadataItem.SetValue",)),
    "MetadataItem.SetValue": Checked("Can't set value of metadata: {name}"),
    "KernelProject.Rename": Ignored("only a rename that took place is logged and saved", may=_SAVE),
    "SampleEdit.CreateInstance": Checked("Can't create edit handler: {progid}", nothing=True),
    "SampleEdit.GetIDsOfNames": Checked("EDIT method not found: {method}", zero=_EDIT_FAILED),
    "SampleEdit.Touch": Described(_EDIT_FAILED, zero=_EDIT_FAILED),
    "KernelProject.AttachDocument": Checked("Error attaching document: {path}"),
    # ---- document update ----
    "KernelProject.GetDocumentName": _GENERATED,
    "KernelProject.GenerateDocument": _GENERATED,
    **_control("EditorControl", Checked(_NO_EDITOR, nothing=True)),
    "EditorControl.SetClientSite object": Checked(_NO_EDITOR),
    "EditorControl.InitNew": Checked(_NO_EDITOR),
    'EditorControl.GetIDsOfNames "Kernel"': Checked(_NO_EDITOR, zero=_NO_EDITOR),
    "EditorControl.PutRefKernel": Ignored("refused by reference, it is put plainly",
                                          may=("EditorControl.PutKernel",),
                                          next="EditorControl.PutKernel"),
    "EditorControl.PutKernel": Checked(_NO_EDITOR),
    'EditorControl.GetIDsOfNames "cmdHasDocument"': Ignored(
        "a control that cannot say whether it has a document is believed",
        may=("EditorControl.GetCmdHasDocument",)),
    "EditorControl.GetCmdHasDocument": Ignored("a failed read skips the check", other=_NO_DOCUMENT),
    'EditorControl.GetIDsOfNames "cmdSave"': _UP_TO_DATE,
    "EditorControl.GetCmdSave": _UP_TO_DATE,
    'EditorControl.GetIDsOfNames "XMED"': _CHAIN,
    "EditorControl.GetXMED": _CHAIN,
    "Editor.GetIDsOfNames": _CHAIN,
    "Editor.GetDocument": _CHAIN,
    "EditorDocument.GetIDsOfNames": _CHAIN,
    "EditorDocument.GetHost": _CHAIN,
    "EditorHost.GetIDsOfNames": Ignored("a command that is not known is not sent",
                                        may=("EditorHost.Run",)),
    "EditorHost.Run": Ignored("commands are requests"),
    'EditorControl.GetIDsOfNames "cmdSave" #2': Checked("Error updating document",
                                                        zero="Error updating document"),
    "EditorControl.PutCmdSave": Checked("Error updating document"),
    # ---- revision, save ----
    "KernelProject.StartNewRevision": Ignored("a refused revision is saved like the old one"),
    "KernelAdmin.SetSaveMode": Ignored("the archive's own calls report"),
    "Administration.OpenArchive #2": Raises(gives=OBJECT, other="Can't create KVP-file"),
    "KernelProject.GetConfigurationKey": Ignored("the export reports"),
    "KernelProject.GetStoredName": Ignored("the adding reports"),
    "Configuration.ExportProject": Raises(gives=OBJECT),
    "Archive.AddProject": Raises(),
    # ---- publish: exporter ----
    "Exporter.CreateInstance": Checked("Couldn't load IPC Exporter", nothing=True),
    "Exporter.QueryInterface": Ignored("an exporter may lack each of these interfaces",
                                       may=("Exporter.SetSite", "Exporter.Load")),
    "Exporter.SetSite": Ignored("an exporter may work without a host"),
    **{f"Exporter.{setter}": _SETTER for setter in (
        "PutLanguage", "PutSpecificationFileName", "Load", "PutAxesModelPath", "PutAxesPosition",
        "PutKernel", "PutDestinationFolder", "PutOptionA", "PutOptionB")},
    "Exporter.Export": Described("ERROR publishing project: ", may=_FILES),
    # ---- publish: 3D component and viewer ----
    **_control("ViewerControl", Ignored("a publication may do without a viewer",
                                        may=("ViewerControl.*", "Viewer.*", *_FILES))),
    "ViewerControl.Viewer": Raises(gives=OBJECT, may=("Viewer.*", *_FILES)),
    "Viewer.GetIDsOfNames": Ignored("a viewer may lack the property",
                                    may=("Viewer.PutValidateNodes",)),
    "Viewer.PutValidateNodes": _SETTER,
    "Component3D.CreateInstance": Checked("Can't create KV3D", nothing=True),
    "Component3D.QueryInterface": Ignored("the component may lack each of these interfaces",
                                          may=("Component3D.Load", *_OBJECTS, *_FILES)),
    **{f"Component3D.{setter}": _SETTER for setter in (
        "PutKernel", "PutViewer", "PutResourceTag", "PutLearningMode", "PutLanguage",
        "PutSpecificationFileName", "Load", "PutAxesFolder", "PutOptionC")},
    "Component3D.Execute": Ignored("objects that are not announced are not shown", may=_FILES),
    "KernelProject.GetNodeTree": _TREE,
    "NodeTree.GetItem": Ignored("objects are announced without a first item as well"),
    "NodeTree.GetChildren": _TREE,
    "ProjectNode.GetChildren": _TREE,
    "NodeChildren.Next": _TREE,
    "ProjectNode.QueryInterface": _TREE,
    "ProjectNode.GetAttachedObject": _TREE,
    "ReferencedObject.QueryInterface": Ignored("an object that hides its identity is its own",
                                               may=("Component3D.Execute", *_FILES)),
    "SampleExport.GetFirstName": Ignored("the project's name serves", may=_FILES),
    "SampleExport.GetSecondName": Ignored("another name serves", may=_FILES),
    "Component3D.PublishView": Described("Error publishing project", between=":\n", may=_FILES),
    "Component3D.PublishText": Checked("Error publishing project", may=_FILES),
    # ---- package ----
    "ArchiveComponent.CreateInstance": Checked("Can't create KVZip", nothing=True),
    "ArchiveComponent.Create": Checked("Can't create KVB-file"),
    "ArchiveComponent.AddFile": Ignored("the first that fails ends the adding", may=_FILES,
                                        next="ArchiveComponent.Close"),
    "ArchiveComponent.Close": Follows("Error generating KVB-file",
                                      operation="ArchiveComponent.AddFile"),
    # ---- end ----
    "KernelAdmin.CloseProjects": _TEARDOWN,
    "KernelAdmin.ShutDown": _TEARDOWN,
    "Configuration.Close": Ignored("the outcome is decided already"),
}

# What a failure leaves to be done: no other call may come behind one that ends the run.
TEARDOWN = ("EditorControl.QueryInterface *", "EditorControl.InPlaceDeactivate",
            "EditorControl.Close", "EditorControl.SetClientSite null",
            "ViewerControl.QueryInterface *", "ViewerControl.InPlaceDeactivate",
            "ViewerControl.Close", "ViewerControl.SetClientSite null", "ArchiveComponent.Close",
            "KernelAdmin.CloseProjects", "KernelAdmin.ShutDown", "Configuration.Close")

# What was begun must be ended: the call that begins it, and the calls that must follow.
ENDED_BY = {
    **{f"{name}.SetClientSite object": (f"{name}.Close", f"{name}.SetClientSite null")
       for name in ("EditorControl", "ViewerControl")},
    "ArchiveComponent.Create": ("ArchiveComponent.Close",),
    "KernelAdmin.CreateInstance": ("KernelAdmin.CloseProjects", "KernelAdmin.ShutDown"),
    "Administration.OpenConfiguration": ("Configuration.Close",),
}

# How a line of the log begins, the calls of which one has earned it, and what that call must have
# come to: "begun", "returned", "succeeded", or a result. A call that ends the run earns none.
LINES = {
    "Specification '": (("KernelProject.PutLanguage",), "begun"),
    "Project loaded by ": (("KernelProject.Load",), "succeeded"),
    "Value of metadata '": (("MetadataItem.SetValue",), "S_OK"),
    "Project name changed to '": (("KernelProject.Rename",), "S_OK"),
    "Edit handler (ProgID: '": (("SampleEdit.Touch",), "succeeded"),
    "Updating document '": (("EditorControl.CreateInstance",), "begun"),
    "Document in the project was updated": (("EditorControl.PutCmdSave",), "succeeded"),
    "New revision of the project started": (("KernelProject.StartNewRevision",), "returned"),
    "Project saved to KVP file": (("Archive.AddProject",), "succeeded"),
    "Project published successfully": (
        ("Exporter.Export", "Component3D.PublishView", "Component3D.PublishText"), "succeeded"),
    "KVB file created sucessfully": (("ArchiveComponent.Close",), "returned"),
}

# A document update that does not fail ends with exactly one of these lines.
UPDATED = ("Document in the project was updated", "Failed to generate document",
           "Document is up-to-date and has not been modified")
