"""The start of the program: what it shows, what it takes from the store, and stores that are damaged."""
import subprocess
import unittest

from tests.harness.driver import BUILT, RUNNING_TITLE
from tests.harness.items import ITEMS
from tests.harness.part_clock import LIBRARY
from tests.harness.program import CAPTION, STARTED, STORE, ProgramCase, only

REG_SZ = 1
START_BOXES = [("chkStartUp", 0), ("chkStartUp", 1), ("chkStartUp", 2)]
MODES = [("optSchedule", 0), ("optSchedule", 1), ("optSchedule", 2)]
OTHER_BOXES = ["chkShEnable", "chkRbt", "CHKieclose", "chkOptions"]
# What is stored at the end of a session in which nothing was changed.
STORED_DEFAULTS = {
    "CleanSettings": {item.key: "1" for item in ITEMS},
    "Scheduling": {"chkShEnable": "0", "chkRbt": "0", "CHKieclose": "False", "ScheduleSecond": "0", "ScheduleHour": "0",
                   "ScheduleDay": "0", "ScheduleMinutes": "0", "ScheduleMin": "60", "ScheduledTime": "9:00 AM",
                   "Shutdown": "0", "chkOptions": "0"},
    "Startup": {"LoadStartup": "0", "Startup": "0"},
    "Shredder": {"txtLevel": "50"},
    "Name": {"Titile": CAPTION},
}


class StartCase(ProgramCase):
    def chosen_mode(self) -> list[int]:
        return [mode[1] for mode in MODES if self.d.checked(mode)]

    def picker(self) -> tuple[int, int, int]:
        time = self.d.control("dtpTime").time
        return time.hour, time.minute, time.second

    def stored(self) -> dict[str, dict[str, str]]:
        return {section: self.d.registry_section(section) for section in STORED_DEFAULTS}


class AnEmptyStore(StartCase):
    def setUp(self):
        if not self.d.pid:
            self.start()

    def test_the_window_has_its_caption_and_stores_it(self):
        self.assertEqual(self.d.main.title, CAPTION)
        self.assertEqual(self.d.registry_section("Name"), {"Titile": CAPTION})

    def test_the_title_bar_is_that_of_an_active_window(self):
        self.d.settle("fraMain")
        left, top, _, _ = self.d.main.rect
        picture = self.d.screenshot(BUILT / "title.png")
        pixel = subprocess.run(["convert", str(picture), "-format", f"%[pixel:p{{{left + 5},{top + 5}}}]", "info:"],
                               check=True, capture_output=True, text=True).stdout
        self.assertIn("(0,0,128", pixel)

    def test_every_item_is_ticked(self):
        self.assertEqual([item.key for item in ITEMS if not self.d.checked(item.box)], [])

    def test_the_schedule_is_off_and_no_mode_can_be_chosen(self):
        self.assertEqual([box for box in OTHER_BOXES if self.d.checked(box)], [])
        self.assertEqual(self.chosen_mode(), [])
        self.assertEqual([mode for mode in MODES if self.d.control(mode).own_enabled], [])
        self.assertTrue(self.d.control("chkRbt").own_enabled and self.d.control("CHKieclose").own_enabled)

    def test_the_program_neither_loads_nor_erases_by_itself(self):
        self.assertEqual([box for box in START_BOXES if self.d.checked(box)], [])
        self.assertEqual([self.d.control(box).own_enabled for box in START_BOXES], [True, True, False])

    def test_level_boss_key_minutes_and_time_have_their_defaults(self):
        self.assertEqual([self.d.text(name) for name in ("txtLevel", "cmbBoss", "Label1", "txtMinutes")],
                         ["50", "F10", "F10", "60"])
        self.assertEqual(self.d.control("VSUpDown").pos, 60)
        self.assertEqual(self.picker(), (0, 0, 0))

    def test_the_main_settings_are_in_front_and_the_status_bar_says_so(self):
        self.assertEqual(self.panel_on_show(), ["fraMain"])
        self.assertEqual(self.d.status_text(), "Displaying Main Settings")
        self.assertEqual(self.log(), [])

    def test_the_icon_is_there_with_the_caption_as_its_tip(self):
        self.d.wait_icon()
        self.assertEqual(self.d.icon_tip(), CAPTION)

    def test_the_defaults_are_stored_at_the_end(self):
        self.end()
        self.assertEqual(self.stored(), STORED_DEFAULTS)
        self.assertEqual((self.d.registry_section("Boss"), self.d.registry_section("Message_key")), ({}, {}))
        self.restart()


