"""Uses a Windows program from outside as a person does: real mouse, real keys, its windows, its notification icon.

The program runs in a virtual Wine desktop on a screen and in a profile of its own (`Desktop`). A probe on the same
desktop (uiprobe.cpp) tells what the windows show; what the user does goes through xdotool, never through messages.
Nothing here sleeps for a result: every action waits until Windows has taken the input, every check is a `wait_...`.
"""
import ast
import contextlib
import fcntl
import json
import os
import queue
import re
import shutil
import subprocess
import sys
import threading
import time
from pathlib import Path

HERE = Path(__file__).resolve().parent
ROOT = HERE.parents[1]
sys.path.insert(0, str(ROOT / "tools"))
from wine_home import BUILD, Display, WineHome, wait_for  # noqa: E402

BUILT = BUILD / "ui"
SIZE = "1024x768"
COMPILER = "i686-w64-mingw32-g++-posix"

WM_NULL, WM_CLOSE = 0x0000, 0x0010
BST_CHECKED = 1


def compile_windows_program(source: Path, *libraries: str, output: Path | None = None) -> Path:
    """Builds one of the helper programs of the tests when its sources are newer; safe to call from several tests."""
    BUILT.mkdir(parents=True, exist_ok=True)
    target = output or BUILT / (source.stem + ".exe")
    with open(BUILT / "compile.lock", "w") as lock:
        fcntl.flock(lock, fcntl.LOCK_EX)
        newest = max(f.stat().st_mtime for f in [source, *source.parent.glob("*.h")])
        if not target.exists() or target.stat().st_mtime < newest:
            fresh = target.with_suffix(".new")
            subprocess.run([COMPILER, "-std=c++20", "-O1", "-Wall", "-Wextra", "-static", "-s", "-o", str(fresh), str(source),
                            *libraries], check=True)
            fresh.replace(target)
    return target


def control_ids(*headers: Path) -> dict:
    """Names of controls to their ids, from lines like `#define IDC_cmdClean 1101`.

    A name that ends in `_<number>` is also known as an element of a control array: ("chkIEsettings", 0).
    Without arguments it reads every src/**/*_ids.h.
    """
    found: dict = {}
    values: dict[str, int] = {}
    line_shape = re.compile(r"^\s*#\s*define\s+(\w+)[ \t]+([^/\n]+)", re.M)
    for header in headers or sorted((ROOT / "src").rglob("*_ids.h")):
        for name, text in line_shape.findall(header.read_text(encoding="utf-8")):
            expression = re.sub(r"[A-Za-z_]\w*", lambda m: str(values.get(m[0], m[0])), text.strip())
            try:
                values[name] = int(eval_integer(expression))
            except (ValueError, SyntaxError):
                continue
            if name.startswith("IDC_"):
                plain = name[len("IDC_"):]
                found[plain] = values[name]
                array = re.fullmatch(r"(\w+)_(\d+)", plain)
                if array:
                    found[array[1], int(array[2])] = values[name]
    return found


def eval_integer(text: str) -> int:
    """The value of a constant sum such as `(1100 + 3)`."""
    def value(node) -> int:
        if isinstance(node, ast.Constant) and isinstance(node.value, int):
            return node.value
        if isinstance(node, ast.BinOp) and isinstance(node.op, (ast.Add, ast.Sub)):
            left, right = value(node.left), value(node.right)
            return left + right if isinstance(node.op, ast.Add) else left - right
        if isinstance(node, ast.UnaryOp) and isinstance(node.op, ast.USub):
            return -value(node.operand)
        raise ValueError(text)
    return value(ast.parse(text.strip(), mode="eval").body)


class View(dict):
    """What the probe told about a window or a control, by attribute: `view.text`, `view.rect`."""

    def __getattr__(self, name):
        try:
            return self[name]
        except KeyError:
            raise AttributeError(f"{name} is not known of {dict(self)}") from None

    @property
    def centre(self) -> tuple[int, int]:
        left, top, right, bottom = self["rect"]
        return (left + right) // 2, (top + bottom) // 2

    @property
    def checked(self) -> bool:
        return self["checked"] if "checked" in self else self["check"] == BST_CHECKED


class ProbeError(RuntimeError):
    pass


