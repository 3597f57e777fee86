"""The shipped program on Windows 98."""
import unittest

from tests.standin import program_under
from tests.standin.standin import Refused


class Windows98(program_under.TheWholeProgram):
    windows = "98"

    def test_is_not_played_when_a_rule_cannot_take_hold(self):
        with self.assertRaisesRegex(Refused, "rule 1: RemoveDirectoryX fail 5: there is no such function"):
            self.start_under({}, "RemoveDirectoryX fail 5")
        self.assertIsNone(self.d.find_window("frmMain", visible=None))


if __name__ == "__main__":
    unittest.main(verbosity=2)
