"""Checks of the sources and of the build."""

import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent))


def pytest_collection_modifyitems(items):
    """What takes longest begins first, so that no worker is left with it at the end."""
    def weight(item) -> int:
        group = item.callspec.params.get("group") if hasattr(item, "callspec") else None
        if group is not None:
            return len(group.sources)
        return 20 if item.module.__name__ in ("test_builds", "test_sample_run") else 0
    items.sort(key=weight, reverse=True)
