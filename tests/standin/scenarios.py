"""The shipped program at its work in a small profile, so cheaply that thousands of runs are affordable, and what must hold
after each run whatever the system answered.

One Windows and one desktop live on; between two runs the profile is restored. The program is used by messages instead of
mouse and keys, since here the question is not whether a user can reach a button.
"""
import contextlib
import os
import re
import shutil
import signal
import time
from pathlib import Path
from typing import NamedTuple

from tests.harness import url_cache
from tests.harness.driver import WM_CLOSE, View
from tests.harness.items import ITEMS
from tests.harness.part_measures import _times as times_of
from tests.harness.probe import ProbeError
from tests.harness.program import DONE, OFF_LINE, STARTED, STOPPED, STORE
from tests.harness.shredder import overwritten_size
from tests.standin.standin import StandInDesktop

RUN = r"Software\Microsoft\Windows\CurrentVersion\Run"
EXPLORER = r"Software\Microsoft\Windows\CurrentVersion\Explorer"
TRACES = {rf"{EXPLORER}\RunMRU": 3, r"Software\Microsoft\Internet Explorer\TypedURLs": 3,
          rf"{EXPLORER}\ComDlg32\OpenSaveMRU\txt": 2}
CACHES = {"Content.IE5", "INetCookies", "Cookies", "History"}
COOKIES, ADD_FOLDER = "Cookies Manager", "Quellix-Add Folder"
LIST_FILE, KEEP_LIST = "QUELLIX_Shred", "SafeCookie.dat"
SECRET = b"what nobody is to read " * 40
BM_CLICK, WM_COMMAND, WM_NULL, IDOK, LB_SETCURSEL, LB_GETCOUNT = 0x00F5, 0x0111, 0, 1, 0x0186, 0x018B
PATIENCE = 20  # seconds in which the program could have run
ANSWER_MS = 200
SLOW = "the window did not answer"
QUICK = "clock 100"  # a second's pause after each item takes ten milliseconds
EXITS = (0, 1)  # 1: it has told that it cannot show its window


class Ended(Exception):
    """The program is no longer there."""


class Stuck(Exception):
    """The program stands still in Wine itself: what a drop needs of its memory came in the middle of an allocation."""


class State(NamedTuple):
    """What the program keeps, each part by itself."""
    values: dict  # (section, key) to text; the Run value among them
    files: dict  # list file and keep list, as bytes

    def parts(self) -> dict:
        return self.values | self.files


class Run(NamedTuple):
    scenario: str
    rules: tuple
    problems: list
    counts: dict  # calls a function, of the functions that were written down
    before: dict  # the same when the scenario's own work began
    state: State
    hit: str  # the first call that a rule was about
    freeze: float  # milliseconds
    reached: dict  # by rule, the first call that it was about


