"""Keeps what one task starts on one processor.

A Windows program asks Wine's server some thousand times a second and waits for each answer. Where the two run on different
processors, each question and each answer wakes another processor, which on a virtual machine takes a quarter of the
processor time of all tests.
"""
import fcntl
import itertools
import os
from pathlib import Path

_place = None  # the locked file, for as long as the process runs


def settle(places: Path) -> None:
    """Puts the caller, and what it starts from now on, on the processor with the fewest tasks; further calls change nothing.

    `places` is a folder whose locked files tell who is where. A task gives its place back when its process ends.
    """
    global _place
    if _place is None:
        places.mkdir(parents=True, exist_ok=True)
        processor, _place = _first_free(places)
        os.sched_setaffinity(0, {processor})


def _first_free(places: Path):
    """Row by row, so that no processor gets a second task while another has none."""
    for row in itertools.count():
        for processor in sorted(os.sched_getaffinity(0)):
            place = open(places / f"processor-{processor}-{row}", "w")
            try:
                fcntl.flock(place, fcntl.LOCK_EX | fcntl.LOCK_NB)
            except BlockingIOError:
                place.close()
            else:
                return processor, place
