"""Plants what a Windows program cannot make: links, names outside the code page, profiles deeper than a path may be long.

WAY is how this Windows takes names, wide or ANSI. C:\\plant\\WAY\\KIND is a user's profile whose
"Application Data/Mozilla/Profiles" the cleaners search. What the links lead to is in C:\\outside; afterwards the disk is looked
at from outside of Windows.
"""
from pathlib import Path

from tests.win.prepare.folder_contents_prepare import expect, listing, put, ways_of

PROFILES = "Application Data/Mozilla/Profiles"

# All that the three cleaners look for, so that whoever enters it by a link takes something.
OUTSIDE = ["canary.txt", "trash", "Value.tbl", "FieldSchema.tbl", "mail/trash", "mail/trash.nsm", "cache/canary", "inner/Cache/canary",
           "cache/x", "Application Data/Mozilla/Profiles/trash", "Application Data/Mozilla/Profiles/Cache/canary"]

LINKS = {  # name below PROFILES: target
    "linked": "{outside}",
    "default/linked": "../../../../../../../outside/{way}",
    "default/Cache": "{outside}/cache",
    "default/abc.slt/Cache/out": "{outside}",
    "default/abc.slt/Cache/inner/Cache": "{outside}/cache",
    "default/abc.slt/Cache/up": "..",
    "default/broken": "nowhere",
    "default/to itself": "to itself",
    "default/up": "..",
    "default/чужое": "{outside}",
    "drive": "{c}",
}
BESIDE_LINKS = ["trash", "default/trash", "default/abc.slt/Cache/file", "default/abc.slt/Cache/inner/file",
                "default/abc.slt/Value.tbl", "zz/Cache/file", "zz/trash"]

TAKEN_NAMES = ["профиль/Mail/Trash", "профиль/Cache/日本語.dat", "профиль/Cache/чужое/空/внутри.txt", "Ünïcödé/Value.tbl",
               "e\u0301/CACHE/😀", "p/Cache/ blank at the head", "p/Cache/blank at the end ", "p/Cache/dot.", "p/Cache/" + "日" * 80,
               "p/Cache/" + "x" * 250, " p/trash", "p /trash", "p./trash"]
NOT_REACHED_BY_ANSI = "e\u0301/CACHE/😀"  # two characters that become one and have no short name
# Not the names that they look like.
KEPT_NAMES = ["p/Сache/file", "p/cаche/file", "p/trаsh", "p/Value。tbl", "p/日本", "p/Prefs\u00ad",
              "p/ţšţŨť/file", "p/ŴŲšųŨ"]  # the low bytes of these two read "cache" and "trash"

PROGRAMS = ("communicator", "netscape 6")  # that have their profiles in Users/joe, registered
TARGETS = ["FieldSchema.tbl", "mail/trash", "mail/trash.nsm", "cache/x"]
BESIDE = ["bookmark.htm", "mail/Inbox"]  # nobody's targets

STRANGE = "Жж"  # a user's profile whose own name is outside the code page
STRANGE_TAKEN = ["default/FieldSchema.tbl", "default/Mail/Trash", "default/Cache/x"]
STRANGE_KEPT = ["default/prefs.js"]

LEVELS = 200


def plant(home, way: str) -> None:
    place, outside = home.c / "plant" / way, home.c / "outside" / way
    for name in OUTSIDE:
        put(outside / name)
    for name in BESIDE_LINKS:
        put(place / "links" / PROFILES / name)
    for name, target in LINKS.items():
        link = place / "links" / PROFILES / name
        link.parent.mkdir(parents=True, exist_ok=True)
        link.symlink_to(target.format(outside=outside, way=way, c=home.c))
    (place / "root is a link" / PROFILES).parent.mkdir(parents=True)
    (place / "root is a link" / PROFILES).symlink_to(outside)
    (place / "communicator").mkdir()
    (place / "communicator/cache").symlink_to(outside)
    for name in TAKEN_NAMES + KEPT_NAMES:
        put(place / "names" / PROFILES / name)
    bottom = place / "deep" / PROFILES / "/".join(["level"] * LEVELS)
    put(bottom / "Cache/file")
    put(bottom / "trash")
    put(place / "deep" / PROFILES / "top/Cache" / "/".join(["level"] * LEVELS) / "file")


def plant_registered(place: Path, outside: Path, program: str) -> None:
    """One profile that is a link, one whose mail folder is one, and one below a folder that is one."""
    (place / f"profile of {program}/Users").mkdir(parents=True)
    (place / f"profile of {program}/Users/joe").symlink_to(outside)
    with_mail = place / f"mail of {program}/Users/joe"
    for name in ("FieldSchema.tbl", "cache/x", "bookmark.htm"):
        put(with_mail / name)
    (with_mail / "mail").symlink_to(outside / "mail")
    below = place / f"users of {program}"
    for name in TARGETS + BESIDE:
        put(below / "moved/joe" / name)
    (below / "Users").symlink_to("moved")


def prepare(home) -> dict[str, str]:
    for way in ways_of(home):
        plant(home, way)
        place, outside = home.c / "plant" / way, home.c / "outside" / way
        for program in PROGRAMS:
            plant_registered(place, outside, program)
        for name in STRANGE_TAKEN + STRANGE_KEPT:
            put(place / STRANGE / PROFILES / name)
    return {}


def files(folder: Path) -> list[str]:
    return [name for name in listing(folder) if (folder / name).is_file() and not any(
        (folder / above).is_symlink() for above in Path(name).parents)]


def check_registered(place: Path, way: str, program: str) -> None:
    links = ("profile of {}/Users/joe", "mail of {}/Users/joe/mail", "users of {}/Users")
    gone = [link.format(program) for link in links if not (place / link.format(program)).is_symlink()]
    expect(f"{way}, links of {program}", gone, [])
    expect(f"{way}, beside the mail of {program}", files(place / f"mail of {program}/Users/joe"), ["bookmark.htm"])
    expect(f"{way}, below the users of {program}", files(place / f"users of {program}/moved/joe"), sorted(BESIDE))


def check(home) -> None:
    for way in ways_of(home):
        place, outside = home.c / "plant" / way, home.c / "outside" / way
        expect(f"{way}, outside", files(outside), sorted(OUTSIDE))
        # Wine has no way to remove a link as a link.
        gone = [name for name in LINKS if not (place / "links" / PROFILES / name).is_symlink()]
        expect(f"{way}, links", gone, [])
        expect(f"{way}, beside the links", files(place / "links" / PROFILES), [])
        expect(f"{way}, link of a root", files(place / "root is a link"), [])
        for program in PROGRAMS:
            check_registered(place, way, program)
    if "wide" in ways_of(home):
        expect("wide, a strange profile", files(home.c / "plant/wide" / STRANGE), [f"{PROFILES}/{name}" for name in STRANGE_KEPT])
        expect("wide, names", files(home.c / "plant/wide/names" / PROFILES), sorted(KEPT_NAMES))
        expect("wide, 200 levels", files(home.c / "plant/wide/deep"), [])
    if "ansi" in ways_of(home):
        expect("ansi, a strange profile", files(home.c / "plant/ansi" / STRANGE),
               sorted(f"{PROFILES}/{name}" for name in STRANGE_TAKEN + STRANGE_KEPT))
        expect("ansi, names", files(home.c / "plant/ansi/names" / PROFILES), sorted([*KEPT_NAMES, NOT_REACHED_BY_ANSI]))
