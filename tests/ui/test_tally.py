"""What a run did, for those who ask: the tooltip, the window "Quellix-What stayed", and that nothing of it is left behind."""
import os
import shutil
import unittest

from tests.harness.driver import BUILT, PROGRAMS, Desktop, compile_windows_program, wait_for
from tests.harness.program import DONE, STOPPED, ProgramCase, only
from tests.harness.shredder import ShredderCase
from tools import run_job
from tools.traces import other_browsers

TITLE = "Quellix-What stayed"
SECRET = "letter-to-the-bank-41277"
TYPED = r"Software\Microsoft\Internet Explorer\TypedURLs"
TEMP, LIST = "Erasing Windows Temp File/Folder ...", "Erasing Internet Location Bar History..."
READ_CONTROL = "0x20000"
WM_TIMER, SCHEDULER = 0x0113, 2
WM_KEYDOWN, VK_RETURN, HELD_BEFORE = 0x0100, 0x0D, 0x40000001


def prepare(home) -> None:
    for name in ("clipboard_text", "find_in_memory"):
        (home.c / f"{name}.exe").write_bytes(compile_windows_program(PROGRAMS / f"{name}.cpp").read_bytes())
    # Without a console, whose window could cover the program.
    holder = compile_windows_program(PROGRAMS / "hold_file.cpp", "-mwindows", output=BUILT / "hold_file_unseen.exe")
    (home.c / "hold_file.exe").write_bytes(holder.read_bytes())
    locker = compile_windows_program(PROGRAMS / "with_locked_key.cpp", "-I", str(PROGRAMS.parents[2] / "src"), "-ladvapi32")
    (home.c / "with_locked_key.exe").write_bytes(locker.read_bytes())
    lay_out(home)


def lay_out(home) -> None:
    (home.temp / "deep").mkdir(parents=True, exist_ok=True)
    (home.temp / "deep" / f"{SECRET}.txt").write_text("private")
    (home.temp / "one.tmp").write_bytes(b"x" * 1024)
    (home.temp / "two.tmp").write_bytes(b"x" * 1024)


class TallyCase(ProgramCase):
    options = {"prepare": prepare}

    def setUp(self):
        lay_out(self.d.home)

    @classmethod
    def hold(cls) -> None:
        """Holds the file open, and a key in the list of typed addresses, until the desktop is closed."""
        d = cls.d
        lay_out(d.home)
        path = "C:\\" + str((d.home.temp / "deep" / f"{SECRET}.txt").relative_to(d.home.c)).replace("/", "\\")
        d.start(r"C:\with_locked_key.exe", f'"{TYPED}\\kept" {READ_CONTROL} C:\\hold_file.exe "{path}"')
        wait_for("the file to be held", (d.home.c / "held").exists)

    def run_items(self, *keys: str) -> list[str]:
        self.start(only(*keys) | {"Message_key": {"Message": "Dont"}})
        self.press_erase_only()
        return self.wait_run_over()

    def ask(self, line: int):
        """Double-clicks a line of the log."""
        self.d.click_item("lstCln", line, double=True)
        return self.d.wait_window("#32770", TITLE)

    def copied(self, window) -> list[str]:
        self.d.click("cmdCopy", window)
        self.d.settle("cmdCopy", window)
        return self.d.home.run(r"C:\clipboard_text.exe", check=True).stdout.splitlines()


