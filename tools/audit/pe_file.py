"""Reads a 32-bit Windows program: headers, imported functions, resources.

It judges nothing. What cannot be read raises BadPe.
"""
from __future__ import annotations

import struct
from dataclasses import dataclass

EXPORT, IMPORT, RESOURCE, DELAY_IMPORT = 0, 1, 2, 13
ICON, GROUP_ICON, VERSION, MANIFEST = 3, 14, 16, 24
PE32_MAGIC = 0x10B
CODE_FLAGS = 0x20000020  # holds code, may be executed


class BadPe(Exception):
    """The message says in the reader's words what is wrong with the file."""


@dataclass(frozen=True)
class Section:
    address: int
    size: int
    offset: int
    code: bool


@dataclass(frozen=True)
class Import:
    dll: str  # lower case, with its extension
    function: str | None  # None: by ordinal, or a library that nothing is taken from
    ordinal: int | None


@dataclass(frozen=True)
class Resource:
    kind: int | str
    name: int | str
    language: int | str
    data: bytes


class PeFile:
    def __init__(self, data: bytes):
        self.data = data
        if data[:2] != b"MZ":
            raise BadPe("is no Windows program (no MZ at its start)")
        start = self._unpack("<I", 0x3C)[0]
        if data[start : start + 4] != b"PE\0\0":
            raise BadPe("is no Windows program (no PE header)")
        self.machine, sections, self.timestamp, _, _, optional_size, _ = self._unpack("<HHIIIHH", start + 4)
        optional = start + 24
        self.magic = self._unpack("<H", optional)[0]
        if self.magic != PE32_MAGIC:
            raise BadPe(f"is not PE32 (machine {self.machine:#06x}, magic {self.magic:#05x})")
        self.image_base = self._unpack("<I", optional + 28)[0]
        self.os_version = self._unpack("<HH", optional + 40)
        self.subsystem_version = self._unpack("<HH", optional + 48)
        self.subsystem, self.dll_characteristics = self._unpack("<HH", optional + 68)
        count = min(self._unpack("<I", optional + 92)[0], 16)
        self.directories = [self._unpack("<II", optional + 96 + 8 * i) for i in range(count)]
        self.sections = [self._section(optional + optional_size + 40 * i) for i in range(sections)]

    def directory(self, index: int) -> tuple[int, int]:
        """Address and size; (0, 0) for one that the file does not have."""
        return self.directories[index] if index < len(self.directories) else (0, 0)

    def imports(self) -> list[Import]:
        found: list[Import] = []
        position = self.directory(IMPORT)[0]
        if not position:
            return found
        while True:
            lookup, _, _, name, addresses = self._unpack("<IIIII", self._offset(position))
            if not name:
                return found
            library = self._text(name).lower()
            thunks = self._thunks(library, lookup or addresses)
            found += thunks or [Import(library, None, None)]
            position += 20

    def resources(self) -> list[Resource]:
        base = self.directory(RESOURCE)[0]
        if not base:
            return []
        found = []
        for kind, names in self._entries(base, 0):
            for name, languages in self._children(base, names):
                for language, leaf in self._children(base, languages):
                    address, size = self._unpack("<II", self._offset(base + leaf))
                    start = self._offset(address, size)
                    found.append(Resource(kind, name, language, self.data[start : start + size]))
        return found

    def _unpack(self, layout: str, offset: int) -> tuple[int, ...]:
        try:
            return struct.unpack_from(layout, self.data, offset)
        except struct.error:
            raise BadPe(f"is damaged (ends before {offset:#x})") from None

    def _section(self, offset: int) -> Section:
        _, address, size, raw = self._unpack("<IIII", offset + 8)
        flags = self._unpack("<I", offset + 36)[0]
        return Section(address, size, raw, bool(flags & CODE_FLAGS))

    def _offset(self, address: int, size: int = 1) -> int:
        for section in self.sections:
            if section.address <= address and address + size <= section.address + section.size:
                offset = address - section.address + section.offset
                if offset + size <= len(self.data):
                    return offset
        raise BadPe(f"is damaged (address {address:#x} is not in the file)")

    def _text(self, address: int) -> str:
        start = self._offset(address)
        end = self.data.find(b"\0", start)
        if end < 0:
            raise BadPe(f"is damaged (the name at {address:#x} does not end)")
        return self.data[start:end].decode("latin-1")

    def _thunks(self, library: str, position: int) -> list[Import]:
        found = []
        while True:
            value = self._unpack("<I", self._offset(position))[0]
            if not value:
                return found
            if value & 0x80000000:
                found.append(Import(library, None, value & 0xFFFF))
            else:
                found.append(Import(library, self._text(value + 2), None))  # 2: the hint before the name
            position += 4

    def _entries(self, base: int, table: int) -> list[tuple[int | str, int]]:
        named, numbered = self._unpack("<HH", self._offset(base + table + 12))
        found = []
        for i in range(named + numbered):
            key, target = self._unpack("<II", self._offset(base + table + 16 + 8 * i))
            found.append((self._wide_text(base + (key & 0x7FFFFFFF)) if key & 0x80000000 else key, target))
        return found

    def _children(self, base: int, target: int) -> list[tuple[int | str, int]]:
        if not target & 0x80000000:
            raise BadPe("is damaged (its resources are not sorted by kind, name and language)")
        return self._entries(base, target & 0x7FFFFFFF)

    def _wide_text(self, address: int) -> str:
        length = self._unpack("<H", self._offset(address))[0]
        start = self._offset(address + 2, 2 * length)
        return self.data[start : start + 2 * length].decode("utf-16-le", "replace")
