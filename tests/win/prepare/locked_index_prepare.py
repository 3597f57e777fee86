"""Puts links to a file that is to keep what it holds in the places of the index files, as soon as the test asks for it, and
takes them away again. Wine itself moves and deletes what a link leads to."""
import threading
import time
from pathlib import Path


def when_asked(place: Path, action) -> None:
    while not (place / "please").exists():
        time.sleep(0.01)
    action()
    (place / "done").touch()


def prepare(home) -> dict[str, str]:
    windows = home.profile / "AppData/Local/Microsoft/Windows"
    targets = [windows / "INetCookies/index.dat", windows / "History/index.dat", windows / "History/History.IE5/index.dat"]
    canary = home.c / "outside of all/canary.txt"
    for folder in ("outside of all", "links", "no links"):
        (home.c / folder).mkdir()
    canary.write_text("not ours")

    def link() -> None:
        for target in targets:
            target.unlink()
            target.symlink_to(canary)

    def unlink() -> None:
        for target in targets:
            if not target.is_symlink():
                canary.write_text(f"{target} is no link any more")
            target.unlink()

    for place, action in ((home.c / "links", link), (home.c / "no links", unlink)):
        threading.Thread(target=when_asked, args=(place, action), daemon=True).start()
    return {}


def check(home) -> None:
    held = (home.c / "outside of all/canary.txt").read_text()
    if held != "not ours":
        raise AssertionError(f"what a link leads to holds: {held}")
