"""Running invisibly: the warning before it, Ctrl+H and Ctrl+U, and what is gone and comes back."""
import shutil
import unittest

from tests.harness import browsers
from tests.harness.driver import BUILT, PROGRAMS, WM_CLOSE, View, compile_windows_program, wait_for
from tests.harness.program import CLOSE_BUTTON, STARTED, STORE, ProgramCase, only

TEXT = ('Clicking this button will make Quellix run invisibly. You can also press "Ctrl + H" to hide. '
        'To unhide the application press "Ctrl + U"')


class InvisibleCase(ProgramCase):
    options = {"prepare": browsers.install}

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        browsers.keep_keyboard(cls.d)

    def start_with(self, message: str | None = None) -> None:
        self.start(only("OpenSavedDialoge") | ({"Message_key": {"Message": message}} if message is not None else {}))

    def press_button(self) -> None:
        self.d.click("cmdSchedule")
        self.d.wait_visible("cmdRunInv")
        self.d.click("cmdRunInv")

    def warning(self) -> View:
        return self.d.wait_window("#32770", "Warning")

    def warnings(self) -> int:
        return len(self.d.find_windows("#32770", "Warning", visible=None))

    def ctrl_h(self) -> View:
        self.d.hold_until(("ctrl", "h"), "the warning", lambda: self.d.find_window("#32770", "Warning"))
        return self.warning()

    def press_continue(self) -> None:
        self.d.click("cmdContinue", self.warning())

    def wait_invisible(self) -> None:
        self.d.wait_no_window("frmMain")
        self.d.wait_no_icon()

    def stored(self) -> str | None:
        return self.d.registry_value("Message_key", "Message")

    def ask_to_exit(self) -> View:
        self.d.right_click_icon()
        self.d.pick("Exit")
        return self.d.wait_box("Confirmation")

    def wait_out_of_sight(self, box: int) -> None:
        wait_for("the box out of sight", lambda: not any(w.visible for w in self.d.windows() if w.hwnd == box))

    def wait_box_in_front(self, box: int) -> None:
        wait_for("the box in front", lambda: browsers.in_front(self.d, box))


