"""./run-sample, once everything is built: run.py FOLDER [ARGUMENT ...]. FOLDER is where the user
stands; the arguments are the user's own command line. WINEPREFIX names a prefix that runs."""

from __future__ import annotations

import os
import shutil
import subprocess
import sys
from pathlib import Path

import project
import publication
from commandline import has_keyword, linux_path, translate, value_of, windows_path

ROOT = Path(__file__).resolve().parents[2]
BUILD = ROOT / "build" / "release"
DRIVE = Path(os.environ["WINEPREFIX"]) / "drive_c"
SAMPLE = DRIVE / "zt" / "sample"
EXCHANGE = SAMPLE / "exchange"

NOTE = """<?xml version="1.0" encoding="UTF-8"?>
<document title="Inspection note" language="en">
  <section id="inspection">
    <title>Inspection</title>
    <para>The <insert by="mk" date="2024-05-07">shaft </insert>seal was changed.</para>
    <para>Ready for use<delete by="mk" date="2024-05-07"> after a trial run</delete>.</para>
  </section>
</document>
"""


def start(program: Path, arguments: list[str]) -> tuple[int, str]:
    """Runs a Windows program in the exchange folder; returns its exit code and its output."""
    run = subprocess.run([str(ROOT / "tests" / "run-windows"), str(program), *arguments],
                         cwd=EXCHANGE, stdout=subprocess.PIPE, stdin=subprocess.DEVNULL)
    return run.returncode, run.stdout.decode("latin-1")


def lay_out() -> None:
    """A fresh installation and a fresh sample project; the registry points to them."""
    shutil.rmtree(SAMPLE, ignore_errors=True)
    EXCHANGE.mkdir(parents=True)
    (EXCHANGE / "Inspection.xml").write_text(NOTE)
    code, output = start(BUILD / "installation" / "zt-devsetup.exe", [
        "--register", "--root", windows_path(SAMPLE / "installation", DRIVE),
        "--pack", windows_path(ROOT / "installation" / "sample" / "Pump", DRIVE),
        windows_path(EXCHANGE / "Pump.kvp", DRIVE)])
    if code != 0:
        sys.exit(f"run-sample: the development installation could not be set up:\n{output}")


def sample_arguments() -> list[str]:
    return ["-IN", windows_path(EXCHANGE / "Pump.kvp", DRIVE), "-M", "job1",
            "-LOG", windows_path(EXCHANGE / "Pump.log", DRIVE),
            "-META", "Title", "Feed pump FP-200", "-ADDMETA", "Author", "Ada Example",
            "-PROJECTNAME", "Pump FP-200", "-EDIT", "KVDev.SampleEdit", "Touch",
            "-DM", "Inspection.xml", "-NR", "-S"]


def update_arguments() -> list[str]:
    """A second run, on the archive of the first: its document goes through the editor control."""
    return ["-IN", windows_path(EXCHANGE / "Pump.kvp", DRIVE), "-M", "job2",
            "-LOG", windows_path(EXCHANGE / "Update.log", DRIVE),
            "-META", "Title", "Feed pump FP-200, inspected", "-UPDATEDOC", "-NR", "-S", "-PUB"]


def package_arguments() -> list[str]:
    """A third run, which publishes the project as one file."""
    return ["-IN", windows_path(EXCHANGE / "Pump.kvp", DRIVE), "-M", "job3",
            "-LOG", windows_path(EXCHANGE / "Package.log", DRIVE), "-S", "-KVB"]


def user_arguments(folder: Path, arguments: list[str]) -> list[str]:
    return [translate(argument, folder, DRIVE) for argument in arguments]


def exchange_and_archive(arguments: list[str]) -> tuple[Path | None, Path | None]:
    """The exchange folder and the archive that a command line leads to, where they are here."""
    folder, _, name = value_of(arguments, "IN").rpartition("\\")
    exchange = linux_path((folder or value_of(arguments, "EXCHANGEPATH")).rstrip("\\"), DRIVE)
    if exchange is None:
        return None, None
    stem = name.rpartition(".")[0] if "." in name else name
    return exchange, exchange / f"{stem}.kvp"


def heading(text: str) -> None:
    print(f"\n== {text}", flush=True)


def show_file(title: str, path: Path | None) -> None:
    heading(title)
    if path is None or not path.exists():
        print("(none)")
        return
    print(path.read_bytes().decode("latin-1").replace("\r\n", "\n").rstrip("\n"))


def show_status_files(exchange: Path | None, status_id: str) -> None:
    heading("status files")
    shown = False
    for kind in ("_ERROR", "_DONE"):
        path = exchange / (status_id + kind) if exchange and status_id else None
        if path and path.exists():
            text = path.read_bytes().decode("latin-1")
            print(f"{path.name}: {text or 'empty'}")
            shown = True
    if not shown:
        print("(none)")


def quoted(arguments: list[str]) -> str:
    return " ".join(f'"{argument}"' if " " in argument or not argument else argument
                    for argument in arguments)


def start_with_client(arguments: list[str]) -> tuple[int, str]:
    """Runs the program under a stand-in for the content-management client, which prints what it is
    told; the exit code is the client's verdict."""
    return start(BUILD / "tools" / "cms-client" / "cms-client.exe", [
        "--exchange", windows_path(EXCHANGE, DRIVE), "--run",
        windows_path(BUILD / "ZTInvisible.exe", DRIVE), *arguments])


def perform(arguments: list[str], with_client: bool = False) -> int:
    """One run of the program, with all that it left."""
    exchange, archive = exchange_and_archive(arguments)
    before = project.describe(archive) if archive else {}
    heading("command line")
    print(f"ZTInvisible.exe {quoted(arguments)}", flush=True)
    if with_client:
        code, output = start_with_client(arguments)
        heading("what the content-management client was told")
    else:
        code, output = start(BUILD / "ZTInvisible.exe", arguments)
        heading("standard output")
    print(output.replace("\r\n", "\n").rstrip("\n") or "(nothing)")
    log = value_of(arguments, "LOG")
    show_file(f"log {log}".rstrip(), linux_path(log, DRIVE) if log else None)
    show_status_files(exchange, value_of(arguments, "M"))
    if archive:
        heading(f"project in {archive.name}, before -> after")
        print(project.compare(before, project.describe(archive)))
        print(f"\nThe archive: {archive}")
    print(f"Exit code: {code}")
    return code


def show_publication(arguments: list[str]) -> None:
    _, archive = exchange_and_archive(arguments)
    if archive and has_keyword(arguments, "PUB", "KVB"):
        heading("what was published")
        print(publication.describe(archive.parent, archive.stem))


def main() -> int:
    folder, own = Path(sys.argv[1]), sys.argv[2:]
    lay_out()
    runs = ([user_arguments(folder, own)] if own
            else [sample_arguments(), update_arguments(), package_arguments()])
    code = 0
    for arguments in runs:
        code = code or perform(arguments, with_client=not own)
    show_publication(runs[-1])
    return code


if __name__ == "__main__":
    sys.exit(main())
