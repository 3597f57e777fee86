"""The benchmarks: what the program does beside a bare program doing the same, in the same run, in turn.

usage: ./quellix bench [NAME ...]   (without a name: all; the names stand in the first column)
Each row gives the median with its spread and the aim that stands beside it. Nothing here fails on a slow machine.
"""
import contextlib
import os
import shutil
import signal
import statistics
import subprocess
import sys
import time
from pathlib import Path

from tests.harness.driver import BUILD, Desktop, wait_for
from tests.harness.url_cache import cookie_file, plant
from tools.wine_home import ROOT, Display, WineHome

PAIRS = 7
OWN_TITLE = "Quellix v1.0"


def row(name: str, what: str, figures: list[float], unit: str, aim: str, digits: int = 2) -> None:
    middle = statistics.median(figures)
    print(f"   {name:8} {what:62} {middle:8.{digits}f}{unit} ({min(figures):.{digits}f} to {max(figures):.{digits}f}, "
          f"{len(figures)} runs)  aim: {aim}", flush=True)


def walk(home: WineHome, folders: int, files: int, shape: str, pairs: int, baseline: str) -> list[tuple[float, float]]:
    done = home.run(r"C:\bench_walk.exe", str(folders), str(files), shape, str(pairs), baseline, timeout=900, check=True)
    return [tuple(map(float, line.split("\t"))) for line in done.stdout.splitlines() if "\t" in line]


@contextlib.contextmanager
def memory_folder(folder: Path):
    """A folder in memory where this user may mount one: a disk's own pauses are many times as long as what is measured."""
    folder.mkdir()
    mounted = os.getuid() == 0 and subprocess.run(["mount", "-t", "tmpfs", "-o", "size=2g", "quellix-bench", str(folder)],
                                                  capture_output=True).returncode == 0
    if not mounted:
        print("   (on the disk: no folder in memory can be had)")
    try:
        yield
    finally:
        if mounted:
            subprocess.run(["umount", "-l", str(folder)], check=True)  # also while an interrupted program holds it


def bench_walk() -> None:
    with WineHome("bench-walk") as home, memory_folder(home.c / "work"):
        (home.c / "bench_walk.exe").write_bytes((BUILD / "win32/bench/bench_walk.exe").read_bytes())
        pairs = walk(home, 1100, 18, "nested", PAIRS, "loop")
        row("walk", "19,800 files in 1,100 nested folders, against a bare loop", [a / b for a, b in pairs], "", "1.25, better 1.10")
        pairs = walk(home, 1100, 18, "nested", 5, "rd")
        row("walk", "the same: cmd /c rd /s /q takes as many times as long", [b / a for a, b in pairs], "", "5 or more")
        per_file = {}
        for folders, runs in ((110, 5), (1100, 5), (5500, 3)):
            per_file[folders] = [a / (folders * 18) * 1000 for a, _ in walk(home, folders, 18, "nested", runs, "none")]
            row("walk", f"{folders * 18:,} files: microseconds a file", per_file[folders], " us", "the same for each", 1)
        flat = [a / 10000 * 1000 for a, _ in walk(home, 10000, 1, "flat", 5, "none")]
        row("walk", "10,000 folders in one folder, a file in each: a folder", flat, " us", "linear", 1)
        flat = [a / 1000 * 1000 for a, _ in walk(home, 1000, 1, "flat", 5, "none")]
        row("walk", "1,000 of them: a folder", flat, " us", "the same", 1)


def profiles(home: WineHome, folders: int, pairs: int, baseline: str) -> list[tuple[float, float]]:
    done = home.run(r"C:\bench_profiles.exe", str(folders), str(pairs), baseline, timeout=900, check=True)
    return [tuple(map(float, line.split("\t"))) for line in done.stdout.splitlines() if "\t" in line]


def bench_profiles() -> None:
    with WineHome("bench-profiles") as home:
        mozilla = home.profile / "Application Data/Mozilla"
        mozilla.parent.mkdir()
        (home.c / "bench_profiles.exe").write_bytes((BUILD / "win32/bench/bench_profiles.exe").read_bytes())
        with memory_folder(mozilla):
            (mozilla / "Profiles").mkdir()  # a mounted folder itself is a link to Wine
            pairs = profiles(home, 2000, PAIRS, "loop")
            row("profiles", "Mozilla: 20,000 files in 2,000 folders, against bare loops", [a / b for a, b in pairs], "", "1.25")
            for folders in (200, 2000):
                per_file = [a / (folders * 10) * 1000 for a, _ in profiles(home, folders, 5, "none")]
                row("profiles", f"{folders * 10:,} files: microseconds a file", per_file, " us", "the same for both", 1)


