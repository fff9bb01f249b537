"""The kinds of rules: what the failure of a component call can mean for the run.

    Checked(text)      a failing result ends the run with the text; with nothing=True a success
                       that returns nothing does so too
    Described(text)    the same, followed by the component's own description
    Raises(gives)      a call through an automation wrapper: a failing one ends the run with the
                       component's own description, or without one with the text of its code; so
                       does a value of another type than it `gives`
    Reported(text)     a failing result is reported, and the run goes on
    Ignored(why)       the run goes on, whatever the call gives
    Follows(...)       ends the run unless the latest call of another operation succeeded

Every rule can say besides
    other     the text that ends the run where the call succeeds and gives another value than in an
              undisturbed run; {value} is that value
    zero      the same where it gives the number 0, or an empty VARIANT
    may       the calls that may be missing or come in addition once the call was disturbed, as
              patterns; all others must be those of an undisturbed run, in the same order
    then      the calls that may still come behind a failure that ends the run
    next      the call that must come next where this one fails or gives nothing
    says      lines of the log, as patterns, that may stand in place of the undisturbed run's

A key is an operation, followed where it matters by the call's arguments, and by "#2" for the second
call of that kind.
"""

from __future__ import annotations

from dataclasses import dataclass


@dataclass(frozen=True)
class Rule:
    text: str = ""
    other: str = ""
    zero: str = ""
    may: tuple[str, ...] = ()
    then: tuple[str, ...] = ()
    next: str = ""
    says: tuple[str, ...] = ()


@dataclass(frozen=True)
class Checked(Rule):
    nothing: bool = False


@dataclass(frozen=True)
class Described(Rule):
    between: str = ""  # stands before a description that is not empty


@dataclass(frozen=True)
class Raises(Rule):
    gives: str = ""  # the form of its value; empty: any


@dataclass(frozen=True)
class Reported(Rule):
    family: int | None = None  # only results of this family of codes are reported


@dataclass(frozen=True)
class Ignored(Rule):
    """The text is the reason."""


@dataclass(frozen=True)
class Follows(Rule):
    operation: str = ""
