"""The probe program: built, started, asked. What it tells comes as `View`s."""
import contextlib
import fcntl
import json
import queue
import subprocess
import threading
import time
import sys
from pathlib import Path

HERE = Path(__file__).resolve().parent
ROOT = HERE.parents[1]
sys.path.insert(0, str(ROOT / "tools"))
from wine_home import BUILD, WineHome  # noqa: E402

BUILT = BUILD / "ui"
COMPILER = "i686-w64-mingw32-g++-posix"
BST_CHECKED = 1


def compile_windows_program(source: Path, *libraries: str, output: Path | None = None) -> Path:
    """Builds one of the helper programs of the tests when its sources are newer; safe to call from several tests."""
    BUILT.mkdir(parents=True, exist_ok=True)
    target = output or BUILT / (source.stem + ".exe")
    with open(BUILT / "compile.lock", "w") as lock:
        fcntl.flock(lock, fcntl.LOCK_EX)
        newest = max(f.stat().st_mtime for f in [source, *source.parent.glob("*.h")])
        if not target.exists() or target.stat().st_mtime < newest:
            fresh = target.with_suffix(".new")
            subprocess.run([COMPILER, "-std=c++20", "-O1", "-Wall", "-Wextra", "-static", "-s", "-o", str(fresh), str(source),
                            *libraries], check=True)
            fresh.replace(target)
    return target


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


class Probe:
    """The probe program, one question and one answer at a time."""

    def __init__(self, home: WineHome, desktop: str):
        self.process = home.start(r"C:\uiprobe.exe", desktop, stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                  stderr=subprocess.DEVNULL)
        self._answers: queue.Queue = queue.Queue()
        self._one_at_a_time = threading.Lock()
        # A thread reads, so that a dead desktop shows as a message and not as a test that never ends. The pipe itself
        # may stay open after the probe has gone: services of Wine inherit it.
        self._reader = threading.Thread(target=self._read, daemon=True)
        self._reader.start()
        self._next(60)

    def _read(self) -> None:
        for line in self.process.stdout:
            self._answers.put(line)

    def _next(self, seconds: float):
        end = time.monotonic() + seconds
        while True:
            try:
                line = self._answers.get(timeout=0.2)
                break
            except queue.Empty:
                if self.process.poll() is not None and self._answers.empty():
                    raise ProbeError("the probe has ended") from None
                if time.monotonic() > end:
                    raise ProbeError(f"the probe did not answer within {seconds:g} s") from None
        answer = json.loads(line, object_hook=View)
        if isinstance(answer, dict) and "error" in answer:
            raise ProbeError(answer["error"])
        return answer

    def ask(self, command: str, *arguments, seconds: float = 60):
        words = [command] + [str(a) if isinstance(a, int) else json.dumps(str(a)) for a in arguments]
        with self._one_at_a_time:
            try:
                self.process.stdin.write((" ".join(words) + "\n").encode("ascii"))
                self.process.stdin.flush()
            except OSError:
                raise ProbeError("the probe has ended") from None
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
        self._reader.join(10)
        if not self._reader.is_alive():
            self.process.stdout.close()
