"""What can be measured of the looks: sizes at higher resolutions, colours in a scheme of high contrast. `looks.py` shows all."""
import subprocess
import unittest

from tests.harness.driver import BUILT, Desktop
from tests.harness.panel_table import PANELS
from tests.ui import test_panels
from tests.ui.looks import looking
from tools.wine_home import ROOT


class LookCase(unittest.TestCase):
    look: str

    @classmethod
    def setUpClass(cls):
        cls.d: Desktop = cls.enterClassContext(looking(cls.look))

    def show(self, panel) -> None:
        self.d.click(panel.button)
        self.d.wait_visible(panel.frame)
        self.d.settle(panel.frame)

    def part(self, name: str, *operations: str) -> str:
        """What ImageMagick says of the place of a control on the screen."""
        self.d.settle(name)
        left, top, right, bottom = self.d.control(name).rect
        whole = self.d.screenshot(BUILT / f"look-{type(self).__name__}.png")
        return subprocess.run(["convert", str(whole), "-crop", f"{right - left}x{bottom - top}+{left}+{top}", "+repage", *operations],
                              check=True, capture_output=True, text=True).stdout

    def colours(self, name: str) -> set[str]:
        return {line.split()[2][:7] for line in self.part(name, "-depth", "8", "-unique-colors", "txt:").splitlines()[1:]}


class At192Dpi(LookCase, test_panels.PanelCase):
    look, drawn = "192 dpi", "banner192.bmp"

    show = LookCase.show
    check_text_fits = test_panels.ThePanels.check_text_fits
    test_no_text_is_cut_off = test_panels.ThePanels.test_no_text_is_cut_off
    test_none_overlaps_another = test_panels.ThePanels.test_none_overlaps_another

    def test_the_drawings_are_as_large_as_the_letters(self):
        size = ("-trim", "-format", "%w %h", "info:")
        drawn = subprocess.run(["convert", str(ROOT / "src/app/res" / self.drawn), *size], check=True, capture_output=True, text=True)
        self.assertEqual(self.part("Image1", *size), drawn.stdout)


class At120Dpi(At192Dpi):
    look, drawn = "120 dpi", "banner120.bmp"


class InHighContrastBlack(LookCase):
    look = "high contrast black"

    def test_no_colour_of_our_own_is_left_but_in_pictures(self):
        self.show(PANELS[4])
        for name in ("Label16", "Label22"):
            self.assertEqual(self.colours(name), {"#000000", "#FFFFFF"}, name)
        bar, last = self.d.control("Picture1").rect, self.d.control("cmdHelp").rect
        below = self.part("Picture1", "-crop", f"20x20+4+{last[3] - bar[1] + 4}", "-depth", "8", "-unique-colors", "txt:")
        self.assertEqual({line.split()[2][:7] for line in below.splitlines()[1:]}, {"#000000"})


if __name__ == "__main__":
    unittest.main(verbosity=2)
