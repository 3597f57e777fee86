"""What the question whether the machine is on line asks of the system. Wine knows no patience with one that never answers."""
import struct
import unittest

from tests.harness.driver import RUNNING_TITLE
from tests.harness.program import only
from tests.standin.program_under import UnderWindows

CONNECT_TIMEOUT, CONNECT_RETRIES, SEND_TIMEOUT, RECEIVE_TIMEOUT = 2, 3, 5, 6
# What the README says, and what no request goes without.
SENT = {"User-Agent", "Host", "Accept", "Connection", "Proxy-Connection", "Cache-Control", "Pragma"}
NO_AUTO_REDIRECT, NO_AUTH, NO_COOKIES = 0x00200000, 0x00040000, 0x00080000


class TheProbe(UnderWindows):
    windows = "XP"

    def test_waits_three_seconds_tries_once_and_asks_nobody_else(self):
        with self.on_line():
            self.start_under(only("ClearAutoComplete"), "ShellExecuteW fail 2", "InternetSetOptionA log", "InternetOpenUrlA log")
            self.press_erase_only()
            box = self.d.press_button_in_box("OK")
            self.assertEqual(box.text, "mdFHCCleaner,cmdAutoComplte53File not found")
            self.wait_run_over()
        probe, = self.calls("InternetOpenUrlA")
        options = [call for call in self.calls("InternetSetOptionA") if call.number < probe.number]
        self.assertEqual([call.arguments[1] for call in options],
                         [CONNECT_TIMEOUT, CONNECT_RETRIES, SEND_TIMEOUT, RECEIVE_TIMEOUT])
        self.assertEqual([call.arguments[3] for call in options], [4] * 4)
        values = [call.arguments[2] if isinstance(call.arguments[2], int) else struct.unpack("<I", call.arguments[2][:4])[0]
                  for call in options]
        self.assertEqual(values, [3000, 1, 3000, 3000])
        headers = [line.partition(": ") for line in (self.d.home.c / "headers.txt").read_text().splitlines()]
        self.assertLessEqual({name for name, _, _ in headers}, SENT, headers)
        self.assertEqual([text for name, _, text in headers if name == "User-Agent"], [RUNNING_TITLE])
        self.assertEqual(probe.arguments[4] & (NO_AUTO_REDIRECT | NO_AUTH | NO_COOKIES), NO_AUTO_REDIRECT | NO_AUTH | NO_COOKIES)


if __name__ == "__main__":
    unittest.main(verbosity=2)
