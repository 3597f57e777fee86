"""The window "Quellix-Add Folder": a drive, the folders on it, and the one that comes on the list."""
import shutil
import unittest

from tests.harness.driver import BUILT, WM_CLOSE, View, wait_for
from tests.harness.program import CLOSE_BUTTON, WM_NCHITTEST
from tests.harness.shredder import ShredderCase
from tools.wine_home import WineHome

TITLE = "Quellix-Add Folder"


def make_drives(home: WineHome) -> None:
    """Drives D: and F: with a folder on each."""
    for drive in "df":
        (home.prefix / f"drive_{drive}/on {drive}/deeper").mkdir(parents=True, exist_ok=True)


def add_drives(home: WineHome) -> None:
    make_drives(home)
    for drive in "df":
        (home.prefix / f"dosdevices/{drive}:").symlink_to(f"../drive_{drive}")
    home.stop()  # Windows looks for its drives when it starts


class AddFolder(ShredderCase):
    options = {"prepare": add_drives}

    def setUp(self):
        make_drives(self.d.home)
        super().setUp()
        for folder in ("Zeta", "alpha", "beta/gamma/delta", "with a rather long name that goes on and on for a while"):
            (self.work / folder).mkdir(parents=True)
        (self.work / "file.txt").write_text("no folder")
        (self.work / "link").symlink_to("alpha")
        self.window = self.open()

    def tearDown(self):
        if self.d.find_window("#32770", TITLE):
            self.d.post(self.window, WM_CLOSE)
            self.wait_closed()

    def open(self) -> View:
        self.d.click("cmdAddFolder")
        window = self.d.wait_window("#32770", TITLE)
        self.d.wait_focus("dirList", window)
        return window

    def wait_closed(self) -> None:
        self.d.wait_no_window("#32770", TITLE)
        self.wait_in_front()

    def folders(self) -> list[str]:
        return self.d.items("dirList", self.window)

    def drive(self) -> str:
        return self.d.text("drvList", self.window)

    def double_click(self, line: str) -> None:
        self.d.click_item("dirList", line, self.window, double=True)

    def open_work(self) -> None:
        self.double_click("   work")
        wait_for("the folders in C:\\work", lambda: "      alpha" in self.folders())

    def wait_added(self, *folders: str) -> None:
        """The window is closed, and after that the program takes over what was chosen in it."""
        self.wait_closed()
        wait_for(f"the folder list to hold {folders}", lambda: self.d.items("lstFolder") == list(folders))

    def test_opens_on_drive_c_with_its_folders_and_keeps_the_main_window_from_input(self):
        lines = self.folders()
        self.assertEqual((self.drive(), lines[0], self.d.control("dirList", self.window).selected), ("C:", "C:\\", 0))
        self.assertTrue({"   Quellix", "   windows", "   work"} <= set(lines))
        self.assertEqual(lines[1:], sorted(lines[1:], key=str.lower))
        self.assertEqual(self.d.items("drvList", self.window), ["C:", "D:", "F:"])
        self.assertFalse(self.d.main.enabled)
        self.assertEqual(self.d.text("cmdCancel", self.window), "Cancel")

    def test_a_double_click_opens_a_folder_and_goes_back_to_one_above(self):
        self.open_work()
        self.assertEqual(self.folders(), ["C:\\", "   work", "      alpha", "      beta",
                                          "      with a rather long name that goes on and on for a while", "      Zeta"])
        self.double_click("      beta")
        wait_for("the folder in it", lambda: self.folders() == ["C:\\", "   work", "      beta", "         gamma"])
        self.double_click("C:\\")
        wait_for("the folders of the drive", lambda: "   windows" in self.folders())

    def test_add_takes_the_chosen_folder_whether_or_not_it_is_opened(self):
        self.open_work()
        self.d.click("cmdAdd", self.window)
        self.wait_added(r"C:\work")
        self.window = self.open()
        self.open_work()
        self.d.click_item("dirList", "      beta", self.window)
        self.d.click("cmdAdd", self.window)
        self.wait_added(r"C:\work", r"C:\work\beta")

    def test_enter_opens_the_chosen_folder_and_adds_the_opened_one(self):
        d = self.d
        self.open_work()
        d.click_item("dirList", "      beta", self.window)
        d.key("Return")
        wait_for("the folder in it", lambda: self.folders()[-1] == "         gamma")
        d.key("Down")
        d.key("Return")
        wait_for("the folder in that", lambda: self.folders()[-1] == "            delta")
        d.key("Return")
        self.wait_added(r"C:\work\beta\gamma")

    def test_add_looks_like_the_default_button_where_enter_adds(self):
        d = self.d

        def wait_default(default: bool) -> None:
            d.wait_control("cmdAdd", lambda c: (c.style & 0xF == 1) == default, f"the default button: {default}", self.window)
        self.open_work()
        wait_default(True)
        d.click_item("dirList", "      beta", self.window)
        wait_default(False)
        d.key("Tab")
        d.wait_focus("cmdAdd", self.window)
        wait_default(True)
        d.key("shift+Tab")
        wait_default(False)
        d.key("shift+Tab")
        d.wait_focus("drvList", self.window)
        wait_default(True)
        d.key("Return")
        self.wait_added(r"C:\work\beta")

    def test_letters_find_the_folders_by_their_names(self):
        d = self.d
        self.open_work()

        def type_and_find(letter: str, line: str) -> None:
            d.key(letter)
            d.wait_control("dirList", lambda c: c["items"][c.selected] == line, f"to have {line!r} chosen", self.window)
        for letter, line in (("b", "      beta"), ("z", "      Zeta"), ("w", "   work"),
                             ("w", "      with a rather long name that goes on and on for a while"), ("c", "C:\\")):
            type_and_find(letter, line)
        type_and_find("a", "      alpha")
        d.key("q")
        d.key("Return")
        wait_for("the chosen folder to be opened", lambda: self.folders() == ["C:\\", "   work", "      alpha"])

    def test_cancel_esc_and_the_title_bar_add_nothing(self):
        d = self.d
        self.open_work()
        d.click("cmdCancel", self.window)
        self.wait_closed()
        self.window = self.open()
        d.key("Escape")
        self.wait_closed()
        self.window = self.open()
        left, top, right, _ = d.wait_window("#32770", TITLE).rect
        x = next(x for x in range(right - 6, left, -2)
                 if d.send(self.window, WM_NCHITTEST, 0, x | top + 12 << 16).result == CLOSE_BUTTON)
        d.click_at(x - 3, top + 12)
        self.wait_closed()
        # What the windows before have added would come first.
        self.window = self.open()
        self.open_work()
        d.click("cmdAdd", self.window)
        self.wait_added(r"C:\work")

    def test_another_drive_shows_its_folders(self):
        self.d.choose("drvList", "D:", self.window)
        wait_for("the folders on D:", lambda: self.folders() == ["D:\\", "   on d"])
        self.double_click("   on d")
        wait_for("the folder in it", lambda: self.folders()[-1] == "      deeper")
        self.d.click("cmdAdd", self.window)
        self.wait_added(r"D:\on d")

    def test_a_drive_that_cannot_be_read_is_put_back_to_the_one_on_show(self):
        d = self.d
        d.choose("drvList", "D:", self.window)
        wait_for("the folders on D:", lambda: self.folders() == ["D:\\", "   on d"])
        shutil.rmtree(d.home.prefix / "drive_f")  # as when its disk is taken out
        d.click("drvList", self.window)
        d.wait_control("drvList", lambda c: c.dropped, "to open", self.window)
        d.key("Down")
        d.settle("drvList", self.window)
        d.wait_text("drvList", "D:", self.window)
        self.assertEqual((self.folders(), d.boxes()), (["D:\\", "   on d"], []))

    def test_a_folder_that_is_gone_is_not_opened_and_what_is_shown_stays(self):
        self.open_work()
        before = self.folders()
        (self.work / "alpha").rmdir()
        self.double_click("      alpha")
        self.d.settle("dirList", self.window)
        self.assertEqual((self.folders(), self.d.boxes()), (before, []))

    def test_tab_leads_from_the_drive_to_the_folders_and_the_buttons(self):
        for name in ("cmdAdd", "cmdCancel", "drvList", "dirList"):
            self.d.key("Tab")
            self.d.wait_focus(name, self.window)

    def test_a_picture_is_kept(self):
        self.open_work()
        self.d.settle("dirList", self.window)
        self.d.screenshot(BUILT / "panels/frmAddDir.png", self.window)


if __name__ == "__main__":
    unittest.main(verbosity=2)
