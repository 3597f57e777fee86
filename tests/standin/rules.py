"""The plain rules of a test, checked and put into the form that the library reads. A rule never fails in silence."""
import re
from functools import cache
from pathlib import Path
from typing import NamedTuple

from tools.audit.pe_file import PeFile

TABLE = Path(__file__).with_name("functions.txt")
FOREVER = 0xFFFFFFFF
# What an error code becomes: an HRESULT of Windows, an NTSTATUS that RtlNtStatusToDosError turns back into it.
FACILITIES = {"hresult": 0x80070000, "status": 0xC0010000}
# How many numbers follow, at least and at most.
VERBS = {"fail": (1, 2), "answer": (1, 2), "slow": (1, 1), "hang": (0, 1), "put": (3, 99), "missing": (0, 0), "log": (0, 0),
         "kill": (0, 1), "crash": (0, 0)}
# Rules about several functions: how many numbers, and what the library does about each, before and after those numbers.
_FIND = ["FindFirstFileA", "FindFirstFileW", "FindNextFileA", "FindNextFileW"]
SPECIAL = {
    "version": (4, {"GetVersionExA": ("put", [0, 1], [0]), "GetVersionExW": ("put", [0, 1], [0])}),
    # Timers under a second are looks at the keyboard and the like.
    "clock": (1, {"GetTickCount": ("quick-ticks", [], []), "GetLocalTime": ("quick-time", [], []),
                  "MsgWaitForMultipleObjects": ("quick-wait", [3, 1, 1], []), "Sleep": ("quick-wait", [0, 1, 1], []),
                  "SetTimer": ("quick-wait", [2, 10, 1000], [])}),
    "links": (1, {name: ("tag-link", [], []) for name in _FIND} |
              {f"RemoveDirectory{form}": ("remove-link", [], []) for form in "AW"} |
              {"NtQueryDirectoryFile": ("tag-records", [], []), "NtOpenFile": ("open-link", [], []),
               "NtSetInformationFile": ("remove-open-link", [], []),
               "GetFileInformationByHandle": ("show-open-link", [], []), "CloseHandle": ("forget-open-link", [], [])}),
    "no-shared-deletion": (0, {f"CreateFile{form}": ("refuse-shared-deletion", [], []) for form in "AW"}),
    "no-folder-handles": (0, {f"CreateFile{form}": ("refuse-folder", [], []) for form in "AW"}),
    "keys-with-subkeys": (0, {"RegDeleteKeyA": ("delete-with-subkeys", [], [])}),
}
RULE = re.compile(r"([\w-]+)( [a-z]+)?((?: -?\d\w*)*)((?: (?:only|from|to) \d+)*)(?: with (.+))?")


class Refused(AssertionError):
    """A rule cannot be understood or cannot take hold; the program has not run."""


class Row(NamedTuple):
    """What functions.txt knows of a function."""
    dll: str
    kinds: str
    failing: str

    def failed(self, error: int) -> int:
        if self.failing in ("-", "ends"):
            raise Refused("it has no failing result; give one")
        if self.failing in FACILITIES:
            return FACILITIES[self.failing] | error if error < 1 << 31 else error
        return error if self.failing == "error" else int(self.failing, 0)


@cache
def table() -> dict[str, Row]:
    """Every function that a rule may name."""
    lines = (line.split() for line in TABLE.read_text(encoding="ascii").splitlines() if line and line[0] != "#")
    return {name: Row(library, *row) for library, name, *row in lines}


@cache
def called_in(image: bytes) -> dict[str, bool]:
    """What a program can call: every function it imports (True), and those of the table that its data names."""
    imported = {entry.function: True for entry in PeFile(image).imports() if entry.function}
    texts = {text.decode("ascii") for text in re.findall(rb"[A-Za-z_][A-Za-z0-9_]{2,}(?=\0)", image)}
    return dict.fromkeys(texts & set(table()), False) | imported


def _check_count(numbers: list[int], least: int, most: int) -> None:
    if not least <= len(numbers) <= most:
        raise Refused(f"has {len(numbers)} numbers and needs {least}" + f" to {most}" * (most > least))


class _Rules:
    """What the library is to know of each function."""

    def __init__(self, image: bytes):
        self._called = called_in(image)
        self._lines: dict[str, list[tuple]] = {}
        self._missing: set[str] = set()
        self._logged: set[str] = set()

    def add(self, number: int, text: str) -> None:
        match = RULE.fullmatch(text)
        if not match:
            raise Refused("cannot be understood")
        name, verb, given, conditions, with_text = match.groups("")
        numbers = [int(word, 0) & FOREVER for word in given.split()]
        when = dict(re.findall(r"(\w+) (\d+)", conditions))
        first, last = when.get("from", when.get("only", 1)), when.get("to", when.get("only", FOREVER))
        if name in SPECIAL and not verb:
            lines = self._special(name, numbers)
        else:
            lines = {name: self._plain(name, verb.strip(), numbers)}
        for function, (act, values) in lines.items():
            words = ("R", act, number, first, last, len(values), *values, with_text)
            self._lines.setdefault(function, []).append(words)
            self._logged |= {function} if name != "clock" else set()

    def _special(self, name: str, numbers: list[int]) -> dict[str, tuple[str, list[int]]]:
        count, verbs = SPECIAL[name]
        _check_count(numbers, count, count)
        lines = {function: (verb, [*before, *numbers, *after])
                 for function, (verb, before, after) in verbs.items() if function in self._called}
        if not lines:
            raise Refused("the program calls none of the functions that this is about")
        return lines

    def _plain(self, name: str, verb: str, numbers: list[int]) -> tuple[str, list[int]]:
        if name not in table():
            raise Refused("there is no such function in functions.txt")
        if name not in self._called:
            raise Refused("the program neither imports it nor names it in its data")
        if verb not in VERBS:
            raise Refused(f"does not know '{verb}'")
        _check_count(numbers, *VERBS[verb])
        if verb == "missing":
            if self._called[name]:
                raise Refused("the program imports it and would not be loaded without it")
            self._missing.add(name)
        if verb == "fail":
            return "answer", [numbers[1] if len(numbers) > 1 else table()[name].failed(numbers[0]), numbers[0]]
        filled = {"answer": [*numbers, 0][:2], "hang": numbers or [FOREVER]}
        return verb, filled.get(verb, numbers)

    def text(self) -> str:
        # Last, so that a test's own rules about it decide before.
        self._lines.setdefault("GetProcAddress", []).append(("R", "bind-late", -1, 1, FOREVER, 0, ""))
        self._logged.add("GetProcAddress")
        lines = []
        for name, rules in self._lines.items():
            row = table()[name]
            # In the C runtime the caller takes the arguments away.
            size = 4 * len(row.kinds.replace("-", "")) if row.dll != "msvcrt" else 0
            kind = {"error": "e", "hresult": "h", "status": "h", "-": "n", "ends": "x"}.get(row.failing, "v")
            value = int(row.failing, 0) & FOREVER if kind == "v" else 0
            lines += [("F", name, row.kinds, size, kind, value, int(name in self._missing), int(name in self._logged)), *rules]
        return "".join(" ".join(map(str, line)) + "\n" for line in lines)


def compiled(rules: list[str], image: bytes) -> str:
    """The rules for a program as the library reads them."""
    found = _Rules(image)
    for number, text in enumerate(rules):
        try:
            found.add(number, text)
        except Refused as refusal:
            raise Refused(f"rule {number + 1}: {text}: {refusal}") from None
    return found.text()
