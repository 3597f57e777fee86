"""What can be measured of the looks: sizes at a high resolution, colours in a scheme of high contrast. `looks.py` shows all."""
import subprocess
import unittest

from tests.harness.driver import BUILT, Desktop
from tests.harness.layout import LayoutChecks, PanelCase
from tests.harness.panel_table import PANELS
from tests.ui.looks import looking
from tools.wine_home import ROOT


def told(picture, *operations: str) -> str:
    """What ImageMagick says of a picture."""
    return subprocess.run(["convert", str(picture), *operations], check=True, capture_output=True, text=True).stdout


def place(d: Desktop, name: str, *operations: str) -> str:
    """What it says of the place of a control on the screen."""
    d.settle(name)
    left, top, right, bottom = d.control(name).rect
    whole = d.screenshot(BUILT / f"{d.name}.png")
    return told(whole, "-crop", f"{right - left}x{bottom - top}+{left}+{top}", "+repage", *operations)


def colours(d: Desktop, name: str, *operations: str) -> set[str]:
    lines = place(d, name, *operations, "-depth", "8", "-unique-colors", "txt:").splitlines()
    return {line.split()[2][:7] for line in lines[1:]}


class At192DotsAnInch(LayoutChecks, PanelCase):
    options = {"screen": "1400x1000", "dpi": 192}

    def test_the_drawings_are_as_large_as_the_letters(self):
        size = ("-trim", "-format", "%w %h", "info:")
        self.assertEqual(place(self.d, "Image1", *size), told(ROOT / "src/app/res/banner192.bmp", *size))


class InHighContrastBlack(unittest.TestCase):
    def test_no_colour_of_our_own_is_left_but_in_pictures(self):
        with looking("high contrast black") as d:
            d.click("cmdHelp")
            d.wait_visible("fraHelp")
            for name in ("Label16", "Label22"):
                self.assertEqual(colours(d, name), {"#000000", "#FFFFFF"}, name)
            bar, last = d.control("Picture1").rect, d.control("cmdHelp").rect
            # Chosen, and its text can be read.
            self.assertLessEqual({"#800080", "#FFFFFF"}, colours(d, "cmdHelp", "-shave", "6x6"))
            self.assertEqual(colours(d, "cmdCleenFrame", "-shave", "6x6"), {"#000000", "#FFFFFF"})
            self.assertEqual(colours(d, "Picture1", "-crop", f"20x20+4+{last[3] - bar[1] + 4}"), {"#000000"})


if __name__ == "__main__":
    unittest.main(verbosity=2)
