"""The order of a run's steps: which call comes next, given what the calls before it gave. Follows
the calls of a real run, so that it tells the log, the reports and the outcome that the run owes."""

from __future__ import annotations

from .flow import Died, Failed, Flow
from .hosting import hosted
from .publishing import publish
from .shapes import Shape
from .specification import load_specification

PRODUCT = "Zeltor Development Installation v.1.4.0.12"
TEXTS_IN_TWO_DIMENSIONS = "array(2 of type 8)"


class Model:
    """After follow(): what the run must have left."""

    def __init__(self, shape: Shape, paths, flow: Flow):
        self.shape, self.paths, self.flow = shape, paths, flow
        self.died = False
        self.succeeded = False
        self.archive_begun = False  # the archive was opened for writing
        self.archive_written = False  # by a component that did what it said
        self.temporary_left = False  # what was published for a package stays
        self.published = False  # by a component that did what it said
        self.package_begun = False
        self.packed = False  # by a component that did what it said
        self.backup_gone = False
        self.has_export_handler = False
        self._kernel = self._configuration = False

    def follow(self) -> Model:
        try:
            self._execute()
            self._shut_down()
            self.flow.check_all_taken()
        except Died:
            self.died = True
        return self

    def _execute(self) -> None:
        try:
            self._process()
            self.flow.line("SUCCESS: ZeltorAuthorInvisible finished successfully at <time>")
            self.succeeded = True
        except Failed as failure:
            self.flow.report(failure.text, failure.rest)

    def _shut_down(self) -> None:
        if self._kernel:
            self.flow.call("KernelAdmin.CloseProjects")
            self.flow.call("KernelAdmin.ShutDown")
        if self._configuration:
            self.flow.call("Configuration.Close")

    # ---- the steps ----

    def _process(self) -> None:
        self.flow.line("Processing project 'Pump'")
        self._start()
        self._configure()
        self._import()
        self._open()
        self._load()
        modified = self._change()
        if modified:
            self._save()
        if self.shape.publish:
            publish(self)
        self.flow.line("SUCCESS: Project 'Pump' successfully processed")

    def _start(self) -> None:
        flow = self.flow
        flow.call("KernelAdmin.CreateInstance")
        self._kernel = True
        if flow.call("KernelAdmin.QueryInterface").gave_object:
            flow.call("KernelAdmin.SetSite")
        flow.call("KernelAdmin.PutClientName")
        flow.call("Administration.CreateInstance")
        flow.call("Administration.QueryInterface")  # the platform's: whether it can run elsewhere
        if not flow.call("Administration.QueryInterface").gave_object:
            raise Failed("Couldn't create KVAdmin")

    def _configure(self) -> None:
        flow = self.flow
        opened = flow.call("Administration.OpenConfiguration")
        self._configuration = flow.object_of(opened)
        file = ""
        if self._configuration:
            flow.call("Configuration.ClientName")
            flow.call("Configuration.Open")
            file = flow.text_of(flow.call("Configuration.ConfigurationFile"))
        if file != self.paths.configuration:
            raise Failed("Configuration file does not exist: " + file)
        flow.call("KernelAdmin.SetProjectsLocation")

    def _import(self) -> None:
        flow = self.flow
        archive = flow.object_of(flow.call("Administration.OpenArchive"))
        if not archive or flow.call("Archive.Projects").outputs != TEXTS_IN_TWO_DIMENSIONS:
            raise Failed("No project in source zip")
        if self._configuration:
            flow.text_of(flow.call("Configuration.WorkFolder"))
        flow.object_of(flow.call("Archive.ExtractProject"))
        flow.call("Configuration.ImportProject")
        if flow.call("Configuration.ImportedProjects").outputs != TEXTS_IN_TWO_DIMENSIONS:
            raise Failed("Project could not be imported into configuration")

    def _open(self) -> None:
        flow = self.flow
        flow.call("KernelAdmin.OpenProject")
        # The texts are asked for together; only then is the name looked at.
        name = flow.take("KernelProject.GetSpecificationName")
        version = flow.call("KernelProject.GetSpecificationVersion").text
        flow.call("KernelProject.GetLanguage")
        if not name.text:
            raise Failed("Project specification is not defined")
        load_specification(self)
        flow.line(f"Specification '{name.text}', v.{version} loaded")
        flow.call("KernelProject.PutLanguage")

    def _load(self) -> None:
        self.flow.call("KernelAdmin.SelectProduct")
        self.flow.call("KernelProject.Load")
        self.flow.line(f"Project loaded by {PRODUCT}")

    # ---- the changes ----

    def _change(self) -> bool:
        shape, modified = self.shape, False
        if shape.metadata:
            modified |= self._metadata()
        if shape.new_name and self.flow.call("KernelProject.Rename").result == "S_OK":
            self.flow.line(f"Project name changed to '{shape.new_name}'")
            modified = True
        if shape.edit:
            modified |= self._edit(*shape.edit)
        if shape.document:
            self.flow.call("KernelProject.AttachDocument", path=self.paths.document)
            self.flow.line(f"Document '{shape.document}' attached to the project")
            modified = True
        if shape.update:
            modified |= self._update()
        if shape.revision:
            self.flow.call("KernelProject.StartNewRevision")
            self.flow.line("New revision of the project started")
            modified = True
        return modified

    def _metadata(self) -> bool:
        flow, modified = self.flow, False
        collection = flow.call("KernelProject.GetMetadata").gave_object
        for name, value, by_meta in self.shape.metadata:
            flow.call("KernelProject.GetDeclaration", name=name)
            item = collection and flow.call("MetadataCollection.FindItem").gave_object
            if not item:
                flow.call("KernelProject.InsertMetadata", name=name)
            current = flow.call("MetadataItem.GetValue")
            unset = not current.succeeded or current.outputs == "empty"
            if not (unset or by_meta):
                continue
            if flow.call("MetadataItem.SetValue", name=name).result == "S_OK":
                flow.line(f"Value of metadata '{name}' set to '{value}'")
                modified = True
        return modified

    def _edit(self, progid: str, method: str) -> bool:
        flow = self.flow
        flow.call("SampleEdit.CreateInstance", progid=progid)
        found = flow.call("SampleEdit.GetIDsOfNames", method=method)
        failure = f"Error calling EDIT method '{method}'. "
        if found.outputs == "0":  # no member has the number that it gave
            raise Failed(failure)
        if flow.call("SampleEdit.Touch", method=method).outputs == "empty":
            raise Failed(failure)
        flow.line(f"Edit handler (ProgID: '{progid}', Method: '{method}') succeeded")
        return True

    def _update(self) -> bool:
        flow = self.flow
        name = flow.call("KernelProject.GetDocumentName").text
        generated = not name
        if generated:
            flow.call("KernelProject.GenerateDocument")
            name = flow.call("KernelProject.GetDocumentName").text
            if not name:
                flow.line("Failed to generate document")
                return False
            flow.line(f"Document '{name}' was generated in the project")
        flow.line(f"Updating document '{name}'")
        with hosted(flow, "EditorControl") as control:
            return self._edit_document(control) or generated

    def _edit_document(self, control: bool) -> bool:
        flow = self.flow
        # Without a control, or without its automation, nothing can be asked of it.
        if not control or not flow.call("EditorControl.QueryInterface").gave_object:
            raise Failed("ERROR initializing KVXMed")
        self._give_kernel()
        if self._flag("GetCmdHasDocument") is False:
            raise Failed("Error updating document - document could not be loaded into XMED. "
                         "It can be invalid.")
        if not self._flag("GetCmdSave"):
            flow.line("Document is up-to-date and has not been modified")
            return False
        self._send_commands()
        saved = self._found("EditorControl")
        if not saved:
            raise Failed("Error updating document")
        flow.call("EditorControl.PutCmdSave")
        flow.line("Document in the project was updated")
        return True

    def _give_kernel(self) -> None:
        if not self._found("EditorControl"):
            raise Failed("ERROR initializing KVXMed")
        if not self.flow.take("EditorControl.PutRefKernel").succeeded:
            self.flow.call("EditorControl.PutKernel")

    def _flag(self, operation: str) -> bool | None:
        """None: it could not be read."""
        if not self._found("EditorControl"):
            return None
        read = self.flow.call(f"EditorControl.{operation}")
        return read.outputs == "VT_BOOL true" if read.succeeded else None

    def _send_commands(self) -> None:
        for owner, link in (("EditorControl", "GetXMED"), ("Editor", "GetDocument"),
                            ("EditorDocument", "GetHost")):
            if not self._found(owner):
                return
            if not self.flow.call(f"{owner}.{link}").outputs.startswith("VT_DISPATCH Editor"):
                return
        for _ in range(2 if self.shape.revision else 1):
            if self._found("EditorHost"):
                self.flow.call("EditorHost.Run")

    def _found(self, owner: str) -> bool:
        """Whether the object knows the name that it is asked for, under a number that it has."""
        lookup = self.flow.call(f"{owner}.GetIDsOfNames")
        return lookup.succeeded and lookup.outputs != "0"

    # ---- the archive ----

    def _save(self) -> None:
        flow = self.flow
        flow.call("KernelAdmin.SetSaveMode")
        if not flow.object_of(flow.call("Administration.OpenArchive")):
            raise Failed("Can't create KVP-file")
        self.archive_begun = True
        flow.call("KernelProject.GetConfigurationKey")
        flow.call("KernelProject.GetStoredName")
        flow.object_of(flow.call("Configuration.ExportProject"))
        flow.text_of(flow.call("Configuration.WorkFolder"))
        added = flow.call("Archive.AddProject")
        self.archive_written = not flow.is_lie(added)
        flow.line("Project saved to KVP file")