def bench_cache() -> None:
    with WineHome("bench-cache") as home:
        (home.c / "bench_cache.exe").write_bytes((BUILD / "win32/bench/bench_cache.exe").read_bytes())
        done = home.run(r"C:\bench_cache.exe", "5000", str(PAIRS), timeout=1800, check=True)
    pairs = [tuple(map(float, line.split("\t"))) for line in done.stdout.splitlines() if "\t" in line]
    row("cache", "5,000 cache entries, against a bare find-and-delete loop", [a / b for a, b in pairs], "", "1.15")


def bench_shred() -> None:
    def times(home: WineHome, files: int, pairs: int, which: str) -> list[tuple[float, float]]:
        done = home.run(r"C:\bench_shred.exe", str(files), "50", str(pairs), which, timeout=900, check=True)
        return [tuple(map(float, line.split("\t"))) for line in done.stdout.splitlines() if "\t" in line]

    with WineHome("bench-shred") as home:
        (home.c / "bench_shred.exe").write_bytes((BUILD / "win32/bench/bench_shred.exe").read_bytes())
        with memory_folder(home.c / "work"):
            row("shred", "1,000 files of 4 KB at level 50, in memory, against open, one WriteFile, flush, close, delete",
                [a / b for a, b in times(home, 1000, 3 * PAIRS, "engine")], "", "1.10")
            row("shred", "a shred run of them, against a loop of its steps",
                [a / b for a, b in times(home, 1000, PAIRS, "run")], "", "1.10")
            row("shred", "a shred run of them, against the first loop",
                [a / b for a, b in times(home, 1000, PAIRS, "run-bare")], "", "1.25; the loop spares two steps")
            row("shred", "100 files: one WriteFile an item takes as many times as long",
                [b / a for a, b in times(home, 100, 5, "items")], "", "10 or more", 1)
            row("shred", "10 files held against writing, 14,112 failures reported for each, off line: a file",
                [a / 10 for a, _ in times(home, 10, PAIRS, "locked")], " ms", "none", 1)
        (home.c / "work").mkdir(exist_ok=True)
        row("shred", "a shred run on the disk, against the first loop",
            [a / b for a, b in times(home, 1000, PAIRS, "run-bare")], "", "1.25; the loop spares two steps")


def bench_start() -> None:
    bare = {"bare_dialog.exe": ("Bare dialog", "start to visible window, against a bare dialog program", "1.15"),
            "bare_window.exe": (OWN_TITLE, "the same, against a bare program that shows the same dialogs of the same resources", "1.15")}
    files = {"Quellix.exe": BUILD / "dist/Quellix.exe"}
    files |= {name: BUILD / "win32/bench" / name for name in (*bare, "bench_start.exe")}
    with Desktop("bench-start", files=files, start=False) as desktop:
        for name, (title, what, aim) in bare.items():
            done = desktop.home.run(r"C:\Quellix\bench_start.exe", "21", r"C:\Quellix\Quellix.exe", OWN_TITLE,
                                    "C:\\Quellix\\" + name, title, timeout=300, check=True)
            pairs = [tuple(map(float, line.split("\t"))) for line in done.stdout.splitlines() if "\t" in line]
            row("start", what, [a / b for a, b in pairs], "", aim)


