"""What a `Desktop` measures: processor time, and how long windows take to answer."""
import contextlib
from pathlib import Path, PureWindowsPath

from tools.wine_home import wait_for

WM_NULL = 0x0000


class Measures:
    def linux_processes(self) -> list[tuple[Path, list[str]]]:
        """What runs in this Windows as Linux sees it: folders below /proc, each with the words of its command line."""
        found = []
        for process in Path("/proc").glob("[0-9]*"):
            # One that has ended meanwhile, or is another user's, tells nothing.
            with contextlib.suppress(OSError):
                if f"WINEPREFIX={self.home.prefix}".encode() in (process / "environ").read_bytes().split(b"\0"):
                    words = (process / "cmdline").read_bytes().decode(errors="replace").split("\0")
                    found.append((process, words))
        return found

    def _processes_of(self, program: str) -> list[Path]:
        return [process for process, words in self.linux_processes()
                if PureWindowsPath(words[0]).name.lower() == program.lower()]

    def cpu(self, program: str | None = None) -> float:
        """Milliseconds of processor time that a program has used so far, by default the one under test.

        Linux tells it, because Wine answers for every process with the times of the one that asks.
        """
        running = self._processes_of(program or self.program)
        if len(running) != 1:
            raise LookupError(f"{len(running)} processes of {program or self.program}")
        return _times(running)[0]

    def move_mouse_away(self) -> None:
        """Moves the mouse off every window, before the processor time of an idle program is measured.

        While the mouse is over a program's window Wine itself looks again and again, in that program, whether it has left.
        """
        self.move(2, 2)

    def response_ms(self, window=None, timeout_ms: int = 20000) -> float:
        """How long a window takes to answer at this moment, without the time for which the machine is busy with others."""
        return self._response(self._window_handle(window), self._who_answers(), timeout_ms)

    def longest_freeze(self, until, window=None, seconds: float = 60) -> float:
        """Asks a window without a pause until `until()` is true and returns the longest answer in milliseconds.

        Time for which the machine is busy with others does not count.
        """
        hwnd, who, worst = self._window_handle(window), self._who_answers(), [0.0]

        def over():
            worst[0] = max(worst[0], self._response(hwnd, who))
            return until()
        wait_for("the end of the measured work", over, seconds, 0.005)
        return worst[0]

    @contextlib.contextmanager
    def stolen_time(self):
        """Gives a function that tells for how many milliseconds since then the machine was busy with others."""
        who = self._who_answers()
        before = _times(who)[1]
        yield lambda: _times(who)[1] - before

    def _who_answers(self) -> list[Path]:
        """The processes that a message goes through: while one of them waits for a processor, the others wait for it."""
        return [process for name in (self.program, "uiprobe.exe", "wineserver32", "wineserver") for process in self._processes_of(name)]

    def _response(self, hwnd: int, who: list[Path], timeout_ms: int = 20000) -> float:
        before = _times(who)[1]
        took = self.send(hwnd, WM_NULL, timeout_ms=timeout_ms).ms
        return max(0.0, took - (_times(who)[1] - before))


def _times(processes: list[Path]) -> tuple[float, float]:
    """For how many milliseconds the threads of some processes have run, and for how many they could have and had no processor."""
    ran = waited = 0
    for process in processes:
        # A process or a thread that has ended meanwhile has none.
        with contextlib.suppress(OSError):
            for thread in (process / "task").iterdir():
                with contextlib.suppress(OSError):
                    times = (thread / "schedstat").read_text().split()
                    ran, waited = ran + int(times[0]), waited + int(times[1])
    return ran / 1e6, waited / 1e6
