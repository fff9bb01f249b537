"""pytest option --name: only the tests whose id holds the text."""

from __future__ import annotations


def pytest_addoption(parser):
    parser.addoption("--name", default="", help="run only tests whose id holds this text")


def pytest_collection_modifyitems(config, items):
    name = config.getoption("--name")
    chosen = [item for item in items if name in item.nodeid]
    config.hook.pytest_deselected(items=[item for item in items if name not in item.nodeid])
    items[:] = chosen
