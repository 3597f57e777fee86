"""What the samples of the loops have in common: one Windows for a class, its scenarios without faults, a day that draws."""
import os
import time
import unittest
from typing import Iterable, Iterator

from tests.standin.faults import record
from tests.standin.scenarios import Bench, Run


class ScenarioCase(unittest.TestCase):
    record = staticmethod(record)  # a scenario without faults, with the calls written down that are to fail

    @classmethod
    def setUpClass(cls):
        cls.begun = time.monotonic()
        cls.bench = cls.enterClassContext(Bench(f"{cls.__module__.rpartition('_')[2]}-{cls.__name__.lower()}"))
        cls.bench.set_up_profile()
        cls.cleans = {}

    def clean(self, scenario: str) -> Run:
        if scenario not in self.cleans:
            self.cleans[scenario] = self.record(self.bench, scenario)
        return self.cleans[scenario]


def seed() -> int:
    """Today's, or that of another day that QUELLIX_SEED names. It is printed, so that the draw can be repeated."""
    number = int(os.environ.get("QUELLIX_SEED") or time.strftime("%Y%m%d"))
    print(f"QUELLIX_SEED={number}", flush=True)
    return number


def until(end: float, drawn: Iterable, at_least: int) -> Iterator:
    """What was drawn, each told as its turn comes, until a time, and some of it however late it is."""
    for number, one in enumerate(drawn):
        if number >= at_least and time.monotonic() > end:
            return
        print(one, flush=True)
        yield one
