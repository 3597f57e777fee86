"""The five panels: how they are chosen, what is on them, that all of it fits and that the keyboard reaches all of it."""
import itertools
import unittest

from tests.harness.driver import BUILT, View, wait_for
from tests.harness.panel_table import PANELS, Panel
from tests.harness.program import ProgramCase, only

GROUP_BOX, OPTION, OWNER_DRAWN, CHECK_BOX = 7, 9, 11, 3
SCREEN, TASKBAR = (640, 480), 28
BOX_AND_GAP = 17  # a check box's square and the blank after it
BORDERS = 8  # on both sides together: the edges and the frame that shows the keyboard


def button_kind(c: View) -> int:
    return c.style & 0xF if c["class"] == "Button" else -1


def overlap(one: View, other: View) -> bool:
    a, b = one.rect, other.rect
    return a[0] < b[2] and b[0] < a[2] and a[1] < b[3] and b[1] < a[3]


def inside(one: View, outer: View) -> bool:
    a, b = one.rect, outer.rect
    return b[0] <= a[0] and b[1] <= a[1] and a[2] <= b[2] and a[3] <= b[3]


class PanelCase(ProgramCase):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls().start(only("RecentDocument") | {"Scheduling": {"chkShEnable": "1"}, "Startup": {"LoadStartup": "1"}})

    def show(self, panel: Panel) -> None:
        self.d.click(panel.button)
        self.wait_panel(panel)

    def wait_panel(self, panel: Panel) -> None:
        wait_for(f"the panel {panel.title}; it is {self.panel_on_show()}, {self.d.status_text()!r}",
                 lambda: self.panel_on_show() == [panel.frame] and self.d.status_text() == panel.status)

    def children(self, panel: Panel) -> list[View]:
        """The controls of a panel, without the parts that a control of Windows is made of."""
        parent = self.d.control(panel.frame).parent
        return [c for c in self.d.controls(parent) if c.parent == parent]


class APanelIsChosen(PanelCase):
    def test_by_a_click_on_its_button(self):
        for panel in [*PANELS, *reversed(PANELS)]:
            self.show(panel)
            self.assertEqual(self.d.text(panel.button), panel.caption)

    def test_by_tab_to_its_button_and_space(self):
        self.choose_by_key("space")

    def test_by_tab_to_its_button_and_enter(self):
        self.choose_by_key("Return")

    def choose_by_key(self, key):
        d = self.d
        self.show(PANELS[0])
        for panel in PANELS[1:]:
            d.key("Tab")
            d.wait_focus(panel.button)
            d.key(key)
            self.wait_panel(panel)
        for panel in reversed(PANELS[:-1]):
            d.key("shift+Tab")
            d.wait_focus(panel.button)
            d.key(key)
            self.wait_panel(panel)

    def test_by_ctrl_and_its_number(self):
        for number in (2, 5, 1, 4, 3):
            self.d.key(f"ctrl+{number}")
            self.wait_panel(PANELS[number - 1])

    def test_by_ctrl_and_its_number_from_inside_a_panel(self):
        self.show(PANELS[2])
        self.d.click("txtLev")
        self.d.key("ctrl+4")
        self.wait_panel(PANELS[3])
        self.d.click("txtMinutes")
        self.d.key("ctrl+1")
        self.wait_panel(PANELS[0])

    def test_as_the_next_one_by_ctrl_tab_and_the_one_before_by_ctrl_shift_tab(self):
        self.show(PANELS[0])
        for panel in [*PANELS[1:], PANELS[0]]:
            self.d.key("ctrl+Tab")
            self.wait_panel(panel)
        for panel in reversed(PANELS):
            self.d.key("ctrl+shift+Tab")
            self.wait_panel(panel)

    def test_and_the_keyboard_does_not_stay_on_a_panel_that_went_away(self):
        # The blank would press a button that nobody sees.
        d = self.d
        for number, panel in enumerate(PANELS[:-1], 1):
            self.show(PANELS[-1])
            d.wait_focus(PANELS[-1].button)
            d.key(f"ctrl+{number}")
            self.wait_panel(panel)
            d.key("Tab")
            buttons = [d.handle(p.button) for p in PANELS]
            wait_for("the keyboard inside the panel", lambda: d.focus().hwnd not in buttons)
            d.key("ctrl+5")
            self.wait_panel(PANELS[-1])
            wait_for(f"the keyboard to leave {panel.title}", lambda: d.control(View(hwnd=d.focus().hwnd)).visible)

    def test_erase_clears_the_log_and_hides_the_progress_bar(self):
        d = self.d
        self.press_erase_only()
        self.wait_run_over()
        self.assertTrue(d.control("PbarClean").visible)
        self.show(PANELS[0])
        self.show(PANELS[1])
        self.assertEqual(self.log(), [])
        self.assertFalse(d.control("PbarClean").visible)

    def test_advance_settings_names_the_restore_key_after_one_blank(self):
        self.show(PANELS[3])
        self.assertEqual(self.d.text("lblRestore"), "Restore : Shift + F10")


