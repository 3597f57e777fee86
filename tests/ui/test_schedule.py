"""The schedule: its controls, its modes, and what a tick meets.

A tick is a minute. But for one test they are sent, and the program's own timer, which would add to them, is stopped.
"""
import datetime
import shutil
import time
import unittest

from tests.harness.driver import BUILT, PROGRAMS, WM_CLOSE, compile_windows_program, wait_for
from tests.harness.program import DONE, ProgramCase, only

WM_TIMER, SCHEDULER, BM_CLICK = 0x0113, 2, 0x00F5
CLIPBOARD = "Erasing Clipboard History..."
RAN = [CLIPBOARD, *DONE]
NOTHING_SELECTED = "No item(s) has been selected"
LOCALE = r"Control Panel\International"
MODES = [("optSchedule", 0), ("optSchedule", 1), ("optSchedule", 2)]


def schedule(**values: str) -> dict:
    return only("OpenSavedDialoge") | {"Scheduling": {"chkShEnable": "1"} | values}


def install_no_ticks(home) -> None:
    library = compile_windows_program(PROGRAMS / "no_ticks.cpp", "-shared", output=BUILT / "no_ticks.dll")
    shutil.copy2(library, home.c / "no_ticks.dll")


class ScheduleCase(ProgramCase):
    options = {"prepare": install_no_ticks}

    def start(self, *how, **more) -> None:
        super().start(*how, **more)
        self.d.load_into_program(r"C:\no_ticks.dll")
        self.settle()

    def show_panel(self) -> None:
        self.d.click("cmdSchedule")
        self.d.wait_visible("chkShEnable")

    def choose_mode(self, index: int) -> None:
        self.d.click(MODES[index])
        self.d.wait_checked(MODES[index])

    def tick(self, count: int = 1) -> None:
        """So many ticks. None comes while the program is busy with the one before, unless that has started a run or a message."""
        self.d.send_each(WM_TIMER, SCHEDULER, count, "cmdStop")

    def settle(self) -> None:
        """The window's thread has worked off its messages."""
        self.d.settle("Picture1")

    def running(self) -> bool:
        return self.d.control("cmdStop").own_enabled

    def check_no_run(self) -> None:
        self.assertEqual((self.running(), self.log(), self.d.boxes()), (False, [], []))

    def check_run(self) -> None:
        """There was no run before, and there is one now, or has been one."""
        self.assertEqual(self.wait_run_over(), RAN)

    def clear_log(self) -> None:
        self.d.click("cmdCleenFrame")
        wait_for("an empty log", lambda: self.log() == [])


