"""Out of memory (memory.py): a sample of failing allocations, drawn by the date; QUELLIX_SEED draws that of another day."""
import random
import time
import unittest

from tests.standin.faults import Fault, try_fault
from tests.standin.memory import RULE, failing_allocations, record_allocations
from tests.standin.scenario_case import ScenarioCase, seed, until
from tests.standin.scenarios import SCENARIOS

SECONDS = 25
AT_LEAST = 4


class OutOfMemory(ScenarioCase):
    record = staticmethod(record_allocations)

    def check(self, fault: Fault) -> None:
        with self.subTest(str(fault)):
            run = try_fault(self.bench, fault, self.clean(fault.scenario))
            self.assertEqual(run.problems, [], run.hit)

    def test_a_sample_of_failing_allocations_does_no_harm(self):
        number, end = seed(), time.monotonic() + SECONDS
        faults = [fault for scenario in SCENARIOS for fault in failing_allocations(self.clean(scenario))]
        random.Random(number).shuffle(faults)
        for fault in until(end, faults, AT_LEAST):
            self.check(fault)

    def test_a_start_without_memory_says_so(self):
        ended = []
        for number in (10, 20, 30, 40):  # before there is a window, and while it is made
            run = try_fault(self.bench, Fault("start", f"{RULE} only {number}"), None)
            told = [box[:31] for box in self.bench.boxes_told]
            self.assertEqual((run.problems, told), ([], [] if self.bench.was_shown else ["Quellix cannot show its window."]), run.hit)
            ended += told
        self.assertGreaterEqual(len(ended), 2)

    def test_allocations_that_fail_while_the_settings_are_read_change_none(self):
        for number in range(103, 123, 4):
            self.check(Fault("start", f"{RULE} only {number}"))

    def test_nor_does_it_when_there_is_no_memory_to_remember_them_either(self):
        for number in range(245, 285, 10):
            self.check(Fault("start", f"{RULE} from {number} to {number + 20}"))


if __name__ == "__main__":
    unittest.main(verbosity=2)
