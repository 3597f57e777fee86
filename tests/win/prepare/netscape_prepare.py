"""A user's profile with a folder below Mozilla's that a link takes the place of, and what that leads to in C:\\outside."""
import threading

from tests.win.prepare.folder_contents_prepare import exchange_when_asked, expect, listing, put, ways_of

TREE = "Application Data/Mozilla/Profiles/tree"


def prepare(home) -> dict[str, str]:
    for way in ways_of(home):
        place, outside = home.c / "swap" / way, home.c / "outside" / way
        for number in range(20):
            put(place / TREE / f"folder{number}/trash")
            put(outside / f"folder{number}/trash")
        threading.Thread(target=exchange_when_asked, args=(place, TREE, outside), daemon=True).start()
    return {}


def check(home) -> None:
    for way in ways_of(home):
        outside = home.c / "outside" / way
        expect(way, [name for name in listing(outside) if (outside / name).is_file()],
               sorted(f"folder{number}/trash" for number in range(20)))
