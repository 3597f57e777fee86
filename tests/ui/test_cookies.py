"""The window "Cookies Manager": the cookies there are, those to keep, and the file that they are kept in."""
import itertools
import subprocess
import unittest

from tests.harness.cookie_window import (CAPTIONS, COOKIES, CURRENT, GONE, KEPT, LB_GETHORIZONTALEXTENT, ON_SHOW, PLANTED,
                                         TAB_ORDER, TITLE, WS_HSCROLL, CookieCase, as_file)
from tests.harness.driver import BUILT, View, wait_for
from tests.harness.panel_table import PANELS
from tests.harness.program import CLOSE_BUTTON, DONE, STARTED, only
from tests.harness.url_cache import cookie_file, counts, plant


class OpeningTheWindow(CookieCase):
    def test_shows_the_cookies_and_no_other_entry_and_says_so(self):
        self.open()
        self.d.wait_status(ON_SHOW)
        self.assertEqual(self.window.title, TITLE)
        self.assertEqual(self.window.owner, self.d.main.hwnd)
        self.assertFalse(self.file.exists())

    def test_shows_a_kept_cookie_on_the_right_only(self):
        self.open([COOKIES[2], COOKIES[0]])

    def test_takes_neither_case_nor_blanks_of_a_kept_name_into_account(self):
        line = f"  {COOKIES[1].upper()}  "
        self.show(as_file([line]))
        self.wait_lists([COOKIES[0], *COOKIES[2:]], [line])
        self.save_and_close()
        self.assertEqual(self.file.read_bytes(), as_file([line]))

    def test_keeps_a_cookie_that_is_gone_on_the_list_and_in_the_file(self):
        self.open([GONE, COOKIES[0]])
        self.save_and_close()
        self.assertEqual(self.file.read_bytes(), as_file([GONE, COOKIES[0]]))

    def test_shows_a_name_with_a_comma_as_two(self):
        self.show(as_file(["alice@a,b.txt", COOKIES[0]]))
        self.wait_lists(COOKIES[1:], ["alice@a", "b.txt", COOKIES[0]])

    def test_selects_the_last_kept_line(self):
        for kept in ([GONE], [COOKIES[1], GONE, COOKIES[0]], []):
            self.open(kept)
            self.assertEqual(self.d.control(KEPT, self.window).selected, len(kept) - 1)
            self.d.key("Escape")
            self.wait_closed()

    def test_stands_over_the_main_window_with_the_keyboard_on_the_current_cookies(self):
        self.open()
        wait_for("the window in front", lambda: self.d.foreground().hwnd == self.window.hwnd)
        self.d.wait_focus(CURRENT, self.window)
        (left, top, right, bottom), main = self.window.rect, self.d.main.rect
        self.assertLess(abs(left + right - main[0] - main[2]), 4)
        self.assertLess(abs(top + bottom - main[1] - main[3]), 4)
        self.assertEqual(self.lists()[0], self.d.control(CURRENT, self.window)["items"])
        self.assertEqual([self.d.control(name, self.window).selected for name in (CURRENT, KEPT)], [-1, -1])

    def test_again_brings_the_open_one_to_the_front_with_what_is_in_it(self):
        d = self.d
        self.open()
        self.press("cmdAddAll")
        wait_for("the cookies on the right", lambda: len(self.lists()[1]) == len(COOKIES))
        before = self.lists()
        self.activate_main_window()
        d.wait_focus("cmdCookiesOption")
        d.key("space")
        wait_for("the window in front", lambda: d.foreground().hwnd == self.window.hwnd)
        d.settle(CURRENT, self.window)
        self.assertEqual(self.lists(), before)
        self.assertEqual([w.hwnd for w in d.find_windows("#32770", TITLE)], [self.window.hwnd])
        d.wait_status(ON_SHOW)

    def test_leaves_the_main_window_usable(self):
        d = self.d
        self.open()
        self.drag_down(200)
        box = ("chkIEsettings", 0)
        d.click(box)
        d.wait_checked(box)
        d.click("cmdCleenFrame")
        d.wait_visible("cmdClean")
        d.wait_status("Displaying Erase")
        self.assertTrue(d.find_window("#32770", TITLE))
        d.click("cmdDefault")
        d.wait_checked(box)
        d.click(box)
        d.wait_checked(box, False)
        self.check_unchanged(COOKIES, [])

    def test_is_possible_again_after_the_main_window_was_minimised(self):
        d = self.d
        self.open([GONE])
        self.press("cmdAddAll")
        wait_for("the cookies on the right", lambda: len(self.lists()[1]) == len(COOKIES) + 1)
        before = self.lists()
        self.minimise()
        d.click_icon()
        self.wait_in_front()
        if not d.find_window("#32770", TITLE):
            d.click("cmdCookiesOption")
        self.window = d.wait_window("#32770", TITLE)
        self.assertEqual(self.lists(), before)
        self.save_and_close()
        self.assertEqual(self.file.read_bytes(), as_file(before[1]))


