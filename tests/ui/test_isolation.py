"""What the project starts under Wine stays inside build/: the caller's home, documents and trash are never touched."""
import hashlib
import os
import shutil
import subprocess
import sys
import unittest
from pathlib import Path

from tests.harness.driver import BUILD, Desktop
from tests.harness.program import DONE, ProgramCase, only
from tools.wine_home import ROOT

ITEMS = ["WinTempFileFolder", "RecentDocumentList", "RecycleBin", "ScanDisk"]

# A whole erase as `./quellix run` makes one, in a process that knows no other home than the caller's.
ERASE = "from tests.ui import test_isolation; test_isolation.erase_everything()"


def erase_everything() -> None:
    with Desktop("isolation-caller", settings=only(*ITEMS)) as d:
        (d.home.temp / "trace.tmp").write_text("x")
        d.click("cmdClean_2")
        d.wait_control("lstCln", lambda c: c["items"][-2:] == DONE, "to end", seconds=300)
        if (d.home.temp / "trace.tmp").exists():
            raise SystemExit("the erase did not erase")
        print(d.home.prefix)


def state_of(folder: Path) -> dict[str, tuple]:
    """Every file and folder with its size, its time of change and what it holds."""
    state = {}
    for path in sorted([folder, *folder.rglob("*")]):
        about = path.lstat()
        content = os.readlink(path) if path.is_symlink() else \
            hashlib.sha256(path.read_bytes()).hexdigest() if path.is_file() else ""
        state[str(path.relative_to(folder))] = (oct(about.st_mode), about.st_size, about.st_mtime_ns, content)
    return state


class TheCallersHome(unittest.TestCase):
    FOLDERS = ["Desktop", "Documents", "Downloads", "Music", "Pictures", "Videos", "Templates", "Public", "tmp", ".config",
               ".cache", ".wine/drive_c/users/me/Temp", ".local/share/Trash/files", ".local/share/Trash/info",
               ".local/share/recently-used"]

    def setUp(self):
        self.home = BUILD / "ui/callers-home"
        shutil.rmtree(self.home, ignore_errors=True)
        for folder in self.FOLDERS:
            (self.home / folder).mkdir(parents=True)
            for name in ("canary.txt", "canary.tmp", "FILE0000.CHK", "~canary.lnk"):
                (self.home / folder / name).write_text(f"the caller's {folder}/{name}")
        (self.home / ".local/share/Trash/info/canary.txt.trashinfo").write_text(
            "[Trash Info]\nPath=/canary.txt\nDeletionDate=2024-01-01T00:00:00\n")

    def environment(self) -> dict[str, str]:
        """As the shell of somebody who uses Wine, and who has told it where."""
        home = str(self.home)
        return dict(os.environ, HOME=home, XDG_DATA_HOME=f"{home}/.local/share", XDG_CONFIG_HOME=f"{home}/.config",
                    XDG_CACHE_HOME=f"{home}/.cache", WINEPREFIX=f"{home}/.wine", TMPDIR=f"{home}/tmp", TEMP=f"{home}/tmp")

    def test_is_as_it_was_after_an_erase_of_everything(self):
        before = state_of(self.home)
        done = subprocess.run([sys.executable, "-B", "-c", ERASE], cwd=ROOT, env=self.environment(), capture_output=True, text=True)
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        self.assertTrue(Path(done.stdout.strip()).is_relative_to(BUILD))
        self.assertEqual(state_of(self.home), before)


class ThePrivateWindows(ProgramCase):
    def setUp(self):
        self.start(only())

    def test_has_no_drive_but_its_own(self):
        prefix = self.d.home.prefix
        # Wine gives a serial port of the machine a name there; that is no drive.
        drives = [entry.name for entry in (prefix / "dosdevices").iterdir() if not entry.is_char_device()]
        self.assertEqual(drives, ["c:"])
        self.assertEqual((prefix / "dosdevices/c:").resolve(), self.d.home.c.resolve())

    def test_has_no_link_that_leads_out_of_the_build_folder(self):
        outside, links = [], 0
        for folder, folders, files in os.walk(self.d.home.base):
            for path in (Path(folder, name) for name in folders + files):
                if path.is_symlink() and not path.is_char_device():
                    links += 1
                    if not path.resolve().is_relative_to(BUILD.resolve()):
                        outside.append(str(path))
        self.assertGreater(links, 0)
        self.assertEqual(outside, [])

    def test_has_its_profile_and_its_temporary_folder_below_its_own_drive(self):
        for folder in (self.d.home.profile, self.d.home.temp, *self.d.home.profile.iterdir()):
            self.assertTrue(folder.resolve().is_relative_to(self.d.home.c.resolve()), folder)

    def test_leads_every_process_to_a_home_in_the_build_folder(self):
        environment = self.d.home.environment
        for name in ("HOME", "XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR", "TMPDIR", "WINEPREFIX"):
            self.assertTrue(Path(environment[name]).is_relative_to(BUILD), name)


if __name__ == "__main__":
    unittest.main(verbosity=2)
