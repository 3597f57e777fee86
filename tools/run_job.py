"""The main job on real input: a private profile full of traces, the real program, "Erase Only" pressed from outside.

Prints the run's log as it appears, a table of traces before and after per item beside what the program itself tells of each,
what that means, and the screenshot's path. Exit status 1 when an item that was selected left something that it should erase, when
the program tells something else than was counted, or when something outside was touched.
"""
import argparse
import os
import re
import shutil
import sys
import time
from pathlib import Path
from typing import NamedTuple

from tests.doubles.url_history import history_urls, install_history_store, plant_history
from tests.harness import browsers, url_cache
from tests.harness.driver import BUILD, Desktop, compile_windows_program, wait_for
from tests.harness.items import ITEMS
from tools.traces import other_browsers
from tools.wine_home import HOMES, ROOT

NAME = "run-job"
SCREENSHOT = BUILD / "run/erased.png"
TRACES = ROOT / "tools/traces/traces.cpp"

# What an erase item takes, by the item's key: the rows of the traces program, and what is laid out and counted below.
FAMILIES = dict(re.findall(r'^ +\{"(\w+)", "([^"]+)", &', TRACES.read_text(encoding="utf-8"), re.M)) | {
    "TemporaryInternetFile": "cache entries",
    "InternetHistory": "history entries",
    "Cookies": "cookies",
    "WinTempFileFolder": "temporary files",
    "ScanDisk": "ScanDisk files",
    "NTypedHistory": "Netscape typed addresses",
    "NClearMailHistry": "Netscape mail trash",
    "NCache": "Netscape cache",
    "Ocookies": "Opera cookies",
    "OClean": "Opera cache",
    "OTypedUrl": "Opera typed addresses",
}
# What a run does before the items, and then every item that does any work: those are the ones that write to the log.
TRACES_OF = [
    ("Shut down all Browser Windows before Erasing", "browser windows"),
    ("Scheduled File Shredder", "listed files"),
    *((item.caption, FAMILIES[item.key]) for item in ITEMS if item.lines),
]

# The words of the program's own tally in which a family is told of, in the line of its item; of the whole run for what two items
# take.
KEYS = ("registry key", "registry value")
TOLD_IN = dict.fromkeys(("typed addresses", "Run history", "recent documents", "find history", "registry streams",
                         "form passwords"), KEYS) | {
    "cache entries": ("cache entr",), "cookies": ("cookie",), "history entries": ("history entr",),
    "index files": ("index file",), "recycle bin": ("item",), "clipboard": ("clipboard format",),
    "temporary files": ("file", "folder"), "ScanDisk files": ("file",), "listed files": ("file",),
    "Netscape typed addresses": ("file",), "Netscape mail trash": ("file",), "Netscape cache": ("file",),
    "Opera cookies": ("file",), "Opera cache": ("file",), "Opera typed addresses": ("file",),
}
# What nobody in the program knows: the companion erases by itself, and windows that close are no traces.
NOT_TOLD = {"form entries", "browser windows"}
OF_THE_WHOLE_RUN = {"cookies", "cache entries"}
LOG_LINES = {FAMILIES[item.key]: item.lines[0] for item in ITEMS if item.lines}

LISTED = [rf"C:\private papers\letter {number}, draft.txt" for number in range(5)]


def plant_files(home) -> None:
    """Temporary files of every awkward kind, lost clusters, and canaries that a link leads to."""
    canaries = home.c / "canaries"
    canaries.mkdir()
    for number in range(20):
        (canaries / f"keep {number}.txt").write_text("mine")
    deep = home.temp
    for level in range(12):
        deep = deep / f"level {level}"
        deep.mkdir()
        for number in range(25):
            (deep / f"~DF{level:02}{number:02}.tmp").write_bytes(b"x" * 512)
    (home.temp / "Пароли.txt").write_text("outside the code page")
    (home.temp / " leading blank.txt").write_text("x")
    (home.temp / ("n" * 250 + ".tmp")).write_text("x")
    os.symlink(canaries, home.temp / "link to the documents")
    # Wine has only a stub of the history's store; this one keeps entries.
    install_history_store(home)
    plant_history(home, {f"http://private.example/{number}": f"Page {number}" for number in range(100)})
    for number in range(3):
        (home.c / f"FILE{number:04}.CHK").write_bytes(b"lost cluster")
    (home.c / "private papers").mkdir()
    for path in LISTED:
        (home.c / path[3:].replace("\\", "/")).write_text("a draft")
    other_browsers.plant(home)
    browsers.install(home)


def count_files(home) -> dict[str, int]:
    # Without links: Wine cannot remove one, Windows can.
    found = (Path(place, name) for place, folders, files in os.walk(home.temp) for name in folders + files)
    return {
        "temporary files": sum(1 for entry in found if not entry.is_symlink()),
        "listed files": len(list((home.c / "private papers").iterdir())),
        "ScanDisk files": sum(1 for f in home.c.iterdir() if f.suffix.lower() == ".chk"),
    }


