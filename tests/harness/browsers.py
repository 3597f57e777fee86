"""Windows that look like a browser's to the program."""
import shutil

from tests.harness.driver import BUILT, PROGRAMS, Desktop, View, compile_windows_program, wait_for

FRAME = "IEFrame"
STATES = {"One": "normal", "Two": "maximised", "Three": "minimised"}
WS_MAXIMIZE = 0x01000000


def install(home) -> None:
    """Lays the stand-in for a browser into a profile: for `Desktop(prepare=...)`."""
    shutil.copy2(compile_windows_program(PROGRAMS / "browser.cpp"), home.c / "browser.exe")
    library = compile_windows_program(PROGRAMS / "browser.cpp", "-shared", output=BUILT / "browser.dll")
    shutil.copy2(library, home.c / "browser.dll")


def start(d: Desktop, *windows: tuple[str, str] | tuple[str, str, str], refusal: int = 0) -> int:
    """Starts a program that opens windows of a class, with a title and in a state, and returns its process id.

    They refuse to close for so many milliseconds; -1 is for ever.
    """
    words = " ".join(f'"{word}"' for window in windows for word in (*window, "normal")[:3])
    return d.start(r"C:\browser.exe", f"{refusal} {words}")


def open_windows(d: Desktop, *windows, refusal: int = 0) -> int:
    """`start`, and waits until all of them are open. The last one is on top."""
    process = start(d, *windows, refusal=refusal)
    wait_for("the windows of the other program", lambda: len(titles(d, process)) == len(windows))
    return process


def keep_keyboard(d: Desktop) -> None:
    """Opens a window that has the keyboard while the program has none on show.

    Wine is told of a key only while some window has the keyboard; other systems tell every program of every key.
    """
    open_windows(d, ("Form", "Work"), refusal=-1)


def in_front(d: Desktop, window: int | None = None, process: int | None = None) -> bool:
    """Whether a window, or one of a process, has the keyboard; for moments none has it."""
    front = d.foreground()
    return front is not None and window in (None, front.hwnd) and process in (None, front.pid)


def let_polls_pass(d: Desktop, count: int = 10) -> None:
    """Waits so long that the program has looked at the keyboard so many times. From outside nothing tells when it does."""
    begin = d.probe.ask("input").now
    wait_for("the time of some polls", lambda: d.probe.ask("input").now - begin > count * 50)


def titles(d: Desktop, process: int) -> list[str]:
    """The titles of a program's windows, in the order in which they were opened."""
    windows = [w for w in d.find_windows(pid=process, visible=None) if w["class"] != "IME"]
    return [w.title for w in sorted(windows, key=lambda w: w.rect[:2])]


def open_in_program(d: Desktop) -> None:
    """Opens the three windows of STATES inside the program's own process."""
    d.load_into_program(r"C:\browser.dll")
    wait_for("the three windows", lambda: states(d) == STATES)


def _state(window: View) -> str:
    if not window.visible:
        return "hidden"
    return "minimised" if window.iconic else "maximised" if window.style & WS_MAXIMIZE else "normal"


def states(d: Desktop) -> dict[str, str]:
    """What each window of the browser's class looks like, by its title."""
    return {w.title: _state(w) for w in d.find_windows(FRAME, visible=None)}
