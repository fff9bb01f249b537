"""Which files of a published folder get into the package, and which the deletion leaves.

Without a temporary folder the program publishes into C:\\__temp, which these tests fill beforehand.
"""

from __future__ import annotations

import os
import shutil
import subprocess
import zipfile

import pytest

from harness.publishing import PACKED, PUBLISHED

PUBLISHED_NAMES = {"documents/Pump.xml", "documents/Pump.xml.html", "index.html",
                   "pictures/pump.svg", "resources/style.css"}


class FixedFolder:
    """C:\\__temp, into which a run without a temporary folder publishes."""

    def __init__(self, publish):
        self._publish = publish
        self._machine = publish.sandbox.machine
        self.path = self._machine.drive / "__temp"

    def put(self, name: str, content: bytes = b"mine") -> None:
        path = self.path / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(content)

    def hide(self, name: str) -> None:
        self._machine.hide(self.path / name)

    def pack(self, **options) -> None:
        sandbox = self._publish.sandbox
        sandbox.use_temporary_folder(sandbox.windows("missing"))
        self._publish(package=True, **options)

    @property
    def added(self) -> set[str]:
        """Names in the package, but for those that are in every one."""
        self._publish.job.check_succeeded(self._publish.opened, PUBLISHED, PACKED)
        names = set(self._publish.package.files)
        assert names >= PUBLISHED_NAMES
        return names - PUBLISHED_NAMES


@pytest.fixture
def fixed(publish):
    folder = FixedFolder(publish)
    assert not folder.path.exists()
    yield folder
    for path in folder.path.rglob("*"):
        if path.is_symlink():
            path.unlink()
        else:
            path.chmod(0o755)
    shutil.rmtree(folder.path, ignore_errors=True)


def test_folder_of_a_fixed_name_serves_where_no_unique_name_can_be_made(publish, fixed):
    fixed.pack()
    publish.check_packed()
    calls = [line for line in publish.job.run.trace if " PublishView " in line]
    assert '"C:\\\\__temp"' in calls[0]
    assert fixed.added == set()
    assert not fixed.path.exists()


def test_root_of_the_drive_serves_where_the_temporary_folders_name_is_too_long(publish):
    publish.sandbox.use_temporary_folder("C:\\" + "x" * 300)
    publish(package=True)
    publish.check_packed()
    calls = [line for line in publish.job.run.trace if " PublishView " in line]
    assert '("C:\\\\KVE' in calls[0]


def test_names_are_relative_to_the_folder_at_every_level(fixed):
    for name in ("a.txt", "sub/b.txt", "sub/subsub/c.txt", "noextension", "a.b..c/x.y.z"):
        fixed.put(name)
    fixed.path.joinpath("empty", "empty").mkdir(parents=True)
    fixed.pack()
    assert fixed.added == {"a.txt", "sub/b.txt", "sub/subsub/c.txt", "noextension", "a.b..c/x.y.z"}
    assert not fixed.path.exists()


def test_long_and_non_latin_names_and_empty_files_are_packed(publish, fixed):
    names = {"n" * 180 + ".txt", "\u0416\u0443\u043a/\u65e5\u672c.txt", "\u00e4 b&c/\u20ac.txt"}
    for name in names:
        fixed.put(name, name.encode())
    fixed.put("empty", b"")
    fixed.pack()
    assert fixed.added == names | {"empty"}
    files = publish.package.files
    assert files["empty"] == b""
    assert all(files[name] == name.encode() for name in names)
    package = publish.sandbox.path("exchange", "Pump.kvb")
    assert subprocess.run(["unzip", "-tq", str(package)], capture_output=True).returncode == 0


def test_hidden_files_and_folders_are_left_out_and_deleted(fixed):
    for name in ("hidden.txt", "plain.txt", "folder/a.txt", "folder/sub/b.txt", "open/hidden.txt"):
        fixed.put(name)
    for name in ("hidden.txt", "folder", "open/hidden.txt"):
        fixed.hide(name)
    fixed.pack()
    assert fixed.added == {"plain.txt"}
    assert not fixed.path.exists()


def test_file_that_is_read_only_is_packed_and_stays_with_its_folders(publish, fixed):
    fixed.put("sub/readonly.txt")
    fixed.put("sub/plain.txt")
    fixed.path.joinpath("sub", "readonly.txt").chmod(0o444)
    fixed.pack()
    assert fixed.added == {"sub/readonly.txt", "sub/plain.txt"}
    left = sorted(path.relative_to(fixed.path).as_posix() for path in fixed.path.rglob("*"))
    assert left == ["sub", "sub/readonly.txt"]


def test_folder_behind_a_link_keeps_its_files(publish, fixed):
    outside = publish.sandbox.path("outside")
    outside.joinpath("sub").mkdir(parents=True)
    outside.joinpath("precious.txt").write_bytes(b"precious")
    outside.joinpath("sub", "more.txt").write_bytes(b"more")
    fixed.put("plain.txt")
    os.symlink(outside, fixed.path / "link", target_is_directory=True)
    fixed.pack()
    assert "plain.txt" in fixed.added
    assert outside.joinpath("precious.txt").read_bytes() == b"precious"
    assert outside.joinpath("sub", "more.txt").read_bytes() == b"more"
    left = [path.name for path in fixed.path.iterdir()] if fixed.path.exists() else []
    # Wine does not report which kind of link it is, and the program then leaves it.
    assert left in ([], ["link"])


def test_package_of_10000_files_is_whole(publish, fixed):
    for number in range(10_000):
        fixed.put(f"d{number % 100}/f{number}.txt", b"%d" % number)
    fixed.pack(seconds=200)
    assert len(fixed.added) == 10_000
    assert not fixed.path.exists()
    package = publish.sandbox.path("exchange", "Pump.kvb")
    assert subprocess.run(["unzip", "-tq", str(package)], capture_output=True).returncode == 0
    with zipfile.ZipFile(package) as file:
        assert file.read("d99/f9999.txt") == b"9999"
        assert file.read("d0/f0.txt") == b"0"