class ThePanels(PanelCase):
    def test_every_control_is_there_under_its_name_with_its_caption(self):
        for panel in PANELS:
            self.show(panel)
            self.assertEqual(self.d.text(panel.frame), panel.title)
            for (frame, title), controls in panel.groups.items():
                for name, text in [(frame, title), *controls.items()]:
                    control = self.d.control(name)
                    with self.subTest(control=name):
                        self.assertTrue(control.visible or name == "PbarClean")  # that one waits for a run
                        if text is not None and name != "lblRestore":
                            self.assertEqual(control.text, text)

    def test_every_control_is_of_the_kind_that_its_name_promises(self):
        kinds = {"chk": CHECK_BOX, "CHK": CHECK_BOX, "opt": OPTION, "fra": GROUP_BOX, "Fra": GROUP_BOX}
        classes = {"lst": "ListBox", "txt": "Edit", "cmb": "ComboBox", "Pba": "msctls_progress32", "dtp": "SysDateTimePick32",
                   "UpD": "msctls_updown32", "VSU": "msctls_updown32", "lbl": "Static", "pic": "Static"}
        for panel in PANELS:
            for name in panel.controls():
                start = (name if isinstance(name, str) else name[0])[:3]
                control = self.d.control(name)
                with self.subTest(control=name):
                    if start in kinds:
                        self.assertEqual(button_kind(control), kinds[start])
                    if start in classes and name != "cmbBossSet":
                        self.assertEqual(control["class"], classes[start])

    def test_each_stands_in_its_frame_and_on_its_panel(self):
        place = self.d.control(PANELS[0].frame).rect
        for panel in PANELS:
            outer = self.d.control(panel.frame)
            self.assertEqual(outer.rect, place)
            for control in self.children(panel):
                self.assertTrue(inside(control, outer), dict(control))
            for (frame, _), controls in panel.groups.items():
                around = self.d.control(frame)
                for name in controls:
                    self.assertTrue(inside(self.d.control(name), around), name)

    def test_none_overlaps_another(self):
        for panel in PANELS:
            plain = [c for c in self.children(panel) if button_kind(c) != GROUP_BOX]
            for one, other in itertools.combinations(plain, 2):
                partners = one.get("buddy") == other.hwnd or other.get("buddy") == one.hwnd
                self.assertFalse(overlap(one, other) and not partners, (dict(one), dict(other)))
            frames = [c for c in self.children(panel) if button_kind(c) == GROUP_BOX]
            for one, other in itertools.combinations(frames, 2):
                nested = inside(one, other) or inside(other, one)
                self.assertFalse(overlap(one, other) and not nested, (one.text, other.text))

    def test_the_navigation_bar_the_panels_and_the_status_bar_keep_apart(self):
        d = self.d
        bar, status, banner = d.control("Picture1"), d.control("stBar"), d.control("Image1")
        buttons = [d.control(panel.button) for panel in PANELS]
        for control in [*buttons, banner]:
            self.assertTrue(inside(control, bar))
        for one, other in itertools.combinations([*buttons, banner], 2):
            self.assertFalse(overlap(one, other), (one.text, other.text))
        panel = d.control(PANELS[0].frame)
        self.assertFalse(overlap(panel, bar) or overlap(panel, status))
        self.assertEqual([b.rect[1] for b in buttons], sorted(b.rect[1] for b in buttons))

    def test_no_text_is_cut_off(self):
        for panel in PANELS:
            for control in [*self.children(panel), *(self.d.control(p.button) for p in PANELS)]:
                if control.text and control["class"] in ("Button", "Static", "Edit", "ComboBox"):
                    with self.subTest(control=control.id, text=control.text):
                        self.check_text_fits(control)

    def check_text_fits(self, control: View):
        kind = button_kind(control)
        size = self.d.text_size(control)
        left, top, right, bottom = size.client
        width, height = right - left, bottom - top
        if control["class"] == "Static":
            size = self.d.text_size(control, width)
        elif kind == GROUP_BOX:
            width, height = width - 2 * BORDERS, size.height
        elif kind in (CHECK_BOX, OPTION):
            width -= BOX_AND_GAP
        elif control["class"] == "ComboBox":
            width -= height + BORDERS
        elif kind != OWNER_DRAWN:
            width -= BORDERS
        self.assertGreater(size.width, 0)
        self.assertLessEqual(size.width, width)
        self.assertLessEqual(size.height, height)

    def test_the_window_fits_the_smallest_screen_with_its_taskbar(self):
        left, top, right, bottom = self.d.main.rect
        self.assertLessEqual(right - left, SCREEN[0])
        self.assertLessEqual(bottom - top, SCREEN[1] - TASKBAR)

    def test_a_picture_of_each_is_kept(self):
        for panel in PANELS:
            self.show(panel)
            self.d.settle(panel.frame)
            self.d.screenshot(BUILT / "panels" / f"{panel.frame}.png", self.d.main)


