"""The scheduled shredder: its list, the file that keeps it, and its part in an erase run."""
import contextlib
import shutil
import unittest

from tests.harness.driver import WM_CLOSE, wait_for
from tests.harness.part_registry import RUNNING_TITLE
from tests.harness.program import DONE, STARTED, STOPPED, only
from tests.harness.shredder import EMPTY_COLLECTION, LIST_FILE, ShredderCase, overwritten_size, ready

ITEM = "Erasing Windows Temp File/Folder ..."
SCHEDULED = only("WinTempFileFolder") | {"Scheduling": {"chkOptions": "1"}, "Shredder": {"txtLevel": "1"}}
MANY = 5000
TOO_LARGE = (16 << 20) + 1


class ScheduledCase(ShredderCase):
    def setUp(self):
        super().setUp()
        if self.list_file.is_dir():
            self.list_file.rmdir()
        self.list_file.unlink(missing_ok=True)

    def saved(self) -> list[str]:
        """The lines of the list's file, each of which has to end with CR LF."""
        *lines, rest = self.list_file.read_bytes().decode("cp1252").split("\r\n")
        self.assertEqual(rest, "")
        return lines

    def wait_saved(self, paths: list[str]) -> None:
        """The program shows a changed list before it saves it, and puts a new file in the place of the old one."""
        def is_saved() -> bool:
            with contextlib.suppress(FileNotFoundError):
                return self.saved() == paths
            return False
        wait_for(f"the list's file to hold {paths[:3]} ...", is_saved)

    def shown(self) -> list[str]:
        return self.d.items("lstFiles")

    def enable(self, enabled: bool = True) -> None:
        self.d.set_checked("chkOptions", enabled)


