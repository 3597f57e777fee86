"""What the tests of the shipped program share: its items, its start with chosen settings, its log, its title bar."""
import unittest
from typing import NamedTuple

from tests.harness.driver import RUNNING_TITLE, WM_CLOSE, Desktop, wait_for

CAPTION = "Quellix v1.0"
STARTED = "Displaying Main Settings"
STOPPED = ["", "Erasing was manually stopped."]
DONE = ["", "Quellix has successfully erased selected item(s)."]
STORE = rf"Software\Quellix\{RUNNING_TITLE}"

# An address where nobody listens: the program then is off line on every machine and reports no error.
OFF_LINE = {r"HKCU\Software\Microsoft\Windows\CurrentVersion\Internet Settings":
            {"ProxyEnable": 1, "ProxyServer": "127.0.0.1:9"}}

WM_NCHITTEST = 0x0084
MINIMISE_BUTTON, CLOSE_BUTTON = 8, 20


class Item(NamedTuple):
    key: str
    array: str
    index: int
    caption: str
    lines: tuple[str, ...] = ()

    @property
    def box(self) -> tuple[str, int]:
        return self.array, self.index


_IE, _WIN, _NET, _OPERA = "chkIEsettings", "chkWinsettings", "chkNetsettings", "chkOsettings"
ITEMS = [
    Item("LocationbarHistory", _IE, 0, "Erase Location Bar History", ("Erasing Internet Location Bar History...",)),
    Item("ClearAutoComplete", _IE, 1, "Erase AutoComplete  Forms Data", ("Erasing Auto Complete forms data...",)),
    Item("ClearAutoCompletePower", _IE, 3, "Erase AutoComplete Password Data",
         ("Erasing Auto Complete password data...",)),
    Item("TemporaryInternetFile", _IE, 2, "Erase Temporary Internet Files (Cache)",
         ("Erasing Internet Temporary File...",)),
    Item("InternetHistory", _IE, 4, "Internet History", ("Erasing IE History...",)),
    Item("ClearLockedIndex", _IE, 7, "Erase Locked Index.dat", ("Erasing  Locked Index.dat...",)),
    Item("Cookies", _IE, 8, "Erase Cookies", ("Erasing Cookies...",)),
    Item("WinTempFileFolder", _WIN, 0, "Erase Windows Temp File/Folder", ("Erasing Windows Temp File/Folder ...",)),
    Item("RecentDocumentList", _WIN, 1, "Erase Recent Document List", ("Erasing Windows Recent Document list ...",)),
    Item("RecycleBin", _WIN, 2, "Erase Recycle Bin", ("Erasing Windows Recycle Bin ...",)),
    Item("ScanDisk", _WIN, 3, "Erase ScanDisk .chk File", ("Erasing Scandisk .Chk Files...",)),
    Item("FindFileFolderHistory", _WIN, 4, "Erase Find File/Folder History", ("Erasing Find File/Folder History...",)),
    Item("RunHistory", _WIN, 5, "Erase Run History", ("Erasing RUN History...",)),
    Item("OpenSavedDialoge", _WIN, 6, "Erase Clipboard", ("Erasing Clipboard History...",)),
    Item("RecentDocument", _WIN, 7, "Erase Recent File/Folder"),
    Item("EraseRegistryFrame", _WIN, 8, "Erase Registry Fragment", ("Erasing Erase Registry Fragment...",)),
    Item("NTypedHistory", _NET, 1, "Erase Netscape Typed URL", ("Erasing Netscape Typed Url...",)),
    Item("NClearMailHistry", _NET, 2, "Erase Mail History", ("Erasing Netscape Mail History...",)),
    Item("NCache", _NET, 3, "Erase Netscape Cache", ("Erasing Netscape Cache...", "Erasing Netscape Cookies...")),
    Item("Ocookies", _OPERA, 0, "Erase Opera Cookies", ("Erasing Opera Cookies ...",)),
    Item("OClean", _OPERA, 1, "Erase Opera Cache", ("Erasing Opera Cache...",)),
    Item("OTypedUrl", _OPERA, 2, "Erase Typed URL", ("Erasing Opera Typed URLs....",)),
    # Shown and saved, and no run ever does anything about them.
    Item("UrlErrorLogs", _IE, 5, "Erase URL Error Logs"),
    Item("IEHistory", _IE, 6, "Erase IE History"),
    Item("NCookies", _NET, 0, "Erase Netscape Cookies"),
]


