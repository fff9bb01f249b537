"""-PUB: which component publishes a project, and what comes out."""

from __future__ import annotations

import pytest

from harness import registry
from harness.cms import Peer
from harness.job import OPENED, SAVED
from harness.projects import Project
from harness.publication import read_folder, read_package
from harness.publishing import PUBLISHED

EXPORTERS = ["Catalog", "Illustrator"]
VIEWED = ["Manual", "Learning"]

# Six nodes of four levels, two of them without an object and two with the same.
OBJECTS = ("housing", "seal", "screw", "spare")
NODES = ((1, ""), (2, "housing"), (3, "screw"), (2, ""), (3, "seal"), (1, "screw"))


def axes(sandbox, model: str) -> str:
    return sandbox.windows("installation", "data", "KVProductFamily", "Axes", model)


def description_file(sandbox, specification: str) -> str:
    return sandbox.windows("installation", "data", "Morvenit", "KVProductFamily", "IPCCFG",
                           f"{specification}.cfg")


# ---- routes ----

@pytest.mark.parametrize("specification, creations", [
    ("Catalog", ["Exporter"]), ("Illustrator", ["Exporter"]), ("Text", ["Component3D"]),
    ("Manual", ["ViewerControl", "Component3D"]), ("Learning", ["ViewerControl", "Component3D"])])
def test_class_of_the_specification_decides_which_components_publish(publish, specification,
                                                                     creations):
    publish(specification=specification)
    publish.check_published()
    created = [call for call in publish.calls("Exporter", "Component3D", "ViewerControl",
                                              "ArchiveComponent") if "CreateInstance" in call]
    assert created == [f"{name} CreateInstance" for name in creations]
    kind = {"Exporter": "catalogue", "Component3D": "text", "ViewerControl": "view"}[creations[0]]
    assert publish.folder.index.kind.split()[0] == kind


def test_viewer_stands_in_a_hidden_pop_up_of_16_by_16_pixels(publish):
    publish()
    hosts = [line for line in publish.job.run.trace if line.startswith("program GetWindow ")]
    assert len(hosts) == 1
    assert hosts[0].endswith('style 0x84000000, extended style 0x00000000, class style 0x00000000, '
                             '(0,0)-(16,16), title "", invisible')
    control = [line for line in publish.job.run.trace if line.startswith("window of Viewer")]
    assert "(0,0)-(16,16), id 0" in control[0]


# ---- the published folder ----

@pytest.mark.parametrize("specification", EXPORTERS + VIEWED + ["Text"])
def test_published_folder_is_whole(publish, specification):
    publish(specification=specification, metadata={"Title": "Pump <1> & \"2\"", "Status": "draft"},
            documents={"Pump.xml": b"<document title='Doc'><para>A</para></document>",
                       "notes.txt": b"no XML"})
    folder = publish.folder
    assert folder.broken_links() == []
    assert folder.index.title == 'Pump <1> & "2"'
    assert folder.index.metadata == {"Title": 'Pump <1> & "2"', "Status": "draft"}
    assert folder.index.documents == ["Pump.xml", "notes.txt"]
    assert folder.files["documents/notes.txt"] == b"no XML"
    assert folder.page("documents/Pump.xml.html").title == "Doc"
    assert folder.files["pictures/pump.svg"] == b"<svg/>"


@pytest.mark.parametrize("specification", EXPORTERS + VIEWED + ["Text"])
def test_language_of_the_project_is_the_publications(publish, specification):
    publish(specification=specification, language="de")
    index = publish.folder.index
    assert index.language == "de"
    assert index.facts["language"] == "de"
    assert index.heading("metadata") == "Metadaten"


@pytest.mark.parametrize("specification, shown", [
    ("Catalog", "Catalog.cfg (class IPC, version 2)"),
    ("Manual", "Manual.cfg (class PROC, version 3)"),
    ("Text", "Text.cfg (class TEXT, version 1)")])
def test_specification_file_is_the_one_beside_the_folder(publish, specification, shown):
    publish(specification=specification)
    assert publish.folder.index.facts["specification"] == shown


@pytest.mark.parametrize("specification, position", [("Catalog", "x 100, y 40"),
                                                     ("Illustrator", "x 85, y 15")])
def test_exporter_shows_axes_options_and_site(publish, specification, position):
    publish(specification=specification)
    facts = publish.folder.index.facts
    assert facts["axes model"] == "pump-axes.wrl"
    assert facts["axes position"] == position
    assert (facts["option a"], facts["option b"]) == ("0", "0")
    assert facts["site"] == "Zeltor Development Installation"


@pytest.mark.parametrize("specification, learning, model", [("Manual", "no", "pump-axes.wrl"),
                                                            ("Learning", "yes", "std.wrl")])
