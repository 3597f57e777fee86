"""Which processor a task of the tests gets."""
import os
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

from tools.wine_home import ROOT

ALL = sorted(os.sched_getaffinity(0))
TASK = """
import os, sys
from pathlib import Path
from tools.one_processor import settle
for _ in range(2):
    settle(Path(sys.argv[1]))
print(*os.sched_getaffinity(0), flush=True)
sys.stdin.read()
"""


class Settling(unittest.TestCase):
    def setUp(self):
        self.places = Path(self.enterContext(tempfile.TemporaryDirectory()))

    def task(self) -> tuple[subprocess.Popen, list[int]]:
        """One that stays until it is told to leave, and its processors."""
        task = subprocess.Popen([sys.executable, "-B", "-c", TASK, str(self.places)], cwd=ROOT, text=True,
                                stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        self.addCleanup(task.communicate)
        return task, [int(number) for number in task.stdout.readline().split()]

    def test_fills_each_processor_with_one_task_before_it_gets_a_second(self):
        for _ in range(2):
            self.assertEqual(sorted(self.task()[1] for _ in ALL), [[processor] for processor in ALL])

    def test_gives_the_place_of_a_task_that_has_ended_to_the_next(self):
        tasks = [self.task() for _ in range(2 * len(ALL))]
        for task, processors in (tasks[1], tasks[0]):
            task.communicate()
            self.assertEqual(self.task()[1], processors)

    def test_leaves_the_others_where_they_are(self):
        self.task()
        self.assertEqual(sorted(os.sched_getaffinity(0)), ALL)


if __name__ == "__main__":
    unittest.main()
