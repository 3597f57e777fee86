"""Plants links and names outside the code page in Opera's folders; what the links lead to is in C:\\outside."""
import threading

from tests.harness.proxy import start_proxy
from tests.win.prepare.folder_contents_prepare import exchange_when_asked, expect, listing, put, ways_of

STRANGE = "Жж"  # a folder of application data whose own name is outside the code page
STRANGE_TAKEN = ["cache4/opr00001.htm", "cookies4.dat", "global.dat", "opera.dir"]
STRANGE_KEPT = ["cache4/sub/x", "opera6.adr"]

CANARIES = ["canary.txt", "cookies.dat", "Cache/canary", "profile/cache4/canary", "profile/cookies4.dat",
            *(f"twin/file{number}" for number in range(20))]
CACHE = "Opera/OPERA7/profile/cache4"
TAKEN = ["Привет", "日本語.dat", "😀", "opr00001.dat", " blank at the head", "blank at the end ", "dot.", "日" * 80, "x" * 250]


def prepare(home) -> dict[str, str]:
    for way in ways_of(home):
        plant, outside = home.c / "plant" / way, home.c / "outside" / way
        for name in CANARIES:
            put(outside / name)
        for number in range(20):
            put(home.c / "swap" / way / CACHE / f"file{number}")
        threading.Thread(target=exchange_when_asked, args=(home.c / "swap" / way, CACHE, outside / "twin"), daemon=True).start()
        profile = plant / "names/Opera/OPERA7/profile"
        for name in TAKEN:
            put(profile / "cache4" / name)
        (profile / "cache4/link").symlink_to(outside)
        (profile / "cache4/чужое").symlink_to(outside)
        (profile / "cookies4.dat").symlink_to(outside)  # a link to a folder
        linked = plant / "link/Opera/OPERA7/profile"
        linked.mkdir(parents=True)
        (linked / "cache4").symlink_to(outside)
        (plant / "current/0").mkdir(parents=True)
        (plant / "current/0/Cache").symlink_to(outside)
        for name in STRANGE_TAKEN + STRANGE_KEPT:
            put(plant / STRANGE / "Opera/OPERA7/profile" / name)
    return {"QUELLIX_TEST_PROXY": start_proxy(home.c / "requests.txt")}


def check(home) -> None:
    for way in ways_of(home):
        outside = home.c / "outside" / way
        expect(f"{way}, outside", [name for name in listing(outside) if (outside / name).is_file()], sorted(CANARIES))
        expect(f"{way}, names", listing(home.c / "plant" / way / "names/Opera/OPERA7/profile/cache4"), ["link", "чужое"])
        profile = home.c / "plant" / way / STRANGE / "Opera/OPERA7/profile"
        left = STRANGE_KEPT if way == "wide" else STRANGE_TAKEN + STRANGE_KEPT
        expect(f"{way}, {STRANGE}", [name for name in listing(profile) if (profile / name).is_file()], sorted(left))
