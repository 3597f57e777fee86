"""Reads the linker's map of a program: which piece of which object stands where."""
from __future__ import annotations

import re
from dataclasses import dataclass

PLACE = re.compile(r"\s+0x([0-9a-f]+)\s+0x([0-9a-f]+)(?:\s+(.*))?$")


class BadMap(Exception):
    """The message says in the reader's words what is wrong with the map."""


@dataclass(frozen=True)
class Piece:
    section: str  # as the object has it: ".text$name", or "*fill*" and "LONG" for what the linker puts in itself
    address: int
    size: int
    source: str  # the object, or the archive with the object in brackets


@dataclass(frozen=True)
class Output:
    name: str
    address: int
    size: int
    pieces: tuple[Piece, ...]


def read_map(text: str) -> list[Output]:
    """The sections of the program that take room, in order, each with its pieces in order."""
    head, found, tail = text.partition("\nLinker script and memory map\n")
    if not found:
        raise BadMap("is no linker map")
    outputs: list[tuple[str, int, int, list[Piece]]] = []
    name = ""  # of a section whose place is on the next line
    for line in tail.splitlines():
        alone = re.fullmatch(r"( ?)([.*][^\s(]+)", line)
        if alone:
            name = line
            continue
        if re.match(r" ?[.*][^\s(]", line):
            name, line = re.match(r"( ?\S+)(.*)", line).groups()
        data = re.match(r"\s+0x([0-9a-f]+)\s+0x([0-9a-f]+)\s+(BYTE|SHORT|LONG|QUAD)\b", line)
        place = PLACE.match(line)
        if data and outputs:
            outputs[-1][3].append(Piece(data[3], int(data[1], 16), int(data[2], 16), ""))
        elif place and name:
            address, size, source = int(place[1], 16), int(place[2], 16), place[3] or ""
            if not name.startswith(" "):
                outputs.append((name, address, size, []))
            elif address and size and outputs:
                outputs[-1][3].append(Piece(name.strip(), address, size, source.strip()))
        name = ""
    return [Output(n, a, s, tuple(pieces)) for n, a, s, pieces in outputs if a and s]
