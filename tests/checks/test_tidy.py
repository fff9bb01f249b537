"""clang-tidy, which must see the Windows code and fail on what it finds."""

import re

import tidy
import tree


def group_of(tmp_path, text):
    """A group of one source of the test's own, compiled like the program."""
    source = tmp_path / "Probe.cpp"
    source.write_text(text)
    return tidy.Group((source,), tidy.sources()[tree.Path("app/main.cpp")])


def test_tidy_sees_windows_code_and_finds_nothing_in_what_is_right(tmp_path):
    group = group_of(tmp_path, """#include <windows.h>
#include <string>
DWORD Right(const std::wstring& text) { return GetFileAttributesW(text.c_str()); }
DWORD Wrong(const std::wstring& text) {
    DWORD* none = nullptr;
    GetFileAttributesW(text.c_str());
    return *none;
}
""")
    code, output = tidy._tidy(group)
    assert code != 0
    assert output.count(" error: ") == 1
    assert "Probe.cpp:7:12: error: Dereference of null pointer" in output


def test_tidy_fails_on_a_header_that_is_missing(tmp_path):
    code, output = tidy._tidy(group_of(tmp_path, '#include "no/Such.h"\n'))
    assert code != 0
    assert "file not found" in output


def test_findings_belong_to_their_source_or_to_all_that_include_their_header(tmp_path, monkeypatch):
    monkeypatch.setattr(tree, "ROOT", tmp_path)
    one, other, header = tree.Path("One.cpp"), tree.Path("Other.cpp"), tmp_path / "One.h"
    (tmp_path / one).write_text('#include "One.h"\n')
    (tmp_path / other).write_text("")
    header.write_text("")
    output = [f"{one}:1:2: error: in one", f"{header}:3:4: note: seen from here",
              f"{other}:1:2: error: in the other", f"{header}:5:6: error: in its header"]
    found = tidy._findings_by_source(tidy.Group((one, other), ("release",)),
                                     "".join(line + "\n" for line in output))
    assert found[one].splitlines() == [output[0], output[1], output[3]]
    assert found[other].splitlines() == [output[2]]


def test_groups_hold_every_source_once():
    sources = tidy.sources()
    grouped = [source for group in tidy.groups(sources) for source in group.sources]
    assert sorted(grouped) == sorted(sources) and len(sources) > 200


def test_what_was_found_is_kept_until_the_source_changes(tmp_path, monkeypatch):
    monkeypatch.setattr(tidy, "CACHE", tmp_path / "kept")
    monkeypatch.setattr(tree, "ROOT", tmp_path)
    monkeypatch.setattr(tidy, "_check", lambda group: "Probe.cpp:1:1: error: wrong\n")
    (tmp_path / ".clang-tidy").write_text("")
    group = tidy.Group((tree.Path("Probe.cpp"),), ("release",))
    (tmp_path / "Probe.h").write_text("")
    (tmp_path / "Probe.cpp").write_text('#include "Probe.h"\n')
    assert tidy.kept(*group.sources, group.options) is None
    tidy.read(group)
    assert tidy.kept(*group.sources, group.options) == "Probe.cpp:1:1: error: wrong\n"
    (tmp_path / "Probe.h").write_text("int changed;\n")
    assert tidy.kept(*group.sources, group.options) is None


def test_every_check_that_is_off_has_its_reason():
    text = (tree.ROOT / ".clang-tidy").read_text()
    off = re.findall(r"^  -([a-z][\w.-]+),?$", text, re.MULTILINE)
    reasons = re.findall(r"^# ([a-z][\w.-]+): \S+", text, re.MULTILINE)
    assert off and sorted(off) == sorted(reasons)
