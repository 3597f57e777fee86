"""What `./quellix run` says in the end, and that it fails where something is left, touched or unfinished."""
import contextlib
import io
import unittest

from tools.run_job import NOT_TOLD, TOLD_IN, TRACES_OF, Outcome, number_of, sum_up

BEFORE = {family: 3 for _, family in TRACES_OF}
CLEAN = dict.fromkeys(BEFORE, 0)
DONE = "Quellix has successfully erased selected item(s)."


def said(**changes) -> tuple[bool, str]:
    outcome = Outcome(BEFORE, CLEAN, DONE, 26.4, {"bookmarks": (45, 45), "papers": (20, 20)}, dict.fromkeys(TOLD_IN, 3))
    with contextlib.redirect_stdout(io.StringIO()) as out:
        good = sum_up(outcome._replace(**changes))
    return good, out.getvalue()


class TheSummary(unittest.TestCase):
    def test_of_a_good_run_counts_traces_and_what_stays(self):
        good, text = said()
        self.assertTrue(good)
        self.assertIn(f"== {3 * len(BEFORE)} traces of {len(BEFORE)} kinds erased in 26 s", text)
        self.assertIn("Nothing that was ticked is left.", text)
        self.assertIn("untouched: 45 of 45 bookmarks\n", text)
        self.assertIn("picture: build/run/erased.png", text)

    def test_of_a_run_that_left_something_names_the_item(self):
        good, text = said(after=CLEAN | {"clipboard": 1}, told=dict.fromkeys(TOLD_IN, 3) | {"clipboard": 2})
        self.assertFalse(good)
        self.assertIn("LEFT by: Erase Clipboard", text)
        self.assertNotIn("Nothing that was ticked is left", text)

    def test_of_a_run_that_touched_something_says_so_alone(self):
        good, text = said(beside={"bookmarks": (44, 45), "papers": (20, 20)})
        self.assertFalse(good)
        self.assertIn("TOUCHED: 44 of 45 bookmarks\n", text)
        self.assertNotIn("papers", text)

    def test_of_a_run_that_did_not_end_shows_its_last_line(self):
        good, text = said(last_line="Erasing was manually stopped.")
        self.assertFalse(good)
        self.assertIn("with: Erasing was manually stopped.", text)

    def test_of_a_run_of_which_the_program_tells_otherwise_names_the_item(self):
        for told in (0, 2, 4):  # nothing at all, too little, too much
            good, text = said(told=dict.fromkeys(TOLD_IN, 3) | {"clipboard": told})
            self.assertFalse(good)
            self.assertIn("tells otherwise than was counted of: Erase Clipboard\n", text)

    def test_every_item_tells_of_its_work_or_is_known_to_tell_nothing(self):
        self.assertEqual({family for _, family in TRACES_OF}, TOLD_IN.keys() | NOT_TOLD)
        self.assertFalse(TOLD_IN.keys() & NOT_TOLD)

    def test_reads_the_numbers_of_a_sentence(self):
        self.assertEqual(number_of("12 files, 1 folder, 18 MB erased; 3 stayed", ("file", "folder")), 13)
        self.assertEqual(number_of("1 cache entry, 200 cookies erased", ("cookie",)), 200)
        self.assertEqual(number_of("Nothing erased; 3 stayed", ("file",)), 0)


if __name__ == "__main__":
    unittest.main(verbosity=2)
