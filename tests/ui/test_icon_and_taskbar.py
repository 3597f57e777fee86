"""The notification icon and the taskbar: what it is given, a taskbar that does not take it at once, a drag before a click."""
import unittest

from tests.harness.program import CAPTION, only
from tests.harness.rigged import RiggedCase

NIM_ADD, MESSAGE_ICON_TIP, MOUSE_MOVE, LET_THROUGH = 0, 7, 512, 1
LR_SHARED = 0x8000


class TheIconAndTheTaskbar(RiggedCase):
    def start_rigged(self, *words: str) -> None:
        self.rig(*words)
        self.start(only("RecentDocument"))

    def test_the_record_is_the_one_that_every_taskbar_knows(self):
        self.start_rigged()
        self.assertEqual(self.calls("Shell_NotifyIconA"),
                         [f"{NIM_ADD} size 88 id 1 flags {MESSAGE_ICON_TIP} callback {MOUSE_MOVE} '{CAPTION}'"])

    def test_an_icon_that_the_taskbar_did_not_take_is_added_again(self):
        self.start_rigged("no-icon", "2")  # and waits for the icon
        adds = [call.split()[0] for call in self.calls("Shell_NotifyIconA") if call.split()[0] == str(NIM_ADD)]
        self.assertEqual(len(adds), 3)

    def test_a_new_taskbar_reaches_a_program_of_an_administrator(self):
        self.start_rigged()
        self.assertEqual(self.calls("ChangeWindowMessageFilter"), [f"TaskbarCreated {LET_THROUGH}"])

    def test_the_small_icon_is_asked_for_by_itself(self):
        # A shared one comes in the size that it was first asked for, on Windows 9x.
        self.start_rigged()
        icons = [call.split()[1:] for call in self.calls("LoadImageA")]
        self.assertIn(["16", "16"], [icon[:2] for icon in icons])
        self.assertEqual([icon for icon in icons if int(icon[2], 16) & LR_SHARED], [])

    def test_a_click_is_not_lost_after_a_drag_that_ended_elsewhere(self):
        self.start_rigged("left-down")
        self.d.hide_window()
        self.d.wait_no_window("frmMain")
        self.d.click_icon()
        self.wait_in_front()
        self.d.right_click_icon()
        self.d.pick("Show")


if __name__ == "__main__":
    unittest.main(verbosity=2)