class TheScheduledList(ScheduledCase):
    def test_takes_files_from_the_dialog_counts_them_and_saves_each_on_a_line(self):
        self.files("c.txt", "a, b.txt", "a.txt")
        self.choose_files("cmdCustomAdd", "c.txt", "a, b.txt")
        self.wait_count("lstFiles", 2)
        self.d.wait_text("FileCount", ready(2))
        self.choose_files("cmdCustomAdd", "a.txt")
        self.wait_count("lstFiles", 3)
        self.d.wait_text("FileCount", ready(3))
        self.assertEqual(set(self.shown()), {r"C:\work\c.txt", r"C:\work\a, b.txt", r"C:\work\a.txt"})
        self.wait_saved(self.shown())
        self.assertEqual(self.count("lstFileShred"), 0)

    def test_takes_dropped_files_and_no_folders(self):
        a, b = self.files("a.txt", "folder/b.txt")
        self.drop("lstFiles", a, r"C:\work\folder", b)
        self.wait_count("lstFiles", 2)
        self.wait_saved([a, b])
        self.assertEqual((self.shown(), self.count("lstFolder")), ([a, b], 0))

    def test_is_kept_beside_a_program_whose_folder_the_code_page_cannot_hold(self):
        paths = self.files("a.txt")
        self.end()
        elsewhere = self.d.home.c / "Уборка"
        shutil.copytree(self.d.home.c / "Quellix", elsewhere)
        self.d.start_program(folder=r"C:\Уборка")
        self.d.wait_status(STARTED)
        self.show_shredder()
        self.fill("lstFiles", paths)
        file = elsewhere / LIST_FILE
        wait_for("the list beside the program", lambda: file.exists() and file.read_text("cp1252").splitlines() == paths)
        self.d.click("cmdCustomDeleteAll")
        self.wait_count("lstFiles", 0)
        self.end()
        self.restart()

    def test_loses_its_chosen_lines_by_the_delete_key_in_its_file_too(self):
        d = self.d
        paths = self.files("a.txt", "b.txt", "c.txt", "d.txt")
        self.fill("lstFiles", paths)
        d.click_item("lstFiles", 1)
        with d.held("shift"):
            d.click_item("lstFiles", 2)
        d.key("Delete")
        self.wait_count("lstFiles", 2)
        self.wait_saved([paths[0], paths[3]])
        self.assertEqual(self.shown(), [paths[0], paths[3]])
        d.wait_text("FileCount", ready(2))

    def test_is_cleared_with_its_file(self):
        d = self.d
        paths = self.files("a.txt")
        self.fill("lstFiles", paths)
        self.wait_saved(paths)
        self.list_file.chmod(0o444)
        d.click("cmdCustomDeleteAll")
        self.wait_count("lstFiles", 0)
        wait_for("the list's file to go", lambda: not self.list_file.exists())
        d.wait_text("FileCount", "")
        d.wait_text("lStat", "Status")
        self.assertEqual(self.left(), ["a.txt"])

    def test_says_when_it_cannot_be_saved_and_reports_it_on_line(self):
        d = self.d
        blocked = self.list_file.with_name(LIST_FILE + ".tmp")  # a folder of that name keeps the new list from being written
        blocked.mkdir()
        self.addCleanup(lambda: blocked.exists() and blocked.rmdir())
        message = "The scheduled list could not be saved (Permission denied)."
        paths = self.files("a.txt", "b.txt")
        self.fill("lstFiles", paths)
        d.wait_text("txtMessage", message)
        with self.on_line():
            self.choose_files("cmdCustomAdd", "b.txt")
            box = d.press_button_in_box("OK")
            self.assertEqual((box.title, box.text), (RUNNING_TITLE, "frmMain,cmdCustomAdd70Permission denied"))
            d.post(None, WM_CLOSE)
            box = d.press_button_in_box("OK")
            self.assertEqual(box.text, "frmMain,SaveEraseSettings70Permission denied")
            self.assertEqual(d.wait_ended(), 0)
        self.assertFalse(self.list_file.exists())
        blocked.rmdir()
        self.restart()

    def test_reports_on_line_when_it_cannot_be_saved_after_a_run(self):
        d = self.d
        self.start(SCHEDULED)
        self.show_shredder()
        paths = self.files("a.txt")
        self.fill("lstFiles", paths)
        self.wait_saved(paths)
        blocked = self.list_file.with_name(LIST_FILE + ".tmp")
        blocked.mkdir()
        self.addCleanup(lambda: blocked.exists() and blocked.rmdir())
        with self.on_line():
            self.press_erase_only()
            box = d.press_button_in_box("OK")
            self.assertEqual((box.title, box.text), (RUNNING_TITLE, "frmMain,ShredDelete70Permission denied"))
            self.assertEqual(self.wait_run_over()[-2:], DONE)
        self.assertEqual(self.left(), [])
        blocked.rmdir()

    def test_counts_its_files_again_after_a_dialog_that_was_cancelled(self):
        d = self.d
        self.fill("lstFiles", self.files("a.txt", "b.txt"))
        self.fill("lstFileShred", self.files("c.txt"))
        self.assertEqual(d.text("FileCount"), ready(1))
        d.click("cmdCustomAdd")
        d.cancel_file_dialog()
        d.wait_no_window("#32770", "Open")
        d.wait_text("FileCount", ready(2))

    def test_is_cleared_without_a_word_when_there_is_no_file(self):
        d = self.d
        paths = self.files("a.txt")
        self.fill("lstFiles", paths)
        self.wait_saved(paths)
        self.list_file.unlink()
        for _ in range(2):
            d.click("cmdCustomDeleteAll")
            self.wait_count("lstFiles", 0)
            d.settle("Picture1")
            self.assertEqual(d.boxes(), [])