def until_shown(home: WineHome, display: Display, program: str, title: str) -> tuple[int, int, int]:
    """The system calls of a program and its page faults until its window shows, and then its private memory in KB."""
    trace = home.base / "trace"
    trace.mkdir()
    # Without a virtual desktop, whose own program would be counted, too.
    tracer = home.start(program, tracer=["strace", "-ff", "-qq", "-o", str(trace / "calls")],
                        stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    wait_for(f"the window {title}", lambda: subprocess.run(
        ["xdotool", "search", "--onlyvisible", "--name", f"^{title}$"], check=False, stdout=subprocess.DEVNULL,
        env=dict(os.environ, DISPLAY=display.name)).returncode == 0, 60)
    process = Path("/proc") / Path(f"/proc/{tracer.pid}/task/{tracer.pid}/children").read_text().split()[0]
    threads = {path.name for path in (process / "task").iterdir()}
    calls = sum(path.read_bytes().count(b"\n") for path in trace.iterdir() if path.suffix[1:] in threads)
    faults = int((process / "stat").read_text().rpartition(")")[2].split()[7])
    memory = sum(int(line.split()[1]) for line in (process / "smaps_rollup").read_text().splitlines()
                 if line.startswith("Private_"))
    os.kill(int(process.name), signal.SIGKILL)
    tracer.wait(30)
    shutil.rmtree(trace)
    return calls, faults, memory


def bench_counts() -> None:
    programs = {"Quellix": (BUILD / "dist/Quellix.exe", OWN_TITLE),
                "bare dialog": (BUILD / "win32/bench/bare_dialog.exe", "Bare dialog")}
    found: dict[str, list[tuple[int, int, int]]] = {name: [] for name in programs}
    with Display() as display, WineHome("bench-counts", display.name) as home:
        for name, (file, _) in programs.items():
            shutil.copy2(file, home.c / file.name)
        home.run("explorer", "/desktop=warm,640x480", "cmd", "/c", "exit")  # the system's own services are up after that
        for _ in range(5):
            for name, (file, title) in programs.items():
                found[name].append(until_shown(home, display, rf"C:\{file.name}", title))
    for kind, what in enumerate(("system calls until the window shows", "page faults until the window shows",
                                 "private memory of the window on show, KB")):
        for name, figures in found.items():
            row("counts", f"{what}: {name}", [f[kind] for f in figures], "", "", 0)
        row("counts", f"{what}, against the bare dialog program",
            [own[kind] / bare[kind] for own, bare in zip(*found.values())], "", "1.10" if kind == 2 else "")


def plant_temp(home: WineHome, folders: int, files: int) -> None:
    for number in range(folders):
        folder = home.temp / f"branch {number // 11}" / "/".join(f"level {n}" for n in range(number % 11))
        folder.mkdir(parents=True, exist_ok=True)
        for file in range(files):
            (folder / f"~file{file}.tmp").write_bytes(b"trace")


def bench_run() -> None:
    with Desktop("bench-run") as desktop:
        desktop.click("cmdCleenFrame")
        desktop.wait_visible("cmdClean")
        figures = []
        for _ in range(5):
            before, started = desktop.cpu(), time.monotonic()
            desktop.click("cmdClean")
            desktop.move_mouse_away()
            desktop.wait_enabled("cmdStop")
            wait_for("the run's end", lambda: not desktop.control("cmdStop").enabled, seconds=60, every=1)
            figures.append((desktop.cpu() - before) / 1000)
            seconds = time.monotonic() - started
        row("run", f"processor time of a run of all items, {seconds:.0f} s long, nothing to erase", figures, " s", "0.3")


def bench_idle() -> None:
    with Desktop("bench-idle") as desktop:
        desktop.wait_icon()
        desktop.move_mouse_away()
        time.sleep(2)  # what starting leaves behind is over
        figures = []
        for _ in range(5):
            before = desktop.cpu()
            time.sleep(30)  # the span that is measured
            figures.append((desktop.cpu() - before) / 300)
        row("idle", "processor share over 30 s with the icon on show", figures, " %", "0.5")


TEMP_ONLY = {"CleanSettings": dict.fromkeys(
    ["LocationbarHistory", "ClearAutoComplete", "TemporaryInternetFile", "ClearAutoCompletePower", "InternetHistory",
     "UrlErrorLogs", "IEHistory", "ClearLockedIndex", "Cookies", "RecentDocumentList", "RecycleBin", "ScanDisk",
     "FindFileFolderHistory", "RunHistory", "OpenSavedDialoge", "RecentDocument", "EraseRegistryFrame", "NCookies",
     "NTypedHistory", "NClearMailHistry", "NCache", "Ocookies", "OClean", "OTypedUrl"], "0") | {"WinTempFileFolder": "1"}}


def bench_answer() -> None:
    """One clean for the window's answers, five that are stopped in the middle."""
    freezes, stops = [], []
    with Desktop("bench-answer", settings=TEMP_ONLY) as desktop:
        desktop.click("cmdCleenFrame")
        desktop.wait_visible("cmdClean")
        for _ in range(3):
            plant_temp(desktop.home, 1100, 18)
            desktop.click("cmdClean")
            freezes.append(desktop.longest_freeze(lambda: not any(desktop.home.temp.iterdir())))
            desktop.wait_enabled("cmdStop", False)
        for _ in range(5):
            plant_temp(desktop.home, 1100, 18)
            desktop.click("cmdClean")
            desktop.wait_enabled("cmdStop")
            stop = desktop.handle("cmdStop")
            left = sum(len(files) for _, _, files in os.walk(desktop.home.temp))
            started = time.perf_counter()
            desktop.post(stop, 0x00F5)  # BM_CLICK: the mouse's own way would be measured with it
            wait_for("the run's end", lambda: not desktop.control("cmdStop").enabled, every=0.001)
            stops.append((time.perf_counter() - started) * 1000)
            if left == 0 or not any(desktop.home.temp.rglob("*.tmp")):
                print("   (this clean was over before it was stopped)")
            desktop.click("cmdClean")
            wait_for("an empty folder", lambda: not any(desktop.home.temp.iterdir()), seconds=60)
            desktop.wait_enabled("cmdStop", False)
    row("answer", "longest time a WM_NULL waits during a clean of 19,800 files", freezes, " ms", "200", 0)
    row("answer", "from \"Stop\" to the end of the run", stops, " ms", "200", 0)


def open_cookies(desktop: Desktop, shown: int):
    """Opens the window "Cookies Manager" and gives what tells that it shows so many current cookies."""
    desktop.post(desktop.handle("cmdCookiesOption"), 0x00F5)  # BM_CLICK: the mouse's own way would be measured with it
    window = wait_for("the window", lambda: desktop.find_window("#32770", "Cookies Manager"), every=0.005)
    current = desktop.handle("lstKeeplist", window)
    return window, lambda: desktop.send(current, 0x018B).result == shown  # LB_GETCOUNT


def fill_cookies(desktop: Desktop, shown: int) -> float:
    """The seconds until the lists are filled."""
    started = time.perf_counter()
    window, is_filled = open_cookies(desktop, shown)
    wait_for("the lists", is_filled, seconds=60, every=0.002)
    seconds = time.perf_counter() - started
    desktop.post(window, 0x0010)  # WM_CLOSE
    desktop.wait_no_window("#32770", "Cookies Manager")
    return seconds


def bench_cookies() -> None:
    """First none of the current cookies is on the keep list, then half; its other names are those of cookies that are gone."""
    with Desktop("bench-cookies", prepare=lambda home: plant(home, "cookie", "5000")) as desktop:
        shutil.copy2(BUILD / "win32/bench/bench_cookies.exe", desktop.home.c)
        desktop.wait_icon()

        def bare() -> float:
            return float(desktop.home.run(r"C:\bench_cookies.exe", "1", check=True).stdout.split()[-1]) / 1000
        ratios = [fill_cookies(desktop, 5000) / bare() for _ in range(PAIRS)]
        names = (cookie_file(f"user@site{number}") for number in range(2501, 12501))
        (desktop.home.c / "Quellix/SafeCookie.dat").write_bytes("".join(f"{name}\r\n" for name in names).encode())
        seconds = [fill_cookies(desktop, 2500) for _ in range(5)]
        freezes = []
        for _ in range(5):
            window, is_filled = open_cookies(desktop, 2500)
            freezes.append(desktop.longest_freeze(is_filled, window))
            desktop.post(window, 0x0010)
            desktop.wait_no_window("#32770", "Cookies Manager")
    row("cookies", "5,000 cookies until they are listed, against a bare walk that lists them", ratios, "", "1.3")
    row("cookies", "5,000 cookies and 10,000 to keep: until the lists are filled", seconds, " s", "2")
    row("cookies", "longest time a WM_NULL waits meanwhile", freezes, " ms", "200", 0)


BENCHES = {"walk": bench_walk, "profiles": bench_profiles, "cache": bench_cache, "shred": bench_shred,
           "start": bench_start, "counts": bench_counts, "answer": bench_answer, "cookies": bench_cookies, "run": bench_run,
           "idle": bench_idle}


def main() -> int:
    chosen = sys.argv[1:] or list(BENCHES)
    unknown = [name for name in chosen if name not in BENCHES]
    if unknown:
        raise SystemExit(f"quellix: there is no benchmark {unknown[0]}; there are {', '.join(BENCHES)}.")
    built = subprocess.run(["cmake", "--build", "--preset", "win32", "--target", "bench"], cwd=ROOT, capture_output=True, text=True)
    if built.returncode:
        raise SystemExit(built.stdout[-3000:] + "quellix: the benchmark programs could not be built.")
    Desktop.keeps_to_one_processor = False
    for name in chosen:
        BENCHES[name]()
    return 0


if __name__ == "__main__":
    sys.exit(main())
