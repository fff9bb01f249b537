"""Includes point one way: no folder of the program includes one above it, or one beside it."""

import re
from collections.abc import Iterator
from pathlib import Path

import pytest

from tree import ROOT

# Each folder and those that its files may include, besides itself.
SUPPORT = {"support"}
COMPONENTS = SUPPORT | {"framework"}
WORK = COMPONENTS | {"components"}
ALLOWED = {
    "support": set(),
    "framework": SUPPORT,
    "components": COMPONENTS,
    "config": WORK,
    "project": WORK,
    "publish": WORK,
    "cms": WORK,
    "app": WORK | {"config", "project", "publish", "cms"},
}
INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"/]+)/[^"]*"', re.MULTILINE)


def wrong_includes(root: Path) -> Iterator[str]:
    for folder, allowed in ALLOWED.items():
        for source in sorted((root / folder).rglob("*")):
            if source.suffix not in (".h", ".cpp"):
                continue
            for match in INCLUDE.finditer(source.read_text(encoding="utf-8")):
                if match[1] != folder and match[1] not in allowed:
                    yield f"{source.relative_to(root)}: {match[0].strip()}"


def test_includes_point_one_way() -> None:
    assert list(wrong_includes(ROOT)) == []


def test_every_folder_of_the_program_is_checked() -> None:
    listed = re.findall(r"^ *add_subdirectory\((\w+)\)", (ROOT / "CMakeLists.txt").read_text(), re.M)
    assert set(listed) - {"installation", "tools"} == set(ALLOWED)


@pytest.mark.parametrize(
    ("file", "included"),
    [
        ("support/Text.cpp", "framework/Wnd.h"),
        ("framework/Wnd.h", "components/Values.h"),
        ("components/contracts/Kernel.h", "project/Pipeline.h"),
        ("project/Start.cpp", "config/Axes.h"),
        ("cms/Socket.h", "app/ZTInvisible.h"),
        ("publish/Package.cpp", "tests/support/Files.h"),
    ],
)
def test_an_include_that_points_another_way_is_found(
    tmp_path: Path, file: str, included: str
) -> None:
    planted = tmp_path / file
    planted.parent.mkdir(parents=True)
    planted.write_text(f'#include "support/Files.h"\n#  include "{included}"\n', encoding="utf-8")
    assert list(wrong_includes(tmp_path)) == [f'{file}: #  include "{included}"']
