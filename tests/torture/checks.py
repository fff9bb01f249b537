"""What a run must have left, by the model that followed its calls."""

from __future__ import annotations

import io
import re
import zipfile

from harness import trace
from harness.logs import without_times

from .bench import Result
from .flow import ANY, pattern
from .model import Model

_STARTED = re.compile(rb"ZeltorAuthorInvisible started at <time> with command line: '[^\r]*'\r\n")


def problems(model: Model, result: Result) -> list[str]:
    found = [*_log(model, result), *_status(model, result), *_files(model, result),
             *_archive(model, result), *_publication(model, result), *_frames(model, result)]
    if not model.died:
        found += trace.problems(result.run.trace, True)
        counted = [line for line in result.run.trace if line.startswith("allocations: ")]
        if counted != ["allocations: 0"]:
            found.append(f"texts and arrays that were never freed: {counted}")
    if result.run.stdout or (result.run.stderr and not model.died):
        found.append(f"output: {result.run.stdout!r} {result.run.stderr!r}")
    return found


def _log(model: Model, result: Result) -> list[str]:
    log = without_times(result.log)
    started = _STARTED.match(log)
    if not started:
        return [f"the log does not begin as it must: {log!r}"]
    expected = pattern(model.flow.log)
    if not expected.fullmatch(log[started.end():]):
        return [f"the log is {log[started.end():]!r}", f"     and not {expected.pattern!r}"]
    return []


def _status(model: Model, result: Result) -> list[str]:
    files = {name: data for name, data in result.exchange.items() if name.startswith("job_")}
    wanted = "job_DONE" if model.succeeded else "job_ERROR"
    if list(files) != [wanted]:
        return [f"the status files are {sorted(files)} and not {wanted}"]
    # What was reported on the way stays in the file when it is renamed.
    reported = pattern([] if model.shape.notify else model.flow.reported)
    if not reported.fullmatch(files[wanted]):
        return [f"{wanted} holds {files[wanted]!r} and not {reported.pattern!r}"]
    return []


def _files(model: Model, result: Result) -> list[str]:
    shape = model.shape
    allowed = {"Pump.kvp", shape.document, "job_DONE", "job_ERROR"}
    if shape.publish and not shape.package:
        allowed.add("Pump")
    if model.package_begun or model.died:
        allowed.add("Pump.kvb")
    if model.died:
        allowed.add("Pump.kvp.new")
    found = [f"left in the exchange folder: {name}" for name in result.exchange.keys() - allowed]
    if not (model.temporary_left or model.died):
        found += [f"left in the temporary folder: {name}" for name in result.temporary]
    if shape.kind in ("IPC", "ILLUS") and not model.died \
            and model.backup_gone == result.backup_left:
        found.append("the backup of the tables is " + ("there" if result.backup_left else "gone"))
    return found


def _archive(model: Model, result: Result) -> list[str]:
    after = result.exchange.get("Pump.kvp")
    if after is None:
        return ["the archive is gone"]
    if not model.archive_begun and after != result.before:
        return ["the archive was changed"]
    if model.archive_written and after == result.before:
        return ["the archive was not written"]
    return [] if is_sound(after) else ["the archive is no sound one"]


def _publication(model: Model, result: Result) -> list[str]:
    if model.packed and not is_sound(result.exchange.get("Pump.kvb")):
        return ["the package is no sound one"]
    if model.published and not model.shape.package and "Pump" not in result.exchange:
        return ["nothing was published"]
    return []


def is_sound(archive: bytes | None) -> bool:
    try:
        with zipfile.ZipFile(io.BytesIO(archive or b"")) as file:
            return file.testzip() is None
    except zipfile.BadZipFile:
        return False


def _frames(model: Model, result: Result) -> list[str]:
    if not model.shape.notify or model.died:
        return []
    reports = model.flow.reported
    expected = [["MESSAGE|", *reports[i:i + 2]] for i in range(0, len(reports), 2)]
    expected += [["STATUS|SUCCESS"], ["SAVE_AND_CLOSE|Pump.kvp"]] if model.succeeded else \
        [["STATUS|FAILED"], ["CLOSE|Pump"]]
    if len(expected) != len(result.frames):
        return [f"the client got {result.frames}"]
    return [f"the client got {frame!r}" for frame, parts in zip(result.frames, expected)
            if not _frame_fits(frame, parts)]


def _frame_fits(frame: str, parts: list) -> bool:
    text = "".join(".*" if part is ANY else re.escape(part) for part in parts)
    return re.fullmatch(r"TOOL_ACTION_MESSAGE\|ZELTOR_MANUAL\|" + text, frame, re.S) is not None
