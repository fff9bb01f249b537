"""Comparing a run's log, whose time stamps differ from run to run."""

from __future__ import annotations

import re

_STAMP = re.compile(rb"(ZeltorAuthorInvisible (?:started|finished successfully) at )"
                    rb"(\d\d:\d\d:\d\d)(?= with command line: '|\r\n)")


def without_times(log: bytes) -> bytes:
    """The log with "<time>" in place of each time stamp of the right form."""
    return _STAMP.sub(rb"\1<time>", log)


def times(log: bytes) -> list[str]:
    return [match[2].decode() for match in _STAMP.finditer(log)]


def started(echo: str) -> bytes:
    """The first line of a log, for the command line behind the program's path."""
    return (b"ZeltorAuthorInvisible started at <time> with command line: '"
            + echo.encode("latin-1") + b"'\r\n")


SUCCESS = b"SUCCESS: ZeltorAuthorInvisible finished successfully at <time>\r\n"
