"""Every text that the program says, in the order of a run, and when it says it.

A text that the program puts together from several literals stands as all of them.
"""

TEXTS: dict[tuple[str, ...], str] = {
    # ---- the start of a run ----
    ("Fatal Error: MFC initialization failed\n",):
        "the framework does not start; standard output, exit code 1",
    ("Project name is not specified.",): "`IN` is missing or empty",
    ("Can't create exchange folder",):
        "the exchange folder is not there and cannot be made, or there is none",
    ("Can't create log-file folder",): "the folder of the `LOG` file is not there and cannot be made",
    ("Can't create log file.",): "the `LOG` file cannot be created",
    ("ZeltorAuthorInvisible started at %s with command line: '%s'\n",): "log: first line",
    ("_ERROR",): "status file: the run is going on, or has failed",
    ("_DONE",): "status file: the run has succeeded",
    ("Processing project '%s'\n",): "log: there is work on a project",

    # ---- opening the project ----
    ("Couldn't load KV Kernel",): "the kernel cannot be created",
    ("Couldn't create KVAdmin",): "the administration component cannot be created",
    ("No project in source zip",): "the archive cannot be read or lists no project",
    ("Couldn't load configuration",): "the XML parser is missing",
    ("Configuration file does not exist: ",): "the configuration names no file that is there",
    ("Invalid configuration file format: ",): "the configuration file is no XML",
    ("Projects location cannot be set.",): "the kernel refuses the folder of projects",
    ("Project could not be imported into configuration",): "nothing was imported",
    ("Can't open project",): "the kernel does not open the imported project",
    ("Project specification is not defined",): "the project names no specification",

    # ---- its specification ----
    ("Specification cfg-file does not exist: ",): "the description file is missing",
    ("Specification ", " is not valid.\nData folder does not exist:\n\n"):
        "the specification's folder is missing",
    ("Invalid specification cfg-file format: ",):
        "the description file is no XML, or has no configuration",
    ("Project requires specification version ", ". Current version is ",
     ". Please install the required version of specification."):
        "the project asks for a newer specification",
    ("Project specification class unknown",): "the class is none of the five",
    ("Can't load specification - aborting...",):
        "the specification was not loaded, for a reason already told",
    ("Error loading IPC DPL command templates.",):
        "class IPC: the templates are refused by their own facility; the run goes on",
    ("Couldn't load library of declarations.",): "the declarations are refused; the run goes on",
    ("Couldn't load library of types.",): "the types are refused; the run goes on",
    ("Specification '%ws', v.%ws loaded\n",): "log: the specification is loaded",
    ("ERROR loading project: ",): "the kernel does not load the project; its description follows",
    ("Project loaded by %s v.%s\n",): "log: the project is loaded",

    # ---- what the command line asks for ----
    ("Can't create declaration for metadata: ",): "the metadata name is not declared",
    ("Can't insert metadata: ",): "the metadata item is neither found nor inserted",
    ("Can't set value of metadata: ",): "the value is refused",
    ("Value of metadata '%s' set to '%s'\n",): "log: the value is set, or was so already",
    ("Project name changed to '%s'\n",): "log: renamed",
    ("Error attaching document: ",): "the document is not attached; its full path follows",
    ("Document '%s' attached to the project\n",): "log: attached",
    ("Can't create edit handler: ",): "the edit handler cannot be created",
    ("EDIT method not found: ",): "the edit handler lacks the method",
    ("Error calling EDIT method '", "'. "):
        "the method returns false or nothing, or raises; then its description follows",
    ("Edit handler (ProgID: '%s', Method: '%s') succeeded\n",): "log: the method returned true",
    ("Failed to generate document\n",): "log: no document, and none was generated; the run goes on",
    ("Document '%ws' was generated in the project\n",): "log: generated",
    ("Updating document '%ws'\n",): "log: the update begins",
    ("ERROR initializing KVXMed",): "the editor control cannot be created",
    ("Error updating document - document could not be loaded into XMED. It can be invalid.",):
        "the editor has no document",
    ("Error updating document",): "the editor does not give the objects behind the document",
    ("Document in the project was updated\n",): "log: updated and saved",
    ("Document is up-to-date and has not been modified\n",): "log: nothing to save",
    ("New revision of the project started\n",): "log: new revision",
    ("Can't create KVP-file",): "the archive cannot be written anew",
    ("Project saved to KVP file\n",): "log: the archive is written",

    # ---- publishing ----
    ("Couldn't load IPC Exporter",): "the exporter cannot be created",
    ("Can't create KV3D",): "the 3D component cannot be created",
    ("ERROR publishing project: ",): "the exporter fails; its description follows",
    ("Error publishing project",): "publishing fails; a description may follow on a second line",
    ("Project published successfully\n",): "log: published",
    ("Can't create KVZip",): "the archive component cannot be created",
    ("Can't create KVB-file",): "the package cannot be created",
    ("Error generating KVB-file",): "the published folder cannot be read or packed",
    ("KVB file created sucessfully\n",): "log: packed",

    # ---- the end of a run ----
    ("SUCCESS: Project '%s' successfully processed\n",): "log: all work on the project is done",
    ("SUCCESS: ZeltorAuthorInvisible finished successfully at %s\n",): "log: last line",
    ("ERROR: %s",): "log: before the text of a failure",
    ("Out of memory.",): "memory ran out where a component is called",

    # ---- messages to the content-management client ----
    ("TOOL_ACTION_MESSAGE|ZELTOR_MANUAL|",): "message: its head",
    ("MESSAGE",): "message: the text of a failure",
    ("STATUS",): "message: the outcome",
    ("SUCCESS",): "message: outcome of a run that succeeded",
    ("FAILED",): "message: outcome of a run that failed",
    ("SAVE_AND_CLOSE",): "message: the archive's name, after a success",
    ("CLOSE",): "message: the project's name, after a failure",

    # ---- the link to it; standard output ----
    ("Can't read port number to connect to CMS client",): "`cms.ini` has no port",
    ("Error connecting to CMS client:\n",): "no connection; one of the reasons below follows",
    ("Error sending message to CMS client:\n",): "not sent; one of the reasons below follows",
    ("Error receiving response from CMS client:\n",): "no answer; one of the reasons below follows",
    ("Invalid response from CMS client",): "the answer has too few fields or another head",
    ("CMS client reported error: ",): "the client answered with an error; its description follows",
    ("Can't initialize Windows Sockets",): "box: sockets do not start",
    ("CMS_TC",): "box: its title",
    ("Can't send data. No connection",): "sending without a connection",
    ("Can't resolve host name: ",): "the host has no address",
    ("Can't create socket",): "no socket",
    ("Can't connect to port ",): "the port refuses or does not answer in time",
    ("Can't send empty message",): "a message of no characters",
    ("Message is too long.",): "a frame beyond the longest",
    ("Error sending data: ", ". Error code: "): "the peer does not take the frame",
    ("Timeout occured while waiting for response from server",): "no answer in time",
    ("Unknown error. Error code: ",): "waiting for the answer fails",
    ("Error receiving data. Error code: ",): "reading the answer fails",
    ("Invalid response received from server",): "the answer is no frame",
}

# Literals of the same look that nobody reads: what the program expects of its client.
SILENT = ("TOOL_RESPONSE_MESSAGE", "ERROR")
