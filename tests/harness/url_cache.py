"""The browser's URL cache of a private Windows: filled and counted from outside (programs/plant_cache.cpp)."""
import shutil
from pathlib import Path

from tests.harness.probe import PROGRAMS, compile_windows_program
from tools.wine_home import ROOT, WineHome

# What the planter shares with the Windows tests needs these.
PRODUCT = [ROOT / "src/platform" / name
           for name in ("late_binding.cpp", "plain_text.cpp", "runtime_error.cpp")]


def _planter() -> Path:
    return compile_windows_program(PROGRAMS / "plant_cache.cpp", "-I", str(ROOT / "src"), *map(str, PRODUCT))


def plant(home: WineHome, *words: str) -> None:
    """plant(home, "content", "500", "cookie", "user@site"): a number of entries of a kind, or the one of a name."""
    if not (home.c / "plant_cache.exe").exists():
        shutil.copy2(_planter(), home.c)
    home.run(r"C:\plant_cache.exe", *words, check=True, timeout=900)


def counts(home: WineHome) -> dict[str, int]:
    """How many entries of each kind there are: content, cookie, visited."""
    lines = home.run(r"C:\plant_cache.exe", "count", check=True).stdout.splitlines()
    return {kind: int(number) for kind, number in (line.split("\t") for line in lines)}


def cookie_file(name: str) -> str:
    """The name of the file of the cookie that was planted under a name."""
    return f"{name}[1].txt"