def count_traces(desktop: Desktop, command: str) -> dict[str, int]:
    home = desktop.home
    cache = url_cache.counts(home)
    text = home.run(r"C:\traces.exe", command, check=True).stdout
    counted = {name: int(number) for name, number in (line.split("\t") for line in text.splitlines() if "\t" in line)}
    return counted | count_files(home) | other_browsers.count(home) | {
        "cache entries": cache["content"], "cookies": cache["cookie"],
        # What Windows has once, this system has twice: in the store and in the cache.
        "history entries": max(cache["visited"], len(history_urls(home))), "browser windows": len(browsers.states(desktop))}


def schedule_shredding(desktop: Desktop) -> None:
    """Puts the files on the list of the scheduled shredder, through its own dialog, and turns it on."""
    desktop.click("cmdSecureDelk")
    desktop.wait_visible("cmdCustomAdd")
    desktop.click("cmdCustomAdd")
    desktop.answer_file_dialog(*LISTED)
    desktop.wait_control("lstFiles", lambda c: c.count == len(LISTED), "to hold the files")
    desktop.set_checked("chkOptions")


def follow_log(desktop: Desktop) -> list[str]:
    """Prints each log line as it appears, until the run has written its last one."""
    shown: list[str] = []

    def over() -> bool:
        lines = desktop.items("lstCln")
        for line in lines[len(shown):]:
            print(f"   {line}", flush=True)
        shown[:] = lines
        return len(lines) > 1 and lines[-2] == "" and not desktop.control("cmdStop").enabled
    wait_for("the end of the run", over, seconds=180, every=0.2)
    return shown


def ask_for_tally(desktop: Desktop, name: str, asks) -> list[str]:
    """What the program tells of a control, as it copies it."""
    asks()
    window = desktop.wait_window("#32770", "Quellix-What stayed")
    desktop.click("cmdCopy", window)
    desktop.settle(name, window)
    text = desktop.home.run(r"C:\clipboard_text.exe", check=True).stdout.splitlines()
    desktop.click("cmdCloseStayed", window)
    desktop.wait_no_window("#32770", "Quellix-What stayed")
    return [line for line in text if not line.startswith("\t")]


def number_of(sentence: str, words: tuple[str, ...]) -> int:
    return sum(int(number) for number, what in re.findall(r"(\d+) ([a-z ]+)", sentence.partition(" erased")[0])
               if what.startswith(words))


def tally(desktop: Desktop) -> dict[str, int]:
    """What the program tells of each family: how many it erased."""
    shutil.copy2(compile_windows_program(ROOT / "tests/harness/programs/clipboard_text.cpp"), desktop.home.c)
    last = len(desktop.items("lstCln")) - 1
    text = ask_for_tally(desktop, "cmdCopy", lambda: desktop.click_item("lstCln", last, double=True))
    sentences = dict(zip(text[::2], text[1::2], strict=True))
    desktop.click("cmdSecureDelk")
    desktop.wait_visible("txtMessage")
    shredder = ask_for_tally(desktop, "cmdCopy", lambda: desktop.double_click("txtMessage"))[1]
    told = {"listed files": number_of(shredder, TOLD_IN["listed files"])}
    for family, line in LOG_LINES.items():
        if family in TOLD_IN:
            lines = sentences.values() if family in OF_THE_WHOLE_RUN else [sentences[line]]
            told[family] = sum(number_of(sentence, TOLD_IN[family]) for sentence in lines)
    return told


def is_told_otherwise(family: str, erased: int, told: int | None) -> bool:
    # Those of the forms lie below the same key, and go with it unless the companion was quicker.
    return told is not None and (told < erased if family == "form passwords" else told != erased)


def told_otherwise(before: dict[str, int], after: dict[str, int], told: dict[str, int]) -> list[str]:
    """The items of which the program tells something else than was counted."""
    return [item for item, family in TRACES_OF if is_told_otherwise(family, before[family] - after[family], told.get(family))]


def print_table(before: dict[str, int], after: dict[str, int], told: dict[str, int]) -> list[str]:
    """Prints what each item found and left and what the program tells of it, and returns the items that left something."""
    print(f"\n   {'item':44} {'traces':25} {'before':>7} {'after':>7} {'told':>7}")
    unclean = []
    for item, family in TRACES_OF:
        left, tells = after[family], told.get(family)
        if left:
            unclean.append(item)
        otherwise = is_told_otherwise(family, before[family] - left, tells)
        print(f"   {item:44} {family:25} {before[family]:7} {left:7} {'-' if tells is None else tells:>7}"
              f"{'   LEFT' if left else ''}{'   TOLD OTHERWISE' if otherwise else ''}")
    return unclean