class Bench(StandInDesktop):
    """The profile, the program in it, and a look at both."""

    def __init__(self, name: str):
        super().__init__(name, start=False, prepare=self._plant, registry=OFF_LINE | {
            # A crash is to end the program at once: its exit code tells, and nobody reads a backtrace here.
            r"HKLM\Software\Microsoft\Windows NT\CurrentVersion\AeDebug": {"Auto": "1", "Debugger": "none.exe"}})
        self.limit, self.patience = ANSWER_MS, PATIENCE
        self.system: list[str] = []  # the rules of another Windows
        self.boxes_told: list[str] = []
        self._answered: set[int] = set()  # the boxes on show that have been told
        self.was_shown = False

    # The profile

    def _plant(self, home) -> None:
        for name in ("canaries", "second", "cache"):
            (home.c / name).mkdir()
        for number in range(5):
            (home.c / f"canaries/keep {number}.txt").write_text("mine")
        for folder in ("Desktop", "Documents", "Favorites"):
            (home.profile / folder).mkdir(exist_ok=True)
            (home.profile / folder / "canary.txt").write_text("mine")
        (home.c / "canary.txt").write_text("mine")
        (home.c / "Quellix/iea.exe").unlink(missing_ok=True)  # a program of its own

    def set_up_profile(self) -> None:
        """Once, with the desktop open: what later runs get back by copying."""
        url_cache.plant(self.home, "content", "5", "cookie", "4", "visited", "3")
        self._cached = self._caches()
        for place in self._cached:
            shutil.copytree(place, self._saved(place))
        self._canaries = self._look()
        self._system = [p for p in self._who_answers()]

    def _caches(self) -> list[Path]:
        found = [p for p in self.home.profile.rglob("*") if p.is_dir() and p.name in CACHES]
        return [p for p in found if not any(q in p.parents for q in found)]

    def _saved(self, place: Path) -> Path:
        return self.home.c / "cache" / str(place.relative_to(self.home.profile)).replace("/", "~")

    @property
    def work(self) -> Path:
        return self.home.c / "work"

    def restore(self) -> None:
        for place in [self.home.c / "work", self.home.c / "second", self.home.temp / "folder"]:
            shutil.rmtree(place, ignore_errors=True)
        for name in ("work/folder/inner", "work/empty", "second"):
            (self.home.c / name).mkdir(parents=True)
        for name in ("one.txt", "two.txt", "three.txt", "folder/four.txt", "folder/inner/five.txt", "listed.txt"):
            file = self.work / name
            file.write_bytes(SECRET)
            os.link(file, self.home.c / "second" / file.name)
        (self.home.temp / "folder/inner").mkdir(parents=True)
        for name in ("trace.tmp", "folder/trace.tmp", "folder/inner/trace.tmp"):
            (self.home.temp / name).write_bytes(b"x" * 600)
        os.symlink(self.home.c / "canaries", self.home.temp / "folder/link")
        for old in (self.home.c / "Quellix").glob("*.old"):
            old.unlink()
        (self.home.c / "Quellix" / LIST_FILE).write_bytes(b"C:\\work\\listed.txt\r\n")
        (self.home.c / "Quellix" / KEEP_LIST).write_bytes(b"old@keep[1].txt\r\n")
        for place in self._cached:
            shutil.rmtree(place, ignore_errors=True)
            shutil.copytree(self._saved(place), place)
        traces = [("regset", "HKCU", key, "abc"[number], "trace") for key, count in TRACES.items() for number in range(count)]
        assert all(told.set for told in self.probe.ask_all(*traces))
        self._restore_settings()

    def _restore_settings(self) -> None:
        """The settings that a run begins with: every box ticked, the scheduled shredder on."""
        wanted = {("CleanSettings", item.key): "1" for item in ITEMS} | {
            ("Scheduling", "chkOptions"): "1", ("Scheduling", "ScheduleMin"): "45", ("Shredder", "txtLevel"): "1",
            ("Startup", "LoadStartup"): "0", ("Startup", "Startup"): "0", ("Boss", "bossKey"): "115",
            ("Message_key", "Message"): "Dont"}
        there = self.state().values
        if there.pop("Run"):
            self.reg_set("HKLM", RUN, "Quellix - 1.0", "")
        if set(there) - set(wanted):
            self.reg_delete_key("HKCU", STORE)
            there = {}
        changes = [("regset", "HKCU", rf"{STORE}\{section}", key, text) for (section, key), text in wanted.items()
                   if there.get((section, key)) != text]
        assert all(told.set for told in self.probe.ask_all(*changes))

    def state(self) -> State:
        values = {}
        store, run = self.probe.ask_all(("reglist", "HKCU", STORE), ("reg", "HKLM", RUN, "Quellix - 1.0"))
        sections = store["keys"] if store else []
        for section, told in zip(sections, self.probe.ask_all(*(("reglist", "HKCU", rf"{STORE}\{name}") for name in sections))):
            for key, value in told["values"].items() if told else ():
                values[section, key] = value.text
        values["Run"] = run.text or None if run else None
        folder = self.home.c / "Quellix"
        files = {name: _content(folder / name) for name in (LIST_FILE, KEEP_LIST)}
        return State(values, files)

    def _look(self) -> dict[str, bytes]:
        """Everything that no run may touch."""
        home = self.home
        files = [home.c / "canary.txt", *(home.c / "canaries").iterdir(),
                 *(home.profile / folder / "canary.txt" for folder in ("Desktop", "Documents", "Favorites")),
                 home.c / "Quellix/Quellix.exe", home.c / "windows/system32/kernel32.dll"]
        return {str(file): (file.stat().st_size, file.stat().st_mtime) if file.exists() else None for file in files}

    # The program

    def window(self) -> int:
        return self.probe.ask("top", self.main_class).hwnd

    def find(self, name, window: int | None = None) -> int | None:
        """A control, or nothing where a failing call has kept it from being made."""
        try:
            return self.handle(name, window or self.window())
        except (LookupError, ProbeError):
            return None

    def press(self, name, window: int | None = None) -> None:
        button = self.find(name, window)
        if button:
            self.probe.ask_all(("post", button, BM_CLICK, 0, 0), ("invalidate", button))
            self._wait_painted(button)

    def settled(self, control: int) -> None:
        """Waits until what was posted before has been worked off, as far as that can be told."""
        self.probe.ask("invalidate", control)
        self._wait_painted(control)

    def _wait_painted(self, control: int) -> None:
        self.follow(lambda: not self.probe.ask("unpainted", control).waits, 3)

    def drop_on(self, name, *files: str) -> None:
        target = self.find(name)
        if not target:
            return
        paths = [rf"C:\work\{file}" for file in files]
        try:
            self.probe.ask("drop", *self.probe.ask("control", target).centre, *paths, seconds=20)
        except ProbeError as failure:  # no window there takes files, or the program has no memory for them
            if "did not answer" in str(failure):
                self._free_probe()
                raise Stuck from None
            return
        self.settled(target)

    def _free_probe(self) -> None:
        for process in self._processes_of(self.program):
            os.kill(int(process.name), signal.SIGKILL)
        with contextlib.suppress(ProbeError):
            self.probe.answer_that_is_due()

    def message(self) -> str:
        control = self.find("txtMessage")
        return self.probe.ask("control", control).text if control else ""

    def lines(self, name, window: int | None = None) -> list[str]:
        control = self.find(name, window)
        return self.probe.ask("items", control)["items"] if control else []

    def follow(self, until, seconds: float | None = None) -> bool:
        """Waits, answers every message box, and watches whether the window answers."""
        begun, seconds = time.monotonic(), seconds or self.patience
        waited = times_of(self._watched)[1]
        while True:
            before = times_of(self._watched)[1]
            over, boxes, main = self.probe.ask_all(("ended", self.pid), ("windows", "#32770"), ("top", self.main_class))
            if over.ended:
                raise Ended
            self._answer(boxes)
            self._ask(main.hwnd)
            if until():
                return True
            # Without the time for which the machine was busy with others; several of the watched may have waited at once.
            gone, lost = time.monotonic() - begun, (before - waited) / 1000
            if gone - min(lost, 0.75 * gone) > seconds:
                return False
            time.sleep(0.01)

    def _answer(self, boxes: list) -> None:
        asked = [box for box in boxes if box.pid == self.pid and box.visible and box.title not in (COOKIES, ADD_FOLDER)]
        for box in asked:
            if box.hwnd not in self._answered:  # one that is on its way out has no text any more
                self.boxes_told.append(next((c.text for c in self.controls(box) if c["class"].lower() == "static" and c.text), box.title))
            self.post(box, WM_COMMAND, IDOK)
        self._answered = {box.hwnd for box in asked}

    def _ask(self, window: int) -> None:
        if not window:
            return
        before = times_of(self._watched)[1]
        answer = self.send(window, WM_NULL, timeout_ms=3000)
        if answer.ms > self.limit:
            took = answer.ms - (times_of(self._watched)[1] - before)
            self._freeze = max(self._freeze, took)

    # A run

    def run(self, scenario: str, *rules: str, clean: "Run | None" = None, restored: bool = True) -> Run:
        """Restores the profile, does what the scenario does under the rules, and looks what is wrong afterwards."""
        slow = None
        for _ in range(3):
            with contextlib.suppress(Stuck):
                run = self._run(scenario, rules, clean, restored)
                # On a busy machine others, for example the X server, may have been waited for; the program's own wait comes again.
                if not restored or not run.problems or any(SLOW not in problem for problem in run.problems):
                    return run
                slow = run
        if slow:
            return slow
        raise AssertionError(f"{scenario} under {rules} stood still three times")

    def _run(self, scenario: str, rules: tuple, clean: "Run | None", restored: bool) -> Run:
        if restored:
            self.restore()
        old = self.state()
        self.was_shown = False
        self.boxes_told, self._freeze, self._before, problems = [], 0.0, {}, []
        work = SCENARIOS[scenario](self)
        self.rules = [*rules, *self.system, QUICK]
        self.start_program(wait_for_window=False)
        self._watched = self._system + self._processes_of(self.program)
        try:
            problems += self._use(work)
        except Ended:
            pass
        code = self.ended(self.pid)
        if code is None:
            problems.append("the program does not end")
            self.terminate()
        elif code not in EXITS:
            problems.append(f"the program crashed with {code & 0xFFFFFFFF:#x}")
        problems += work.problems(code is not None and code in EXITS)
        problems += self.touched() + damaged(old, self.state(), clean, work.listed)
        for left in (self.home.c / "Quellix").glob("*.tmp"):
            left.unlink()
        if self._freeze > self.limit:
            problems.append(f"{SLOW} for {self._freeze:.0f} ms")
        calls = self.calls()
        reached = {rule: str(call) for call in reversed(calls) for rule in call.rule.split("; ") if rule in rules}
        hit = next((str(call) for call in calls if str(call) in reached.values()), "")
        return Run(scenario, rules, problems, _counted(calls), self._before, self.state(), hit, self._freeze, reached)

    def _use(self, work: "Scenario") -> list[str]:
        if not self.follow(lambda: self.window() and self._is_started()):
            return ["the program neither shows its window nor ends"]
        self.was_shown = True
        self._before = _counted(self.calls()) if any(rule.endswith(" log") for rule in self.rules) else {}
        problems = work.work()
        if self.window():
            self.post(self.window(), WM_CLOSE)
        self.follow(lambda: False)
        return problems

    def _is_started(self) -> bool:
        """Its last step shows in the status bar; where that fails, an idle window does."""
        bar = self.find("stBar")
        text = self.probe.ask("control", bar) if bar else View()
        if STARTED in (text.get("simple_text"), *(text.get("parts") or [])):
            return True
        times = [times_of(self._watched[-1:])[0]]
        for _ in range(10):
            time.sleep(0.02)
            times.append(times_of(self._watched[-1:])[0])
        return times[-1] - times[0] < 20 and self.send(self.window(), WM_NULL, timeout_ms=1000).answered

    def touched(self) -> list[str]:
        problems = [f"{name} was touched" for name, was in self._look().items() if was != self._canaries[name]]
        if problems:
            raise AssertionError(f"{self.rules}: {problems}")  # nothing after this would tell the truth
        return []


