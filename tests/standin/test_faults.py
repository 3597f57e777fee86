"""A sample of the loop "every system call fails once" (faults.py), drawn by the date.

QUELLIX_SEED=20261122 draws that of another day, QUELLIX_FAULT='shred: DeleteFileW fail 5 only 2' is one run alone.
"""
import os
import unittest
from collections import defaultdict
from itertools import islice

from tests.standin.faults import Fault, draw, own_call, try_fault
from tests.standin.scenario_case import ScenarioCase, seed, until
from tests.standin.scenarios import LIST_FILE, PATIENCE, SCENARIOS

SECONDS = 45  # for the sample, the runs without faults before it included
AT_LEAST = 5
GWL_USERDATA = 0xFFFFFFEB


class FaultCase(ScenarioCase):
    def check(self, fault: Fault) -> None:
        clean = self.clean(fault.scenario)
        with self.subTest(str(fault)):
            run = try_fault(self.bench, fault, clean)
            self.assertEqual(run.problems, [], f"{fault}, which was about {run.hit or 'no call'}")


class TheSample(FaultCase):
    def test_of_calls_that_fail_does_no_harm(self):
        if "QUELLIX_FAULT" in os.environ:
            self.check(Fault(*os.environ["QUELLIX_FAULT"].split(": ", 1)))
            return
        drawn = draw(seed(), {scenario: self.clean(scenario) for scenario in SCENARIOS})
        for fault in until(self.begun + SECONDS, drawn, AT_LEAST):
            self.check(fault)

    def test_is_the_same_for_the_same_number(self):
        cleans = {scenario: self.clean(scenario) for scenario in SCENARIOS}
        self.assertEqual(list(islice(draw(7, cleans), 20)), list(islice(draw(7, cleans), 20)))
        self.assertNotEqual(list(islice(draw(7, cleans), 20)), list(islice(draw(8, cleans), 20)))


class WhatTheLoopFound(FaultCase):
    """Each of these once did harm."""

    def check_calls(self, scenario: str, name: str, first: int, last: int | None = None) -> None:
        """The calls of a function from one to another, counted from the scenario's own first one."""
        clean = self.clean(scenario)
        first, last = own_call(clean, name, first), own_call(clean, name, last or first)
        self.check(Fault(scenario, f"{name} fail 5 from {first} to {last}"))

    def test_a_setting_that_cannot_be_read_is_not_overwritten(self):
        for rule in ("RegQueryValueExW fail 5 with LocationbarHistory", "RegQueryValueExW fail 5 with txtLevel",
                     "RegOpenKeyExW fail 5 with Quellix"):
            self.check(Fault("start", rule))

    def test_a_setting_whose_box_does_not_take_its_text_is_not_overwritten(self):
        self.check(Fault("start", "SetWindowTextA fail 5 from 1"))

    def test_a_main_window_that_knows_nothing_of_its_dialog_is_not_shown(self):
        self.check(Fault("start", "SetWindowLongA fail 5 only 1"))
        self.assertEqual([box[:32] for box in self.bench.boxes_told], ["Quellix cannot show its window. "])

    def test_a_control_whose_window_knows_nothing_of_it_stays_the_systems_own(self):
        for number in range(2, 6):
            self.check(Fault("start", f"SetWindowLongA fail 5 only {number}"))

    def test_a_control_that_its_window_does_not_tell_of_leaves_the_message_to_the_system(self):
        self.bench.run("erase", "GetWindowLongA log")
        asked = defaultdict(list)
        for number, call in enumerate(self.bench.calls("GetWindowLongA"), 1):
            if call.arguments[1] == GWL_USERDATA:
                asked[call.arguments[0]].append(number)
        for numbers in asked.values():
            self.check(Fault("erase", f"GetWindowLongA fail 5 only {numbers[len(numbers) // 2]}"))

    def test_a_scheduled_list_that_could_not_be_read_keeps_what_was_on_it(self):
        self.check(Fault("save", "CreateFileW fail 5 only 1 with QUELLIX_Shred"))
        self.assertEqual(len(self.bench.state().files[LIST_FILE].split()), 3, "it was read when there was something to save")
        self.check(Fault("save", "CreateFileW fail 5 with QUELLIX_Shred"))
        self.check(Fault("save", "GetModuleFileNameW fail 5 only 1"))

    def test_a_name_that_cannot_be_told_keeps_no_file_from_its_turn(self):
        for number in range(1, 12):
            self.check_calls("shred", "WideCharToMultiByte", number)

    def test_a_keep_list_whose_place_is_not_told_is_not_overwritten(self):
        self.check_calls("cookies", "GetModuleFileNameW", 1)

    def test_a_keep_list_that_was_not_filled_is_not_overwritten(self):
        self.check_calls("cookies", "PostMessageA", 1)

    def test_a_text_that_cannot_be_converted_is_not_taken_for_an_empty_one(self):
        self.check_calls("cookies", "MultiByteToWideChar", 1, 1000)
        self.check_calls("cookies", "WideCharToMultiByte", 1, 1000)
        self.check(Fault("start", "MultiByteToWideChar fail 5 from 1"))


class TheLoop(FaultCase):
    """It finds what it looks for: runs under rules that do harm by themselves."""

    def problems(self, scenario: str, *rules: str) -> str:
        clean = self.clean(scenario)
        return " ".join(self.bench.run(scenario, *rules, clean=clean).problems)

    def test_finds_a_file_that_is_said_to_be_shredded(self):
        # What deletes an open file does nothing.
        self.assertRegex(self.problems("shred", "NtSetInformationFile answer 0"), "3 files shredded.*' and only 0 are")

    def test_finds_a_setting_that_was_overwritten(self):
        self.assertRegex(self.problems("start", "GetWindowTextA fail 5"), "txtLevel'\\) is neither old nor new: '' instead of '1'")

    def test_finds_a_crash(self):
        self.assertRegex(self.problems("start", "GetClassLongA crash only 1"), "crashed with 0xc0000005")

    def test_finds_a_program_that_does_not_end(self):
        self.bench.patience = 6
        self.addCleanup(setattr, self.bench, "patience", PATIENCE)
        self.assertRegex(self.problems("start", "RegSetValueExA hang only 3"), "does not end.*did not answer for")


if __name__ == "__main__":
    unittest.main(verbosity=2)
