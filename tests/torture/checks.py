"""What a run must have left, by the expectation that followed its calls."""

from __future__ import annotations

import io
import re
import zipfile

from harness import trace
from harness.logs import without_times

from .bench import Result
from .expectation import ANY, Expectation
from .rules import UPDATED

_STARTED = re.compile(rb"ZeltorAuthorInvisible started at <time> with command line: '[^\r]*'\r\n")
_PUBLISHING = ("Exporter.Export", "Component3D.PublishView", "Component3D.PublishText")


def problems(expected: Expectation, result: Result,
             clean_log: list[str] | None = None) -> list[str]:
    """clean_log: the lines of an undisturbed run; None where this is one."""
    found = [*expected.problems, *_log(expected, result, clean_log), *_status(expected, result),
             *_files(expected, result), *_archive(expected, result),
             *_publication(expected, result), *_frames(expected, result)]
    if not expected.died:
        found += trace.problems(result.run.trace, True)
        counted = [line for line in result.run.trace if line.startswith("allocations: ")]
        if counted != ["allocations: 0"]:
            found.append(f"texts and arrays that were never freed: {counted}")
    if result.run.stdout or (result.run.stderr and not expected.died):
        found.append(f"output: {result.run.stdout!r} {result.run.stderr!r}")
    return found


# ---- the log ----

def _in_file(text: str) -> bytes:
    return text.replace("\n", "\r\n").encode("latin-1")


def steps_of(log: bytes, reported: list[tuple] = ()) -> list[str]:
    """The lines behind the first, without the reports of failures; raises ValueError where one of
    these is missing, or not as it must be."""
    log = without_times(log)
    started = _STARTED.match(log)
    if not started:
        raise ValueError(f"the log does not begin as it must: {log!r}")
    log = log[started.end():]
    for text, rest in reported:
        report = b"ERROR: " + _in_file(text + ("" if rest is ANY else rest))
        at = log.rfind(report)
        if at < 0:
            raise ValueError(f"the log lacks {report!r}: {log!r}")
        log = log[:at] + (b"" if rest is ANY else log[at + len(report):])
    if b"ERROR: " in log or log[-2:] not in (b"", b"\r\n"):
        raise ValueError(f"the log has more than it must: {log!r}")
    return log.decode("latin-1").split("\r\n")[:-1]


def _log(expected: Expectation, result: Result, clean_log: list[str] | None) -> list[str]:
    try:
        steps = steps_of(result.log, expected.reported)
    except ValueError as error:
        return [str(error)]
    clean = clean_log if clean_log is not None else steps
    found = []
    left = iter(clean)
    for line in steps:
        said = any(re.fullmatch(pattern, line, re.S) for pattern in expected.says)
        if not said and not any(line == other for other in left):
            found.append(f"the log has, in this place: {line!r}")
    for begin, count in expected.earned().items():
        there = sum(line.startswith(begin) for line in steps)
        if there != count:
            found.append(f"{there} lines begin with {begin!r}, and not {count}")
    if expected.succeeded and expected.scenario.update \
            and sum(line in UPDATED for line in steps) != 1:
        found.append("the document update ended with none of its lines, or with several")
    failure = expected.failure
    if failure and failure.rest is not ANY \
            and not result.log.endswith(b"ERROR: " + _in_file(failure.text + failure.rest)):
        found.append(f"the log does not end with the failure: {result.log!r}")
    return found


# ---- files ----

def _pattern(parts: list) -> re.Pattern:
    escaped = (b".*" if part is ANY else re.escape(_in_file(part)) for part in parts)
    return re.compile(b"".join(escaped), re.S)


def _status(expected: Expectation, result: Result) -> list[str]:
    files = {name: data for name, data in result.exchange.items() if name.startswith("job_")}
    wanted = "job_DONE" if expected.succeeded else "job_ERROR"
    if list(files) != [wanted]:
        return [f"the status files are {sorted(files)} and not {wanted}"]
    # What was reported on the way stays in the file when it is renamed.
    reported = [] if expected.scenario.notify else expected.reported
    if not _pattern([part for report in reported for part in report]).fullmatch(files[wanted]):
        return [f"{wanted} holds {files[wanted]!r} and not {reported}"]
    return []


def _files(expected: Expectation, result: Result) -> list[str]:
    scenario = expected.scenario
    allowed = {"Pump.kvp", scenario.document, "job_DONE", "job_ERROR"}
    if scenario.publish and not scenario.package:
        allowed.add("Pump")
    if expected.made("ArchiveComponent.Create"):
        allowed.add("Pump.kvb")
    if expected.died:
        allowed.add("Pump.kvp.new")
    found = [f"left in the exchange folder: {name}" for name in result.exchange.keys() - allowed]
    packing = scenario.package and not expected.made("ArchiveComponent.Close")
    if not (packing or expected.died):
        found += [f"left in the temporary folder: {name}" for name in result.temporary]
    loaded = [call for call in expected.made("KernelAdmin.LoadRefTablesBackup") if call.succeeded]
    if not expected.died and scenario.has_backup and bool(loaded) == result.backup_left:
        found.append("the backup of the tables is " + ("there" if result.backup_left else "gone"))
    return found


def _archive(expected: Expectation, result: Result) -> list[str]:
    after = result.exchange.get("Pump.kvp")
    if after is None:
        return ["the archive is gone"]
    opened = expected.made("Administration.OpenArchive")
    if len(opened) < 2 and after != result.before:
        return ["the archive was changed"]
    if expected.did("Archive.AddProject") and after == result.before:
        return ["the archive was not written"]
    return [] if is_sound(after) else ["the archive is no sound one"]


def _publication(expected: Expectation, result: Result) -> list[str]:
    if not expected.succeeded:
        return []
    packed = expected.did("ArchiveComponent.Create", "ArchiveComponent.AddFile",
                          "ArchiveComponent.Close")
    if packed and not is_sound(result.exchange.get("Pump.kvb")):
        return ["the package is no sound one"]
    if expected.did(*_PUBLISHING) and not expected.scenario.package \
            and "Pump" not in result.exchange:
        return ["nothing was published"]
    return []


def is_sound(archive: bytes | None) -> bool:
    try:
        with zipfile.ZipFile(io.BytesIO(archive or b"")) as file:
            return file.testzip() is None
    except zipfile.BadZipFile:
        return False


# ---- the client's messages ----

def _frames(expected: Expectation, result: Result) -> list[str]:
    if not expected.scenario.notify or expected.died:
        return []
    wanted = [["MESSAGE|", *report] for report in expected.reported]
    wanted += [["STATUS|SUCCESS"], ["SAVE_AND_CLOSE|Pump.kvp"]] if expected.succeeded else \
        [["STATUS|FAILED"], ["CLOSE|Pump"]]
    if len(wanted) != len(result.frames):
        return [f"the client got {result.frames}"]
    return [f"the client got {frame!r}" for frame, parts in zip(result.frames, wanted)
            if not _frame_fits(frame, parts)]


def _frame_fits(frame: str, parts: list) -> bool:
    text = "".join(".*" if part is ANY else re.escape(part) for part in parts)
    return re.fullmatch(r"TOOL_ACTION_MESSAGE\|ZELTOR_MANUAL\|" + text, frame, re.S) is not None