class TheButtons(CookieCase):
    def test_add_moves_the_selected_cookie_behind_the_kept_ones(self):
        self.open([GONE])
        for number, name in enumerate([COOKIES[1], COOKIES[3]]):
            self.select(CURRENT, name)
            self.press("cmdAdd")
            self.wait_lists([c for c in COOKIES if c not in [COOKIES[1], COOKIES[3]][:number + 1]],
                            [GONE, COOKIES[1], COOKIES[3]][:number + 2])

    def test_remove_moves_the_selected_cookie_behind_the_current_ones(self):
        self.open([COOKIES[0], GONE])
        before = self.lists()[0]
        self.select(KEPT, GONE)
        self.press("cmdRemove")
        self.wait_lists([*COOKIES[1:], GONE], [COOKIES[0]])
        self.assertEqual(self.lists()[0], [*before, GONE])

    def test_add_and_remove_do_nothing_while_nothing_is_selected(self):
        self.open([GONE])
        self.press("cmdAdd")
        self.check_unchanged(COOKIES, [GONE])
        self.d.key("Escape")
        self.wait_closed()
        self.open([])
        self.press("cmdRemove")
        self.check_unchanged(COOKIES, [])

    def test_add_takes_no_notice_of_what_is_selected_on_the_other_side(self):
        self.open([GONE])
        self.select(KEPT, GONE)
        self.press("cmdAdd")
        self.check_unchanged(COOKIES, [GONE])
        self.select(CURRENT, COOKIES[0])
        self.press("cmdRemove")
        self.wait_lists([*COOKIES, GONE], [])

    def test_add_again_takes_the_next_one_until_none_is_left(self):
        self.open()
        order = self.d.items(CURRENT, self.window)
        self.select(CURRENT, order[1])
        for moved in ([1], [1, 2], [1, 2, 3], [1, 2, 3, 0]):
            self.press("cmdAdd")
            self.wait_lists([name for at, name in enumerate(order) if at not in moved], [order[at] for at in moved])
        self.press("cmdAdd")
        self.check_unchanged([], [order[at] for at in (1, 2, 3, 0)])

    def test_add_all_and_remove_all_move_every_line_in_its_order(self):
        self.open([GONE])
        order = self.d.items(CURRENT, self.window)
        self.press("cmdAddAll")
        self.wait_lists([], [GONE, *order])
        self.press("cmdRemoveAll")
        self.wait_lists([GONE, *order], [])
        self.assertEqual(self.lists()[0], [GONE, *order])

    def test_add_all_and_remove_all_do_nothing_to_an_empty_list(self):
        self.open()
        self.press("cmdRemoveAll")
        self.check_unchanged(COOKIES, [])

    def test_a_double_click_on_a_line_moves_it(self):
        self.open([GONE])
        self.d.click_item(CURRENT, COOKIES[2], self.window, double=True)
        self.wait_lists([COOKIES[0], COOKIES[1], COOKIES[3]], [GONE, COOKIES[2]])
        self.d.click_item(KEPT, GONE, self.window, double=True)
        self.wait_lists([COOKIES[0], COOKIES[1], COOKIES[3], GONE], [COOKIES[2]])

    def test_a_double_click_on_add_or_remove_moves_one_line(self):
        self.open([GONE, "other"])
        order = self.lists()[0]
        self.select(CURRENT, order[0])
        self.d.double_click("cmdAdd", self.window)
        self.wait_lists(order[1:], [GONE, "other", order[0]])
        self.check_unchanged(order[1:], [GONE, "other", order[0]])
        self.select(KEPT, GONE)
        self.d.double_click("cmdRemove", self.window)
        self.wait_lists([*order[1:], GONE], ["other", order[0]])
        self.check_unchanged([*order[1:], GONE], ["other", order[0]])

    def test_refresh_drops_what_was_not_saved_and_shows_what_came_meanwhile(self):
        self.open([COOKIES[0]])
        self.press("cmdRemoveAll")
        self.wait_lists(COOKIES, [])
        plant(self.d.home, "cookie", "bob@new.example")
        self.addCleanup(self.replant)
        self.press("cmdRefresh")
        self.wait_lists([*COOKIES[1:], cookie_file("bob@new.example")], [COOKIES[0]])
        self.d.wait_status(ON_SHOW)

    def replant(self):
        plant(self.d.home, "empty", "content", "3", "visited", "2",
              *itertools.chain(*(("cookie", name) for name in PLANTED)))

    def test_refresh_reads_the_file_anew(self):
        self.open([COOKIES[0]])
        self.file.write_bytes(as_file([COOKIES[3], GONE]))
        self.press("cmdRefresh")
        self.wait_lists(COOKIES[:3], [COOKIES[3], GONE])


