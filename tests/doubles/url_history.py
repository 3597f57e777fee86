"""Gives a private Windows a URL history store that keeps real entries, where Wine has only a stub of one.

    install_history_store(home)                      before the first program that uses it starts
    plant_history(home, {"http://example/": "Title"})
    history_urls(home)                               what is left
"""
import shutil
from pathlib import Path

from tests.harness.probe import BUILT, compile_windows_program

HERE = Path(__file__).resolve().parent

CLASS = "{3C374A40-BAE4-11CF-BF7D-00AA006946EE}"
SERVER_KEY = rf"HKLM\Software\Classes\CLSID\{CLASS}\InprocServer32"
SERVER = r"C:\doubles\url_history_store.dll"

VISITED, EXPIRES = 126227808000000000, 126245088000000000  # file times: 1 January 2001, twenty days later


def install_history_store(home) -> None:
    """Registers the store for every program of this Windows; it begins empty."""
    built = compile_windows_program(HERE / "url_history_store.cpp", "-shared", "-Wl,--kill-at", "-lole32", "-lwininet",
                                    output=BUILT / "url_history_store.dll")
    (home.c / "doubles").mkdir(exist_ok=True)
    shutil.copy2(built, home.c / "doubles")
    home.run("reg", "add", SERVER_KEY, "/ve", "/d", SERVER, "/f", check=True)


def plant_history(home, titles: dict[str, str]) -> None:
    """Replaces the entries of the store: URL to title, empty for an entry without one."""
    lines = [f"{VISITED}\t{VISITED}\t{EXPIRES}\t0\t{url}\t{title}\n" for url, title in titles.items()]
    (home.c / "urlhistory.dat").write_text("".join(lines), encoding="utf-8", newline="")


def history_urls(home) -> list[str]:
    """The URLs of the store in its order."""
    path = home.c / "urlhistory.dat"
    text = path.read_text(encoding="utf-8") if path.exists() else ""
    return [line.split("\t")[4] for line in text.split("\n") if line]


def make_store_fail(home, *faults: str) -> None:
    """What the store gets wrong from now on (url_history_store.cpp lists it); nothing when called without."""
    (home.c / "urlhistory.faults").write_text("".join(fault + "\n" for fault in faults), encoding="ascii", newline="")