class WhatStayed(TallyCase):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.hold()

    def test_is_told_of_a_line_with_every_name_and_reason(self):
        d = self.d
        os.symlink(d.home.c / "Quellix", d.home.temp / "link")
        log = self.run_items("LocationbarHistory", "WinTempFileFolder")
        self.assertEqual(log[:2], [LIST, TEMP])
        window = self.ask(1)
        self.assertEqual(d.text("lblLine", window), TEMP)
        text = self.copied(window)
        self.assertEqual(text[0], TEMP)
        self.assertRegex(text[1], r"^\d+ files, .*erased; 3 stayed$")
        stayed = dict(line.strip("\t").split("\t") for line in text[2:])
        self.assertEqual({name.rpartition("\\")[2]: why for name, why in stayed.items()},
                         {f"{SECRET}.txt": "in use by another program", "deep": "still holds something",
                          "link": "a link, left alone"})
        d.screenshot(BUILT / "panels/frmStayed.png", window)
        d.click("cmdCloseStayed", window)
        d.wait_no_window("#32770", TITLE)
        window = self.ask(0)
        self.assertEqual(self.copied(window), [LIST, "Nothing erased; 1 stayed", f"\t{TYPED}\tmay not be changed"])

    def test_is_told_by_enter_and_by_the_context_key(self):
        d = self.d
        self.run_items("LocationbarHistory")
        for key in ("Return", "Menu"):
            with self.subTest(key):
                d.click_item("lstCln", 0)
                d.key(key)
                window = d.wait_window("#32770", TITLE)
                self.assertEqual(d.text("lblTally", window), "Nothing erased; 1 stayed")
                d.key("Escape")
                d.wait_no_window("#32770", TITLE)

    def test_is_told_once_while_enter_is_held(self):
        d = self.d
        self.run_items("LocationbarHistory")
        d.click_item("lstCln", 0)
        d.send(d.handle("lstCln"), WM_KEYDOWN, VK_RETURN, HELD_BEFORE)
        self.assertIsNone(d.find_window("#32770", TITLE))
        d.send(d.handle("lstCln"), WM_KEYDOWN, VK_RETURN)
        window = d.wait_window("#32770", TITLE)
        d.post(d.handle("lstStayed", window), WM_KEYDOWN, VK_RETURN, HELD_BEFORE)
        d.post(d.handle("cmdCloseStayed", window), WM_KEYDOWN, VK_RETURN, HELD_BEFORE)
        d.settle("cmdCloseStayed", window)
        self.assertTrue(d.find_window("#32770", TITLE).visible)

    def test_is_told_by_the_right_button(self):
        d = self.d
        self.run_items("LocationbarHistory")
        left, top, right, bottom = d.probe.ask("itemrect", d.handle("lstCln"), 0).rect
        d.right_click_at((left + right) // 2, (top + bottom) // 2)
        self.assertEqual(d.text("lblTally", d.wait_window("#32770", TITLE)), "Nothing erased; 1 stayed")

    def test_may_be_everything(self):
        for trace in self.d.home.temp.iterdir():
            if trace.is_file() or trace.is_symlink():
                trace.unlink()
        self.run_items("WinTempFileFolder")
        self.assertEqual(self.copied(self.ask(0))[:2], [TEMP, "Nothing erased; 2 stayed"])

    def test_is_told_by_names_of_any_length_and_any_character(self):
        folder, shown = self.d.home.temp, []
        for letter in ("п", "表", "ａ"):
            folder /= letter * (240 // len(letter.encode()))
            shown.append(folder.name)
        folder.mkdir(parents=True)
        for number in range(4):
            shown.append(("n" * 120) + str(number))
            folder /= shown[-1]
            folder.mkdir()
        os.symlink(self.d.home.c / "Quellix", folder / "link")
        self.addCleanup(shutil.rmtree, self.d.home.temp / shown[0])
        self.run_items("WinTempFileFolder")
        window = self.ask(0)
        self.assertIn([("C:\\", "...\\link"), "a link, left alone"],
                      [[(path[:3], path[-8:]), why] for path, why in self.d.control("lstStayed", window).lines])
        self.d.screenshot(BUILT / "panels/frmStayed_long.png", window)
        stayed = [line for line in self.copied(window) if shown[-1] in line and "\\link\t" in line]
        self.assertEqual(len(stayed), 1)
        self.assertTrue(stayed[0].endswith("\\".join(["", *shown, "link\ta link, left alone"])), stayed[0])
        self.assertGreater(len(stayed[0]), 400)

    def test_is_summed_up_by_the_last_line(self):
        d = self.d
        self.run_items("LocationbarHistory", "WinTempFileFolder", "RecentDocument")
        window = self.ask(3)
        self.assertRegex(d.text("lblTally", window), r"^\d+ files, .*erased; \d stayed$")
        self.assertEqual([line for line in self.copied(window) if line in (LIST, TEMP)], [LIST, TEMP])

    def test_is_not_shown_any_more_when_the_next_run_starts(self):
        d = self.d
        self.run_items("LocationbarHistory")
        self.ask(0)
        d.click("cmdClean")
        d.wait_no_window("#32770", TITLE)
        self.wait_run_over()
        self.assertEqual(d.text("lblTally", self.ask(0)), "Nothing erased; 1 stayed")

    def test_shows_in_a_tooltip_over_the_line(self):
        d = self.d
        self.run_items("LocationbarHistory")
        line = d.probe.ask("itemrect", d.handle("lstCln"), 0).rect
        d.move((line[0] + line[2]) // 2, (line[1] + line[3]) // 2)
        tip = d.wait_window("tooltips_class32")
        wait_for("the tooltip's text", lambda: d.control(tip).text == "Nothing erased; 1 stayed")
        d.screenshot(BUILT / "panels/tally_tip.png", d.main)


class AStoppedRun(TallyCase):
    COUNT = 20000

    def test_tells_what_it_had_done_by_then(self):
        d = self.d
        folder = d.home.temp / "many"
        folder.mkdir()
        for number in range(self.COUNT):
            (folder / str(number)).touch()
        self.addCleanup(shutil.rmtree, folder, ignore_errors=True)
        self.start(only("WinTempFileFolder") | {"Message_key": {"Message": "Dont"}})
        self.press_erase_only()
        wait_for("the first deletion", lambda: len(os.listdir(folder)) < self.COUNT, every=0.01)
        d.click("cmdStop")
        self.assertEqual(self.wait_run_over(), [TEMP, *STOPPED])
        left = len(os.listdir(folder))
        self.assertGreater(left, 0, "the run was over before it was stopped")
        window = self.ask(0)
        files = 3 + self.COUNT - left - sum(1 for f in d.home.temp.rglob("*") if f.is_file() and f.parent != folder)
        self.assertRegex(d.text("lblTally", window), rf"^{files} files, .*erased; stopped before the end$")


class TheShredder(ShredderCase):
    options = {"prepare": prepare}

    def asked(self) -> list[str]:
        """What is told of the last run."""
        d = self.d
        d.double_click("txtMessage")
        window = d.wait_window("#32770", TITLE)
        d.click("cmdCopy", window)
        d.settle("cmdCopy", window)
        text = d.home.run(r"C:\clipboard_text.exe", check=True).stdout.splitlines()
        d.click("cmdCloseStayed", window)
        d.wait_no_window("#32770", TITLE)
        return text

    def test_tells_of_its_files_over_its_message_line(self):
        d = self.d
        one, held = self.files("one.txt", "held.txt", content="x" * 1024)
        holder = self.hold(held)
        self.fill("lstFileShred", [one, held])
        d.click("cmdshredFiles")
        d.wait_enabled("cmdshredFiles")
        wait_for("the end of the run", lambda: d.text("txtMessage").startswith("1 of 2 files shredded."))
        d.terminate(holder)
        self.assertEqual(self.asked()[1:], ["1 file, 1 KB erased; 1 stayed", f"\t{held}\tin use by another program"])

    def test_tells_of_folders_and_files_of_one_press_together_and_of_no_earlier_one(self):
        d = self.d
        one, _, _ = self.files("one.txt", "folder/two.txt", "folder/deep/three.txt", content="x" * 1024)
        self.fill("lstFileShred", [one])
        self.fill("lstFolder", [r"C:\work\folder", "C:\\windows"])
        d.click("cmdShredAll")
        wait_for("the end of the run", lambda: "1 file shredded." in d.text("txtMessage"))
        told = self.asked()[1:]
        self.assertEqual(told, ["3 files, 2 folders, 3 KB erased; 1 stayed",
                                "\tC:\\windows\trefused: this folder holds folders of programs or of the user"])
        self.fill("lstFileShred", self.files("four.txt", content="x" * 2048))
        d.click("cmdshredFiles")
        wait_for("the end of the run", lambda: d.text("txtMessage") == "1 file shredded.")
        self.assertEqual(self.asked()[1:], ["1 file, 2 KB erased"])


class EveryItem(unittest.TestCase):
    def test_tells_as_many_as_are_counted_from_outside(self):
        with Desktop("tally-everyitem", start=False, prepare=run_job.plant_files, registry=other_browsers.REGISTRY) as desktop:
            before = run_job.lay_out(desktop)
            run_job.erase(desktop)
            after = run_job.count_traces(desktop, "count")
            told = run_job.tally(desktop)
        self.assertEqual(run_job.told_otherwise(before, after, told), [])
        self.assertEqual([family for family, number in told.items() if number == 0], [])


class OutOfSight(TallyCase):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.hold()

    def found(self) -> str:
        return self.d.home.run(r"C:\find_in_memory.exe", str(self.d.pid), SECRET, check=True).stdout

    def test_the_window_goes_with_the_boss_key_and_comes_back(self):
        d = self.d
        self.run_items("WinTempFileFolder")
        self.ask(0)
        self.assertIn("wide", self.found(), "a name of the tally is in the memory and found there")
        with d.held("F10"):
            d.wait_no_window("frmMain")
            self.assertIsNone(d.find_window("#32770", TITLE))
        with d.held("shift", "F10"):
            d.wait_window("#32770", TITLE)

    def go_invisible(self) -> None:
        with self.d.held("ctrl", "h"):
            self.d.wait_no_window("frmMain")
        self.d.wait_no_icon()

    def test_nothing_is_left_in_the_memory_once_the_program_is_invisible(self):
        d = self.d
        self.run_items("WinTempFileFolder")
        self.ask(0)
        self.go_invisible()
        self.assertIsNone(d.find_window("#32770", TITLE, visible=None))
        self.assertEqual(self.found(), "")
        self.come_back()
        self.assertEqual(d.text("lblTally", self.ask(0)), "Not kept: Quellix was invisible")

    def test_a_run_in_plain_sight_is_kept_whoever_brought_the_program_back(self):
        self.run_items("WinTempFileFolder")
        self.go_invisible()
        self.bring_back("F10")
        self.press_erase_only()
        self.wait_run_over()
        self.assertRegex(self.d.text("lblTally", self.ask(0)), "erased; 2 stayed$")

    def run_by_schedule(self) -> None:
        """A run that comes while the program is out of sight."""
        d = self.d
        before = {window.hwnd for window in d.windows() if window.visible}
        d.send(None, WM_TIMER, SCHEDULER)
        wait_for("the end of the run", lambda: self.log() == [TEMP, *DONE] and not d.control("cmdStop").own_enabled)
        self.assertEqual({window.hwnd for window in d.windows() if window.visible} - before, set())

    def start_with_schedule(self) -> None:
        self.start(only("WinTempFileFolder") | {"Message_key": {"Message": "Dont"}, "Scheduling": {
            "chkShEnable": "1", "ScheduleMinutes": "1", "ScheduleMin": "1"}})
        self.show_erase_panel()

    def test_a_scheduled_run_of_an_invisible_program_shows_and_keeps_nothing(self):
        self.start_with_schedule()
        self.go_invisible()
        self.run_by_schedule()
        self.assertEqual(self.found(), "")
        self.come_back()
        self.assertEqual(self.d.text("lblTally", self.ask(0)), "Not kept: Quellix was invisible")

    def test_a_scheduled_run_of_a_hidden_program_is_told_of_when_it_is_back(self):
        d = self.d
        self.start_with_schedule()
        with d.held("F10"):
            d.wait_no_window("frmMain")
        self.run_by_schedule()
        self.bring_back("F10")
        self.assertRegex(d.text("lblTally", self.ask(0)), r"^\d+ files, .*erased; 2 stayed$")


class ARefusedFolder(TallyCase):
    options = {"prepare": prepare, "environment": {"TMP": r"C:\windows", "TEMP": r"C:\windows"}}

    def test_is_named_with_the_reason(self):
        self.run_items("WinTempFileFolder")
        self.assertEqual(self.copied(self.ask(0))[2:],
                         ["\tC:\\windows\\\trefused: this folder holds the Windows folder"])


if __name__ == "__main__":
    unittest.main(verbosity=2)
