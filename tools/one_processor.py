"""Keeps what one task starts on one processor.

A Windows program asks Wine's server some thousand times a second and waits for each answer. Where the two run on different
processors, each question and each answer wakes another processor, which on a virtual machine costs as much as all else.
"""
import fcntl
import itertools
import os
import threading
from pathlib import Path

_settled = threading.local()


def settle(places: Path) -> None:
    """Puts the calling thread, and what it starts from now on, on the processor with the fewest tasks; the next calls change
    nothing. `places` is a folder whose locked files tell who is where; a task gives its place back when its process ends.
    """
    if hasattr(_settled, "place"):
        return
    places.mkdir(parents=True, exist_ok=True)
    for row in itertools.count():
        for processor in sorted(os.sched_getaffinity(0)):
            place = open(places / f"processor-{processor}-{row}", "w")
            try:
                fcntl.flock(place, fcntl.LOCK_EX | fcntl.LOCK_NB)
            except BlockingIOError:
                place.close()
                continue
            _settled.place = place
            os.sched_setaffinity(0, {processor})
            return
