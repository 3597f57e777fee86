"""A sample of the kills (kills.py), drawn by the date; QUELLIX_SEED=20261122 draws that of another day."""
import time
import unittest

from tests.standin.kills import Kill, kill, kills, record_writes, sample, windows_98
from tests.standin.scenario_case import ScenarioCase, seed, until
from tests.standin.scenarios import SCENARIOS

SECONDS = 30
AT_LEAST = 4


class KillCase(ScenarioCase):
    record = staticmethod(record_writes)

    def check(self, one: Kill) -> bool:
        """Whether the program came to the call: a key that a run before has made is not made again."""
        problems, hit = kill(self.bench, one, self.clean(one.scenario))
        with self.subTest(str(one)):
            self.assertEqual(problems, [], hit)
        return "= None" in hit


class TheSample(KillCase):
    def test_of_kills_leaves_everything_old_or_new(self):
        drawn = sample({scenario: self.clean(scenario) for scenario in SCENARIOS}, seed())
        ended = [self.check(one) for one in until(time.monotonic() + SECONDS, drawn, AT_LEAST)]
        self.assertGreater(2 * sum(ended), len(ended), "most of the kills did not end the program")

    def test_has_kills_in_every_scenario_in_halves_too(self):
        for scenario in SCENARIOS:
            self.assertGreater(len(kills(self.clean(scenario))), 20, scenario)
        self.assertTrue([one for one in kills(self.clean("save")) if one.rule.startswith("WriteFile kill 2")])


class OnWindows98(KillCase):
    """It replaces a file in two steps, and a kill may come between them."""

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        windows_98(cls.bench)

    def test_a_kill_between_the_steps_loses_no_list(self):
        for scenario in ("save", "cookies"):
            moves = [one for one in kills(self.clean(scenario)) if one.rule.startswith("MoveFileA")]
            self.assertEqual(len(moves) % 2, 0, "one puts the old file aside, one the new one in its place")
            self.assertTrue(moves)
            for one in moves:
                # Once more where the program did not come to the call: on a busy machine a drop may not get through to it.
                self.assertTrue(self.check(one) or self.check(one), one)


if __name__ == "__main__":
    unittest.main(verbosity=2)
