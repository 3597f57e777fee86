"""What memory a program under test holds: the used blocks of its heaps to the byte, and the pages that it has written to.

A library that comes and goes (programs/heaps.cpp) walks through the heaps inside; Linux tells of the pages. Pages that were
only read from a file do not count: they are called private while no other process happens to have read the same ones.
"""
import contextlib
import re
import shutil
from typing import NamedTuple

from tests.harness.driver import BUILT, PROGRAMS, Desktop, compile_windows_program
from tests.harness.probe import Refusal

LIBRARY = "heaps.dll"


class Memory(NamedTuple):
    blocks: int  # in use, of all heaps
    used: int  # kilobytes in them
    written: int  # kilobytes of pages


def memory_held(desktop: Desktop) -> Memory:
    pages = (desktop._processes_of(desktop.program)[0] / "smaps").read_text()
    blocks, used = _heaps(desktop)
    return Memory(blocks, used // 1024, sum(map(int, re.findall(r"^Private_Dirty: +(\d+)", pages, re.MULTILINE))))


def _heaps(desktop: Desktop) -> tuple[int, int]:
    """Used blocks of all heaps, and their bytes."""
    folder = desktop.home.c
    if not (folder / LIBRARY).exists():
        shutil.copy2(compile_windows_program(PROGRAMS / "heaps.cpp", "-shared", output=BUILT / LIBRARY), folder)
    told = folder / "heaps.txt"
    told.unlink(missing_ok=True)
    with contextlib.suppress(Refusal):  # it has done its work and does not stay
        desktop.load_into_program(rf"C:\{LIBRARY}")
    heaps = [line.split() for line in told.read_text().splitlines()]
    assert heaps, "the heaps could not be walked through"
    return sum(int(blocks) for blocks, _ in heaps), sum(int(used) for _, used in heaps)
