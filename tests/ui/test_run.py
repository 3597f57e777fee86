"""An erase run as its user sees it: log, progress, status and Stop; what is selected; what is stored of it."""
import os
import unittest

from tests.harness.driver import RUNNING_TITLE, wait_for
from tests.harness.items import ITEMS
from tests.harness.program import CLOSE_BUTTON, DONE, STOPPED, ProgramCase, only

CLIPBOARD, TEMP = "Erasing Clipboard History...", "Erasing Windows Temp File/Folder ..."
REGISTRY, RECENT = "Erasing Erase Registry Fragment...", "Erasing Windows Recent Document list ..."
STEP = 10  # of the bar, an item


class RunCase(ProgramCase):
    def progress(self) -> tuple[int, int, int]:
        bar = self.d.control("PbarClean")
        return bar.min, bar.pos, bar.max

    def flags(self) -> dict[str, str]:
        return self.d.registry_section("CleanSettings")


class ARun(RunCase):
    def test_takes_the_items_in_their_order_and_shows_how_far_it_is(self):
        d = self.d
        self.start(only("OpenSavedDialoge", "WinTempFileFolder"))
        self.assertFalse(d.control("cmdStop").own_enabled)
        with d.time_held():
            self.press_erase_only()
            self.wait_log(TEMP)
            self.assertEqual((self.progress(), d.status_text()), ((0, 10, 20), "Please Wait .."))
            self.assertTrue(d.control("PbarClean").visible and d.control("cmdStop").enabled)
            d.click("cmdClean")  # does nothing while a run is in progress, neither now nor later
            d.pass_a_second()
            self.wait_log(TEMP, CLIPBOARD)
            self.assertEqual((self.progress(), d.control("cmdStop").enabled), ((0, 20, 20), True))
        self.assertEqual(self.wait_run_over(), [TEMP, CLIPBOARD, *DONE])
        d.wait_status("Ready")
        d.settle("cmdClean")
        self.assertEqual((self.log(), self.progress()), ([TEMP, CLIPBOARD, *DONE], (0, 20, 20)))

    def test_is_stopped_in_the_pause_of_its_first_item(self):
        d = self.d
        self.start(only("OpenSavedDialoge", "EraseRegistryFrame", "WinTempFileFolder"))
        with d.time_held():
            self.press_erase_only()
            self.wait_log(TEMP)
            d.click("cmdStop")
            self.assertEqual(self.wait_run_over(), [TEMP, *STOPPED])
        self.assertEqual(self.progress(), (0, 30, 30))
        d.wait_status("Ready")

    def test_pauses_for_a_second_after_an_item(self):
        d = self.d
        self.start(only("RecentDocumentList", "OpenSavedDialoge"))
        with d.time_held():
            self.press_erase_only()
            self.wait_log(RECENT)
            d.settle("cmdStop")  # answered in the pause, not before: this item lets no event run
            d.pass_time(999)
            for _ in range(3):  # the pause looks at the clock each time
                d.settle("cmdStop")
            self.assertEqual(self.log(), [RECENT])
            d.pass_time(1)
            self.wait_log(RECENT, CLIPBOARD)

    def test_can_follow_on_a_stopped_one(self):
        self.start(only("OpenSavedDialoge", "WinTempFileFolder"))
        with self.d.time_held():
            self.press_erase_only()
            self.wait_log(TEMP)
            self.d.click("cmdStop")
            self.wait_run_over()
        self.d.click("cmdClean")
        wait_for("another run", lambda: self.log()[-2:] != STOPPED)
        self.assertEqual(self.wait_run_over(), [TEMP, CLIPBOARD, *DONE])

    def test_answers_its_window_at_once(self):
        self.start(only("RecentDocument"))
        with self.d.time_held():
            self.press_erase_only()
            self.d.wait_enabled("cmdStop")
            self.d.move_mouse_away()
            before = self.d.cpu()
        self.assertLess(self.d.longest_freeze(lambda: self.log()[-1:] == DONE[-1:]), 500)
        self.assertLess(self.d.cpu() - before, 200)

    def test_with_only_the_error_logs_writes_no_line_and_ends_full(self):
        self.start(only("UrlErrorLogs"))
        self.press_erase_only()
        self.assertEqual((self.wait_run_over(), self.progress()), (DONE, (0, 10, 10)))

    def test_with_only_the_recent_files_steps_and_writes_no_line(self):
        self.start(only("RecentDocument"))
        with self.d.time_held():
            self.press_erase_only()
            wait_for("the step", lambda: self.progress() == (0, 10, 10) and self.d.control("cmdStop").enabled)
            self.assertEqual(self.log(), [])
        self.assertEqual(self.wait_run_over(), DONE)

    def test_with_only_the_netscape_cache_writes_two_lines(self):
        self.start(only("NCache"))
        with self.d.time_held():
            self.press_erase_only()
            self.wait_log("Erasing Netscape Cache...", "Erasing Netscape Cookies...")
        self.assertEqual(self.wait_run_over(), ["Erasing Netscape Cache...", "Erasing Netscape Cookies...", *DONE])

    def test_of_everything_writes_every_line_in_its_order(self):
        self.start()
        self.press_erase_only()
        expected = [line for item in ITEMS for line in item.lines]
        wait_for("the end of the run", lambda: self.log()[-1:] == DONE[-1:], 300)
        self.assertEqual(self.wait_run_over(), [*expected, *DONE])
        full = STEP * len(ITEMS)  # of all that is ticked, which is more than what runs
        self.assertEqual(self.progress(), (0, full, full))

    def test_goes_on_when_another_panel_is_looked_at(self):
        d = self.d
        self.start(only("OpenSavedDialoge", "EraseRegistryFrame"))
        with d.time_held():
            self.press_erase_only()
            self.wait_log(CLIPBOARD)
            d.click("cmdHelp")
            d.wait_status("Displaying Displaying Help")
        d.wait_status("Ready")
        self.assertEqual(self.panel_on_show(), ["fraHelp"])
        self.assertEqual(self.wait_run_over(), [CLIPBOARD, REGISTRY, *DONE])

    def test_is_started_by_erase_on_the_main_settings(self):
        d = self.d
        self.start(only("OpenSavedDialoge"))
        with d.time_held():
            d.click("cmdClean_2")
            self.wait_log(CLIPBOARD)
            self.assertEqual((self.panel_on_show(), d.status_text()), (["fraClean"], "Please Wait .."))
            self.assertTrue(d.control("PbarClean").visible)
        self.assertEqual(self.wait_run_over(), [CLIPBOARD, *DONE])

    def test_empties_the_temp_folder_and_leaves_the_folder(self):
        temp, outside = self.d.home.temp, self.d.home.c / "outside"
        outside.mkdir()
        (outside / "keep.txt").write_text("mine")
        (temp / "one/two").mkdir(parents=True)
        for name in ("plain.tmp", "one/two/deep.tmp", "gr\u00fc\u00dfe.txt", "a write protected one.tmp"):
            (temp / name).write_bytes(b"x" * 5000)
        (temp / "a write protected one.tmp").chmod(0o444)  # cannot be deleted, and the others still can
        os.symlink(outside, temp / "link")
        self.start(only("WinTempFileFolder"))
        self.press_erase_only()
        self.assertEqual(self.wait_run_over(), [TEMP, *DONE])
        # Windows removes a link to a folder, Wine cannot; neither goes through it.
        self.assertEqual([entry.name for entry in temp.iterdir() if not entry.is_symlink()],
                         ["a write protected one.tmp"])
        self.assertEqual((outside / "keep.txt").read_text(), "mine")


