"""./run-sample as a whole: what it prints of the publication, and the pages in a browser."""

from __future__ import annotations

import fcntl
import re
import subprocess
import zipfile
from pathlib import Path
from urllib.parse import unquote, urlparse

import browser
import pytest

from tree import ROOT

PAGES = ["documents/Inspection.xml", "documents/Inspection.xml.html", "documents/Pump.xml",
         "documents/Pump.xml.html", "index.html", "pictures/pump.svg", "resources/style.css"]
TITLE = "Feed pump FP-200, inspected"
HEADER, PAGE, WHITE, TEXT = "#2a5d84", "#f4f5f7", "#ffffff", "#222222"
LINES = "#000000"  # of the sample's picture, and of nothing else


def run_sample() -> str:
    run = subprocess.run([ROOT / "run-sample"], stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                         text=True, timeout=600)
    assert run.returncode == 0, run.stdout
    return run.stdout


@pytest.fixture(scope="module")
def output(tmp_path_factory, worker_id):
    """What the sample prints behind its last heading. It has one place, so that of all workers one
    runs it and the others read what that one noted."""
    base = tmp_path_factory.getbasetemp()
    noted = (base if worker_id == "master" else base.parent) / "sample-output.txt"
    with noted.with_suffix(".lock").open("w") as lock:
        fcntl.flock(lock, fcntl.LOCK_EX)
        if not noted.exists():
            noted.write_text(run_sample())
    heading, _, behind = noted.read_text().rpartition("\n== what was published\n")
    assert heading
    return behind


@pytest.fixture(scope="module")
def index(output):
    """The address that the sample says to open."""
    last = output.rstrip("\n").splitlines()[-1]
    assert last.startswith("Open in a browser: file:///")
    return last.removeprefix("Open in a browser: ")


@pytest.fixture(scope="module")
def shown(index, tmp_path_factory):
    """The upper part of the index page."""
    return browser.picture(index, 800, 1000, tmp_path_factory.mktemp("picture"))


def colour(picture, x: int, y: int) -> str:
    return "#" + bytes(picture.getpixel((x, y))).hex()


def colours(picture, top: int, bottom: int) -> set[str]:
    part = picture.crop((0, top, picture.width, bottom))
    return {"#" + bytes(value).hex() for value in part.getdata()}


def listed(output: str, kind: str) -> tuple[Path, dict[str, int]]:
    """Path, and size of each file, of the published folder or package."""
    path, rows = re.search(rf"^{kind} (.*)\n((?: .*\n)+)", output, re.MULTILINE).groups()
    cells = [row.split(maxsplit=1) for row in rows.splitlines()]
    return Path(path), {name: int(size.replace(",", "")) for size, name in cells}


def test_sample_ends_with_the_published_folder_listed(output):
    folder, files = listed(output, "folder")
    assert sorted(files) == PAGES
    assert files == {file.relative_to(folder).as_posix(): file.stat().st_size
                     for file in folder.rglob("*") if file.is_file()}


def test_sample_ends_with_the_package_listed(output):
    path, files = listed(output, "package")
    with zipfile.ZipFile(path) as package:
        assert package.testzip() is None
        assert files == {entry.filename: entry.file_size for entry in package.infolist()}
    assert path.suffix == ".kvb"
    assert sorted(files) == PAGES


def test_sample_says_where_to_open_the_index_page(output, index):
    assert Path(unquote(urlparse(index).path)) == listed(output, "folder")[0] / "index.html"


def test_browser_reads_the_index_page_as_it_was_meant(index, tmp_path):
    tree = browser.content(index, tmp_path)
    assert re.findall(r"<h1>(.*?)</h1>", tree) == [TITLE]
    assert re.findall(r"<h2>(.*?)</h2>", tree) == ["Metadata", "Contents", "Referenced objects",
                                                   "Publication", "Settings"]
    assert sorted(re.findall(r'<tr class="object" data-id="(\w+)"', tree)) == [
        "housing", "motor", "screw", "seal"]


def test_browser_shows_the_index_page_in_its_style(shown):
    assert (shown.width, shown.height) == (800, 1000)
    assert colour(shown, 5, 5) == colour(shown, 794, 5) == HEADER
    assert colour(shown, 5, 990) == colour(shown, 794, 990) == PAGE


def test_browser_shows_texts_and_pictures(shown):
    header = colours(shown, 10, 100)
    assert {HEADER, WHITE} <= header and PAGE not in header
    sections = colours(shown, 150, 990)
    assert {PAGE, WHITE, TEXT, HEADER} <= sections  # headings have the header's colour
    assert LINES in sections
