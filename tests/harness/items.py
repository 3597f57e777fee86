"""The erase items, from the one table that the tests in C++ include as well (erase_items.inc)."""
import re
from pathlib import Path
from typing import NamedTuple

TABLE = Path(__file__).with_name("erase_items.inc")
ROW = re.compile(r'ITEM\((\w+), (\d+), "(\w+)", "([^"\\]+)", (true|false), "([^"\\]*)", "([^"\\]*)"\)')


class Item(NamedTuple):
    array: str
    index: int
    key: str
    caption: str
    runs: bool
    lines: tuple[str, ...]  # what a run writes to the log about it

    @property
    def box(self) -> tuple[str, int]:
        return self.array, self.index


def read_items(text: str) -> list[Item]:
    """The rows of the table in its order. What is neither a row nor a comment is refused, and so is a box or a key twice."""
    items = []
    for number, line in enumerate(text.splitlines(), 1):
        if not line or line.startswith("//"):
            continue
        row = ROW.fullmatch(line)
        if not row:
            raise ValueError(f"line {number} is no row of the table: {line}")
        array, index, key, caption, runs, *lines = row.groups()
        items.append(Item(array, int(index), key, caption, runs == "true", tuple(filter(None, lines))))
    for what, values in (("box", [item.box for item in items]), ("key", [item.key for item in items])):
        twice = {value for value in values if values.count(value) > 1}
        if twice:
            raise ValueError(f"more than one row has the {what} {sorted(twice)}")
    return items


ITEMS = read_items(TABLE.read_text(encoding="ascii"))