class Restarting(ScheduledCase):
    def test_shows_the_list_again_as_it_was(self):
        paths = self.files("c.txt", "a, b.txt", "a.txt")
        self.fill("lstFiles", paths)
        self.end()
        self.assertEqual(self.saved(), paths)
        self.restart()
        self.show_shredder()
        self.assertEqual((self.shown(), self.d.text("FileCount")), (paths, ""))

    def test_shows_what_another_program_wrote_into_the_file(self):
        self.end()
        self.list_file.write_bytes(b"C:\\one.txt\nC:\\two, three.txt\r\n\r\nC:\\without an end.txt")
        self.restart()
        self.show_shredder()
        self.assertEqual(self.shown(), [r"C:\one.txt", r"C:\two, three.txt", "", r"C:\without an end.txt"])

    def test_starts_with_an_empty_list_when_a_folder_has_that_name(self):
        self.end()
        self.list_file.mkdir()
        self.restart()
        self.show_shredder()
        self.assertEqual((self.shown(), self.d.boxes()), ([], []))

    def test_says_that_a_file_over_16_megabytes_is_not_loaded_and_leaves_it(self):
        d = self.d
        self.end()
        with self.list_file.open("wb") as file:
            file.truncate(TOO_LARGE)
        d.start_program(wait_for_window=False)
        box = d.press_button_in_box("OK")
        self.assertEqual((box.text, box.icon), ("The list of files to shred is larger than 16 MB. Quellix does not load it.", "warning"))
        d.wait_program_shown()
        d.wait_status(STARTED)
        self.show_shredder()
        self.assertEqual(self.shown(), [])
        self.end()
        self.assertEqual(self.list_file.stat().st_size, TOO_LARGE)
        self.list_file.unlink()
        self.restart()

    def test_leaves_the_manual_lists_empty(self):
        self.fill("lstFileShred", self.files("a.txt"))
        self.fill("lstFolder", [r"C:\work"])
        self.end()
        self.restart()
        self.show_shredder()
        self.assertEqual((self.count("lstFileShred"), self.count("lstFolder")), (0, 0))

    def test_keeps_five_thousand_lines(self):
        paths = [rf"C:\work\some folder\file number {number:04}.txt" for number in range(MANY)]
        self.fill("lstFiles", paths)
        self.d.wait_text("FileCount", ready(MANY))
        self.wait_saved(paths)
        self.end()
        self.restart()
        self.show_shredder()
        self.assertEqual(self.shown(), paths)

    def test_keeps_the_box_and_the_level(self):
        self.enable()
        self.d.replace_text("txtLevel", "7")
        self.end()
        self.restart()
        self.show_shredder()
        self.assertEqual((self.d.checked("chkOptions"), self.d.text("txtLevel"), self.d.text("txtLev")), (True, "7", "50"))


