"""What ./run-sample shows of a project."""

from __future__ import annotations

import importlib.util
import zipfile

from tree import ROOT


def load_reader():
    place = ROOT / "tools" / "sample" / "project.py"
    specification = importlib.util.spec_from_file_location("sample_project", place)
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
    return load_reader().describe(archive)["document D.xml"]


def test_document_is_shown_with_the_number_of_its_change_marks(tmp_path):
    shown = shown_document(tmp_path, "<a><insert>x<delete/></insert><b><delete/></b></a>")
    assert shown.endswith(", change marks: 3")


def test_document_without_change_marks_is_shown_as_such(tmp_path):
    assert shown_document(tmp_path, "<a><b/></a>").endswith(", change marks: none")


def test_document_that_is_no_xml_is_shown_without_them(tmp_path):
    shown = shown_document(tmp_path, "<a>")
    assert shown.startswith("documents/D.xml, 3 bytes") and "change marks" not in shown