def damaged(old: State, now: State, clean: "Run | None", listed: tuple) -> list[str]:
    """What of the program's settings and lists is neither what it was nor what it becomes when nothing fails."""
    if not clean:
        return []
    was, new, is_now = old.parts(), clean.state.parts(), now.parts()
    return [f"{part} is neither old nor new: {is_now.get(part)!r} instead of {was.get(part)!r} or {new.get(part)!r}"
            for part in sorted({*was, *new, *is_now}, key=str)
            if is_now.get(part) not in (was.get(part), new.get(part))
            and not (part == LIST_FILE and _is_whole_list(is_now[part], listed))]


def _counted(calls) -> dict[str, int]:
    counts: dict[str, int] = {}
    for call in calls:
        counts[call.function] = counts.get(call.function, 0) + 1
    return counts


def _is_whole_list(content: bytes | None, added: tuple) -> bool:
    """Whether a scheduled list has what it had, and nothing that nobody has put there."""
    lines = (content or b"").split(b"\r\n")
    allowed = {b"C:\\work\\" + name.encode() for name in added}
    return lines[-1] == b"" and b"C:\\work\\listed.txt" in lines and set(lines) <= {b"", b"C:\\work\\listed.txt", *allowed}


def _content(file: Path) -> bytes | None:
    """On Windows 98 also that of the old file, which has stepped aside and comes back when the program reads it."""
    for place in (file, file.with_name(file.name + ".old")):
        if place.exists():
            return place.read_bytes()
    return None