class TheWarning(InvisibleCase):
    def setUp(self):
        self.start_with()

    def test_says_what_will_happen_over_a_window_that_waits(self):
        d = self.d
        self.press_button()
        warning = self.warning()
        self.assertEqual((warning.title, warning.owner), ("Warning", d.main.hwnd))
        self.assertEqual([d.text(name, warning) for name in ("lblWarning", "chkWarning", "cmdContinue")],
                         [TEXT, "Don't show this message again", "Continue"])
        self.assertFalse(d.checked("chkWarning", warning))
        self.assertFalse(d.main.enabled)
        wait_for("the warning in front", lambda: browsers.in_front(d, warning.hwnd))
        self.assertIsNotNone(d.icon())
        d.wait_focus("cmdContinue", warning)
        size = d.text_size("lblWarning", d.control("lblWarning", warning).rect[2] - d.control("lblWarning", warning).rect[0],
                           warning)
        self.assertLessEqual(size.height, size.client[3], "the text fits")
        d.settle("cmdContinue", warning)
        d.screenshot(BUILT / "panels" / "frmWarning.png", warning)

    def test_lets_the_program_go_invisible_by_continue_and_comes_again_the_next_time(self):
        self.press_button()
        self.press_continue()
        self.wait_invisible()
        self.assertIsNone(self.stored())
        self.come_back()
        self.assertTrue(self.d.main.enabled)
        self.d.click("cmdRunInv")
        self.warning()

    def test_does_not_come_again_when_that_is_wished(self):
        d = self.d
        self.press_button()
        d.set_checked("chkWarning", window=self.warning())
        self.press_continue()
        self.wait_invisible()
        self.assertEqual(self.stored(), "Dont")
        self.come_back()
        d.click("cmdRunInv")
        self.wait_invisible()
        self.assertEqual(self.warnings(), 0)
        self.come_back()
        self.end()
        self.assertEqual(self.stored(), "Dont")

    def test_lets_the_program_go_invisible_by_enter(self):
        self.press_button()
        self.d.wait_focus("cmdContinue", self.warning())
        self.d.key("Return")
        self.wait_invisible()

    def test_that_is_closed_another_way_stores_nothing_and_lets_the_program_go_invisible(self):
        d = self.d
        for close in (lambda: d.key("Escape"), lambda: self.click_title_button(CLOSE_BUTTON, self.warning())):
            self.press_button()
            d.set_checked("chkWarning", window=self.warning())
            close()
            self.wait_invisible()
            self.assertIsNone(self.stored())
            self.come_back()

    def test_lets_the_program_go_invisible_although_its_wish_cannot_be_stored(self):
        d = self.d
        d.reg_delete_key("HKCU", STORE)
        d.reg_make_volatile("HKCU", STORE)
        self.addCleanup(d.reg_delete_key, "HKCU", STORE)
        self.press_button()
        d.set_checked("chkWarning", window=self.warning())
        self.press_continue()
        self.wait_invisible()
        self.assertEqual((d.boxes(), self.stored()), ([], None))

    def test_is_hidden_and_brought_back_with_the_window_by_the_boss_key(self):
        d = self.d
        self.start(only("OpenSavedDialoge") | {"Boss": {"bossKey": "120"}})
        self.press_button()
        warning = self.warning()
        d.hold_until(("F9",), "window and warning out of sight",
                     lambda: not d.find_window("frmMain") and not d.find_window("#32770", "Warning"))
        self.bring_back("F9", lambda: browsers.in_front(d, warning.hwnd))
        self.assertEqual(self.warnings(), 1)
        self.press_continue()
        self.wait_invisible()

    def test_that_came_up_over_a_hidden_window_is_hidden_and_brought_back_by_the_boss_key_too(self):
        d = self.d
        self.start(only("OpenSavedDialoge") | {"Boss": {"bossKey": "120"}})
        d.hold_until(("F9",), "the window out of sight", lambda: not d.find_window("frmMain"))
        warning = self.ctrl_h().hwnd
        self.assertFalse(d.main.visible)
        with d.held("F9"):
            self.wait_out_of_sight(warning)
        self.bring_back("F9", lambda: browsers.in_front(d, warning))
        self.assertEqual(self.warnings(), 1)
        self.press_continue()
        self.wait_invisible()
        self.come_back()

    def test_ends_with_the_program(self):
        self.press_button()
        self.warning()
        self.d.post(None, WM_CLOSE)
        self.assertEqual(self.d.wait_ended(), 0)
        self.assertEqual(self.warnings(), 0)

    def test_does_not_keep_the_session_from_its_end(self):
        self.press_button()
        self.warning()
        self.d.end_session()
        self.assertEqual(self.d.wait_ended(), 0)
        self.assertEqual(self.d.registry_value("Shredder", "txtLevel"), "50")