class AnEraseRun(ScheduledCase):
    def setUp(self):
        self.end()  # and saves its list
        self.list_file.unlink(missing_ok=True)
        shutil.rmtree(self.work, ignore_errors=True)
        self.work.mkdir()
        self.start(SCHEDULED)
        self.show_shredder()

    def test_shreds_the_list_before_its_first_item_at_the_lists_own_level(self):
        d = self.d
        paths = self.files("a, b.txt", "read only.txt")
        (self.work / "read only.txt").chmod(0o444)
        second = [self.second_name(path) for path in paths]
        d.replace_text("txtLev", "3")
        self.fill("lstFiles", [*paths, r"C:\work\missing.txt"])
        with d.time_held():
            self.press_erase_only()
            self.wait_log(ITEM)
            self.assertEqual(self.left(), [])
        self.assertEqual(self.wait_run_over(), [ITEM, *DONE])
        self.assertEqual([file.stat().st_size for file in second], [overwritten_size(1)] * 2)
        self.show_shredder()
        self.assertEqual((self.shown(), d.text("FileCount"), self.bar(), d.boxes()), ([], "", 0, []))

    def test_shreds_nothing_while_the_box_is_not_checked(self):
        self.enable(False)
        paths = self.files("a.txt")
        self.fill("lstFiles", paths)
        self.press_erase_only()
        self.wait_run_over()
        self.assertEqual((self.left(), self.shown(), self.d.boxes()), (["a.txt"], paths, []))

    def test_after_a_restart_says_that_there_is_no_file_and_goes_on(self):
        paths = self.files("a.txt")
        self.fill("lstFiles", paths)
        self.end()
        self.restart()
        self.press_erase_only()
        self.assertEqual(self.press_ok(), EMPTY_COLLECTION)
        self.assertEqual(self.wait_run_over(), [ITEM, *DONE])
        self.assertEqual((self.left(), self.shown()), (["a.txt"], paths))

        self.show_shredder()
        added = self.files("b.txt")
        self.fill("lstFiles", [*added])
        self.press_erase_only()
        self.wait_run_over()
        self.assertEqual(self.left(), ["a.txt"])  # only what was added since is in the collection
        self.assertEqual(self.shown(), paths)  # and what was not shredded stays

    def test_keeps_what_it_cannot_shred_on_the_list_and_in_its_file(self):
        d = self.d
        held, free = self.files("held.txt", "free.txt")
        not_in = r"Q:\not in\b.txt"
        holder = self.hold(held)
        self.fill("lstFiles", [held, not_in, free])
        self.press_erase_only()
        self.wait_run_over()
        self.show_shredder()
        self.assertEqual((self.left(), self.shown(), d.text("FileCount")), (["held.txt"], [held, not_in], ready(2)))
        self.assertEqual(d.text("txtMessage"),
                         rf"1 of 3 files shredded. {held} was not shredded (Permission denied), nor was 1 other.")
        self.wait_saved([held, not_in])
        d.terminate(holder)
        self.press_erase_only()
        self.wait_run_over()
        self.assertEqual((self.left(), self.shown()), ([], [not_in]))
        self.end()
        self.restart()
        self.show_shredder()
        self.assertEqual(self.shown(), [not_in])

    def test_that_its_window_ends_has_what_was_not_shredded_in_the_lists_file(self):
        d = self.d
        d.replace_text("txtLevel", "100")
        self.fill("lstFiles", self.many_files(3000))
        self.press_erase_only()
        self.wait_bar_moves()
        d.post(None, WM_CLOSE)
        self.assertEqual(d.wait_ended(), 0)
        left = self.left()
        self.assertTrue(0 < len(left) < 3000, f"{len(left)} files are left")
        self.assertEqual(self.saved(), [rf"C:\work\{name}" for name in left])
        self.restart()

    def test_is_stopped_behind_the_file_in_hand_and_the_others_stay_on_the_list(self):
        d = self.d
        d.replace_text("txtLevel", "100")
        self.fill("lstFiles", self.many_files(3000))
        self.press_erase_only()
        self.wait_bar_moves()
        d.click("cmdStop")
        self.assertEqual(self.wait_run_over(), STOPPED)
        left = self.left()
        self.assertGreater(len(left), 0, "the run was over before it was stopped")
        self.assertLess(len(left), 3000)
        self.assertEqual(self.shown(), [rf"C:\work\{name}" for name in left])
        self.assertEqual(d.text("FileCount"), ready(len(left)))

        self.show_shredder()
        d.replace_text("txtLevel", "0")
        self.press_erase_only()
        self.assertEqual(self.wait_run_over(), [ITEM, *DONE])
        self.assertEqual((self.left(), self.shown()), ([], []))

    def test_lets_no_button_change_its_list_meanwhile(self):
        d = self.d
        d.replace_text("txtLevel", "100")
        self.fill("lstFiles", self.many_files(3000))
        left, top, _, _ = d.control("lstFiles").rect  # a list that is asked for its lines would hold the run up
        self.press_erase_only()
        self.wait_bar_moves()
        self.show_shredder()
        d.click("cmdCustomDeleteAll")
        d.click("cmdCustomAdd")
        d.click_at(left + 20, top + 10)
        d.key("Delete")
        self.assertGreater(self.bar(), 0, "the run was over before the last key")
        self.assertEqual((self.count("lstFiles"), d.find_windows("#32770"), self.list_file.exists()), (3000, [], True))
        self.wait_count("lstFiles", 0, 300)
        self.assertEqual(self.left(), [])
        d.wait_enabled("cmdStop", False)


if __name__ == "__main__":
    unittest.main(verbosity=2)
