#!/usr/bin/env python3
"""Tells whether a program of ours holds only instructions that a 486 has.

The program is disassembled, all of its code and, going by the linker's map, nothing but its code. Each finding is one
line; the exit status is 1 when there is any.
"""
from __future__ import annotations

import argparse
import re
import subprocess
import sys
from bisect import bisect_right
from dataclasses import dataclass
from pathlib import Path

from tools.audit.link_map import BadMap, Output, Piece, read_map
from tools.audit.pe_file import BadPe, PeFile

LIST = Path(__file__).with_name("instructions.txt")
DISASSEMBLER = ["i686-w64-mingw32-objdump", "-d", "-z", "-w", "-M", "intel", "--no-show-raw-insn"]
FILTER = ["i686-w64-mingw32-c++filt", "--no-strip-underscore"]
# What the linker puts beside the code: lists of functions, the handlers of exceptions, numbers of its own.
DATA = re.compile(r"\.(ctors|dtors|gcc_except_table)|LONG$|BYTE$|SHORT$|QUAD$")
PREFIXES = {"lock", "rep", "repe", "repne", "repz", "repnz", "data16", "addr16", "cs", "ds", "es", "fs", "gs", "ss"}
LATER_OPERANDS = (
    (re.compile(r"\b[xyz]mm[0-9]"), "uses the registers of SSE"),
    (re.compile(r"\bmm[0-7]\b"), "uses the registers of MMX"),
    (re.compile(r"\b[cdt]r[0-7]\b|FWORD|0x[0-9a-f]+:0x"), "is for the system alone; is this data taken for code?"),
)
TEST_BIT = "0x200000"  # a program may ask for the processor's name when this flag can be changed


class BadList(Exception):
    """The message says which line of the list of instructions cannot be read."""


@dataclass(frozen=True)
class Instruction:
    address: int
    name: str
    operands: str

    def __str__(self) -> str:
        return f"{self.name} {self.operands}".strip()


def read_list(text: str) -> dict[str, tuple[str, bool]]:
    """Name -> processor, whether a 486 has it."""
    known: dict[str, tuple[str, bool]] = {}
    for number, line in enumerate(text.splitlines(), 1):
        if line.startswith("#"):
            continue
        columns = line.split("\t")
        if len(columns) != 3 or columns[1] not in ("yes", "no"):
            raise BadList(f"{LIST.name}:{number}: not processor, yes or no, names")
        for name in columns[2].split():
            if name in known:
                raise BadList(f"{LIST.name}:{number}: {name} a second time")
            known[name] = (columns[0], columns[1] == "yes")
    return known


def code_ranges(pe: PeFile, outputs: list[Output]) -> list[tuple[int, int]]:
    """Every byte of the sections that hold code, without what the map knows as data."""
    by_address = {output.address: output for output in outputs}
    ranges = []
    for section in pe.sections:
        address = pe.image_base + section.address
        output = by_address.get(address)
        if output is None:
            raise BadMap(f"does not belong to the program: no section at {address:#x}")
        if not section.code:
            continue
        if not all(address <= piece.address and piece.address + piece.size <= address + section.size for piece in output.pieces):
            raise BadMap(f"does not belong to the program: {output.name} is larger than there")
        start = address
        for piece in output.pieces:
            if DATA.match(piece.section):
                ranges.append((start, piece.address))
                start = piece.address + piece.size
        ranges.append((start, address + section.size))
    return [(start, end) for start, end in ranges if start < end]


def disassemble(program: Path, start: int, end: int) -> list[Instruction]:
    command = [*DISASSEMBLER, f"--start-address={start:#x}", f"--stop-address={end:#x}", str(program)]
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
    if done.returncode:
        raise BadPe(f"cannot be disassembled: {done.stderr.strip()}")
    found = []
    for line in done.stdout.splitlines():
        place, parted, text = line.partition(":\t")
        if not parted:
            continue
        words = text.split("#")[0].split()
        while len(words) > 1 and words[0] in PREFIXES:
            words = words[1:]
        found.append(Instruction(int(place, 16), words[0], " ".join(words[1:])))
    return found


def objection(instruction: Instruction, known: dict[str, tuple[str, bool]]) -> str | None:
    for operands, what in LATER_OPERANDS:
        if operands.search(instruction.operands):
            return what
    if instruction.name == "nop" and instruction.operands:
        return "came with the Pentium Pro"
    if instruction.name not in known:
        return "is not in the list of instructions"
    processor, has = known[instruction.name]
    if has:
        return None
    return "is for the system alone; is this data taken for code?" if processor == "system" else f"came with the {processor}"


def is_tested(before: list[Instruction]) -> bool:
    """Whether these instructions ask whether the processor knows cpuid."""
    names = {instruction.name for instruction in before}
    return {"pushf", "popf"} <= names and any(TEST_BIT in instruction.operands for instruction in before)


class Pieces:
    """Where an address belongs, for the reader of a finding."""

    def __init__(self, outputs: list[Output]):
        self.pieces: list[Piece] = sorted((p for output in outputs for p in output.pieces), key=lambda piece: piece.address)
        self.starts = [piece.address for piece in self.pieces]

    def at(self, address: int) -> Piece | None:
        index = bisect_right(self.starts, address) - 1
        return self.pieces[index] if index >= 0 else None

    def name(self, address: int) -> str:
        piece = self.at(address)
        if piece is None:
            return "nothing that the map knows"
        name = re.sub(r"^\.text(\.unlikely|\.startup|\.exit|\.hot)?[.$]?", "", piece.section)
        if not name:
            return Path(piece.source).name
        return subprocess.run([*FILTER, name], stdout=subprocess.PIPE, text=True, check=True).stdout.strip()


def audit(program: Path, map_text: str, known: dict[str, tuple[str, bool]]) -> tuple[list[str], int, int]:
    """Findings, number of instructions, and how many of them are for floating point."""
    outputs = read_map(map_text)
    pieces = Pieces(outputs)
    findings, total, floating = [], 0, 0
    for start, end in code_ranges(PeFile(program.read_bytes()), outputs):
        instructions = disassemble(program, start, end)
        total += len(instructions)
        floating += sum(instruction.name.startswith("f") for instruction in instructions)
        for index, instruction in enumerate(instructions):
            what = objection(instruction, known)
            if what is None:
                continue
            piece = pieces.at(instruction.address)
            if instruction.name == "cpuid" and piece is not None:
                if is_tested([i for i in instructions[:index] if i.address >= piece.address]):
                    continue
            findings.append(f"{instruction.address:#x} in {pieces.name(instruction.address)}: {instruction}: {what}")
    return findings, total, floating


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("program", type=Path)
    parser.add_argument("map", type=Path, help="the map that the linker wrote with it")
    options = parser.parse_args()
    name = options.program.name
    try:
        findings, total, floating = audit(options.program, options.map.read_text(), read_list(LIST.read_text()))
    except (OSError, BadList) as error:
        findings = [str(error)]
    except BadPe as error:
        findings = [str(error)]
    except BadMap as error:
        findings = [f"{options.map.name} {error}"]
    for finding in findings:
        print(f"{name}: {finding}")
    if not findings:
        print(f"{name}: {total} instructions, {floating} of them for floating point, none that a 486 lacks")
    return 1 if findings else 0


if __name__ == "__main__":
    sys.exit(main())
