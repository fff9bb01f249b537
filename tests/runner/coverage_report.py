"""What gcovr has measured, and the reasons that stand for what is not covered."""

from __future__ import annotations

import json
import math
from collections import Counter
from dataclasses import dataclass
from pathlib import Path

# A line of the program: its file, and its text without the blanks around it.
Line = tuple[str, str]


@dataclass
class Figures:
    """Counts from gcovr's own format; branches that only an exception takes are not in it."""

    files: dict[str, list[dict]]

    @classmethod
    def read(cls, report: Path) -> Figures:
        content = json.loads(report.read_text(encoding="utf-8"))
        return cls({file["file"]: [line for line in file["lines"] if not line["gcovr/noncode"]]
                    for file in content["files"]})

    @property
    def lines(self) -> float:
        return _percentage([line["count"] for line in self._lines()])

    @property
    def branches(self) -> float:
        return _percentage([branch["count"] for line in self._lines()
                            for branch in line["branches"]])

    def _lines(self):
        return (line for lines in self.files.values() for line in lines)

    def uncovered(self, root: Path) -> list[tuple[str, int, str]]:
        """File, number and text of every line that never ran."""
        found = []
        for file, lines in sorted(self.files.items()):
            texts = (root / file).read_text(encoding="utf-8").splitlines()
            found += [(file, line["line_number"], texts[line["line_number"] - 1].strip())
                      for line in lines if not line["count"]]
        return found

    def __str__(self) -> str:
        return f"lines {_shown(self.lines)} %, branches {_shown(self.branches)} %"


def _percentage(counts: list[int]) -> float:
    if not counts:
        raise ValueError("nothing was measured")
    return 100.0 * sum(1 for count in counts if count) / len(counts)


def _shown(percentage: float) -> str:
    """Cut off and not rounded, so that a missed target never reads as reached."""
    return f"{math.floor(percentage * 10 + 1e-9) / 10:.1f}"


def read_reasons(path: Path) -> Counter[Line]:
    """Blocks of a reason ("# ...") and the lines "file: text" that it stands for; a line that
    occurs several times in its file is named once for each time that it is not covered.

    Raises ValueError for a line without a reason.
    """
    reasons: Counter[Line] = Counter()
    reason = False
    for number, text in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
        file, separator, line = text.partition(": ")
        if text.startswith("#") or not text.strip():
            reason = text.startswith("#")
        elif separator and reason:
            reasons[file, line.strip()] += 1
        else:
            raise ValueError(f"{path.name}, line {number}: neither a reason nor a line with one")
    return reasons


def check_reasons(uncovered: list[tuple[str, int, str]], reasons: Counter[Line]) -> list[str]:
    """Lines without a reason, and reasons without a line."""
    left = reasons.copy()
    problems = []
    for file, number, text in uncovered:
        if left[file, text] > 0:
            left[file, text] -= 1
        else:
            problems.append(f"no test runs it, and no reason is given: {file}:{number}: {text}")
    problems += [f"a reason is given, but a test runs it, or it is gone: {file}: {text}"
                 for (file, text), count in left.items() for _ in range(count)]
    return problems