class CtrlH(InvisibleCase):
    def test_shows_one_warning_however_long_it_is_held(self):
        d = self.d
        self.start_with()
        with d.held("ctrl", "h"):
            self.warning()
            browsers.let_polls_pass(d, 60)
            self.assertEqual(self.warnings(), 1)
        with d.held("ctrl", "h"):
            browsers.let_polls_pass(d)
            self.assertEqual(self.warnings(), 1)
        self.press_continue()
        self.wait_invisible()
        self.come_back()

    def test_works_while_another_program_has_the_keyboard(self):
        d = self.d
        self.start_with("Dont")
        other = browsers.open_windows(d, ("Form", "Other work"))
        wait_for("the other program in front", lambda: browsers.in_front(d, process=other))
        with d.held("ctrl", "h"):
            self.wait_invisible()
        wait_for("the other program still in front", lambda: browsers.in_front(d, process=other))
        self.come_back()
        d.terminate(other)

    def test_goes_invisible_at_once_when_the_store_says_anything_but_do(self):
        for stored in ("Dont", "", "do", "DO", "Don't", "1"):
            with self.subTest(stored=stored):
                self.start_with(stored)
                with self.d.held("ctrl", "h"):
                    self.wait_invisible()
                self.assertEqual((self.warnings(), self.stored()), (0, stored))
                self.come_back()

    def test_shows_the_warning_when_the_store_says_do_with_blanks(self):
        self.start_with("  Do ")
        self.ctrl_h()
        self.press_continue()
        self.wait_invisible()

    def test_held_does_nothing_more_to_what_is_invisible(self):
        d = self.d
        self.start_with("Dont")
        with d.held("ctrl", "h"):
            self.wait_invisible()
            browsers.let_polls_pass(d, 40)
        self.assertEqual((d.main.visible, d.icon(), d.boxes()), (False, None, []))
        self.come_back()

    def test_puts_no_warning_over_a_question_and_takes_it_along(self):
        d = self.d
        self.start_with()
        question = self.ask_to_exit().hwnd
        with d.held("ctrl", "h"):
            self.wait_invisible()
        self.wait_out_of_sight(question)
        self.assertEqual((self.warnings(), d.boxes()), (0, []))
        with d.held("ctrl", "u"):
            self.wait_box_in_front(question)
        d.wait_icon()
        d.press_button_in_box("No")
        wait_for("the window to be usable", lambda: d.main.enabled)
        self.ctrl_h()

    def test_takes_a_question_along_when_there_is_no_warning(self):
        d = self.d
        self.start_with("Dont")
        question = self.ask_to_exit().hwnd
        with d.held("ctrl", "h"):
            self.wait_invisible()
        wait_for("the question out of sight", lambda: d.find_window("#32770") is None)
        with d.held("ctrl", "u"):
            wait_for("the question in front", lambda: browsers.in_front(d, question))
        d.wait_icon()
        d.press_button_in_box("No")
        self.wait_in_front()

    def test_takes_a_question_along_that_stands_over_a_hidden_window(self):
        d = self.d
        self.start_with("Dont")
        with d.held("F10"):
            d.wait_no_window("frmMain")
        question = self.ask_to_exit().hwnd
        self.assertFalse(d.main.visible)
        with d.held("ctrl", "h"):
            self.wait_out_of_sight(question)
        d.wait_no_icon()
        with d.held("ctrl", "u"):
            self.wait_box_in_front(question)
        d.wait_icon()
        d.press_button_in_box("No")
        self.wait_in_front()


class CtrlHOverADialog(InvisibleCase):
    def test_takes_the_dialog_that_asks_for_files_along(self):
        d = self.d
        self.start_with()
        d.click("cmdSecureDelk")
        d.click("cmdFileShred")
        dialog = d.file_dialog()[0].hwnd
        with d.held("ctrl", "h"):
            self.wait_invisible()
        self.wait_out_of_sight(dialog)
        self.assertEqual(self.warnings(), 0)
        with d.held("ctrl", "u"):
            self.wait_box_in_front(dialog)
        d.wait_icon()
        d.cancel_file_dialog()
        wait_for("the window to be usable", lambda: d.main.enabled)


class CtrlHDuringTheEraseAtTheStart(InvisibleCase):
    def test_leaves_no_icon_when_the_start_is_over(self):
        d = self.d
        items = only("WinTempFileFolder", "RunHistory", "OpenSavedDialoge")
        self.start(items | {"Message_key": {"Message": "Dont"}, "Startup": {"LoadStartup": "1", "Startup": "1"}},
                   wait_until_started=False)
        with d.held("ctrl", "h"):
            d.wait_no_window("frmMain")
        self.assertNotEqual(d.status_text(), STARTED, "the erase is over too early for this test")
        d.wait_status(STARTED)
        d.response_ms()
        d.settle(d.taskbar())
        self.assertIsNone(d.icon())
        self.come_back()