class Scenario:
    """Something that the program does between its start and its end."""

    listed: tuple = ()  # what is put on the scheduled list
    message = ""

    def __init__(self, bench: Bench):
        self.b = bench

    def work(self) -> list[str]:
        return []

    def problems(self, came_to_its_end: bool) -> list[str]:
        return []


class StartAndEnd(Scenario):
    pass


class Erase(Scenario):
    """Every item, after the scheduled files: one that is on the list since this start."""

    listed = ("one.txt",)

    def work(self) -> list[str]:
        b = self.b
        b.press("cmdSecureDelk")
        b.drop_on("lstFiles", *self.listed)
        b.press("cmdCleenFrame")
        b.press("cmdClean")
        if not b.follow(lambda: b.lines("lstCln")[-1:] in (DONE[-1:], STOPPED[-1:])):
            return [f"the run has no last line: {b.lines('lstCln')[-2:]}"]
        self.message = b.message()
        return []

    def problems(self, came_to_its_end: bool) -> list[str]:
        return _wrongly_said(self.b, self.message, self.listed, ())


class Shred(Scenario):
    names = ("one.txt", "two.txt", "three.txt")
    folders = ("folder", "empty")

    def work(self) -> list[str]:
        b = self.b
        b.press("cmdSecureDelk")
        level = b.find("txtLev")
        if level:
            b.probe.ask("settext", level, "1")
        b.drop_on("lstFileShred", *self.names, *self.folders)
        b.press("cmdShredAll")
        over = b.follow(lambda: not b.lines("lstFileShred") and not b.lines("lstFolder"), 10)
        self.message = b.message()
        return [] if over else [f"the lists are not worked off, and the message line says '{self.message}'"]

    def problems(self, came_to_its_end: bool) -> list[str]:
        return _wrongly_said(self.b, self.message, self.names, self.folders)


