"""Libraries with the names of the system's, beside the shipped program and in the current folder: none is ever loaded."""
import unittest

from tests.harness.driver import BUILT, PROGRAMS, compile_windows_program, wait_for
from tests.harness.program import DONE, ProgramCase

# What the system's own libraries load by their bare names, at the start, for a dialog or while something is erased.
NAMES = ["uxtheme.dll", "version.dll", "winspool.drv", "secur32.dll", "propsys.dll", "shlwapi.dll", "comdlg32.dll", "wininet.dll",
         "pstorec.dll", "ole32.dll", "oleaut32.dll", "urlmon.dll", "shell32.dll", "imm32.dll", "dwmapi.dll", "riched20.dll"]
CURRENT = r"C:\current"


def planted() -> bytes:
    return compile_windows_program(PROGRAMS / "planted.cpp", "-shared", output=BUILT / "planted.dll").read_bytes()


class PlantedLibraries(ProgramCase):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.places = [cls.d.home.c / name for name in ("Quellix", "current")]
        for place in cls.places:
            place.mkdir(exist_ok=True)
            for name in NAMES:
                (place / name).write_bytes(planted())

    def loaded(self) -> list[str]:
        return [str(file) for place in self.places for file in place.glob("*.loaded")]

    def start_in_the_current_folder(self):
        self.d.pid = self.d.start(rf"C:\Quellix\{self.d.program}", folder=CURRENT)
        self.d.wait_program_shown()

    def test_are_not_taken_by_a_run_of_all_items_and_a_dialog(self):
        self.start_in_the_current_folder()
        self.press_erase_only()
        wait_for("the end of the run", lambda: self.log()[-2:] == DONE, 90)
        self.d.click("cmdSecureDelk")
        self.d.wait_visible("cmdCustomAdd")
        self.d.click("cmdCustomAdd")
        self.d.wait_window("#32770")
        self.d.key("Escape")
        self.d.wait_no_window("#32770")
        self.assertEqual(self.loaded(), [])

    def test_are_not_taken_by_the_companion(self):
        pid = self.d.start(r"C:\Quellix\iea.exe", "1", folder=CURRENT)
        wait_for("the end of the companion", lambda: self.d.ended(pid) is not None)
        self.assertEqual(self.loaded(), [])


if __name__ == "__main__":
    unittest.main(verbosity=2)
