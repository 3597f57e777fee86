"""A sample of the kills (kills.py), drawn by the date; QUELLIX_SEED=20261122 draws that of another day."""
import os
import time
import unittest

from tests.standin.kills import Kill, kill, kills, record_writes, sample, windows_98
from tests.standin.scenarios import SCENARIOS, Bench

SECONDS = 40
AT_LEAST = 4


class KillCase(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.bench = cls.enterClassContext(Bench(f"kills-{cls.__name__.lower()}"))
        cls.bench.set_up_profile()
        cls.cleans = {}

    def clean(self, scenario: str):
        if scenario not in self.cleans:
            self.cleans[scenario] = record_writes(self.bench, scenario)
        return self.cleans[scenario]

    def check(self, one: Kill) -> None:
        with self.subTest(str(one)):
            problems, hit = kill(self.bench, one, self.clean(one.scenario))
            self.assertIn("= None", hit, "the program was not ended")
            self.assertEqual(problems, [], hit)


class TheSample(KillCase):
    def test_of_kills_leaves_everything_old_or_new(self):
        seed = int(os.environ.get("QUELLIX_SEED") or time.strftime("%Y%m%d"))
        print(f"QUELLIX_SEED={seed}", flush=True)
        drawn = sample({scenario: self.clean(scenario) for scenario in SCENARIOS}, seed)
        end = time.monotonic() + SECONDS
        for number, one in enumerate(drawn):
            if number >= AT_LEAST and time.monotonic() > end:
                return
            print(one, flush=True)
            self.check(one)

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
                self.check(one)


if __name__ == "__main__":
    unittest.main(verbosity=2)
