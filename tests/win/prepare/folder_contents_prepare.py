"""Plants what a Windows program cannot make: links, names outside the rules, trees deeper than a path may be long.

What the walk is to take is in C:\\plant\\WAY, by the way of names that this Windows has; what it must not touch is in C:\\outside.
Afterwards the disk is looked at from outside of Windows, which does not show everything that is there.
"""
import atexit
import os
import subprocess
import sys
import threading
import time
from pathlib import Path

# A broken run leaves trees here that are deeper than what Python removes by default.
sys.setrecursionlimit(10000)


def ways_of(home) -> list[str]:
    """The ways of names by which the tests run in this Windows (support/ways_of_names.h)."""
    return ["ansi" if home.windows_version.startswith("win9") else "wide"]


LINKS = {  # name: target, seen from C:\plant\WAY\links
    "absolute": "{outside}",
    "relative": "../../../outside/{way}/full",
    "to an empty folder": "../../../outside/{way}/empty",
    "broken": "nowhere",
    "to itself": "to itself",
    "to its folder": ".",
    "to its parent": "..",
    "to the root": "{c}",
    "to the drive": "{drive}",
    " blank at the head": "{outside}",
    "blank at the end ": "{outside}",
    "dot at the end.": "{outside}",
    "чужое": "{outside}",
    "one/two/three/deep": "{outside}",
    "one/two/up": "../../..",
    "one/空": "{outside}/empty",
}

NAMES = [
    "a", "a ", " a", "  a", "a  ", "a.", "a..", ".a", "...", "....", " .", ". ", " ..", ".. ", ".. .", " . ", "b b", "~", "[b]", "%b%",
    "CON", "con ", "NUL.txt", "COM1", "LPT1.txt", "AUX.", "prn", "desktop.ini", "Ünïcödé", "Привет, мир", "日本語のファイル名",
    "😀 smile", "e\u0301", "\u202egnp.exe", "．．", "．．＼．．", "／", "x" * 255, "日" * 85, "y" * 250 + ".html", "A~1", "LONGNA~1.TXT",
]

# Names that lead out of the folder for a program that puts them together with its path as they are. Only other systems'
# disks hold them; "out" is a link.
TRAPS_AS_FILES = ["..\\canary.txt", "out\\canary.txt", "out.\\canary.txt", "..\\kept\\canary.txt"]
TRAPS_AS_FOLDERS = ["．．", "．．＼kept", "...", ".. ", "..  .", "out.", "out ", "out..", "..\\kept", "out\\full"]

# For each step in an open folder Wine looks at all of those above it, which takes minutes for a thousand.
LEVELS = int(os.environ.get("QUELLIX_LEVELS", "300"))

LENGTHS = (255, 258, 259, 260, 261, 262, 300, 400)

snapshots: dict[Path, list[str]] = {}


def put(path: Path) -> None:
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text("some bytes")


def listing(folder: Path) -> list[str]:
    found = []
    for root, folders, files in os.walk(folder):
        found += [os.path.relpath(os.path.join(root, name), folder) for name in folders + files]
    return sorted(found)


def plant_many(folder: Path) -> None:
    for number in range(40):
        put(folder / f"file{number}.txt")
        (folder / f"empty{number}").mkdir()


def plant_outside(outside: Path) -> None:
    plant_many(outside / "twin")
    put(outside / "above/tree/canary.txt")
    put(outside / "canary.txt")
    put(outside / "full/inner/canary.txt")
    (outside / "empty").mkdir()
    put(outside / "root/canary.txt")


def plant_links(home, way: str, plant: Path, outside: Path) -> None:
    places = {"outside": outside, "way": way, "c": home.c, "drive": home.prefix / "dosdevices/c:"}
    for name, target in LINKS.items():
        link = plant / "links" / name
        link.parent.mkdir(parents=True, exist_ok=True)
        link.symlink_to(target.format(**places))
    for name in ("before.txt", "one/file.txt", "one/two/three/file.txt", "zz/file.txt"):
        put(plant / "links" / name)
    (plant / "root").symlink_to(outside / "root")


def plant_names(plant: Path) -> None:
    for name in NAMES:
        put(plant / "names/files" / name)
        put(plant / "names/folders" / name / "inner.txt")


def plant_traps(plant: Path, outside: Path) -> None:
    put(plant / "traps/canary.txt")
    put(plant / "traps/kept/canary.txt")
    inner = plant / "traps/inner"
    inner.mkdir()
    (inner / "out").symlink_to(outside)
    for name in TRAPS_AS_FILES:
        put(inner / name)
    for name in TRAPS_AS_FOLDERS:
        put(inner / name / "bait.txt")


