"""The end of the session: an erase before it when that is wished, and the settings stored in every case."""
import threading
import time
import unittest

from tests.harness.driver import wait_for
from tests.harness.program import CLOSE_BUTTON, DONE, ProgramCase, only

TEMP = "Erasing Windows Temp File/Folder ..."
WM_QUERYENDSESSION, WM_ENDSESSION = 0x0011, 0x0016
LOG_OFF = r"C:\windows\system32\wineboot.exe"


class TheEndOfTheSession(ProgramCase):
    def setUp(self):
        self.trace = self.d.home.temp / "trace.tmp"
        self.trace.write_text("x")

    def start_with(self, shutdown: str, *items: str) -> None:
        self.start(only(*items) | {"Scheduling": {"Shutdown": shutdown}})
        self.d.set_checked(("chkOsettings", 1))

    def log_off(self, once=lambda: True) -> list[list[str]]:
        """Ends the session and returns each state of the log that was seen until the program had ended.

        No time passes for it before `once()` is true.
        """
        d, seen = self.d, []
        log = d.handle("lstCln")
        with d.time_held():
            leaving = d.start(LOG_OFF, "-e")
            changed = time.monotonic()

            def over():
                nonlocal changed
                lines = d.probe.ask("items", log)["items"]
                if not once():
                    return False
                # The pause after the new line may be still to come; then another second has to pass.
                if lines and lines not in seen or time.monotonic() - changed > 2:
                    seen.extend([lines] if lines not in seen else [])
                    changed = time.monotonic()
                    d.pass_a_second()
                return d.ended(d.pid) is not None
            wait_for("the end of the program", over, every=0.01)
        self.assertEqual(d.wait_ended(), 0)
        d.wait_ended(leaving)
        d.wait_no_icon()
        return seen

    def check_stored(self, *items: str) -> None:
        self.assertEqual(self.d.registry_section("CleanSettings"), only("OClean", *items)["CleanSettings"])
        self.assertEqual(self.d.registry_value("Shredder", "txtLevel"), "50")

    def test_is_held_up_until_the_erase_is_over_when_that_is_wished(self):
        self.start_with("1", "WinTempFileFolder")
        seen = self.log_off()
        self.assertEqual(seen[:2], [[TEMP], [TEMP, "Erasing Opera Cache..."]])
        self.assertFalse(self.trace.exists())
        self.check_stored("WinTempFileFolder")

    def test_erases_nothing_when_that_is_not_wished_and_stores_the_settings(self):
        self.start_with("0", "WinTempFileFolder")
        self.assertIn(self.log_off(), ([], [[]]))
        self.assertTrue(self.trace.exists())
        self.check_stored("WinTempFileFolder")

    def test_is_as_wished_by_the_box_and_not_as_stored_before(self):
        d = self.d
        self.start_with("0", "WinTempFileFolder")
        d.click("cmdSchedule")
        d.set_checked(("chkStartUp", 1))
        self.assertEqual(self.log_off()[:1], [[TEMP]])
        self.assertFalse(self.trace.exists())
        self.assertEqual(d.registry_value("Scheduling", "Shutdown"), "1")

    def test_skips_every_item_after_an_earlier_run(self):
        first_log = ["Erasing Clipboard History...", "Erasing Opera Cache..."]
        self.start_with("1", "OpenSavedDialoge")
        self.press_erase_only()
        self.assertEqual(self.wait_run_over(), [*first_log, *DONE])
        self.d.click("cmdDefault")
        self.d.set_checked(("chkWinsettings", 0))
        seen = self.log_off()
        # The second run is over at once. A look at the log may fall between its lines; that of the item is never there.
        self.assertNotIn(TEMP, [line for log in seen for line in log])
        self.assertTrue(self.trace.exists())
        self.check_stored("OpenSavedDialoge", "WinTempFileFolder")

    def test_in_the_middle_of_a_run_runs_the_wished_erase_to_its_end(self):
        self.start_with("1", "OpenSavedDialoge", "WinTempFileFolder")
        with self.d.time_held():
            self.press_erase_only()
            self.wait_log(TEMP)
            self.trace.write_text("written after the item of the first run")
            self.log_off(once=lambda: not self.trace.exists())
        self.assertFalse(self.trace.exists())
        self.check_stored("OpenSavedDialoge", "WinTempFileFolder")

    def test_finds_a_hidden_program_too(self):
        self.start_with("1", "WinTempFileFolder")
        self.minimise()
        self.log_off()
        self.assertFalse(self.trace.exists())
        self.check_stored("WinTempFileFolder")

    def test_is_answered_after_the_run_during_which_the_window_answers_too(self):
        d = self.d
        self.start_with("1", "WinTempFileFolder")
        main, answers = d.main.hwnd, []
        with d.another_probe() as system:
            def ask():
                answer = system.ask("send", main, WM_QUERYENDSESSION, 0, 0, 20000)
                answers.append((answer.result, self.trace.exists(), d.ended(d.pid), d.items("lstCln")[-1:]))
            asking = threading.Thread(target=ask)
            asking.start()
            worst = d.longest_freeze(lambda: not asking.is_alive(), main)
        self.assertEqual(answers, [(1, False, None, DONE[-1:])])
        self.assertLess(worst, 500)
        d.post(main, WM_ENDSESSION, 1)
        self.assertEqual(d.wait_ended(), 0)
        self.check_stored("WinTempFileFolder")


class AnEndByItsUser(ProgramCase):
    """It erases nothing, whatever is wished for the end of the session."""

    def setUp(self):
        self.trace = self.d.home.temp / "trace.tmp"
        self.trace.write_text("x")
        self.start(only("WinTempFileFolder") | {"Scheduling": {"Shutdown": "1"}})

    def check_ended(self) -> None:
        self.assertEqual(self.d.wait_ended(), 0)
        self.assertTrue(self.trace.exists())
        self.assertEqual(self.d.registry_value("Scheduling", "Shutdown"), "1")

    def test_by_the_close_box_erases_nothing(self):
        self.click_title_button(CLOSE_BUTTON)
        self.check_ended()

    def test_by_exit_in_the_menu_erases_nothing(self):
        self.d.right_click_icon()
        self.d.pick("Exit")
        self.d.wait_box("Confirmation")
        self.d.press_button_in_box("Yes")
        self.check_ended()


if __name__ == "__main__":
    unittest.main(verbosity=2)
