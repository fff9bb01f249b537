"""What each component call's failure means for the run. Written by hand: this table is what the
program is held to, so a run that disagrees is looked into and the table is not made to follow it.

Model (model.py) knows the order of the steps; a rule here says what a step makes of its call.

    Checked(text)      a failing result ends the run with the text; with nothing=True a success
                       that hands over nothing does so too
    Described(text)    the same, followed by the component's own description
    Raises()           a call through an automation wrapper: a failing one ends the run with the
                       component's own description, or without one with the text of its code
    Reported(text)     a failing result is reported, and the run goes on
    Ignored(why)       the result does not matter; what the call handed over may do
    Decides(how)       the result chooses the way on; the model says how
"""

from __future__ import annotations

import sys
from dataclasses import dataclass


@dataclass(frozen=True)
class Checked:
    text: str
    nothing: bool = False


@dataclass(frozen=True)
class Described:
    text: str
    between: str = ""  # stands before a description that is not empty


@dataclass(frozen=True)
class Raises:
    pass


@dataclass(frozen=True)
class Reported:
    text: str


@dataclass(frozen=True)
class Ignored:
    why: str


@dataclass(frozen=True)
class Decides:
    how: str


# The platform's own texts for the codes that a run can end with. A code without one is shown in
# hexadecimal, as is this one under Wine; Windows has a text for it.
SYSTEM_TEXTS = {
    "DISP_E_TYPEMISMATCH": "Type mismatch." if sys.platform == "win32" else "0x80020005"}

_SETTER = Ignored("a setting that is not taken is the component's own affair")
_TEARDOWN = Ignored("what is being taken down cannot be taken down better")
_CONTROL = Decides("a control that cannot be set up counts as one that cannot be created")

