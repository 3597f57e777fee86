"""Out of memory (memory.py): a sample of failing allocations, drawn by the date; QUELLIX_SEED draws that of another day."""
import os
import random
import time
import unittest

from tests.standin.faults import Fault, try_fault
from tests.standin.memory import RULE, failing_allocations, record_allocations
from tests.standin.scenarios import SCENARIOS, Bench

SECONDS = 40
AT_LEAST = 4


class OutOfMemory(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.bench = cls.enterClassContext(Bench("out-of-memory"))
        cls.bench.set_up_profile()

    def test_a_sample_of_failing_allocations_does_no_harm(self):
        seed = int(os.environ.get("QUELLIX_SEED") or time.strftime("%Y%m%d"))
        print(f"QUELLIX_SEED={seed}", flush=True)
        end = time.monotonic() + SECONDS
        cleans = {scenario: record_allocations(self.bench, scenario) for scenario in SCENARIOS}
        faults = [fault for clean in cleans.values() for fault in failing_allocations(clean)]
        random.Random(seed).shuffle(faults)
        for number, fault in enumerate(faults):
            if number >= AT_LEAST and time.monotonic() > end:
                return
            print(fault, flush=True)
            with self.subTest(str(fault)):
                run = try_fault(self.bench, fault, cleans[fault.scenario])
                self.assertEqual(run.problems, [], run.hit)

    def test_a_start_without_memory_says_so(self):
        ended = []
        for number in (10, 20, 30, 40):  # before there is a window, and while it is made
            run = try_fault(self.bench, Fault("start", f"{RULE} only {number}"), None)
            told = [box[:31] for box in self.bench.boxes_told]
            self.assertEqual((run.problems, told), ([], [] if self.bench.was_shown else ["Quellix cannot show its window."]), run.hit)
            ended += told
        self.assertGreaterEqual(len(ended), 2)

    def test_allocations_that_fail_while_the_settings_are_read_change_none(self):
        clean = record_allocations(self.bench, "start")
        for number in range(103, 123, 4):
            fault = Fault("start", f"{RULE} only {number}")
            with self.subTest(str(fault)):
                self.assertEqual(try_fault(self.bench, fault, clean).problems, [])

    def test_nor_does_it_when_there_is_no_memory_to_remember_them_either(self):
        clean = record_allocations(self.bench, "start")
        for number in range(245, 285, 10):
            fault = Fault("start", f"{RULE} from {number} to {number + 20}")
            with self.subTest(str(fault)):
                self.assertEqual(try_fault(self.bench, fault, clean).problems, [])


if __name__ == "__main__":
    unittest.main(verbosity=2)
