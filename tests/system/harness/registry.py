"""Registry values of a test, byte for byte."""

from __future__ import annotations

from dataclasses import dataclass

REG_SZ, REG_EXPAND_SZ, REG_BINARY, REG_DWORD, REG_MULTI_SZ = 1, 2, 3, 4, 7


@dataclass(frozen=True)
class Value:
    key: str
    name: str
    type: int
    data: bytes
    root: str = "HKLM"

    def line(self) -> str:
        return "\t".join(["set", self.root, self.key, self.name, str(self.type), self.data.hex()])


def text(key: str, name: str, value: str, root: str = "HKLM", type: int = REG_SZ) -> Value:
    """A text value with its terminating zero."""
    return Value(key, name, type, (value + "\0").encode("utf-16-le"), root)


def deletion(root: str, key: str) -> str:
    return "\t".join(["delete", root, key])
