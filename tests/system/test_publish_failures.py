"""Publications that fail, each with its text."""

from __future__ import annotations

import pytest


def check_nothing_published(publish, text: bytes) -> None:
    publish.check_failed(text)
    assert publish.exchange == ["Pump.kvp", "job_ERROR"]


@pytest.mark.parametrize("specification", ["Text", "Manual"])
def test_unknown_identifier_of_the_3d_component_ends_the_run(publish, specification,
                                                             unknown_3d_component):
    publish(specification=specification)
    check_nothing_published(publish, b"Can't create KV3D")
    assert not any("Component3D" in line for line in publish.job.run.trace)


OUTCOMES = [  # specification and operation, what happens, the text
    ("Catalog", "Exporter.Export", "error E_ACCESSDENIED Line one \u00e4",
     b"ERROR publishing project: Line one \xe4"),
    ("Text", "Component3D.PublishText", "error E_FAIL It does not matter.",
     b"Error publishing project"),
    ("Manual", "Component3D.PublishView", "error E_FAIL No scene was found.",
     b"Error publishing project:\nNo scene was found."),
]


@pytest.mark.parametrize("specification, operation, what, text", OUTCOMES,
                         ids=[" ".join(row[:3]) for row in OUTCOMES])
def test_publication_that_fails_ends_the_run_with_its_text(publish, specification, operation,
                                                           what, text):
    publish(specification=specification, faults=f"{operation} 1 {what}")
    check_nothing_published(publish, text)


@pytest.mark.parametrize("specification, text", [
    ("Catalog", "ERROR publishing project: The publication cannot be written: {}"),
    ("Text", "Error publishing project"),
    ("Manual", "Error publishing project:\nThe publication cannot be written: {}")])
def test_file_in_the_place_of_the_folder_ends_the_run_and_stays(publish, specification, text):
    file = publish.sandbox.path("exchange", "Pump")
    file.write_bytes(b"mine")
    publish(specification=specification)
    publish.check_failed(text.format(publish.sandbox.windows("exchange", "Pump")).encode())
    assert publish.exchange == ["Pump", "Pump.kvp", "job_ERROR"]
    assert file.read_bytes() == b"mine"


def test_project_stays_saved_where_its_publication_fails(publish):
    publish("-META", "Title", "New", faults="Component3D.PublishView 1 result E_FAIL")
    assert publish.job.stored.metadata["Title"] == "New"
    assert publish.exchange == ["Pump.kvp", "job_ERROR"]
    assert publish.job.log.endswith(b"Project saved to KVP file\r\nERROR: Error publishing project")
