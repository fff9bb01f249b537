"""What stands in the watched folders, to find out afterwards what changed."""

from __future__ import annotations

import os
from pathlib import Path

Snapshot = dict[str, tuple[int, int]]

# Written by the system whenever it likes.
SYSTEM_PATHS = ("/windows/inf/", "/windows/logs/")


def take(folders: list[Path], own: Path) -> Snapshot:
    """Size and time of every file, and each folder, but for what is below `own`."""
    found: Snapshot = {}
    for folder in folders:
        _walk(str(folder), str(own), found)
    return found


def _walk(folder: str, own: str, found: Snapshot) -> None:
    with os.scandir(folder) as entries:
        for entry in entries:
            if entry.path == own:
                continue
            if entry.is_dir(follow_symlinks=False):
                found[entry.path] = (-1, 0)
                _walk(entry.path, own, found)
            else:
                status = entry.stat(follow_symlinks=False)
                found[entry.path] = (status.st_size, status.st_mtime_ns)


def differences(before: Snapshot, after: Snapshot) -> list[str]:
    changes = [f"new: {path}" for path in after.keys() - before.keys()]
    changes += [f"gone: {path}" for path in before.keys() - after.keys()]
    changes += [f"changed: {path}" for path in after.keys() & before.keys()
                if after[path] != before[path]]
    return sorted(change for change in changes
                  if not any(system in change.lower() for system in SYSTEM_PATHS))
