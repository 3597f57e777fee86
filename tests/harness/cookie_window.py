"""What the tests of the window "Cookies Manager" share: its controls, its lists, the cookies that were planted."""
import itertools
import shutil

from tests.harness.driver import PROGRAMS, View, compile_windows_program, wait_for
from tests.harness.program import STARTED, ProgramCase, only
from tests.harness.url_cache import cookie_file, plant

TITLE, ON_SHOW = "Cookies Manager", "Displaying Cookies"
CURRENT, KEPT = "lstKeeplist", "SafeList"
TAB_ORDER = [CURRENT, "cmdAdd", "cmdAddAll", "cmdRemove", "cmdRemoveAll", KEPT, "cmdRefresh", "cmdClose"]
CAPTIONS = {"lblCookies": "Current Cookies", "lblKeepList": "Keep List", "cmdAdd": "Add >>", "cmdAddAll": "Add All >>",
            "cmdRemove": "<<  Remove", "cmdRemoveAll": "<< Remove All", "cmdRefresh": "Refresh", "cmdClose": "Save And Close"}
PLANTED = ["alice@first.example", "alice@mail.second.example", "alice@third.example", "alice@ads.fourth.example"]
COOKIES = [cookie_file(name) for name in PLANTED]
GONE = cookie_file("alice@gone.example")
WS_HSCROLL = 0x00100000
LB_GETCOUNT, LB_GETHORIZONTALEXTENT = 0x018B, 0x0193


def as_file(names: list[str]) -> bytes:
    return "".join(f"{name}\r\n" for name in names).encode("latin-1")


class CookieCase(ProgramCase):
    """One program for a class; each test opens the window anew, without a keep list."""

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        plant(cls.d.home, "content", "3", "visited", "2", *itertools.chain(*(("cookie", name) for name in PLANTED)))

    def setUp(self):
        self.file = self.d.home.c / "Quellix/SafeCookie.dat"
        self.window = None
        self.start_unless_untouched(only("RecentDocument"))

    def tearDown(self):
        if self.window and self.d.ended(self.d.pid) is None and self.d.find_window("#32770", TITLE):
            self.d.post(self.window, 0x0010)  # WM_CLOSE
            self.wait_closed()
        if self.file.is_dir():
            self.file.rmdir()
        self.file.unlink(missing_ok=True)
        self.assertEqual(list(self.file.parent.glob("SafeCookie*")), [], "something is left beside the keep list")

    # The window

    def show(self, kept: bytes | None = None) -> View:
        """Opens the window, over a file that holds these bytes."""
        if kept is not None:
            self.file.write_bytes(kept)
        self.d.click("cmdCookiesOption")
        self.window = self.d.wait_window("#32770", TITLE)
        return self.window

    def open(self, kept: list[str] | None = None) -> None:
        """Opens the window on a keep list and waits until it is filled."""
        self.show(None if kept is None else as_file(kept))
        self.wait_lists([name for name in COOKIES if name not in (kept or [])], kept or [])
        self.wait_ready()

    def wait_ready(self) -> None:
        self.d.wait_control("cmdClose", lambda c: c.enabled, "to be enabled", self.window)

    def lists(self) -> tuple[list[str], list[str]]:
        return self.d.items(CURRENT, self.window), self.d.items(KEPT, self.window)

    def wait_lists(self, current: list[str], kept: list[str], seconds: float = 120) -> None:
        """The cache has an order of its own; the keep list's is the user's."""
        def hold():
            left, right = self.lists()
            return (sorted(left), right) == (sorted(current), kept)
        try:
            wait_for("the lists", hold, seconds)
        except TimeoutError as e:
            raise TimeoutError(f"{e}; they are {self.lists()} instead of {current}, {kept}") from None

    def check_unchanged(self, current: list[str], kept: list[str]) -> None:
        self.d.settle(CURRENT, self.window)
        left, right = self.lists()
        self.assertEqual((sorted(left), right), (sorted(current), kept))

    def press(self, button: str) -> None:
        self.wait_ready()
        self.d.click(button, self.window)

    def select(self, name: str, line: str) -> None:
        self.d.click_item(name, line, self.window)
        self.d.wait_control(name, lambda c: c.selected >= 0 and c["items"][c.selected] == line, "to have it", self.window)

    def wait_closed(self, status: str = STARTED) -> None:
        self.d.wait_no_window("#32770", TITLE)
        self.d.wait_status(status)

    def save_and_close(self) -> None:
        self.press("cmdClose")
        self.wait_closed()

    def activate_main_window(self) -> None:
        """By its title bar, which shows from under the other window."""
        left, top, right, _ = self.d.main.rect
        self.d.click_at((left + right) // 2, top + 12)
        self.wait_in_front()

    def drag_down(self, pixels: int) -> None:
        """Drags the window off the main window by its title bar. Wine lays a window that comes to the front over the ones
        that it owns; Windows does not."""
        left, top, right, _ = self.window.rect
        x, y = (left + right) // 2, top + 12
        wanted, lowest = top + pixels, int(self.d.screen.partition("x")[2]) - 2

        def is_there():
            nonlocal y
            self.d.settle(CURRENT, self.window)  # the window follows the mouse, and on a busy machine not from its first step on
            self.window = self.d.find_window("#32770", TITLE)
            rest = wanted - self.window.rect[1]
            if rest:
                y = min(y + rest, lowest) if y < lowest or rest < 0 else lowest - 1
                self.d.move(x, y)
            return not rest
        with self.d.button_held_at(x, y):
            wait_for("the window to be dragged", is_there)
        self.d.settle(CURRENT, self.window)  # until it has let go of the mouse, it would take a click as the end of the drag

    def hold_file(self) -> int:
        """Opens the keep list in another program that lets nobody else read it, and gives its process."""
        held = self.d.home.c / "held"
        held.unlink(missing_ok=True)
        shutil.copy2(compile_windows_program(PROGRAMS / "hold_file.cpp"), self.d.home.c)
        pid = self.d.start(r"C:\hold_file.exe", r"C:\Quellix\SafeCookie.dat")
        wait_for("the file to be held", held.exists)
        return pid
