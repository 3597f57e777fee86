#!/usr/bin/env python3
"""Tells whether a text file of the repository points at something that its reader does not have.

The code and its documents explain themselves. What refers to papers outside, to a thread somewhere or to a folder of
one machine is a finding: one line each, and exit status 1.
"""
from __future__ import annotations

import re
import subprocess
import sys
from pathlib import Path

# Written in pieces, so that this file is no finding of its own.
SHORT = "sp" + "ec"
PAPERS = "|".join((SHORT, "design", "habits", "platform-facts", "win_floor"))
# A slash that starts a path: no path and no variable ends before it. A file address or a compiler's -I may.
PATH_START = r"(?:(?<![\w.~$})%/\\-])(?<!\b[a-z]:)|(?<=file://)|(?<=-[il]))/"
WORDING = [
    SHORT + "ification",
    SHORT + r"\.md",
    rf"\bthe[\s/#*;]+{SHORT}\b",  # the words may stand on both sides of a line break in a comment
    r"\bpart\s+[1-5]\.[1-6]\b",
    r"\bseed\s+document",
    r"\bissue(?:\s*#\s*|\s+)\d+",
    rf"(?<![\w.-])shared/(?:{PAPERS})(?![a-z])",
    PATH_START + r"(?:work|root|home/[\w.-]+)/",
]
PATTERN = re.compile("|".join(f"(?:{pattern})" for pattern in WORDING), re.IGNORECASE)


def listed_files(root: Path) -> list[str]:
    """What git tracks, and what it would track once added."""
    command = ["git", "-C", str(root), "ls-files", "-z", "--cached", "--others", "--exclude-standard"]
    output = subprocess.run(command, check=True, stdout=subprocess.PIPE).stdout
    return sorted({name for name in output.decode("utf-8", "surrogateescape").split("\0") if name})


def text_of(path: Path) -> str | None:
    """None for what holds no text: binary files, folders of other repositories, files deleted but still tracked."""
    if path.is_symlink():
        return str(path.readlink())
    if not path.is_file():
        return None
    data = path.read_bytes()
    if data.startswith((b"\xff\xfe", b"\xfe\xff")):
        return data.decode("utf-16", "replace")
    return None if b"\0" in data else data.decode("utf-8", "replace")


def findings_in(text: str) -> list[tuple[int, str]]:
    """The number and text of every line where forbidden wording starts."""
    lines = text.split("\n")
    numbers = sorted({text.count("\n", 0, match.start()) for match in PATTERN.finditer(text)})
    return [(number + 1, lines[number].strip()) for number in numbers]


def scan(root: Path, names: list[str]) -> list[str]:
    found = []
    for name in names:
        shown = name.encode("utf-8", "replace").decode()
        if PATTERN.search(name):
            found.append(f"{shown}: the name itself")
        for number, line in findings_in(text_of(root / name) or ""):
            found.append(f"{shown}:{number}: {line}")
    return found


def main() -> int:
    root = Path(sys.argv[1]) if len(sys.argv) > 1 else Path(__file__).resolve().parents[2]
    try:
        names = listed_files(root)
    except (OSError, subprocess.CalledProcessError) as error:
        print(f"wording: git does not list the files of {root}: {error}")
        return 1
    found = scan(root, names)
    for finding in found or [f"wording: {len(names)} files, nothing to object to"]:
        print(finding)
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
