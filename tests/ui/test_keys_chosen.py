"""Keys that do what their user means by them and no more: Tab over options, Ctrl+H in a box to write in, a held Enter."""
import unittest

from tests.harness import browsers
from tests.harness.driver import wait_for
from tests.harness.program import only
from tests.harness.rigged import RiggedCase

OPTIONS = [("optSchedule", 0), ("optSchedule", 1), ("optSchedule", 2)]


class KeysCase(RiggedCase):
    options = {"prepare": browsers.install}

    def wait_panel(self, frame: str) -> None:
        wait_for(f"the panel {frame}", lambda: self.panel_on_show() == [frame])


class AnOptionThatGetsTheKeyboard(KeysCase):
    def setUp(self):
        self.rig("clicks-at-focus")

    def start_at_the_schedule(self, **scheduling: str) -> None:
        self.start(only("RecentDocument") | {"Scheduling": {"chkShEnable": "1"} | scheduling})
        self.d.click("cmdSchedule")
        self.wait_panel("fraScheduleManager")
        self.d.click("CHKieclose")
        self.d.wait_focus("CHKieclose")
        self.d.key("Tab")

    def chosen(self) -> list[int]:
        return [index for name, index in OPTIONS if self.d.checked((name, index))]

    def stored_modes(self) -> list[str | None]:
        self.end()
        return [self.d.registry_value("Scheduling", key) for key in ("ScheduleDay", "ScheduleHour", "ScheduleMinutes")]

    def test_by_tab_is_not_chosen(self):
        d = self.d
        self.start_at_the_schedule()
        d.wait_focus(OPTIONS[0])
        d.settle("fraScheduleManager")
        self.assertEqual(self.chosen(), [])
        d.key("Tab")
        d.wait_focus("dtpTime")
        d.key("shift+Tab")
        d.wait_focus(OPTIONS[0])
        self.assertEqual(self.chosen(), [])
        self.assertEqual(self.stored_modes()[0], "0")

    def test_by_tab_leaves_the_chosen_one_chosen(self):
        self.start_at_the_schedule(ScheduleHour="1")
        self.d.wait_focus(OPTIONS[1])
        self.assertEqual(self.chosen(), [1])

    def test_is_chosen_by_the_blank_by_an_arrow_and_by_a_click(self):
        d = self.d
        self.start_at_the_schedule()
        d.wait_focus(OPTIONS[0])
        d.key("space")
        d.wait_checked(OPTIONS[0])
        d.key("Down")
        d.wait_checked(OPTIONS[1])
        d.wait_enabled("dtpTime", False)
        d.click(OPTIONS[2])
        d.wait_checked(OPTIONS[2])
        self.assertEqual(self.chosen(), [2])
        d.wait_enabled("VSUpDown")


class CtrlHInALevelBox(KeysCase):
    def test_deletes_nothing(self):
        d = self.d
        self.rig("backspaces")
        self.start(only("RecentDocument") | {"Message_key": {"Message": "Dont"}})
        browsers.keep_keyboard(d)
        d.second_instance()
        self.wait_in_front()
        d.click("cmdSecureDelk")
        d.replace_text("txtLev", "73")
        with d.held("ctrl", "h"):
            d.wait_no_window("frmMain")
        with d.held("ctrl", "u"):
            self.wait_in_front()
        d.settle("fraShred")
        self.assertEqual((d.text("txtLev"), self.calls("Edit")), ("73", []))


class AHeldEnter(KeysCase):
    def test_opens_one_page(self):
        d = self.d
        self.rig()
        self.start(only("RecentDocument"))
        d.click("cmdHelp")
        d.wait_focus("cmdHelp")
        d.key("Tab")
        d.wait_focus("Label16")
        with d.held("Return"):
            self.wait_call("ShellExecute")
            browsers.let_polls_pass(d, 40)
        self.assertEqual(self.calls("ShellExecute"), [r"C:\Quellix\manual\index.html"])


if __name__ == "__main__":
    unittest.main(verbosity=2)
