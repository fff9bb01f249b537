"""What a run has published, read with nothing but a zip reader."""

from __future__ import annotations

import zipfile
from pathlib import Path


def describe(exchange: Path, project_name: str) -> str:
    """The published folder and the package of a project, each file with its size in bytes, and
    where to open the pages."""
    folder, package = exchange / project_name, exchange / f"{project_name}.kvb"
    parts = []
    if folder.is_dir():
        files = {file.relative_to(folder).as_posix(): file.stat().st_size
                 for file in folder.rglob("*") if file.is_file()}
        parts.append(f"folder {folder}\n{_table(files)}")
    if package.is_file():
        parts.append(f"package {package}\n{_packed(package)}")
    if (folder / "index.html").is_file():
        parts.append(f"Open in a browser: {(folder / 'index.html').as_uri()}")
    return "\n\n".join(parts) or "(nothing)"


def _packed(package: Path) -> str:
    try:
        with zipfile.ZipFile(package) as file:
            damaged = file.testzip()
            if damaged:
                return f"    is damaged in {damaged}"
            return _table({entry.filename: entry.file_size for entry in file.infolist()})
    except zipfile.BadZipFile as error:
        return f"    cannot be read: {error}"


def _table(files: dict[str, int]) -> str:
    return "\n".join(f"    {files[name]:9,}  {name}" for name in sorted(files)) or "    (empty)"
