"""The clock of the program of a `Desktop`: held, so that a test looks as long as it likes at a run, and moved on."""
import contextlib
import shutil
import struct

from tests.harness.probe import BUILT, PROGRAMS, compile_windows_program

LIBRARY = r"C:\clock.dll"


class Clock:
    _clocked_pid = 0  # the program that has the clock
    _moved = 0

    def hold_time_of_next_start(self) -> None:
        """For `start_program(library=LIBRARY)`, whose program begins with the time held."""
        self._moved = 0
        self._write(held=True)
        library = compile_windows_program(PROGRAMS / "clock.cpp", "-shared", output=BUILT / "clock.dll")
        if not (self.home.c / "clock.dll").exists():
            shutil.copy2(library, self.home.c)

    @contextlib.contextmanager
    def time_held(self):
        """Within it no time passes for the program, but by `pass_time`: a run stays in the pause after an item."""
        if self._clocked_pid == self.pid:
            self._write(held=True)
        else:
            self.hold_time_of_next_start()
            self.load_into_program(LIBRARY)
            self._clocked_pid = self.pid
        try:
            yield
        finally:
            self.release_time()

    def release_time(self) -> None:
        self._write(held=False)

    def pass_a_second(self) -> None:
        """Ends a pause. It does nothing when the program is gone."""
        self.pass_time(1000)

    def pass_time(self, milliseconds: int) -> None:
        self._moved += milliseconds
        self._write(held=True)
        with contextlib.suppress(LookupError):
            self.post(None, 0)  # it looks at the clock when something comes

    def _write(self, held: bool) -> None:
        # In place: the program has mapped the file.
        with open(self.home.c / "clock.bin", "r+b" if (self.home.c / "clock.bin").exists() else "wb", buffering=0) as file:
            file.write(struct.pack("<II", held, self._moved))
