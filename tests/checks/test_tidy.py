"""clang-tidy, which must see the Windows code and fail on what it finds."""

import re

import pytest

import tidy
import tree


@pytest.mark.parametrize("group", tidy.groups(), ids=lambda group: group.name)
def test_tidy_finds_nothing(group):
    findings = tidy.findings(group)
    assert not findings, "\n" + findings


def group_of(tmp_path, text, kind="release"):
    """A group of one source of the test's own, compiled like the program."""
    source = tmp_path / "Probe.cpp"
    source.write_text(text)
    options = tree.compile_options("release")[tree.Path("app/Execute.cpp")]
    return tidy.Group("probe", (source,), (kind, *options))


def test_tidy_sees_windows_code(tmp_path):
    group = group_of(tmp_path, """#include <windows.h>
#include <string>
DWORD Probe(const std::wstring& text) {
    DWORD* none = nullptr;
    GetFileAttributesW(text.c_str());
    return *none;
}
""")
    code, output = tidy._tidy(group)
    assert code != 0
    assert "Probe.cpp:6:12: error: Dereference of null pointer" in output


def test_tidy_passes_clean_windows_code(tmp_path):
    group = group_of(tmp_path, """#include <windows.h>
#include <string>
DWORD Probe(const std::wstring& text) { return GetFileAttributesW(text.c_str()); }
""")
    assert tidy._tidy(group) == (0, "")


def test_tidy_fails_on_a_header_that_is_missing(tmp_path):
    code, output = tidy._tidy(group_of(tmp_path, '#include "no/Such.h"\n'))
    assert code != 0
    assert "file not found" in output


def test_every_check_that_is_off_has_its_reason():
    text = (tree.ROOT / ".clang-tidy").read_text()
    off = re.findall(r"^  -([a-z][\w.-]+),?$", text, re.MULTILINE)
    reasons = re.findall(r"^# ([a-z][\w.-]+): \S+", text, re.MULTILINE)
    assert off and sorted(off) == sorted(reasons)
