"""The end of the session with an erase before it: what the system is told meanwhile, who joins the run, what holds it up."""
import contextlib
import threading
import unittest

from tests.harness.driver import View, wait_for
from tests.harness.program import DONE, only
from tests.harness.rigged import RiggedCase

TEMP, RUN = "Erasing Windows Temp File/Folder ...", "Erasing RUN History..."
WM_QUERYENDSESSION, WM_ENDSESSION, WM_TIMER, SCHEDULER = 0x0011, 0x0016, 0x0113, 2
CLOSE_THIS_PROGRAM = 1
RUN_MRU = r"Software\Microsoft\Windows\CurrentVersion\Explorer\RunMRU"
EVERY_MINUTE = {"chkShEnable": "1", "ScheduleMinutes": "1", "ScheduleMin": "1"}


class SessionEndCase(RiggedCase):
    def setUp(self):
        self.trace = self.d.home.temp / "trace.tmp"
        self.trace.write_text("x")
        self.d.reg_set("HKCU", RUN_MRU, "a", r"secret.exe\1")
        self.rig()

    def start_with(self, *items: str, **scheduling: str) -> None:
        self.start(only(*items) | {"Scheduling": {"Shutdown": "1"} | scheduling})

    def ask(self, reasons: int = 0) -> View:
        """Asks whether the session may end and waits for the answer."""
        return self.d.send(None, WM_QUERYENDSESSION, 0, reasons, 30000)

    @contextlib.contextmanager
    def asked(self):
        """Within it the question is open: its erase is at work when the block begins and answered when it is left."""
        main, answers = self.d.main.hwnd, []
        with self.d.another_probe() as system:
            asking = threading.Thread(
                target=lambda: answers.append(system.ask("send", main, WM_QUERYENDSESSION, 0, 0, 30000)))
            asking.start()
            self.wait_log(TEMP)
            yield
            asking.join(60)
        self.answers = answers


class ASessionThatEndsAfterAnErase(SessionEndCase):
    def test_is_told_that_the_program_is_at_work_for_as_long_as_it_is(self):
        self.start_with("WinTempFileFolder", "RunHistory")
        with self.asked():
            self.assertEqual(self.wait_call("ShutdownBlockReasonCreate"), "frmMain 'Quellix is erasing the selected items.'")
            self.assertEqual(self.calls("ShutdownBlockReasonDestroy"), [])
        self.assertEqual(self.calls("ShutdownBlockReasonDestroy"), ["frmMain"])
        self.assertEqual([answer.result for answer in self.answers], [1])

    def test_is_one_run_that_no_tick_press_or_second_question_joins(self):
        d = self.d
        self.start_with("WinTempFileFolder", "RunHistory", **EVERY_MINUTE)
        self.show_erase_panel()
        with self.asked():
            d.post(None, WM_TIMER, SCHEDULER)
            d.click("cmdClean")
            self.assertEqual(self.ask().result, 1)
            self.assertFalse(d.control("cmdStop").own_enabled)
        self.assertEqual(self.log(), [TEMP, RUN, *DONE])

    def test_waits_for_the_rest_of_the_run(self):
        self.start_with("WinTempFileFolder", "RunHistory")
        d = self.d
        main = d.main.hwnd
        d.post(main, WM_QUERYENDSESSION)
        self.wait_log(TEMP)
        d.post(main, WM_ENDSESSION, 1)
        self.assertEqual(d.wait_ended(), 0)
        self.assertIsNone(d.reg("HKCU", RUN_MRU, "a"))
        self.assertEqual(d.registry_value("Shredder", "txtLevel"), "50")

    def test_is_not_held_up_by_a_message(self):
        d = self.d
        self.start_with("WinTempFileFolder", chkOptions="1")  # the scheduled list is empty
        answer = self.ask()
        self.assertEqual((answer.answered, answer.result, d.boxes()), (True, 1, []))
        self.assertFalse(self.trace.exists())
        d.post(None, WM_ENDSESSION, 1)
        self.assertEqual(d.wait_ended(), 0)


class AnInstallerThatClosesPrograms(SessionEndCase):
    def test_ends_the_program_without_an_erase(self):
        self.start_with("WinTempFileFolder")
        self.assertEqual(self.ask(CLOSE_THIS_PROGRAM).result, 1)
        self.d.post(None, WM_ENDSESSION, 1, CLOSE_THIS_PROGRAM)
        self.assertEqual(self.d.wait_ended(), 0)
        self.assertTrue(self.trace.exists())
        self.assertEqual(self.d.registry_value("Scheduling", "Shutdown"), "1")


class ASessionWhoseEndIsCalledOff(SessionEndCase):
    def call_off(self) -> None:
        self.d.post(None, WM_ENDSESSION, 0)
        self.d.settle("Picture1")

    def test_without_an_erase_leaves_the_erase_to_the_next_end(self):
        d = self.d
        self.start_with("WinTempFileFolder", Shutdown="0")
        self.ask()
        self.call_off()
        d.click("cmdSchedule")
        d.wait_visible("chkShEnable")
        d.set_checked(("chkStartUp", 1))
        self.ask()
        self.assertFalse(self.trace.exists())

    def test_after_an_erase_leaves_a_program_that_runs_and_ends(self):
        self.start_with("WinTempFileFolder")
        self.ask()
        self.call_off()
        self.trace.write_text("x")
        self.press_erase_only()
        self.assertEqual(self.wait_run_over(), [TEMP, *DONE])
        wait_for("the trace to go", lambda: not self.trace.exists())
        self.end()


if __name__ == "__main__":
    unittest.main(verbosity=2)
