"""The keyboard always has an owner: after a button that disabled itself, after Ctrl and a number, after another program."""
import unittest

from tests.harness import browsers
from tests.harness.driver import View, wait_for
from tests.harness.program import STOPPED, ProgramCase, only


class KeyboardCase(ProgramCase):
    options = {"prepare": browsers.install}

    def setUp(self):
        self.start(only("OpenSavedDialoge", "RecentDocument"))

    def owner(self) -> View | None:
        """The control that has the keyboard; None where no control of the program has it."""
        focus = self.d.focus()
        if not focus.hwnd or focus.hwnd == self.d.main.hwnd:
            return None
        control = self.d.control(View(hwnd=focus.hwnd))
        return control if control.visible and control.enabled else None

    def wait_owner(self) -> View:
        return wait_for("a control that has the keyboard", self.owner)

    def check_keys_work(self) -> None:
        before = self.wait_owner().hwnd
        self.d.key("Tab")
        wait_for("the keyboard to move on", lambda: (lambda now: now and now.hwnd != before)(self.owner()))


class TheKeyboard(KeyboardCase):
    def test_goes_on_from_stop_which_is_disabled_when_the_run_is_over(self):
        self.press_erase_only()
        self.d.wait_enabled("cmdStop")
        self.d.click("cmdStop")
        self.d.wait_enabled("cmdStop", False)
        self.check_keys_work()
        self.assertEqual(self.log()[-2:], STOPPED)

    def test_goes_on_from_stop_when_the_run_ended_while_another_program_was_in_front(self):
        d = self.d
        self.press_erase_only()
        d.wait_enabled("cmdStop")
        for _ in range(3):
            if d.focus().hwnd == d.handle("cmdStop"):
                break
            d.key("Tab")
        d.wait_focus("cmdStop")
        other = browsers.open_windows(d, ("Form", "Other work"))
        self.addCleanup(d.terminate, other)
        wait_for("the other program in front", lambda: browsers.in_front(d, process=other))
        self.assertTrue(d.control("cmdStop").own_enabled, "the run is over too early for this test")
        self.wait_run_over()
        d.second_instance()
        self.wait_in_front()
        self.check_keys_work()


class EnterOnANavigationButton(KeyboardCase):
    def test_presses_it_also_when_the_panel_on_show_came_by_ctrl_and_its_number(self):
        d = self.d
        d.wait_focus("cmdDefault")
        d.key("ctrl+4")
        wait_for("the fourth panel", lambda: self.panel_on_show() == ["fraScheduleManager"])
        d.wait_focus("cmdDefault")
        d.key("Return")
        wait_for("the first panel", lambda: self.panel_on_show() == ["fraMain"], 5)


if __name__ == "__main__":
    unittest.main(verbosity=2)
