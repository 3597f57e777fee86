"""Internet Explorer's traces, erased from outside by the shipped program: what is ticked goes, the rest stays."""
import unittest

from tests.doubles.url_history import history_urls, install_history_store, plant_history
from tests.harness.program import DONE, ProgramCase, only
from tests.harness.url_cache import counts, plant

EXPLORER = r"Software\Microsoft\Internet Explorer"
TYPED = EXPLORER + r"\TypedURLs"
FORMS = EXPLORER + r"\IntelliForms"
RUN = r"Software\Microsoft\Windows\CurrentVersion\Explorer\RunMRU"
FULL = {"content": 500, "cookie": 200, "visited": 100}


class ErasingInternetExplorer(ProgramCase):

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        install_history_store(cls.d.home)

    def setUp(self):
        home = self.d.home
        plant(home, "empty")
        plant(home, *(word for kind, number in FULL.items() for word in (kind, str(number))))
        plant_history(home, {f"http://private.example/{number}": f"Page {number}" for number in range(100)})
        for key in (TYPED, FORMS, RUN):
            self.d.reg_delete_key("HKCU", key)
        for number in range(1, 6):
            self.d.reg_set("HKCU", TYPED, f"url{number}", f"http://typed.example/{number}")
            self.d.reg_set("HKCU", RUN, "abcde"[number - 1], "regedit\\1")
        self.d.reg_set("HKCU", FORMS + r"\SPW", "entry", "secret")
        self.d.reg_set("HKCU", EXPLORER + r"\Main", "Start Page", "http://home.example/")
        self.assertEqual(counts(home), FULL)

    def erase(self, *keys: str) -> None:
        self.start(only(*keys))
        self.press_erase_only()
        self.assertEqual(self.wait_run_over()[-2:], DONE)

    def has_key(self, key: str) -> bool:
        return self.d.reg_list("HKCU", key) is not None

    def test_every_item_takes_a_whole_profile(self):
        self.erase("LocationbarHistory", "ClearAutoCompletePower", "TemporaryInternetFile", "InternetHistory", "Cookies",
                   "RunHistory")
        self.assertEqual(counts(self.d.home), dict.fromkeys(FULL, 0))
        self.assertEqual(history_urls(self.d.home), [])
        self.assertEqual([key for key in (TYPED, FORMS, RUN) if self.has_key(key)], [])
        self.assertEqual(self.d.reg("HKCU", EXPLORER + r"\Main", "Start Page").text, "http://home.example/")

    def test_the_cache_item_alone_takes_the_cookies_too_and_leaves_the_history(self):
        self.erase("TemporaryInternetFile")
        self.assertEqual(counts(self.d.home), {"content": 0, "cookie": 0, "visited": FULL["visited"]})
        self.assertEqual(len(history_urls(self.d.home)), 100)
        self.assertTrue(all(self.has_key(key) for key in (TYPED, FORMS, RUN)))

    def test_the_cookie_item_alone_takes_the_cache_too(self):
        self.erase("Cookies")
        self.assertEqual(counts(self.d.home), {"content": 0, "cookie": 0, "visited": FULL["visited"]})

    def test_the_history_item_alone_takes_the_history(self):
        self.erase("InternetHistory")
        self.assertEqual(history_urls(self.d.home), [])
        self.assertEqual(counts(self.d.home), FULL | {"visited": 0})


if __name__ == "__main__":
    unittest.main()
