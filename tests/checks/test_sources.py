"""Rules about which source may know what."""

import re

import tree


def test_identifiers_header_is_included_in_exactly_one_source():
    including = [str(path) for path in tree.files(".cpp", ".h", below=tree.PRODUCT)
                 if re.search(r"#\s*include\s+(ZT_COMPONENT_IDS_HEADER|\S*DevelopmentComponentIds)",
                              (tree.ROOT / path).read_text())]
    assert including == ["components/ComponentIds.cpp"]


def core_sources():
    """The sources that are built natively too, but for the tests."""
    return [source for source in tree.compile_options("native") if source.parts[0] in tree.PRODUCT]


WINDOWS_HEADERS = re.compile(
    r"#\s*include\s+<(windows|winsock2?|ws2tcpip|ole\w*|ocidl|oaidl|objbase|objidl|objsafe|unknwn\w*"
    r"|comdef|comutil|comip|wrl/\w+|shl\w+|shellapi|msxml\w*|docobj|servprov|winver|winreg|wtypes"
    r"|guiddef|initguid|combaseapi|olectl|tchar|io|direct|process|crtdbg)(\.h)?>", re.IGNORECASE)


def test_core_sources_include_no_windows_header():
    sources = core_sources()
    assert sources
    offending = {f"{path.relative_to(tree.ROOT)}: {found[0]}"
                 for path in tree.own_closure(sources)
                 for found in WINDOWS_HEADERS.finditer(path.read_text())}
    assert not offending


def test_windows_headers_are_known_by_every_name_that_the_program_includes():
    """Guards the list above: a system header that the native build lacks must be in it."""
    included = {found for path in tree.files(".cpp", ".h", below=tree.PRODUCT)
                for found in re.findall(r"#\s*include\s+(<\w[\w/]*\.h>)",
                                        (tree.ROOT / path).read_text())}
    unknown = {name for name in included if not WINDOWS_HEADERS.match(f"#include {name}")}
    assert unknown == set()
