"""The pictures of the manual show the program as it is: they are taken anew and compared."""
import subprocess
import unittest

from tests.harness.driver import BUILD
from tests.manual.pictures import NAMES, PICTURES, differing_pixels, take_all
from tools.wine_home import ROOT

TAKEN = BUILD / "manual-pictures"
COLOURS, BYTES = 256, 100_000  # the most of each, and of all together


class ThePictures(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        take_all(TAKEN)

    def test_are_those_of_the_program_as_it_is(self):
        stale = {name: pixels for name in NAMES if (pixels := differing_pixels(PICTURES / f"{name}.gif", TAKEN / f"{name}.gif"))}
        self.assertEqual(stale, {}, f"other pixels than in docs/manual/pictures: look at {TAKEN.relative_to(ROOT)}; "
                                    "`./quellix manual` takes them over")

    def test_count_as_others_when_one_tick_is_another(self):
        other = TAKEN / "other.gif"
        subprocess.run(["convert", str(TAKEN / "main.gif"), "-fill", "black", "-draw", "rectangle 24,44 27,46", str(other)], check=True)
        self.assertGreater(differing_pixels(TAKEN / "main.gif", other), 5)
        self.assertGreater(differing_pixels(TAKEN / "main.gif", TAKEN / "erase.gif"), 1000)
        other.unlink()

    def test_are_small(self):
        self.assertLess(sum((PICTURES / f"{name}.gif").stat().st_size for name in NAMES), BYTES)


if __name__ == "__main__":
    unittest.main(verbosity=2)
