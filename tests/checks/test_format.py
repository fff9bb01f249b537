"""Formatting."""

import subprocess

import tree


def test_format_of_every_source_is_the_formatters():
    sources = tree.files(".cpp", ".h")
    assert sources
    run = subprocess.run(["clang-format", "--dry-run", "-Werror", *map(str, sources)],
                         cwd=tree.ROOT, capture_output=True, text=True)
    assert run.returncode == 0, run.stderr
