"""The plain rules of a test, checked and put into the form that the library reads. A rule never fails in silence."""
import re
from functools import cache
from pathlib import Path
from typing import NamedTuple

from tools.audit.pe_file import PeFile

TABLE = Path(__file__).with_name("functions.txt")
FOREVER = 0xFFFFFFFF
FACILITY_WIN32 = 0x80070000
# How many numbers follow, at least and at most.
VERBS = {"fail": (1, 2), "answer": (1, 2), "slow": (1, 1), "hang": (0, 1), "put": (3, 99), "missing": (0, 0), "log": (0, 0)}
# Rules about several functions: how many numbers, and what the library does about each, before and after those numbers.
_FIND = ["FindFirstFileA", "FindFirstFileW", "FindNextFileA", "FindNextFileW"]
SPECIAL = {
    "version": (4, {"GetVersionExA": ("put", [0, 1], [0]), "GetVersionExW": ("put", [0, 1], [0])}),
    # Timers under a second are looks at the keyboard and the like.
    "clock": (1, {"GetTickCount": ("quick-ticks", [], []), "GetLocalTime": ("quick-time", [], []),
                  "MsgWaitForMultipleObjects": ("quick-wait", [3, 1, 1], []), "Sleep": ("quick-wait", [0, 1, 1], []),
                  "SetTimer": ("quick-wait", [2, 10, 1000], [])}),
    "links": (1, {name: ("tag-link", [], []) for name in _FIND} |
              {f"RemoveDirectory{form}": ("remove-link", [], []) for form in "AW"}),
    "no-shared-deletion": (0, {f"CreateFile{form}": ("refuse-shared-deletion", [], []) for form in "AW"}),
    "no-folder-handles": (0, {f"CreateFile{form}": ("refuse-folder", [], []) for form in "AW"}),
    "keys-with-subkeys": (0, {"RegDeleteKeyA": ("delete-with-subkeys", [], [])}),
}
QUIET = {"clock": SPECIAL["clock"][1]}  # writes no calls down


class Refused(AssertionError):
    """A rule cannot be understood or cannot take hold; the program has not run."""


class Row(NamedTuple):
    """What functions.txt knows of a function."""
    library: str
    kinds: str
    failing: str

    def failed(self, error: int) -> int:
        if self.failing in ("-", "ends"):
            raise Refused("it has no failing result; give one")
        result = FACILITY_WIN32 | error if self.failing == "hresult" and error < 1 << 31 else error
        return result if self.failing in ("error", "hresult") else int(self.failing, 0)


@cache
def table() -> dict[str, Row]:
    """Every function that a rule may name."""
    lines = (line.split() for line in TABLE.read_text(encoding="ascii").splitlines() if line and line[0] != "#")
    return {name: Row(library, *row) for library, name, *row in lines}


def called_in(image: bytes) -> dict[str, bool]:
    """What a program can call: every function it imports (True), and those of the table that its data names."""
    imported = {entry.function: True for entry in PeFile(image).imports() if entry.function}
    texts = {text.decode("ascii") for text in re.findall(rb"[A-Za-z_][A-Za-z0-9_]{2,}(?=\0)", image)}
    return dict.fromkeys(texts & set(table()), False) | imported


def _number(word: str) -> int:
    try:
        return int(word, 0) & FOREVER
    except ValueError:
        raise Refused(f"'{word}' is no number") from None


class _Rule:
    """One rule, word by word."""

    def __init__(self, number: int, text: str):
        self._number = number
        words, _, self._with = text.partition(" with ")
        self._words = words.split()
        self._first, self._last = 1, FOREVER

    def word(self) -> str:
        if not self._words:
            raise Refused("ends too early")
        return self._words.pop(0)

    def numbers(self, least: int, most: int) -> list[int]:
        found = [_number(self.word()) for _ in range(least)]
        while self._words and len(found) < most and re.match(r"-?\d", self._words[0]):
            found.append(_number(self.word()))
        return found

    def read_conditions(self) -> None:
        while self._words:
            word = self.word()
            if word not in ("only", "from", "to"):
                raise Refused(f"does not know '{word}'")
            call = _number(self.word())
            self._first, self._last = call if word != "to" else self._first, call if word != "from" else self._last

    def line(self, verb: str, numbers: list[int]) -> str:
        head = ["R", verb, self._number, self._first, self._last, len(numbers), *numbers]
        return " ".join(map(str, head)) + f" {self._with}"


class _Rules:
    """What the library is to know of each function."""

    def __init__(self, image: bytes):
        self._called = called_in(image)
        self._lines: dict[str, list[str]] = {}
        self._missing: set[str] = set()
        self._logged: set[str] = set()

    def add(self, number: int, text: str) -> None:
        rule = _Rule(number, text)
        name = rule.word()
        if name in SPECIAL:
            return self._add_special(name, rule)
        if name not in table():
            raise Refused("there is no such function in functions.txt")
        if name not in self._called:
            raise Refused("the program neither imports it nor names it in its data")
        verb = rule.word()
        if verb not in VERBS:
            raise Refused(f"does not know '{verb}'")
        numbers = rule.numbers(*VERBS[verb])
        rule.read_conditions()
        if verb == "missing":
            if self._called[name]:
                raise Refused("the program imports it and would not be loaded without it")
            self._missing.add(name)
        self._logged.add(name)
        self._lines.setdefault(name, []).append(rule.line(*_plain(verb, numbers, table()[name])))

    def _add_special(self, name: str, rule: _Rule) -> None:
        count, verbs = SPECIAL[name]
        numbers = rule.numbers(count, count)
        rule.read_conditions()
        if not set(verbs) & set(self._called):
            raise Refused("the program calls none of the functions that this is about")
        for function, (verb, before, after) in verbs.items():
            if function in self._called:
                self._lines.setdefault(function, []).append(rule.line(verb, [*before, *numbers, *after]))
                self._logged |= {function} - set(QUIET.get(name, ()))

    def bind_late(self) -> None:
        """After a test's own rules about it."""
        self._logged.add("GetProcAddress")
        self._lines.setdefault("GetProcAddress", []).append(_Rule(-1, "").line("bind-late", []))

    def text(self) -> str:
        lines = []
        for name, rules in self._lines.items():
            library, kinds, failing = table()[name]
            # In the C runtime the caller takes the arguments away.
            size = 4 * len(kinds.replace("-", "")) if library != "msvcrt" else 0
            kind = {"error": "e", "hresult": "h", "-": "n", "ends": "x"}.get(failing, "v")
            value = int(failing, 0) & FOREVER if kind == "v" else 0
            lines += [f"F {name} {kinds} {size} {kind} {value} {name in self._missing:d} {name in self._logged:d}", *rules]
        return "".join(line + "\n" for line in lines)


def _plain(verb: str, numbers: list[int], function: Row) -> tuple[str, list[int]]:
    """A rule in words of the library."""
    if verb == "fail":
        return "answer", [numbers[1] if len(numbers) > 1 else function.failed(numbers[0]), numbers[0]]
    if verb == "answer":
        return verb, [*numbers, 0][:2]
    if verb == "hang":
        return verb, numbers or [FOREVER]
    return "nothing" if verb in ("missing", "log") else verb, numbers


def compiled(rules: list[str], image: bytes) -> str:
    """The rules for a program as the library reads them."""
    found = _Rules(image)
    for number, text in enumerate(rules):
        try:
            found.add(number, text)
        except Refused as refusal:
            raise Refused(f"rule {number + 1}: {text}: {refusal}") from None
    found.bind_late()
    return found.text()