def plant_long(plant: Path, way: str) -> None:
    for length in LENGTHS:
        parent = f"C:\\plant\\{way}\\long\\{length}\\{'d' * 150}\\"
        rest = "e" * (length - len(parent))
        put(plant / f"long/{length}/{'d' * 150}/{rest}")
        put(plant / f"long/{length}/{'d' * 149}f/{rest}/inner.txt")


def plant_tower(folder: Path, levels: int, name: str) -> None:
    folder.mkdir(parents=True)
    here = os.open(folder, os.O_RDONLY)
    for level in range(levels):
        if level % 10 == 9:
            os.close(os.open("file.txt", os.O_CREAT, dir_fd=here))
        os.mkdir(name, dir_fd=here)
        below = os.open(name, os.O_RDONLY, dir_fd=here)
        os.close(here)
        here = below
    os.close(here)


def plant_the_large(plant: Path) -> None:
    plant_tower(plant / "tower", LEVELS, "l")
    plant_tower(plant / "tower too high", 40, "n" * 200)
    for number in range(10000):
        (plant / f"wide floor/folder{number}").mkdir(parents=True)


def exchange_when_asked(place: Path, folder: str, target: Path) -> None:
    """Puts a link in the place of a folder, in the middle of the walk."""
    while not (place / "please").exists():
        time.sleep(0.005)
    (place / folder).rename(place / "moved away")
    (place / folder).symlink_to(target)
    (place / "done").touch()


def plant_exchanges(swap: Path, outside: Path) -> None:
    """In each folder one that is exchanged: listed and not yet entered, entered, emptied, and above the one that is cleared."""
    for name in ("a", "b", "c"):
        put(swap / "listed/tree" / name / "inner/file.txt")
    plant_many(swap / "entered/tree/b")
    (swap / "emptied/tree/b/inner").mkdir(parents=True)
    put(swap / "above/above/tree/file.txt")
    for name, folder, target in (("listed", "tree/b", "full"), ("entered", "tree/b", "twin"), ("emptied", "tree/b", "empty"),
                                 ("above", "above", "above")):
        threading.Thread(target=exchange_when_asked, args=(swap / name, folder, outside / target), daemon=True).start()


def prepare(home) -> dict[str, str]:
    atexit.register(subprocess.run, ["rm", "-rf", "--", str(home.c / "plant")], check=False)
    put(home.prefix / "dosdevices/unc/server/share/canary.txt")
    for way in ways_of(home):
        plant, outside, swap = home.c / "plant" / way, home.c / "outside" / way, home.c / "swap" / way
        plant.mkdir(parents=True)
        plant_outside(outside)
        plant_links(home, way, plant, outside)
        plant_names(plant)
        plant_traps(plant, outside)
        plant_long(plant, way)
        plant_tower(plant / "tower200", 200, "level")
        plant_tower(plant / "long tower", 60, "n" * 60)
        plant_the_large(plant)
        plant_exchanges(swap, outside)
        snapshots[outside] = listing(outside)
    return {}


def expect(what: str, found: list[str], wanted: list[str]) -> None:
    if found != wanted:
        raise AssertionError(f"{what}: {sorted(set(found) - set(wanted))} should be gone, "
                             f"{sorted(set(wanted) - set(found))} should be there")


def check(home) -> None:
    links = sorted([*LINKS, "one", "one/two", "one/two/three"])  # Wine has no way to remove a link as a link
    for way in ways_of(home):
        plant, outside = home.c / "plant" / way, home.c / "outside" / way
        expect(f"{way}, outside", listing(outside), snapshots[outside])
        expect(f"{way}, links", listing(plant / "links"), links)
        expect(f"{way}, beside the traps", [name for name in listing(plant / "traps") if not name.startswith("inner")],
               ["canary.txt", "kept", "kept/canary.txt"])
        # Wine gives such a name no short one that it could be reached by.
        stuck = {name for name in os.listdir(plant / "traps/inner") if "\\" not in name}
        expect(f"{way}, traps", sorted(stuck), ["out"])
        expect(f"{way}, paths beyond 259 characters", listing(plant / "long"), [])
    if "wide" in ways_of(home):
        expect("wide, names", listing(home.c / "plant/wide/names"), [])
        expect("wide, 200 levels", listing(home.c / "plant/wide/tower200"), [])
