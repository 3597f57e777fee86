"""Names that the ANSI code page would lead elsewhere: each leads to what was chosen, and what lies beside it stays.

Under the code page of Japan the second byte of some letters is the one of a backslash. Under the western one some letters
are missing, and the system puts one that looks alike in their place.
"""
import shutil
import unittest

from tests.harness.driver import BUILT, wait_for
from tests.harness.program import STARTED, only
from tests.harness.shredder import LIST_FILE, ShredderCase
from tools.wine_home import JAPANESE, USER, WESTERN

RUN_KEY = r"Software\Microsoft\Windows\CurrentVersion\Run"
TITLE = "Quellix-Add Folder"


class Names:
    """What is chosen, and what the code page would make of it, both below C:\\work; the program's own folder and its user's."""
    language: str
    folder: str           # holds `inner`, which holds `files`
    inner: str
    files_in: list[str]
    folders_beside: list[str]
    files_beside: list[str]
    user: str
    users_beside: list[str]

    @property
    def chosen(self) -> str:
        return rf"C:\work\{self.folder}\{self.inner}"

    def make_tree(self) -> None:
        """Files in the chosen folder, in the one that it lies in, and in all that could be taken for either."""
        inner = [self.inner, *(name for name in self.folders_beside if name != self.folder)]
        for folder in (self.folder, *self.folders_beside):
            self.files(*(f"{folder}/{name}/{file}" for name in inner for file in self.files_in), f"{folder}/file.txt")
        self.files("file.txt")
        self.before = set(self.left())


class TheShredder(Names, ShredderCase):
    __test__ = False

    def taken(self) -> set[str]:
        return self.before - set(self.left())

    def inner_tree(self) -> set[str]:
        path = f"{self.folder}/{self.inner}"
        return {path, *(f"{path}/{file}" for file in self.files_in)}

    def shred_the_files(self, count: int) -> None:
        self.d.click("cmdshredFiles")
        self.d.wait_text("txtMessage", f"{count} files shredded.")

    def shred_the_folder(self) -> None:
        self.d.click("cmdShredFolder")
        self.wait_count("lstFolder", 0)
        self.d.settle("lstFolder")

    def test_a_folder_is_found_in_the_picker_and_is_the_one_that_goes(self):
        d = self.d
        self.make_tree()
        d.click("cmdAddFolder")
        window = d.wait_window("#32770", TITLE)
        d.wait_focus("dirList", window)
        for line, inside in (("   work", f"      {self.folder}"), (f"      {self.folder}", f"         {self.inner}")):
            d.click_item("dirList", line, window, double=True)
            wait_for(f"{inside.strip()} in the list", lambda inside=inside: inside in d.items("dirList", window))
        listed = [line.strip() for line in d.items("dirList", window)[3:]]
        self.assertEqual(set(listed), {self.inner, *(name for name in self.folders_beside if name != self.folder)})
        d.screenshot(BUILT / f"panels/frmAddDir-{self.language[:2]}.png", window)
        d.click_item("dirList", f"         {self.inner}", window)
        d.click("cmdAdd", window)
        d.wait_no_window("#32770", TITLE)
        self.wait_count("lstFolder", 1)
        self.assertEqual(d.items("lstFolder"), [self.chosen])
        self.shred_the_folder()
        self.assertEqual(self.taken(), self.inner_tree())

    def test_a_dropped_folder_is_the_one_that_goes(self):
        self.make_tree()
        self.fill("lstFolder", [self.chosen])
        self.assertEqual(self.d.items("lstFolder"), [self.chosen])
        self.shred_the_folder()
        self.assertEqual(self.taken(), self.inner_tree())

    def test_dropped_files_are_the_ones_that_go(self):
        paths = self.files(*self.files_in)
        self.files(*self.files_beside)
        self.fill("lstFileShred", paths)
        self.assertEqual(self.d.items("lstFileShred"), paths)
        self.d.screenshot(BUILT / f"panels/fraShred-{self.language[:2]}.png")
        self.shred_the_files(len(paths))
        self.assertEqual(self.left(), sorted(self.files_beside))

    def test_files_from_the_dialog_are_the_ones_that_go(self):
        paths = self.files(*self.files_in)
        self.files(*self.files_beside)
        self.choose_files("cmdFileShred", *self.files_in)
        self.wait_count("lstFileShred", len(paths))
        self.assertEqual(set(self.d.items("lstFileShred")), set(paths))
        self.shred_the_files(len(paths))
        self.assertEqual(self.left(), sorted(self.files_beside))

    def test_full_names_typed_into_the_dialog_lead_where_they_read(self):
        one, other = self.files(f"{self.folder}/{self.files_in[0]}", f"{self.inner}/{self.files_in[1]}")
        self.files(*(f"{folder}/{file}" for folder in self.folders_beside for file in self.files_in))
        beside = self.left()
        self.d.click("cmdFileShred")
        window, box = self.d.file_dialog()
        self.d.probe.ask("settext", box.hwnd, f'"{one}" "{other}"')
        self.d.key("Return")
        self.d.wait_no_window("#32770", window.title)
        self.wait_count("lstFileShred", 2)
        self.assertEqual(set(self.d.items("lstFileShred")), {one, other})
        self.shred_the_files(2)
        self.assertEqual(set(beside) - set(self.left()),
                         {f"{self.folder}/{self.files_in[0]}", f"{self.inner}/{self.files_in[1]}"})

    def test_a_program_in_such_a_folder_keeps_its_list_there_shreds_by_it_and_starts_from_there(self):
        d = self.d
        paths = self.files(*self.files_in)
        self.files(*self.files_beside)
        self.end()
        home = d.home.c / self.folder
        shutil.copytree(d.home.c / "Quellix", home)
        before = {path.name for path in d.home.c.iterdir()}

        def start() -> None:
            d.start_program(folder=rf"C:\{self.folder}")
            d.wait_status(STARTED)
            d.wait_icon()
            self.show_shredder()
        self.store(only("WinTempFileFolder") | {"Scheduling": {"chkOptions": "1"}, "Startup": {"LoadStartup": "1"}})
        start()
        self.fill("lstFiles", paths)
        d.settle("lstFiles")
        self.end()
        self.assertTrue((home / LIST_FILE).exists())
        self.assertEqual({path.name for path in d.home.c.iterdir()}, before)
        [command] = [value.text for name, value in d.reg_list("HKLM", RUN_KEY)["values"].items() if name.startswith("Quellix")]
        start()
        self.assertEqual(d.items("lstFiles"), paths)
        d.click("cmdCustomDeleteAll")
        self.wait_count("lstFiles", 0)
        self.assertEqual({path.name for path in d.home.c.iterdir()}, before)
        self.fill("lstFiles", paths)
        self.press_erase_only()
        self.wait_run_over()
        self.assertEqual(self.left(), sorted(self.files_beside))
        self.end()
        # As the system starts it at the next log-on.
        d.pid = d.start(command.removesuffix(" m"), "m", folder="C:\\")
        wait_for("the main window", lambda: d.find_window("frmMain"))
        d.wait_status(STARTED)
        d.wait_icon()
        self.end()
        shutil.rmtree(home)
        self.start(only("RecentDocument"))


