"""What keeps out of its user's way: a schedule while something is asked, messages while the program is out of sight."""
import shutil
import unittest

from tests.harness import browsers
from tests.harness.driver import WM_CLOSE, wait_for
from tests.harness.program import DONE, only
from tests.harness.shredder import ShredderCase
from tests.ui.test_schedule import CLIPBOARD, RAN, SCHEDULER, WM_TIMER, ScheduleCase, schedule

EVERY_MINUTE = {"ScheduleMinutes": "1", "ScheduleMin": "1"}


class ADueSchedule(ScheduleCase):
    def setUp(self):
        self.start(schedule(**EVERY_MINUTE))

    def check_waits_for(self, end_of_it) -> None:
        """Nothing starts until what is open is closed; then the next minute starts what was due."""
        for _ in range(3):
            self.d.post(None, WM_TIMER, SCHEDULER)
        self.d.response_ms()
        self.assertEqual((self.running(), self.log()), (False, []))
        end_of_it()
        wait_for("the window to be usable", lambda: self.d.main.enabled)
        self.check_no_run()
        self.tick()
        self.check_run()

    def test_starts_nothing_over_a_question(self):
        self.d.right_click_icon()
        self.d.pick("Exit")
        self.d.wait_box("Confirmation")
        self.check_waits_for(lambda: self.d.press_button_in_box("No"))

    def test_starts_nothing_over_the_dialog_that_asks_for_files(self):
        self.d.click("cmdSecureDelk")
        self.d.click("cmdFileShred")
        self.d.file_dialog()
        self.check_waits_for(self.d.cancel_file_dialog)

    def test_starts_nothing_over_a_window_that_has_to_be_closed_first(self):
        self.d.click("cmdSecureDelk")
        self.d.click("cmdAddFolder")
        self.d.wait_keyboard_in(self.d.wait_window("#32770", "Quellix-Add Folder"))
        self.check_waits_for(lambda: self.d.key("Escape"))


class AProgramThatEnds(ShredderCase):
    def test_starts_no_run_any_more(self):
        d = self.d
        trace = d.home.temp / "trace.tmp"
        trace.write_text("x")
        self.start(only("WinTempFileFolder") | {"Scheduling": {"chkShEnable": "1"} | EVERY_MINUTE})
        self.show_shredder()
        self.fill("lstFiles", self.files("a.txt"))  # to save the list lets window events run, some time after the last ones
        wait_for("the saved list", self.list_file.exists)
        browsers.let_polls_pass(d)
        window = d.main.hwnd
        with d.halted():
            d.post(window, WM_CLOSE)
            d.post(window, WM_TIMER, SCHEDULER)
        self.assertEqual(d.wait_ended(), 0)
        self.assertTrue(trace.exists())


class ARunOutOfSight(ShredderCase):
    def setUp(self):
        self.end()
        self.list_file.unlink(missing_ok=True)
        shutil.rmtree(self.work, ignore_errors=True)
        self.work.mkdir()
        self.start(only("OpenSavedDialoge") | {"Scheduling": {"chkShEnable": "1", "chkOptions": "1"} | EVERY_MINUTE,
                                              "Shredder": {"txtLevel": "99999"}})

    def fill_list_of_a_level_that_is_none(self) -> None:
        self.show_shredder()
        self.fill("lstFiles", self.files("a.txt"))

    def check_says_nothing(self) -> None:
        d = self.d
        self.minimise()
        d.post(None, WM_TIMER, SCHEDULER)
        wait_for("the end of the run, which a message would hold up", lambda: self.log() == [CLIPBOARD, *DONE])
        self.assertEqual((d.boxes(), d.main.visible), ([], False))

    def test_says_nothing_of_an_empty_list(self):
        with self.on_line():
            self.check_says_nothing()

    def test_reports_no_error_and_does_not_ask_whether_the_machine_is_on_line(self):
        self.fill_list_of_a_level_that_is_none()
        with self.on_line():
            self.check_says_nothing()
            self.assertEqual((self.d.home.c / "requests.txt").read_text(), "")

    def test_reports_the_error_again_once_the_program_is_on_show(self):
        self.fill_list_of_a_level_that_is_none()
        with self.on_line():
            self.d.post(None, WM_TIMER, SCHEDULER)
            box = self.d.press_button_in_box("OK")
            self.assertEqual((box.text, box.owner), ("modShred,DeleteFileShred6Overflow", self.d.main.hwnd))
            wait_for("the end of the run", lambda: self.log()[-2:] == RAN[-2:])


if __name__ == "__main__":
    unittest.main(verbosity=2)
