"""Soak: the same again and again, and the program holds no more at the end than after the first tenth.

    ./quellix test --soak        everything, half an hour and more; the figures are printed, and lie in build/soak/report.txt
    QUELLIX_SOAK=10 ...          a tenth of each count

Measured from outside, while the program is idle with its first panel on show: the handles that the system's table has for its
process, the used entries of its table of graphics objects, its windows with all controls, the used blocks of all its heaps, and
the memory that it has written to (memory_held.py).
"""
import os
import sys
import time
from typing import NamedTuple

from tests.harness import browsers
from tests.harness.driver import WM_CLOSE, wait_for
from tests.harness.program import DONE
from tests.standin.memory_held import memory_held
from tests.standin.scenarios import ADD_FOLDER, BM_CLICK, COOKIES, Bench, Shred
from tools.wine_home import BUILD

REPORT = BUILD / "soak/report.txt"
# The system keeps contexts and regions for its next painting, and some blocks for its next call.
MAY_GROW = {"handles": 0, "graphics": 0, "painting": 16, "windows": 0, "blocks": 40, "used": 8, "written": 128}
# Blocks a round that Wine 8.0 never gives back: the pattern of a search of the cache that finds nothing, the path of the recycle
# bin that it empties and of each look at what is in it, and 12 bytes for each text of a dialog that gets a font, also in a
# message box.
WINES_OWN = {"erase runs": 3 + 2, "openings of Cookies Manager": 1 + 2, "openings of Quellix-Add Folder": 2}
BLOCK = 256  # bytes, one of those at most
DAYS = 30
MONTH_SPEED = 6000  # a minute takes ten milliseconds


class Held(NamedTuple):
    handles: int
    graphics: int  # bitmaps, fonts, brushes, pens
    painting: int  # device contexts and regions, which the system makes when it paints windows
    windows: int
    blocks: int  # of its heaps
    used: int  # kilobytes in them
    written: int  # kilobytes of pages

    def __str__(self) -> str:
        return (f"{self.handles} handles, {self.graphics} graphics objects and {self.painting} of painting, {self.windows} windows, "
                f"{self.blocks} blocks with {self.used} KB, {self.written} KB written")