class TheUser(Names, ShredderCase):
    """The user's profile has such a name, and TEMP lies in it."""
    __test__ = False

    def traces(self, user: str) -> dict[str, str]:
        mine = f"users/{user}"
        return {f"{mine}/Temp/file.tmp": "temporary", f"{mine}/Temp/folder/deep.tmp": "temporary",
                f"{mine}/Application Data/Mozilla/Profiles/default/x.slt/Cache/_CACHE_001_": "cache",
                f"{mine}/AppData/Roaming/Opera/Opera7/profile/cookies4.dat": "cookies"}

    def test_its_traces_go_and_those_of_a_user_of_a_like_name_stay(self):
        d = self.d
        self.end()
        all_traces = {user: self.traces(user) for user in (self.user, *self.users_beside)}
        for traces in all_traces.values():
            for path, text in traces.items():
                (d.home.c / path).parent.mkdir(parents=True, exist_ok=True)
                (d.home.c / path).write_text(text)
        self.start(only("WinTempFileFolder", "NCache", "Ocookies"))
        self.press_erase_only()
        self.wait_run_over()
        left = {user: sorted(path for path in traces if (d.home.c / path).exists()) for user, traces in all_traces.items()}
        self.assertEqual(left.pop(self.user), [])
        self.assertEqual(left, {user: sorted(all_traces[user]) for user in self.users_beside})
        self.start(only("RecentDocument"))


def in_the_profile(user: str) -> dict[str, str]:
    return dict.fromkeys(("TEMP", "TMP"), rf"C:\users\{user}\Temp")


class Japan(Names):
    """Each of these letters ends in 0x5C: the "表", "十", "ソ" and "予" of the code page 932."""
    language = JAPANESE
    folder, inner = "予定表", "十二月"
    folders_beside = ["予定表予定表", "予定", "二月", "定表"]
    files_in, files_beside = ["十二月.txt", "ソ.txt", "表"], ["二月.txt", ".txt", "十.txt", "表.txt"]
    user, users_beside = "予定表", [USER, "予定", "予定表Temp", "予定表AppData"]


class West(Names):
    """The code page 1252 has none of these letters; for most of them it has one that looks alike."""
    language = WESTERN
    folder, inner = "Łódź", "ＡＢ"
    folders_beside = ["Lódz", "AB", "Lódź", "Łódz"]
    files_in, files_beside = ["Ａ.txt", "Łukasz.txt", "Пароли.txt"], ["A.txt", "Lukasz.txt", "_.txt"]
    user, users_beside = "Łukasz", [USER, "Lukasz"]


class TheShredderInJapan(Japan, TheShredder):
    options = {"language": JAPANESE}


class TheShredderInTheWest(West, TheShredder):
    options = {"language": WESTERN}


class TheUserInJapan(Japan, TheUser):
    options = {"language": JAPANESE, "user": Japan.user, "environment": in_the_profile(Japan.user)}


class TheUserInTheWest(West, TheUser):
    options = {"language": WESTERN, "user": West.user, "environment": in_the_profile(West.user)}


del TheShredder, TheUser

if __name__ == "__main__":
    unittest.main(verbosity=2)
