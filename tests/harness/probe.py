"""The probe program: built, started, asked. What it tells comes as `View`s."""
import contextlib
import fcntl
import json
import os
import select
import subprocess
import threading
import time
from pathlib import Path

from tools.wine_home import BUILD, ROOT, WineHome

PROGRAMS = ROOT / "tests/harness/programs"
BUILT = BUILD / "ui"
COMPILER = "i686-w64-mingw32-g++-posix"
BST_CHECKED = 1


def compile_windows_program(source: Path, *more: str, output: Path | None = None) -> Path:
    """Builds one of the helper programs of the tests when a file that it is made of is newer; safe to call from several tests.

    `more` are further sources, libraries and options.
    """
    BUILT.mkdir(parents=True, exist_ok=True)
    target = output or BUILT / (source.stem + ".exe")
    with open(target.with_suffix(".lock"), "w") as lock:
        fcntl.flock(lock, fcntl.LOCK_EX)
        if not _up_to_date(target):
            fresh = target.with_suffix(".new")
            words = [COMPILER, "-std=c++20", "-O1", "-Wall", "-Wextra", str(source), *more]
            subprocess.run([*words, "-static", "-s", "-o", str(fresh)], check=True)
            # By itself, since a compilation of several sources in one go keeps what the last one includes only.
            _made_of(target).write_text(subprocess.run([*words, "-MM"], check=True, capture_output=True, text=True).stdout)
            fresh.replace(target)
    return target


def _made_of(target: Path) -> Path:
    """The file that lists what a program was made of, in the words of make."""
    return target.with_name(target.name + ".d")


def _up_to_date(target: Path) -> bool:
    if not target.exists() or not _made_of(target).exists():
        return False
    names = [name for name in _made_of(target).read_text().replace("\\\n", " ").split() if not name.endswith(":")]
    files = [Path(name) for name in names]
    return all(file.exists() and file.stat().st_mtime < target.stat().st_mtime for file in files)


class View(dict):
    """What the probe told about a window or a control, by attribute: `view.text`, `view.rect`."""

    def __getattr__(self, name):
        try:
            return self[name]
        except KeyError:
            raise AttributeError(f"{name} is not known of {dict(self)}") from None

    @property
    def centre(self) -> tuple[int, int]:
        left, top, right, bottom = self["rect"]
        return (left + right) // 2, (top + bottom) // 2

    @property
    def checked(self) -> bool:
        return self["checked"] if "checked" in self else self["check"] == BST_CHECKED


class ProbeError(RuntimeError):
    pass


class Refusal(ProbeError):
    """The probe has an answer: that it cannot be done."""


def _line(command: str, *arguments) -> str:
    return " ".join([command] + [str(a) if isinstance(a, int) else json.dumps(str(a)) for a in arguments]) + "\n"


class Probe:
    """The probe program, one question and one answer at a time."""

    def __init__(self, home: WineHome, desktop: str):
        self.process = home.start(r"C:\uiprobe.exe", desktop, stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                  stderr=subprocess.DEVNULL)
        self._waiting = b""  # what has come of the next answers
        self._one_at_a_time = threading.Lock()
        self._next(60)

    def _read_line(self, seconds: float) -> bytes:
        """The next line, so that a dead desktop shows as a message and not as a test that never ends.

        The pipe itself may stay open after the probe has gone: services of Wine inherit it.
        """
        end = time.monotonic() + seconds
        while b"\n" not in self._waiting:
            gone = self.process.poll() is not None
            if select.select([self.process.stdout], [], [], 0 if gone else 0.2)[0]:
                more = os.read(self.process.stdout.fileno(), 1 << 16)
                if more:
                    self._waiting += more
                    continue
                gone = True
            if gone:
                raise ProbeError("the probe has ended")
            if time.monotonic() > end:
                raise ProbeError(f"the probe did not answer within {seconds:g} s")
        line, _, self._waiting = self._waiting.partition(b"\n")
        return line

    def _next(self, seconds: float):
        answer = json.loads(self._read_line(seconds), object_hook=View)
        if isinstance(answer, dict) and "error" in answer:
            raise Refusal(answer["error"])
        return answer

    def ask(self, command: str, *arguments, seconds: float = 60):
        with self._one_at_a_time:
            self._write(_line(command, *arguments))
            return self._next(seconds)

    def ask_all(self, *questions: tuple, seconds: float = 60) -> list:
        """Several questions at once, at the cost of one; what cannot be answered is None."""
        with self._one_at_a_time:
            self._write("".join(_line(*question) for question in questions))
            return [self._answer_or_none(seconds) for _ in questions]

    def _answer_or_none(self, seconds: float):
        try:
            return self._next(seconds)
        except Refusal:
            return None

    def _write(self, lines: str) -> None:
        try:
            self.process.stdin.write(lines.encode("ascii"))
            self.process.stdin.flush()
        except OSError:
            raise ProbeError("the probe has ended") from None

    def answer_that_is_due(self, seconds: float = 30):
        """Of a question that was given up."""
        return self._next(seconds)

    def alive(self) -> bool:
        return self.process.poll() is None

    def stop(self) -> None:
        with contextlib.suppress(OSError):
            self.process.stdin.write(b"quit\n")
            self.process.stdin.close()

    def close(self) -> None:
        """Lets go of the pipes, when every process of the prefix has ended."""
        with contextlib.suppress(OSError):
            self.process.stdin.close()
        self.process.stdout.close()
