"""The functions that the oldest supported systems export, and why any other function may not be imported."""
from __future__ import annotations

from pathlib import Path

FLOOR_FOLDER = Path(__file__).resolve().parent / "floor"

# None: may be imported.
TIERS = {
    "ok": None,
    "comctl470": None,
    "osr2": "absent on the first Windows 95",
    "dcom95": "absent on the first Windows 95 without DCOM",
    "ie3": "comes with Internet Explorer 3",
    "ie4": "comes with Internet Explorer 4",
    "shell471": "comes with the desktop update of Internet Explorer 4",
    "?": "known from one of Windows 95 and NT 4 only",
}
TAGS = {
    "w9x": "wide function, a failing stub on Windows 95, 98 and Me",
    "stub9x": "always fails on Windows 95, 98 and Me",
    "nowine": None,
}

# (library without extension, function): why it may be imported all the same.
# A row is right only where the call's failure is handled as if the feature were missing.
ALLOWED: dict[tuple[str, str], str] = {}


class BadFloor(Exception):
    """A list holds a row that cannot be understood; the message says which."""


def rows(path: Path) -> list[list[str]]:
    """The three columns of every row that is no comment."""
    found = []
    for number, line in enumerate(path.read_text(encoding="ascii").splitlines(), 1):
        if not line or line.startswith("#"):
            continue
        columns = line.split("\t")
        if len(columns) != 3 or not all(columns):
            raise BadFloor(f"{path.name}:{number}: three columns expected: {line}")
        found.append(columns)
    return found


class Floor:
    def __init__(self, folder: Path = FLOOR_FOLDER):
        self.libraries: dict[str, dict[str, tuple[str, list[str]]]] = {}
        for path in sorted(folder.glob("*.txt")):
            self.libraries[path.stem] = self._read_library(path)
        if not self.libraries:
            raise BadFloor(f"no list of any library in {folder}")
        self.later = {(library, name): first for library, name, first in rows(folder / "later.tsv")}

    def objection(self, library: str, function: str) -> str | None:
        """Why `function` may not be imported; None when it may. `library` is in lower case, with its extension."""
        stem = library[:-4] if library.endswith(".dll") else library
        if (stem, function) in ALLOWED:
            return None
        listed = self.libraries.get(stem)
        if listed is None:
            return "no floor list for this library"
        if function not in listed:
            first = self.later.get((stem, function))
            return f"not on the floor, first in {first}" if first else "not on the floor, unknown since when"
        tier, tags = listed[function]
        reasons = [f"tier {tier}: {TIERS[tier]}"] if TIERS[tier] else []
        reasons += [f"tag {tag}: {TAGS[tag]}" for tag in tags if TAGS[tag]]
        return "; ".join(reasons) or None

    @staticmethod
    def _read_library(path: Path) -> dict[str, tuple[str, list[str]]]:
        functions = {}
        for name, tier, tags in rows(path):
            split = [] if tags == "-" else tags.split(",")
            # A misspelt tag would let its function pass.
            if tier not in TIERS or not all(tag in TAGS for tag in split):
                raise BadFloor(f"{path.name}: {name}: unknown tier or tag: {tier} {tags}")
            functions[name] = (tier, split)
        return functions
