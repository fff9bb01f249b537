"""cppcheck over the program, the development installation and the tools."""

import subprocess

import tree

FOLDERS = (*tree.PRODUCT, "installation", "tools")


def findings(*paths, options=()) -> str:
    run = subprocess.run(
        ["cppcheck", *options, "--enable=warning,performance,portability", "--std=c++20", "--platform=win64",
         "--quiet", "-I", ".", "-D_WIN32", "-DUNICODE", "-D_UNICODE",
         "--suppressions-list=tests/checks/cppcheck.txt",
         "--template={file}:{line}: {message} [{id}]", *map(str, paths)],
        cwd=tree.ROOT, capture_output=True, text=True)
    assert run.returncode == 0, run.stdout
    return run.stderr


def test_cppcheck_finds_nothing():
    known = tree.BUILD / "cppcheck"  # what it knows of sources that have not changed
    known.mkdir(parents=True, exist_ok=True)
    found = findings(*FOLDERS, options=[f"--cppcheck-build-dir={known}"])
    assert not found, "\n" + found


def test_cppcheck_reports_a_defect(tmp_path):
    source = tmp_path / "defect.cpp"
    source.write_text("int f() { int a[2] = {1, 2}; return a[2]; }\n")
    assert "[arrayIndexOutOfBounds]" in findings(source)