class TheControls(ScheduleCase):
    def enabled(self) -> dict:
        return {name: self.d.control(name).own_enabled for name in ("dtpTime", "txtMinutes", "VSUpDown")}

    def stored_modes(self) -> list[str | None]:
        return [self.d.registry_value("Scheduling", key) for key in ("ScheduleDay", "ScheduleHour", "ScheduleMinutes")]

    def test_follow_the_mode_and_the_minutes_box_stays_as_it_is_when_minutes_are_chosen(self):
        self.start(schedule())
        self.show_panel()
        self.assertEqual(self.enabled(), {"dtpTime": True, "txtMinutes": True, "VSUpDown": True})
        self.choose_mode(2)
        self.assertEqual(self.enabled(), {"dtpTime": False, "txtMinutes": True, "VSUpDown": True})
        self.choose_mode(1)
        self.assertEqual(self.enabled(), {"dtpTime": False, "txtMinutes": False, "VSUpDown": False})
        self.choose_mode(0)
        self.assertEqual(self.enabled(), {"dtpTime": True, "txtMinutes": False, "VSUpDown": False})
        self.choose_mode(2)
        self.assertEqual(self.enabled(), {"dtpTime": False, "txtMinutes": False, "VSUpDown": True})
        self.d.settle("fraScheduleManager")
        self.d.screenshot(BUILT / "panels" / "schedule.png", self.d.main)

    def test_of_the_number_are_the_arrows_of_the_spin_button(self):
        d = self.d
        self.start(schedule(ScheduleMin="10", ScheduleMinutes="1"))
        self.show_panel()
        left, top, right, bottom = d.control("VSUpDown").rect
        d.click_at((left + right) // 2, (3 * top + bottom) // 4)
        d.wait_text("txtMinutes", "11")
        d.click_at((left + right) // 2, (top + 3 * bottom) // 4)
        d.wait_text("txtMinutes", "10")

    def test_of_the_modes_follow_the_box_and_those_of_the_run_do_not(self):
        self.start(schedule(chkShEnable="0"))
        self.show_panel()
        for on in (False, True, False):
            self.d.set_checked("chkShEnable", on)
            wait_for("the modes", lambda on=on: [self.d.control(mode).own_enabled for mode in MODES] == [on] * 3)
            self.assertTrue(self.d.control("chkRbt").own_enabled and self.d.control("CHKieclose").own_enabled)

    def test_are_stored_with_the_pickers_time_in_the_place_of_two_modes(self):
        for mode, stored in ((0, ["1", "21", "34"]), (1, ["0", "21", "34"]), (2, ["0", "21", "34"])):
            self.start(schedule(ScheduleHour="21", ScheduleMinutes="34"))
            self.show_panel()
            self.choose_mode(mode)
            self.end()
            self.assertEqual(self.stored_modes(), stored)

    def test_are_stored_as_they_are_on_or_off(self):
        self.start(schedule(chkShEnable="0"))
        self.show_panel()
        for box in ("chkShEnable", "chkRbt", "CHKieclose"):
            self.d.set_checked(box)
        self.end()
        self.assertEqual([self.d.registry_value("Scheduling", key) for key in ("chkShEnable", "chkRbt", "CHKieclose")],
                         ["1", "1", "True"])


class ATick(ScheduleCase):
    def test_of_the_sixtieth_minute_starts_the_hourly_run_and_of_no_earlier_one(self):
        self.start(schedule(ScheduleHour="1"))
        self.tick(59)
        self.check_no_run()
        self.tick()
        self.check_run()
        self.clear_log()
        self.tick(59)
        self.check_no_run()
        self.tick()
        self.check_run()

    def test_of_every_fifth_minute_starts_a_run(self):
        self.start(schedule(ScheduleMinutes="1", ScheduleMin="5"))
        for _ in range(2):
            self.tick(4)
            self.check_no_run()
            self.tick()
            self.check_run()
            self.clear_log()

    def test_starts_a_run_each_time_when_the_minutes_are_zero_or_no_number(self):
        for text in ("0", "soon", "-5"):
            self.start(schedule())
            self.show_panel()
            self.d.replace_text("txtMinutes", text)
            self.choose_mode(2)
            for _ in range(2):
                self.tick()
                self.check_run()
                self.clear_log()
                self.show_panel()

    def test_of_every_tenth_minute_starts_a_run_when_the_stored_minutes_are_zero_or_no_number(self):
        for text in ("", "abc", "0"):
            with self.subTest(text):
                self.start(schedule(ScheduleMinutes="1", ScheduleMin=text))
                self.tick(9)
                self.check_no_run()
                self.tick()
                self.check_run()

    def test_starts_a_run_each_time_when_the_stored_minutes_are_below_zero(self):
        self.start(schedule(ScheduleMinutes="1", ScheduleMin="-5"))
        for _ in range(2):
            self.tick()
            self.check_run()
            self.clear_log()

    def test_starts_nothing_when_no_count_reaches_the_stored_minutes(self):
        self.start(schedule(ScheduleMinutes="1", ScheduleMin="99999999999"))
        self.tick(200)
        self.check_no_run()

    def test_reads_the_minutes_anew(self):
        d = self.d
        self.start(schedule())
        self.show_panel()
        self.choose_mode(2)
        self.tick(12)
        self.check_no_run()
        d.replace_text("txtMinutes", "12 minutes")
        self.tick()
        self.check_run()

    def test_of_the_pickers_minute_starts_the_daily_run(self):
        now = self.a_minute_with_some_seconds_left()
        self.start(schedule(ScheduleDay="1", ScheduleHour=str(now.hour), ScheduleMinutes=str(now.minute)))
        self.tick()
        self.check_run()

    def test_of_another_minute_or_the_other_half_of_the_day_starts_no_daily_run(self):
        now = self.a_minute_with_some_seconds_left()
        for other in (now - datetime.timedelta(minutes=1), now + datetime.timedelta(hours=12)):
            self.start(schedule(ScheduleDay="1", ScheduleHour=str(other.hour), ScheduleMinutes=str(other.minute)))
            self.tick(3)
            self.check_no_run()

    def start_half_a_day_off(self, am: str, pm: str) -> None:
        """Starts with the picker twelve hours from now, under a locale that marks the halves of the day so."""
        d = self.d
        for name, text in (("s1159", am), ("s2359", pm)):
            before = d.reg("HKCU", LOCALE, name)
            self.addCleanup(d.reg_set, "HKCU", LOCALE, name, before.text if before else {"s1159": "AM", "s2359": "PM"}[name])
            d.reg_set("HKCU", LOCALE, name, text)
        now = self.a_minute_with_some_seconds_left()
        self.start(schedule(ScheduleDay="1", ScheduleHour=str((now.hour + 12) % 24), ScheduleMinutes=str(now.minute)))

    def test_of_the_other_half_of_the_day_starts_the_daily_run_too_where_both_halves_read_alike(self):
        self.start_half_a_day_off("", "")
        self.tick()
        self.check_run()

    def test_of_the_other_half_of_the_day_starts_no_daily_run_where_the_halves_have_marks_of_their_own(self):
        self.start_half_a_day_off("vorm.", "nachm.")
        self.tick(3)
        self.check_no_run()
        now = self.a_minute_with_some_seconds_left()
        self.start(schedule(ScheduleDay="1", ScheduleHour=str(now.hour), ScheduleMinutes=str(now.minute)))
        self.tick()
        self.check_run()

    def a_minute_with_some_seconds_left(self) -> datetime.datetime:
        return wait_for("the first half of a minute", lambda: (lambda n: n if n.second < 40 else None)(datetime.datetime.now()))

    def test_counts_from_the_start_also_for_a_mode_that_is_chosen_later(self):
        noon_or_midnight = "0" if datetime.datetime.now().hour == 12 else "12"
        self.start(schedule(ScheduleDay="1", ScheduleHour=noon_or_midnight))
        self.tick(70)
        self.check_no_run()
        self.show_panel()
        self.choose_mode(1)
        self.tick()
        self.check_run()

    def test_does_not_count_while_the_schedule_is_off(self):
        d = self.d
        self.start(schedule(ScheduleMinutes="1", ScheduleMin="5"))
        self.show_panel()
        self.tick(3)
        d.set_checked("chkShEnable", False)
        self.tick(20)
        d.set_checked("chkShEnable", True)
        self.tick()
        self.check_no_run()
        self.tick()
        self.check_run()

    def test_starts_nothing_without_a_mode(self):
        self.start(schedule())
        self.tick(200)
        self.check_no_run()

    def test_looks_at_the_schedule_only_after_what_the_user_has_done_before_it(self):
        d = self.d
        self.start(schedule(ScheduleMinutes="1", ScheduleMin="1"))
        self.show_panel()
        window, box = d.main.hwnd, d.control("chkShEnable").hwnd
        with d.halted():
            d.post(window, WM_TIMER, SCHEDULER)
            d.post(box, BM_CLICK)
        d.wait_checked("chkShEnable", False)
        self.settle()
        self.check_no_run()

    def test_runs_while_the_window_is_hidden_and_leaves_it_hidden(self):
        self.start(schedule(ScheduleMinutes="1", ScheduleMin="1"))
        self.minimise()
        self.d.post(None, WM_TIMER, SCHEDULER)
        self.check_run()
        self.assertFalse(self.d.main.visible)

    def test_starts_no_second_run_while_one_is_on_its_way(self):
        self.start(schedule(ScheduleMinutes="1", ScheduleMin="1"))
        self.tick()
        self.tick(5)  # the run takes a second at least
        self.assertEqual(self.wait_run_over(), RAN)
        self.settle()
        self.assertEqual((self.running(), self.log()), (False, RAN))

    def test_starts_no_run_while_one_is_on_its_way_that_the_user_started(self):
        self.start(schedule(ScheduleMinutes="1", ScheduleMin="1"))
        self.press_erase_only()
        self.wait_log(CLIPBOARD)
        self.tick(5)
        self.assertEqual(self.wait_run_over(), RAN)
        self.settle()
        self.assertEqual((self.running(), self.log()), (False, RAN))

    def test_comes_by_itself_a_minute_after_the_start(self):
        begin = time.monotonic()
        ProgramCase.start(self, schedule(ScheduleMinutes="1", ScheduleMin="1"))
        wait_for("the first run", self.log, seconds=150)
        self.assertGreater(time.monotonic() - begin, 59)
        self.assertEqual(self.wait_run_over(), RAN)


class ATickWithNothingSelected(ScheduleCase):
    """A due run then tells so. Its message is in nobody's way, and there is one."""

    def setUp(self):
        self.start(only() | {"Scheduling": {"chkShEnable": "1", "ScheduleMinutes": "1", "ScheduleMin": "1"}})

    def texts(self) -> list[str]:
        return [box.text for box in self.d.boxes()]

    def wait_said(self) -> None:
        wait_for("the message", lambda: self.texts() == [NOTHING_SELECTED])

    def test_says_so_once_and_again_at_the_next_one_after_the_answer(self):
        for _ in range(2):
            self.tick(3)
            self.wait_said()
            self.tick(3)
            self.assertEqual(self.texts(), [NOTHING_SELECTED])
            box = self.d.press_button_in_box("OK")
            self.assertEqual((box.buttons, box.icon, box.title), (["OK"], "information", self.d.app_title))
            wait_for("the window to be usable", lambda: self.d.main.enabled)
        self.check_no_run()

    def test_adds_nothing_to_an_open_question(self):
        d = self.d
        d.right_click_icon()
        d.pick("Exit")
        d.wait_box("Confirmation")
        self.tick(3)
        self.assertEqual([box.title for box in d.boxes()], ["Confirmation"])
        d.press_button_in_box("No")
        wait_for("the window to be usable", lambda: d.main.enabled)
        self.tick()
        self.wait_said()

    def test_adds_nothing_to_the_same_message_after_a_press_of_the_button(self):
        self.press_erase_only()
        self.wait_said()
        self.tick(3)
        self.assertEqual(self.texts(), [NOTHING_SELECTED])

    def test_adds_nothing_to_the_warning_before_running_invisibly(self):
        d = self.d
        self.show_panel()
        d.click("cmdRunInv")
        warning = d.wait_window("#32770", "Warning")
        self.tick(3)
        self.assertEqual(d.boxes(), [])
        d.click("cmdContinue", warning)
        d.wait_no_window("frmMain")

    def test_does_not_keep_the_program_from_its_end(self):
        d = self.d
        self.tick()
        self.wait_said()
        d.post(None, WM_CLOSE)  # as the taskbar does
        self.assertEqual(d.wait_ended(), 0)


if __name__ == "__main__":
    unittest.main(verbosity=2)