def _wrongly_said(bench: Bench, message: str, names: tuple, folders: tuple) -> list[str]:
    """What the message calls shredded or deleted and is not."""
    problems = []
    shredded = sum(_is_shredded(bench, name) for name in names)
    gone = sum(not (bench.work / name).exists() for name in folders)
    if _said(message, "file", "shredded") > shredded:
        problems.append(f"'{message}' and only {shredded} are")
    if _said(message, "folder", "deleted") > gone:
        problems.append(f"'{message}' and only {gone} are gone")
    return problems


def _is_shredded(bench: Bench, name: str) -> bool:
    """Gone, and its bytes, which a second name of the file shows, overwritten before."""
    left = (bench.home.c / "second" / name).read_bytes()
    return not (bench.work / name).exists() and len(left) >= overwritten_size(1) and SECRET[:22] not in left[:overwritten_size(1)]


def _said(message: str, what: str, how: str) -> int:
    told = re.search(rf"(\d+) (?:of \d+ )?{what}s? {how}", message)
    return int(told[1]) if told else 0


class Save(Scenario):
    """A setting of each kind, the start with Windows, the scheduled list; the rest is stored at the end."""

    listed = ("one.txt", "two.txt")

    def work(self) -> list[str]:
        b = self.b
        for name in (("chkWinsettings", 0), ("chkIEsettings", 1)):
            b.press(name)
        b.press("cmdSchedule")
        b.press(("chkStartUp", 0))
        b.press("cmdSecureDelk")
        b.press("chkOptions")
        b.drop_on("lstFiles", *self.listed)
        return []


class Cookies(Scenario):
    def work(self) -> list[str]:
        b = self.b
        b.press("cmdCookiesOption")
        b.follow(self._window, 5)
        window = self._window()
        if not window:
            return []
        listed = b.find("lstKeeplist", window)
        b.follow(lambda: len(b.lines("lstKeeplist", window)) > 1, 3)
        if listed:
            b.send(listed, LB_SETCURSEL, 0)
        b.press("cmdAdd", window)
        b.press("cmdClose", window)
        if not b.follow(lambda: not self._window(), 5):
            b.post(window, WM_CLOSE)
            if not b.follow(lambda: not self._window(), 5):
                return ["the cookie window does not close"]
        return []

    def _window(self) -> int | None:
        return next((w.hwnd for w in self.b.windows("#32770") if w.pid == self.b.pid and w.title == COOKIES), None)


SCENARIOS: dict[str, type[Scenario]] = {
    "start": StartAndEnd, "erase": Erase, "shred": Shred, "save": Save, "cookies": Cookies}