def only(*keys: str) -> dict[str, dict[str, str]]:
    """Settings with no other items ticked than these. Each of them makes a run a second longer."""
    unknown = set(keys) - {item.key for item in ITEMS}
    assert not unknown, unknown
    return {"CleanSettings": {item.key: "1" if item.key in keys else "0" for item in ITEMS}}


class ProgramCase(unittest.TestCase):
    """One desktop for a class; each test starts the program anew with the settings it needs."""

    options: dict = {}

    @classmethod
    def setUpClass(cls):
        name = f"{cls.__module__.rpartition('.')[2].removeprefix('test_')}-{cls.__name__}".lower()
        cls.d = cls.enterClassContext(Desktop(name, start=False, registry=OFF_LINE, **cls.options))

    def start(self, settings: dict | None = None, wait_until_started: bool = True) -> None:
        """Starts the program with no other stored settings than these."""
        self.end()
        self.d.reg_delete_key("HKCU", STORE)
        for section, values in (settings or {}).items():
            for key, value in values.items():
                self.d.reg_set("HKCU", rf"{STORE}\{section}", key, value)
        self.restart(wait_until_started)

    def start_unless_untouched(self, settings: dict) -> None:
        """Spares the start when the program is as after one: on show, on its first panel, with no box or menu open."""
        d = self.d
        if not d.pid or d.ended(d.pid) is not None or d.boxes() or d.find_window("#32768") or not d.main.visible or \
                self.panel_on_show() != ["fraMain"]:
            self.start(settings)

    def restart(self, wait_until_started: bool = True) -> None:
        """Starts the program again with what it has stored."""
        self.d.start_program()
        if wait_until_started:
            self.d.wait_status(STARTED)  # the last step of the start
            self.d.wait_icon()

    def end(self) -> None:
        d = self.d
        if d.pid and d.ended(d.pid) is None:
            d.post(None, WM_CLOSE)
            self.assertEqual(d.wait_ended(), 0)
        # The taskbar would show the icon of an ended program for a while.
        d.wait_no_icon()

    # The Erase panel

    def show_erase_panel(self) -> None:
        self.d.click("cmdCleenFrame")
        self.d.wait_visible("cmdClean")

    def press_erase_only(self) -> None:
        self.show_erase_panel()
        self.d.click("cmdClean")

    def log(self) -> list[str]:
        return self.d.items("lstCln")

    def wait_log(self, *lines: str) -> None:
        self.d.wait_control("lstCln", lambda c: c["items"] == list(lines), f"to hold {list(lines)}")

    def wait_run_over(self) -> list[str]:
        """Waits for the end of a run that a button started and returns its log."""
        wait_for("the last line of the log", lambda: self.log()[-2:] in (DONE, STOPPED))
        self.d.wait_enabled("cmdStop", False)
        return self.log()

    # The title bar and the desktop

    def click_title_button(self, button: int, window=None) -> None:
        window = window or self.d.main
        left, top, right, _ = window.rect
        for x in range(right - 6, left, -4):
            if self.d.send(window, WM_NCHITTEST, 0, x | top + 12 << 16).result == button:
                return self.d.click_at(x - 4, top + 12)
        self.fail(f"the title bar has no button {button}")

    def minimise(self) -> None:
        self.click_title_button(MINIMISE_BUTTON)
        self.d.wait_no_window("frmMain")

    def wait_in_front(self) -> None:
        """Waits until the main window is shown, not minimised, and the one that has the keyboard."""
        def in_front():
            main, front = self.d.main, self.d.foreground()
            return main.visible and not main.iconic and front and front.hwnd == main.hwnd
        wait_for("the main window in front", in_front)

    def panel_on_show(self) -> list[str]:
        return [p for p in ("fraMain", "fraClean", "fraShred", "fraScheduleManager", "fraHelp") if self.d.control(p).visible]
