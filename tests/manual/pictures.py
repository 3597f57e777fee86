"""The pictures of the manual, taken from the shipped program as it is used: GIF, 256 colours.

python3 -B -m tests.manual.pictures puts them into docs/manual/pictures; the test beside this file compares.
"""
import subprocess
import sys
import time
from pathlib import Path

from tests.harness import url_cache
from tests.harness.driver import BUILD, Desktop, wait_for
from tests.harness.program import DONE, OFF_LINE, only
from tools.wine_home import ROOT

PICTURES = ROOT / "docs/manual/pictures"
NAMES = ["addfolder", "advance", "cookies", "erase", "help", "main", "menu", "shredder", "warning", "window"]
TICKED = ["LocationbarHistory", "TemporaryInternetFile", "Cookies", "RecentDocumentList", "RunHistory", "OpenSavedDialoge"]
COOKIES = ["ann@news.example", "ann@shop.example", "ann@ads.example", "ann@tracker.example"]
PAPERS = ["letter.doc", "plan.txt", "accounts.xls"]


def prepare(home) -> None:
    (home.c / "papers/old drafts").mkdir(parents=True)
    for name in PAPERS:
        (home.c / "papers" / name).write_text("a draft")
    for name in COOKIES:
        url_cache.plant(home, "cookie", name)


class Camera:
    PATIENCE = 10  # seconds, for each picture

    def __init__(self, desktop: Desktop, folder: Path):
        self.d, self.folder = desktop, folder
        folder.mkdir(parents=True, exist_ok=True)

    def take(self, name: str, rect) -> None:
        """Takes it again while it is not yet the manual's own, because a busy machine paints late; what is new stays so."""
        until = time.monotonic() + self.PATIENCE
        self._take(name, rect)
        while differing_pixels(PICTURES / f"{name}.gif", self.folder / f"{name}.gif") and time.monotonic() < until:
            self._take(name, rect)

    def _take(self, name: str, rect) -> None:
        left, top, right, bottom = rect
        whole = self.folder / "screen.png"
        self.d.display.screenshot(whole)
        subprocess.run(["convert", str(whole), "-crop", f"{right - left}x{bottom - top}+{left}+{top}", "+repage", "-strip",
                        "+dither", "-colors", "256", str(self.folder / f"{name}.gif")], check=True)
        whole.unlink()

    def control(self, name: str, of: str) -> None:
        self.d.settle(of)
        self.take(name, self.d.control(of).rect)

    def window(self, name: str, title: str, settled: str) -> None:
        window = wait_for(title, lambda: self.d.find_window(title=title))
        self.d.settle(settled, window)
        self.take(name, window.rect)

    def panel(self, name: str, button: str, frame: str) -> None:
        self.d.click(button)
        self.d.wait_visible(frame)
        self.control(name, frame)


def take_all(folder: Path) -> None:
    """Uses the program once from panel to panel."""
    settings = only(*TICKED) | {"Scheduling": {"chkShEnable": "1", "ScheduleHour": "1"}, "Startup": {"LoadStartup": "1"}}
    with Desktop("manual", prepare=prepare, registry=OFF_LINE, settings=settings,
                 files={name: BUILD / "dist" / name for name in ("Quellix.exe", "iea.exe")}) as d:
        camera = Camera(d, folder)
        d.wait_visible("fraMain")
        d.wait_icon()
        camera.window("window", "Quellix v1.0", "fraMain")
        camera.control("main", "fraMain")
        show_cookies(camera)
        d.click("cmdCleenFrame")
        d.click("cmdClean")
        wait_for("the end of the run", lambda: d.items("lstCln")[-2:] == DONE and not d.control("cmdStop").enabled, 60)
        camera.control("erase", "fraClean")
        show_shredder(camera)
        camera.panel("advance", "cmdSchedule", "fraScheduleManager")
        camera.panel("help", "cmdHelp", "fraHelp")
        show_menu(camera)
        show_warning(camera)


def show_cookies(camera: Camera) -> None:
    d = camera.d
    d.click("cmdCookiesOption")
    window = d.wait_window("#32770", "Cookies Manager")
    d.wait_control("lstKeeplist", lambda c: c.count == len(COOKIES), "to be full", window)
    for name in ("ann@news.example", "ann@shop.example"):
        d.click_item("lstKeeplist", url_cache.cookie_file(name), window)
        d.click("cmdAdd", window)
    d.wait_control("SafeList", lambda c: c.count == 2, "to hold two", window)
    camera.window("cookies", "Cookies Manager", "SafeList")
    d.click("cmdClose", window)
    d.wait_no_window("#32770", "Cookies Manager")


def show_shredder(camera: Camera) -> None:
    d = camera.d
    d.click("cmdSecureDelk")
    d.wait_visible("fraShred")
    d.click("cmdAddFolder")
    window = d.wait_window("#32770", "Quellix-Add Folder")
    d.wait_focus("dirList", window)
    for folder, double in (("C:\\", True), ("papers", True), ("old drafts", False)):
        wait_for(folder, lambda: folder in map(str.strip, d.items("dirList", window)))
        line = list(map(str.strip, d.items("dirList", window))).index(folder)
        d.click_item("dirList", line, window, double=double)
    camera.window("addfolder", "Quellix-Add Folder", "dirList")
    d.click("cmdAdd", window)
    d.wait_no_window("#32770", "Quellix-Add Folder")
    d.click("cmdFileShred")
    d.answer_file_dialog(*(rf"C:\papers\{name}" for name in PAPERS))
    d.wait_control("lstFileShred", lambda c: c.count == len(PAPERS), "to hold the files")
    camera.control("shredder", "fraShred")


def show_menu(camera: Camera) -> None:
    d = camera.d
    d.right_click_icon()
    d.popup()
    camera.take("menu", d.find_window("#32768").rect)
    d.key("Escape")
    d.wait_no_window("#32768")


def show_warning(camera: Camera) -> None:
    d = camera.d
    d.click("cmdSchedule")
    d.wait_visible("cmdRunInv")
    d.click("cmdRunInv")
    window = d.wait_window("#32770", "Warning")
    camera.window("warning", "Warning", "chkWarning")
    d.click("cmdContinue", window)


def differing_pixels(one: Path, other: Path) -> int:
    """How many pixels differ visibly; all of them where the sizes do."""
    told = subprocess.run(["compare", "-metric", "AE", "-fuzz", "10%", str(one), str(other), "null:"], check=False,
                          stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True)
    return int(float(told.stderr.split()[0])) if told.returncode in (0, 1) else sys.maxsize


if __name__ == "__main__":
    take_all(PICTURES)
