"""The window "Cookies Manager" over a cache that gives its entries slowly: it is still filling when the next key is pressed."""
import contextlib
import unittest

from tests.harness.cookie_window import CURRENT, KEPT, LB_GETCOUNT, TAB_ORDER, TITLE, CookieCase, as_file
from tests.harness.driver import wait_for
from tests.harness.program import CLOSE_BUTTON
from tests.harness.url_cache import cookie_file, plant
from tests.standin.standin import StandInDesktop


class AWindowThatIsBusy(CookieCase):
    """The presses come while it is filling or moving; nothing is lost by them."""
    desktop = StandInDesktop
    current = [cookie_file(f"user@site{number}") for number in range(1, 301)]
    kept = [cookie_file(f"user@kept{number}") for number in range(500)]

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.d.rules = ["FindNextUrlCacheEntryA slow 20"]
        plant(cls.d.home, "empty", "cookie", str(len(cls.current)))

    def count(self, name: str) -> int:
        return self.d.send(self.d.handle(name, self.window), LB_GETCOUNT).result

    def wait_counts(self, current: int, kept: int) -> None:
        wait_for("every line", lambda: (self.count(CURRENT), self.count(KEPT)) == (current, kept), 300)

    def press_while_filling(self, button: str) -> None:
        self.d.click(button, self.window, even_if_disabled=True)
        self.assertLess(self.count(CURRENT), len(self.current), "the window was filled before the press")

    def test_filling_saves_nothing_half(self):
        kept = as_file(self.kept)
        self.show(kept)
        self.press_while_filling("cmdClose")
        self.wait_counts(len(self.current), len(self.kept))
        self.assertEqual(self.file.read_bytes(), kept)
        self.save_and_close()
        self.assertEqual(self.file.read_bytes(), kept)

    def test_has_its_buttons_disabled_while_it_fills_and_the_keyboard_where_it_was_after_that(self):
        self.show(as_file(self.kept))
        buttons = [name for name in TAB_ORDER if name.startswith("cmd")]
        enabled = [self.d.control(name, self.window).enabled for name in buttons]
        self.assertLess(self.count(CURRENT), len(self.current), "the window was filled before it was looked at")
        self.assertEqual(enabled, [False] * len(buttons))
        self.wait_counts(len(self.current), len(self.kept))
        self.wait_ready()
        self.assertEqual([self.d.control(name, self.window).enabled for name in buttons], [True] * len(buttons))
        self.press("cmdRefresh")
        self.wait_ready()
        self.d.wait_focus("cmdRefresh", self.window)

    def test_filling_moves_nothing(self):
        for button in ("cmdAddAll", "cmdRemoveAll"):
            self.show(as_file(self.kept))
            self.press_while_filling(button)
            self.wait_counts(len(self.current), len(self.kept))
            self.d.settle(CURRENT, self.window)
            self.assertEqual((self.count(CURRENT), self.d.items(KEPT, self.window)), (len(self.current), self.kept))
            self.d.key("Escape")
            self.wait_closed()

    def test_moving_saves_only_the_whole(self):
        self.show(as_file(self.kept))
        self.wait_counts(len(self.current), len(self.kept))
        order = self.d.items(CURRENT, self.window)
        self.press("cmdAddAll")
        self.d.click("cmdClose", self.window, even_if_disabled=True)
        with contextlib.suppress(LookupError):  # the press came after the move and closes the window any moment
            self.wait_counts(0, len(self.kept) + len(order))
            self.press("cmdClose")
        self.wait_closed()
        self.assertEqual(self.file.read_bytes(), as_file(self.kept + order))

    def test_can_be_closed_while_it_fills_and_opened_again(self):
        kept = as_file(self.kept)
        self.show(kept)
        self.d.key("Escape")
        self.wait_closed()
        self.assertEqual(self.file.read_bytes(), kept)
        self.show()
        self.wait_counts(len(self.current), len(self.kept))
        self.assertEqual(self.d.items(KEPT, self.window), self.kept)
        self.assertEqual(sorted(self.lists()[0]), sorted(self.current))

    def test_filling_does_not_keep_the_program_from_ending(self):
        self.show(as_file(self.kept))
        self.assertLess(self.count(CURRENT), len(self.current))
        self.click_title_button(CLOSE_BUTTON, self.d.main)
        self.assertEqual(self.d.wait_ended(), 0)
        self.assertEqual(self.file.read_bytes(), as_file(self.kept))


if __name__ == "__main__":
    unittest.main(verbosity=2)
