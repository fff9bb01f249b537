"""clang-tidy over the project's sources.

Most of its time goes into the platform's headers, so many sources that are compiled with the same
options are joined into one text and checked together. Those that cannot stand in one text with the
others (two helpers of one name, say) are checked apart. What was found is kept by content below
build/tidy.
"""

from __future__ import annotations

import contextlib
import hashlib
import json
import re
import subprocess
from dataclasses import dataclass
from pathlib import Path

import tree

CACHE = tree.BUILD / "tidy"
# The path-sensitive analyser reads the program and its tools only: it follows calls into whatever
# stands in the same text, so that its time grows faster than the text, and it drowns in the test
# framework's macros. Stand-ins and tests are read by all other checks.
ANALYSED_GROUP_SIZE = 14
GROUP_SIZE = 40
_EXPORTS = re.compile(r"-D\w+_EXPORTS$")  # CMake's own, one for each library
_LOCATION = re.compile(r"^(\S+?):(\d+):(\d+): (.*)$")


@dataclass(frozen=True)
class Group:
    name: str
    sources: tuple[Path, ...]
    options: tuple[str, ...]


def groups() -> list[Group]:
    """All sources of the release and native presets, each once."""
    compiled: dict[Path, tuple[str, ...]] = {}
    for source, options in tree.compile_options("native").items():
        compiled[source] = ("native", *options)
    for source, options in tree.compile_options("release").items():
        compiled[source] = ("release", *(word for word in options if not _EXPORTS.match(word)))
    alike: dict[tuple, list[Path]] = {}
    for source in sorted(compiled):
        if source.suffix == ".cpp" and (tree.ROOT / source).exists():
            alike.setdefault((source.parts[0], compiled[source]), []).append(source)
    return [group for (_, options), sources in alike.items()
            for group in _split(sources, options)]


def _is_analysed(source: Path) -> bool:
    return source.parts[0] not in ("installation", "tests")


def _split(sources: list[Path], options: tuple[str, ...]) -> list[Group]:
    # A source that defines identifiers changes what the headers behind it mean.
    alone = [source for source in sources if "initguid.h" in (tree.ROOT / source).read_text()]
    joined = [source for source in sources if source not in alone]
    size = ANALYSED_GROUP_SIZE if _is_analysed(sources[0]) else GROUP_SIZE
    chunks = [joined[at:at + size] for at in range(0, len(joined), size)]
    return [Group(f"{chunk[0].with_suffix('')}..{chunk[-1].stem}", tuple(chunk), options)
            for chunk in [*chunks, *([source] for source in alone)]]


def findings(group: Group) -> str:
    """clang-tidy's findings, empty when there are none."""
    kept = CACHE / (_key(group) + ".json")
    if not kept.exists():
        text = _check(group)
        CACHE.mkdir(parents=True, exist_ok=True)
        kept.write_text(json.dumps({"group": group.name, "findings": text}))
    return json.loads(kept.read_text())["findings"]


def _key(group: Group) -> str:
    digest = hashlib.sha256()
    for part in (_tool_version(), (tree.ROOT / ".clang-tidy").read_text(), repr(group),
                 Path(__file__).read_text()):
        digest.update(part.encode())
    for path in sorted(tree.own_closure(list(group.sources))):
        digest.update(str(path.relative_to(tree.ROOT)).encode())
        digest.update(path.read_bytes())
    return digest.hexdigest()


def _tool_version() -> str:
    run = subprocess.run(["clang-tidy", "--version"], check=True, capture_output=True, text=True)
    return run.stdout


def _check(group: Group) -> str:
    clashing = _clashing(group) if len(group.sources) > 1 else ()
    if clashing:
        others = tuple(source for source in group.sources if source not in clashing)
        if not others:
            half = len(clashing) // 2
            others, clashing = clashing[:half], clashing[half:]
        return "".join(_check(Group(group.name, part, group.options))
                       for part in (others, clashing))
    code, output = _tidy(group)
    if code == 0:
        return ""
    return output or f"clang-tidy ended with exit code {code} on {group.name}"


def _clashing(group: Group) -> tuple[Path, ...]:
    """The sources that do not compile behind the others; all when none can be told."""
    with _joined(group) as joined:
        run = subprocess.run(["clang++", "-fsyntax-only", "-ferror-limit=0",
                              *_compiler_options(group), str(joined)],
                             cwd=tree.ROOT, capture_output=True, text=True)
        if run.returncode == 0:
            return ()
        told = _with_true_places(run.stderr, joined, group).splitlines()
    broken = {match[1] for match in map(_LOCATION.match, told) if match and "error:" in match[4]}
    return tuple(source for source in group.sources if str(source) in broken) or group.sources


def _tidy(group: Group) -> tuple[int, str]:
    fewer = [] if _is_analysed(group.sources[0]) else ["--checks=-clang-analyzer-*"]
    with _joined(group) as joined:
        run = subprocess.run(["clang-tidy", "--quiet", f"--config-file={tree.ROOT / '.clang-tidy'}",
                              *fewer, str(joined), "--", *_compiler_options(group)],
                             cwd=tree.ROOT, capture_output=True, text=True)
        return run.returncode, _with_true_places(run.stdout, joined, group)


@contextlib.contextmanager
def _joined(group: Group):
    """A file with the text of all sources of the group."""
    CACHE.mkdir(parents=True, exist_ok=True)
    joined = CACHE / ("joined-" + hashlib.sha256(repr(group).encode()).hexdigest()[:16] + ".cpp")
    text = "".join(line + "\n" for source in group.sources for line in _lines(source))
    joined.write_text(text, encoding="utf-8")
    try:
        yield joined
    finally:
        joined.unlink()


def _lines(source: Path) -> list[str]:
    return (tree.ROOT / source).read_text(encoding="utf-8").splitlines()


def _compiler_options(group: Group) -> list[str]:
    target = windows_options() if group.options[0] == "release" else []
    folders = sorted({str(tree.ROOT / source.parent) for source in group.sources})
    return [*target, *group.options[1:], *(f"-I{folder}" for folder in folders), "-Wno-#warnings"]


def windows_options() -> list[str]:
    """Makes clang read what the cross compiler reads. Its own search finds the platform's C
    headers, but not the C++ ones, which GCC tells."""
    run = subprocess.run(["x86_64-w64-mingw32-g++-posix", "-xc++", "-E", "-v", "/dev/null"],
                         check=True, capture_output=True, text=True)
    folders = [line.strip() for line in run.stderr.splitlines()
               if line.startswith(" ") and "/c++" in line and Path(line.strip()).is_dir()]
    assert folders, run.stderr
    return ["--target=x86_64-w64-mingw32", "-nostdinc++",
            *(word for folder in folders for word in ("-isystem", folder))]


def _with_true_places(output: str, joined: Path, group: Group) -> str:
    places = [(source, number) for source in group.sources
              for number in range(1, len(_lines(source)) + 1)]
    told = []
    for line in output.splitlines():
        place = _LOCATION.match(line)
        if place and Path(place[1]).name == joined.name:
            source, number = places[int(place[2]) - 1]
            line = f"{source}:{number}:{place[3]}: {place[4]}"
        told.append(line + "\n")
    return "".join(told)
