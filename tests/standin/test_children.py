"""What the program starts: with which error mode, and what it does where the system refuses."""
import unittest

from tests.harness.driver import wait_for
from tests.harness.program import only
from tests.standin.program_under import UnderWindows

UPDATER = r"C:\Quellix\Update.exe"
CREATE_DEFAULT_ERROR_MODE = 0x04000000
SW_SHOWMINIMIZED = 2
NOT_ELEVATED = 1  # the user of a Wine is: test_elevated.py has both


class Children(UnderWindows):
    """On Windows 10, which takes a program of the updater's name for an installer."""

    windows = "10"

    def setUp(self):
        super().setUp()
        updater = self.d.home.c / "Quellix/Update.exe"
        updater.write_bytes(b"no program")
        self.addCleanup(updater.unlink)

    def press_update(self, *rules: str) -> None:
        self.start_under(only("RecentDocument"), *rules, "SetErrorMode log", "ShellExecuteW answer 42")
        self.d.click("cmdSchedule")
        self.d.wait_visible("cmdUpgrade")
        self.d.click("cmdUpgrade")

    def check_own_error_mode_around(self, start) -> None:
        modes = [call for call in self.calls("SetErrorMode") if call.number > 1]
        before = [call for call in modes if call.number < start.number][-1]
        after = next(call for call in modes if call.number > start.number)
        self.assertEqual(before.arguments[0], 0, before)
        self.assertEqual(after.arguments[0], before.result, after)
        self.assertNotEqual(after.arguments[0], 0, "the program's own mode")

    def test_an_updater_that_wants_more_rights_is_started_by_the_shell(self):
        self.press_update("CreateProcessW fail 740 with Update.exe")
        start = wait_for("the shell to be asked", lambda: self.calls("ShellExecuteW"))[0]
        self.assertEqual(start.arguments[1:], ["open", UPDATER, 0, 0, SW_SHOWMINIMIZED], start)
        self.assertEqual(self.calls("CreateProcessW")[0].arguments[5], CREATE_DEFAULT_ERROR_MODE)
        self.check_own_error_mode_around(start)
        self.d.settle("cmdUpgrade")
        self.assertEqual(self.d.boxes(), [])

    def test_an_updater_that_is_refused_is_told_of(self):
        self.press_update("CreateProcessW fail 5 with Update.exe")
        box = self.d.press_button_in_box("OK")
        self.assertEqual((box.text, box.icon), ("The update could not be started (Permission denied).", "error"))
        self.assertEqual(self.calls("ShellExecuteW"), [])

    def test_a_page_is_opened_with_its_own_error_mode(self):
        self.start_under(only("RecentDocument"), f"GetTokenInformation put 2 0 {NOT_ELEVATED}", "SetErrorMode log",
                         "ShellExecuteW answer 42")
        self.d.click("cmdHelp")
        self.d.wait_visible("Label16")
        self.d.click("Label16")
        self.check_own_error_mode_around(wait_for("the shell to be asked", lambda: self.calls("ShellExecuteW"))[0])


if __name__ == "__main__":
    unittest.main(verbosity=2)