class TheKeyboard(CookieCase):
    def test_goes_from_the_current_cookies_by_the_buttons_to_the_keep_list_and_back(self):
        self.open()
        self.d.wait_focus(CURRENT, self.window)
        for key, order in (("Tab", [*TAB_ORDER[1:], CURRENT]), ("shift+Tab", [*reversed(TAB_ORDER)])):
            for name in order:
                self.d.key(key)
                self.d.wait_focus(name, self.window)

    def test_selects_a_line_and_presses_a_button(self):
        self.open()
        order = self.d.items(CURRENT, self.window)
        self.d.wait_focus(CURRENT, self.window)
        self.d.key("Down")
        self.d.wait_control(CURRENT, lambda c: c.selected >= 0, "to have a line", self.window)
        chosen = self.d.control(CURRENT, self.window).selected
        self.d.key("Tab")
        self.d.wait_focus("cmdAdd", self.window)
        self.d.key("space")
        self.wait_lists([name for name in order if name != order[chosen]], [order[chosen]])
        self.d.key("Tab")
        self.d.wait_focus("cmdAddAll", self.window)
        self.d.key("Return")
        wait_for("every cookie on the right", lambda: len(self.lists()[1]) == len(COOKIES))

    def test_presses_nothing_by_enter_in_a_list(self):
        self.open()
        self.select(CURRENT, COOKIES[0])
        self.d.key("Return")
        self.check_unchanged(COOKIES, [])
        self.assertTrue(self.d.find_window("#32770", TITLE))


class Closing(CookieCase):
    def check_not_saved(self, close) -> None:
        for kept in ([COOKIES[0], GONE], None):
            with self.subTest(kept=kept):
                if kept is None:
                    self.file.unlink()
                self.open(kept)
                self.press("cmdAddAll")
                wait_for("the cookies on the right", lambda: not self.lists()[0])
                close()
                self.wait_closed()
                if kept is None:
                    self.assertFalse(self.file.exists())
                else:
                    self.assertEqual(self.file.read_bytes(), as_file(kept))

    def test_by_the_frame_button_saves_nothing(self):
        self.check_not_saved(lambda: self.click_title_button(CLOSE_BUTTON, self.window))

    def test_by_escape_saves_nothing(self):
        self.check_not_saved(lambda: self.d.key("Escape"))

    def test_by_alt_f4_saves_nothing_and_closes_this_window_only(self):
        self.check_not_saved(lambda: self.d.key("alt+F4"))
        self.assertIsNone(self.d.ended(self.d.pid))

    def test_by_save_and_close_writes_the_keep_list_line_by_line(self):
        self.open()
        self.select(CURRENT, COOKIES[3])
        self.press("cmdAdd")
        self.wait_lists(COOKIES[:3], [COOKIES[3]])
        self.select(CURRENT, COOKIES[0])
        self.press("cmdAdd")
        self.wait_lists(COOKIES[1:3], [COOKIES[3], COOKIES[0]])
        self.save_and_close()
        self.assertEqual(self.file.read_bytes(), as_file([COOKIES[3], COOKIES[0]]))

    def test_and_opening_again_shows_what_was_saved(self):
        self.open([GONE])
        self.select(CURRENT, COOKIES[2])
        self.press("cmdAdd")
        self.wait_lists([COOKIES[0], COOKIES[1], COOKIES[3]], [GONE, COOKIES[2]])
        self.save_and_close()
        self.show()
        self.wait_lists([COOKIES[0], COOKIES[1], COOKIES[3]], [GONE, COOKIES[2]])

    def test_by_save_and_close_with_nothing_to_keep_writes_an_empty_file(self):
        self.open([COOKIES[0]])
        self.press("cmdRemoveAll")
        self.wait_lists(COOKIES, [])
        self.save_and_close()
        self.assertEqual(self.file.read_bytes(), b"")

    def test_gives_the_main_window_the_keyboard_back(self):
        self.open()
        self.d.key("Escape")
        self.wait_closed()
        self.wait_in_front()

    def test_names_the_panel_that_is_on_show_in_the_status_bar(self):
        for panel in PANELS:
            with self.subTest(panel=panel.title):
                self.d.click("cmdDefault")
                self.d.wait_status(STARTED)
                self.open()
                self.d.wait_status(ON_SHOW)
                self.drag_down(400)
                self.d.click(panel.button)
                self.d.wait_status(panel.status)
                self.click_title_button(CLOSE_BUTTON, self.window)
                self.wait_closed(f"Displaying {panel.title}")
        self.d.click("cmdDefault")

    def test_the_main_window_with_it_ends_the_program_and_saves_nothing(self):
        self.open([GONE])
        self.press("cmdAddAll")
        wait_for("the cookies on the right", lambda: not self.lists()[0])
        self.click_title_button(CLOSE_BUTTON, self.d.main)
        self.assertEqual(self.d.wait_ended(), 0)
        self.assertEqual(self.d.find_windows("#32770", TITLE), [])
        self.assertEqual(self.file.read_bytes(), as_file([GONE]))