class BeingInvisible(InvisibleCase):
    def setUp(self):
        self.start_with("Dont")
        with self.d.held("ctrl", "h"):
            self.wait_invisible()

    def test_ends_by_ctrl_u_with_window_and_icon_in_their_places(self):
        self.come_back()
        self.assertTrue(self.d.main.enabled)
        self.minimise()
        self.d.click_icon()
        self.wait_in_front()

    def test_ends_by_the_boss_key_with_shift_without_the_icon_which_ctrl_u_brings_back(self):
        d = self.d
        self.bring_back("F10")
        self.assertIsNone(d.icon())
        with d.held("ctrl", "u"):
            d.wait_icon()

    def test_ends_by_a_second_start_without_the_icon(self):
        self.assertEqual(self.d.second_instance(), 0)
        self.wait_in_front()
        self.assertIsNone(self.d.icon())

    def test_lasts_when_the_taskbar_is_started_again(self):
        d = self.d
        d.probe.ask("broadcast", "TaskbarCreated")
        d.response_ms()  # it has the message by now
        d.settle(d.taskbar())
        self.assertEqual((d.icon(), d.main.visible), (None, False))
        self.come_back()
        d.restart_taskbar()
        d.wait_icon()

    def test_of_a_minimised_window_ends_with_a_normal_one(self):
        self.come_back()
        self.minimise()
        with self.d.held("ctrl", "h"):
            self.wait_invisible()
        self.come_back()
        self.assertFalse(self.d.main.iconic)

    def test_does_not_keep_the_program_from_its_end(self):
        self.d.post(None, WM_CLOSE)
        self.assertEqual(self.d.wait_ended(), 0)
        self.assertEqual(self.d.registry_value("Shredder", "txtLevel"), "50")

    def test_does_not_keep_the_session_from_its_end(self):
        self.d.end_session()
        self.assertEqual(self.d.wait_ended(), 0)
        self.assertEqual(self.d.registry_value("Shredder", "txtLevel"), "50")


def install_with_record(home) -> None:
    browsers.install(home)
    library = compile_windows_program(PROGRAMS / "task_list.cpp", "-shared", output=BUILT / "task_list.dll")
    shutil.copy2(library, home.c / "task_list.dll")


class TaskListCase(InvisibleCase):
    def setUp(self):
        self.calls_file = self.d.home.c / "task_list.txt"
        self.calls_file.unlink(missing_ok=True)
        self.start_with("Dont")
        self.d.load_into_program(r"C:\task_list.dll")

    def calls(self) -> str:
        """The states that were asked for, one after the other: 1 is out of the task list, 0 in it."""
        self.d.response_ms()  # a poll that is on its way is over
        return self.calls_file.read_text() if self.calls_file.exists() else ""

    def go_invisible(self) -> None:
        with self.d.held("ctrl", "h"):
            self.wait_invisible()

    def pick_while_minimised(self, entry: str) -> None:
        self.minimise()
        self.d.right_click_icon()
        self.d.pick(entry)
        self.wait_in_front()


class OnWindows98(TaskListCase):
    options = {"prepare": install_with_record, "windows": "win98"}

    def check_only(self, state: str) -> None:
        # A key that is held makes the same call at each look at it.
        self.assertEqual(set(self.calls()), {state})

    def test_it_goes_and_comes_back_in_the_same_way(self):
        self.start_with()
        self.ctrl_h()
        self.press_continue()
        self.wait_invisible()
        self.come_back()

    def test_it_leaves_the_task_list_with_ctrl_h_and_is_back_with_ctrl_u(self):
        self.go_invisible()
        self.check_only("1")
        self.calls_file.unlink()
        self.come_back()
        self.check_only("0")

    def test_it_leaves_the_task_list_by_the_button_once(self):
        self.press_button()
        self.wait_invisible()
        self.assertEqual(self.calls(), "1")

    def test_it_leaves_the_task_list_only_after_the_warning(self):
        self.start_with()
        self.d.load_into_program(r"C:\task_list.dll")
        self.press_button()
        self.warning()
        self.assertEqual(self.calls(), "")
        self.press_continue()
        self.wait_invisible()
        self.assertEqual(self.calls(), "1")

    def test_it_is_in_the_task_list_again_by_show_and_by_clean_in_the_menu(self):
        for entry in ("Show", "Clean"):
            with self.subTest(entry):
                self.calls_file.unlink(missing_ok=True)
                self.pick_while_minimised(entry)
                self.assertEqual(self.calls(), "0")
        self.wait_run_over()

    def test_it_stays_in_the_task_list_with_the_boss_key(self):
        with self.d.held("F10"):
            self.d.wait_no_window("frmMain")
        self.bring_back("F10")
        self.assertEqual(self.calls(), "")


class OnWindowsXp(TaskListCase):
    options = {"prepare": install_with_record, "windows": "winxp"}

    def test_the_task_list_is_never_asked_for_anything(self):
        self.go_invisible()
        self.come_back()
        for entry in ("Show", "Clean"):
            self.pick_while_minimised(entry)
        self.assertEqual(self.calls(), "")


if __name__ == "__main__":
    unittest.main(verbosity=2)