class Soak:
    def __init__(self, bench: Bench, share: int):
        self.b, self.share = bench, share
        self.lines: list[str] = []
        self.wrong = 0

    def held(self) -> Held:
        b = self.b
        b.press("cmdDefault")
        wait_for("an idle program", self._is_idle, 60)
        return self.look()

    def look(self) -> Held:
        told = self.b.probe.ask("resources", self.b.pid)
        return Held(told.handles, told.graphics, told.painting, told.windows, *memory_held(self.b))

    def _is_idle(self) -> bool:
        before = self.b.cpu()
        time.sleep(0.3)
        return self.b.cpu() - before < 15

    def go(self, what: str, count: int, once) -> None:
        count = max(10, count // self.share)
        first = max(1, count // 10)
        begun = time.monotonic()
        for _ in range(first):
            once()
        after_tenth = self.held()
        for _ in range(count - first):
            once()
        end = self.held()
        own = WINES_OWN.get(what, 0) * (count - first)
        grown = self._grown(after_tenth, end, own)
        self.wrong += bool(grown)
        self.tell(f"{count} {what}: after the first tenth {after_tenth}; at the end {end}; "
                  f"{'more ' + ', '.join(grown) if grown else 'no more'} ({time.monotonic() - begun:.0f} s)")

    @staticmethod
    def _grown(was: Held, now: Held, own: int = 0) -> list[str]:
        kilobytes = own * BLOCK // 1024
        more = {"blocks": own, "used": kilobytes, "written": kilobytes}
        return [name for name, may in MAY_GROW.items() if getattr(now, name) > getattr(was, name) + may + more.get(name, 0)]

    def tell(self, line: str) -> None:
        print(line, flush=True)
        self.lines.append(line)

    # What is done

    def erase(self) -> None:
        self.b.press("cmdClean")
        assert self.b.follow(lambda: self.b.lines("lstCln")[-1:] == DONE[-1:] and not self.b.probe.ask(
            "control", self.b.find("cmdStop")).own_enabled, 60), "a run has no end"

    def shred(self) -> None:
        for name in Shred.names:
            (self.b.work / name).write_text("x")
        for name in Shred.folders:
            (self.b.work / name / "inner").mkdir(parents=True, exist_ok=True)
        work = Shred(self.b)
        assert work.work() == [] and "3 files shredded." in work.message, work.message

    def open_cookies(self) -> None:
        self._open("cmdCookiesOption", COOKIES, "cmdClose")

    def open_add_folder(self) -> None:
        b = self.b
        b.press("cmdSecureDelk")
        self._open("cmdAddFolder", ADD_FOLDER, "cmdCancel")

    def _open(self, button: str, title: str, close: str) -> None:
        b = self.b
        b.post(b.handle(button), BM_CLICK)
        window = wait_for(title, lambda: next((w for w in b.windows("#32770") if w.title == title and w.visible), None))
        b.settled(window.hwnd)
        b.wait_enabled(close, window=window)
        b.post(b.handle(close, window), BM_CLICK)
        wait_for(f"no {title}", lambda: not [w for w in b.windows("#32770") if w.title == title])

    def open_panels(self) -> None:
        for name in ("cmdCleenFrame", "cmdSecureDelk", "cmdSchedule", "cmdHelp", "cmdDefault"):
            self.b.press(name)

    def restart_taskbar(self) -> None:
        self.b.restart_taskbar()
        self.b.wait_icon()

    def boss_key(self) -> None:
        b = self.b
        b.x.keydown("F4")
        wait_for("no window", lambda: not b.probe.ask("control", b.window()).visible, 20, 0.01)
        b.x.keyup("F4")
        b.x.keydown("shift+F4")
        wait_for("the window", lambda: b.probe.ask("control", b.window()).visible, 20, 0.01)
        b.x.keyup("shift+F4")

    # All of it

    def start(self, clock: str) -> None:
        b = self.b
        b.restore()
        b.boxes_told, b._freeze, b._before = [], 0.0, {}
        b.rules = [clock]
        b.start_program()
        b._watched = b._system + b._processes_of(b.program)
        b.wait_icon()

    def end(self) -> None:
        self.b.post(self.b.window(), WM_CLOSE)
        code = self.b.wait_ended()
        self.wrong += code != 0
        self.tell(f"the program ended with {code}")
        self.b.wait_no_icon()

    def all(self) -> None:
        self.start("clock 200")
        self.b.press("cmdCleenFrame")
        self.go("erase runs", 200, self.erase)
        self.go("shreds of 3 files and 2 folders", 50, self.shred)
        self.go("openings of Cookies Manager", 200, self.open_cookies)
        self.go("openings of Quellix-Add Folder", 200, self.open_add_folder)
        self.go("rounds through the panels", 200, self.open_panels)
        self.go("restarts of the taskbar", 20, self.restart_taskbar)
        self.go("presses of the boss key, and back", 1000, self.boss_key)
        self.end()
        self.month()

    def month(self) -> None:
        """A month of a schedule that runs every hour; the runs are counted by the temporary file that each takes away."""
        b = self.b
        b.restore()
        b.rules = [f"clock {MONTH_SPEED}"]
        for key, value in {"chkShEnable": "1", "ScheduleMinutes": "1", "ScheduleMin": "60", "chkOptions": "0"}.items():
            b.reg_set("HKCU", rf"{b._section('Scheduling', None)}", key, value)
        b.start_program()
        b._watched = b._system + b._processes_of(b.program)
        b.wait_icon()
        trace, runs, begun = b.home.temp / "trace.tmp", 0, time.monotonic()
        real = DAYS * 24 * 3600 / MONTH_SPEED / self.share
        tenth = None
        while time.monotonic() - begun < real:
            if not trace.exists():
                runs += 1
                trace.write_text("x")
            if tenth is None and time.monotonic() - begun > real / 10:
                tenth = self._while_it_runs()
            time.sleep(0.02)
        end = self._while_it_runs()
        grown = self._grown(tenth, end, WINES_OWN["erase runs"] * runs)
        self.wrong += bool(grown) or runs < 5
        self.tell(f"{DAYS / self.share:.0f} days of an hourly schedule, {runs} runs seen: after the first tenth {tenth}; at the end "
                  f"{end}; {'more ' + ', '.join(grown) if grown else 'no more'} ({real:.0f} s)")
        self.end()

    def _while_it_runs(self) -> Held:
        """The least of some looks: a run holds more for moments."""
        looks = []
        for _ in range(10):
            looks.append(self.look())
            time.sleep(0.1)
        return Held(*(min(values) for values in zip(*looks)))


def main() -> int:
    share = int(os.environ.get("QUELLIX_SOAK", "1"))
    REPORT.parent.mkdir(parents=True, exist_ok=True)
    with Bench("soak") as bench:
        bench.set_up_profile()
        browsers.install(bench.home)
        browsers.keep_keyboard(bench)
        soak = Soak(bench, share)
        try:
            soak.all()
        finally:
            REPORT.write_text("\n".join(soak.lines) + "\n")
    return 1 if soak.wrong else 0


if __name__ == "__main__":
    sys.exit(main())
