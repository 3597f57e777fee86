"""The hidden window that a second start finds: a request to close it is one to the program."""
import unittest

from tests.harness.driver import WM_CLOSE
from tests.harness.program import ProgramCase, only


class ARequestToCloseTheHiddenWindow(ProgramCase):
    def test_ends_the_program_as_its_title_bar_does_and_stores_the_settings(self):
        d = self.d
        self.start(only("OpenSavedDialoge"))
        d.set_checked(("chkWinsettings", 5))
        d.post(d.find_window("QuellixMain", visible=None), WM_CLOSE)
        self.assertEqual(d.wait_ended(), 0)
        d.wait_no_icon()
        self.assertEqual(d.registry_section("CleanSettings"), only("OpenSavedDialoge", "RunHistory")["CleanSettings"])


if __name__ == "__main__":
    unittest.main(verbosity=2)
