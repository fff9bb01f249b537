"""Checks of the sources and of the build."""

import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent))


def pytest_collection_modifyitems(items):
    """What takes longest begins first, so that no worker is left with it at the end."""
    first = ("test_builds", "test_cppcheck", "test_sample_run", "test_tidy")
    items.sort(key=lambda item: item.module.__name__ not in first)