def test_view_shows_axes_learning_mode_tag_and_names(publish, specification, learning, model):
    publish(specification=specification)
    index = publish.folder.index
    # The model is found below the data folder without the maker's level.
    assert index.facts["axes model"] == f"{model} (found)"
    assert index.facts["learning mode"] == learning
    assert ("learning" in index.kind.split()) == (learning == "yes")
    assert index.facts["resource tag"] == "#res#"
    assert index.facts["validates nodes"] == "yes"
    assert index.facts["option c"] == "0"
    assert (index.facts["first name"], index.facts["second name"]) == ("Index", "Contents")


def test_publication_shows_what_the_run_has_changed(publish):
    publish("-META", "Title", "Boiler pump", "-NR")
    publish.job.check_succeeded(
        OPENED, b"Value of metadata 'Title' set to 'Boiler pump'\r\n",
        b"New revision of the project started\r\n", SAVED, PUBLISHED)
    index = publish.folder.index
    assert index.title == "Boiler pump"
    assert "Revision B" in index.root.all("header")[0].text


def test_folder_is_named_after_the_archive_and_not_after_a_new_name(publish):
    publish("-PROJECTNAME", "Other")
    assert publish.exchange == ["Pump", "Pump.kvp", "job_DONE"]


@pytest.mark.parametrize("name", ["Gr\u00f6\u00dfe \u6cf5", "v1.2.beta", "a & b's"])
def test_folder_and_package_bear_any_name_of_a_project(installed, name):
    Project().write(installed.path("exchange", f"{name}.kvp"))
    for keyword in ("-PUB", "-KVB"):
        installed.run("-IN", installed.windows("exchange", f"{name}.kvp"), "-LOG",
                      installed.windows("run.log"), keyword)
        assert b"SUCCESS: ZeltorAuthorInvisible" in installed.read("run.log")
    folder = read_folder(installed.path("exchange", name)).files
    assert "index.html" in folder
    assert read_package(installed.path("exchange", f"{name}.kvb")).files == folder
    assert len(installed.names("exchange")) == 3


def test_nothing_is_deleted_where_the_folder_is_there_already(publish):
    old = publish.sandbox.path("exchange", "Pump")
    (old / "sub").mkdir(parents=True)
    (old / "sub" / "mine.txt").write_text("mine")
    publish()
    assert publish.folder.files["sub/mine.txt"] == b"mine"
    assert publish.folder.index.title == "Feed pump"


# ---- referenced objects ----

def test_each_object_that_nodes_refer_to_is_announced_once(publish):
    publish(objects=OBJECTS, nodes=NODES)
    assert sorted(publish.folder.index.objects) == ["housing", "screw", "seal"]
    commands = [call for call in publish.calls("Component3D") if " Execute " in call]
    assert commands == (["Component3D Execute (0, VT_I4 1, null)"]
                        + ["Component3D Execute (0, VT_I4 1000, array(1 of type 12))"] * 3)


def test_node_tree_of_10000_levels_is_walked_to_its_end(publish):
    nodes = tuple((level, "seal" if level == 10000 else "") for level in range(1, 10001))
    publish(objects=OBJECTS, nodes=nodes, seconds=150)
    publish.check_published()
    assert publish.folder.index.objects == ["seal"]
    assert sum(" GetAttachedObject " in line for line in publish.job.run.trace) == 10000


def test_wide_node_tree_is_asked_for_each_node_once(publish):
    objects = tuple(f"o{number}" for number in range(50))
    nodes = tuple((1 + number % 3, objects[number % 50]) for number in range(3000))
    publish(objects=objects, nodes=nodes, seconds=150)
    assert sorted(publish.folder.index.objects) == sorted(objects)
    assert sum(" GetAttachedObject " in line for line in publish.job.run.trace) == 3000


def test_project_without_nodes_refers_to_nothing(publish):
    publish(objects=OBJECTS)
    assert publish.folder.index.objects == []


# ---- the typical run ----

def test_typical_run_publishes_and_reports_to_the_client(publish):
    with Peer() as client:
        publish.sandbox.path("exchange", "cms.ini").write_bytes(client.settings().encode())
        publish("-S", "-META", "Title", "T")
    publish.job.check_succeeded(OPENED, b"Value of metadata 'Title' set to 'T'\r\n", SAVED,
                                PUBLISHED)
    assert publish.exchange == ["Pump", "Pump.kvp", "cms.ini", "job_DONE"]
    assert publish.folder.index.title == "T"
    assert [message.split("|")[-2:] for message in client.messages] == [
        ["STATUS", "SUCCESS"], ["SAVE_AND_CLOSE", "Pump.kvp"]]


def test_axes_folder_starts_below_the_data_folder_that_the_registry_names(publish):
    data = publish.sandbox.windows("installation", "data")
    publish.sandbox.set_registry(registry.text(r"Software\Morvenit", "ZeltorDataFolder", data,
                                               type=registry.REG_EXPAND_SZ))
    publish()
    assert publish.folder.index.facts["axes model"] == "pump-axes.wrl (found)"
