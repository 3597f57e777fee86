"""What the boss key owes to the browsers that it hides: it waits for none that hangs, and leaves none hidden at the end."""
import shutil
import unittest

from tests.harness import browsers
from tests.harness.driver import BUILT, PROGRAMS, compile_windows_program, wait_for
from tests.harness.program import only
from tests.harness.rigged import RiggedCase

ASYNC = 4


def install(home) -> None:
    browsers.install(home)
    library = compile_windows_program(PROGRAMS / "hung_browser.cpp", "-shared", output=BUILT / "hung_browser.dll")
    shutil.copy2(library, home.c / "hung_browser.dll")


class BrowsersCase(RiggedCase):
    options = {"prepare": install}

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        browsers.keep_keyboard(cls.d)

    def setUp(self):
        self.rig()
        self.start(only("OpenSavedDialoge") | {"Boss": {"bossKey": "120"}})
        browsers.open_in_program(self.d)

    def press(self, seconds: float = 120) -> None:
        with self.d.held("F9"):
            self.d.wait_no_window("frmMain", seconds=seconds)

    def press_with_shift(self) -> None:
        self.bring_back("F9")

    def placements(self) -> list[tuple[str, str]]:
        """How browsers were placed so far: show command and flags, without repetitions of a held key."""
        found: list[tuple[str, str]] = []
        for call in self.calls("SetWindowPlacement"):
            _, _, show, _, flags = call.split()
            if (show, flags) not in found:
                found.append((show, flags))
        return found


class WhereWindowsAreOnlyAsked(BrowsersCase):
    options = {"prepare": install, "windows": "win98"}

    def test_a_browser_that_hangs_stops_neither_the_key_nor_the_way_back(self):
        d = self.d
        d.load_into_program(r"C:\hung_browser.dll")
        d.wait_window(browsers.FRAME, "Hung")
        self.press(5)
        wait_for("every browser but the one that hangs out of sight",
                 lambda: browsers.states(d) == dict.fromkeys(browsers.STATES, "hidden") | {"Hung": "normal"})
        self.press_with_shift()
        wait_for("the browsers as they were",
                 lambda: browsers.states(d) == browsers.STATES | {"Hung": "normal"})

    def test_nothing_is_asked_of_the_system_that_it_does_not_know(self):
        self.press()
        self.assertEqual({int(flags) & ASYNC for _, flags in self.placements()}, {0})


class WhereWindowsArePlacedWithoutWaiting(BrowsersCase):
    options = {"prepare": install, "windows": "winxp"}

    def test_every_browser_is_hidden_and_brought_back_so(self):
        self.press()
        self.press_with_shift()
        self.assertEqual({int(flags) & ASYNC for _, flags in self.placements()}, {ASYNC})

    def test_browsers_come_back_when_the_program_ends(self):
        self.press()
        self.d.click_icon()  # which brings back the window alone
        self.wait_in_front()
        self.assertEqual({show for show, _ in self.placements()}, {"0"})
        self.end()
        self.assertEqual({show for show, _ in self.placements()}, {"0", "1", "2", "3"})

    def test_browsers_that_are_back_are_left_alone_at_the_end(self):
        self.press()
        self.press_with_shift()
        before = len(self.calls("SetWindowPlacement"))
        self.end()
        self.assertEqual(len(self.calls("SetWindowPlacement")), before)


if __name__ == "__main__":
    unittest.main(verbosity=2)