class StoredValues(StartCase):
    def test_each_item_box_shows_and_keeps_its_own_flag(self):
        # Five patterns, so that no two items have the same ones.
        for bit in range(5):
            flags = {item.key: str(number + 1 >> bit & 1) for number, item in enumerate(ITEMS)}
            self.start({"CleanSettings": flags})
            self.assertEqual({item.key: "1" if self.d.checked(item.box) else "0" for item in ITEMS}, flags)
            self.end()
            self.assertEqual(self.d.registry_section("CleanSettings"), flags)

    def test_every_other_setting_is_shown_and_stored_again(self):
        settings = {
            "Scheduling": {"chkShEnable": "1", "chkRbt": "1", "CHKieclose": "True", "ScheduleSecond": "15",
                           "ScheduleHour": "21", "ScheduleDay": "1", "ScheduleMinutes": "34", "ScheduleMin": "7",
                           "ScheduledTime": "8:15 PM", "Shutdown": "1", "chkOptions": "1"},
            "Startup": {"LoadStartup": "1", "Startup": "0"}, "Shredder": {"txtLevel": "73"}, "Boss": {"bossKey": "112"}}
        self.start(settings)
        d = self.d
        self.assertEqual([box for box in OTHER_BOXES if not d.checked(box)], [])
        self.assertEqual([d.checked(box) for box in START_BOXES], [True, True, False])
        self.assertEqual([d.control(box).own_enabled for box in START_BOXES], [True, True, True])
        self.assertEqual([d.text(name) for name in ("txtLevel", "cmbBoss", "txtMinutes")], ["73", "F1", "7"])
        self.assertEqual((self.picker(), self.chosen_mode(), d.control("VSUpDown").pos), ((21, 34, 15), [0], 7))
        self.assertEqual([d.control(mode).own_enabled for mode in MODES], [True, True, True])
        self.end()
        self.assertEqual(self.stored(), STORED_DEFAULTS | {k: v for k, v in settings.items() if k != "Boss"})
        self.assertEqual(d.registry_section("Boss"), {"bossKey": "112"})

    def test_the_mode_is_the_first_of_day_hour_and_minutes_that_is_one(self):
        cases = [("1", "1", "1", [0]), ("1", "0", "1", [1]), ("0", "0", "1", [2]), ("9", "0", "30", [])]
        for hour, day, minutes, mode in cases:
            with self.subTest(hour=hour, day=day, minutes=minutes):
                self.start({"Scheduling": {"ScheduleHour": hour, "ScheduleDay": day, "ScheduleMinutes": minutes}})
                self.assertEqual(self.chosen_mode(), mode)
                self.assertEqual(self.picker(), (int(hour), int(minutes), 0))
                self.assertEqual(self.d.control("dtpTime").own_enabled, mode in ([0], []))

    def start_with_minutes(self, text: str, flag: str) -> tuple[str, int]:
        """Starts with stored minutes and returns what the box and the spin button beside it show."""
        self.start({"Scheduling": {"chkShEnable": "1", "ScheduleMinutes": flag, "ScheduleMin": text}})
        self.assertEqual((self.chosen_mode(), self.d.boxes()), ([2] if flag == "1" else [], []))
        return self.d.text("txtMinutes"), self.d.control("VSUpDown").pos

    def test_minutes_that_are_zero_or_no_number_become_ten(self):
        for text in ("", "abc", "0", "an hour"):
            for flag in ("0", "1"):
                with self.subTest(text=text, flag=flag):
                    self.assertEqual(self.start_with_minutes(text, flag), ("10", 10))

    def test_minutes_that_the_spin_button_refuses_are_shown_as_stored(self):
        for text in ("-5", "99999999999"):
            for flag in ("0", "1"):
                with self.subTest(text=text, flag=flag):
                    self.assertEqual(self.start_with_minutes(text, flag), (text, 1))

    def test_the_hour_on_the_picker_takes_the_place_of_the_hourly_mode(self):
        self.start({"Scheduling": {"chkShEnable": "1", "ScheduleHour": "9"}})
        self.d.click("cmdSchedule")
        self.d.wait_visible(MODES[1])
        self.d.click(MODES[1])
        self.d.wait_checked(MODES[1])
        self.end()
        self.assertEqual(self.d.registry_value("Scheduling", "ScheduleHour"), "9")
        self.restart()
        self.assertEqual(self.chosen_mode(), [])

    def test_a_boss_key_that_is_no_function_key_is_shown_as_f10(self):
        for code, shown in [("123", "F12"), ("117", "F6"), ("111", "F10"), ("65", "F10"), (" 112 ", "F1")]:
            with self.subTest(code=code):
                self.start({"Boss": {"bossKey": code}})
                self.assertEqual(self.d.text("cmbBoss"), shown)

    def test_blanks_around_a_stored_text_do_not_count(self):
        self.start({"CleanSettings": {"RunHistory": "  0 ", "Cookies": " 1"},
                    "Scheduling": {"CHKieclose": " True ", "ScheduleMin": " 45 "}})
        self.assertEqual([self.d.checked(("chkWinsettings", 5)), self.d.checked(("chkIEsettings", 8)),
                          self.d.checked("CHKieclose"), self.d.text("txtMinutes")], [False, True, True, "45"])

    def test_the_level_is_shown_as_a_number_made_text_again(self):
        for stored, shown in [("007", "7"), ("none", "0"), ("", "0")]:
            with self.subTest(stored=stored):
                self.start({"Shredder": {"txtLevel": stored}})
                self.assertEqual(self.d.text("txtLevel"), shown)

    def test_erasing_at_the_start_is_not_kept_without_loading_at_the_start(self):
        self.start({"Startup": {"LoadStartup": "0", "Startup": "1"}})
        self.end()
        self.assertEqual(self.d.registry_section("Startup"), {"LoadStartup": "0", "Startup": "0"})