class AFileThatGivesTrouble(CookieCase):
    def add_one_and_save(self) -> None:
        self.select(CURRENT, COOKIES[0])
        self.press("cmdAdd")
        self.wait_lists(COOKIES[1:], [*self.lists()[1][:-1], COOKIES[0]])
        self.save_and_close()
        self.assertEqual(self.d.boxes(), [])

    def test_because_another_program_holds_it_is_an_empty_list_and_stays_whole(self):
        kept = as_file([COOKIES[0], GONE])
        self.file.write_bytes(kept)
        holder = self.hold_file()
        self.addCleanup(self.d.terminate, holder)
        self.show()
        self.wait_lists(COOKIES, [])
        self.add_one_and_save()
        self.assertEqual(self.file.read_bytes(), kept)

    def open_while_held(self) -> bytes:
        """Opens the window over a list that another program holds meanwhile, and gives what is in it."""
        kept = as_file([COOKIES[0], GONE])
        self.file.write_bytes(kept)
        holder = self.hold_file()
        self.show()
        self.wait_lists(COOKIES, [])
        self.d.terminate(holder)
        return kept

    def test_because_another_program_held_it_is_not_emptied_by_saving(self):
        kept = self.open_while_held()
        self.save_and_close()
        self.assertEqual(self.file.read_bytes(), kept)

    def test_because_another_program_held_it_is_not_replaced_by_what_was_added_since(self):
        kept = self.open_while_held()
        self.add_one_and_save()
        self.assertEqual(self.file.read_bytes(), kept)

    def test_because_it_is_read_only_is_read_and_stays_whole(self):
        kept = as_file([GONE])
        self.file.write_bytes(kept)
        self.file.chmod(0o444)
        self.show()
        self.wait_lists(COOKIES, [GONE])
        self.add_one_and_save()
        self.assertEqual(self.file.read_bytes(), kept)

    def test_because_it_is_over_16_megabytes_is_not_loaded_with_a_word_and_stays_whole(self):
        size = (16 << 20) + 1
        with self.file.open("wb") as file:
            file.truncate(size)
        self.d.click("cmdCookiesOption")
        box = self.d.press_button_in_box("OK")
        self.assertEqual((box.text, box.icon), ("The list of cookies to keep is larger than 16 MB. Quellix does not load it.", "warning"))
        self.window = self.d.wait_window("#32770", TITLE)
        self.wait_lists(COOKIES, [])
        self.add_one_and_save()
        self.assertEqual(self.file.stat().st_size, size)

    def test_because_it_is_a_folder_is_an_empty_list_and_stays(self):
        self.file.mkdir()
        self.show()
        self.wait_lists(COOKIES, [])
        self.add_one_and_save()
        self.assertTrue(self.file.is_dir())

    def test_because_it_is_damaged_is_shown_as_far_as_it_can_be_read(self):
        for damage, shown in ((b"\0\0\xff\xfe\n\r\n\"", ["\xff\xfe", "", '"']), (b"one\n\0\0\0two", ["one", "two"]),
                              (bytes(range(14, 256)).replace(b",", b""), None), (b",,,", [""] * 3)):
            with self.subTest(damage=damage[:20]):
                self.show(damage)
                wait_for("the cookies", lambda: len(self.lists()[0]) == len(COOKIES))
                if shown is not None:
                    self.assertEqual(self.lists()[1], shown)
                self.d.key("Escape")
                self.wait_closed()
                self.assertEqual(self.file.read_bytes(), damage)

    def test_because_a_line_is_a_megabyte_long_is_written_back_as_it_was(self):
        kept = as_file(["x" * (1 << 20), GONE])
        self.show(kept)
        wait_for("the cookies", lambda: len(self.lists()[0]) == len(COOKIES))
        self.press("cmdRemoveAll")
        wait_for("every line on the left", lambda: not self.lists()[1])
        self.d.click_item(CURRENT, 0, self.window)
        self.press("cmdRefresh")
        wait_for("the list again", lambda: len(self.lists()[0]) == len(COOKIES))
        self.save_and_close()
        self.assertEqual(self.file.read_bytes(), kept)

    def test_because_its_fields_are_a_megabyte_of_quotes_does_not_hold_the_window_up(self):
        self.show(b'"",' * (1 << 10) + b'"' + b'"a,' * (1 << 18))
        self.click_title_button(CLOSE_BUTTON, self.window)
        self.wait_closed()


