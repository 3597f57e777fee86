"""The driver and its probe, tried on a small program that holds one of everything they have to handle."""
import time
import unittest
from pathlib import Path

from tests.harness.driver import BUILT, PROGRAMS, Desktop, ProbeError, compile_windows_program, control_ids, wait_for

WM_NULL = 0


def selfcheck(name: str, **options) -> Desktop:
    exe = compile_windows_program(PROGRAMS / "selfcheck.cpp", "-mwindows", "-lcomctl32", "-lcomdlg32")
    return Desktop(name, files={"selfcheck.exe": exe}, program="selfcheck.exe", main_class="frmSelf",
                   app_title="Selfcheck", ids=control_ids(PROGRAMS / "selfcheck_ids.h"), **options)


class TheDriverUsesAProgramFromOutside(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.d = cls.enterClassContext(selfcheck("harness", settings={"Main": {"Greeting": "gr\u00fc\u00df \"dich\" \\"}}))

    def setUp(self):
        if self.d.ended(self.d.pid) is not None:
            self.d.start_program()
        if not self.d.control("chkOption_0").visible:
            self.d.click("cmdSwitch")
            self.d.wait_visible("chkOption_0")

    def restart(self):
        if self.d.ended(self.d.pid) is None:
            self.d.terminate()
        self.d.start_program()

    # What is seen

    def test_a_value_set_before_the_start_is_read_by_the_program(self):
        self.restart()
        self.assertEqual(self.d.text("lblResult"), "gr\u00fc\u00df \"dich\" \\")

    def test_the_windows_are_listed_with_owner_place_and_order(self):
        main = self.d.main
        hidden = self.d.find_window("SelfcheckMain", visible=None)
        self.assertEqual((main.title, main.visible, main.enabled, main.iconic), ("Selfcheck v1.0", True, True, False))
        self.assertEqual((main.owner, main.pid), (hidden.hwnd, self.d.pid))
        self.assertFalse(hidden.visible)
        self.assertLess(main.z, hidden.z)
        self.assertEqual(main.rect, [200, 150, 700, 510])

    def test_every_kind_of_control_tells_what_it_holds(self):
        d = self.d
        self.assertEqual(d.control("lstItems").count, 150)
        self.assertEqual(d.items("lstItems"), [f"line {i}" for i in range(150)])
        self.assertEqual(d.items("cmbPick"), ["F1", "F2", "F3", "F4", "F5"])
        self.assertFalse(d.control("cmdDisabled").enabled)
        self.assertEqual(d.status_text(0), "Ready")
        self.assertEqual(d.status_text(), "First panel")
        d.click("cmdSwitch")
        d.wait_status("Second panel")
        progress = d.control("prgWork")
        self.assertEqual((progress.min, progress.max, progress.pos), (5, 250, 42))
        time_shown = d.control("dtpTime").time
        self.assertEqual((time_shown.hour, time_shown.minute, time_shown.second), (21, 34, 56))
        spin = d.control("updLevel")
        self.assertEqual((spin.min, spin.max, spin.pos, spin.buddy), (1, 99, 50, d.handle("txtLevel")))

    def test_a_hidden_panel_is_told_from_the_one_on_show(self):
        d = self.d
        self.assertEqual(d.text("lblShared"), "shared on the first")
        d.click("cmdSwitch")
        d.wait_text("lblShared", "shared on the second \u00fc")
        first = d.control("chkOption_0")
        self.assertEqual((first.visible, first.own_visible), (False, True))

    def test_an_element_of_a_control_array_is_named_by_its_index(self):
        self.assertEqual(self.d.handle(("chkOption", 1)), self.d.handle("chkOption_1"))
        self.assertEqual(self.d.text(("chkOption", 1)), "Second option")

    def test_an_unknown_name_is_reported_by_its_name(self):
        with self.assertRaisesRegex(LookupError, "cmdNowhere"):
            self.d.control("cmdNowhere")

    def test_the_room_that_a_text_takes_is_measured_in_its_own_font(self):
        one_line = self.d.text_size("cmdCount")
        self.assertTrue(20 < one_line.width < 60 and 8 < one_line.height < 20, dict(one_line))
        broken = self.d.text_size(("chkOption", 1), 40)
        self.assertEqual(broken.height, 2 * one_line.height)

    def test_a_window_is_hidden_without_its_programs_help(self):
        self.d.hide_window()
        self.d.wait_no_window("frmSelf")
        self.restart()

    # Mouse

    def test_each_click_is_one_click_however_fast_they_follow(self):
        self.restart()
        for _ in range(4):
            self.d.click("cmdCount")
        self.d.wait_text("lblResult", "clicked 4")

    def test_boxes_and_options_are_ticked_by_clicks(self):
        d = self.d
        d.set_checked(("chkOption", 1))
        d.set_checked(("chkOption", 0), False)
        self.assertTrue(d.checked(("chkOption", 1)))
        d.click(("optMode", 0))
        d.wait_checked(("optMode", 0))
        d.click(("optMode", 1))
        d.wait_checked(("optMode", 1))
        self.assertFalse(d.checked(("optMode", 0)))

    def test_a_line_of_a_list_is_chosen_by_click_and_opened_by_double_click(self):
        d = self.d
        d.click_item("lstItems", "line 2")
        d.wait_control("lstItems", lambda c: c.selected == 2, "to have line 2 chosen")
        d.click_item("lstItems", 4, double=True)
        d.wait_text("lblResult", "list opened")
        with self.assertRaisesRegex(AssertionError, "not in view"):
            d.click_item("lstItems", "line 140")

    def test_a_line_of_a_drop_down_list_is_chosen(self):
        for text in ("F1", "F5", "F4"):
            self.d.choose("cmbPick", text)
            self.d.wait_text("cmbPick", text)

    def have_little_patience(self):
        self.addCleanup(setattr, self.d, "reachable_within", self.d.reachable_within)
        self.d.reachable_within = 2

    def test_what_a_user_cannot_click_is_refused(self):
        self.have_little_patience()
        with self.assertRaisesRegex(AssertionError, "disabled"):
            self.d.click("cmdDisabled")
        with self.assertRaisesRegex(AssertionError, "not on show"):
            self.d.click("prgWork")

    def test_a_control_under_another_window_is_refused(self):
        d = self.d
        d.click("cmdFile")
        dialog = d.wait_window("#32770")
        covered = [c for c in d.controls() if c.visible and c.text and c.enabled
                   and all(dialog.rect[i] < c.centre[i] < dialog.rect[i + 2] for i in (0, 1))]
        self.assertTrue(covered)
        self.have_little_patience()
        with self.assertRaisesRegex(AssertionError, "covers"):
            d.click(covered[0], even_if_disabled=True)
        d.key("Escape")
        d.wait_text("lblResult", "no file")

    # Keys

    def test_text_is_typed_into_an_edit_box(self):
        self.d.replace_text("txtName", r"C:\Temp\new & (more) 100%")

    def test_the_keyboard_walks_from_control_to_control(self):
        d = self.d
        d.click("cmdCount")
        d.wait_focus("cmdCount")
        d.key("Tab")
        d.wait_focus("cmdAsk")
        d.key("shift+Tab")
        d.wait_focus("cmdCount")
        d.key("ctrl+2")
        d.wait_text("lblResult", "accelerator")

    def test_a_key_is_seen_by_a_program_that_polls_for_it(self):
        self.restart()
        with self.d.held("F10"):
            self.d.wait_text("lblKeys", "F10 seen")

    def test_a_tap_between_two_polls_is_not_used_up_by_the_probe(self):
        self.restart()
        self.d.key("F10")
        self.d.wait_text("lblKeys", "F10 seen")

    # Boxes and dialogs

    def test_message_boxes_are_read_and_answered(self):
        d = self.d
        d.click("cmdAsk")
        box = d.wait_box("Confirmation")
        self.assertEqual((box.text, box.buttons, box.default, box.icon, box.owner),
                         ("Are you sure you want to go on?", ["Yes", "No"], "No", "question", d.main.hwnd))
        self.assertFalse(d.main.enabled)
        d.press_button_in_box("Yes")
        d.wait_text("lblResult", "yes")
        box = d.press_button_in_box("OK", "Selfcheck")
        self.assertEqual((box.text, box.icon), ("Nothing to see here", "error"))
        wait_for("the main window to be usable again", lambda: d.main.enabled)

    def test_a_file_is_chosen_in_the_dialog_for_it(self):
        (self.d.home.c / "a file.txt").write_text("x")
        self.d.click("cmdFile")
        self.d.answer_file_dialog(r"C:\a file.txt")
        self.d.wait_text("lblResult", r"C:\a file.txt")

    # The notification icon

    def test_the_icon_takes_left_and_double_clicks(self):
        d = self.d
        self.restart()
        d.wait_icon()
        d.click_icon()
        d.wait_text("lblResult", "left ")
        d.double_click_icon()
        d.wait_text("lblResult", "left left double left ")
        d.click_icon()
        d.wait_text("lblResult", "left left double left left ")

    def test_the_icons_tip_comes_up_under_the_mouse(self):
        self.d.wait_icon()
        self.assertEqual(self.d.icon_tip(), "Selfcheck")

    def test_the_menu_of_the_icon_is_read_and_used_with_the_mouse(self):
        d = self.d
        d.right_click_icon()
        entries = d.popup()
        self.assertEqual([e.text for e in entries], ["Clean", "Show", "", "Never", "Exit"])
        self.assertEqual([e.enabled for e in entries], [True, True, False, False, True])
        self.assertEqual([e.text for e in entries if e.checked], ["Show"])
        self.assertEqual([e.text for e in entries if e.default], ["Show"])
        d.pick("Clean")
        d.wait_text("lblResult", "menu 1")

    def test_the_menu_of_the_icon_is_used_with_the_keyboard(self):
        d = self.d
        d.right_click_icon()
        d.pick_by_keys("Show")
        d.wait_text("lblResult", "menu 2")

    def test_the_menu_ends_the_program_and_takes_the_icon_along(self):
        d = self.d
        d.right_click_icon()
        d.pick("Exit")
        self.assertEqual(d.wait_ended(), 7)
        d.wait_no_icon()
        self.assertIsNone(d.find_window("frmSelf", visible=None))

    def test_the_icon_comes_back_after_a_restart_of_the_taskbar(self):
        self.d.wait_icon()
        self.d.restart_taskbar()
        self.d.wait_icon()

    # Programs and sessions

    def test_a_second_copy_is_watched_to_its_end(self):
        self.assertEqual(self.d.second_instance(), 3)
        self.assertEqual([p.pid for p in self.d.processes("selfcheck.exe")], [self.d.pid])

    def test_closing_by_key_ends_the_program(self):
        self.d.click("cmdCount")
        self.d.key("alt+F4")
        self.assertEqual(self.d.wait_ended(), 7)

    def test_the_end_of_the_session_reaches_the_program_and_the_desktop_goes_on(self):
        d = self.d
        d.reg_delete_key("HKCU", r"Software\Quellix\Selfcheck\Main")
        d.end_session()
        self.assertEqual(d.wait_ended(), 7)
        self.assertEqual(d.registry_section("Main"), {"Asked": "1", "Session": "ended", "Left": "1"})
        d.start_program()
        d.click("cmdCount")
        d.wait_text("lblResult", "clicked 1")

    # Measures

    def test_a_freeze_is_measured_and_holds_up_nobody(self):
        d = self.d
        # A wait of its own for the list, because the program will not answer while it is busy.
        d.click("cmdBusy")
        started = time.monotonic()
        self.assertTrue(d.send(None, WM_NULL, timeout_ms=50).timed_out)
        self.assertFalse(d.control("cmdCount").answered)
        self.assertLess(time.monotonic() - started, 4)
        d.wait_text("lblResult", "no longer busy")
        self.assertLess(d.response_ms(), 200)

    def test_the_longest_freeze_of_a_job_is_found(self):
        d = self.d
        self.restart()
        d.click("cmdBusy")
        freeze = d.longest_freeze(lambda: d.text("lblResult") == "no longer busy")
        self.assertGreater(freeze, 1000)
        self.assertLess(freeze, 10000)

    def test_settling_waits_until_input_is_worked_off(self):
        d = self.d
        self.restart()
        d.click("cmdBusy")
        d.settle("cmdCount")
        self.assertEqual(d.text("lblResult"), "no longer busy")

    def test_processor_time_is_that_of_the_program_that_is_asked_for(self):
        d = self.d
        self.restart()
        d.click("cmdCount")
        d.move_mouse_away()
        used, others = d.cpu(), d.cpu("explorer.exe")
        d.key("ctrl+3")
        d.wait_text("lblResult", "burnt")
        self.assertTrue(200 < d.cpu() - used < 500, d.cpu() - used)  # the program burns by its own, coarser, count
        self.assertLess(d.cpu("explorer.exe") - others, 100)

    def test_processor_time_of_a_program_that_does_not_run_is_refused(self):
        with self.assertRaisesRegex(LookupError, "0 processes of nobody.exe"):
            self.d.cpu("nobody.exe")

    def test_a_picture_of_the_window_is_kept(self):
        picture = self.d.screenshot(BUILT / "harness.png", self.d.main)
        self.assertEqual(picture.read_bytes()[:8], b"\x89PNG\r\n\x1a\n")
        self.assertGreater(picture.stat().st_size, 2000)

    # Registry

    def test_registry_values_are_written_read_listed_and_deleted(self):
        d = self.d
        path = r"Software\Quellix\Harness\Sub key"
        d.reg_set("HKCU", path, "a text", "x \"y\" \u00e4\n")
        d.reg_set("HKCU", path + r"\deeper", "a number", 77)
        self.assertEqual(d.reg("HKCU", path, "a text").text, "x \"y\" \u00e4\n")
        self.assertEqual(d.reg("HKCU", path + r"\deeper", "a number").number, 77)
        self.assertIsNone(d.reg("HKCU", path, "another"))
        listed = d.reg_list("HKCU", path)
        self.assertEqual((list(listed["values"]), listed["keys"]), (["a text"], ["deeper"]))
        self.assertTrue(d.reg_delete_key("HKCU", path))
        self.assertIsNone(d.reg_list("HKCU", path))

    def test_a_key_that_takes_no_lasting_keys_is_made(self):
        d = self.d
        path = r"Software\Fleeting"
        d.reg_make_volatile("HKCU", path)
        with self.assertRaisesRegex(ProbeError, "could not be made"):
            d.reg_set("HKCU", path + r"\lasting", "name", "text")
        with self.assertRaisesRegex(ProbeError, "already there"):
            d.reg_make_volatile("HKCU", path)
        self.assertTrue(d.reg_delete_key("HKCU", path))


class LeavingADesktopEndsWhatItStarted(unittest.TestCase):
    def test_no_process_of_the_desktop_is_left(self):
        with selfcheck("harness-leave") as d:
            screen = d.display.process
            self.assertTrue(d.linux_processes())
        wait_for("the end of every process of the prefix", lambda: not d.linux_processes(), 10)
        self.assertIsNotNone(screen.poll())

    def test_a_program_that_does_not_come_up_is_reported_and_cleared_away(self):
        with self.assertRaisesRegex(AssertionError, "ended with 1 before it showed a window"):
            with Desktop("harness-leave", files={"reg.exe": self.a_program_without_window()}, program="reg.exe", ids={}) as d:
                self.fail(str(d.windows()))

    @staticmethod
    def a_program_without_window() -> Path:
        source = BUILT / "no_window.cpp"
        source.write_text("int main() { return 1; }\n")
        return compile_windows_program(source)


class ControlNamesComeFromHeaders(unittest.TestCase):
    def test_numbers_sums_and_arrays_are_understood(self):
        header = BUILT / "names_ids.h"
        BUILT.mkdir(parents=True, exist_ok=True)
        header.write_text("#define IDD_main 50\n#define IDC_cmdClean 1101 // the button\n#define IDC_base 0x500\n"
                          "#define IDC_chkA_0 (IDC_base + 1)\n#  define IDC_chkA_1  IDC_chkA_0 + 1 /* next */\n"
                          "#define IDC_odd something(3)\n")
        names = control_ids(header)
        self.assertEqual(names, {"cmdClean": 1101, "base": 0x500, "chkA_0": 0x501, ("chkA", 0): 0x501, "chkA_1": 0x502,
                                 ("chkA", 1): 0x502})


if __name__ == "__main__":
    unittest.main(verbosity=2)
