"""What the tests of the shipped program under one Windows share: its start with the rules of it, and its whole work."""
import shutil

from tests.harness import browsers, url_cache
from tests.harness.driver import BUILT, compile_windows_program, wait_for
from tests.harness.items import ITEMS
from tests.harness.program import DONE, OFF_LINE, only
from tests.harness.shredder import ShredderCase, overwritten_size
from tests.standin.standin import Call, StandInDesktop
from tests.standin.windows import WINDOWS, Systems, called_by
from tools import run_job
from tools.traces import other_browsers
from tools.wine_home import JAPANESE, WESTERN

RUN = r"Software\Microsoft\Windows\CurrentVersion\Run"
ADD_FOLDER, COOKIES = "Quellix-Add Folder", "Cookies Manager"
OF_FILES = {"CreateFileA", "CreateFileW", "DeleteFileA", "DeleteFileW", "DragQueryFileA", "DragQueryFileW", "FindFirstFileA",
            "FindFirstFileW", "GetFileInformationByHandle", "GetFinalPathNameByHandleW", "GetShortPathNameA", "MoveFileA",
            "MoveFileExW", "NtOpenFile", "NtSetInformationFile", "RemoveDirectoryA", "RemoveDirectoryW", "WriteFile"}
PRIVILEGE = ["OpenProcessToken", "LookupPrivilegeValueA", "AdjustTokenPrivileges"]
CACHE_WALK = ["FindFirstUrlCacheEntryA", "FindCloseUrlCache"]
OTHERS = {*PRIVILEGE, *CACHE_WALK, "DeleteUrlCacheEntry", "DeleteUrlCacheEntryA", "ExitWindowsEx", "RegisterServiceProcess",
          "SHEmptyRecycleBinA"}
# The sizes of records that every system takes.
SIZES = {"GetVersionExA": 148, "Shell_NotifyIconA": 88, "GetOpenFileNameA": 76, "GetOpenFileNameW": 76,
         "InitCommonControlsEx": 8}
LOAD = ("chkStartUp", 0)
LIST_FILE, KEEP_LIST = "QUELLIX_Shred", "SafeCookie.dat"
LOG_OFF = r"C:\windows\system32\wineboot.exe"
GENERIC_WRITE = 0x40000000
DISPOSITION = 13  # of NtSetInformationFile: that the file goes
DELETE_ON_CLOSE = 0x1000  # an option of NtOpenFile
SPEED = 20


def plant(home) -> None:
    """The profile of the main job."""
    run_job.plant_files(home)
    traces = compile_windows_program(run_job.TRACES, "-lole32", "-lshell32")
    (home.c / "traces.exe").write_bytes(traces.read_bytes())


class UnderWindows(ShredderCase):
    """One desktop for a class; each test starts the program with the rules of a Windows and what it adds to them."""

    windows = ""
    language = WESTERN

    @classmethod
    def setUpClass(cls):
        name = f"standin-{cls.__name__}".lower()
        cls.d = cls.enterClassContext(StandInDesktop(name, start=False, prepare=cls.lay_out, language=cls.language,
                                                     registry=OFF_LINE | other_browsers.REGISTRY))
        browsers.keep_keyboard(cls.d)

    @classmethod
    def lay_out(cls, home) -> None:
        plant(home)

    def setUp(self):
        shutil.rmtree(self.work, ignore_errors=True)
        self.work.mkdir()
        for name in (LIST_FILE, KEEP_LIST):
            (self.d.home.c / "Quellix" / name).unlink(missing_ok=True)

    def tearDown(self):
        if self.d.pid and self.d.ended(self.d.pid) is None:
            self.d.terminate()

    def start_under(self, settings: dict, *rules: str, wait_until_started: bool = True) -> None:
        """The test's own rules come first: the first one that is about a call decides."""
        names = {function.name for function in called_by()}
        logged = sorted((OF_FILES | OTHERS | set(SIZES)) & names)
        self.d.rules = [*rules, *Systems().rules(self.windows), f"clock {SPEED}", *(f"{name} log" for name in logged)]
        self.start(settings, wait_until_started)

    def calls(self, *functions: str, text: str = "") -> list[Call]:
        return [call for call in self.d.calls(*functions) if not text or any(text in t for t in call.texts)]

    def deletions(self, name: str) -> list[Call]:
        """The calls that made a file or folder go whose path, or name in its folder, ends so: by paths or by handles."""
        opened: dict[int, str] = {}
        found = []
        for call in self.calls("CreateFileW", "NtOpenFile", "NtSetInformationFile", "DeleteFileA", "DeleteFileW", "RemoveDirectoryA",
                               "RemoveDirectoryW"):
            if call.function == "CreateFileW" and call.texts:
                opened[call.result] = call.texts[0]
            elif call.function == "NtOpenFile" and call.result == 0:
                opened[call.arguments[0]] = call.texts[0]
                if call.arguments[5] & DELETE_ON_CLOSE and call.texts[0].endswith(name):
                    found.append(call)
            elif call.function == "NtSetInformationFile":
                if call.arguments[4] == DISPOSITION and call.result == 0 and opened.get(call.arguments[0], "").endswith(name):
                    found.append(call)
            elif call.texts and call.result and call.texts[0].endswith(name):
                found.append(call)
        return found

    def order_of(self, *functions: str) -> list[str]:
        return [call.function for call in self.calls(*functions)]


