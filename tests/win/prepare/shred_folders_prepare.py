"""Plants links that lead out of a folder, other ways to the folders that must stay, and a canary in each of those.

C:\\plant\\WAY is for the way of names that this Windows has, wide or ANSI. C:\\canaries.txt tells the program under test
where the canaries are; afterwards they are looked for from outside of Windows.
"""
import threading
from pathlib import Path

from tests.win.prepare.folder_contents_prepare import exchange_when_asked, ways_of

LINKS = {  # name: target, seen from C:\plant\WAY\tree
    "absolute": "{c}/outside/{way}",
    "relative": "../../../outside/{way}/full",
    "to an empty folder": "../../../outside/{way}/empty",
    "broken": "nowhere",
    "to itself": "to itself",
    "to its parent": "..",
    "to the root": "{c}",
    "one/two/deep": "{c}/outside/{way}",
    "one/two/up": "../../..",
}

canaries: list[Path] = []
kept: list[Path] = []


def put(path: Path) -> Path:
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text("some bytes")
    return path


def link(path: Path, target) -> None:
    path.parent.mkdir(parents=True, exist_ok=True)
    path.symlink_to(target)
    kept.append(path)


def plant(home, way: str) -> None:
    outside, tree = home.c / "outside" / way, home.c / "plant" / way / "tree"
    for name in ("canary.txt", "full/canary.txt", "full/inner/canary.txt"):
        canaries.append(put(outside / name))
    (outside / "empty").mkdir()
    kept.append(outside / "empty")
    for name, target in LINKS.items():
        link(tree / name, target.format(c=home.c, way=way))
    for name in ("file.txt", "one/file.txt", "one/two/file.txt", "zz/file.txt"):
        put(tree / name)
    for number in range(20):
        canaries.append(put(outside / f"twin/file{number}.txt"))
        put(home.c / "swap" / way / f"tree/file{number}.txt")
    threading.Thread(target=exchange_when_asked, args=(home.c / "swap" / way, "tree", outside / "twin"), daemon=True).start()
    link(home.c / "plant" / way / "root", outside)
    link(home.c / "plant" / way / "only a link/sub", outside)


def prepare(home) -> dict[str, str]:
    for way in ways_of(home):
        plant(home, way)
    profile, share = home.profile, home.prefix / "dosdevices/unc/server/share"
    folders = [home.c / name for name in ("", "windows", "windows/system32", "Program Files", "Program Files/Common Files",
                                          "ProgramData", "users", "users/Public", "test", "current")]
    folders += [profile / name for name in ("Desktop", "Favorites", "Documents", "AppData/Roaming")]
    for folder in (*folders, profile, share):
        for name in ("canary.txt", "first canary/canary.txt"):
            canaries.append(put(folder / name))
    for name, target in {"to c": ".", "to windows": "windows"}.items():
        link(home.c / name, target)
    (home.prefix / "dosdevices/x:").symlink_to(home.c / "users")
    seen = [path for path in canaries if not path.is_relative_to(share)]
    (home.c / "canaries.txt").write_text(
        "".join("C:\\" + str(path.relative_to(home.c)).replace("/", "\\") + "\r\n" for path in seen), newline="")
    return {}


def check(home) -> None:
    gone = [str(path) for path in canaries if not path.is_file()]
    gone += [str(path) for path in kept if not path.is_symlink() and not path.is_dir()]
    if gone:
        raise AssertionError(f"gone: {gone}")
    for way in ways_of(home):
        left = [str(path) for path in (home.c / "plant" / way / "tree").rglob("*.txt")]
        if left:
            raise AssertionError(f"files of the folder itself are left: {left}")
