"""The Help panel's links and the button that looks for an update."""
import re
import subprocess
import unittest
from pathlib import Path

from tests.harness.driver import BUILD, BUILT, PROGRAMS, RUNNING_TITLE, compile_windows_program, wait_for
from tests.harness.program import ProgramCase, only

SHOW_MINIMISED = 2
QUELLIX = BUILD / "dist/Quellix.exe"


def witness() -> Path:
    return compile_windows_program(PROGRAMS / "witness.cpp", "-mwindows")


def testimony(exe: Path) -> tuple[int, str]:
    """Waits until the witness that is there has been started and returns its show state and command line."""
    told = exe.with_name(exe.name + ".txt")
    lines = wait_for(f"{exe.name} to be started", lambda: told.exists() and told.read_text(encoding="cp1252").splitlines())
    told.unlink()
    return int(lines[0]), lines[1]


class HelpCase(ProgramCase):
    def setUp(self):
        if not self.d.pid:
            self.start(only())


class ThePanel(HelpCase):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.d.reg_set("HKCU", r"Control Panel\Colors", "HotTrackingColor", "160 0 80")

    def test_tells_who_makes_the_program(self):
        self.d.click("cmdHelp")
        self.d.wait_visible("lblAbout")
        self.assertRegex(self.d.text("lblAbout"), r"^Quellix is made by a few people who .+\.")
        self.assertEqual((self.d.text("Frame2"), self.d.text("Frame9")), ("About Us", ""))

    def test_shows_its_links_in_the_colour_that_the_scheme_has_for_links(self):
        d = self.d
        d.click("cmdHelp")
        for link in ("Label16", "Label22"):
            d.wait_visible(link)
            d.settle(link)
            picture = d.screenshot(BUILT / f"help/{link}.png")
            left, top, right, bottom = d.control(link).rect
            colours = subprocess.run(["convert", str(picture), "-crop", f"{right - left}x{bottom - top}+{left}+{top}", "-depth",
                                      "8", "-format", "%c", "histogram:info:"], check=True, capture_output=True, text=True)
            with self.subTest(link):
                self.assertIn("#A00050", colours.stdout)
                self.assertNotIn("#0000A0", colours.stdout)


class LinkCase(HelpCase):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.browser = cls.d.home.c / "browser.exe"
        cls.browser.write_bytes(witness().read_bytes())
        protocol, page = r"Software\Classes\http", r"Software\Classes\htmlpage"
        for kind in (protocol, page):
            cls.d.reg_delete_key("HKLM", kind)
            cls.d.reg_set("HKLM", kind + r"\shell\open\command", "", r'"C:\browser.exe" "%1"')
        cls.d.reg_set("HKLM", protocol, "", "URL:http")
        cls.d.reg_set("HKLM", protocol, "URL Protocol", "")
        cls.d.reg_set("HKLM", r"Software\Classes\.html", "", "htmlpage")

    def setUp(self):
        super().setUp()
        self.d.click("cmdHelp")
        self.d.wait_visible("Label16")

    def opened(self) -> str:
        return testimony(self.browser)[1]


class TheManualBesideTheProgram(LinkCase):
    folder = "Zo\u00eb's program"
    options = {"files": {f"{folder}/Quellix.exe": QUELLIX, f"{folder}/manual/index.html": BUILD / "dist/manual/index.html"},
               "program": rf"{folder}\Quellix.exe"}

    def test_is_opened_by_f1_and_by_the_address(self):
        d = self.d
        page = rf'"C:\browser.exe" "C:\Quellix\{self.folder}\manual\index.html"'
        d.click("Label16")
        self.assertEqual(self.opened(), page)
        for panel in ("cmdDefault", "cmdSecureDelk"):
            d.click(panel)
            d.wait_focus(panel)
            d.key("F1")
            self.assertEqual(self.opened(), page)

    def test_is_not_opened_by_a_boss_key_of_the_same_name(self):
        d = self.d
        self.start(only() | {"Boss": {"bossKey": "112"}})
        d.key("F1")
        wait_for("the window to go out of sight", lambda: not d.main.visible)
        d.settle(d.taskbar())
        self.assertFalse(self.browser.with_name("browser.exe.txt").exists())
        self.start(only())


