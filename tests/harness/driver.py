"""Uses a Windows program from outside as a person does: real mouse, real keys, its windows, its notification icon.

The program runs in a virtual Wine desktop on a screen and in a profile of its own (`Desktop`). A probe on the same
desktop (programs/uiprobe.cpp) tells what the windows show; what the user does goes through the screen (x_client.py), never
through messages. Nothing here sleeps for a result: every action waits until Windows has taken the input, every check is a
`wait_...`.
"""
import contextlib
import shutil
import subprocess
from pathlib import Path

from tests.harness.control_names import control_ids
from tests.harness.part_clock import Clock
from tests.harness.part_input import Input
from tests.harness.part_measures import Measures
from tests.harness.part_popups import Popups
from tests.harness.part_registry import RUNNING_TITLE, Registry
from tests.harness.part_windows import Windows
from tests.harness.probe import BUILT, PROGRAMS, Probe, ProbeError, View, compile_windows_program
from tests.harness.x_client import XClient
from tools.one_processor import settle
from tools.wine_home import BUILD, HOMES, USER, WESTERN, Display, WineHome, wait_for

__all__ = ["BUILD", "BUILT", "PROGRAMS", "RUNNING_TITLE", "WM_CLOSE", "Desktop", "ProbeError", "View",
           "compile_windows_program", "control_ids", "wait_for"]

SIZE = "1024x768"
WM_CLOSE = 0x0010


