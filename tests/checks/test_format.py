"""Formatting."""

import subprocess

import tree

# Twelve lines of a form that belongs to the installation's makers.
NOT_OURS_TO_FORMAT = tree.Path("installation/ids")


def test_format_of_every_source_is_the_formatters():
    sources = [path for path in tree.files(".cpp", ".h") if path.parent != NOT_OURS_TO_FORMAT]
    assert sources
    run = subprocess.run(["clang-format", "--dry-run", "-Werror", *map(str, sources)],
                         cwd=tree.ROOT, capture_output=True, text=True)
    assert run.returncode == 0, run.stderr