class AnEraseAtTheStart(ProgramCase):
    def setUp(self):
        self.trace = self.d.home.temp / "trace.tmp"
        self.trace.write_text("x")

    def test_it_runs_before_the_icon_comes_and_before_the_status_text_is_set(self):
        d = self.d
        d.hold_time_of_next_start()
        self.start(only("WinTempFileFolder", "RecentDocument") | {"Startup": {"LoadStartup": "1", "Startup": "1"}},
                   wait_until_started=False, library=LIBRARY)
        self.wait_log("Erasing Windows Temp File/Folder ...")
        self.assertIsNone(d.icon())
        self.assertEqual(d.status_text(), "Please Wait ..")
        self.assertEqual(self.panel_on_show(), ["fraMain"])
        self.assertTrue(d.checked(("chkStartUp", 2)))
        d.release_time()
        d.wait_status(STARTED)
        d.wait_icon()
        self.assertEqual(self.log(), ["Erasing Windows Temp File/Folder ...", "",
                                      "Quellix has successfully erased selected item(s)."])
        self.assertFalse(self.trace.exists())

    def test_there_is_none_when_the_program_does_not_load_at_the_start(self):
        self.start(only("WinTempFileFolder") | {"Startup": {"LoadStartup": "0", "Startup": "1"}})
        self.assertEqual(self.log(), [])
        self.assertTrue(self.trace.exists())
        self.assertFalse(self.d.checked(("chkStartUp", 2)))


