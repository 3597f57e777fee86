"""Where pages are opened from: an elevated program leaves it to the shell that runs with its user's own rights."""
import unittest

from tests.harness.driver import wait_for
from tests.harness.program import only
from tests.standin.program_under import UnderWindows

DEFAULT, FULL, LIMITED = 1, 2, 3  # TokenElevationType
CREATE_DEFAULT_ERROR_MODE = 0x04000000
SHELL, MANUAL = r"C:\windows\explorer.exe", r"C:\Quellix\manual\index.html"
STARTS = {"CreateProcessA", "CreateProcessW", "ShellExecuteA", "ShellExecuteW"}


class Elevated(UnderWindows):
    windows = "10"

    def starts_under(self, elevation: int) -> list:
        """What is started when each of the two links is clicked."""
        self.start_under(only("RecentDocument"), f"GetTokenInformation put 2 0 {elevation}", "CreateProcessW answer 1",
                         "ShellExecuteW answer 33")
        self.d.click("cmdHelp")
        for number, link in enumerate(("Label16", "Label22"), start=1):
            self.d.wait_visible(link)
            self.d.click(link)
            wait_for(f"the page of {link} to be opened", lambda number=number: len(self.calls(*STARTS)) == number)
        return self.calls(*STARTS)

    def test_pages_are_opened_by_the_running_shell(self):
        manual, address = self.starts_under(FULL)
        for start in (manual, address):
            self.assertEqual((start.function, start.texts[0]), ("CreateProcessW", SHELL), start)
            self.assertEqual(start.arguments[5], CREATE_DEFAULT_ERROR_MODE, start)
        self.assertEqual(manual.texts[1], f'"{SHELL}" "{MANUAL}"', manual)
        self.assertRegex(address.texts[1], r'^"C:\\windows\\explorer\.exe" "https?://[\w.]+/\S+"$')

    def test_pages_are_opened_directly_by_a_program_without_more_rights(self):
        for elevation in (DEFAULT, LIMITED):
            with self.subTest(elevation):
                manual, address = self.starts_under(elevation)
                self.assertEqual((manual.function, manual.texts[1]), ("ShellExecuteW", MANUAL), manual)
                self.assertEqual(address.function, "ShellExecuteW", address)
                self.assertRegex(address.texts[1], r"^https?://[\w.]+/\S+$")

    def test_the_address_is_opened_where_there_is_no_manual(self):
        manual = self.d.home.c / "Quellix/manual/index.html"
        hidden = manual.rename(manual.with_suffix(".hidden"))
        self.addCleanup(hidden.rename, manual)
        for elevation, function in ((DEFAULT, "ShellExecuteW"), (FULL, "CreateProcessW")):
            with self.subTest(elevation):
                start, _ = self.starts_under(elevation)
                self.assertEqual(start.function, function, start)
                self.assertIn(self.d.text("Label16"), start.texts[1])


if __name__ == "__main__":
    unittest.main(verbosity=2)
