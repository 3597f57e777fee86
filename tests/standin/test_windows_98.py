"""The shipped program on Windows 98."""
import unittest

from tests.harness.program import DONE, only
from tests.standin import program_under
from tests.standin.standin import Refused


RUN_LIST = r"Software\Microsoft\Windows\CurrentVersion\Explorer\RunMRU"


class Windows98(program_under.TheWholeProgram):
    windows = "98"

    def test_takes_the_subkeys_of_a_list_along_without_the_shells_help(self):
        d = self.d
        d.reg_set("HKCU", RUN_LIST + r"\below", "a", "secret")
        self.start_under(only("RunHistory"), "SHDeleteKeyA missing", "RegDeleteKeyA log")
        self.press_erase_only()
        self.assertEqual(self.wait_run_over()[-2:], DONE)
        self.assertIsNone(d.reg_list("HKCU", RUN_LIST))
        deleted = [(call.texts, call.result, call.rule) for call in self.calls("RegDeleteKeyA")]
        self.assertEqual(deleted, [([RUN_LIST], 0, "keys-with-subkeys")])

    def test_is_not_played_when_a_rule_cannot_take_hold(self):
        with self.assertRaisesRegex(Refused, "rule 1: RemoveDirectoryX fail 5: there is no such function"):
            self.start_under({}, "RemoveDirectoryX fail 5")
        self.assertIsNone(self.d.find_window("frmMain", visible=None))


if __name__ == "__main__":
    unittest.main(verbosity=2)