class ADamagedStore(StartCase):
    DAMAGES = {"empty": "", "long": "7" * 10000, "no number": "nonsense \u00fc", "out of range": "-99999", "a number": 1}
    SETTINGS = [(section, key) for section, keys in STORED_DEFAULTS.items() if section not in ("CleanSettings", "Name")
                for key in keys] + [("Boss", "bossKey"), ("Message_key", "Message"), ("Name", "Titile")]

    def check_with(self, **sections):
        self.start(sections)
        self.assertEqual((self.d.boxes(), self.panel_on_show(), self.log()), ([], ["fraMain"], []))
        self.end()
        for section, keys in STORED_DEFAULTS.items():
            stored = self.d.reg_list("HKCU", rf"{STORE}\{section}")["values"]
            self.assertEqual((set(stored), {value.type for value in stored.values()}), (set(keys), {REG_SZ}))

    def test_each_damaged_setting_lets_the_window_come_up_and_save(self):
        # One at a time, because the loading may end at the first one. The two other kinds are read as if they were sound.
        for kind in ("long", "no number", "out of range"):
            for section, key in self.SETTINGS:
                with self.subTest(kind, key=key):
                    self.check_with(**{section: {key: self.DAMAGES[kind]}})

    def test_all_settings_empty_or_numbers_let_the_window_come_up_and_save(self):
        for kind in ("empty", "a number"):
            sections: dict = {}
            for section, key in self.SETTINGS:
                sections.setdefault(section, {})[key] = self.DAMAGES[kind]
            with self.subTest(kind):
                self.check_with(**sections)

    def test_all_items_damaged_at_once_let_the_window_come_up_and_save(self):
        for kind, value in self.DAMAGES.items():
            with self.subTest(kind):
                self.check_with(CleanSettings={item.key: value for item in ITEMS})

    def test_several_damaged_settings_let_the_window_come_up_and_save(self):
        for first in self.DAMAGES.values():
            sections: dict = {}
            for number, (section, key) in enumerate(self.SETTINGS):
                values = list(self.DAMAGES.values())
                sections.setdefault(section, {})[key] = values[(values.index(first) + number) % len(values)]
            with self.subTest(**sections):
                self.check_with(**sections)

    def test_a_flag_that_is_damaged_or_no_text_is_not_ticked(self):
        self.start({"CleanSettings": {"Cookies": "yes", "RunHistory": "", "ScanDisk": 0, "RecycleBin": "1"}})
        boxes = {item.key: self.d.checked(item.box) for item in ITEMS}
        self.assertEqual([boxes[key] for key in ("Cookies", "RunHistory", "ScanDisk", "RecycleBin")],
                         [False, False, False, True])

    def test_an_hour_that_the_picker_refuses_ends_the_loading_there_and_loses_no_setting(self):
        self.start({"Scheduling": {"ScheduleHour": "24", "Shutdown": "1"}, "Startup": {"LoadStartup": "1"}})
        self.assertEqual([self.d.checked(box) for box in START_BOXES], [False, False, False])
        self.end()
        self.assertEqual((self.d.registry_value("Startup", "LoadStartup"), self.d.registry_value("Scheduling", "Shutdown")),
                         ("1", "1"))

    def test_what_ends_the_loading_is_reported_on_line_before_the_window_comes(self):
        d = self.d
        self.end()
        self.store({"Scheduling": {"ScheduleMin": "45", "ScheduleHour": "24", "ScheduleDay": "1"}})
        with self.on_line():
            d.start_program(wait_for_window=False)
            box = d.press_button_in_box("OK")
            self.assertEqual((box.title, box.text), (RUNNING_TITLE, "frmMain,LoadGeneralSettings380Invalid property value"))
            d.wait_status(STARTED)
        self.assertEqual((d.boxes(), d.text("txtMinutes"), self.chosen_mode()), ([], "45", []))


if __name__ == "__main__":
    unittest.main(verbosity=2)