class TheLinks(LinkCase):
    options = {"files": {"Quellix.exe": QUELLIX}}  # without the manual

    def test_open_the_address_by_f1_too(self):
        self.d.key("F1")
        self.assertEqual(self.opened(), f'"C:\\browser.exe" "{self.d.text("Label16")}"')

    def test_open_the_address_that_the_first_one_shows(self):
        address = self.d.text("Label16")
        self.assertRegex(address, re.compile(r"^https?://[\w.]+/\S+$"))
        self.d.click("Label16")
        self.assertEqual(self.opened(), f'"C:\\browser.exe" "{address}"')

    def test_open_another_page_to_contact_the_maker(self):
        self.d.click("Label22")
        opened = self.opened()
        self.assertRegex(opened, re.compile(r'^"C:\\browser.exe" "https?://[\w.]+/\S+"$'))
        self.assertNotIn(self.d.text("Label16"), opened)

    def test_are_opened_by_tab_and_the_blank(self):
        self.open_by_key("space")

    def test_are_opened_by_tab_and_enter(self):
        self.open_by_key("Return")

    def open_by_key(self, key):
        d = self.d
        d.wait_focus("cmdHelp")
        for link in ("Label16", "Label22"):
            d.key("Tab")
            d.wait_focus(link)
            d.key(key)
            self.assertEqual(d.text("Label16") in self.opened(), link == "Label16")

    def test_leave_the_panel_and_the_status_as_they_are(self):
        self.d.click("Label22")
        self.opened()
        self.assertEqual((self.panel_on_show(), self.d.status_text()), (["fraHelp"], "Displaying Displaying Help"))
        self.assertEqual(self.d.boxes(), [])


class UpdateCase(HelpCase):
    def press_update(self):
        self.d.click("cmdSchedule")
        self.d.wait_visible("cmdUpgrade")
        self.d.click("cmdUpgrade")

    def check_started_minimised(self, folder: str):
        place = self.d.home.c.joinpath(*folder.split("\\")[1:]) / "Update.exe"
        place.write_bytes(witness().read_bytes())
        self.press_update()
        show, line = testimony(place)
        self.assertEqual((show, line.strip()), (SHOW_MINIMISED, rf'"{folder}\Update.exe"'))
        self.d.settle("cmdUpgrade")
        self.assertEqual(self.d.boxes(), [])
        self.assertIsNone(self.d.ended(self.d.pid))
        place.unlink()


class CheckForUpdate(UpdateCase):
    def check_missing(self):
        self.press_update()
        box = self.d.wait_box()
        self.assertEqual((box.title, box.text, box.icon, box.buttons, box.owner),
                         (RUNNING_TITLE, "Your update files is missing. Please reinstall Quellix", "error", ["OK"],
                          self.d.main.hwnd))
        self.d.press_button_in_box("OK")
        wait_for("the window to be usable", lambda: self.d.main.enabled)

    def test_says_that_the_updater_is_missing(self):
        self.check_missing()

    def test_takes_a_folder_of_that_name_as_missing(self):
        folder = self.d.home.c / "Quellix/Update.exe"
        folder.mkdir()
        self.check_missing()
        folder.rmdir()

    def test_starts_the_updater_minimised_and_goes_on(self):
        self.check_started_minimised(r"C:\Quellix")


class CheckForUpdateInAFolderWithABlank(UpdateCase):
    options = {"files": {"My Programs/Quellix.exe": QUELLIX}, "program": r"My Programs\Quellix.exe"}

    def test_starts_the_updater_and_no_other_program(self):
        trap = self.d.home.c / "Quellix/My.exe"
        trap.write_bytes(witness().read_bytes())
        self.check_started_minimised(r"C:\Quellix\My Programs")
        self.assertFalse(trap.with_name("My.exe.txt").exists())


if __name__ == "__main__":
    unittest.main(verbosity=2)
