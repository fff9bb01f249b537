"""clang-tidy over the project's sources.

Most of its time goes into the platform's headers, so many sources that are compiled with the same
options are joined into one text and read together. Those that cannot stand in one text with the
others (two helpers of one name, say) are read apart. What was found in a source is kept by the
content of all that it includes, below build/tidy, and only sources without such a result are read.
"""

from __future__ import annotations

import contextlib
import functools
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
GROUP_SIZE = 50
# Options that keep like sources apart and change nothing that is read.
_NO_MATTER = re.compile(r"-D(\w+_EXPORTS|NDEBUG|_GLIBCXX_ASSERTIONS)$")
_LOCATION = re.compile(r"^(\S+?):(\d+):(\d+): (.*)$")


@dataclass(frozen=True)
class Group:
    """Sources that are read as one text; the first option names the preset."""

    sources: tuple[Path, ...]
    options: tuple[str, ...]


def sources() -> dict[Path, tuple[str, ...]]:
    """Every source of the release and native presets with its options."""
    compiled: dict[Path, tuple[str, ...]] = {}
    for preset in ("native", "release"):
        for source, options in tree.compile_options(preset).items():
            if source.suffix == ".cpp" and (tree.ROOT / source).exists():
                compiled[source] = (preset, *(word for word in options
                                              if not _NO_MATTER.match(word)))
    return dict(sorted(compiled.items()))


def groups(unread: dict[Path, tuple[str, ...]]) -> list[Group]:
    """What takes longest first."""
    alike: dict[tuple, list[Path]] = {}
    for source, options in unread.items():
        # A source that defines identifiers changes what the headers behind it mean.
        alone = source if "initguid.h" in (tree.ROOT / source).read_text() else None
        alike.setdefault((_is_analysed(source), alone, options), []).append(source)
    found = [Group(chunk, options) for (_, _, options), together in alike.items()
             for chunk in _chunks(together)]
    return sorted(found, key=lambda group: (not _is_analysed(group.sources[0]), -len(group.sources)))


def _is_analysed(source: Path) -> bool:
    return source.parts[0] not in ("installation", "tests")


def _chunks(together: list[Path]) -> list[tuple[Path, ...]]:
    """Parts of about one size, none above the limit."""
    limit = ANALYSED_GROUP_SIZE if _is_analysed(together[0]) else GROUP_SIZE
    count = -(-len(together) // limit)
    edges = [len(together) * at // count for at in range(count + 1)]
    return [tuple(together[start:end]) for start, end in zip(edges, edges[1:])]


def kept(source: Path, options: tuple[str, ...]) -> str | None:
    """What was found in the source as it stands; None when it has not been read."""
    file = _file(source, options)
    return json.loads(file.read_text())["findings"] if file.exists() else None


def read(group: Group) -> None:
    """Reads the group's sources, and keeps what is found in each."""
    found = _findings_by_source(group, _check(group))
    for source in group.sources:
        file = _file(source, group.options)
        partial = file.with_suffix(".part")
        partial.write_text(json.dumps({"source": str(source), "findings": found[source]}))
        partial.replace(file)


def _findings_by_source(group: Group, output: str) -> dict[Path, str]:
    """What is found in a header belongs to every source that includes it, and what stands nowhere
    to all of them."""
    found = dict.fromkeys(group.sources, "")
    owners = group.sources
    for line in output.splitlines(keepends=True):
        place = _LOCATION.match(line)
        if place and not place[4].startswith("note:"):
            owners = _owners(group, Path(place[1]))
        for source in owners:
            found[source] += line
    return found


def _owners(group: Group, place: Path) -> tuple[Path, ...]:
    if place in group.sources:
        return (place,)
    absolute = (tree.ROOT / place).resolve()
    return tuple(source for source in group.sources
                 if absolute in tree.own_closure([source])) or group.sources


def _file(source: Path, options: tuple[str, ...]) -> Path:
    digest = hashlib.sha256()
    for part in (_tool_version(), (tree.ROOT / ".clang-tidy").read_text(), repr((source, options)),
                 Path(__file__).read_text()):
        digest.update(part.encode())
    for path in sorted(tree.own_closure([source])):
        digest.update(str(path.relative_to(tree.ROOT)).encode())
        digest.update(path.read_bytes())
    CACHE.mkdir(parents=True, exist_ok=True)
    return CACHE / f"{digest.hexdigest()}.json"


@functools.cache
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
        return "".join(_check(Group(part, group.options)) for part in (others, clashing))
    code, output = _tidy(group)
    if code == 0:
        return ""
    return output or f"clang-tidy ended with exit code {code}"


def _clashing(group: Group) -> tuple[Path, ...]:
    """The sources that do not compile behind the others; all of them when the errors name none."""
    with _joined(group) as joined:
        run = subprocess.run(["clang++", "-fsyntax-only", "-ferror-limit=0",
                              *_compiler_options(group), str(joined)],
                             cwd=tree.ROOT, capture_output=True, text=True)
        if run.returncode == 0:
            return ()
        errors = _with_true_places(run.stderr, joined, group).splitlines()
    broken = {match[1] for match in map(_LOCATION.match, errors) if match and "error:" in match[4]}
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
    headers, but not the C++ ones, which GCC prints."""
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
    lines = []
    for line in output.splitlines():
        place = _LOCATION.match(line)
        if place and Path(place[1]).name == joined.name:
            source, number = places[int(place[2]) - 1]
            line = f"{source}:{number}:{place[3]}: {place[4]}"
        lines.append(line + "\n")
    return "".join(lines)
