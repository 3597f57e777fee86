"""Prints where the bytes of what ships are, from the maps that the linker wrote.

usage: python3 -m tools.size_table PROGRAM MAP [PROGRAM MAP]...

A function belongs to the room whose namespace its name holds first, and with it goes what was inlined into it. What the lowest
room makes of a piece of another one's code, such as a statement that may fail, belongs to that one.
"""
from __future__ import annotations

import re
import subprocess
import sys
from collections import Counter
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
from tools.audit import pe_file
from tools.audit.link_map import Piece, read_map
from tools.audit.pe_file import PeFile

LOWEST = "platform"
LIBRARY, RUNTIME, START = "standard library", "C++ runtime", "WinMain and start-up"
TABLES, CONSTANTS, VARIABLES, IMPORTS = "tables for exceptions", "constants and texts", "variables", "imports"
HEADERS = "headers and padding"
SECTIONS = {".eh_frame": TABLES, ".rdata": CONSTANTS, ".data": VARIABLES, ".idata": IMPORTS}
KINDS = {2: "bitmaps", pe_file.ICON: "icons", 5: "dialogs", pe_file.GROUP_ICON: "icons", pe_file.VERSION: "version",
         pe_file.MANIFEST: "manifest"}
LIBRARY_NAME = re.compile(r"\b(std|__gnu_cxx)::")


def rooms() -> list[str]:
    return sorted(folder.name for place in ("src", "companions") for folder in (ROOT / place).iterdir() if folder.is_dir())


def function_name(section: str) -> str:
    return re.sub(r"^\.text(\.unlikely|\.startup|\.exit|\.hot)?[.$]?", "", section)


def plain_names(names: list[str]) -> dict[str, str]:
    """The names as the sources have them, for those of the linker."""
    command = ["i686-w64-mingw32-c++filt", "--no-strip-underscore"]
    done = subprocess.run(command, input="\n".join(names), stdout=subprocess.PIPE, text=True, check=True)
    return dict(zip(names, done.stdout.splitlines()))


def row_of(name: str, of_rooms: re.Pattern[str]) -> str:
    """The row that the function of this plain name counts for."""
    if name.startswith(("WinMain", "atexit", "abort", "_sub_I_")):  # the last makes the static objects
        return START
    named = of_rooms.findall(name)
    if named:
        return next((room for room in named if room != LOWEST), LOWEST)
    # What the library makes of its own templates counts for it; the type information that it compiles does not.
    if LIBRARY_NAME.match(re.sub(r"^[^(<]*\s(?=[\w:]+[(<])", "", name)) and "type_info" not in name:
        return LIBRARY
    return RUNTIME


def code_rows(pieces: list[Piece]) -> Counter[str]:
    names = plain_names(sorted({function_name(piece.section) for piece in pieces}))
    of_rooms = re.compile(r"\b(" + "|".join(rooms()) + ")::")
    rows: Counter[str] = Counter()
    for piece in pieces:
        if "gcc_except_table" in piece.section:
            rows[TABLES] += piece.size
        elif "startup" in piece.source:
            rows[START] += piece.size
        elif piece.section.startswith(".text"):
            name = names[function_name(piece.section)]
            rows[row_of(name, of_rooms) if name else RUNTIME] += piece.size
    return rows


def resource_rows(program: PeFile) -> Counter[str]:
    rows: Counter[str] = Counter()
    for resource in program.resources():
        rows["resources: " + KINDS.get(resource.kind, "other")] += len(resource.data)
    return rows


def sizes(program: bytes, map_text: str) -> Counter[str]:
    """Bytes of the file by row; they add up to the file."""
    rows: Counter[str] = Counter()
    for output in read_map(map_text):
        if output.name == ".text":
            rows += code_rows(list(output.pieces))
        elif output.name in SECTIONS:
            rows[SECTIONS[output.name]] += sum(piece.size for piece in output.pieces)
    rows += resource_rows(PeFile(program))
    rows[HEADERS] = len(program) - sum(rows.values())
    return rows


def table(columns: dict[str, Counter[str]]) -> str:
    order: dict[str, int] = {}
    for column in columns.values():
        for row, size in column.items():
            order[row] = max(order.get(row, 0), size)
    own = [row for row in rooms() if row in order]
    code = sorted(own, key=lambda row: -order[row]) + [row for row in (START, LIBRARY, RUNTIME) if row in order]
    rest = sorted((row for row in order if row not in code and row != HEADERS), key=lambda row: -order[row])
    lines = [f"{'bytes of':<24}" + "".join(f"{name:>14}" for name in columns)]
    for row in [*(f"{row}" for row in code), *rest, HEADERS]:
        shown = f"code: {row}" if row in code else row
        lines.append(f"  {shown:<26}" + "".join(f"{column.get(row, 0):>12,}  " for column in columns.values()))
    lines.append(f"  {'all':<26}" + "".join(f"{sum(column.values()):>12,}  " for column in columns.values()))
    return "\n".join(line.rstrip() for line in lines)


def main() -> int:
    names = sys.argv[1:]
    if not names or len(names) % 2:
        print(__doc__.strip(), file=sys.stderr)
        return 2
    columns = {}
    for program, link_map in zip(names[::2], names[1::2]):
        columns[Path(program).name] = sizes(Path(program).read_bytes(), Path(link_map).read_text())
    print(table(columns))
    return 0


if __name__ == "__main__":
    sys.exit(main())
