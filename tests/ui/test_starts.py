"""Starts that meet something else than a running program that answers: each other, one that hangs, a stranger's window."""
import unittest

from tests.harness import browsers
from tests.harness.driver import wait_for
from tests.harness.program import ProgramCase, only
from tests.harness.rigged import RiggedCase

PROGRAM = r"C:\Quellix\Quellix.exe"


class TwoStartsAtOneMoment(RiggedCase):
    def test_give_one_program(self):
        d = self.d
        self.rig("slow-instance", "3000")
        both = [d.start(PROGRAM, library=d.loaded), d.start(PROGRAM)]
        ended = wait_for("the end of one of them", lambda: [pid for pid in both if d.ended(pid) is not None])
        self.assertEqual([d.ended(pid) for pid in ended], [0])
        (d.pid,) = set(both) - set(ended)
        d.wait_window("frmMain")
        self.assertIsNone(d.ended(d.pid))
        self.assertEqual([p.pid for p in d.processes("Quellix.exe")], [d.pid])


class AStartBesideAProgram(RiggedCase):
    def check_second(self, *brought_forward: str) -> None:
        self.rig()
        self.assertEqual(self.d.wait_ended(self.d.start(PROGRAM, library=self.d.loaded), 20), 0)
        self.assertEqual(self.calls("OpenIcon"), list(brought_forward))
        self.assertEqual([p.pid for p in self.d.processes("Quellix.exe")], [self.d.pid])

    def test_that_hangs_ends_within_seconds_without_a_call_that_waits_for_it(self):
        self.rig()
        self.start(only("OpenSavedDialoge"))
        with self.d.halted():
            self.check_second()
        self.check_second("frmMain")


class AStart(ProgramCase):
    options = {"prepare": browsers.install}

    def test_is_not_kept_out_by_a_strangers_window_and_finds_the_program_beside_it(self):
        d = self.d
        self.end()
        stranger = browsers.open_windows(d, ("QuellixMain", "Quellix"))
        self.addCleanup(d.terminate, stranger)
        d.start_program()
        d.wait_icon()
        self.assertEqual(d.second_instance(), 0)


if __name__ == "__main__":
    unittest.main(verbosity=2)
