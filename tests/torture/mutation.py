"""Damaged files: what a seed makes of a sound one."""

from __future__ import annotations

import copy
import io
import random
import zipfile
from xml.etree import ElementTree

_TOKENS = [b"<", b">", b"&", b"&amp;", b"&#0;", b"&#x10FFFF;", b"&nothing;", b"]]>", b"<![CDATA[",
           b"<!--", b"-->", b"<?xml version='1.0' encoding='UTF-16'?>", b'"', b"'", b"%s%n%d",
           b"\0", b"\xff\xfe", b"\xef\xbb\xbf", b"\xc3\x28", b"\xed\xa0\x80",
           "\u4e2d\u6587".encode(),
           b"99999999999999999999", b"-1", b"..\\..\\", b"\\\\?\\", b"/", b"<configuration>",
           b"</configuration>", b"<!DOCTYPE a [<!ENTITY e 'text'>]>", b"x" * 20000, b"<a>" * 500]


def _flip(data: bytearray, rng: random.Random) -> None:
    for _ in range(rng.choice((1, 1, 2, 5, 40))):
        if data:
            data[rng.randrange(len(data))] = rng.randrange(256)


def _cut(data: bytearray, rng: random.Random) -> None:
    del data[rng.randint(0, len(data)):]


def _delete(data: bytearray, rng: random.Random) -> None:
    start = rng.randint(0, len(data))
    del data[start:start + rng.randint(1, 60)]


def _repeat(data: bytearray, rng: random.Random) -> None:
    start = rng.randint(0, len(data))
    part = data[start:start + rng.randint(1, 200)]
    at = rng.randint(0, len(data))
    data[at:at] = part * rng.choice((1, 2, 50))


def _insert(data: bytearray, rng: random.Random) -> None:
    at = rng.randint(0, len(data))
    data[at:at] = rng.choice(_TOKENS)


def _replace(data: bytearray, rng: random.Random) -> None:
    start = rng.randint(0, len(data))
    data[start:start + rng.randint(1, 12)] = rng.choice(_TOKENS)


def _randomise(data: bytearray, rng: random.Random) -> None:
    data[:] = rng.randbytes(rng.choice((0, 1, 4, 100, 5000)))


_MUTATORS = [_flip] * 3 + [_insert] * 3 + [_replace] * 3 + [_cut, _delete, _delete, _repeat,
                                                           _randomise]


_VALUES = ["", " ", "0", "-1", "7", "99999999999999999999", "2147483648", "x" * 20000, "%s%n%ws%d",
           "'", '"', "]]>", "<a/>", "&", "\u00e9\u4e2d", "..\\..\\x", "C:\\", "\\\\?\\C:\\x",
           "a*b?", "CON", ".", "IPC", "PROC", "TRNG", "TEXT", "ILLUS", "ipc", "en", "de", "x64",
           "KVDev.Nothing", "KVDev.SampleEdit", "KVDev.Export", "KVDev.Notifications",
           "zt-handlers.dll", "kernel32.dll", "Export.script", "std", "pump", "P0001", "Title"]


def _shake(root: ElementTree.Element, rng: random.Random) -> None:
    parent = rng.choice(list(root.iter()))
    children = list(parent)
    what = rng.randrange(8)
    if what == 0 and children:
        parent.remove(rng.choice(children))
    elif what == 1 and children:
        parent.insert(0, copy.deepcopy(rng.choice(children)))
    elif what == 2:
        parent.tag = rng.choice([element.tag for element in root.iter()] + ["other"])
    elif what in (3, 4) and parent.attrib:
        parent.set(rng.choice(list(parent.attrib)), rng.choice(_VALUES))
    elif what == 5:
        parent.set(rng.choice(("id", "lang", "class", "platform", "xpos", "script", "name")),
                   rng.choice(_VALUES))
    elif what == 6:
        for _ in range(rng.choice((1, 300))):
            parent = ElementTree.SubElement(parent, rng.choice((root.tag, "deep")))
    else:
        parent.text = rng.choice(_VALUES)


def shaken(data: bytes, rng: random.Random) -> bytes:
    """XML that is still well-formed and says something else."""
    root = ElementTree.fromstring(data)
    for _ in range(rng.choice((1, 1, 2, 4))):
        _shake(root, rng)
    return ElementTree.tostring(root, encoding=rng.choice(("utf-8", "utf-8", "utf-16")))


def mutated_xml(data: bytes, rng: random.Random) -> bytes:
    return (shaken if rng.random() < 0.75 else mutated)(data, rng)


def mutated(data: bytes, rng: random.Random) -> bytes:
    changed = bytearray(data)
    for _ in range(rng.choice((1, 1, 1, 2, 4))):
        rng.choice(_MUTATORS)(changed, rng)
    return bytes(changed)


def mutated_archive(data: bytes, rng: random.Random) -> bytes:
    """Either the archive's own bytes are damaged, or those of a file in it."""
    if rng.random() < 0.3:
        return mutated(data, rng)
    with zipfile.ZipFile(io.BytesIO(data)) as archive:
        files = {name: archive.read(name) for name in archive.namelist()}
    name = rng.choice(("index.xml", "project.xml", "project.xml", *files))
    if rng.random() < 0.1:
        del files[name]
    else:
        damage = mutated_xml if name in ("index.xml", "project.xml") else mutated
        files[name] = damage(files[name], rng)
    changed = io.BytesIO()
    with zipfile.ZipFile(changed, "w", zipfile.ZIP_DEFLATED) as archive:
        for name, content in files.items():
            archive.writestr(name, content)
    return changed.getvalue()