class AnErase(CookieCase):
    def test_takes_the_kept_cookies_too(self):
        d = self.d
        self.start(only("Cookies"))
        self.open(COOKIES[:2])
        self.drag_down(200)
        self.press_erase_only()
        wait_for("the end of the run", lambda: self.log()[-2:] == DONE)
        self.assertEqual(counts(d.home), {"content": 0, "cookie": 0, "visited": 2})
        self.check_unchanged(COOKIES[2:], COOKIES[:2])
        self.press("cmdRefresh")
        self.wait_lists([], COOKIES[:2])
        self.press("cmdClose")
        self.wait_closed("Displaying  Erase")
        self.assertEqual(self.file.read_bytes(), as_file(COOKIES[:2]))


class Looks(CookieCase):
    def children(self) -> list[View]:
        return [c for c in self.d.controls(self.window) if c.parent == self.window.hwnd]

    def test_has_the_labels_and_buttons_with_their_captions(self):
        self.open()
        self.assertEqual({name: self.d.text(name, self.window) for name in CAPTIONS}, CAPTIONS)

    def test_cuts_no_text_off_and_lays_nothing_over_another(self):
        self.open()
        for control in self.children():
            if control.text:
                size = self.d.text_size(control, window=self.window)
                left, top, right, bottom = size.client
                self.assertLessEqual(size.width + 8 * (control["class"] == "Button"), right - left, control.text)
                self.assertLessEqual(size.height, bottom - top, control.text)
        for one, other in itertools.combinations(self.children(), 2):
            a, b = one.rect, other.rect
            self.assertFalse(a[0] < b[2] and b[0] < a[2] and a[1] < b[3] and b[1] < a[3], (one.id, other.id))

    def test_fits_the_smallest_screen(self):
        self.open()
        left, top, right, bottom = self.window.rect
        self.assertLessEqual((right - left, bottom - top), (640, 452))

    def test_is_kept_in_a_picture(self):
        self.open([COOKIES[1], GONE])
        self.select(CURRENT, COOKIES[0])
        self.d.settle(CURRENT, self.window)
        self.d.screenshot(BUILT / "cookies.png", self.window)

    def picture(self) -> bytes:
        self.d.settle(KEPT, self.window)
        path = self.d.screenshot(BUILT / "cookies-scrolled.png", self.window)
        return subprocess.run(["convert", str(path), "rgb:-"], check=True, capture_output=True).stdout

    def test_scrolls_a_long_name_sideways(self):
        long = "alice@" + "w" * 300 + "[1].txt"
        self.open([GONE])
        self.assertFalse(self.d.control(KEPT, self.window).style & WS_HSCROLL)
        self.d.key("Escape")
        self.wait_closed()
        self.open([long])
        kept = self.d.control(KEPT, self.window)
        self.assertTrue(kept.style & WS_HSCROLL)
        self.assertGreater(self.d.send(kept, LB_GETHORIZONTALEXTENT).result, 300 * 5)
        before = self.picture()
        self.d.click_at(kept.rect[2] - 10, kept.rect[3] - 10)  # the arrow at the end of the scroll bar
        wait_for("the list to scroll", lambda: self.picture() != before)
        self.select(KEPT, long)
        self.press("cmdRemove")
        self.wait_lists([*COOKIES, long], [])
        self.assertTrue(self.d.control(CURRENT, self.window).style & WS_HSCROLL)


if __name__ == "__main__":
    unittest.main(verbosity=2)
