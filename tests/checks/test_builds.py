"""Builds of the program other than the one that the tests run."""

from __future__ import annotations

import os
import re
import subprocess
import uuid

import pytest

import tree

IDENTIFIERS = (
    "CLSID_KernelAdmin", "IID_KernelAdmin", "IID_ExportHandler", "IID_ScriptExporter",
    "CLSID_Exporter", "IID_Exporter", "IID_IOKStatusDisplay", "IID_3DComponent",
    "IID_3DCommandTarget", "IID_ProjectNode", "CLSID_Archive", "IID_Archive")


# One folder, so that the second build compiles only what differs; as deep as the presets' folders,
# since the compiler cache compares relative paths.
FOLDER = tree.BUILD / "checks-program"

pytestmark = pytest.mark.xdist_group("builds")  # one after the other


def build(identifiers: str = ""):
    """Configures and builds the target ZTInvisible alone, against the identifiers in that header or
    the development installation's; returns the program."""
    launcher = {}
    if os.path.exists("/usr/bin/ccache"):
        launcher = {"CMAKE_CXX_COMPILER_LAUNCHER": "ccache", "CMAKE_C_COMPILER_LAUNCHER": "ccache"}
    for command in (
            ["cmake", "-S", ".", "-B", str(FOLDER), "-G", "Ninja", "--toolchain",
             "cmake/mingw-w64.cmake", "-DCMAKE_BUILD_TYPE=Release", "-DZT_BUILD_TESTS=OFF",
             f"-DZT_COMPONENT_IDS={identifiers}"],
            ["cmake", "--build", str(FOLDER), "-j1", "--target", "ZTInvisible"]):
        run = subprocess.run(command, cwd=tree.ROOT, env={**os.environ, **launcher},
                             stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
        assert run.returncode == 0, run.stdout
    return FOLDER / "ZTInvisible.exe"


def test_program_alone_builds():
    program = build()
    tests = [path.name for path in program.parent.rglob("*.exe")
             if path != program and "CMakeFiles" not in path.parts]
    assert tests == []


def test_program_is_shipped_with_its_symbols_beside_it():
    program = build()
    sections, symbols = dump("-h", program), dump("-t", program)
    assert ".gnu_debuglink" in sections and ".debug_" not in sections
    assert "no symbols" in symbols
    beside = program.with_name("ZTInvisible.exe.debug")
    assert ".debug_line" in dump("-h", beside) and "wmain" in dump("-t", beside)


def dump(option, program) -> str:
    return subprocess.run(["x86_64-w64-mingw32-objdump", option, str(program)], check=True,
                          capture_output=True, text=True).stdout


def check(script: str, *definitions: str):
    return subprocess.run(["cmake", *definitions, "-P", str(tree.ROOT / "cmake" / script)],
                          capture_output=True, text=True)


@pytest.mark.parametrize("size, code", [(500_000, 0), (500_001, 1)])
def test_build_fails_above_the_largest_size(tmp_path, size, code):
    program = tmp_path / "program.exe"
    program.write_bytes(bytes(size))
    assert check("CheckSize.cmake", f"-DPROGRAM={program}").returncode == code


@pytest.mark.parametrize("library, code", [("OLE32.dll", 0), ("libstdc++-6.dll", 1)])
def test_build_fails_for_a_library_that_is_no_part_of_the_system(tmp_path, library, code):
    objdump = tmp_path / "objdump"
    objdump.write_text(f"#!/bin/sh\necho '  DLL Name: KERNEL32.dll'\necho '  DLL Name: {library}'\n")
    objdump.chmod(0o755)
    done = check("CheckImports.cmake", "-DPROGRAM=program.exe", f"-DOBJDUMP={objdump}")
    assert done.returncode == code
    assert (f"imports {library}" in " ".join(done.stderr.split())) == bool(code)


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
    program = build(str(header)).read_bytes()
    missing = [name for name, value in others.items() if value.bytes_le not in program]
    assert missing == []
    development = development_identifiers()
    assert sorted(development) == sorted(IDENTIFIERS)
    left = [name for name, value in development.items() if value.bytes_le in program]
    assert left == []
