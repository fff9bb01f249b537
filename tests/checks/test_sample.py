"""What ./run-sample shows of a project and of its publication."""

from __future__ import annotations

import importlib.util
import zipfile

from tree import ROOT


def load(name: str):
    place = ROOT / "tools" / "sample" / f"{name}.py"
    specification = importlib.util.spec_from_file_location(f"sample_{name}", place)
    module = importlib.util.module_from_spec(specification)
    specification.loader.exec_module(module)
    return module


def shown_document(folder, content: str) -> str:
    archive = folder / "P.kvp"
    with zipfile.ZipFile(archive, "w") as file:
        file.writestr("index.xml", '<archive><project name="P" revision="A"/></archive>')
        file.writestr("project.xml", '<project><documents main="D.xml">'
                                     '<document name="D.xml" file="documents/D.xml"/>'
                                     '</documents></project>')
        file.writestr("documents/D.xml", content)
    return load("project").describe(archive)["document D.xml"]


def test_document_is_shown_with_the_number_of_its_change_marks(tmp_path):
    shown = shown_document(tmp_path, "<a><insert>x<delete/></insert><b><delete/></b></a>")
    assert shown.endswith(", change marks: 3")


def test_document_without_change_marks_is_shown_as_such(tmp_path):
    assert shown_document(tmp_path, "<a><b/></a>").endswith(", change marks: none")


def test_document_that_is_no_xml_is_shown_without_them(tmp_path):
    shown = shown_document(tmp_path, "<a>")
    assert shown.startswith("documents/D.xml, 3 bytes") and "change marks" not in shown


# ---- publications ----

def test_publication_is_shown_as_its_files_with_their_sizes(tmp_path):
    (tmp_path / "P" / "sub").mkdir(parents=True)
    (tmp_path / "P" / "sub" / "a.txt").write_bytes(b"x" * 1234)
    (tmp_path / "P" / "index.html").write_bytes(b"x")
    assert load("publication").describe(tmp_path, "P") == (
        f"folder {tmp_path}/P\n            1  index.html\n        1,234  sub/a.txt\n\n"
        f"Open in a browser: file://{tmp_path}/P/index.html")


def test_package_is_shown_as_its_files_with_their_sizes(tmp_path):
    with zipfile.ZipFile(tmp_path / "P.kvb", "w") as file:
        file.writestr("sub/a.txt", b"xx")
    assert load("publication").describe(tmp_path, "P") == (
        f"package {tmp_path}/P.kvb\n            2  sub/a.txt")


def test_package_that_is_none_is_reported(tmp_path):
    (tmp_path / "P.kvb").write_bytes(b"no package")
    assert "cannot be read" in load("publication").describe(tmp_path, "P")


def test_nothing_published_is_reported(tmp_path):
    assert load("publication").describe(tmp_path, "P") == "(nothing)"


# ---- command lines ----

def test_keyword_is_none_where_it_is_the_value_of_another():
    commandline = load("commandline")
    assert commandline.has_keyword(["-IN", "P.kvp", "/pub"], "PUB", "KVB")
    assert not commandline.has_keyword(["-META", "-PUB", "-KVB", "-S"], "PUB", "KVB")


def test_value_of_a_keyword_is_its_last():
    value_of = load("commandline").value_of
    assert value_of(["-IN", "a", "/in", "b", "-META", "-IN", "c"], "IN") == "b"
    assert value_of(["-S", "-IN"], "IN") == ""
