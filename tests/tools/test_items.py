"""The table of the erase items: what Python makes of its rows, and that nothing in it is passed over."""
import unittest

from tests.harness.items import ITEMS, Item, read_items

ROW = 'ITEM(chkNetsettings, 3, "NCache", "Erase Netscape  Cache", true, "Erasing ...", "And more...")'
SHORT = 'ITEM(chkIEsettings, 5, "UrlErrorLogs", "Erase URL Error Logs", false, "", "")'


class Table(unittest.TestCase):
    def test_a_row_becomes_an_item(self):
        self.assertEqual(read_items(f"// head\n\n{ROW}\n// never run\n{SHORT}\n"), [
            Item("chkNetsettings", 3, "NCache", "Erase Netscape  Cache", True, ("Erasing ...", "And more...")),
            Item("chkIEsettings", 5, "UrlErrorLogs", "Erase URL Error Logs", False, ())])

    def test_what_is_no_row_is_refused_with_its_line(self):
        for line in (ROW + ",", " " + ROW, ROW + " // Netscape", ROW.replace("true", "1"), ROW.replace(", 3", ",3"),
                     ROW.replace('"NCache"', '"N\\Cache"'), ROW.replace('"Erasing ..."', "nullptr"), ROW[:60], ROW + ROW, "x",
                     SHORT.replace('"Erase URL Error Logs"', '""')):
            with self.subTest(line), self.assertRaisesRegex(ValueError, "line 2 is no row"):
                read_items(f"{SHORT}\n{line}\n")

    def test_a_box_or_a_key_that_comes_twice_is_refused(self):
        for other, what in ((SHORT.replace("UrlErrorLogs", "Other"), "box"), (SHORT.replace("5", "6"), "key")):
            with self.subTest(what), self.assertRaisesRegex(ValueError, f"has the {what}"):
                read_items(f"{SHORT}\n{other}\n")

    def test_the_items_that_never_run_come_last_and_write_nothing(self):
        running = [item.runs for item in ITEMS]
        self.assertEqual(running, sorted(running, reverse=True))
        self.assertEqual([item.key for item in ITEMS if item.lines and not item.runs], [])
        self.assertTrue(any(running) and not all(running))


if __name__ == "__main__":
    unittest.main(verbosity=2)
