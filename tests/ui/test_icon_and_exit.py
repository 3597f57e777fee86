"""The notification icon with its menu, hiding and coming back, and every way in which the program ends."""
import unittest

from tests.harness.driver import View, wait_for
from tests.harness.program import CAPTION, CLOSE_BUTTON, DONE, STORE, ProgramCase, only

QUESTION = "Are you sure you want to exit Quellix?"
CLIPBOARD = "Erasing Clipboard History..."


class IconCase(ProgramCase):
    def setUp(self):
        self.start_unless_untouched(only("OpenSavedDialoge"))

    def pick_from_icon(self, entry: str) -> None:
        self.d.right_click_icon()
        self.d.pick(entry)

    def ask_to_exit(self):
        self.pick_from_icon("Exit")
        return self.d.wait_box("Confirmation")

    def wait_back(self) -> None:
        """Waits until the window is in front and nothing more of the icon is on its way to it."""
        self.wait_in_front()
        self.d.settle(self.d.taskbar())
        self.settle_main()

    def settle_main(self) -> None:
        self.d.settle("fraMain" if self.panel_on_show() == ["fraMain"] else "fraClean")

    def wait_stored(self) -> None:
        self.assertEqual(self.d.registry_section("CleanSettings"), only("OpenSavedDialoge", "RunHistory")["CleanSettings"])
        self.assertEqual(self.d.registry_value("Shredder", "txtLevel"), "50")


class TheIcon(IconCase):
    def test_stays_when_the_window_is_minimised_and_the_window_is_gone(self):
        self.minimise()
        main = self.d.main
        self.assertEqual((main.visible, main.iconic), (False, True))
        self.assertIsNotNone(self.d.icon())
        self.assertEqual(self.d.icon_tip(), CAPTION)
        self.d.click_icon()
        self.wait_back()

    def test_brings_the_window_back_by_a_click(self):
        self.minimise()
        self.d.click_icon()
        self.wait_back()
        self.assertEqual(self.panel_on_show(), ["fraMain"])

    def test_brings_the_window_back_by_a_double_click(self):
        self.minimise()
        self.d.double_click_icon()
        self.wait_back()

    def test_brings_the_window_back_by_show(self):
        self.minimise()
        self.pick_from_icon("Show")
        self.wait_back()

    def test_brings_back_a_window_that_was_minimised_by_the_system_menu(self):
        self.d.click("cmdDefault")
        self.d.key("alt+space")
        wait_for("the system menu", lambda: self.d.focus().in_menu)
        self.d.key("n")
        self.d.wait_no_window("frmMain")
        self.d.click_icon()
        self.wait_back()

    def test_brings_back_a_window_that_was_hidden(self):
        self.d.hide_window()
        self.d.wait_no_window("frmMain")
        self.d.click_icon()
        self.wait_back()

    def test_keeps_the_place_of_the_window(self):
        place = self.d.main.rect
        self.minimise()
        self.d.click_icon()
        self.wait_back()
        self.assertEqual(self.d.main.rect, place)

    def test_has_a_menu_of_three_entries_that_goes_away_by_a_click_elsewhere(self):
        self.d.right_click_icon()
        entries = self.d.popup()
        self.assertEqual([entry.text for entry in entries], ["Clean", "Show", "Exit"])
        self.assertTrue(all(entry.enabled for entry in entries))
        self.d.click_at(20, 20)
        self.d.wait_no_window("#32768")
        self.assertIsNotNone(self.d.icon())
        self.assertTrue(self.d.main.visible)

    def test_has_a_menu_that_the_keyboard_uses_and_escape_closes(self):
        self.minimise()
        self.d.right_click_icon()
        self.d.popup()
        self.d.key("Escape")
        self.d.wait_no_window("#32768")
        self.assertFalse(self.d.main.visible)
        self.d.right_click_icon()
        self.d.pick_by_keys("Show")
        self.wait_back()

    def test_starts_a_run_by_clean_and_shows_it(self):
        self.d.click("cmdDefault")
        self.minimise()
        with self.d.time_held():
            self.pick_from_icon("Clean")
            self.wait_back()
            self.wait_log(CLIPBOARD)
            self.assertEqual((self.panel_on_show(), self.d.status_text()), (["fraClean"], "Please Wait .."))
        self.assertEqual(self.wait_run_over(), [CLIPBOARD, *DONE])
        self.d.click("cmdDefault")
        wait_for("the main settings", lambda: self.panel_on_show() == ["fraMain"])

    def test_starts_no_second_run_by_clean(self):
        with self.d.time_held():
            self.press_erase_only()
            self.wait_log(CLIPBOARD)
            # The log is cleared by the way to the Erase panel, and the run goes on.
            self.pick_from_icon("Clean")
            self.wait_log()
            self.settle_main()
        self.assertEqual(self.wait_run_over(), DONE)
        self.settle_main()
        self.assertEqual((self.log(), self.d.status_text()), (DONE, "Ready"))
        self.d.click("cmdDefault")

    def test_comes_back_after_a_restart_of_the_taskbar(self):
        self.d.restart_taskbar()
        self.d.wait_icon()
        self.minimise()
        self.d.click_icon()
        self.wait_back()
        self.assertEqual(self.d.icon_tip(), CAPTION)

    def test_is_not_taken_for_moves_of_the_mouse_over_the_window(self):
        # The icon's message has the number of a mouse move; a move to 517,0 carries what a right click on it does.
        d = self.d
        left, top = d.control("Picture1").rect[:2]

        def cross():
            for x in range(513, 519):
                d.move(left + x, top)
                self.settle_main()
        cross()
        with d.button_held_at(left + 510, top):
            cross()
        cross()
        self.assertIsNone(d.find_window("#32768"))
        self.assertTrue(d.main.visible)