class AnEmptySelection(RunCase):
    def setUp(self):
        self.start(only())
        self.show_erase_panel()

    def check_message(self, button, text):
        d = self.d
        d.click(button)
        box = d.wait_box(RUNNING_TITLE)
        self.assertEqual((box.text, box.icon, box.buttons, box.owner), (text, "information", ["OK"], d.main.hwnd))
        self.assertFalse(d.main.enabled)
        d.press_button_in_box("OK")
        d.settle("cmdClean")
        self.assertEqual((self.log(), d.control("cmdStop").enabled, d.status_text()), ([], False, "Displaying Erase"))
        self.assertTrue(d.control("PbarClean").visible)
        self.assertIsNone(d.ended(d.pid))

    def test_is_told_by_erase_only(self):
        self.check_message("cmdClean", "No item(s) has been selected")

    def test_is_told_by_erase_and_reboot_in_other_words_and_nothing_reboots(self):
        self.check_message("CmdCleanReboot", "No Item Has Been Selected")

    def test_is_told_by_erase_on_the_main_settings(self):
        self.d.click("cmdDefault")
        self.check_message("cmdClean_2", "No item(s) has been selected")


class TheSelection(RunCase):
    def ticked(self) -> int:
        return sum(self.d.checked(item.box) for item in ITEMS)

    def test_takes_everything_and_nothing_by_two_buttons_and_is_stored(self):
        d = self.d
        self.start(only("Cookies"))
        d.click("cmdSelectAll")
        wait_for("every box to be ticked", lambda: self.ticked() == len(ITEMS))
        self.end()
        self.assertEqual(set(self.flags().values()), {"1"})
        self.restart()
        self.assertEqual(self.ticked(), len(ITEMS))
        d.click("cmdDeselectAll")
        wait_for("no box to be ticked", lambda: self.ticked() == 0)
        self.end()
        self.assertEqual(set(self.flags().values()), {"0"})

    def test_of_one_box_each_is_stored_by_a_click_and_by_the_blank(self):
        self.start(only())
        self.d.click(("chkWinsettings", 3))
        self.d.wait_checked(("chkWinsettings", 3))
        self.d.click(("chkNetsettings", 2))
        self.d.wait_checked(("chkNetsettings", 2))
        self.d.key("Tab")
        self.d.wait_focus(("chkNetsettings", 3))
        self.d.key("space")
        self.d.wait_checked(("chkNetsettings", 3))
        self.end()
        self.assertEqual(self.flags(), only("ScanDisk", "NClearMailHistry", "NCache")["CleanSettings"])

    def test_decides_at_once_what_a_run_does(self):
        self.start(only("OpenSavedDialoge"))
        self.d.set_checked(("chkWinsettings", 8))
        self.d.set_checked(("chkWinsettings", 6), False)
        self.press_erase_only()
        self.assertEqual(self.wait_run_over(), [REGISTRY, *DONE])

    def test_and_its_boxes_have_the_names_of_the_items(self):
        self.start(only())
        self.assertEqual({item.key: self.d.text(item.box) for item in ITEMS}, {item.key: item.caption for item in ITEMS})


class ClosingInTheMiddle(RunCase):
    def test_of_a_run_ends_the_process_and_stores_the_settings(self):
        d = self.d
        self.start(only("OpenSavedDialoge", "EraseRegistryFrame", "RecentDocument"))
        d.set_checked(("chkWinsettings", 7), False)
        with d.time_held():
            self.press_erase_only()
            self.wait_log(CLIPBOARD)
            self.click_title_button(CLOSE_BUTTON)
            self.assertEqual(d.wait_ended(), 0)
        d.wait_no_icon()
        self.assertEqual(self.flags(), only("OpenSavedDialoge", "EraseRegistryFrame")["CleanSettings"])
        self.assertEqual(d.registry_value("Shredder", "txtLevel"), "50")


if __name__ == "__main__":
    unittest.main(verbosity=2)
