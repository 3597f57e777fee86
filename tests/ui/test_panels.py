"""The five panels: how they are chosen, what is on them, that all of it fits and that the keyboard reaches all of it."""
import unittest

from tests.harness.driver import BUILT, View, wait_for
from tests.harness.layout import CHECK_BOX, GROUP_BOX, OPTION, LayoutChecks, PanelCase, button_kind
from tests.harness.panel_table import PANELS, Panel


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

    def test_and_its_button_is_marked_until_the_next_one_is(self):
        for press in (self.show, lambda panel: self.d.key(f"ctrl+{PANELS.index(panel) + 1}")):
            for panel in PANELS:
                press(panel)
                self.wait_panel(panel)
                self.assertEqual([p.title for p in PANELS if self.d.checked(p.button)], [panel.title])

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


class ThePanels(LayoutChecks, PanelCase):
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

    def test_each_frame_comes_before_what_it_names(self):
        # A screen reader names a control by the group box that comes before it.
        for panel in PANELS:
            order = [c.hwnd for c in self.children(panel)]
            for (frame, title), controls in panel.groups.items():
                for name in controls:
                    self.assertLess(order.index(self.d.handle(frame)), order.index(self.d.handle(name)), (title, name))

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

    def test_the_minutes_are_changed_with_the_arrows_where_their_box_is_disabled(self):
        d = self.d
        self.show(PANELS[3])
        for index in (0, 2):
            d.click(("optSchedule", index))
            d.wait_checked(("optSchedule", index))
        self.assertFalse(d.control("txtMinutes").enabled)
        before = int(d.text("txtMinutes"))
        d.key("Tab")
        d.wait_focus("VSUpDown")
        d.settle("VSUpDown")
        d.screenshot(BUILT / "panels" / "VSUpDown.png", d.main)
        d.key("Up")
        d.wait_text("txtMinutes", str(before + 1))
        for number in (before, before - 1):
            d.key("Down")
            d.wait_text("txtMinutes", str(number))
        self.assertEqual(d.control("VSUpDown").pos, before - 1)

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
