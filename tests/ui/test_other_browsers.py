"""Profiles of Communicator 4, Netscape 7, Mozilla and Opera 7, erased from outside by the shipped program."""
import unittest

from tests.harness.program import DONE, ProgramCase, only
from tools.traces import other_browsers

FAMILIES = {  # what the items' settings are called, and the traces that each of them takes
    "NTypedHistory": "Netscape typed addresses", "NClearMailHistry": "Netscape mail trash", "NCache": "Netscape cache",
    "Ocookies": "Opera cookies", "OClean": "Opera cache", "OTypedUrl": "Opera typed addresses"}


class ErasingOtherBrowsers(ProgramCase):

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.d.import_registry(other_browsers.REGISTRY)

    def setUp(self):
        other_browsers.plant(self.d.home)
        self.before = other_browsers.count(self.d.home)
        self.assertEqual(set(self.before), set(FAMILIES.values()))
        self.assertTrue(all(self.before.values()), self.before)

    def erase(self, *keys: str) -> None:
        self.start(only(*keys))
        self.press_erase_only()
        self.assertEqual(self.wait_run_over()[-2:], DONE)

    def check_the_rest_stays(self):
        self.assertEqual(other_browsers.untouched(self.d.home), other_browsers.KEPT)
        self.assertEqual(other_browsers.left_alone(self.d.home), other_browsers.UNNAMED)

    def test_every_item_together_takes_all_traces_that_it_names_in_four_profiles_and_nothing_else(self):
        self.erase(*FAMILIES)
        self.assertEqual(other_browsers.count(self.d.home), dict.fromkeys(self.before, 0))
        self.check_the_rest_stays()

    def test_each_item_alone_takes_its_own_traces(self):
        for key, family in FAMILIES.items():
            with self.subTest(key):
                other_browsers.plant(self.d.home)
                self.erase(key)
                self.assertEqual(other_browsers.count(self.d.home), self.before | {family: 0})
                self.check_the_rest_stays()

    def test_no_other_item_takes_any_of_them(self):
        self.erase("NCookies", "WinTempFileFolder", "TemporaryInternetFile", "Cookies")
        self.assertEqual(other_browsers.count(self.d.home), self.before)
        self.check_the_rest_stays()


if __name__ == "__main__":
    unittest.main()
