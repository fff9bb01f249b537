"""Runs that report to a content-management client, and the texts that the program has for it."""

from __future__ import annotations

from .cms import framed
from .logs import without_times

HEAD = "TOOL_ACTION_MESSAGE|ZELTOR_MANUAL|"
FAILED = framed(HEAD + "STATUS|FAILED")
RECEIVE_ERROR = b"Error receiving response from CMS client:\r\n"
CONNECT_ERROR = b"Error connecting to CMS client:\r\n"
TIMEOUT = RECEIVE_ERROR + b"Timeout occured while waiting for response from server"
INVALID_FRAME = RECEIVE_ERROR + b"Invalid response received from server"
INVALID_RESPONSE = b"Invalid response from CMS client"
REPORTED = b"CMS client reported error: "


class Link:
    """Runs of one test, whose exchange folder has a cms.ini."""

    def __init__(self, sandbox):
        self.sandbox = sandbox
        self.exchange = sandbox.path("exchange")

    def settings(self, text: str) -> None:
        (self.exchange / "cms.ini").write_bytes(text.replace("\n", "\r\n").encode())

    def port(self, port: int, timeout: object = 10) -> None:
        self.settings(f"[CMS]\nPort={port}\nTimeout={timeout}\n")

    def success(self, name: str = "P"):
        """A run that succeeds and reports "STATUS" and "SAVE_AND_CLOSE"."""
        return self.sandbox.run("-IN", self.sandbox.windows("exchange", name + ".zip"), "-M", "job",
                                "-LOG", self.sandbox.windows("run.log"), "-S")

    def failure(self):
        """A run that fails and reports "MESSAGE", "STATUS" and "CLOSE"."""
        self.sandbox.path("folder.log").mkdir(exist_ok=True)
        return self.sandbox.run("-IN", self.sandbox.windows("exchange", "P.zip"), "-M", "job",
                                "-LOG", self.sandbox.windows("folder.log"), "-S")

    def traces(self) -> dict[str, bytes]:
        """What the runs left: status files and log, without what differs from run to run."""
        found = {name: self.sandbox.read("exchange", name)
                 for name in self.sandbox.names("exchange") if name != "cms.ini"}
        log = self.sandbox.path("run.log")
        if log.exists():
            found["run.log"] = without_times(log.read_bytes())
        return found
