"""clang-tidy over all the product's sources, many of them as one and these beside each other.

usage: python3 -m tools.lint [--all]     every finding as clang-tidy tells it, and exit status 1 when there is any

Most of the time that clang-tidy takes for a file goes into the system's headers, so the files of some rooms are looked at as
one. Their text is put together, for the paths through a function are followed in the main file only; following them in the
headers too would follow those of the standard library. A function of a header is followed where a source calls it. A file
that has something of the same name as another is left for the next round. What was found clean and has not changed since is
not looked at again, unless --all asks for it.
"""
import argparse
import hashlib
import json
import os
import re
import shlex
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor
from functools import cache
from pathlib import Path

from tools.wine_home import BUILD, ROOT

STAMPS = BUILD / "lint"
COMMANDS = BUILD / "win32/compile_commands.json"
COMPILER = "i686-w64-mingw32-g++-win32"
INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"]+)"', re.MULTILINE)
# The paths through a function that are followed: five times as many take three times as long and have found nothing more.
ANALYZER = ["-analyzer-config", "max-nodes=40000"]
# So many files together at least, as far as the rooms give them: fewer take longer in all, more keep one processor alone.
TOGETHER = 40


def run(*command: str) -> subprocess.CompletedProcess:
    return subprocess.run(command, cwd=ROOT, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)


@cache
def compiler_headers() -> tuple[str, ...]:
    """The cross compiler's own include folders, which clang-tidy does not know by itself."""
    told = subprocess.run([COMPILER, "-E", "-x", "c++", "-", "-v"], stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                          stderr=subprocess.PIPE, text=True, check=True).stderr
    listed = told.partition("#include <...> search starts here:\n")[2].partition("End of search list.")[0]
    return tuple(line.strip() for line in listed.splitlines())


@cache
def tools_used() -> str:
    return run("clang-tidy", "--version").stdout + run(COMPILER, "--version").stdout + (ROOT / ".clang-tidy").read_text()


def flags_of(command: str) -> tuple[str, ...]:
    """What of a command of the cross compiler says how a source is to be read, and clang-tidy knows."""
    words = shlex.split(command)
    kept = [word for word in words if re.match(r"-D|-I|-std=|-f(?!file-prefix|trivial-auto)", word)]
    return tuple(word.replace("-I", f"-I{ROOT}/", 1) if word.startswith("-I") and word[2] != "/" else word for word in kept)


def groups() -> list[tuple[tuple[str, ...], list[Path]]]:
    """The sources of rooms and companions that are compiled alike, some rooms together, with their flags."""
    rooms: dict[tuple[str, ...], dict[Path, set[Path]]] = {}
    for entry in json.loads(COMMANDS.read_text()):
        path = Path(entry["file"])
        name = path.relative_to(ROOT).as_posix()
        if name.startswith(("src/", "companions/")) and path.suffix == ".cpp":
            rooms.setdefault(flags_of(entry["command"]), {}).setdefault(path.parent, set()).add(path)
    found = []
    for flags, alike in rooms.items():
        together: list[Path] = []
        for files in sorted(alike.values(), key=len, reverse=True):
            together += sorted(files)
            if len(together) >= TOGETHER:
                found.append((flags, together))
                together = []
        if together:
            found.append((flags, together))
    return found


def made_of(files: list[Path]) -> list[Path]:
    """The files and every header of the product that they include, by name."""
    seen, waiting = set(), list(files)
    while waiting:
        path = waiting.pop()
        if path in seen:
            continue
        seen.add(path)
        for name in INCLUDE.findall(path.read_text(encoding="utf-8")):
            waiting += [found for found in (path.parent / name, ROOT / "src" / name, ROOT / "companions" / name) if found.is_file()]
    return sorted(seen)


def stamp(flags: tuple[str, ...], files: list[Path]) -> Path:
    digest = hashlib.sha256("\0".join([tools_used(), *flags, *ANALYZER]).encode())
    for path in made_of(files):
        digest.update(f"\0{path.relative_to(ROOT)}\0".encode() + path.read_bytes())
    return STAMPS / digest.hexdigest()


class Unit:
    """Sources put together in one file."""

    def __init__(self, flags: tuple[str, ...], files: list[Path], path: Path):
        self.path = path
        self.lines = [(file, number, line) for file in files
                      for number, line in enumerate(file.read_text(encoding="utf-8").splitlines(), 1)]
        path.write_text("".join(f"{line}\n" for _, _, line in self.lines), encoding="utf-8")
        self.options = ["--target=i686-w64-windows-gnu", "-nostdinc", "-nostdinc++", *flags]
        self.options += [f"-I{folder}" for folder in dict.fromkeys(file.parent for file in files)]
        self.options += [word for folder in compiler_headers() for word in ("-isystem", folder)]

    def told(self, text: str) -> str:
        """What a tool says of the unit, with the file and line that each place comes from."""
        def place(found: re.Match) -> str:
            file, number, _ = self.lines[int(found[1]) - 1]
            return f"{file}:{number}:"
        return re.sub(rf"{re.escape(str(self.path))}:(\d+):", place, text)

    def refused(self) -> list[Path]:
        """The files in which the compiler finds an error."""
        text = run("clang++", "-fsyntax-only", "-ferror-limit=0", str(self.path), *self.options).stderr
        places = re.findall(rf"^{re.escape(str(self.path))}:(\d+):\d+: (?:fatal )?error: ", text, re.MULTILINE)
        return list(dict.fromkeys(self.lines[int(number) - 1][0] for number in places))


def tidy(flags: tuple[str, ...], files: list[Path], path: Path) -> str:
    """The findings in sources that are looked at as one; those of them that do not go with the others, after these."""
    later: list[Path] = []
    while len(files) > 1 and (refused := Unit(flags, files, path).refused()):
        later += [file for file in files[1:] if file in refused] or files[1:]
        files = [file for file in files if file not in later]
    unit = Unit(flags, files, path)
    analyzer = [word for one in ANALYZER for word in ("-Xclang", one)]
    done = run("clang-tidy", "--quiet", str(path), "--", *unit.options, *analyzer)
    found = done.stderr if done.returncode and not done.stdout else unit.told(done.stdout)
    return found + (tidy(flags, later, path) if later else "")


def check(group: tuple[tuple[str, ...], list[Path]], anew: bool) -> str:
    flags, files = group
    clean = stamp(flags, files)
    if clean.exists() and not anew:
        return ""
    unit = clean.with_suffix(".cpp")
    found = tidy(flags, files, unit)
    unit.unlink()
    if not found:
        clean.touch()
    return found


def main() -> int:
    parser = argparse.ArgumentParser(prog="lint")
    parser.add_argument("--all", action="store_true", help="also what was found clean and has not changed since")
    anew = parser.parse_args().all
    STAMPS.mkdir(parents=True, exist_ok=True)
    everything = groups()
    with ThreadPoolExecutor(os.cpu_count()) as pool:
        found = list(pool.map(lambda group: check(group, anew), everything))
    text = "".join(found)
    print(text or f"lint: nothing to object to in {sum(len(files) for _, files in everything)} files")
    return 1 if text else 0


if __name__ == "__main__":
    sys.exit(main())
