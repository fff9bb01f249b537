"""The machine that the tests run on: the one place that knows Wine on Linux from Windows."""

from __future__ import annotations

import os
import subprocess
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parents[3]
BUILD = Path(os.environ.get("ZT_BUILD", ROOT / "build" / "release")).resolve()


# Takes from root what lets it write where nobody may.
_WITHOUT_PRIVILEGE = ["setpriv", "--bounding-set=-dac_override,-dac_read_search"]


class WineMachine:
    """A private Wine prefix; its drive C: is a folder below the build folder.

    privileged: False holds its programs to the rights of files, also when root starts them; raises
    CalledProcessError where root may not give its privilege up."""

    def __init__(self, name: str, privileged: bool = True):
        self._before = [] if privileged or os.geteuid() != 0 else _WITHOUT_PRIVILEGE
        subprocess.run([*self._before, "true"], check=True)
        self.prefix = ROOT / "build" / f"wine-system-{name}"
        self.drive = self.prefix / "drive_c"

    def start(self) -> None:
        self._wine_prefix("start")

    def stop(self) -> None:
        self._wine_prefix("stop")

    def _wine_prefix(self, what: str) -> None:
        subprocess.run([*self._before, str(ROOT / "tools" / "wine-prefix"), what, str(self.prefix)],
                       check=True)

    def command(self, program: str, arguments: list[str]) -> list[str]:
        return [*self._before, "wine", program, *arguments]

    def environment(self, more: dict[str, str]) -> dict[str, str]:
        return {
            **os.environ,
            "WINEPREFIX": str(self.prefix),
            "WINEARCH": "win64",
            "WINEDEBUG": "-all",
            "WINEDLLOVERRIDES": "mscoree,mshtml,winedbg.exe,winemenubuilder.exe=",
            "LC_ALL": "C.UTF-8",
            **more,
        }

    def windows_path(self, path: Path) -> str:
        """The path as a program on this machine names it."""
        if path.is_relative_to(self.drive):
            return "C:\\" + str(path.relative_to(self.drive)).replace("/", "\\")
        return "Z:" + str(path).replace("/", "\\")

    def hide(self, path: Path) -> None:
        """Gives a file or folder the attribute "hidden"."""
        os.setxattr(path, "user.DOSATTRIB", b"0x2")

    def watched_folders(self) -> list[Path]:
        """Where a test must leave nothing behind, but for its own folder."""
        return [self.drive]

    def programs(self) -> list[str]:
        """Command lines of the programs in this prefix, the system's own services left out."""
        found = []
        for process in Path("/proc").iterdir():
            if process.name.isdigit():
                line = self._program(process)
                if line:
                    found.append(f"{process.name}: {line}")
        return found

    def _program(self, process: Path) -> str:
        try:
            environment = (process / "environ").read_bytes().split(b"\0")
            line = (process / "cmdline").read_bytes().replace(b"\0", b" ").decode(errors="replace")
        except OSError:  # it has ended in the meantime, or is another user's
            return ""
        ours = f"WINEPREFIX={self.prefix}".encode() in environment
        services = ("C:\\windows\\", '"C:\\windows\\', "/usr/lib/wine/wineserver", "wineserver")
        is_windows_program = ".exe" in line.lower()
        return line if ours and is_windows_program and not line.startswith(services) else ""


class WindowsMachine:
    """Windows itself. The tests write below C:\\zt and into the machine's registry."""

    def __init__(self, name: str):
        if name != "master":
            raise RuntimeError("One registry for all: run the system tests without -n on Windows.")
        self.drive = Path("C:/")

    def start(self) -> None:
        pass

    def stop(self) -> None:
        pass

    def command(self, program: str, arguments: list[str]) -> list[str]:
        return [program, *arguments]

    def environment(self, more: dict[str, str]) -> dict[str, str]:
        return {**os.environ, **more}

    def windows_path(self, path: Path) -> str:
        return str(path).replace("/", "\\")

    def hide(self, path: Path) -> None:
        subprocess.run(["attrib", "+h", str(path)], check=True)

    def watched_folders(self) -> list[Path]:
        return [self.drive / "zt", Path(os.environ["TEMP"])]

    def programs(self) -> list[str]:
        name = "ZTInvisible.exe"
        listing = subprocess.run(
            ["tasklist", "/nh", "/fi", f"imagename eq {name}"], capture_output=True, text=True
        ).stdout
        return [line for line in listing.splitlines() if name in line]


def this_machine(worker: str) -> WineMachine | WindowsMachine:
    return WindowsMachine(worker) if sys.platform == "win32" else WineMachine(worker)
