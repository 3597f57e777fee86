"""Closing the browsers before a run: which windows are asked, and windows that refuse."""
import unittest

from tests.harness import browsers
from tests.harness.driver import wait_for
from tests.harness.program import CLOSE_BUTTON, DONE, ProgramCase, only

CLIPBOARD = "Erasing Clipboard History..."
RAN = [CLIPBOARD, *DONE]
WM_TIMER, SCHEDULER = 0x0113, 2
MENU = "#32768"


def closing(**values: str) -> dict:
    return only("OpenSavedDialoge") | {"Scheduling": {"CHKieclose": "True"} | values}


class ClosingCase(ProgramCase):
    options = {"prepare": browsers.install}

    def setUp(self):
        self.other = 0
        self.start(self.settings)

    def tearDown(self):
        if self.other and self.d.ended(self.other) is None:
            self.d.terminate(self.other)

    def open(self, *windows, refusal: int = 0) -> None:
        """Opens windows, the last one on top, and puts the program above them."""
        self.other = browsers.open_windows(self.d, *windows, refusal=refusal)
        self.d.second_instance()
        self.wait_in_front()

    def titles(self) -> list[str]:
        return browsers.titles(self.d, self.other)

    def press(self) -> None:
        """A press of "Erase Only"; that it is not looked at yet does not matter."""
        self.show_erase_panel()
        self.d.click("cmdClean")

    def frames(self) -> int:
        return len(self.d.find_windows(browsers.FRAME, visible=None))


class ARunThatClosesBrowsers(ClosingCase):
    settings = closing()

    def test_closes_every_frame_and_the_first_window_that_is_titled_so(self):
        # The schedule is off: Netscape and the title with the maker's name belong to it.
        self.open((browsers.FRAME, "One"), (browsers.FRAME, "Two", "minimised"), (browsers.FRAME, "Three", "hidden"),
                  ("Form", "Below - Internet Explorer"), ("Form", "Above - Internet Explorer"), ("Form", "Netscape"),
                  ("Form", "internet explorer"))
        self.press()
        self.assertEqual(self.wait_run_over(), RAN)
        wait_for("closed windows", lambda: self.titles() == ["Below - Internet Explorer", "Netscape", "internet explorer"])
        self.assertIsNone(self.d.find_window(MENU))

    def test_waits_for_a_window_that_refuses_for_three_seconds_and_then_runs(self):
        d = self.d
        self.open((browsers.FRAME, "Unsaved"), refusal=3000)
        begin = d.probe.ask("input").now
        self.press()
        worst = d.longest_freeze(lambda: not self.frames())
        self.assertGreaterEqual(d.probe.ask("input").now - begin, 3000)
        self.assertLess(worst, 1000, "the window answered all the time")
        self.assertEqual(self.wait_run_over(), RAN)

    def test_asks_windows_that_come_up_while_it_closes_others(self):
        d = self.d
        self.open((browsers.FRAME, "Unsaved"), refusal=-1)
        self.press()
        late = browsers.start(d, (browsers.FRAME, "Late"))
        self.assertEqual(d.wait_ended(late), 0)
        self.assertEqual((self.frames(), self.log()), (1, []))
        d.terminate(self.other)
        self.assertEqual(self.wait_run_over(), RAN)

    def test_without_a_browser_begins_at_once(self):
        self.press()
        self.assertEqual(self.wait_run_over(), RAN)


class ARunThatLeavesBrowsersAlone(ClosingCase):
    settings = only("OpenSavedDialoge") | {"Scheduling": {"chkShEnable": "1"}}

    def test_closes_none(self):
        windows = [(browsers.FRAME, "One"), ("Form", "Microsoft Internet Explorer"), ("Form", "Netscape")]
        self.open(*windows)
        self.press()
        self.assertEqual(self.wait_run_over(), RAN)
        self.assertEqual(self.titles(), [title for _, title in windows])

    def test_closes_them_once_the_box_is_ticked(self):
        d = self.d
        self.open((browsers.FRAME, "One"), ("Form", "Notes"))
        d.click("cmdSchedule")
        d.wait_visible("CHKieclose")
        d.set_checked("CHKieclose")
        self.press()
        self.assertEqual(self.wait_run_over(), RAN)
        self.assertEqual(self.titles(), ["Notes"])


