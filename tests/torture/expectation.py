"""What a run owes by the rules: follows the calls that it made, whatever their order, and compares
them with those of an undisturbed run."""

from __future__ import annotations

import re
from collections import Counter
from fnmatch import fnmatchcase

from .calls import Call
from .rule import Checked, Described, Follows, Raises, Reported, Rule
from .rules import ENDED_BY, FAMILY_BITS, LINES, OBJECT, RULES, SYSTEM_TEXTS, TEARDOWN
from .scenarios import Scenario

ANY = object()  # stands for a description that only the component knows
_NOTHING = ("null", "empty", "VT_NULL")


class Failed(Exception):
    """The run fails with a text: `text`, then `rest` (a text, or ANY)."""

    def __init__(self, text: str, rest=""):
        super().__init__(text)
        self.text, self.rest = text, rest


def identity(call: Call) -> str:
    """What a rule names a call by: where it asks for something by name, with that name."""
    asks = call.operation.endswith((".QueryInterface", ".GetIDsOfNames", ".SetClientSite"))
    return f"{call.operation} {call.arguments}" if asks else call.operation


def matches(call: Call, patterns) -> bool:
    # Braces and quotes are no part of fnmatch's language, so that names stand as they are.
    return any(fnmatchcase(identity(call), wanted) or fnmatchcase(call.operation, wanted)
               for wanted in patterns)


def numbered(calls: list[Call]) -> list[str]:
    """For each call its identity with the number among those of the same identity."""
    seen: Counter = Counter()
    keys = []
    for call in calls:
        seen[identity(call)] += 1
        keys.append(f"{identity(call)} #{seen[identity(call)]}")
    return keys


def rule_of(key: str, operation: str) -> Rule:
    return next(RULES[name] for name in (key, key.rsplit(" #", 1)[0], operation) if name in RULES)


