"""Builds of the program other than the one that the tests run."""

from __future__ import annotations

import os
import re
import subprocess
import uuid

import tree

IDENTIFIERS = (
    "CLSID_KernelAdmin", "IID_KernelAdmin", "IID_ExportHandler", "IID_ScriptExporter",
    "CLSID_Exporter", "IID_Exporter", "IID_IOKStatusDisplay", "IID_3DComponent",
    "IID_3DCommandTarget", "IID_ProjectNode", "CLSID_Archive", "IID_Archive")


def build(name: str, *options: str):
    """Configures and builds the target ZTInvisible alone; returns the program."""
    # As deep as the presets' folders: the compiler cache tells relative paths apart.
    folder = tree.BUILD / f"checks-{name}"
    launcher = {}
    if os.path.exists("/usr/bin/ccache"):
        launcher = {"CMAKE_CXX_COMPILER_LAUNCHER": "ccache", "CMAKE_C_COMPILER_LAUNCHER": "ccache"}
    for command in (
            ["cmake", "-S", ".", "-B", str(folder), "-G", "Ninja", "--toolchain",
             "cmake/mingw-w64.cmake", "-DCMAKE_BUILD_TYPE=Release", "-DZT_BUILD_TESTS=OFF", *options],
            ["cmake", "--build", str(folder), "-j1", "--target", "ZTInvisible"]):
        run = subprocess.run(command, cwd=tree.ROOT, env={**os.environ, **launcher},
                             stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
        assert run.returncode == 0, run.stdout
    return folder / "ZTInvisible.exe"


def imports(program) -> set[str]:
    dump = subprocess.run(["x86_64-w64-mingw32-objdump", "-p", str(program)], check=True,
                          capture_output=True, text=True).stdout
    return {name.lower() for name in re.findall(r"DLL Name: (\S+)", dump)}


SYSTEM_LIBRARIES = {
    "advapi32.dll", "gdi32.dll", "kernel32.dll", "msvcrt.dll", "ole32.dll", "oleaut32.dll",
    "shell32.dll", "user32.dll", "version.dll", "ws2_32.dll"}


def test_program_alone_builds_and_imports_only_system_libraries():
    program = build("program-alone")
    assert imports(program) - SYSTEM_LIBRARIES == set()
    tests = [path.name for path in program.parent.rglob("*.exe")
             if path != program and "CMakeFiles" not in path.parts]
    assert tests == []


def header_of(identifiers: dict[str, uuid.UUID]) -> str:
    lines = []
    for name, value in identifiers.items():
        last = ", ".join(f"0x{byte:02x}" for byte in value.bytes[8:])
        lines.append(f"DEFINE_GUID({name}, 0x{value.time_low:08x}, 0x{value.time_mid:04x}, "
                     f"0x{value.time_hi_version:04x}, {last});\n")
    return "".join(lines)


def development_identifiers() -> dict[str, uuid.UUID]:
    text = (tree.ROOT / "installation/ids/DevelopmentComponentIds.h").read_text()
    found = {}
    for name, numbers in re.findall(r"DEFINE_GUID\((\w+),([^)]*)\)", text):
        parts = [int(number, 16) for number in numbers.split(",")]
        tail = int.from_bytes(bytes(parts[5:]), "big")
        found[name] = uuid.UUID(fields=(parts[0], parts[1], parts[2], parts[3], parts[4], tail))
    return found


def test_program_builds_against_the_identifiers_of_another_installation(tmp_path):
    others = {name: uuid.UUID(int=0x5A540000_0000_4000_8000_000000000000 + 0x1111 * number)
              for number, name in enumerate(IDENTIFIERS, 1)}
    header = tmp_path / "other ids.h"
    header.write_text(header_of(others))
    program = build("other-identifiers", f"-DZT_COMPONENT_IDS={header}").read_bytes()
    missing = [name for name, value in others.items() if value.bytes_le not in program]
    assert missing == []
    development = development_identifiers()
    assert sorted(development) == sorted(IDENTIFIERS)
    left = [name for name, value in development.items() if value.bytes_le in program]
    assert left == []
