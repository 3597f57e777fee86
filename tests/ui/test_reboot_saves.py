"""A reboot that the program asks for: what was chosen before it is stored, since a forced one tells nobody."""
import unittest

from tests.harness.program import only
from tests.harness.rigged import RiggedCase

FORCED_REBOOT = "6"


class WhatWasChosenBeforeAReboot(RiggedCase):
    def start_and_choose(self, settings: dict) -> None:
        self.rig("no-reboot")
        self.start(only("RecentDocument") | settings)
        self.d.set_checked(("chkWinsettings", 6))
        self.show_erase_panel()

    def check_stored_before_the_reboot(self) -> None:
        """Once the reboot is asked for, the program may be gone at any moment."""
        self.assertEqual(self.wait_call("ExitWindowsEx"), FORCED_REBOOT)
        self.d.terminate()
        self.assertEqual(self.d.registry_section("CleanSettings"),
                         only("RecentDocument", "OpenSavedDialoge")["CleanSettings"])

    def test_is_stored_when_the_button_reboots(self):
        self.start_and_choose({})
        self.d.click("CmdCleanReboot")
        self.check_stored_before_the_reboot()

    def test_is_stored_when_any_run_reboots(self):
        self.start_and_choose({"Scheduling": {"chkRbt": "1"}})
        self.d.click("cmdClean")
        self.check_stored_before_the_reboot()


if __name__ == "__main__":
    unittest.main(verbosity=2)
