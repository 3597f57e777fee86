"""A start for which the system has no window left."""
import unittest

from tests.harness.program import OFF_LINE, ProgramCase, only
from tests.standin.standin import StandInDesktop


class AStartWithoutAWindow(unittest.TestCase):
    def test_says_so_and_ends(self):
        with StandInDesktop("start_without_window", start=False, registry=OFF_LINE) as d:
            d.rules = ["CreateDialogParamW fail 8"]
            d.start_program(wait_for_window=False)
            box = d.press_button_in_box("OK")
            self.assertEqual((box.text, box.icon, box.buttons), (
                "Quellix cannot show its window. Please close some programs and start Quellix again.", "error", ["OK"]))
            self.assertEqual(d.wait_ended(), 1)
            self.assertIsNone(d.icon())


class TheRestoreLabel(ProgramCase):
    def test_waits_for_its_user(self):
        d = self.d
        self.start(only("RecentDocument") | {"Startup": {"LoadStartup": "1", "Startup": "0"}, "Scheduling": {"Shutdown": "1"}})
        self.assertEqual(d.text("lblRestore"), "Restore :-")
        d.click("cmdSchedule")
        d.wait_text("lblRestore", "Restore : Shift + F10")
        d.click(("chkStartUp", 1))
        d.wait_text("lblRestore", "Restore :  Shift + F10")
        d.wait_status("Displaying StartUP")


if __name__ == "__main__":
    unittest.main(verbosity=2)
