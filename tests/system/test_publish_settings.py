"""The stored settings of the publishing components, from the registry into the published pages."""

from __future__ import annotations

import pytest

from harness import registry

# Specification, its product with the version of the user's key, the component that publishes it.
PRODUCTS = [
    ("Catalog", "ZeltorCatalog", "1.4", "Exporter"),
    ("Text", "ZeltorText", "1.0", "KV3D"),
]
OWN = {"Accent": "#2a5d84", "Footer": "", "ShowDocuments": "yes", "TableRows": "1000", "Scale": "1"}
INSTALLED = {**OWN, "Footer": "Published by the development installation", "Scale": "1.25"}

USER = r"Software\Morvenit\ZeltorManual\1.4\Components\KV3D"
MACHINE = r"Software\Morvenit\ZeltorManual\Components\KV3D"


def number(key: str, name: str, value: int, root: str) -> registry.Value:
    return registry.Value(key, name, registry.REG_DWORD, value.to_bytes(4, "little"), root)


class Settings:
    """Stores settings for the 3D component of a manual, and publishes with them."""

    def __init__(self, publish):
        self.publish = publish
        self._sandbox = publish.sandbox

    def user(self, name: str, value: str | int) -> "Settings":
        return self._store(USER, name, value, "HKCU")

    def machine(self, name: str, value: str | int) -> "Settings":
        return self._store(MACHINE, name, value, "HKLM")

    def _store(self, key, name, value, root) -> "Settings":
        store = number if isinstance(value, int) else registry.text
        self._sandbox.set_registry(store(key, name, value, root))
        return self

    def forget(self, key: str, root: str) -> "Settings":
        self._sandbox.delete_registry_keys(key, root=root)
        return self

    def shown(self, **project) -> dict[str, str]:
        self.publish(**project)
        self.publish.check_published()
        return self.publish.folder.index.settings


@pytest.fixture
def settings(publish):
    return Settings(publish)


# ---- keys ----

@pytest.mark.parametrize("specification, product, version, component", PRODUCTS)
def test_users_settings_come_from_the_versioned_key_of_the_product(publish, specification, product,
                                                                   version, component):
    publish.sandbox.set_registry(registry.text(
        rf"Software\Morvenit\{product}\{version}\Components\{component}", "Accent", "#123456",
        "HKCU"))
    publish(specification=specification)
    assert publish.folder.index.settings == {**INSTALLED, "Accent": "#123456"}
    assert b"#123456" in publish.folder.files["resources/style.css"]


@pytest.mark.parametrize("specification, product, version, component", PRODUCTS)
def test_defaults_come_from_the_unversioned_key_of_the_machine(publish, specification, product,
                                                               version, component):
    publish.sandbox.set_registry(
        registry.text(rf"Software\Morvenit\{product}\Components\{component}", "Footer", "plain"),
        registry.text(rf"Software\Morvenit\{product}\{version}\Components\{component}", "Footer",
                      "versioned"))
    publish(specification=specification)
    assert publish.folder.index.settings == {**INSTALLED, "Footer": "plain"}


@pytest.mark.parametrize("specification, product, version", [row[:3] for row in PRODUCTS])
def test_component_keeps_its_own_settings_without_the_users_key(publish, specification, product,
                                                                version):
    publish.sandbox.delete_registry_keys(rf"Software\Morvenit\{product}\{version}", root="HKCU")
    publish(specification=specification)
    assert publish.folder.index.settings == OWN
    assert not any(" Load (" in call for call in publish.calls("Exporter", "Component3D"))


def test_component_keeps_its_own_settings_without_the_machines_key(settings):
    settings.user("Accent", "#123456").forget(r"Software\Morvenit\ZeltorManual", "HKLM")
    assert settings.shown() == OWN
    assert not any(" Load (" in call for call in settings.publish.calls("Component3D"))


def test_component_without_a_subkey_is_not_asked_to_load(settings):
    settings.forget(MACHINE, "HKLM")
    assert settings.shown() == OWN
    assert not any(" Load (" in call for call in settings.publish.calls("Component3D"))


def test_subkey_of_the_user_serves_alone(settings):
    settings.user("Accent", "#123456").forget(MACHINE, "HKLM")
    assert settings.shown() == {**OWN, "Accent": "#123456"}


def test_component_that_takes_no_settings_keeps_its_own(settings):
    # Its second query is the one for settings.
    settings.user("Accent", "#123456")
    assert settings.shown(faults="Component3D.QueryInterface 2 result E_NOINTERFACE") == OWN


@pytest.mark.parametrize("specification, component, other", [("Catalog", "Exporter", "KV3D"),
                                                             ("Manual", "KV3D", "Exporter")])
def test_settings_of_the_other_component_are_not_taken(publish, specification, component, other):
    key = rf"Software\Morvenit\Zeltor{specification}\1.4\Components"
    publish.sandbox.set_registry(
        registry.text(rf"{key}\{component}", "Footer", "mine", "HKCU"),
        registry.text(rf"{key}\{other}", "Footer", "not mine", "HKCU"))
    publish(specification=specification)
    assert publish.folder.index.settings["Footer"] == "mine"


# ---- values ----

def test_users_value_goes_before_the_default(settings):
    settings.user("Footer", "the user's").machine("Footer", "the machine's")
    assert settings.shown()["Footer"] == "the user's"


def test_empty_text_of_the_user_goes_before_the_default(settings):
    assert settings.user("Footer", "").shown()["Footer"] == ""


@pytest.mark.parametrize("name, stored, shown", [
    ("TableRows", "12", "12"), ("Footer", 42, "42"), ("ShowDocuments", "False", "no"),
    ("Scale", "2.5", "2.5")])
def test_value_is_converted_to_the_type_that_the_component_asks_for(settings, name, stored, shown):
    assert settings.user(name, stored).shown()[name] == shown


# ---- settings show ----

def test_documents_are_left_out_where_a_setting_says_so(settings):
    settings.user("ShowDocuments", 0).shown()
    folder = settings.publish.folder
    assert folder.index.documents is None
    assert not any(name.startswith("documents/") for name in folder.files)


def test_table_of_objects_ends_after_the_number_of_rows_that_a_setting_says(settings):
    settings.user("TableRows", 2).shown(objects=("a", "b", "c"),
                                        nodes=((1, "a"), (1, "b"), (1, "c")))
    assert len(settings.publish.folder.index.objects) == 2


def test_nothing_is_written_to_the_registry(settings):
    settings.user("Footer", "mine").shown()
    settings.shown()
    trace = settings.publish.job.run.trace
    assert any(line.startswith("program Read ") for line in trace)
    assert not any(line.startswith("program Write ") for line in trace)
