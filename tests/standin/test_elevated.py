"""Where web pages are opened from: an elevated program leaves it to the shell that runs with its user's own rights."""
import unittest

from tests.harness.driver import wait_for
from tests.harness.program import only
from tests.standin.program_under import UnderWindows

DEFAULT, FULL, LIMITED = 1, 2, 3  # TokenElevationType
STARTS = {"CreateProcessA", "CreateProcessW", "ShellExecuteA", "ShellExecuteW"}


class Elevated(UnderWindows):
    windows = "10"

    def starts_under(self, elevation: int) -> list:
        """What is started when the first link is clicked."""
        self.start_under(only("RecentDocument"), f"GetTokenInformation put 2 0 {elevation}", "CreateProcessW answer 1",
                         "ShellExecuteW answer 33")
        self.d.click("cmdHelp")
        self.d.wait_visible("Label16")
        self.d.click("Label16")
        return wait_for("the page to be opened", lambda: self.calls(*STARTS))

    def test_a_page_is_opened_by_the_running_shell(self):
        (start,) = self.starts_under(FULL)
        shell, address = r"C:\windows\explorer.exe", self.d.text("Label16")
        self.assertEqual((start.function, start.texts[:2]), ("CreateProcessW", [shell, f'"{shell}" "{address}"']), start)

    def test_a_page_is_opened_directly_by_a_program_without_more_rights(self):
        for elevation in (DEFAULT, LIMITED):
            with self.subTest(elevation):
                (start,) = self.starts_under(elevation)
                self.assertEqual(start.function, "ShellExecuteW", start)
                self.assertIn(self.d.text("Label16"), start.texts)


if __name__ == "__main__":
    unittest.main(verbosity=2)
