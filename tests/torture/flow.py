"""One run's calls, taken one after another by the model, and what the model expects of the run."""

from __future__ import annotations

import re

from .calls import Call
from .rules import RULES, SYSTEM_TEXTS, Checked, Described, Raises, Reported

ANY = object()  # stands for a description that only the component knows


class Failed(Exception):
    """The run fails with a text: `text`, then `rest` (a text, or ANY)."""

    def __init__(self, text: str, rest=""):
        super().__init__(text)
        self.text, self.rest = text, rest


class Died(BaseException):
    """A call never returned: the process ended in it."""


class Disagreement(AssertionError):
    """The program called something else than the model says it must."""


class Flow:
    """faulted: whether the plan spoils the call of that number; description: what its error tells
    """

    def __init__(self, calls: list[Call], faulted, description: str):
        self._own = [call for call in calls if call.depth == 0]
        self._next = 0
        self._faulted, self._description = faulted, description
        self.log: list = []  # texts and ANY
        self.reported: list = []  # the same, of the failures alone
        self.ended_in: Call | None = None

    # ---- calls ----

    def peek(self) -> str:
        return self._own[self._next].operation if self._next < len(self._own) else "nothing"

    def take(self, *operations: str) -> Call:
        """The program's next call, which must be one of the operations."""
        if self.peek() not in operations:
            before = self._own[self._next - 1].operation if self._next else "the start"
            raise Disagreement(f"behind {before} came {self.peek()}, not {' or '.join(operations)}")
        call = self._own[self._next]
        self._next += 1
        if not call.returned:
            self.ended_in = call
            raise Died
        return call

    def call(self, operation: str, **names: str) -> Call:
        """The next call, held to the operation's rule; raises Failed as that tells."""
        call, rule = self.take(operation), RULES[operation]
        if isinstance(rule, Checked):
            if not call.succeeded or (rule.nothing and not (call.gave_object or call.text)):
                raise Failed(rule.text.format(**names))
        elif isinstance(rule, Described) and not call.succeeded:
            told = self.description(call)
            raise Failed(rule.text.format(**names) + (rule.between if told else ""), told)
        elif isinstance(rule, Raises) and not call.succeeded:
            raise self.raised(call)
        elif isinstance(rule, Reported) and not call.succeeded:
            self.report(rule.text)
        return call

    def check_all_taken(self) -> None:
        if self._next < len(self._own):
            raise Disagreement(f"behind the end came {self.peek()}")

    def is_lie(self, call: Call) -> bool:
        """Whether the call succeeded without doing anything."""
        return call.succeeded and self._faulted(call.number)

    # ---- texts ----

    def description(self, call: Call):
        return self._description if self._faulted(call.number) else ANY

    def raised(self, call: Call) -> Failed:
        if not self._faulted(call.number):
            return Failed("", ANY)
        if call.result == "DISP_E_EXCEPTION" and self._description:
            return Failed(self._description)
        return Failed(SYSTEM_TEXTS.get(call.result, call.result))

    def text_of(self, call: Call) -> str:
        """The value of an automation call that gives a text."""
        return self._value(call, r'VT_BSTR "(.*)"|VT_BSTR null|VT_I4 (\d+)', lambda: call.text)

    def object_of(self, call: Call) -> bool:
        """Whether an automation call that gives an object gave one."""
        return self._value(call, r"VT_DISPATCH .*", lambda: call.gave_object)

    @staticmethod
    def _value(call: Call, form: str, value):
        if call.outputs in ("empty", "VT_NULL"):
            return value()
        match = re.fullmatch(form, call.outputs, re.S)
        if not match:
            raise Failed(SYSTEM_TEXTS["DISP_E_TYPEMISMATCH"])
        return match[2] if match.lastindex == 2 and match[2] else value()

    # ---- what the run tells ----

    def line(self, text: str) -> None:
        self.log.append(text + "\n")

    def report(self, text: str, rest="") -> None:
        self.log += ["ERROR: ", text, rest]
        self.reported += [text, rest]


def pattern(parts: list) -> re.Pattern:
    """What matches the texts as the program writes them to a file."""
    escaped = (".*" if part is ANY else re.escape(part.replace("\n", "\r\n")) for part in parts)
    return re.compile("".join(escaped).encode("latin-1"), re.S)