class TheWholeProgram(UnderWindows):
    """What the program is for, from the main job to the end of the session."""

    stays: dict[str, int] = {}  # what this Windows has no function for
    folder, names, encoding = "Briefe für Zoë", ["one, two.txt", "grün.txt"], "cp1252"
    cookie = "alice@first.example"

    @classmethod
    def lay_out(cls, home) -> None:
        plant(home)
        shutil.copytree(home.c / "Quellix", home.c / cls.folder)
        (home.temp / cls.folder).mkdir()
        for name in cls.names:
            (home.temp / name).write_text("x")
            (home.temp / cls.folder / name).write_text("x")

    def tearDown(self):
        super().tearDown()
        self.d.program_folder, self.d.current_folder = r"C:\Quellix", None

    @property
    def is_9x(self) -> bool:
        return WINDOWS[self.windows].family == "9x"

    def form(self, function: str) -> str:
        """The form of a function that takes names: the wide one where it works."""
        return function + ("A" if self.is_9x else "W")

    def check_deleted(self, name: str, times: int = 1) -> None:
        """By its name on Windows 9x, by its handle on the NT family, but for a folder that somebody has chosen."""
        deletions = self.deletions(name)
        self.assertEqual(len(deletions), times, deletions)
        allowed = {"DeleteFileA", "RemoveDirectoryA"} if self.is_9x else {"NtOpenFile", "NtSetInformationFile", "RemoveDirectoryW"}
        self.assertLessEqual({call.function for call in deletions}, allowed)

    def check_only_what_is_there(self) -> None:
        """Nothing was asked for that a Windows 9x refuses, apart from the one look whether there are wide functions."""
        calls = self.calls()
        self.assertIn(f"version {WINDOWS[self.windows].version}", {call.rule for call in calls})
        wrong = [str(call) for call in calls if call.function in SIZES and SIZES[call.function] not in call.first_words]
        self.assertEqual(wrong, [])
        if not self.is_9x:
            return
        refused = [str(call) for call in calls if call.rule in ("no-shared-deletion", "no-folder-handles")]
        self.assertEqual(refused, [])
        self.assertEqual([str(call) for call in calls if any(text.startswith("\\\\?\\") for text in call.texts)], [])
        wide = [call.function for call in calls if call.function.endswith("W") and call.error == 120]
        self.assertEqual([name for name in set(wide) if wide.count(name) > 1], [])

    def test_a_run_erases_everything_that_is_ticked(self):  # the first one, since others take traces away
        d = self.d
        url_cache.plant(d.home, "empty", "content", "100", "cookie", "20", "visited", "10")
        browsers.open_windows(d, (browsers.FRAME, "Holiday photos"), (browsers.FRAME, "Bank account"))
        before = run_job.count_traces(d, "plant")
        self.assertEqual([family for family, count in before.items() if count == 0], [])
        d.current_folder = "C:\\"  # where the item of the ScanDisk files looks
        self.start_under({"Scheduling": {"CHKieclose": "True"}})
        run_job.schedule_shredding(d)
        self.press_erase_only()
        wait_for("the end of the run", lambda: self.log()[-1:] == DONE[-1:], 300)
        self.assertEqual(self.log(), [*(line for item in ITEMS for line in item.lines), *DONE])
        after = run_job.count_traces(d, "count")
        self.assertEqual({family: count for family, count in after.items() if count}, self.stays)
        self.assertEqual((other_browsers.untouched(d.home), len(list((d.home.c / "canaries").iterdir()))),
                         (other_browsers.KEPT, 20))
        self.check_recycle_bin()
        self.check_cache_walks(1)  # the later ones find the cache empty
        self.check_only_what_is_there()

    def check_recycle_bin(self) -> None:
        """Every bin is emptied, without a question, a progress window and a sound."""
        told = [call.arguments for call in self.calls("SHEmptyRecycleBinA")]
        self.assertEqual(told, [[self.d.main.hwnd, "", 7]] if WINDOWS[self.windows].desktop_update else [])

    def check_cache_walks(self, count: int) -> None:
        """Each walk over the URL cache that was begun was ended, before the next one."""
        calls = [call for call in self.calls(*CACHE_WALK) if call.result]
        walks = [calls[index:index + 2] for index in range(0, len(calls), 2)]
        self.assertEqual(len(walks), count, walks)
        for begun, ended in walks:
            self.assertEqual((begun.function, ended.function, ended.arguments), (*CACHE_WALK, [begun.result]), (begun, ended))

    def test_shreds_what_its_dialogs_and_drops_give_it(self):
        d = self.d
        one, two, dropped = self.files(*self.names, f"{self.folder}/{self.names[0]}")
        second = self.second_name(one)
        self.start_under(only("RecentDocument") | {"Shredder": {"txtLevel": "1"}})
        self.show_shredder()
        self.choose_files("cmdFileShred", *self.names)
        self.wait_count("lstFileShred", 2)
        (asked,) = self.calls("GetOpenFileNameA", "GetOpenFileNameW")
        self.assertEqual((asked.function, asked.arguments, asked.result), (self.form("GetOpenFileName"), [76], 1), asked)
        self.drop("lstFolder", dropped.rpartition("\\")[0])
        self.wait_count("lstFolder", 1)
        self.assertEqual(set(self.order_of("DragQueryFileA", "DragQueryFileW")[1:]), {self.form("DragQueryFile")})
        self.assertEqual((set(d.items("lstFileShred")), d.items("lstFolder")), ({one, two}, [rf"C:\work\{self.folder}"]))
        d.settle("lstFolder")
        d.screenshot(BUILT / f"standin/{type(self).__name__}.png", d.main)
        d.replace_text("txtLev", "1")
        d.click("cmdShredAll")
        self.wait_count("lstFileShred", 0)
        d.wait_text("txtMessage", "1 folder deleted. 2 files shredded.")
        self.assertEqual((self.left(), second.stat().st_size), ([], overwritten_size(1)))
        (written,) = [call for call in self.calls(self.form("CreateFile"), text=one) if call.arguments[1] & GENERIC_WRITE]
        self.assertTrue([call for call in self.calls("WriteFile") if call.arguments[0] == written.result], written)
        self.check_deleted(one)
        self.check_deleted(self.folder)
        self.check_only_what_is_there()

    def test_chooses_a_folder_in_its_own_dialog_and_shreds_it(self):
        d = self.d
        self.files(f"{self.folder}/{self.names[0]}", f"{self.folder}/{self.folder}/{self.names[1]}", "other.txt")
        self.start_under(only("RecentDocument"))
        self.show_shredder()
        d.click("cmdAddFolder")
        window = d.wait_window("#32770", ADD_FOLDER)
        d.click_item("dirList", "   work", window, double=True)
        d.wait_control("dirList", lambda c: f"      {self.folder}" in c["items"], "to show the folder", window)
        d.click_item("dirList", f"      {self.folder}", window)
        d.click("cmdAdd", window)
        d.wait_no_window("#32770", ADD_FOLDER)
        d.wait_control("lstFolder", lambda c: c["items"] == [rf"C:\work\{self.folder}"], "to have the folder")
        d.click("cmdShredFolder")
        self.wait_count("lstFolder", 0)
        self.assertEqual((self.left(), d.text("txtMessage")), (["other.txt"], "1 folder deleted."))
        self.check_deleted(self.folder, 2)
        self.check_only_what_is_there()

    def test_shreds_by_the_schedule_what_is_on_the_list_since_the_last_start(self):
        d = self.d
        self.start_under(only("WinTempFileFolder") | {"Scheduling": {"chkOptions": "1"}, "Shredder": {"txtLevel": "1"}})
        paths = self.files(*self.names)
        self.show_shredder()
        self.choose_files("cmdCustomAdd", *self.names)
        self.wait_count("lstFiles", 2)
        d.settle("lstFiles")
        self.assertEqual(self.list_file.read_bytes().decode(self.encoding).split("\r\n"), [*d.items("lstFiles"), ""])
        self.assertEqual(set(d.items("lstFiles")), set(paths))
        self.press_erase_only()
        self.assertEqual(self.wait_run_over()[-2:], DONE)
        self.assertEqual(self.left(), [])
        for path in paths:
            self.check_deleted(path)
        self.check_only_what_is_there()

    def test_stores_the_keep_list_and_shows_it_again(self):
        d = self.d
        url_cache.plant(d.home, "empty", "content", "3", "cookie", "5", "cookie", self.cookie)
        cookie, file = url_cache.cookie_file(self.cookie), d.home.c / "Quellix" / KEEP_LIST
        self.start_under(only("Cookies"))
        window = self.open_cookies()
        d.wait_control("lstKeeplist", lambda c: cookie in c["items"], "to show the cookie", window)
        d.click_item("lstKeeplist", cookie, window)
        d.click("cmdAdd", window)
        d.wait_control("SafeList", lambda c: c["items"] == [cookie], "to have it", window)
        d.click("cmdClose", window)
        d.wait_no_window("#32770", COOKIES)
        self.assertEqual((file.read_bytes().split(), list(file.parent.glob("SafeCookie*"))), ([cookie.encode()], [file]))
        in_one_step, in_two = (self.calls(name, text="SafeCookie.dat.tmp") for name in ("MoveFileExW", "MoveFileA"))
        self.assertEqual([call.result for call in in_one_step], [] if self.is_9x else [1])
        self.assertEqual([call.result for call in in_two], [1] if self.is_9x else [])
        window = self.open_cookies()
        d.wait_control("SafeList", lambda c: c["items"] == [cookie], "to show it again", window)
        d.click("cmdClose", window)
        d.wait_no_window("#32770", COOKIES)
        self.press_erase_only()
        self.assertEqual(self.wait_run_over()[-2:], DONE)
        self.assertEqual(url_cache.counts(d.home), {"content": 0, "cookie": 0, "visited": 0})
        # Internet Explorer 4 has the function under its shorter name only.
        name = "DeleteUrlCacheEntry" + "A" * (WINDOWS[self.windows].explorer > 4)
        self.assertEqual(set(self.order_of("DeleteUrlCacheEntry", "DeleteUrlCacheEntryA")), {name})
        self.check_cache_walks(4)  # twice for the window, once for each of two items
        self.check_only_what_is_there()

    def open_cookies(self):
        self.d.click("cmdCookiesOption")
        window = self.d.wait_window("#32770", COOKIES)
        self.d.settle("SafeList", window)
        return window

    def test_stores_its_settings_and_starts_with_windows(self):
        d = self.d
        self.start_under(only("RecentDocument"))
        d.set_checked(("chkWinsettings", 0))
        d.click("cmdSchedule")
        d.wait_visible(LOAD)
        d.set_checked(LOAD)
        self.end()
        self.assertEqual(d.registry_section("CleanSettings"), only("RecentDocument", "WinTempFileFolder")["CleanSettings"])
        self.assertEqual(d.registry_section("Startup"), {"LoadStartup": "1", "Startup": "0"})
        self.assertEqual(self.run_value(), r"C:\Quellix\Quellix.exe m")
        self.restart()
        self.assertTrue(d.checked(LOAD))
        self.check_only_what_is_there()

    def run_value(self) -> str:
        return self.d.reg("HKLM", RUN, "Quellix - 1.0").text

    def test_keeps_its_list_in_its_own_folder_and_starts_from_it(self):
        d = self.d
        d.program_folder = rf"C:\{self.folder}"
        self.start_under(only("RecentDocument") | {"Startup": {"LoadStartup": "1"}})
        paths = self.files(*self.names)
        self.show_shredder()
        self.fill("lstFiles", paths)
        d.settle("lstFiles")
        self.end()
        started = self.run_value().removesuffix(" m")
        self.assertTrue((d.home.c / self.folder / LIST_FILE).exists(), [str(call) for call in self.calls(text=LIST_FILE)])
        short = [call.texts[1] for call in self.calls("GetShortPathNameA", text="Quellix.exe")]
        self.assertIn(started, [rf"C:\{self.folder}\Quellix.exe", *short])
        self.restart()
        self.show_shredder()
        self.assertEqual(d.items("lstFiles"), paths)
        self.check_only_what_is_there()

    def test_hides_by_the_boss_key_and_leaves_the_task_list(self):
        d = self.d
        self.start_under(only("RecentDocument") | {"Boss": {"bossKey": "120"}, "Message_key": {"Message": "Dont"}})
        process = d.pid
        with d.held("F9"):
            d.wait_no_window("frmMain")
        self.bring_back("F9")
        d.click("cmdSchedule")
        d.wait_visible("cmdRunInv")
        d.click("cmdRunInv")
        d.wait_no_icon()
        d.wait_no_window("frmMain")
        with d.held("ctrl", "u"):
            self.wait_in_front()
        d.wait_icon()
        told = [(call.arguments, call.result) for call in self.calls("RegisterServiceProcess")]
        self.assertEqual(told[:2], [([process, 1], 1), ([process, 0], 1)] if self.is_9x else [])
        self.check_only_what_is_there()

    def test_erases_at_the_end_of_the_session(self):
        d = self.d
        trace = d.home.temp / "trace.tmp"
        trace.write_text("x")
        self.start_under(only("WinTempFileFolder") | {"Scheduling": {"Shutdown": "1"}})
        d.set_checked(("chkOsettings", 1))
        leaving = d.start(LOG_OFF, "-e")
        self.assertEqual(d.wait_ended(), 0)
        d.wait_ended(leaving)
        self.assertFalse(trace.exists())
        self.check_deleted("trace.tmp")
        self.assertEqual(d.registry_section("CleanSettings"), only("OClean", "WinTempFileFolder")["CleanSettings"])
        self.check_only_what_is_there()

    def test_reboots_and_asks_for_the_privilege_where_there_are_any(self):
        d = self.d
        self.start_under(only("RecentDocument"), "ExitWindowsEx answer 1")
        self.show_erase_panel()
        d.click("CmdCleanReboot")
        reboot = d.wait_call("ExitWindowsEx")
        self.assertEqual(reboot.arguments, [6, 0], reboot)
        self.assertEqual(self.order_of(*PRIVILEGE, "ExitWindowsEx"), [*([] if self.is_9x else PRIVILEGE), "ExitWindowsEx"])
        self.check_only_what_is_there()


class Japanese:
    """The code page in which the second byte of some letters is that of a backslash."""

    language, encoding = JAPANESE, "cp932"
    # The folder's last letter is one of them, and so is the first one of each file.
    folder, names = "予定表", ["十二月.txt", "ソ.txt"]

    def test_leaves_what_lies_beside_a_chosen_folder(self):
        chosen, beside = self.folder, [self.folder[:-1], self.folder * 2]
        self.files(*(f"{folder}/file.txt" for folder in (chosen, *beside)), f"{chosen}.txt")
        self.start_under(only("RecentDocument"))
        self.show_shredder()
        self.fill("lstFolder", [rf"C:\work\{chosen}"])
        self.d.click("cmdShredFolder")
        self.wait_count("lstFolder", 0)
        deleted = [str(call) for call in self.deletions("")]
        self.assertEqual(self.left(), sorted([*beside, *(f"{folder}/file.txt" for folder in beside), f"{chosen}.txt"]), deleted)