class Expectation:
    """faulted: whether the plan injects a fault into the call of that number; description: the one
    that an injected error has. After construction it says what the run must have left; `problems`
    has what is wrong with the calls themselves."""

    def __init__(self, scenario: Scenario, calls: list[Call], clean: list[Call],
                 faulted=lambda number: False, description: str = ""):
        self.scenario, self._faulted, self._description = scenario, faulted, description
        self.own = [call for call in calls if call.depth == 0]
        self.clean = [call for call in clean if call.depth == 0]
        self._ends = [call.number for call in self.own[1:]] + [len(calls) + 1]
        self.reported: list[tuple] = []  # text and rest of each failure
        self.failure: Failed | None = None
        self._failing: Call | None = None
        self.may: set[str] = set()
        self.says: set[str] = set()
        self.problems: list[str] = []
        self.died = bool(self.own) and not self.own[-1].returned
        self._names = {"name": "", "progid": "", "method": "", "path": ""}
        if scenario.edit:
            self._names["progid"], self._names["method"] = scenario.edit
        self._follow()

    # ---- following the calls ----

    def _follow(self) -> None:
        undisturbed = dict(zip(numbered(self.clean), self.clean))
        last = len(self.own)
        for at, (key, call) in enumerate(zip(numbered(self.own), self.own)):
            if not call.returned:
                break
            rule = rule_of(key, call.operation)
            self._learn(call)
            clean = undisturbed.get(key)
            if self._is_disturbed(at, call, clean):
                self.may.update(rule.may)
                self.says.update(rule.says)
            try:
                self._hold(rule, call, clean, self.own[:at])
            except Failed as failure:
                self.failure, self._failing, last = failure, call, at + 1
                self.reported.append((failure.text, failure.rest))
                self._check_nothing_but(self.own[last:], (*TEARDOWN, *rule.then), call)
                break
            self._check_next(rule, call, at)
        self._compare(self.own[:last])
        if not self.died:
            self._check_ended()

    def _learn(self, call: Call) -> None:
        if call.operation == "KernelProject.GetDeclaration":
            self._names["name"] = call.arguments.strip('"')
        if call.operation == "KernelProject.AttachDocument":
            self._names["path"] = call.arguments.split('"')[1].replace("\\\\", "\\")

    def _is_disturbed(self, at: int, call: Call, clean: Call | None) -> bool:
        return clean is None or (call.result, call.outputs) != (clean.result, clean.outputs) \
            or any(self._faulted(number) for number in range(call.number, self._ends[at]))

    def _hold(self, rule: Rule, call: Call, clean: Call | None, before: list[Call]) -> None:
        text = rule.text.format(**self._names)
        if isinstance(rule, Follows):
            made = [other for other in before if other.operation == rule.operation]
            if not made or not made[-1].succeeded:
                raise Failed(text)
        elif isinstance(rule, Checked):
            if not call.succeeded or (rule.nothing and not (call.gave_object or call.text)):
                raise Failed(text)
        elif isinstance(rule, Reported):
            self._report(rule, call)
        elif not call.succeeded and isinstance(rule, Described):
            rest = self._description if self._faulted(call.number) else ANY
            raise Failed(text + (rule.between if rest else ""), rest)
        elif not call.succeeded and isinstance(rule, Raises):
            raise self._raised(call)
        if call.succeeded:
            self._hold_value(rule, call, clean)

    def _hold_value(self, rule: Rule, call: Call, clean: Call | None) -> None:
        if rule.zero and call.outputs in ("0", "empty"):
            raise Failed(rule.zero.format(**self._names))
        form = getattr(rule, "gives", "")
        if form and call.outputs not in _NOTHING and not re.fullmatch(form, call.outputs, re.S):
            raise Failed(SYSTEM_TEXTS["DISP_E_TYPEMISMATCH"])
        differs = not call.gave_object if form == OBJECT else clean is None \
            or call.outputs != clean.outputs
        if rule.other and differs:
            number = re.fullmatch(r"VT_I4 (\d+)", call.outputs)
            raise Failed(rule.other.format(value=number[1] if number else call.text))

    def _report(self, rule: Reported, call: Call) -> None:
        code = int(call.result, 16) if call.result.startswith("0x") else 0
        if not call.succeeded and rule.family in (None, code & FAMILY_BITS):
            self.reported.append((rule.text, ""))

    def _raised(self, call: Call) -> Failed:
        if not self._faulted(call.number):
            return Failed("", ANY)
        if call.result == "DISP_E_EXCEPTION" and self._description:
            return Failed(self._description)
        return Failed(SYSTEM_TEXTS.get(call.result, call.result))

    # ---- which calls were made ----

    def _check_next(self, rule: Rule, call: Call, at: int) -> None:
        failing = not call.succeeded or call.outputs in _NOTHING
        following = self.own[at + 1].operation if at + 1 < len(self.own) else "nothing"
        if rule.next and failing and following != rule.next:
            self.problems.append(f"behind a failing {call.operation} came {following}")

    def _check_nothing_but(self, calls: list[Call], patterns, cause: Call) -> None:
        self.problems += [f"behind the failure of {cause.operation} came {identity(call)}"
                          for call in calls if not matches(call, patterns)]

    def _compare(self, made: list[Call]) -> None:
        """The calls must be those of an undisturbed run, but for what the rules let differ."""
        had = [identity(call) for call in made if not matches(call, self.may)]
        wanted = [identity(call) for call in self.clean if not matches(call, self.may)]
        if self.failure or self.died:
            wanted = wanted[:len(had)]
        if self.died and wanted and had:  # the trace has no arguments of a call that never returned
            had[-1], wanted[-1] = had[-1].split(" ")[0], wanted[-1].split(" ")[0]
        if had != wanted:
            at = next((i for i, pair in enumerate(zip(had, wanted)) if pair[0] != pair[1]),
                      min(len(had), len(wanted)))
            self.problems.append(f"the calls differ from an undisturbed run's: {had[at:at + 3]} "
                                 f"in place of {wanted[at:at + 3]}")

    def _check_ended(self) -> None:
        for begins, ends in ENDED_BY.items():
            begun = [at for at, call in enumerate(self.own) if identity(call) == begins
                     and (call.gave_object or call.succeeded and call.outputs == ""
                          or begins.endswith("object"))]
            later = [identity(call) for call in self.own[begun[-1]:]] if begun else []
            self.problems += [f"{begins} was not followed by {end}" for end in ends
                              if begun and later.count(end) != 1]

    # ---- what the run has come to ----

    def made(self, *operations: str) -> list[Call]:
        return [call for call in self.own if call.operation in operations]

    def did(self, *operations: str) -> bool:
        """Whether such a call was made, and every one did what it says."""
        calls = self.made(*operations)
        return bool(calls) and all(call.succeeded and not self._faulted(call.number)
                                   for call in calls)

    @property
    def succeeded(self) -> bool:
        return not self.failure and bool(self.made("KernelAdmin.CloseProjects"))

    def earned(self) -> dict[str, int]:
        """How many lines of the log must begin so."""
        reached = {"begun": lambda call: True, "returned": lambda call: call.returned,
                   "succeeded": lambda call: call.succeeded, "S_OK": lambda c: c.result == "S_OK"}
        found = {begin: sum(reached[what](call) for call in self.made(*operations)
                            if what == "begun" or call is not self._failing)
                 for begin, (operations, what) in LINES.items()}
        return {**found, "Processing project '": 1, "SUCCESS: ": 2 * self.succeeded}