class Probe:
    """The probe program, one question and one answer at a time."""

    def __init__(self, home: WineHome, desktop: str):
        self.process = home.start(r"C:\uiprobe.exe", desktop, stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                  stderr=subprocess.DEVNULL)
        self._answers: queue.Queue = queue.Queue()
        self._one_at_a_time = threading.Lock()
        # A thread reads, so that a dead desktop shows as a message and not as a test that never ends. The pipe itself
        # may stay open after the probe has gone: services of Wine inherit it.
        self._reader = threading.Thread(target=self._read, daemon=True)
        self._reader.start()
        self._next(60)

    def _read(self) -> None:
        for line in self.process.stdout:
            self._answers.put(line)

    def _next(self, seconds: float):
        end = time.monotonic() + seconds
        while True:
            try:
                line = self._answers.get(timeout=0.2)
                break
            except queue.Empty:
                if self.process.poll() is not None and self._answers.empty():
                    raise ProbeError("the probe has ended") from None
                if time.monotonic() > end:
                    raise ProbeError(f"the probe did not answer within {seconds:g} s") from None
        answer = json.loads(line, object_hook=View)
        if isinstance(answer, dict) and "error" in answer:
            raise ProbeError(answer["error"])
        return answer

    def ask(self, command: str, *arguments, seconds: float = 60):
        words = [command] + [str(a) if isinstance(a, int) else json.dumps(str(a)) for a in arguments]
        with self._one_at_a_time:
            try:
                self.process.stdin.write((" ".join(words) + "\n").encode("ascii"))
                self.process.stdin.flush()
            except OSError:
                raise ProbeError("the probe has ended") from None
            return self._next(seconds)

    def alive(self) -> bool:
        return self.process.poll() is None

    def stop(self) -> None:
        with contextlib.suppress(OSError):
            self.process.stdin.write(b"quit\n")
            self.process.stdin.close()

    def close(self) -> None:
        """Lets go of the pipe, when every process of the prefix has ended."""
        self._reader.join(10)
        if not self._reader.is_alive():
            self.process.stdout.close()


def registry_file(values: dict[str, dict]) -> bytes:
    """A .reg file. `values` maps key paths (HKCU\\..., HKLM\\...) to names and values: text, number or bytes."""
    long_names = {"HKCU": "HKEY_CURRENT_USER", "HKLM": "HKEY_LOCAL_MACHINE", "HKCR": "HKEY_CLASSES_ROOT",
                  "HKU": "HKEY_USERS"}

    def quoted(text: str) -> str:
        return '"' + text.replace("\\", "\\\\").replace('"', '\\"') + '"'

    def data(value) -> str:
        if isinstance(value, bytes):
            return "hex:" + ",".join(f"{b:02x}" for b in value)
        return f"dword:{value & 0xFFFFFFFF:08x}" if isinstance(value, int) else quoted(value)

    lines = ["Windows Registry Editor Version 5.00", ""]
    for path, names in values.items():
        hive, _, rest = path.partition("\\")
        lines.append(f"[{long_names.get(hive, hive)}\\{rest}]")
        lines += [f"{quoted(name) if name else '@'}={data(value)}" for name, value in names.items()]
        lines.append("")
    return ("\r\n".join(lines) + "\r\n").encode("utf-16")


