"""What the tests of the shipped program share: its start with chosen settings, its log, its title bar."""
import contextlib
import unittest

from tests.harness import browsers
from tests.harness.driver import RUNNING_TITLE, WM_CLOSE, Desktop, wait_for
from tests.harness.items import ITEMS
from tests.harness.proxy import start_proxy

CAPTION = "Quellix v1.0"
STARTED = "Displaying Main Settings"
STOPPED = ["", "Erasing was manually stopped."]
DONE = ["", "Quellix has successfully erased selected item(s)."]
STORE = rf"Software\Quellix\{RUNNING_TITLE}"

# An address where nobody listens: the program then is off line on every machine and reports no error.
INTERNET_SETTINGS, NOBODY = r"Software\Microsoft\Windows\CurrentVersion\Internet Settings", "127.0.0.1:9"
OFF_LINE = {rf"HKCU\{INTERNET_SETTINGS}": {"ProxyEnable": 1, "ProxyServer": NOBODY}}

WM_NCHITTEST = 0x0084
MINIMISE_BUTTON, CLOSE_BUTTON = 8, 20


def only(*keys: str) -> dict[str, dict[str, str]]:
    """Settings with no other items ticked than these. Each of them makes a run a second longer."""
    unknown = set(keys) - {item.key for item in ITEMS}
    assert not unknown, unknown
    return {"CleanSettings": {item.key: "1" if item.key in keys else "0" for item in ITEMS}}


class ProgramCase(unittest.TestCase):
    """One desktop for a class; each test starts the program anew with the settings it needs."""

    desktop = Desktop
    options: dict = {}

    @classmethod
    def setUpClass(cls):
        name = f"{cls.__module__.rpartition('.')[2].removeprefix('test_')}-{cls.__name__}".lower()
        cls.d = cls.enterClassContext(cls.desktop(name, start=False, registry=OFF_LINE, **cls.options))

    def start(self, settings: dict | None = None, wait_until_started: bool = True, library: str | None = None) -> None:
        """Starts the program with no other stored settings than these."""
        self.end()
        self.store(settings)
        self.restart(wait_until_started, library)

    def store(self, settings: dict | None = None) -> None:
        """Makes these the only stored settings."""
        self.d.reg_delete_key("HKCU", STORE)
        for section, values in (settings or {}).items():
            for key, value in values.items():
                self.d.reg_set("HKCU", rf"{STORE}\{section}", key, value)

    def start_unless_untouched(self, settings: dict) -> None:
        """Spares the start when the program is as after one: on show, on its first panel, with no box or menu open."""
        d = self.d
        if not d.pid or d.ended(d.pid) is not None or d.boxes() or d.find_window("#32768") or not d.main.visible or \
                self.panel_on_show() != ["fraMain"]:
            self.start(settings)

    def restart(self, wait_until_started: bool = True, library: str | None = None) -> None:
        """Starts the program again with what it has stored."""
        self.d.start_program(library=library)
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

    @contextlib.contextmanager
    def on_line(self):
        """Every web page is there, which is what the program takes for being on line."""
        self.d.reg_set("HKCU", INTERNET_SETTINGS, "ProxyServer", start_proxy(self.d.home.c / "requests.txt"))
        try:
            yield
        finally:
            self.d.reg_set("HKCU", INTERNET_SETTINGS, "ProxyServer", NOBODY)

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
        wait_for("the main window in front", self.is_in_front)

    def is_in_front(self) -> bool:
        main, front = self.d.main, self.d.foreground()
        return main.visible and not main.iconic and front is not None and front.hwnd == main.hwnd

    def come_back(self) -> None:
        """Ends the invisible mode by its key."""
        self.d.hold_until(("ctrl", "u"), "the main window", lambda: self.d.find_window("frmMain"))
        self.wait_in_front()
        self.d.wait_icon()

    def bring_back(self, key: str, is_back=None) -> None:
        """Holds Shift and the boss key until the window, or what is asked for, is in front, and sees that it stays there.

        Wine tells a window that gets the keyboard of keys that are down as if they went down just then. When one goes up at
        that moment, the program may see the boss key once more, alone, and hide; a user presses again.
        """
        is_back = is_back or self.is_in_front
        for _ in range(5):
            self.d.hold_until(("shift", key), "what Shift and the boss key bring back", is_back)
            browsers.let_polls_pass(self.d)
            if is_back():
                return
        self.fail("Shift and the boss key brought it back, and it went again, five times")

    def panel_on_show(self) -> list[str]:
        return [p for p in ("fraMain", "fraClean", "fraShred", "fraScheduleManager", "fraHelp") if self.d.control(p).visible]
