"""The installer and the uninstaller, on a Windows of their own: silent, by hand, over an older version, and what is left."""
import shutil
import unittest

from tests.harness.driver import BUILD, BUILT, WM_CLOSE, Desktop, wait_for
from tests.harness.program import OFF_LINE, only
from tests.package.installation import (RUN_KEY, RUN_VALUE, UNINSTALL_KEY, files, host_path, installed, registry,
                                        restart_windows, run_setup)
from tools.package import pack

PACKAGES = BUILD / "test-package"
ODD_FOLDER = r"C:\My Programs\Zoë & Löwe (%TEMP%)"
DESKTOP_ICON = "users/Public/Desktop/Quellix.lnk"
COMPONENTS, LINE = 1032, 16  # the tree of the wizard's page
LISTS = ("SafeCookie.dat", "QUELLIX_Shred")
MENU = r"ProgramData/Microsoft/Windows/Start Menu/Programs/Quellix"


def setUpModule():
    pack(BUILD / "dist", PACKAGES / "now")
    older = PACKAGES / "older-dist"
    shutil.rmtree(older, ignore_errors=True)
    shutil.copytree(BUILD / "dist", older)
    (older / "iea.exe").write_bytes(b"MZ of an older day")
    pack(older, PACKAGES / "older", "0.9")