class Desktop:
    """A screen, a private Windows and the program in it; leaving it ends all of them.

    files      what is laid into C:\\Quellix, target name to source; by default all of build/dist
    program    which of them is the program; `start=False` leaves starting it to `start_program()`
    registry   key paths to {name: value}, set before the program starts
    settings   sections to {key: text} of the program's own store, set before the program starts
    windows    the Windows version that Wine shows to the program ("win98", "winxp", ...)
    prepare    called with the WineHome before the program starts, to lay out files
    """

    def __init__(self, name: str, *, files: dict[str, Path] | None = None, program: str = "Quellix.exe",
                 registry: dict | None = None, settings: dict | None = None, app_title: str = "Quellix",
                 windows: str | None = None, prepare=None, start: bool = True, arguments: str = "",
                 ids: dict | None = None, main_class: str = "frmMain"):
        self.name = name
        self.desktop = "quellix"
        self.files, self.program = files, program
        self.registry = dict(registry or {})
        for section, values in (settings or {}).items():
            self.registry[rf"HKCU\Software\Quellix\{app_title}\{section}"] = values
        self.app_title, self.windows_version, self.prepare = app_title, windows, prepare
        self.start_at_once, self.arguments = start, arguments
        self.ids = control_ids() if ids is None else ids
        self.main_class = main_class
        self.pid = 0
        self._last_click = (-100, -100)
        self._leave = contextlib.ExitStack()

    # Life

    def __enter__(self) -> "Desktop":
        try:
            self._set_up()
        except BaseException:
            self._leave.close()
            raise
        return self

    def _set_up(self) -> None:
        probe = compile_windows_program(HERE / "uiprobe.cpp")
        self.display = self._leave.enter_context(Display(SIZE))
        self.home = self._leave.enter_context(WineHome(f"ui-{self.name}", self.display.name))
        shutil.copy2(probe, self.home.c / "uiprobe.exe")
        folder = self.home.c / "Quellix"
        folder.mkdir()
        files = self.files
        if files is None:
            files = {f.relative_to(BUILD / "dist").as_posix(): f for f in (BUILD / "dist").rglob("*") if f.is_file()}
        for target, source in files.items():
            (folder / target).parent.mkdir(parents=True, exist_ok=True)
            shutil.copy2(source, folder / target)
        if self.registry:
            self.import_registry(self.registry)
        if self.windows_version:
            self.home.set_windows_version(self.windows_version, self.program)
        if self.prepare:
            self.prepare(self.home)
        self._open_desktop()
        if self.start_at_once:
            self.start_program(self.arguments)

    def _open_desktop(self) -> None:
        # Its output goes nowhere: the services that the first program of a prefix starts would hold a pipe open.
        self.explorer = self.home.start("explorer", f"/desktop={self.desktop},{SIZE}", stdin=subprocess.DEVNULL,
                                        stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self._leave.callback(self._reap, self.explorer)
        # The probe also keeps the desktop open: Wine closes one that has no program left.
        self._start_probe()
        wait_for("the taskbar of the virtual desktop", self.taskbar)

    def _start_probe(self) -> None:
        self.probe = Probe(self.home, self.desktop)
        self._leave.callback(self.probe.close)
        self._leave.callback(self._reap, self.probe.process)

    def _reap(self, process: subprocess.Popen) -> None:
        self.home.stop()
        with contextlib.suppress(subprocess.TimeoutExpired):
            process.wait(10)
            return
        process.kill()
        process.wait()

    def __exit__(self, kind, *_) -> None:
        if kind is not None:
            with contextlib.suppress(Exception):
                self.screenshot(BUILT / f"failed-{self.name}.png")
        self.probe.stop()
        self._leave.close()

    def start_program(self, arguments: str = "", wait_for_window: bool = True) -> int:
        """Starts the program as a double click on its file would and waits until its main window has come."""
        self.pid = self.start(rf"C:\Quellix\{self.program}", arguments)
        if wait_for_window:
            def shown():
                ended = self.ended(self.pid)
                if ended is not None:
                    raise AssertionError(f"{self.program} ended with {ended} before it showed a window")
                return self.find_window(self.main_class)
            wait_for(f"a window of class {self.main_class}", shown)
        return self.pid

    def start(self, path: str, arguments: str = "", folder: str | None = None) -> int:
        """Starts any program on the desktop and returns its process id."""
        return self.probe.ask("start", folder or path.rpartition("\\")[0], f'"{path}" {arguments}'.strip()).pid

    def ended(self, pid: int) -> int | None:
        """The exit code of a process that was started here, None while it runs."""
        told = self.probe.ask("ended", pid)
        return told.code if told.ended else None

    def wait_ended(self, pid: int | None = None, seconds: float = 30) -> int:
        process = pid or self.pid

        def over():
            code = self.ended(process)
            return None if code is None else (code,)  # a code of 0 is an end, too
        return wait_for(f"the end of process {process}", over, seconds)[0]

    def terminate(self, pid: int | None = None) -> None:
        """Ends a process that was started here as the task manager would, with no chance to save anything."""
        self.probe.ask("terminate", pid or self.pid)
        self.wait_ended(pid)

    def second_instance(self, arguments: str = "", seconds: float = 30) -> int:
        """Starts another copy on the same desktop, waits for its end and returns its exit code."""
        return self.wait_ended(self.start(rf"C:\Quellix\{self.program}", arguments), seconds)

    def end_session(self, seconds: float = 60) -> None:
        """Logs off: every window of the desktop is asked and then told that the session ends."""
        # Started on this desktop by the probe: from outside it would reach only the default desktop.
        self.wait_ended(self.start(r"C:\windows\system32\wineboot.exe", "-e"), seconds)

    # What is there

    def windows(self) -> list[View]:
        return self.probe.ask("windows")

    def find_windows(self, class_name: str | None = None, title: str | None = None, visible: bool | None = True,
                     pid: int | None = None) -> list[View]:
        return [w for w in self.windows()
                if (class_name is None or w["class"].lower() == class_name.lower()) and (title is None or w.title == title)
                and (visible is None or w.visible == visible) and (pid is None or w.pid == pid)]

    def find_window(self, class_name: str | None = None, title: str | None = None, visible: bool | None = True,
                    pid: int | None = None) -> View | None:
        return next(iter(self.find_windows(class_name, title, visible, pid)), None)

    def wait_window(self, class_name: str | None = None, title: str | None = None, visible: bool | None = True,
                    seconds: float = 20) -> View:
        return wait_for(f"a window, class {class_name}, title {title}, visible {visible}",
                        lambda: self.find_window(class_name, title, visible), seconds)

    def wait_no_window(self, class_name: str | None = None, title: str | None = None, visible: bool | None = True,
                       seconds: float = 20) -> None:
        wait_for(f"the window to go, class {class_name}, title {title}, visible {visible}",
                 lambda: not self.find_window(class_name, title, visible), seconds)

    @property
    def main(self) -> View:
        """The main window, shown or not."""
        found = self.find_window(self.main_class, visible=None)
        if not found:
            raise LookupError(f"there is no window of class {self.main_class}; there are "
                              + ", ".join(f"{w['class']} '{w.title}'" for w in self.windows()))
        return found

    def _window_handle(self, window) -> int:
        return self.main.hwnd if window is None else window if isinstance(window, int) else window.hwnd

    def handle(self, name, window=None) -> int:
        """The window handle of a control: by name, by (name, index) of an array, by id, or already a View.

        Where several controls of the window have the id, the one on show is meant.
        """
        if isinstance(name, View):
            return name.hwnd
        number = name if isinstance(name, int) else self.ids.get(name)
        if number is None:
            raise LookupError(f"no header names a control {name}")
        found = self.probe.ask("withid", self._window_handle(window), number)
        shown = [c for c in found if c.visible]
        if len(shown or found) != 1:
            raise LookupError(f"{len(found)} controls have the id {number} of {name}, {len(shown)} of them on show")
        return (shown or found)[0].hwnd

    def control(self, name, window=None) -> View:
        return self.probe.ask("control", self.handle(name, window))

    def controls(self, window=None) -> list[View]:
        return self.probe.ask("controls", self._window_handle(window))

    def has_control(self, name, window=None) -> bool:
        try:
            self.handle(name, window)
        except LookupError:
            return False
        return True

    def text(self, name, window=None) -> str:
        return self.control(name, window).text

    def checked(self, name, window=None) -> bool:
        return self.control(name, window).checked

    def items(self, name, window=None) -> list[str]:
        """Every line of a list box or combo box."""
        return self.probe.ask("items", self.handle(name, window))["items"]

    def wait_control(self, name, condition, what: str = "", window=None, seconds: float = 20) -> View:
        """Waits until `condition(view)` holds and returns the view."""
        last: list = [None]

        def holds():
            try:
                last[0] = self.control(name, window)
            except (LookupError, ProbeError):
                return None
            return last[0] if condition(last[0]) else None
        try:
            return wait_for(f"{name} {what}", holds, seconds)
        except TimeoutError as e:
            raise TimeoutError(f"{e}; it is {last[0] and dict(last[0])}") from None

    def wait_text(self, name, text, window=None, seconds: float = 20) -> str:
        """Waits until a control shows a text, or one that matches a compiled expression."""
        fits = text.search if isinstance(text, re.Pattern) else text.__eq__
        return self.wait_control(name, lambda c: fits(c.text), f"to show {text!r}", window, seconds).text

    def wait_checked(self, name, checked: bool = True, window=None, seconds: float = 20) -> None:
        self.wait_control(name, lambda c: c.checked == checked, f"to be {'checked' if checked else 'unchecked'}", window, seconds)

    def wait_enabled(self, name, enabled: bool = True, window=None, seconds: float = 20) -> None:
        self.wait_control(name, lambda c: c.enabled == enabled, f"to be enabled: {enabled}", window, seconds)

    def wait_visible(self, name, visible: bool = True, window=None, seconds: float = 20) -> None:
        self.wait_control(name, lambda c: c.visible == visible, f"to be visible: {visible}", window, seconds)

    def status_text(self, part: int = 1, window=None) -> str:
        """The text of a part of the window's status bar."""
        bars = [c for c in self.controls(window) if c["class"].lower() == "msctls_statusbar32"]
        if not bars:
            raise LookupError("the window has no status bar")
        return bars[0].simple_text if bars[0].simple else bars[0].parts[part]

    def wait_status(self, text: str, part: int = 1, seconds: float = 20) -> None:
        wait_for(f"the status bar to say {text!r}", lambda: self.status_text(part) == text, seconds)

    def focus(self) -> View:
        """The control that has the keyboard, in the window in front."""
        return self.probe.ask("focus")

    def wait_focus(self, name, window=None, seconds: float = 20) -> None:
        wait_for(f"the keyboard to be on {name}", lambda: self.focus().hwnd == self.handle(name, window), seconds)

    def foreground(self) -> View | None:
        return self.probe.ask("foreground")

    # Mouse

    def _xdotool(self, *words) -> None:
        subprocess.run(["xdotool", *map(str, words)], check=True, stdout=subprocess.DEVNULL,
                       env=dict(os.environ, DISPLAY=self.display.name))

    def move(self, x: int, y: int) -> None:
        self._xdotool("mousemove", x, y)
        wait_for(f"the mouse at {x},{y}", lambda: (lambda i: (i.x, i.y) == (x, y))(self.probe.ask("input")), 10, 0.01)

    def _button(self, button: int, down: bool) -> None:
        # Windows has the event when the button's state says so; before that, a check could look too early.
        state = "left" if button == 1 else "right"
        self._xdotool("mousedown" if down else "mouseup", button)
        wait_for(f"the {state} button {'down' if down else 'up'}", lambda: self.probe.ask("input")[state] == down, 30, 0.01)

    def click_at(self, x: int, y: int, button: int = 1) -> None:
        # Two clicks at one place in short order would be a double click, which a test asks for by name.
        if max(abs(x - self._last_click[0]), abs(y - self._last_click[1])) < 5:
            x += 5 if x <= self._last_click[0] else -5
        self._last_click = (x, y)
        self.move(x, y)
        self._button(button, True)
        self._button(button, False)

    def right_click_at(self, x: int, y: int) -> None:
        self.click_at(x, y, 3)

    def double_click_at(self, x: int, y: int) -> None:
        if max(abs(x - self._last_click[0]), abs(y - self._last_click[1])) < 5:
            x += 5 if x <= self._last_click[0] else -5
        self._last_click = (x, y)
        self.move(x, y)
        self._xdotool("click", "--repeat", 2, "--delay", 30, 1)
        wait_for("the mouse button up", lambda: not self.probe.ask("input").left, 30, 0.01)

    def _reachable(self, target: View, even_if_disabled: bool) -> View:
        if not target.visible:
            raise AssertionError(f"a user cannot click what is not on show: {dict(target)}")
        if not target.enabled and not even_if_disabled:
            raise AssertionError(f"a user cannot click what is disabled: {dict(target)}")
        x, y = target.centre
        for window in self.windows():
            left, top, right, bottom = window.rect
            if window["class"] == "tooltips_class32":  # goes away when the mouse comes
                continue
            if window.visible and not window.iconic and left <= x < right and top <= y < bottom:
                if window.hwnd != target.root:
                    raise AssertionError(f"{window['class']} '{window.title}' covers {target.text!r} at {x},{y}")
                break
        return target

    def click(self, name, window=None, even_if_disabled: bool = False, button: int = 1) -> None:
        """A real click on the middle of a control, which has to be on show, enabled and not covered."""
        self.click_at(*self._reachable(self.control(name, window), even_if_disabled).centre, button)

    def right_click(self, name, window=None) -> None:
        self.click(name, window, button=3)

    def double_click(self, name, window=None) -> None:
        self.double_click_at(*self._reachable(self.control(name, window), False).centre)

    def click_item(self, name, item, window=None, double: bool = False) -> None:
        """Clicks a line of a list box, by its text or number; the line has to be scrolled into view."""
        hwnd = self._reachable(self.control(name, window), False).hwnd
        number = item if isinstance(item, int) else self.items(name, window).index(item)
        place = self.probe.ask("itemrect", hwnd, number)
        (left, top, right, bottom), area = place.rect, place.client
        if top < area[1] or bottom > area[3]:
            raise AssertionError(f"line {number} is not in view")
        (self.double_click_at if double else self.click_at)((left + right) // 2, (top + bottom) // 2)

    def set_checked(self, name, checked: bool = True, window=None) -> None:
        """Clicks a box unless it already is as wanted."""
        if self.checked(name, window) != checked:
            self.click(name, window)
            self.wait_checked(name, checked, window)

    def choose(self, name, text: str, window=None) -> None:
        """Chooses a line of a drop-down list with the keyboard, as one does after a click on it."""
        target = self.items(name, window).index(text)
        left, top, right, bottom = self._reachable(self.control(name, window), False).rect
        self.click_at(right - 8, (top + min(bottom, top + 20)) // 2)
        self.wait_control(name, lambda c: c.dropped, "to open", window)
        at = self.control(name, window).selected
        while at != target:
            self.key("Down" if target > at else "Up")
            at = self.wait_control(name, lambda c, old=at: c.selected != old, "to move on", window).selected
        self.key("Return")
        self.wait_control(name, lambda c: not c.dropped, "to close", window)

    # Keys

    def _keys(self, how: str, *words) -> None:
        before = self.probe.ask("input")
        if before.now == before.last:  # the clock of the last input counts milliseconds
            wait_for("a new millisecond", lambda: self.probe.ask("input").now != before.last, 1, 0.001)
        self._xdotool(how, *words)
        wait_for(f"Windows to take {how} {words}", lambda: self.probe.ask("input").last != before.last, 30, 0.01)

    def key(self, keys: str) -> None:
        """Presses and releases: "Tab", "ctrl+2", "alt+F4", "shift+F10"."""
        self._keys("key", keys)

    def keydown(self, keys: str) -> None:
        self._keys("keydown", keys)

    def keyup(self, keys: str) -> None:
        self._keys("keyup", keys)

    @contextlib.contextmanager
    def held(self, *keys: str):
        """Holds keys down for as long as the block runs."""
        down: list[str] = []
        try:
            for one in keys:
                self.keydown(one)
                down.append(one)
            yield
        finally:
            for one in reversed(down):
                self.keyup(one)

    def type_text(self, text: str) -> None:
        self._keys("type", "--delay", 15, "--", text)

    def replace_text(self, name, text: str, window=None) -> None:
        """Types a new text into an edit box."""
        self.click(name, window)
        self.wait_focus(name, window)
        self.key("ctrl+Home")  # a classic edit box knows no Ctrl+A
        self.key("ctrl+shift+End")
        self.type_text(text)
        self.wait_text(name, text, window)

    def settle(self, name, window=None, seconds: float = 30) -> None:
        """Waits until the window thread of a control on show has worked off its input.

        For tests that nothing happens: a window paints only when no input is left for it.
        """
        hwnd = self.handle(name, window)
        self.probe.ask("invalidate", hwnd)
        wait_for(f"{name} to be idle", lambda: not self.probe.ask("unpainted", hwnd).waits, seconds, 0.01)

    # Message boxes and file dialogs

    def boxes(self) -> list[View]:
        """The message boxes on show: title, text, buttons, icon ("question", ...), default, owner."""
        found = []
        for window in self.find_windows("#32770"):
            try:
                parts = self.controls(window)
            except ProbeError:
                continue
            texts = [c for c in parts if c["class"].lower() == "static" and c.id in (100, 0xFFFF, -1)]
            buttons = [c for c in parts if c["class"].lower() == "button" and 1 <= c.id <= 11 and c.visible]
            if not texts or not buttons or any(c["class"].lower() in ("edit", "combobox", "listbox") for c in parts):
                continue
            icons = [c for c in parts if c["class"].lower() == "static" and c.id in (20, 1088)]
            default = [_plain(b.text) for b in buttons if b.style & 0xF == 1]
            found.append(View(hwnd=window.hwnd, title=window.title, owner=window.owner, pid=window.pid, text=texts[0].text,
                              buttons=[_plain(b.text) for b in buttons], parts=buttons,
                              default=default[0] if default else None,
                              icon=self.probe.ask("stockicon", icons[0].hwnd).icon if icons else None))
        return found

    def wait_box(self, title: str | None = None, seconds: float = 20) -> View:
        """The message box in front, when it has come and can be pressed."""
        def come():
            return next((b for b in self.boxes() if title in (None, b.title) and b.buttons), None)
        return wait_for(f"a message box titled {title!r}", come, seconds)

    def press_button_in_box(self, caption: str, title: str | None = None, seconds: float = 20) -> View:
        """Waits for a message box, clicks one of its buttons, waits until it is gone and returns what it was."""
        box = self.wait_box(title, seconds)
        found = [b for b in box.parts if _plain(b.text) == caption]
        if not found:
            raise AssertionError(f"the box {box.title!r} {box.text!r} has no button {caption!r} but {box.buttons}")
        self.click(found[0])
        wait_for(f"the box {box.title!r} to close", lambda: all(w.hwnd != box.hwnd or not w.visible for w in self.windows()))
        return box

    def answer_file_dialog(self, *paths: str, seconds: float = 20) -> None:
        """Enters one or more paths, all of one folder, in the open-file dialog on show and presses Enter."""
        def come():
            for window in self.find_windows("#32770"):
                for number in (0x480, 0x47C):
                    for c in self.probe.ask("withid", window.hwnd, number):
                        if c.visible and c["class"].lower() in ("edit", "comboboxex32", "combobox"):
                            return window, c.hwnd
            return None
        window, edit = wait_for("the dialog to choose a file", come, seconds)
        wanted = paths[0] if len(paths) == 1 else " ".join(f'"{p}"' for p in paths)
        self.probe.ask("settext", edit, wanted)
        self.key("Return")
        wait_for("the file dialog to close", lambda: all(w.hwnd != window.hwnd for w in self.windows()))

    # Notification icon and popup menus

    def taskbar(self) -> View | None:
        return self.find_window("Shell_TrayWnd", visible=None)

    def icon(self) -> View | None:
        """The place of the program's notification icon; None when there is no icon.

        Wine paints icons into the taskbar, square cells from the right edge, with no window of their own to look for. It
        shows the taskbar exactly as long as there is an icon. (Its tooltip windows tell nothing: they outlive the icon.)
        """
        bar = self.taskbar()
        if not bar or not bar.visible:
            return None
        _, top, right, bottom = bar.rect
        return View(rect=[right - (bottom - top), top, right, bottom])

    def wait_icon(self, seconds: float = 20) -> View:
        return wait_for("the notification icon", self.icon, seconds)

    def wait_no_icon(self, seconds: float = 20) -> None:
        wait_for("the notification icon to go", lambda: not self.icon(), seconds)

    def click_icon(self, button: int = 1) -> None:
        self.click_at(*self.wait_icon().centre, button)

    def double_click_icon(self) -> None:
        self.double_click_at(*self.wait_icon().centre)

    def right_click_icon(self) -> None:
        self.click_icon(3)

    def icon_tip(self) -> str:
        """The text that comes up when the mouse rests on the icon."""
        x, y = self.wait_icon().centre
        # A tip comes once each time the mouse enters the icon, and only the taskbar itself notices that it has left.
        self.move(x - 60, y)
        self.settle(self.taskbar())
        self.move(x, y)
        bar = self.taskbar().hwnd

        def tip():
            return next((w for w in self.find_windows("tooltips_class32") if w.owner == bar), None)
        return self.control(wait_for("the tip of the icon", tip)).text

    def restart_taskbar(self, icon_id: int = 1) -> None:
        """What a crash of the taskbar does to the program: its icon is gone and every window is told of a new taskbar."""
        self.probe.ask("dropicon", self.main.hwnd, icon_id)
        self.wait_no_icon()
        self.probe.ask("broadcast", "TaskbarCreated")

    def popup(self, seconds: float = 20) -> list[View]:
        """The entries of the popup menu on show: text, enabled, checked, separator, default, rect."""
        def come():
            window = self.find_window("#32768")
            if not window:
                return None
            try:
                entries = self.probe.ask("menu", window.hwnd)["items"]
            except ProbeError:  # on its way up or down
                return None
            return [View(e, text=_plain(e.text)) for e in entries] or None
        return wait_for("a popup menu", come, seconds)

    def pick(self, caption: str, seconds: float = 20) -> None:
        """Clicks an entry of the popup menu on show and waits until the menu is gone."""
        entries = self.popup(seconds)
        entry = next((e for e in entries if e.text == caption), None)
        if not entry:
            raise AssertionError(f"the menu has no entry {caption!r} but {[e.text for e in entries]}")
        self.click_at(*entry.centre)
        self.wait_no_window("#32768")

    def pick_by_keys(self, caption: str, seconds: float = 20) -> None:
        """Picks an entry of the popup menu on show with arrows and Enter."""
        reachable = [e.text for e in self.popup(seconds) if not e.separator]
        for _ in range(reachable.index(caption) + 1):
            self.key("Down")
        self.key("Return")
        self.wait_no_window("#32768")

    # Registry

    def import_registry(self, values: dict[str, dict]) -> None:
        (self.home.c / "preset.reg").write_bytes(registry_file(values))
        self.home.run("regedit", "/S", r"C:\preset.reg", check=True)

    def reg(self, hive: str, path: str, name: str):
        """A registry value as a View with `type` and `text`, `number` or `hex`; None when it is not there."""
        return self.probe.ask("reg", hive, path, name)

    def reg_list(self, hive: str, path: str):
        """The `values` and sub-`keys` of a key; None when it is not there."""
        return self.probe.ask("reglist", hive, path)

    def reg_set(self, hive: str, path: str, name: str, value: str | int) -> None:
        kind = ("dword",) if isinstance(value, int) else ()
        if not self.probe.ask("regset", hive, path, name, str(value), *kind).set:
            raise ProbeError(f"{hive}\\{path} {name} could not be set")

    def reg_delete_key(self, hive: str, path: str) -> bool:
        return self.probe.ask("regdelkey", hive, path).deleted

    def _section(self, section: str, app_title: str | None) -> str:
        return rf"Software\Quellix\{app_title or self.app_title}\{section}"

    def registry_value(self, section: str, key: str, app_title: str | None = None) -> str | None:
        """A stored setting of the program; None when it is not stored."""
        value = self.reg("HKCU", self._section(section, app_title), key)
        return None if value is None else value.text

    def registry_section(self, section: str, app_title: str | None = None) -> dict[str, str]:
        found = self.reg_list("HKCU", self._section(section, app_title))
        return {name: value.text for name, value in found["values"].items()} if found else {}

    # Measures and pictures

    def processes(self, exe: str | None = None) -> list[View]:
        return [p for p in self.probe.ask("processes") if exe is None or p.exe.lower() == exe.lower()]

    def cpu(self, pid: int | None = None) -> int:
        """Milliseconds of processor time that a process has used so far."""
        return self.probe.ask("cputime", pid or self.pid).ms

    def send(self, window, message: int, w: int = 0, l: int = 0, timeout_ms: int = 5000) -> View:
        """Sends a message: `ms`, `answered`, `timed_out`, `result`. For measuring; users send no messages."""
        return self.probe.ask("send", self._window_handle(window), message, w, l, timeout_ms, seconds=timeout_ms / 1000 + 30)

    def post(self, window, message: int, w: int = 0, l: int = 0) -> bool:
        return self.probe.ask("post", self._window_handle(window), message, w, l).posted

    def response_ms(self, window=None, timeout_ms: int = 20000) -> float:
        """How long a window takes to answer at this moment."""
        return self.send(window, WM_NULL, timeout_ms=timeout_ms).ms

    def longest_freeze(self, until, window=None, seconds: float = 60) -> float:
        """Asks a window without a pause until `until()` is true and returns the longest answer in milliseconds."""
        hwnd = self._window_handle(window)
        worst = [0.0]

        def over():
            worst[0] = max(worst[0], self.response_ms(hwnd))
            return until()
        wait_for("the end of the measured work", over, seconds, 0.005)
        return worst[0]

    def screenshot(self, path: Path, window=None) -> Path:
        """A picture of the screen, or of the part of it where a window is."""
        path = Path(path)
        if window is None:
            return self.display.screenshot(path)
        left, top, right, bottom = next(w.rect for w in self.windows() if w.hwnd == self._window_handle(window))
        path.parent.mkdir(parents=True, exist_ok=True)
        subprocess.run(["import", "-display", self.display.name, "-window", "root", "-crop",
                        f"{right - left}x{bottom - top}+{left}+{top}", "+repage", str(path)], check=True)
        return path


def _plain(caption: str) -> str:
    """A caption without the mark of its access key and without the key that stands behind a tab."""
    return caption.partition("\t")[0].replace("&&", "\0").replace("&", "").replace("\0", "&")