class TheKeyboardReachesEverything(PanelCase):
    def test_that_can_be_used_on_a_panel(self):
        for panel in PANELS:
            with self.subTest(panel=panel.title):
                self.show(panel)
                self.d.wait_focus(panel.button)
                by_tab = self.walk("Tab")
                self.assertEqual(self.missing(panel, by_tab), [])
                self.assertEqual(by_tab[1:], list(reversed(self.walk("shift+Tab")[1:])))

    def walk(self, key: str) -> list[int]:
        """The controls that a key leads to, from the one that has the keyboard until it comes there again."""
        found = [self.d.focus().hwnd]
        while True:
            self.d.key(key)
            here = wait_for("the keyboard to move on", lambda: (lambda f: f.hwnd != found[-1] and f.hwnd)(self.d.focus()))
            if here == found[0]:
                return found
            self.assertNotIn(here, found, "the keyboard goes round in a circle")
            found.append(here)

    def missing(self, panel: Panel, reached: list[int]) -> list:
        parents = {self.d.control(View(hwnd=hwnd)).parent for hwnd in reached} | set(reached)
        usable = [c for c in self.children(panel) if c.visible and c.enabled and (
            c["class"] in ("Edit", "ListBox", "ComboBox", "SysDateTimePick32")
            or c["class"] == "Button" and button_kind(c) not in (GROUP_BOX, OPTION))]
        self.assertTrue(usable)
        return [dict(c) for c in usable if c.hwnd not in parents]

    def test_the_modes_of_the_schedule_are_walked_with_the_arrows(self):
        d = self.d
        self.show(PANELS[3])
        d.click("CHKieclose")
        d.key("Tab")
        modes = [d.handle(("optSchedule", index)) for index in range(3)]
        first = wait_for("the keyboard on a mode", lambda: d.focus().hwnd in modes and d.focus().hwnd)
        seen = {first}
        for _ in range(3):
            before = d.focus().hwnd
            d.key("Down")
            seen.add(wait_for("the next mode", lambda old=before: d.focus().hwnd != old and d.focus().hwnd))
        self.assertEqual(seen, set(modes))

    def test_a_level_is_changed_with_the_arrows(self):
        d = self.d
        self.show(PANELS[2])
        d.click("txtLev")
        d.key("Up")
        d.wait_text("txtLev", "51")
        d.key("Down")
        d.wait_text("txtLev", "50")


if __name__ == "__main__":
    unittest.main(verbosity=2)
