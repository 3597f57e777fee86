"""The shipped program with a library between it and the system, which plays what Wine has no other way to show."""
import shutil

from tests.harness.driver import PROGRAMS, compile_windows_program, wait_for
from tests.harness.probe import BUILT
from tests.harness.program import ProgramCase


class RiggedCase(ProgramCase):
    """Each test says with `rig` what the library does; the words are explained in programs/rigged.cpp."""

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        library = compile_windows_program(PROGRAMS / "rigged.cpp", "-shared", output=BUILT / "rigged.dll")
        shutil.copy2(library, cls.d.home.c / "rigged.dll")
        cls.d.loaded = r"C:\rigged.dll"

    def tearDown(self):
        if self.d.pid and self.d.ended(self.d.pid) is None:
            self.d.terminate()
        self.d.wait_no_icon()
        super().tearDown()

    def rig(self, *words: str) -> None:
        """For the next start of the program. What was called before is forgotten."""
        (self.d.home.c / "rigged.txt").write_text(" ".join(words))
        (self.d.home.c / "calls.txt").unlink(missing_ok=True)

    def calls(self, function: str) -> list[str]:
        """The calls of a function so far, each as a line without its name."""
        record = self.d.home.c / "calls.txt"
        lines = record.read_text(errors="replace").splitlines() if record.exists() else []
        return [line.partition(" ")[2] for line in lines if line.partition(" ")[0] == function]

    def wait_call(self, function: str, seconds: float = 120) -> str:
        return wait_for(f"a call of {function}", lambda: self.calls(function), seconds)[0]