class Clock:
    """Says what goes on, and how long it took when the next thing begins."""

    def __init__(self):
        self.began = None

    def step(self, what: str) -> None:
        self.done()
        print(f"== {what}", flush=True)
        self.began = time.monotonic()

    def done(self) -> None:
        if self.began is not None:
            print(f"   done in {time.monotonic() - self.began:.0f} s", flush=True)
        self.began = None


class Outcome(NamedTuple):
    before: dict[str, int]
    after: dict[str, int]
    last_line: str
    seconds: float
    beside: dict[str, tuple[int, int]]  # what must stay, in words: how many there are, of how many
    told: dict[str, int]  # what the program says that it has erased; nothing for what it does not count


def lay_out(desktop: Desktop) -> dict[str, int]:
    traces = compile_windows_program(TRACES, "-lole32", "-lshell32")
    (desktop.home.c / "traces.exe").write_bytes(traces.read_bytes())
    url_cache.plant(desktop.home, "content", "500", "cookie", "200", "visited", "100")
    browsers.open_windows(desktop, (browsers.FRAME, "Holiday photos"), (browsers.FRAME, "Bank account"))
    before = count_traces(desktop, "plant")
    empty = [family for _, family in TRACES_OF if before[family] == 0]
    if empty:
        raise SystemExit(f"quellix: no traces could be laid out of: {', '.join(empty)}")
    return before


def erase(desktop: Desktop) -> tuple[str, float]:
    """Uses the program as a person does; the last line of its log, and the seconds from the press to that line."""
    desktop.start(r"C:\Quellix\Quellix.exe", folder="C:\\")
    desktop.wait_window("frmMain")
    schedule_shredding(desktop)
    desktop.click("cmdCleenFrame")
    desktop.wait_visible("cmdClean")
    started = time.monotonic()
    desktop.click("cmdClean")
    log = follow_log(desktop)
    return log[-1], time.monotonic() - started


def what_stays(home) -> dict[str, tuple[int, int]]:
    return {
        "files behind a link in the temporary folder": (len(list((home.c / "canaries").iterdir())), 20),
        "bookmarks, mails and preferences": (other_browsers.untouched(home), other_browsers.KEPT),
        f"traces that no item takes, by design ({other_browsers.UNNAMED_KINDS})":
            (other_browsers.left_alone(home), other_browsers.UNNAMED),
    }


def do_the_job(clock: Clock) -> Outcome:
    clock.step("laying out a private profile full of traces (about ten seconds)")
    with Desktop(NAME, start=False, prepare=plant_files, registry=other_browsers.REGISTRY,
                 settings={"Scheduling": {"CHKieclose": "True"}}) as desktop:
        before = lay_out(desktop)
        clock.step("starting Quellix.exe and pressing \"Erase Only\" (about half a minute: a second's pause after each item)")
        last_line, seconds = erase(desktop)
        desktop.screenshot(SCREENSHOT)
        clock.step("counting what is left")
        after = count_traces(desktop, "count")
        beside = what_stays(desktop.home)
        told = tally(desktop)
    clock.done()
    return Outcome(before, after, last_line, seconds, beside, told)


def sum_up(outcome: Outcome) -> bool:
    """The table, and then what it means in a few lines."""
    unclean = print_table(outcome.before, outcome.after, outcome.told)
    untrue = told_otherwise(outcome.before, outcome.after, outcome.told)
    touched = {words: count for words, count in outcome.beside.items() if count[0] != count[1]}
    finished = outcome.last_line == "Quellix has successfully erased selected item(s)."
    families = {family for _, family in TRACES_OF}
    erased = sum(outcome.before[family] - outcome.after[family] for family in families)
    print(f"\n== {erased:,} traces of {len(families)} kinds erased in {outcome.seconds:.0f} s, pauses included. "
          + (f"LEFT by: {', '.join(unclean)}" if unclean else "Nothing that was ticked is left."))
    if untrue:
        print(f"   the program tells otherwise than was counted of: {', '.join(untrue)}")
    for words, (there, of) in (touched or outcome.beside).items():
        print(f"   {'TOUCHED: ' if touched else 'untouched: '}{there} of {of} {words}")
    if not finished:
        print(f"   the log does not end as it should, but with: {outcome.last_line}")
    print(f"   picture: {SCREENSHOT.relative_to(ROOT)}")
    return finished and not unclean and not untrue and not touched


def main() -> int:
    parser = argparse.ArgumentParser(prog="./quellix run", description=__doc__.splitlines()[0])
    parser.add_argument("--keep", action="store_true", help="leave the private profile for a look")
    keep = parser.parse_args().keep
    good = sum_up(do_the_job(Clock()))
    if keep:
        print(f"   the profile as the run left it: {(HOMES / f'ui-{NAME}' / 'prefix/drive_c').relative_to(ROOT)}")
    else:
        shutil.rmtree(HOMES / f"ui-{NAME}", ignore_errors=True)
    return 0 if good else 1


if __name__ == "__main__":
    sys.exit(main())
