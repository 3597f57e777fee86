"""How the main window lies on its screen: its panels one by one, what is on them, and whether all of it fits."""
import itertools

from tests.harness.driver import View, wait_for
from tests.harness.panel_table import PANELS, Panel
from tests.harness.program import ProgramCase, only

PUSH_BUTTON, DEFAULT_BUTTON, PLAIN_BOX, CHECK_BOX, GROUP_BOX, OPTION, OWNER_DRAWN = 0, 1, 2, 3, 7, 9, 11
WRAPPING = (PUSH_BUTTON, DEFAULT_BUTTON, PLAIN_BOX, CHECK_BOX)
BS_MULTILINE = 0x2000
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


SETTINGS = only("RecentDocument") | {"Scheduling": {"chkShEnable": "1"}, "Startup": {"LoadStartup": "1"}}


class PanelCase(ProgramCase):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls().start(SETTINGS)

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


class LayoutChecks:
    """Tests of a `PanelCase` that hold on every screen and in every font."""

    def test_each_control_is_in_its_frame_and_on_its_panel(self):
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

    def test_no_control_overlaps_another(self):
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
        if kind in WRAPPING and control.style & BS_MULTILINE:
            size = self.d.text_size(control, width)
        self.assertGreater(size.width, 0)
        self.assertLessEqual(size.width, width)
        self.assertLessEqual(size.height, height)
