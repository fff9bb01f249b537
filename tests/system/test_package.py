"""-KVB: the published folder becomes one file, and goes."""

from __future__ import annotations

import re
import subprocess

import pytest

from harness.publishing import PACKED, PUBLISHED, quoted

SPECIFICATIONS = ["Catalog", "Manual", "Learning", "Text", "Illustrator"]
DOCUMENTS = {"Pump.xml": b"<document title='Doc'><para>A</para></document>", "empty.txt": b""}
NAMES = ["documents/Pump.xml", "documents/Pump.xml.html", "documents/empty.txt", "index.html",
         "pictures/pump.svg", "resources/style.css"]


def destination_of(publish) -> str:
    """The folder that the component is to publish into."""
    calls = [line for line in publish.job.run.trace
            if re.search(r" (PutDestinationFolder|PublishView|PublishText) ", line)]
    assert len(calls) == 1
    return re.search(r'"(C:[^"]*)"', calls[0])[1].replace("\\\\", "\\")


def archive_calls(publish) -> list[str]:
    return publish.calls("ArchiveComponent")


# ---- what comes out ----

@pytest.mark.parametrize("specification", SPECIFICATIONS)
def test_package_holds_what_the_folder_would(publish, specification):
    publish(specification=specification, documents=DOCUMENTS)
    folder = publish.folder.files
    for file in publish.sandbox.path("exchange").iterdir():
        if file.is_file():
            file.unlink()
    publish.sandbox.path("exchange", "Pump").rename(publish.sandbox.path("folder"))
    publish(specification=specification, documents=DOCUMENTS, package=True)
    publish.check_packed()
    assert publish.package.files == folder
    assert sorted(publish.package.files) == NAMES
    assert publish.package.broken_links() == []


def test_package_is_one_that_unzip_accepts(publish):
    publish(package=True, documents=DOCUMENTS)
    check = subprocess.run(["unzip", "-t", str(publish.sandbox.path("exchange", "Pump.kvb"))],
                           capture_output=True, text=True)
    assert check.returncode == 0, check.stdout
    assert "No errors detected" in check.stdout


def test_both_keywords_make_a_package_only(publish):
    publish("-PUB", package=True)
    publish.check_packed()


def test_package_takes_the_place_of_an_earlier_one(publish):
    publish.sandbox.path("exchange", "Pump.kvb").write_bytes(b"x" * 100_000)
    publish(package=True)
    publish.check_packed()
    assert publish.package.index.title == "Feed pump"


def test_folder_of_an_earlier_publication_stays_as_it_is(publish):
    old = publish.sandbox.path("exchange", "Pump")
    old.mkdir()
    (old / "index.html").write_text("old")
    publish(package=True)
    publish.job.check_succeeded(publish.opened, PUBLISHED, PACKED)
    assert publish.sandbox.names("exchange", "Pump") == ["index.html"]
    assert (old / "index.html").read_text() == "old"


def test_package_bears_the_archives_name_and_not_a_new_one(publish):
    publish("-PROJECTNAME", "Other", package=True)
    assert publish.exchange == ["Pump.kvb", "Pump.kvp", "job_DONE"]


# ---- how it is made ----

@pytest.mark.parametrize("specification, last", [
    ("Catalog", "Exporter Export ()"), ("Text", "Component3D PublishText (object, "),
    ("Manual", "ViewerControl SetClientSite (null)")])
def test_package_is_created_filled_and_closed_after_the_publication(publish, specification, last):
    publish(specification=specification, package=True)
    folder = destination_of(publish)
    package = quoted(publish.sandbox.windows("exchange", "Pump.kvb"))
    calls = publish.calls("Exporter", "Component3D", "ViewerControl", "ArchiveComponent")
    at = calls.index("ArchiveComponent CreateInstance")
    assert calls[at - 1].startswith(last)
    assert calls[at + 1] == f"ArchiveComponent Create ({package}, 2)"
    assert calls[-1] == "ArchiveComponent Close ()"
    names = ["documents\\Pump.xml", "documents\\Pump.xml.html", "index.html", "pictures\\pump.svg",
             "resources\\style.css"]
    assert sorted(calls[at + 2:-1]) == sorted(
        f"ArchiveComponent AddFile ({quoted(folder + chr(92) + name)}, {quoted(name)}, true)"
        for name in names)


def test_publication_goes_into_a_new_folder_in_the_temporary_folder(publish):
    publish(package=True)
    temp, _, name = destination_of(publish).rpartition("\\")
    assert temp == publish.sandbox.windows("temp")
    assert re.fullmatch(r"KVE[0-9a-f]+\.tmp", name, re.IGNORECASE)
    assert publish.sandbox.names("temp") == []


