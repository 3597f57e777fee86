"""Starting with Windows, and Windows started again after a run: the real thing, in a Windows that is nobody's."""
import unittest

from tests.harness.driver import Desktop, wait_for
from tests.harness.program import OFF_LINE, STARTED, ProgramCase, only

RUN = r"Software\Microsoft\Windows\CurrentVersion\Run"
NAME = "Quellix - 1.0"
STARTS_IT = r"C:\Quellix\Quellix.exe m"
LOAD, SHUT_DOWN, ERASE = ("chkStartUp", 0), ("chkStartUp", 1), ("chkStartUp", 2)


class StartingWithWindows(ProgramCase):
    def setUp(self):
        self.end()
        self.d.reg_delete_key("HKLM", RUN)

    def show_panel(self) -> None:
        self.d.click("cmdSchedule")
        self.d.wait_visible(LOAD)

    def run_value(self) -> str | None:
        value = self.d.reg("HKLM", RUN, NAME)
        return value and value.text

    def test_is_registered_with_the_next_saving_and_no_longer_after_another_one(self):
        d = self.d
        self.start(only("RecentDocument"))
        self.show_panel()
        d.set_checked(LOAD)
        self.assertIsNone(self.run_value())
        self.end()
        self.assertEqual(self.run_value(), STARTS_IT)
        self.restart()
        self.assertTrue(d.checked(LOAD))
        self.show_panel()
        d.set_checked(LOAD, False)
        self.assertEqual(self.run_value(), STARTS_IT)
        self.end()
        self.assertIsNone(self.run_value())
        self.assertEqual(d.registry_section("Startup"), {"LoadStartup": "0", "Startup": "0"})

    def test_is_what_erasing_at_the_start_needs(self):
        d = self.d
        self.start(only("RecentDocument") | {"Startup": {"LoadStartup": "1"}})
        self.show_panel()
        self.assertTrue(d.control(ERASE).own_enabled)
        d.set_checked(ERASE)
        d.set_checked(LOAD, False)
        d.wait_checked(ERASE, False)
        d.wait_enabled(ERASE, False)
        d.set_checked(LOAD)
        d.wait_enabled(ERASE)
        self.assertFalse(d.checked(ERASE))
        self.end()
        self.assertEqual(d.registry_section("Startup"), {"LoadStartup": "1", "Startup": "0"})

    def test_and_its_like_show_the_restore_key_after_two_blanks_and_their_own_status(self):
        d = self.d
        for box in (LOAD, SHUT_DOWN, ERASE):
            self.start(only("RecentDocument") | {"Startup": {"LoadStartup": "1"}})
            self.show_panel()
            self.assertEqual(d.text("lblRestore"), "Restore : Shift + F10")
            d.click(box)
            d.wait_text("lblRestore", "Restore :  Shift + F10")
            d.wait_status("Displaying StartUP")


class ARebootAfterARun(unittest.TestCase):
    """Each in a Windows of its own, in which another program is registered: that it has started tells of the reboot."""

    def reboot_by(self, name: str, press, **settings: str) -> None:
        # A program of the new session may end as soon as it has started, for want of a desktop. What it has written stays.
        witness = r"C:\windows\system32\cmd.exe /c echo started> C:\witness.txt"
        with Desktop(f"reboot-{name}", start=False, settings=only("RecentDocument") | {"Scheduling": settings},
                     registry=OFF_LINE | {rf"HKLM\{RUN}": {"Witness": witness}}) as d:
            written = d.home.c / "witness.txt"
            d.start_program()
            d.wait_status(STARTED)
            d.click("cmdCleenFrame")
            d.wait_visible("cmdClean")
            self.assertFalse(written.exists())
            press(d)
            wait_for("the end of the session", lambda: not d.probe.alive(), seconds=300)
            wait_for("the program that starts after the reboot", written.exists, seconds=300)

    def test_comes_by_the_button_for_it(self):
        self.reboot_by("button", lambda d: d.click("CmdCleanReboot"))

    def test_comes_by_the_box_after_any_run(self):
        self.reboot_by("box", lambda d: d.click("cmdClean"), chkRbt="1")

    def test_comes_after_a_run_of_the_schedule_too(self):
        self.reboot_by("schedule", lambda d: d.post(None, 0x0113, 2),
                       chkRbt="1", chkShEnable="1", ScheduleMinutes="1", ScheduleMin="1")


if __name__ == "__main__":
    unittest.main(verbosity=2)