class ARunWithTheScheduleOn(ClosingCase):
    settings = closing(chkShEnable="1", ScheduleMinutes="1", ScheduleMin="1")
    windows = [(browsers.FRAME, "One"), ("Form", "1 - Microsoft Internet Explorer"), ("Form", "2 - Microsoft Internet Explorer"),
               ("Form", "3 - Internet Explorer"), ("Form", "4 - Netscape"), ("Form", "5 - Netscape"), ("Form", "6 - netscape")]
    # The button asks the first one of "Internet Explorer", the run the first ones of the longer name and of Netscape.
    left = ["1 - Microsoft Internet Explorer", "4 - Netscape", "6 - netscape"]

    def test_closes_the_first_window_of_each_title(self):
        self.open(*self.windows)
        self.press()
        self.assertEqual(self.wait_run_over(), RAN)
        self.check_closed()

    def test_does_the_same_when_the_schedule_starts_it(self):
        self.open(*self.windows)
        self.d.post(None, WM_TIMER, SCHEDULER)
        self.check_closed()
        wait_for("the end of the run", lambda: self.log() == RAN)

    def check_closed(self):
        wait_for("closed windows", lambda: self.titles() == self.left)
        # Wine's taskbar takes the command that minimises all windows for a click on its button.
        self.d.wait_window(MENU)
        self.d.click_at(20, 20)
        self.d.wait_no_window(MENU)


class AWindowThatNeverCloses(ClosingCase):
    settings = closing(ScheduleMinutes="1", ScheduleMin="1")

    def setUp(self):
        super().setUp()
        self.open((browsers.FRAME, "Unsaved"), refusal=-1)
        self.press()
        self.d.move_mouse_away()
        # It has begun when it is busy with it: the button's own run would clear the log.
        self.d.settle("cmdClean")

    def test_leaves_the_program_answering_and_takes_no_time_of_the_processor(self):
        d = self.d
        begin, before = d.probe.ask("input").now, d.cpu()
        worst = d.longest_freeze(lambda: d.probe.ask("input").now - begin > 1000)
        self.assertLess(worst, 500)
        begin, before = d.probe.ask("input").now, d.cpu()
        wait_for("four seconds", lambda: d.probe.ask("input").now - begin > 4000, every=0.5)
        share = (d.cpu() - before) / (d.probe.ask("input").now - begin)
        self.assertLess(share, 0.05)
        d.click("cmdHelp")
        d.wait_status("Displaying Displaying Help")
        self.assertEqual((self.frames(), self.log(), d.control("cmdStop").own_enabled), (1, [], False))

    def test_lets_no_second_run_begin(self):
        d = self.d
        d.click("cmdClean")
        d.click("CmdCleanReboot")
        d.post(None, WM_TIMER, SCHEDULER)
        d.settle("cmdClean")
        self.assertEqual((self.log(), d.control("cmdStop").own_enabled), ([], False))

    def test_lets_the_run_go_on_when_it_is_ended_at_last(self):
        self.d.terminate(self.other)
        self.assertEqual(self.wait_run_over(), RAN)

    def test_does_not_keep_the_program_from_its_end(self):
        d = self.d
        d.click("cmdDefault")
        d.set_checked(("chkWinsettings", 5))
        self.click_title_button(CLOSE_BUTTON)
        self.assertEqual(d.wait_ended(), 0)
        d.wait_no_icon()
        self.assertEqual(d.registry_section("CleanSettings"), only("OpenSavedDialoge", "RunHistory")["CleanSettings"])

    def test_does_not_keep_the_session_from_its_end(self):
        d = self.d
        leaving = d.start(r"C:\windows\system32\wineboot.exe", "-e")
        self.assertEqual(d.wait_ended(), 0)
        self.assertEqual(d.registry_value("Scheduling", "CHKieclose"), "True")
        d.terminate(self.other)  # the session waits for it
        d.wait_ended(leaving)


if __name__ == "__main__":
    unittest.main(verbosity=2)
