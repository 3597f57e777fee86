"""What a run did, for those who ask: the tooltip, the window "Quellix-What stayed", and that nothing of it is left behind."""
import os
import unittest

from tests.harness.driver import BUILT, PROGRAMS, compile_windows_program, wait_for
from tests.harness.program import ProgramCase, only

TITLE = "Quellix-What stayed"
SECRET = "letter-to-the-bank-41277"
TYPED = r"Software\Microsoft\Internet Explorer\TypedURLs"
TEMP, LIST = "Erasing Windows Temp File/Folder ...", "Erasing Internet Location Bar History..."
READ_CONTROL = "0x20000"


def prepare(home) -> None:
    for name in ("hold_file", "clipboard_text", "find_in_memory"):
        (home.c / f"{name}.exe").write_bytes(compile_windows_program(PROGRAMS / f"{name}.cpp").read_bytes())
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

    def test_nothing_is_told_any_more_once_the_program_is_invisible(self):
        d = self.d
        self.run_items("WinTempFileFolder")
        self.ask(0)
        with d.held("ctrl", "h"):
            d.wait_no_window("frmMain")
        self.assertIsNone(d.find_window("#32770", TITLE, visible=None))
        with d.held("ctrl", "u"):
            d.wait_window("frmMain")
        self.assertEqual(d.text("lblTally", self.ask(0)), "Not kept: Quellix was invisible")


class ARefusedFolder(TallyCase):
    options = {"prepare": prepare, "environment": {"TMP": r"C:\windows", "TEMP": r"C:\windows"}}

    def test_is_named_with_the_reason(self):
        self.run_items("WinTempFileFolder")
        self.assertEqual(self.copied(self.ask(0))[2:],
                         ["\tC:\\windows\\\trefused: this folder holds the Windows folder"])


if __name__ == "__main__":
    unittest.main(verbosity=2)
