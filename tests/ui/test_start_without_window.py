"""A start for which the system has no window left."""
import unittest

from tests.harness.program import only
from tests.harness.rigged import RiggedCase


class AStartWithoutAWindow(RiggedCase):
    def test_says_so_and_ends(self):
        d = self.d
        self.rig("no-window")
        d.start_program(wait_for_window=False)
        box = d.press_button_in_box("OK")
        self.assertEqual((box.text, box.icon, box.buttons),
                         ("Quellix cannot show its window. Please close some programs and start Quellix again.", "error", ["OK"]))
        self.assertEqual(d.wait_ended(), 1)
        self.assertIsNone(d.icon())


class TheRestoreLabel(RiggedCase):
    def test_waits_for_its_user(self):
        d = self.d
        self.rig()
        self.start(only("RecentDocument") | {"Startup": {"LoadStartup": "1", "Startup": "0"}, "Scheduling": {"Shutdown": "1"}})
        self.assertEqual(d.text("lblRestore"), "Restore :-")
        d.click("cmdSchedule")
        d.wait_text("lblRestore", "Restore : Shift + F10")
        d.click(("chkStartUp", 1))
        d.wait_text("lblRestore", "Restore :  Shift + F10")
        d.wait_status("Displaying StartUP")


if __name__ == "__main__":
    unittest.main(verbosity=2)