RULES = {
    # ---- start ----
    "KernelAdmin.CreateInstance": Checked("Couldn't load KV Kernel", nothing=True),
    "KernelAdmin.QueryInterface": Decides("a kernel without a place for a site gets none"),
    "KernelAdmin.SetSite": Ignored("a kernel that refuses its host works without messages"),
    "KernelAdmin.PutClientName": Ignored("the name is for the kernel's own records"),
    "Administration.CreateInstance": Checked("Couldn't create KVAdmin", nothing=True),
    "Administration.QueryInterface": Decides("without automation it cannot be used: not created"),
    "Administration.OpenConfiguration": Raises(),
    "Configuration.ClientName": Raises(),
    "Configuration.Open": Raises(),
    "Configuration.ConfigurationFile": Raises(),
    "KernelAdmin.SetProjectsLocation": Checked("Projects location cannot be set."),
    # ---- import ----
    "Administration.OpenArchive": Raises(),
    "Archive.Projects": Raises(),
    "Configuration.WorkFolder": Raises(),
    "Archive.ExtractProject": Raises(),
    "Configuration.ImportProject": Raises(),
    "Configuration.ImportedProjects": Raises(),
    # ---- open ----
    "KernelAdmin.OpenProject": Checked("Can't open project", nothing=True),
    "KernelProject.GetSpecificationName": Checked("Project specification is not defined",
                                                  nothing=True),
    "KernelProject.GetSpecificationVersion": Ignored("no version asks for none"),
    "KernelProject.GetLanguage": Ignored("no language takes the specification's own"),
    # ---- specification ----
    "KernelAdmin.PutSpecificationFolder": Ignored("the later resolving of files tells"),
    "KernelAdmin.GetSpecificationFolder": Ignored("the loading of the file tells"),
    "SequenceNumbers.CreateInstance": Ignored("a handler that cannot be made is done without"),
    "SequenceNumbers.QueryInterface": Decides("without automation it gets no kernel"),
    "SequenceNumbers.GetIDsOfNames": Decides("without the property it gets no kernel"),
    "SequenceNumbers.PutRefKernel": Decides("refused by reference, it is put plainly"),
    "SequenceNumbers.PutKernel": Ignored("a handler may work without the kernel"),
    "Notifications.CreateInstance": Ignored("a handler that cannot be made is done without"),
    "Notifications.QueryInterface": Decides("without automation it gets no kernel"),
    "Notifications.GetIDsOfNames": Decides("without the property it gets no kernel"),
    "Notifications.PutRefKernel": Decides("refused by reference, it is put plainly"),
    "Notifications.PutKernel": Ignored("a handler may work without the kernel"),
    "KernelAdmin.LoadRefTables": Decides("only tables that were loaded get their backup"),
    "KernelAdmin.LoadRefTablesBackup": Decides("only a backup that was loaded goes"),
    "KernelAdmin.LoadCommandTemplates": Decides("one family of codes is reported, others not"),
    "KernelAdmin.LoadDeclarations": Reported("Couldn't load library of declarations."),
    "KernelAdmin.LoadTypes": Reported("Couldn't load library of types."),
    "SampleExport.CreateInstance": Ignored("a handler that cannot be made is done without"),
    "SampleExport.QueryInterface": Decides("a handler that is no exporter gets no script"),
    "SampleExport.LoadScript": Decides("a handler that refuses its script is let go"),
    "KernelAdmin.LoadMetadata": Ignored("the specification may have none"),
    "KernelProject.PutLanguage": Ignored("the project keeps the language it has"),
    "KernelAdmin.SelectProduct": Ignored("the kernel's own affair"),
    "KernelProject.Load": Described("ERROR loading project: "),
    # ---- metadata, rename, edit handler, document ----
    "KernelProject.GetMetadata": Ignored("every item is then inserted anew"),
    "KernelProject.GetDeclaration": Checked("Can't create declaration for metadata: {name}",
                                            nothing=True),
    "MetadataCollection.FindItem": Decides("an item that is not found is inserted"),
    "KernelProject.InsertMetadata": Checked("Can't insert metadata: {name}", nothing=True),
    "MetadataItem.GetValue": Ignored("no value counts as unset"),
    "MetadataItem.SetValue": Checked("Can't set value of metadata: {name}"),
    "KernelProject.Rename": Decides("only a rename that took place is logged and saved"),
    "SampleEdit.CreateInstance": Checked("Can't create edit handler: {progid}", nothing=True),
    "SampleEdit.GetIDsOfNames": Checked("EDIT method not found: {method}"),
    "SampleEdit.Touch": Described("Error calling EDIT method '{method}'. "),
    "KernelProject.AttachDocument": Checked("Error attaching document: {path}"),
    # ---- document update ----
    "KernelProject.GetDocumentName": Ignored("no name counts as no document"),
    "KernelProject.GenerateDocument": Ignored("the document's name tells"),
    "EditorControl.CreateInstance": _CONTROL,
    "EditorControl.QueryInterface": _CONTROL,
    "EditorControl.GetMiscStatus": Decides("no status has no bits"),
    "EditorControl.SetClientSite": _CONTROL,
    "EditorControl.InitNew": _CONTROL,
    "EditorControl.SetExtent": Ignored("the rectangle of the activation counts"),
    "EditorControl.DoVerb": Ignored("a control that does not become active works all the same"),
    "EditorControl.GetWindow": Ignored("a control may have no window"),
    "EditorControl.GetIDsOfNames": Decides("each property has its own way without it"),
    "EditorControl.PutRefKernel": Decides("refused by reference, it is put plainly"),
    "EditorControl.PutKernel": Checked("ERROR initializing KVXMed"),
    "EditorControl.GetCmdHasDocument": Decides("a failed read skips the check"),
    "EditorControl.GetCmdSave": Decides("anything but true means nothing is to be saved"),
    "EditorControl.GetXMED": Decides("without the editor no command is sent"),
    "Editor.GetIDsOfNames": Decides("without the document no command is sent"),
    "Editor.GetDocument": Decides("without the document no command is sent"),
    "EditorDocument.GetIDsOfNames": Decides("without the host no command is sent"),
    "EditorDocument.GetHost": Decides("without the host no command is sent"),
    "EditorHost.GetIDsOfNames": Decides("a command that is not known is not sent"),
    "EditorHost.Run": Ignored("commands are requests"),
    "EditorControl.PutCmdSave": Checked("Error updating document"),
    "EditorControl.InPlaceDeactivate": _TEARDOWN,
    "EditorControl.Close": _TEARDOWN,
    # ---- revision, save ----
    "KernelProject.StartNewRevision": Ignored("a refused revision is saved like the old one"),
    "KernelAdmin.SetSaveMode": Ignored("the archive's own calls tell"),
    "KernelProject.GetConfigurationKey": Ignored("the export tells"),
    "KernelProject.GetStoredName": Ignored("the adding tells"),
    "Configuration.ExportProject": Raises(),
    "Archive.AddProject": Raises(),
    # ---- publish: exporter ----
    "Exporter.CreateInstance": Checked("Couldn't load IPC Exporter", nothing=True),
    "Exporter.QueryInterface": Decides("an exporter may lack each of these interfaces"),
    "Exporter.SetSite": Ignored("an exporter may work without a host"),
    "Exporter.PutLanguage": _SETTER,
    "Exporter.PutSpecificationFileName": _SETTER,
    "Exporter.Load": _SETTER,
    "Exporter.PutAxesModelPath": _SETTER,
    "Exporter.PutAxesPosition": _SETTER,
    "Exporter.PutKernel": _SETTER,
    "Exporter.PutDestinationFolder": _SETTER,
    "Exporter.PutOptionA": _SETTER,
    "Exporter.PutOptionB": _SETTER,
    "Exporter.Export": Described("ERROR publishing project: "),
    # ---- publish: 3D component and viewer ----
    "ViewerControl.CreateInstance": _CONTROL,
    "ViewerControl.QueryInterface": _CONTROL,
    "ViewerControl.GetMiscStatus": Decides("no status has no bits"),
    "ViewerControl.SetClientSite": _CONTROL,
    "ViewerControl.InitNew": _CONTROL,
    "ViewerControl.SetExtent": Ignored("the rectangle of the activation counts"),
    "ViewerControl.DoVerb": Ignored("a control that does not become active works all the same"),
    "ViewerControl.GetWindow": Ignored("a control may have no window"),
    "ViewerControl.Viewer": Raises(),
    "ViewerControl.InPlaceDeactivate": _TEARDOWN,
    "ViewerControl.Close": _TEARDOWN,
    "Viewer.GetIDsOfNames": Decides("a viewer may lack the property"),
    "Viewer.PutValidateNodes": _SETTER,
    "Component3D.CreateInstance": Checked("Can't create KV3D", nothing=True),
    "Component3D.QueryInterface": Decides("the component may lack each of these interfaces"),
    "Component3D.PutKernel": _SETTER,
    "Component3D.PutViewer": _SETTER,
    "Component3D.PutResourceTag": _SETTER,
    "Component3D.PutLearningMode": _SETTER,
    "Component3D.PutLanguage": _SETTER,
    "Component3D.PutSpecificationFileName": _SETTER,
    "Component3D.Load": _SETTER,
    "Component3D.PutAxesFolder": _SETTER,
    "Component3D.PutOptionC": _SETTER,
    "Component3D.Execute": Ignored("objects that are not announced are not shown"),
    "KernelProject.GetNodeTree": Decides("without a tree there are no objects"),
    "NodeTree.GetItem": Ignored("objects are announced without a first item as well"),
    "NodeTree.GetChildren": Decides("no list, no children"),
    "ProjectNode.GetChildren": Decides("no list, no children"),
    "NodeChildren.Next": Decides("anything but a child ends the list"),
    "ProjectNode.QueryInterface": Decides("what is no node is passed over"),
    "ProjectNode.GetAttachedObject": Decides("a node may have no object"),
    "ReferencedObject.QueryInterface": Ignored("an object that hides its identity is its own"),
    "SampleExport.GetFirstName": Ignored("the project's name serves"),
    "SampleExport.GetSecondName": Ignored("another name serves"),
    "Component3D.PublishView": Described("Error publishing project", between=":\n"),
    "Component3D.PublishText": Checked("Error publishing project"),
    # ---- package ----
    "ArchiveComponent.CreateInstance": Checked("Can't create KVZip", nothing=True),
    "ArchiveComponent.Create": Checked("Can't create KVB-file"),
    "ArchiveComponent.AddFile": Decides("the first that fails ends the adding"),
    "ArchiveComponent.Close": Ignored("only the adding counts"),
    # ---- end ----
    "KernelAdmin.CloseProjects": _TEARDOWN,
    "KernelAdmin.ShutDown": _TEARDOWN,
    "Configuration.Close": Ignored("the outcome stands already"),
}
