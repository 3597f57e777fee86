"""The shipped program on the NT family, from NT 4 without any Internet Explorer to Windows 10."""
import os
import shutil
import struct
import unittest

from tests.harness import browsers, url_cache
from tests.harness.driver import wait_for
from tests.harness.items import ITEMS
from tests.harness.program import DONE, only
from tests.standin.program_under import PRIVILEGE, UnderWindows
from tests.standin.standin import Call
from tests.standin.windows import WINDOWS, Systems
from tools import run_job

FORM_VALUES = r"Software\Microsoft\Internet Explorer\IntelliForms\Storage1"
UNFOLLOWED = 0x200000  # an option of NtOpenFile
SE_PRIVILEGE_ENABLED = 2
STREAMS, STREAMS_BELOW = r"Software\Microsoft\Windows\CurrentVersion\StreamMRU", "0"
# Without Internet Explorer there is no URL cache, and without the desktop update no function that empties the recycle bin.
STAYS_ON_NT4 = {"cache entries": 100, "cookies": 20, "recycle bin": 2}


class TheNtFamily(UnderWindows):
    def lay_out_links(self) -> None:
        """A link to the canaries in the temporary folder, and one in a folder to shred."""
        self.canaries = self.d.home.c / "canaries"
        for place in (self.d.home.temp / "deep", self.work / "folder"):
            shutil.rmtree(place, ignore_errors=True)
            place.mkdir()
            (place / "file.txt").write_text("x")
            if WINDOWS[self.windows].links:
                os.symlink(self.canaries, place / "link")

    def check_under(self, windows: str, has_task_list_call: bool, has_final_paths: bool) -> None:
        self.windows = windows
        self.lay_out_links()
        self.start_under(only("WinTempFileFolder") | {"Message_key": {"Message": "Dont"}}, "ExitWindowsEx answer 1")
        self.check_invisible(has_task_list_call)
        self.check_shred()
        self.check_run_and_reboot()
        self.check_identities(has_final_paths)
        self.assertEqual(len(list(self.canaries.iterdir())), 20)

    def check_invisible(self, asks: bool) -> None:
        """Only a system whose name tells that it lacks the call is not asked for it."""
        d = self.d
        d.click("cmdSchedule")
        d.wait_visible("cmdRunInv")
        d.click("cmdRunInv")
        d.wait_no_icon()
        d.wait_no_window("frmMain")
        with d.held("ctrl", "u"):
            self.wait_in_front()
        d.wait_icon()
        asked = [str(call) for call in self.calls("GetProcAddress", text="RegisterServiceProcess")]
        self.assertEqual(len(asked), int(asks), asked)
        self.assertEqual(self.calls("RegisterServiceProcess"), [])

    def check_shred(self) -> None:
        self.show_shredder()
        self.fill("lstFolder", [r"C:\work\folder"])
        self.d.click("cmdShredFolder")
        self.wait_count("lstFolder", 0)
        self.assertEqual((self.left(), self.d.text("txtMessage")), ([], "1 folder deleted."))
        self.check_link(r"C:\work\folder")

    def check_link(self, folder: str, before: int = 0) -> None:
        """A link went as a link, after so many others: removed by its own name, with nothing behind it looked at."""
        link = folder + r"\link"
        removed = self.deletions("link")[before:]
        expected = [("NtSetInformationFile", f"links {WINDOWS[self.windows].links:#x}")] if WINDOWS[self.windows].links else []
        self.assertEqual([(call.function, call.rule) for call in removed], expected)
        opened = [call for call in self.calls("NtOpenFile") if call.texts == ["link"]]
        self.assertEqual({call.arguments[5] & UNFOLLOWED for call in opened}, {UNFOLLOWED} if expected else set(), opened)
        behind = [str(call) for call in self.calls() if any(link + "\\" in text for text in call.texts)]
        self.assertEqual(behind, [])

    def check_run_and_reboot(self) -> None:
        d = self.d
        self.show_erase_panel()
        d.click("CmdCleanReboot")
        reboot = d.wait_call("ExitWindowsEx")
        self.assertEqual(self.log()[-2:], DONE)
        self.assertFalse((d.home.temp / "deep").exists())
        self.check_link("\\Temp\\deep", before=1)
        self.assertEqual(self.order_of(*PRIVILEGE, "ExitWindowsEx"), [*PRIVILEGE, "ExitWindowsEx"])
        asked, named, taken = self.calls(*PRIVILEGE)
        self.assertEqual((asked.arguments[1], named.texts, reboot.arguments), (0x28, ["", "SeShutdownPrivilege"], [6, 0]))
        self.assertEqual([call.result for call in (asked, named, taken, reboot)], [1, 1, 1, 1])
        # One privilege of the program's own token, switched on before the system is asked to go down.
        count, _, _, attributes = struct.unpack("<4I", taken.arguments[2])
        self.assertEqual((taken.arguments[:2], count, attributes), ([asked.arguments[2], 0], 1, SE_PRIVILEGE_ENABLED), taken)

    def check_identities(self, has_final_paths: bool) -> None:
        """The folder to empty was compared with those to keep, by the numbers that the disk gives folders."""
        compared = self.calls("GetFileInformationByHandle")
        self.assertGreater(len(compared), 4)
        self.assertEqual({call.result for call in compared}, {1})
        final = self.calls("GetFinalPathNameByHandleW")
        self.assertEqual(bool(final), has_final_paths, final)
        self.assertNotIn(0, [call.result for call in final])

    def test_on_nt_4(self):
        self.check_under("NT 4", has_task_list_call=False, has_final_paths=False)

    def test_on_2000(self):
        self.check_under("2000", has_task_list_call=False, has_final_paths=False)

    def test_on_xp(self):
        self.check_under("XP", has_task_list_call=False, has_final_paths=False)

    def test_on_7(self):
        self.check_under("7", has_task_list_call=True, has_final_paths=True)

    def test_on_10(self):
        self.check_under("10", has_task_list_call=True, has_final_paths=True)

    def test_the_companion_clears_the_form_entries_on_10_which_has_no_protected_store(self):
        d = self.d
        d.reg_set("HKCU", FORM_VALUES, "entry", "secret")
        code = d.wait_ended(d.start_under(Systems().rules("10", "iea.exe"), r"C:\Quellix\iea.exe", "1"))
        (refused,) = [call for call in self.calls("LoadLibraryExA") if call.error == 126 and not call.result]
        self.assertEqual((code, refused.texts), (0, [r"C:\windows\system32\pstorec.dll"]), refused)
        self.assertEqual(d.reg_list("HKCU", FORM_VALUES)["values"], {})

    def test_a_whole_run_on_nt_4_erases_what_it_has_functions_for(self):  # the first one, since others take traces away
        d = self.d
        url_cache.plant(d.home, "empty", "content", "100", "cookie", "20", "visited", "10")
        browsers.open_windows(d, (browsers.FRAME, "Holiday photos"))
        before = run_job.count_traces(d, "plant")
        self.assertEqual([family for family, count in before.items() if count == 0], [])
        d.current_folder = "C:\\"
        self.windows = "NT 4"
        self.start_under({"Scheduling": {"CHKieclose": "True"}}, "RegOpenKeyExW log", "NtDeleteKey log")
        run_job.schedule_shredding(d)
        self.press_erase_only()
        wait_for("the end of the run", lambda: self.log()[-1:] == DONE[-1:], 300)
        self.assertEqual(self.log(), [*(line for item in ITEMS for line in item.lines), *DONE])
        after = run_job.count_traces(d, "count")
        self.assertEqual({family: count for family, count in after.items() if count}, STAYS_ON_NT4)
        failed = {call.texts[0].rpartition("\\")[2] for call in self.calls("LoadLibraryExA") if not call.result}
        self.assertEqual(failed, {"wininet.dll"})
        self.check_keys_with_subkeys()

    def check_keys_with_subkeys(self) -> None:
        """They went although the shell's function for it is missing: each by the system's own one, from below."""
        key, below = self.deletion_of(STREAMS), self.deletion_of(STREAMS_BELOW)
        self.assertEqual((key.result, below.result), (0, 0), (key, below))
        self.assertLess(below.number, key.number)

    def deletion_of(self, key: str) -> Call:
        """Each name of a path is opened by itself, and a key for the last time when it is to be deleted."""
        opened = [call for call in self.calls("RegOpenKeyExW") if call.texts == [key.rpartition("\\")[2]]][-1]
        return next(call for call in self.calls("NtDeleteKey")
                    if call.number > opened.number and call.arguments[0] == opened.arguments[4])


if __name__ == "__main__":
    unittest.main(verbosity=2)