class Desktop(Windows, Input, Popups, Registry, Measures, Clock):
    """A screen, a private Windows and the program in it; leaving it ends all of them.

    files      what is laid into C:\\Quellix, target name to source; by default all of build/dist
    program    which of them is the program; `start=False` leaves starting it to `start_program()`
    registry   key paths to {name: value}, set before the program starts
    settings   sections to {key: text} of the program's own store, set before the program starts
    windows    the Windows version that Wine shows to the program ("win98", "winxp", ...)
    language   the locale that decides the ANSI code page, and `user` whose profile it is (tools/wine_home.py)
    environment  the user's own variables
    screen     its size in pixels, `dpi` how many of them are an inch, `font` what dialogs get for "MS Sans Serif"
    prepare    called with the WineHome before the program starts, to lay out files
    """
    keeps_to_one_processor = True  # with all that it starts; what is measured has the whole machine

    def __init__(self, name: str, *, files: dict[str, Path] | None = None, program: str = "Quellix.exe",
                 registry: dict | None = None, settings: dict | None = None, app_title: str = RUNNING_TITLE,
                 windows: str | None = None, prepare=None, start: bool = True, arguments: str = "",
                 ids: dict | None = None, main_class: str = "frmMain", language: str = WESTERN, user: str = USER,
                 environment: dict[str, str] | None = None, screen: str = SIZE, dpi: int = 0, font: str = ""):
        self.name = name
        self.screen = screen
        self.desktop = "quellix"
        self.files, self.program = files, program
        self.registry = dict(registry or {})
        for section, values in (settings or {}).items():
            self.registry[rf"HKCU\Software\Quellix\{app_title}\{section}"] = values
        if dpi:
            self.registry[r"HKCU\Control Panel\Desktop"] = {"LogPixels": dpi}
        if font:
            self.registry[r"HKCU\Software\Wine\Fonts\Replacements"] = {"MS Sans Serif": font}
        if environment:
            self.registry[r"HKCU\Environment"] = environment
        self.app_title, self.windows_version, self.prepare = app_title, windows, prepare
        self.language, self.user = language, user
        self.start_at_once, self.arguments = start, arguments
        self.ids = control_ids() if ids is None else ids
        self.main_class = main_class
        self.pid = 0
        self.loaded = ""  # what the program is started with, if anything
        self._clicks: list[tuple[float, int, int]] = []
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
        if self.keeps_to_one_processor:
            settle(HOMES)
        probe = compile_windows_program(PROGRAMS / "uiprobe.cpp", "-lgdi32", "-lntdll")
        self.display = self._leave.enter_context(Display(self.screen))
        self.x = XClient(self.display.name)
        self._leave.callback(self.x.close)
        self.home = self._leave.enter_context(WineHome(f"ui-{self.name}", self.display.name, language=self.language,
                                                          user=self.user))
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
        self.explorer = self.home.start("explorer", f"/desktop={self.desktop},{self.screen}", stdin=subprocess.DEVNULL,
                                        stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self._leave.callback(self._reap, self.explorer)
        # A program that comes before the desktop is on the screen starts a second shell for it, with a taskbar of its own.
        wait_for("the virtual desktop on the screen", self._desktop_on_screen)
        # The probe also keeps the desktop open: Wine closes one that has no program left.
        self._start_probe()
        wait_for("the taskbar of the virtual desktop", self.taskbar)

    def _desktop_on_screen(self) -> int | None:
        """The screen's own window that the virtual desktop is."""
        return self.x.titles().get(f"{self.desktop} - Wine desktop")

    def _start_probe(self) -> None:
        self.probe = Probe(self.home, self.desktop)
        self._leave.callback(self.probe.close)
        self._leave.callback(self._reap, self.probe.process)

    @contextlib.contextmanager
    def another_probe(self):
        """A second probe, for a question that takes long while the first one goes on looking."""
        probe = Probe(self.home, self.desktop)
        try:
            yield probe
        finally:
            probe.stop()
            probe.process.wait(10)
            probe.close()

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

    def start_program(self, arguments: str = "", wait_for_window: bool = True, folder: str = r"C:\Quellix",
                      library: str | None = None) -> int:
        """Starts the program as a double click on its file would and waits until its main window has come.

        A library is loaded into it before its first instruction.
        """
        self.pid = self.start(rf"{folder}\{self.program}", arguments, library=library or self.loaded)
        if wait_for_window:
            self.wait_program_shown()
        return self.pid

    def wait_program_shown(self) -> None:
        def shown():
            ended = self.ended(self.pid)
            if ended is not None:
                raise AssertionError(f"{self.program} ended with {ended} before it showed a window")
            return self.find_window(self.main_class)
        wait_for(f"a window of class {self.main_class}", shown)

    def start(self, path: str, arguments: str = "", folder: str | None = None, library: str = "") -> int:
        """Starts any program on the desktop, with a library in it from the first, and returns its process id."""
        return self.probe.ask("start", folder or path.rpartition("\\")[0], f'"{path}" {arguments}'.strip(),
                              *[library] * bool(library)).pid

    def ended(self, pid: int) -> int | None:
        """The exit code of a process that was started here, None while it runs."""
        told = self.probe.ask("ended", pid)
        return told.code if told.ended else None

    def wait_ended(self, pid: int | None = None, seconds: float = 120) -> int:
        process = pid or self.pid

        def over():
            code = self.ended(process)
            return None if code is None else (code,)  # a code of 0 is an end, too
        return wait_for(f"the end of process {process}", over, seconds)[0]

    def terminate(self, pid: int | None = None) -> None:
        """Ends a process that was started here as the task manager would, with no chance to save anything."""
        self.probe.ask("terminate", pid or self.pid)
        self.wait_ended(pid)

    @contextlib.contextmanager
    def halted(self):
        """Within it the program does not run: what is posted meanwhile waits for it all at once."""
        assert self.probe.ask("halt", self.pid, 1).done
        try:
            yield
        finally:
            self.probe.ask("halt", self.pid, 0)

    def let_go_for(self, microseconds: int) -> None:
        """Within `halted`: lets the program run for so long."""
        self.probe.ask("step", self.pid, microseconds)

    def load_into_program(self, library: str) -> None:
        """Loads a library into the program, as the shell's extensions are loaded into every program."""
        self.probe.ask("load", self.pid, library)

    def second_instance(self, arguments: str = "", seconds: float = 120) -> int:
        """Starts another copy on the same desktop, waits for its end and returns its exit code."""
        return self.wait_ended(self.start(rf"C:\Quellix\{self.program}", arguments), seconds)

    def end_session(self, seconds: float = 60) -> None:
        """Logs off: every window of the desktop is asked and then told that the session ends."""
        # Started on this desktop by the probe: from outside it would reach only the default desktop.
        self.wait_ended(self.start(r"C:\windows\system32\wineboot.exe", "-e"), seconds)

    # What no user does, and pictures

    def processes(self, exe: str | None = None) -> list[View]:
        return [p for p in self.probe.ask("processes") if exe is None or p.exe.lower() == exe.lower()]

    def send(self, window, message: int, w: int = 0, l: int = 0, timeout_ms: int = 5000) -> View:
        """Sends a message: `ms`, `answered`, `timed_out`, `result`. For measuring; users send no messages."""
        return self.probe.ask("send", self._window_handle(window), message, w, l, timeout_ms, seconds=timeout_ms / 1000 + 30)

    def send_each(self, message: int, w: int, count: int, shows_work) -> None:
        """Sends the main window a message so many times, each when it is done with the one before.

        What a message starts lasts, and may disable the window or enable a control, `shows_work`; the next one comes meanwhile.
        """
        self.probe.ask("sendeach", self._window_handle(None), message, w, count, self.handle(shows_work), seconds=120)

    def post(self, window, message: int, w: int = 0, l: int = 0) -> bool:
        return self.probe.ask("post", self._window_handle(window), message, w, l).posted

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