def test_log_reports_publication_and_package(publish):
    publish(package=True)
    assert publish.job.log.endswith(
        b"Project published successfully\r\nKVB file created sucessfully\r\n"
        b"SUCCESS: Project 'Pump' successfully processed\r\n"
        b"SUCCESS: ZeltorAuthorInvisible finished successfully at <time>\r\n")


# ---- failures ----

def check_left_behind(publish, text: bytes) -> None:
    """The package could not be begun: what was published lies in the temporary folder."""
    publish.sandbox.allow_temp_leftovers = True
    publish.check_failed(text, PUBLISHED)
    left = publish.sandbox.names("temp")
    assert [publish.sandbox.windows("temp", name) for name in left] == [destination_of(publish)]
    assert publish.sandbox.path("temp", left[0], "index.html").is_file()


@pytest.mark.parametrize("what", ["result E_FAIL", "result 0x80040154", "null"])
def test_archive_component_that_cannot_be_created_ends_the_run(publish, what):
    publish(package=True, faults=f"ArchiveComponent.CreateInstance 1 {what}")
    check_left_behind(publish, b"Can't create KVZip")
    assert publish.exchange == ["Pump.kvp", "job_ERROR"]


def test_archive_that_cannot_be_created_ends_the_run(publish):
    publish(package=True, faults="ArchiveComponent.Create 1 error E_ACCESSDENIED No place.")
    check_left_behind(publish, b"Can't create KVB-file")
    assert publish.exchange == ["Pump.kvp", "job_ERROR"]
    assert [call.split()[1] for call in archive_calls(publish)] == ["CreateInstance", "Create"]


def test_folder_in_the_place_of_the_package_ends_the_run_and_stays(publish):
    publish.sandbox.path("exchange", "Pump.kvb").mkdir()
    publish(package=True)
    check_left_behind(publish, b"Can't create KVB-file")
    assert publish.exchange == ["Pump.kvb", "Pump.kvp", "job_ERROR"]


@pytest.mark.parametrize("number", [1, 2, 4])
def test_file_that_cannot_be_added_ends_the_run_with_the_folder_deleted(publish, number):
    publish(package=True, faults=f"ArchiveComponent.AddFile {number} result E_FAIL")
    publish.check_failed(b"Error generating KVB-file", PUBLISHED)
    assert [call.split()[1] for call in archive_calls(publish)] == (
        ["CreateInstance", "Create"] + number * ["AddFile"] + ["Close"])
    assert publish.sandbox.names("temp") == []
    assert publish.exchange == ["Pump.kvb", "Pump.kvp", "job_ERROR"]
    assert len(publish.package.files) == number - 1


def test_nothing_published_makes_no_package(publish):
    publish(specification="Catalog", package=True, faults="Exporter.Export 1 null")
    publish.check_failed(b"Error generating KVB-file", PUBLISHED)
    assert [call.split()[1] for call in archive_calls(publish)] == ["CreateInstance", "Create",
                                                                    "Close"]
    assert publish.package.files == {}


def test_archive_that_fails_to_close_makes_no_difference(publish):
    publish(package=True, faults="ArchiveComponent.Close 1 then E_FAIL")
    publish.check_packed()


def test_archive_stays_open_until_its_release_where_it_cannot_be_closed(publish):
    publish(package=True, faults="ArchiveComponent.Close 1 result E_FAIL")
    publish.check_packed()


@pytest.mark.parametrize("specification, operation, text", [
    ("Catalog", "Exporter.Export", b"ERROR publishing project: "),
    ("Text", "Component3D.PublishText", b"Error publishing project"),
    ("Manual", "Component3D.PublishView", b"Error publishing project")])
def test_publication_that_fails_half_way_is_left_behind_and_not_packed(publish, specification,
                                                                       operation, text):
    publish.sandbox.allow_temp_leftovers = True
    publish(specification=specification, package=True, faults=f"{operation} 1 then E_FAIL")
    publish.check_failed(text)
    assert archive_calls(publish) == []
    assert publish.exchange == ["Pump.kvp", "job_ERROR"]
    left = publish.sandbox.names("temp")
    assert [publish.sandbox.windows("temp", name) for name in left] == [destination_of(publish)]
    assert publish.sandbox.path("temp", left[0], "index.html").is_file()


def test_component_that_cannot_be_created_leaves_nothing_behind(publish):
    publish(specification="Catalog", package=True,
            faults="Exporter.CreateInstance 1 result E_FAIL")
    publish.check_failed(b"Couldn't load IPC Exporter")
    assert publish.sandbox.names("temp") == []
