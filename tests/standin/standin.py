"""The stand-in between the shipped program and the system, from the side of a test: rules in, calls out.

`StandIn` lays it into a private Windows; `StandInDesktop` is a `Desktop` whose program starts with it.
"""
import shutil
from pathlib import Path
from typing import NamedTuple

from tests.standin.harness import BUILD, Desktop, WineHome, wait_for

HERE = Path(__file__).resolve().parent
BUILT = BUILD / "win32-debug/tests/standin"
LAUNCHER = r"C:\standin\launch.exe"
REFUSED = 99


class Refused(AssertionError):
    """A rule cannot be understood or cannot take hold; the program has not run."""


class Call(NamedTuple):
    at: int  # milliseconds after the start
    function: str
    arguments: list  # texts as str, numbers as int; what lies behind a pointer as it was after the call
    result: int | None  # None for one that has not returned
    error: int
    rule: str  # that did something about it

    @property
    def texts(self) -> list[str]:
        return [argument for argument in self.arguments if isinstance(argument, str)]

    def __str__(self) -> str:
        arguments = ", ".join(repr(a) if isinstance(a, str) else hex(a) for a in self.arguments)
        return f"{self.function}({arguments}) = {self.result}, error {self.error} [{self.rule}]"


def _argument(text: str):
    if text.startswith('"'):
        return text[1:-1] if text.endswith('"') else text  # an entry of a listing has its attributes after its name
    return int(text.removeprefix("*"), 0)


def read_call(line: str) -> Call:
    at, function, *arguments, result, error, rule = line.split("\t")
    number = result.removeprefix("= ")
    return Call(int(at), function, [_argument(a) for a in arguments], int(number) if number.isdigit() else None,
                int(error), rule)


class StandIn:
    """The stand-in of one private Windows."""

    def __init__(self, home: WineHome):
        self.folder = home.c / "standin"
        self.folder.mkdir(exist_ok=True)
        for name in ("standin.dll", "launch.exe"):
            shutil.copy2(BUILT / name, self.folder)
        shutil.copy2(HERE / "functions.txt", self.folder)

    def prepare(self, rules: list[str]) -> None:
        """Before a start: these rules, and nothing left of an earlier one."""
        for name in ("refused.txt", "process.txt", "calls.txt"):
            (self.folder / name).unlink(missing_ok=True)
        (self.folder / "rules.txt").write_text("".join(rule + "\n" for rule in rules), encoding="ascii")

    def check_accepted(self) -> None:
        refusal = self._text("refused.txt")
        if refusal:
            raise Refused(refusal)

    def process(self) -> int | None:
        """The process id of the program that was started, None before it runs."""
        text = self._text("process.txt")
        return int(text) if text.endswith("\n") else None

    def calls(self, *functions: str) -> list[Call]:
        """The calls so far, in their order; of some functions only."""
        lines = self._text("calls.txt").splitlines()
        found = [read_call(line) for line in lines if line.count("\t") >= 4]
        return [call for call in found if not functions or call.function in functions]

    def _text(self, name: str) -> str:
        path = self.folder / name
        return path.read_text(encoding="utf-8") if path.exists() else ""


class StandInDesktop(Desktop):
    """A desktop whose program runs with the rules of `rules`; what else is started there runs without."""

    def __init__(self, name: str, *, language: str | None = None, **options):
        self.rules: list[str] = []
        self.program_folder = r"C:\Quellix"
        self.current_folder: str | None = None  # in which the program starts; its own by default
        self._language = language
        self._lay_out = options.pop("prepare", None)
        self._launchers: dict[int, int] = {}  # program to launcher
        super().__init__(name, prepare=self._prepare, **options)

    def _prepare(self, home: WineHome) -> None:
        # Everything on the desktop is started by what is started next, and has its language.
        if self._language:
            home.environment.update(LANG=self._language, LC_ALL=self._language)
        self.standin = StandIn(home)
        if self._lay_out:
            self._lay_out(home)

    def start_program(self, arguments: str = "", wait_for_window: bool = True, folder: str | None = None) -> int:
        folder = folder or self.program_folder
        self.standin.prepare(self.rules)
        launcher = self.start(LAUNCHER, f'"{folder}\\{self.program}" {arguments}', self.current_folder or folder)

        def started():
            if super(StandInDesktop, self).ended(launcher) is not None:
                self.standin.check_accepted()
                return launcher
            return self.standin.process()
        self.pid = wait_for("the program to be started", started)
        self._launchers[self.pid] = launcher
        if wait_for_window:
            wait_for(f"a window of class {self.main_class}", self._window_or_end)
        return self.pid

    def _window_or_end(self):
        code = self.ended(self.pid)
        if code is not None:
            raise AssertionError(f"{self.program} ended with {code} before it showed a window")
        return self.find_window(self.main_class)

    def ended(self, pid: int) -> int | None:
        return super().ended(self._launchers.get(pid, pid))

    def terminate(self, pid: int | None = None) -> None:
        process = pid or self.pid
        super().terminate(self._launchers.get(process, process))

    def calls(self, *functions: str) -> list[Call]:
        return self.standin.calls(*functions)

    def wait_call(self, function: str, *texts: str, seconds: float = 20) -> Call:
        """Waits for a call that has all of these texts."""
        def made():
            return next((call for call in self.calls(function) if all(text in call.texts for text in texts)), None)
        return wait_for(f"a call {function}({', '.join(map(repr, texts))})", made, seconds)