class SetupCase(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.d = cls.enterClassContext(Desktop(f"setup-{cls.__name__}".lower(), files={}, start=False, registry=OFF_LINE))
        shutil.copy(PACKAGES / "now/Quellix-1.0-setup.exe", cls.d.home.c / "setup.exe")
        shutil.copy(PACKAGES / "older/Quellix-0.9-setup.exe", cls.d.home.c / "older.exe")

    def setup(self, arguments: str = "/S", program: str = "setup.exe") -> int:
        return run_setup(self.d, rf"C:\{program}", arguments)

    def remove(self, folder: str, arguments: str = "/S") -> None:
        self.assertEqual(run_setup(self.d, rf"{folder}\Uninstall.exe", arguments), 0)

    def start_program(self, folder: str) -> None:
        self.d.start_program(folder=folder)

    def end_program(self) -> None:
        self.d.post(self.d.main, WM_CLOSE)
        self.d.wait_ended()

    def assert_is_what_was_packed(self, folder: str) -> None:
        place = host_path(self.d, folder)
        for source in (BUILD / "dist").rglob("*"):
            if source.is_file():
                name = source.relative_to(BUILD / "dist")
                self.assertEqual((place / name).read_bytes(), source.read_bytes(), name)
        self.assertLessEqual({"LICENSE.txt", "ReadMe.txt", "Uninstall.exe"}, {path.name for path in place.iterdir()})


class ASilentInstallation(SetupCase):
    def test_for_everybody_leaves_no_trace_when_it_is_removed_with_the_program_running(self):
        d = self.d
        before = files(d), registry(d)
        self.assertEqual(self.setup(), 0)
        folder = installed(d)
        self.assertEqual(folder, r"C:\Program Files\Quellix")
        self.assert_is_what_was_packed(folder)
        self.assertEqual({path.name for path in (d.home.c / MENU).iterdir()},
                         {"Quellix.lnk", "Manual.lnk", "Remove Quellix.lnk"})
        self.assertEqual(d.reg("HKLM", UNINSTALL_KEY, "UninstallString").text, rf'"{folder}\Uninstall.exe"')
        # It has run, keeps settings and two lists, and starts with Windows.
        self.start_program(folder)
        d.click("cmdSchedule")
        d.set_checked(("chkStartUp", 0))
        self.end_program()
        for name in LISTS:
            (host_path(d, folder) / name).write_text("a trace\r\n")
        self.assertIn(r"\Quellix.exe m", d.reg("HKLM", RUN_KEY, RUN_VALUE).text)
        self.start_program(folder)
        for name in LISTS:
            for ending in (".tmp", ".old", ".old.tmp"):  # of saves that were broken off
                (host_path(d, folder) / (name + ending)).write_text("a trace\r\n")
        self.remove(folder)
        self.assertEqual(d.wait_ended(), 0)
        restart_windows(d)
        after = files(d), registry(d)
        for what, one, other in zip(("files", "registry"), before, after):
            self.assertEqual((sorted(other - one), sorted(one - other)), ([], []), what)

    def test_for_one_user_stays_in_the_users_own_folder_and_registry(self):
        d = self.d
        before = {line for line in registry(d) if line.startswith("[HKEY_LOCAL_MACHINE")}
        self.assertEqual(self.setup("/S /CurrentUser"), 0)
        folder = installed(d, "HKCU")
        self.assertRegex(folder, r"^C:\\users\\quellix\\.*\\Programs\\Quellix$")
        self.assert_is_what_was_packed(folder)
        self.assertEqual({line for line in registry(d) if line.startswith("[HKEY_LOCAL_MACHINE")}, before)
        self.remove(folder)
        self.assertFalse(host_path(d, folder).exists())
        self.assertIsNone(installed(d, "HKCU"))


class AnUpgrade(SetupCase):
    def test_goes_where_the_older_version_is_closes_it_and_keeps_what_was_chosen(self):
        d = self.d
        self.assertEqual(self.setup(rf"/S /D={ODD_FOLDER}", "older.exe"), 0)
        place = host_path(d, ODD_FOLDER)
        self.assertEqual((place / "iea.exe").read_bytes(), b"MZ of an older day")
        (d.home.c / MENU / "Quellix.lnk").unlink()  # was not wanted
        for name in LISTS:
            (place / name).write_text(f"line of {name}\r\n")
        self.start_program(ODD_FOLDER)
        d.click("cmdDeselectAll")
        d.set_checked(("chkWinsettings", 5))

        self.assertEqual(self.setup(), 0)
        self.assertEqual(d.wait_ended(), 0)
        self.assertEqual(installed(d), ODD_FOLDER)
        self.assert_is_what_was_packed(ODD_FOLDER)
        self.assertEqual(d.reg("HKLM", UNINSTALL_KEY, "DisplayVersion").text, "1.0")
        self.assertFalse((d.home.c / MENU / "Quellix.lnk").exists())
        self.start_program(ODD_FOLDER)
        self.assertEqual(d.registry_section("CleanSettings"), only("RunHistory")["CleanSettings"])
        self.assertTrue(d.checked(("chkWinsettings", 5)))
        for name in LISTS:
            self.assertEqual((place / name).read_text(), f"line of {name}\n")

        # A removal that keeps them, in a folder that somebody else uses, too, beside a copy that starts with Windows.
        self.end_program()
        canary = place / "manual/my notes.txt"
        canary.parent.mkdir(exist_ok=True)
        canary.write_text("mine")
        d.reg_set("HKLM", RUN_KEY, RUN_VALUE, r"C:\elsewhere\Quellix.exe m")
        self.remove(ODD_FOLDER, "/S /KeepSettings")
        self.assertEqual({path.relative_to(place).as_posix() for path in place.rglob("*")},
                         {"manual", "manual/my notes.txt", *LISTS})
        self.assertEqual(d.registry_section("CleanSettings"), only("RunHistory")["CleanSettings"])
        self.assertEqual(d.reg("HKLM", RUN_KEY, RUN_VALUE).text, r"C:\elsewhere\Quellix.exe m")

    def test_that_cannot_close_the_program_changes_nothing_and_says_so(self):
        d = self.d
        folder = r"C:\Held"
        self.assertEqual(self.setup(rf"/S /D={folder}", "older.exe"), 0)
        self.start_program(folder)
        with d.halted():
            self.assertEqual(self.setup(rf"/S /D={folder}"), 2)
        self.assertEqual((host_path(d, folder) / "iea.exe").read_bytes(), b"MZ of an older day")
        self.assertEqual(d.reg("HKLM", UNINSTALL_KEY, "DisplayVersion").text, "0.9")
        d.terminate()


class AnInstallationByHand(SetupCase):
    NEXT = 1

    def window(self):
        return self.d.wait_window("#32770", seconds=60)

    def press(self, caption: str) -> None:
        """Presses the wizard's main button once it says so."""
        d = self.d
        wizard = self.window()
        d.wait_control(self.NEXT, lambda c: c.text.replace("&", "") == caption and c.enabled, f"to say {caption}", wizard, 60)
        name = f"{self.pictures}-{caption.split()[0].lower()}"
        self.pictures += 1
        d.screenshot(BUILT / f"setup-{name}.png", wizard)
        d.click(self.NEXT, wizard)

    def test_shows_what_is_chosen_starts_the_program_and_is_removed_in_the_same_way(self):
        d = self.d
        self.pictures = 1
        d.start(r"C:\setup.exe")
        self.tick_third(self.window())
        self.press("Next >")  # what is installed
        wizard = self.window()
        path = d.wait_control(1019, lambda c: c.visible, "to show the folder", wizard)
        self.assertEqual(path.text, r"C:\Program Files\Quellix")
        d.replace_text(1019, r"C:\Tools\Quellix", wizard)
        self.press("Install")
        self.press("Finish")  # which starts the program
        d.post(d.wait_window("frmMain"), WM_CLOSE)
        wait_for("the program to end", lambda: not d.processes("Quellix.exe"))
        self.assertEqual(installed(d), r"C:\Tools\Quellix")
        self.assertTrue((d.home.c / DESKTOP_ICON).is_file())

        (d.home.c / "Tools/Quellix/canary.txt").write_text("mine")
        d.start(r"C:\Tools\Quellix\Uninstall.exe")
        self.press("Uninstall")
        self.press("Close")
        wait_for("the uninstaller to end", lambda: not d.processes("Un.exe"))
        self.assertEqual([path.name for path in (d.home.c / "Tools/Quellix").iterdir()], ["canary.txt"])
        self.assertIsNone(installed(d))
        self.assertFalse((d.home.c / DESKTOP_ICON).exists())
        self.assertIsNone(d.reg_list("HKCU", r"Software\Quellix"))

    def tick_third(self, wizard) -> None:
        """Ticks the third of the components, the desktop icon."""
        d = self.d
        left, top, _, _ = d.wait_control(COMPONENTS, lambda c: c.visible, "to come", wizard).rect
        d.settle(COMPONENTS, wizard)
        d.click_at(left + 9, top + 2 + 2 * LINE + LINE // 2)
        d.settle(COMPONENTS, wizard)


if __name__ == "__main__":
    unittest.main(verbosity=2)
