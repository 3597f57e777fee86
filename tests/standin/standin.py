"""The stand-in between the shipped program and the system, from the side of a test: rules in, calls out.

`StandInDesktop` is a `Desktop` whose program starts with it; `rules.py` reads the rules.
"""
import shutil
from pathlib import Path
from typing import NamedTuple

from tests.harness.driver import BUILD, Desktop, wait_for
from tests.standin.rules import Refused, compiled

__all__ = ["Call", "Refused", "StandInDesktop"]

LIBRARY = BUILD / "win32-debug/tests/standin/standin.dll"
NO_RESULT = {"hangs", "ends"}


class Call(NamedTuple):
    number: int  # in the order in which they were made
    at: int  # milliseconds after the start
    took: int
    function: str
    arguments: list  # texts as str, records as bytes, numbers as int; what comes back as it was after the call
    result: int | None  # None for one that has not returned
    error: int
    rule: str  # that did something about it

    @property
    def texts(self) -> list[str]:
        return [argument for argument in self.arguments if isinstance(argument, str)]

    @property
    def first_words(self) -> list[int]:
        """The numbers, and of the records what they begin with, which mostly is their size."""
        return [int.from_bytes(a[:4], "little") if isinstance(a, bytes) else a for a in self.arguments if not isinstance(a, str)]

    def __str__(self) -> str:
        arguments = ", ".join(hex(a) if isinstance(a, int) else repr(a) for a in self.arguments)
        return f"{self.function}({arguments}) = {self.result}, error {self.error} [{self.rule}]"


def _argument(text: str):
    if text.startswith('"'):
        return text[1:-1] if text.endswith('"') else text  # an entry of a listing has its attributes after its name
    return bytes.fromhex(text[1:]) if text.startswith("#") else int(text.removeprefix("*"), 0)


class StandInDesktop(Desktop):
    """A desktop whose program runs with the rules of `rules`; what else is started there runs without."""

    def __init__(self, name: str, **options):
        self.rules: list[str] = []
        self.program_folder = r"C:\Quellix"
        self.current_folder: str | None = None  # in which the program starts; its own by default
        self._lay_out = options.pop("prepare", None)
        super().__init__(name, prepare=self._prepare, **options)

    def _prepare(self, home) -> None:
        self._folder = home.c / "standin"
        self._folder.mkdir()
        shutil.copy2(LIBRARY, self._folder)
        if self._lay_out:
            self._lay_out(home)

    def start_under(self, rules: list[str], path: str, arguments: str = "", folder: str | None = None) -> int:
        """Starts any program with the stand-in in it and returns its process id. Nothing is left of an earlier one's calls."""
        self._written = rules
        (self._folder / "calls.txt").unlink(missing_ok=True)
        exe = self.home.c / Path(*path[3:].split("\\"))
        (self._folder / "rules.txt").write_text(compiled(rules, exe.read_bytes()), encoding="ascii")
        return self.probe.ask("start", folder or path.rpartition("\\")[0], f'"{path}" {arguments}'.strip(),
                              r"C:\standin\standin.dll").pid

    def start_program(self, arguments: str = "", wait_for_window: bool = True, folder: str | None = None,
                      library: str | None = None) -> int:
        assert not library, "the stand-in is the library"
        path = rf"{folder or self.program_folder}\{self.program}"
        self.pid = self.start_under(self.rules, path, arguments, self.current_folder)
        if wait_for_window:
            self.wait_program_shown()
        return self.pid

    def calls(self, *functions: str) -> list[Call]:
        """The calls so far, in the order in which they were made; of some functions only."""
        path = self._folder / "calls.txt"
        lines = path.read_text(encoding="utf-8").split("\n")[:-1] if path.exists() else []
        found = sorted((self._call(line) for line in lines), key=lambda call: call.number)
        return [call for call in found if not functions or call.function in functions]

    def _call(self, line: str) -> Call:
        number, at, end, function, *arguments, result, error, rules = line.split("\t")
        words = "; ".join(self._written[int(rule)] for rule in rules.split(",") if rule.isdigit())
        return Call(int(number), int(at), int(end) - int(at), function, [_argument(a) for a in arguments],
                    None if result in NO_RESULT else int(result), int(error), words)

    def wait_call(self, function: str, *texts: str, seconds: float = 120) -> Call:
        """Waits for a call that has all of these texts."""
        def made():
            return next((call for call in self.calls(function) if all(text in call.texts for text in texts)), None)
        return wait_for(f"a call {function}({', '.join(map(repr, texts))})", made, seconds)
