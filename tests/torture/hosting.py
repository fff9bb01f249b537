"""How a control is set up in its window and taken down again, also while a failure passes."""

from __future__ import annotations

from contextlib import contextmanager

from .calls import Call
from .flow import Died, Disagreement, Flow

SITE_FIRST = 0x20000  # the control wants its site before its state


class _Control:
    def __init__(self, flow: Flow, name: str):
        self._flow, self._name = flow, name
        self._sited = self._active = False

    def call(self, operation: str) -> Call:
        return self._flow.call(f"{self._name}.{operation}")

    def set_up(self) -> bool:
        status = self.call("GetMiscStatus")
        site_first = status.succeeded and bool(int(status.outputs or "0") & SITE_FIRST)
        steps = [self._set_site, self._initialise]
        return all(step() for step in (steps if site_first else reversed(steps)))

    def _set_site(self) -> bool:
        self._sited = True
        return self.call("SetClientSite").succeeded

    def _initialise(self) -> bool:
        if self.call("QueryInterface").gave_object:  # a state in a stream
            return self.call("InitNew").succeeded
        self.call("QueryInterface")  # a state in a storage, which the control does not have
        return True

    def activate(self) -> None:
        self.call("QueryInterface")  # whether it can run elsewhere
        self.call("SetExtent")
        activation = self.call("DoVerb")
        self._active = "OnInPlaceActivate" in activation.callbacks
        if activation.succeeded and self._active and self.call("QueryInterface").gave_object:
            self.call("GetWindow")

    def take_down(self) -> None:
        if self._active and self.call("QueryInterface").gave_object:
            self.call("InPlaceDeactivate")
        self.call("Close")
        if self._sited:
            self.call("SetClientSite")


@contextmanager
def hosted(flow: Flow, name: str):
    """Gives whether there is a control."""
    created = flow.call(f"{name}.CreateInstance")
    if not created.gave_object or not flow.call(f"{name}.QueryInterface").gave_object:
        yield False
        return
    control = _Control(flow, name)
    if not control.set_up():
        control.take_down()
        yield False
        return
    control.activate()
    try:
        yield True
    except (Died, Disagreement):
        raise
    except BaseException:
        control.take_down()
        raise
    control.take_down()