class TheQuestionBeforeTheExit(IconCase):
    def test_is_asked_as_a_question_with_yes_and_no(self):
        box = self.ask_to_exit()
        self.assertEqual((box.text, box.buttons, box.default, box.icon, box.owner),
                         (QUESTION, ["Yes", "No"], "Yes", "question", self.d.main.hwnd))
        self.d.press_button_in_box("No")

    def test_leaves_window_and_icon_when_it_is_answered_by_no(self):
        self.ask_to_exit()
        self.d.press_button_in_box("No")
        wait_for("the window to be usable", lambda: self.d.main.enabled)
        self.assertIsNotNone(self.d.icon())
        self.assertTrue(self.d.main.visible)
        self.assertIsNone(self.d.ended(self.d.pid))
        self.minimise()
        self.d.click_icon()
        self.wait_back()

    def test_is_asked_while_the_window_is_hidden_and_no_leaves_it_hidden(self):
        self.minimise()
        self.ask_to_exit()
        self.d.press_button_in_box("No")
        wait_for("the window to be usable", lambda: self.d.main.enabled)
        self.assertFalse(self.d.main.visible)
        self.d.click_icon()
        self.wait_back()

    def test_comes_to_the_front_with_the_window_when_the_icon_is_used(self):
        # Behind the window, which takes no input meanwhile, it would make the program look dead.
        self.minimise()
        question = self.ask_to_exit().hwnd
        self.d.click_icon()
        wait_for("the window on show", lambda: self.d.main.visible and not self.d.main.iconic)
        wait_for("the question in front", lambda: self.d.foreground().hwnd == question)
        self.d.press_button_in_box("No")
        self.wait_back()

    def test_is_asked_once_however_the_icon_is_used_meanwhile(self):
        d = self.d
        question = self.ask_to_exit().hwnd
        d.right_click_icon()
        d.settle(d.taskbar())
        d.settle(View(hwnd=question))
        self.assertIsNone(d.find_window("#32768"))
        d.click_icon()
        d.double_click_icon()
        wait_for("the question in front", lambda: d.foreground().hwnd == question)
        self.assertEqual([box.hwnd for box in d.boxes()], [question])
        self.assertFalse(d.main.enabled)
        d.press_button_in_box("No")
        wait_for("the window to be usable", lambda: d.main.enabled)


class TheEnd(IconCase):
    def setUp(self):
        super().setUp()
        self.d.click(("chkWinsettings", 5))
        self.d.wait_checked(("chkWinsettings", 5))

    def check_ended(self):
        self.assertEqual(self.d.wait_ended(), 0)
        self.d.wait_no_icon()
        self.assertEqual(self.d.boxes(), [])
        self.wait_stored()

    def test_by_yes_takes_the_icon_away_and_stores_the_settings(self):
        self.ask_to_exit()
        self.d.press_button_in_box("Yes")
        self.check_ended()

    def test_by_yes_of_a_hidden_window_stores_the_settings(self):
        self.minimise()
        self.ask_to_exit()
        self.d.press_button_in_box("Yes")
        self.check_ended()

    def test_by_alt_f4_asks_nothing_and_stores_the_settings(self):
        self.d.key("alt+F4")
        self.check_ended()

    def test_by_the_title_bar_asks_nothing_and_stores_the_settings(self):
        self.click_title_button(CLOSE_BUTTON)
        self.check_ended()

    def test_by_exit_in_the_middle_of_a_run_stores_the_settings(self):
        with self.d.time_held():
            self.press_erase_only()
            self.d.wait_enabled("cmdStop")
            self.ask_to_exit()
            self.d.press_button_in_box("Yes")
            self.check_ended()

    def test_comes_although_nothing_can_be_stored(self):
        self.d.reg_delete_key("HKCU", STORE)
        self.d.reg_make_volatile("HKCU", STORE)
        self.d.key("alt+F4")
        self.assertEqual(self.d.wait_ended(), 0)
        self.d.wait_no_icon()
        self.assertEqual(self.d.reg_list("HKCU", STORE)["keys"], [])
        self.d.reg_delete_key("HKCU", STORE)

    def test_comes_after_a_start_in_which_nothing_can_be_stored(self):
        self.end()
        self.d.reg_delete_key("HKCU", STORE)
        self.d.reg_make_volatile("HKCU", STORE)
        self.restart()
        self.d.key("alt+F4")
        self.assertEqual(self.d.wait_ended(), 0)
        self.d.reg_delete_key("HKCU", STORE)


if __name__ == "__main__":
    unittest.main(verbosity=2)
