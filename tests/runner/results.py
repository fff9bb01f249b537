"""Counts and failures, read from the reports that every runner writes in JUnit's form."""

from __future__ import annotations

import xml.etree.ElementTree as ElementTree
from dataclasses import dataclass, field
from pathlib import Path


@dataclass
class Failure:
    name: str
    text: str


@dataclass
class Results:
    passed: int = 0
    skipped: list[str] = field(default_factory=list)
    failures: list[Failure] = field(default_factory=list)

    @property
    def failed(self) -> int:
        return len(self.failures)

    def add(self, other: Results) -> None:
        self.passed += other.passed
        self.skipped += other.skipped
        self.failures += other.failures


def read_report(report: Path) -> Results:
    """Raises OSError or ElementTree.ParseError for a report that is missing or broken off."""
    results = Results()
    for case in ElementTree.parse(report).getroot().iter("testcase"):
        _add_case(results, case)
    return results


def _add_case(results: Results, case: ElementTree.Element) -> None:
    name = "::".join(part for part in (case.get("classname"), case.get("name")) if part)
    problems = [child for child in case if child.tag in ("failure", "error")]
    if problems or case.get("status") == "fail":
        results.failures.append(Failure(name, _text(case, problems)))
    elif case.find("skipped") is not None or case.get("status") in ("notrun", "disabled"):
        results.skipped.append(name)
    else:
        results.passed += 1


def _text(case: ElementTree.Element, problems: list[ElementTree.Element]) -> str:
    texts = [problem.text or problem.get("message") or "" for problem in problems]
    texts += [output.text or "" for output in case.iter("system-out")]
    return "\n".join(text.strip() for text in texts if text.strip())
