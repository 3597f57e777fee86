"""A slow disk and others that hang: Stop, the boss key and the end of the session are answered all the same.

The log tells what was done between two moments. A count of calls is the same on a machine that is busy with other work.
"""
import unittest

from tests.harness import browsers
from tests.harness.driver import wait_for
from tests.harness.program import DONE, STOPPED, only
from tests.standin.program_under import DELETE_ON_CLOSE, UnderWindows
from tests.standin.standin import Call

DISK = ("CreateFileW", "DeleteFileW", "GetFileAttributesW", "RemoveDirectoryW", "WriteFile", "FindFirstFileW", "FindNextFileW",
        "NtOpenFile", "NtQueryDirectoryFile", "NtSetInformationFile")
SLOW = 50
FILES = 400
TOUCHING = ("DeleteFileW", "NtOpenFile", "RemoveDirectoryW")
AT_ONCE = 200 // SLOW  # calls of a slow disk in the time in which a window is to answer
WM_QUERYENDSESSION, WM_ENDSESSION = 0x0011, 0x0016
KEY_POLL = "GetAsyncKeyState"


def makes_go(call: Call) -> bool:
    """Whether it deletes one of the files, by its path or by its name in the open folder."""
    if not any("trace" in text for text in call.texts):
        return False
    return call.function != "NtOpenFile" or bool(call.arguments[5] & DELETE_ON_CLOSE)


class ASlowDisk(UnderWindows):
    windows = "XP"

    @classmethod
    def lay_out(cls, home) -> None:
        browsers.install(home)

    def setUp(self):
        super().setUp()
        for number in range(FILES):
            (self.d.home.temp / f"trace{number}.tmp").write_text("x")

    def begin_run(self, **boss: str) -> None:
        slow = [f"{name} slow {SLOW}" for name in DISK]
        self.start_under(only("WinTempFileFolder") | {"Boss": boss}, *slow, f"{KEY_POLL} log")
        self.press_erase_only()
        self.wait_deletions(3)

    def gone(self) -> int:
        return sum(makes_go(call) for call in self.calls(*TOUCHING))

    def wait_deletions(self, count: int) -> None:
        wait_for(f"{count} deletions", lambda: self.gone() >= count)

    def longest_row_of_deletions_between_looks(self) -> int:
        """Of looks at the keyboard; other window events are worked off as often."""
        longest = row = 0
        for call in self.calls(*TOUCHING, KEY_POLL):
            row = 0 if call.function == KEY_POLL else row + makes_go(call)
            longest = max(longest, row)
        return longest

    def test_lets_events_run_between_its_calls(self):
        self.begin_run()
        self.wait_deletions(40)
        self.assertLessEqual(self.longest_row_of_deletions_between_looks(), AT_ONCE)

    def test_is_stopped_after_the_call_in_hand(self):
        d = self.d
        self.begin_run()
        with d.halted():
            before = self.gone()
            d.post(d.handle("cmdStop"), 0x00F5)  # a click, for which the program is waiting when it goes on
        wait_for("the end of the run", lambda: self.log()[-2:] == STOPPED)
        self.assertLessEqual(self.gone() - before, AT_ONCE)

    def test_does_not_keep_the_boss_key_waiting(self):
        d = self.d
        self.begin_run(bossKey="120")
        before = self.gone()
        with d.held("F9"):
            d.wait_no_window("frmMain")
        looks = [call for call in self.calls(KEY_POLL, *TOUCHING, "ShowWindow")]
        self.assertLessEqual(self.longest_row_of_deletions_between_looks(), AT_ONCE, looks[-20:])
        self.wait_deletions(before + 3)  # and the run goes on

    def test_does_not_keep_the_end_of_the_session_waiting(self):
        d = self.d
        self.begin_run()
        with d.halted():
            before = self.gone()
            d.post(None, WM_QUERYENDSESSION)
            d.post(None, WM_ENDSESSION, 1)
        self.assertEqual(d.wait_ended(), 0)
        self.assertLessEqual(self.gone() - before, AT_ONCE)
        self.assertEqual(d.registry_value("CleanSettings", "WinTempFileFolder"), "1")


class AServerThatHangs(UnderWindows):
    """It takes the question whether the machine is on line and never answers, until the system's patience is over."""

    windows = "XP"

    @classmethod
    def lay_out(cls, home) -> None:
        browsers.install(home)
        (home.c / "Quellix/iea.exe").unlink()  # an item that fails and has something to report

    def test_is_asked_once_in_a_run_and_the_run_ends(self):
        timed_out = 12002
        self.start_under(only("ClearAutoComplete", "RecentDocument"), "InternetOpenUrlA slow 3000",
                         f"InternetOpenUrlA fail {timed_out}")
        self.press_erase_only()
        wait_for("the end of the run", lambda: self.log()[-2:] == DONE, 60)
        self.assertEqual([call.error for call in self.calls("InternetOpenUrlA")], [timed_out])
        self.assertEqual(self.d.boxes(), [])


if __name__ == "__main__":
    unittest.main(verbosity=2)
