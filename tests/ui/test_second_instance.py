"""A second start: it ends without a word and brings the running program to the front, whatever state that is in."""
import unittest

from tests.harness.driver import wait_for
from tests.harness.program import ProgramCase, only


class ASecondStart(ProgramCase):
    def setUp(self):
        self.start_unless_untouched(only("OpenSavedDialoge"))

    def put_another_program_in_front(self):
        d = self.d
        other = d.start(r"C:\windows\system32\notepad.exe")
        self.addCleanup(d.terminate, other)
        return wait_for("the other program in front", lambda: next(
            (w for w in [d.foreground()] if w and w.pid == other), None))

    def check_second(self):
        """The second ends, shows nothing, and the first goes on."""
        d = self.d
        boxes = [box.hwnd for box in d.boxes()]
        self.assertEqual(d.second_instance(), 0)
        self.assertEqual([box.hwnd for box in d.boxes()], boxes)
        self.assertEqual([p.pid for p in d.processes("Quellix.exe")], [d.pid])

    def test_ends_while_the_first_is_on_show(self):
        self.check_second()
        self.wait_in_front()

    def test_ends_while_the_first_is_behind_another_program_and_brings_it_forward(self):
        other = self.put_another_program_in_front()
        self.check_second()
        self.wait_in_front()
        self.assertLess(self.d.main.z, next(w.z for w in self.d.windows() if w.hwnd == other.hwnd))

    def test_brings_back_a_minimised_one(self):
        self.minimise()
        self.check_second()
        self.wait_in_front()

    def test_brings_back_a_hidden_one(self):
        self.d.hide_window()
        self.d.wait_no_window("frmMain")
        self.check_second()
        self.wait_in_front()

    def test_brings_the_question_of_the_first_to_the_front(self):
        d = self.d
        d.right_click_icon()
        d.pick("Exit")
        question = d.wait_box("Confirmation").hwnd
        self.put_another_program_in_front()
        self.check_second()
        wait_for("the question in front", lambda: d.foreground().hwnd == question)
        self.assertEqual([box.hwnd for box in d.boxes()], [question])
        self.assertTrue(d.main.visible)
        d.press_button_in_box("No")
        self.wait_in_front()

    def test_brings_back_a_hidden_one_with_its_question(self):
        d = self.d
        self.minimise()
        d.right_click_icon()
        d.pick("Exit")
        question = d.wait_box("Confirmation").hwnd
        self.check_second()
        wait_for("the main window on show", lambda: d.main.visible and not d.main.iconic)
        wait_for("the question in front", lambda: d.foreground().hwnd == question)
        d.press_button_in_box("No")
        self.wait_in_front()

    def test_ends_in_the_middle_of_a_run_and_leaves_the_run_alone(self):
        with self.d.time_held():
            self.press_erase_only()
            self.wait_log("Erasing Clipboard History...")
            self.check_second()
        self.assertEqual(self.wait_run_over()[-1], "Quellix has successfully erased selected item(s).")

    def test_stores_nothing(self):
        d = self.d
        d.reg_set("HKCU", rf"Software\Quellix\{d.app_title}\Name", "Titile", "left alone")
        self.check_second()
        self.assertEqual(d.registry_value("Name", "Titile"), "left alone")

    def test_runs_when_the_first_has_ended(self):
        self.end()
        self.restart()
        self.wait_in_front()


if __name__ == "__main__":
    unittest.main(verbosity=2)
