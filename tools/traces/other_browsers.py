"""Profiles of Communicator 4, Netscape 7, Mozilla and Opera 7 in a private Windows, as those programs lay them out.

    import_registry(REGISTRY)     where the two Netscapes have their profiles
    plant(home)                   the files: traces, and beside them what is its user's own
    count(home)                   {family: traces that are there}
    untouched(home)               how many of KEPT files of the user's own are there as they were
    left_alone(home)              how many of UNNAMED traces, which no item takes, are there as they were
"""
from pathlib import Path

NAVIGATOR = r"HKLM\Software\Netscape\Netscape Navigator"
REGISTRY = {
    NAVIGATOR + r"\Users": {"CurrentUser": "joe"},
    NAVIGATOR + r"\Users\joe": {"DirRoot": r"C:\Program Files\Netscape\Users\joe"},
    # Installed over Communicator, with the profiles where that had them.
    NAVIGATOR + r"\biff": {"CurrentUser": "anna"},
    NAVIGATOR + r"\Main": {"Install Directory": r"C:\Program Files\Netscape\Communicator"},
}

TABLES = ["FieldSchema.tbl", "SchemaConcat.tbl", "SchemaValue.tbl", "URLFieldSchema.tbl"]
CACHED = [f"{number % 8:02X}/M{number:07X}.{kind}" for number, kind in enumerate(["html", "gif", "jpg", "js"] * 25)]

# "unnamed" are the traces that a browser leaves under names that no item takes. Mail/Trash.nsm, and Mail/Trash of Netscape 7,
# are what no browser leaves: they lie there because an item names them.
COMMUNICATOR = {
    "typed": TABLES,
    "mail": ["Mail/Trash", "Mail/Trash.nsm"],
    "cache": ["Cache/fat.db", *(f"Cache/{name}" for name in CACHED)],
    "unnamed": ["Mail/Trash.snm", "netscape.hst", "cookies.txt"],
    "own": ["bookmark.htm", "prefs.js", "cert7.db", "key3.db", "secmod.db", "pab.na2", "Mail/Inbox", "Mail/Inbox.snm",
            "Mail/Sent", "Mail/Drafts", "News/hostinfo.dat", "archive/bookmark.htm", "archive/Mail/Inbox"],
}
NETSCAPE7 = {
    "typed": TABLES,
    "mail": ["Mail/Trash", "Mail/Trash.nsm"],
    "cache": ["Cache/_CACHE_MAP_", "Cache/_CACHE_001_", "Cache/_CACHE_002_", "Cache/_CACHE_003_",
              *(f"Cache/{name}" for name in CACHED)],
    "unnamed": ["Mail/pop.private.example/Trash", "Mail/pop.private.example/Trash.msf", "history.dat", "cookies.txt"],
    "own": ["bookmarks.html", "prefs.js", "abook.mab", "panels.rdf", "search.rdf", "cert7.db",
            "Mail/pop.private.example/Inbox", "Mail/pop.private.example/Inbox.msf", "Mail/pop.private.example/Sent",
            "Mail/pop.private.example/popstate.dat", "chrome/userChrome-example.css"],
}
MOZILLA = {
    "typed": TABLES,
    "mail": ["Mail/pop.private.example/Trash", "Mail/pop.private.example/Trash.msf", "Mail/Local Folders/Trash",
             "Mail/Local Folders/Trash.msf", "ImapMail/imap.private.example/Trash.msf"],
    "cache": ["Cache/_CACHE_MAP_", "Cache/_CACHE_001_", "Cache/_CACHE_002_", "Cache/_CACHE_003_",
              *(f"Cache/{number:08X}d01" for number in range(100)), "News/Cache/news.private.example.dat"],
    "unnamed": ["history.dat", "cookies.txt"],
    "own": ["bookmarks.html", "prefs.js", "localstore.rdf", "mimeTypes.rdf", "abook.mab", "cert8.db", "secmod.db",
            "Mail/pop.private.example/Inbox", "Mail/pop.private.example/Inbox.msf", "Mail/pop.private.example/Sent",
            "Mail/Local Folders/Unsent Messages", "ImapMail/imap.private.example/INBOX.msf", "chrome/chrome.rdf"],
}
OPERA = {
    "opera cookies": ["cookies4.dat"],
    "opera cache": ["cache4/dcache4.url", *(f"cache4/opr{number:05X}.htm" for number in range(100))],
    "opera typed": ["global.dat", "opera.dir"],
    "unnamed": ["vlink4.dat"],
    "own": ["opera6.ini", "opera6.adr", "contacts.adr", "wand.dat", "opcert6.dat", "cache4/saved/page.htm",
            "../Mail/accounts.ini", "../Mail/store/account1/inbox.mbs"],
}

# By the name under which the traces are shown.
FAMILIES = {"Netscape typed addresses": "typed", "Netscape mail trash": "mail", "Netscape cache": "cache",
            "Opera cookies": "opera cookies", "Opera cache": "opera cache", "Opera typed addresses": "opera typed"}


def _profiles(home) -> list[tuple[Path, dict[str, list[str]]]]:
    users = home.c / "Program Files/Netscape/Users"
    return [(users / "joe", COMMUNICATOR), (users / "anna", NETSCAPE7),
            (home.profile / "Application Data/Mozilla/Profiles/default/k7h2qx3p.slt", MOZILLA),
            (home.profile / "AppData/Roaming/Opera/Opera7/profile", OPERA)]


def _files(home, kind: str) -> list[Path]:
    return [folder / name for folder, layout in _profiles(home) for name in layout.get(kind, [])]


def _text(path: Path) -> bytes:
    return f"private {path.name} ".encode() * 50


def plant(home) -> None:
    for kind in ("own", "unnamed", *FAMILIES.values()):
        for path in _files(home, kind):
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_bytes(_text(path))


def count(home) -> dict[str, int]:
    return {family: sum(path.exists() for path in _files(home, kind)) for family, kind in FAMILIES.items()}


def _as_planted(home, kind: str) -> int:
    return sum(path.is_file() and path.read_bytes() == _text(path) for path in _files(home, kind))


KEPT, UNNAMED = (sum(len(layout[kind]) for layout in (COMMUNICATOR, NETSCAPE7, MOZILLA, OPERA)) for kind in ("own", "unnamed"))
UNNAMED_KINDS = "cookies and histories of Netscape and Mozilla, Netscape's mail trash under other names, Opera's visited links"


def untouched(home) -> int:
    return _as_planted(home, "own")


def left_alone(home) -> int:
    return _as_planted(home, "unnamed")
