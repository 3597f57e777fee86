"""The program is ended from outside, with no chance to save anything, in the middle of a run and while it stores."""
import random
import time
import unittest

from tests.harness.driver import WM_CLOSE, wait_for
from tests.harness.items import ITEMS
from tests.harness.program import ProgramCase, only

TIMES = 10
KILLED = 1  # the exit code that the kill gives; an end of its own has 0
OLD = only(*(item.key for item in ITEMS))["CleanSettings"]
OTHERS = {"Scheduling": {"chkShEnable": "1", "chkRbt": "0", "CHKieclose": "False", "ScheduleMin": "45", "Shutdown": "1"},
          "Startup": {"LoadStartup": "1", "Startup": "0"}, "Shredder": {"txtLevel": "73"}, "Boss": {"bossKey": "115"},
          "Message_key": {"Message": "Dont"}}


class TheProgramIsEnded(ProgramCase):
    def stored(self) -> dict[str, dict[str, str]]:
        return {section: self.d.registry_section(section) for section in ("CleanSettings", *OTHERS)}

    def check_next_start(self) -> None:
        """It comes up, shows what is stored, and stores it again when it ends."""
        before = self.stored()
        self.d.wait_no_icon()
        self.restart()
        shown = {item.key: "1" if self.d.checked(item.box) else "0" for item in ITEMS}
        self.assertEqual(shown, before["CleanSettings"])
        self.assertEqual((self.d.text("txtLevel"), self.d.text("cmbBoss"), self.d.boxes()), ("73", "F4", []))
        self.end()
        after = self.stored()
        for section, values in before.items():
            self.assertEqual(values, {key: after[section].get(key) for key in values})

    def test_in_the_middle_of_a_run_and_loses_nothing(self):
        chance = random.Random(1)
        settings = only("WinTempFileFolder", "RunHistory", "OpenSavedDialoge") | OTHERS | {"Startup": {"LoadStartup": "0"}}
        for number in range(TIMES):
            for file in range(50):
                (self.d.home.temp / f"trace{file}.tmp").write_text("x")
            self.start(settings)
            before = self.stored()
            self.press_erase_only()
            time.sleep(chance.uniform(0, 3))  # the point in the run; nothing is waited for
            self.d.terminate()
            with self.subTest(number):
                self.assertEqual(self.stored(), before)
                self.check_next_start()

    def test_in_the_middle_of_a_run_after_something_was_chosen_and_has_what_was_stored_before(self):
        d = self.d
        self.start(only("WinTempFileFolder", "OpenSavedDialoge") | OTHERS | {"Startup": {"LoadStartup": "0"}})
        before = self.stored()
        d.set_checked(("chkWinsettings", 5))
        with d.time_held():
            self.press_erase_only()
            self.wait_log("Erasing Windows Temp File/Folder ...")
            d.click("cmdSchedule")
            d.wait_visible("chkRbt")
            d.set_checked("chkRbt")
            d.terminate()
        self.assertEqual(self.stored(), before)
        self.check_next_start()
        self.assertEqual((before["Scheduling"]["chkRbt"], self.stored()["Scheduling"]["chkRbt"]), ("0", "0"))

    def test_while_it_stores_and_each_setting_is_the_old_or_the_new_one(self):
        chance = random.Random(2)
        for number in range(TIMES):
            with self.subTest(number):
                self.kill_between_the_flags(chance)
                self.check_next_start()

    def kill_between_the_flags(self, chance: random.Random) -> None:
        """Ends the program while it stores, when some flags are the new ones already and others are not."""
        for _ in range(20):
            key = chance.choice(ITEMS[:-1]).key
            self.start({"CleanSettings": OLD} | OTHERS)
            self.d.click("cmdDeselectAll")
            wait_for("empty boxes", lambda: not any(self.d.checked(item.box) for item in ITEMS))
            with self.d.halted():
                self.d.post(None, WM_CLOSE)
                wait_for(f"a new flag of {key}", lambda key=key: self.let_it_store(key), every=0)
                self.d.terminate()
            flags = self.check_old_or_new()
            if self.d.wait_ended() == KILLED and len(set(flags)) == 2:
                return
        self.fail("no kill came between the first flag and the last")

    def let_it_store(self, key: str) -> bool:
        """Lets the halted program run on by a bit, and tells whether it has stored this flag."""
        self.d.let_go_for(200)
        return self.d.registry_value("CleanSettings", key) != OLD[key]

    def check_old_or_new(self) -> list[str]:
        """No setting is lost or anything else than it was or was to become. Returns the items' flags."""
        stored = self.stored()
        self.assertEqual(stored["CleanSettings"].keys(), OLD.keys())
        self.assertLessEqual(set(stored["CleanSettings"].values()), {"0", "1"})
        for section in OTHERS:
            self.assertLessEqual(OTHERS[section].items(), stored[section].items())
        return list(stored["CleanSettings"].values())


if __name__ == "__main__":
    unittest.main(verbosity=2)
