"""What reaches the system and in which order, where the outcome alone does not tell: the poll of the keys and the icon."""
import struct
import unittest

from tests.harness import browsers
from tests.harness.driver import wait_for
from tests.harness.program import CAPTION, only
from tests.standin.program_under import UnderWindows
from tests.standin.standin import Call

LOOK = "GetAsyncKeyState"
LOOKS = [F9, SHIFT, CONTROL, U, H] = [0x78, 0x10, 0x11, 0x55, 0x48]
TWENTIETH = slice(5 * 19, 5 * 20)  # of the looks at the keyboard, the keys that it asks for
ACTIONS = {"SetWindowPlacement", "ShowWindow", "SetForegroundWindow", "Shell_NotifyIconA", "RegisterServiceProcess"}
NIM_ADD, NIM_DELETE = 0, 2
SW_HIDE, SW_SHOWNORMAL, SW_SHOW = 0, 1, 5
ICON_RECORD = "<6I64s"


class TheOrder(UnderWindows):
    """On Windows 98, where going out of sight has most steps."""

    windows = "98"

    @classmethod
    def lay_out(cls, home) -> None:
        browsers.install(home)

    def poll_with(self, *keys: int) -> list[Call]:
        """What is done in the twentieth look at the keyboard, which finds these keys down and no others."""
        # The last one first: a rule counts the calls that no rule before it has decided.
        down = [f"{LOOK} answer 0x8000 only {TWENTIETH.start + 1 + LOOKS.index(key)}" for key in reversed(keys)]
        self.start_under(only("RecentDocument") | {"Boss": {"bossKey": str(F9)}, "Message_key": {"Message": "Dont"}}, *down,
                         *(f"{name} log" for name in sorted(ACTIONS | {LOOK})), wait_until_started=False)
        after = wait_for("the next look at the keyboard", lambda: self.calls(LOOK)[TWENTIETH.stop:])[0]
        first = self.calls(LOOK)[TWENTIETH.start]
        poll = [call for call in self.calls(LOOK, *ACTIONS) if first.number <= call.number < after.number]
        self.assertEqual([call.arguments[0] for call in poll if call.function == LOOK], LOOKS)
        return [call for call in poll if call.function != LOOK]

    def icon(self) -> Call:
        return self.calls("Shell_NotifyIconA")[0]

    def told(self, call: Call) -> tuple:
        """A call in words of this test: function, whom it is about, what is to happen to it."""
        browser = self.d.find_window(browsers.FRAME, visible=None)
        main = struct.unpack_from(ICON_RECORD, self.icon().arguments[1])[1]
        who = {main: "main", browser and browser.hwnd: "browser", self.d.pid: "process"}
        if call.function == "SetWindowPlacement":
            return call.function, who.get(call.arguments[0]), struct.unpack_from("<I", call.arguments[1], 8)[0]
        if call.function == "Shell_NotifyIconA":
            return call.function, call.arguments[0]
        return call.function, who.get(call.arguments[0]), *call.arguments[1:]

    def check(self, calls: list[Call], *expected: tuple) -> None:
        self.assertEqual([self.told(call) for call in calls], list(expected), [str(call) for call in calls])

    def test_of_one_look_at_the_keys_is_hide_then_restore_then_come_back(self):
        browsers.open_windows(self.d, (browsers.FRAME, "Holiday photos"))
        self.check(self.poll_with(F9, SHIFT, CONTROL, U, H),
                   ("SetWindowPlacement", "browser", SW_HIDE), ("ShowWindow", "main", SW_HIDE),
                   ("SetWindowPlacement", "browser", SW_SHOWNORMAL), ("ShowWindow", "main", SW_SHOWNORMAL),
                   ("SetForegroundWindow", "main"), ("ShowWindow", "main", SW_SHOW),
                   ("SetForegroundWindow", "main"), ("Shell_NotifyIconA", NIM_ADD), ("RegisterServiceProcess", "process", 0))

    def test_of_going_invisible_is_task_list_then_icon_then_window(self):
        self.check(self.poll_with(CONTROL, H),
                   ("RegisterServiceProcess", "process", 1), ("Shell_NotifyIconA", NIM_DELETE), ("ShowWindow", "main", SW_HIDE))

    def test_begins_with_an_icon_that_every_shell_takes(self):
        self.start_under(only("RecentDocument"), "Shell_NotifyIconA log")
        added = self.icon()
        record = added.arguments[1]
        size, window, number, flags, callback, icon, tip = struct.unpack(ICON_RECORD, record)
        self.assertEqual((added.arguments[0], added.result, len(record)), (NIM_ADD, 1, 88), added)
        self.assertEqual((size, window, number, flags, callback), (88, self.d.main.hwnd, 1, 7, 0x200), added)
        self.assertNotEqual(icon, 0)
        self.assertEqual(tip.rstrip(b"\0").decode("ascii"), CAPTION)


if __name__ == "__main__":
    unittest.main(verbosity=2)
