"""The manual file and folder shredder: its lists, how they are filled and emptied, and what its three buttons destroy."""
import os
import re
import unittest

from tests.harness.driver import BUILT, wait_for
from tests.harness.part_registry import RUNNING_TITLE
from tests.harness.shredder import EMPTY_FILE_LIST, EMPTY_FOLDER_LIST, ShredderCase, overwritten_size, ready

LONG_NAMES = [f"{'long name ' * 9}{number:02}.txt" for number in range(24)]  # more than the dialog's answer has room for
LB_GETHORIZONTALEXTENT = 0x0193


class TheLists(ShredderCase):
    def shown(self, name: str = "lstFileShred") -> list[str]:
        return self.d.items(name)

    def select(self, name: str, *lines: int, key: str = "ctrl") -> None:
        self.d.click_item(name, lines[0])
        for line in lines[1:]:
            with self.d.held(key):
                self.d.click_item(name, line)
        self.d.wait_control(name, lambda c: len(c.chosen) >= len(lines), "to have its lines chosen")

    # The file dialog

    def test_one_file_is_added_from_the_dialog(self):
        self.files("one, two.txt")
        self.choose_files("cmdFileShred", "one, two.txt")
        self.wait_count("lstFileShred", 1)
        self.assertEqual(self.shown(), [r"C:\work\one, two.txt"])
        self.d.wait_text("FileCount", ready(1))

    def test_several_files_of_a_folder_are_added_behind_those_that_are_there_and_all_are_counted(self):
        self.files("c.txt", "a b.txt", "b.txt", "d.txt")
        self.choose_files("cmdFileShred", "c.txt", "a b.txt", "b.txt")
        self.wait_count("lstFileShred", 3)
        self.assertEqual(set(self.shown()), {r"C:\work\c.txt", r"C:\work\a b.txt", r"C:\work\b.txt"})
        self.d.wait_text("FileCount", ready(3))
        self.choose_files("cmdFileShred", "d.txt")
        self.wait_count("lstFileShred", 4)
        self.assertEqual(self.shown()[3], r"C:\work\d.txt")
        self.d.wait_text("FileCount", ready(4))

    def test_a_file_outside_the_code_page_is_added_from_the_dialog_under_its_own_name(self):
        wide = "ａ.txt"  # the code page makes "a.txt" of it
        self.files("a.txt", wide)
        self.choose_files("cmdFileShred", wide)
        self.wait_count("lstFileShred", 1)
        self.assertEqual(self.shown(), [rf"C:\work\{wide}"])
        self.d.click("cmdshredFiles")
        self.wait_count("lstFileShred", 0)
        self.assertEqual(self.left(), ["a.txt"])

    def test_the_dialog_takes_every_file_and_begins_with_no_name(self):
        self.d.click("cmdFileShred")
        dialog, box = self.d.file_dialog()
        self.assertEqual(self.d.text(box), "")
        self.assertEqual([c.text for c in self.d.controls(dialog, "ComboBox") if c.id == 0x470], ["All Files"])
        self.assertFalse(self.d.main.enabled)
        self.d.key("Escape")
        self.d.wait_no_window("#32770", "Open")
        self.assertEqual((self.count("lstFileShred"), self.d.text("FileCount")), (0, ""))

    def test_an_answer_that_the_dialogs_buffer_cannot_hold_adds_nothing(self):
        self.files(*LONG_NAMES)
        self.choose_files("cmdFileShred", *LONG_NAMES)
        self.d.settle("lstFileShred")
        self.assertEqual((self.d.boxes(), self.count("lstFileShred"), self.d.text("FileCount")), ([], 0, ""))

    def test_and_is_reported_on_line_under_the_tag_of_both_lists(self):
        self.files(*LONG_NAMES)
        with self.on_line():
            for button in ("cmdFileShred", "cmdCustomAdd"):
                self.choose_files(button, *LONG_NAMES)
                box = self.d.press_button_in_box("OK")
                self.assertEqual((box.title, box.text, box.icon), (
                    RUNNING_TITLE, "frmMain,cmdCustomAdd20476The buffer at which the member lpstrFile points is too small", None))
        self.assertEqual((self.count("lstFileShred"), self.count("lstFiles")), (0, 0))

    # Drops

    def test_files_and_folders_dropped_on_either_manual_list_go_where_they_belong(self):
        a, b = self.files("a.txt", "folder/b.txt")
        self.drop("lstFileShred", r"C:\work\folder", a)
        self.wait_count("lstFileShred", 1)
        self.drop("lstFolder", b, r"C:\work")
        self.wait_count("lstFolder", 2)
        self.wait_count("lstFileShred", 2)
        self.assertEqual(self.shown(), [a, b])
        self.assertEqual(self.shown("lstFolder"), [r"C:\work\folder", r"C:\work"])
        self.d.wait_text("FileCount", ready(2))

    # Emptying

    def test_the_buttons_empty_one_list_each(self):
        d = self.d
        self.fill("lstFileShred", self.files("a.txt", "b.txt"))
        self.fill("lstFolder", [r"C:\work"])
        d.click("cmdClear")
        self.wait_count("lstFileShred", 0)
        d.wait_text("FileCount", "")
        d.wait_text("lStat", "Status")
        self.assertEqual((self.bar(), self.count("lstFolder")), (0, 1))
        d.click("cmdFolClear")
        self.wait_count("lstFolder", 0)
        self.assertEqual(self.left(), ["a.txt", "b.txt"])
        d.click("cmdshredFiles")
        self.assertEqual(self.press_ok(), EMPTY_FILE_LIST)
        self.fill("lstFileShred", [r"C:\work\b.txt"])  # the collection behind the list is empty, too
        d.click("cmdshredFiles")
        self.wait_count("lstFileShred", 0)
        self.assertEqual(self.left(), ["a.txt"])

    def test_the_delete_key_takes_the_chosen_lines_off_the_list_and_its_collection(self):
        d = self.d
        paths = self.files("a", "b", "c", "d")
        self.fill("lstFileShred", paths)
        self.select("lstFileShred", 0, 2)
        d.key("Delete")
        self.wait_count("lstFileShred", 2)
        d.wait_text("FileCount", ready(2))
        self.assertEqual(self.shown(), [paths[1], paths[3]])
        d.click("cmdshredFiles")
        self.wait_count("lstFileShred", 0)
        self.assertEqual(self.left(), ["a", "c"])

    def test_shift_chooses_the_lines_between_of_the_folder_list(self):
        self.files(*(f"{name}/x" for name in "abcd"))
        self.fill("lstFolder", [rf"C:\work\{name}" for name in "abcd"])
        self.select("lstFolder", 0, 2, key="shift")
        self.d.key("Delete")
        self.wait_count("lstFolder", 1)
        self.assertEqual(self.shown("lstFolder"), [r"C:\work\d"])
        self.d.key("Delete")  # nothing is chosen any more
        self.d.settle("lstFolder")
        self.assertEqual(self.count("lstFolder"), 1)

    def test_a_path_longer_than_the_list_is_wide_can_be_scrolled_to_its_end(self):
        for name in ("lstFileShred", "lstFolder", "lstFiles"):
            self.files("folder/" + "x" * 200)
            self.fill(name, ["C:\\work\\folder" if name == "lstFolder" else "C:\\work\\folder\\" + "x" * 200])
            hwnd = self.d.handle(name)
            width = self.d.text_size(name).client
            extent = self.d.send(hwnd, LB_GETHORIZONTALEXTENT).result
            self.assertGreater(extent, 0)
            if name != "lstFolder":
                self.assertGreater(extent, width[2] - width[0])
        self.empty_lists()
        self.assertEqual(self.d.send(self.d.handle("lstFiles"), LB_GETHORIZONTALEXTENT).result, 0)

    # The panel

    def test_tab_leads_through_the_panel_from_left_to_right_and_top_to_bottom(self):
        order = ["lstFileShred", "cmdFileShred", "cmdClear", "cmdshredFiles", "lstFolder", "cmdAddFolder", "cmdFolClear",
                 "cmdShredFolder", "txtLev", "cmdShredAll", "txtMessage", "lstFiles", "cmdCustomAdd", "cmdCustomDeleteAll",
                 "chkOptions", "txtLevel"]
        self.d.click(order[0])
        for name in order[1:]:
            self.d.key("Tab")
            self.d.wait_focus(name)

    def test_the_spin_buttons_change_the_level_from_0_to_100(self):
        d = self.d
        for box, spin in (("txtLev", "UpDown1"), ("txtLevel", "UpDown2")):
            left, top, right, bottom = d.control(spin).rect
            d.click_at((left + right) // 2, top + 4)
            d.wait_text(box, "51")
            d.click_at((left + right) // 2, bottom - 4)
            d.wait_text(box, "50")
            self.assertEqual((d.control(spin).min, d.control(spin).max), (0, 100))

    def test_a_picture_with_full_lists_is_kept(self):
        self.fill("lstFileShred", self.files(*(f"Letters of the year {year}.txt" for year in range(1990, 2000))))
        self.fill("lstFolder", [r"C:\Quellix", r"C:\windows"])
        self.fill("lstFiles", self.files("Accounts, old.xls", "notes.txt"))
        self.d.settle("fraShred")
        self.d.screenshot(BUILT / "panels/fraShred filled.png", self.d.main)


class ShreddingFiles(ShredderCase):
    def shred(self, button: str = "cmdshredFiles") -> None:
        self.d.click(button)
        self.wait_count("lstFileShred", 0)

    def test_with_an_empty_list_says_so_and_does_nothing_else(self):
        before = self.d.text("txtMessage")
        self.d.click("cmdshredFiles")
        self.assertEqual(self.press_ok(), EMPTY_FILE_LIST)
        self.assertEqual((self.d.boxes(), self.d.text("txtMessage")), ([], before))

    def test_overwrites_at_the_level_of_the_manual_list_and_deletes(self):
        d = self.d
        paths = self.files("a.txt", "b.txt")
        second = [self.second_name(path) for path in paths]
        d.replace_text("txtLevel", "3")
        d.replace_text("txtLev", "1")
        self.fill("lstFileShred", paths)
        self.shred()
        d.wait_text("txtMessage", "2 files shredded.")
        self.assertEqual(self.left(), [])
        self.assertEqual([file.stat().st_size for file in second], [overwritten_size(1)] * 2)
        self.assertEqual(second[0].read_bytes()[:8], b"\x0A\0\0\0" * 2)
        d.wait_text("FileCount", "")
        d.wait_text("lStat", "Status")
        wait_for("an empty bar", lambda: self.bar() == 0)

    def test_takes_read_only_files_and_leaves_what_is_gone_or_held_without_a_word(self):
        d = self.d
        paths = self.files("read only.txt", "plain.txt", "held.txt")
        (self.work / "read only.txt").chmod(0o444)
        holder = self.hold(paths[2])
        self.fill("lstFileShred", [*paths, r"C:\work\missing.txt"])
        self.shred()
        d.wait_text("txtMessage",
                    r"2 of 4 files shredded. C:\work\held.txt was not shredded (Permission denied), nor was 1 other.")
        self.assertEqual((d.boxes(), self.left(), (self.work / "held.txt").read_text()), ([], ["held.txt"], "content"))
        d.terminate(holder)

    def test_takes_a_file_of_a_name_outside_the_code_page_and_none_that_looks_like_it(self):
        wide = "ａ.txt"  # the code page makes "a.txt" of it
        self.files("a.txt", wide, "Пароли.txt")
        self.fill("lstFileShred", [rf"C:\work\{wide}", r"C:\work\Пароли.txt"])
        self.shred()
        self.d.wait_text("txtMessage", "2 files shredded.")
        self.assertEqual((self.left(), self.d.boxes()), (["a.txt"], []))

    def test_goes_on_at_the_fixed_length_when_the_level_is_no_number(self):
        paths = self.files("a.txt")
        second = self.second_name(paths[0])
        self.d.replace_text("txtLev", "many")
        self.fill("lstFileShred", paths)
        self.shred()
        self.d.replace_text("txtLev", "50")
        self.assertEqual((self.left(), second.stat().st_size), ([], overwritten_size(0)))

    def test_moves_the_bar_and_answers_at_once_while_it_shreds_a_thousand(self):
        d = self.d
        d.replace_text("txtLevel", "7")
        self.fill("lstFileShred", self.many_files(1000))
        d.wait_text("FileCount", ready(1000))
        d.click("cmdshredFiles")
        self.wait_bar_moves()
        bar = d.control("PbarShred")
        self.assertEqual((bar.min, bar.max, d.text("txtMessage")),
                         (0, 1000, "Shredding Files at level 7 may take more time."))
        places = [bar.pos]

        def over() -> bool:
            places.append(self.bar())
            return self.count("lstFileShred") == 0
        self.assertLess(d.longest_freeze(over), 200)
        places = places[:places.index(max(places)) + 1]  # what follows is the bar's reset
        self.assertEqual(places, sorted(places))
        self.assertGreater(len(set(places)), 5)
        d.wait_text("txtMessage", "1000 files shredded.")
        self.assertEqual(self.left(), [])

    def test_lets_no_button_change_anything_meanwhile(self):
        d = self.d
        self.fill("lstFolder", [r"C:\Quellix"])
        self.fill("lstFileShred", self.many_files(3000))
        d.click("cmdshredFiles")
        self.wait_bar_moves()
        for button in ("cmdClear", "cmdshredFiles", "cmdFolClear", "cmdShredFolder", "cmdShredAll", "cmdAddFolder", "cmdFileShred"):
            d.click(button)
        during = self.bar()
        self.wait_count("lstFileShred", 0, 300)
        self.assertGreater(during, 0, "the run was over before the last click")
        d.wait_text("txtMessage", "3000 files shredded.")
        d.settle("Picture1")
        self.assertEqual((self.left(), d.boxes(), d.find_windows("#32770")), ([], [], []))
        self.assertEqual(self.count("lstFolder"), 1)

    def test_goes_on_when_an_erase_run_ends_meanwhile(self):
        d = self.d
        self.fill("lstFileShred", self.many_files(3000))
        d.click("cmdshredFiles")
        self.wait_bar_moves()
        self.press_erase_only()
        self.wait_run_over()
        self.show_shredder()
        self.wait_count("lstFileShred", 0, 300)
        d.wait_text("txtMessage", "3000 files shredded.")
        self.assertEqual(self.left(), [])


class ShreddingFolders(ShredderCase):
    def shred(self, *folders: str, says: str) -> None:
        """Shreds the folders of the list, and what is said at the end matches an expression. Each test has one of its own."""
        if folders:
            self.fill("lstFolder", list(folders))
        self.d.click("cmdShredFolder")
        self.wait_count("lstFolder", 0)
        self.d.wait_text("txtMessage", re.compile(says))

    def test_with_an_empty_list_says_so(self):
        self.d.click("cmdShredFolder")
        self.assertEqual(self.press_ok(), EMPTY_FOLDER_LIST)

    def test_removes_whole_trees_with_read_only_files_and_overwrites_nothing(self):
        paths = self.files("one/a.txt", "one/deep/deeper/b.txt", "one/deep/c.gif", "one/other/d.txt", "two/e, f.txt", "three.txt")
        for path in self.work.rglob("*.txt"):
            path.chmod(0o444)
        second = [self.second_name(path) for path in paths[:5]]
        self.shred(r"C:\work\one", "C:\\work\\two\\", says=r"^2 folders deleted\.$")
        self.assertEqual(self.left(), ["three.txt"])
        self.assertEqual([file.read_text() for file in second], ["content"] * 5)

    def test_counts_no_folder_that_was_not_there(self):
        self.files("one/a.txt", "file.txt")
        self.fill("lstFolder", [r"C:\work\one"])
        (self.work / "one/a.txt").unlink()
        (self.work / "one").rmdir()
        self.shred(says=r"^0 of 1 folder deleted\.$")
        self.assertEqual((self.left(), self.d.boxes()), (["file.txt"], []))

    def test_leaves_what_must_stay_with_everything_in_it(self):
        c = self.d.home.c
        self.files("canaries/a.txt", "canaries/deep/b.txt", "in it/c.txt")
        (c / "canary.txt").write_text("mine")
        os.symlink(self.work / "canaries", self.work / "link")
        os.symlink(self.work / "canaries", self.work / "in it/link")
        before = {place: sum(1 for _ in (c / place).rglob("*")) for place in ("Quellix", "windows", "users", "Program Files")}
        system = "is or holds a folder of Windows, of its programs or of its user and is never shredded."
        why = " ".join([rf"C:\Quellix {system} C:\windows {system} C:\windows\system32 {system}",
                        "C:\\ is the root of a drive and is never shredded.", rf"C:\Program Files {system} C:\users {system}",
                        r"C:\work\link is a link to another folder and is never shredded."])
        # Wine cannot remove the link in the last one.
        self.shred(r"C:\Quellix", r"C:\windows", r"C:\windows\system32", "C:\\", r"C:\Program Files", r"C:\users",
                   r"C:\work\link", r"C:\work\in it", says=rf"^[01] of 8 folders deleted\. {re.escape(why)}$")
        self.assertEqual({place: sum(1 for _ in (c / place).rglob("*")) for place in before}, before)
        self.assertEqual((c / "canary.txt").read_text(), "mine")
        self.assertEqual([name for name in self.left() if name.startswith("canaries/")],
                         ["canaries/a.txt", "canaries/deep", "canaries/deep/b.txt"])
        self.assertFalse((self.work / "in it/c.txt").exists())
        self.assertEqual(self.d.boxes(), [])

    def test_together_with_files_takes_the_folders_first(self):
        d = self.d
        paths = self.files("folder/in it.txt", "file.txt")
        second = self.second_name(paths[0])
        self.fill("lstFileShred", paths)
        self.fill("lstFolder", [r"C:\work\folder"])
        d.click("cmdShredAll")
        self.wait_count("lstFileShred", 0)
        # It was in the folder.
        d.wait_text("txtMessage", "1 folder deleted. 1 of 2 files shredded. "
                                  r"C:\work\folder\in it.txt was not shredded (Path not found).")
        self.assertEqual((self.left(), self.count("lstFolder"), d.boxes()), ([], 0, []))
        self.assertEqual(second.read_text(), "content")  # it went with its folder, which overwrites nothing

    def test_together_with_files_says_of_both_lists_that_they_are_empty_the_folders_first(self):
        self.d.click("cmdShredAll")
        self.assertEqual(self.press_ok(), EMPTY_FOLDER_LIST)
        self.assertEqual(self.press_ok(), EMPTY_FILE_LIST)
        self.assertEqual(self.d.boxes(), [])

    def test_together_with_files_goes_on_to_the_files_when_there_is_no_folder(self):
        self.fill("lstFileShred", self.files("file.txt"))
        self.d.click("cmdShredAll")
        self.assertEqual(self.press_ok(), EMPTY_FOLDER_LIST)
        wait_for("the file to go", lambda: self.left() == [])
        self.wait_count("lstFileShred", 0)


if __name__ == "__main__":
    unittest.main(verbosity=2)
