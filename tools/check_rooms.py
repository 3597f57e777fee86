"""Holds the rooms of the program: who includes whom, what is declared where, who touches the pending error.

usage: python3 -m tools.check_rooms [--only RULE ...]    every finding is one line, and exit status 1 when there is any
       python3 -m tools.check_rooms --draw               prints the picture of the rooms as the includes have them
       python3 -m tools.check_rooms --write              puts it in its place in docs/architecture.md and CONTRIBUTING.md

The rules: includes, headers, words, namespaces, system, errors, picture.
"""
import argparse
import re
import sys
from functools import cache
from pathlib import Path
from typing import Callable, Iterator, Sequence

from tools.audit.floor import Floor
from tools.cpp_text import Declaration, code_of, declarations, words_of
from tools.standard_headers import missing
from tools.wine_home import ROOT

# From the top; a room knows those of the layers below it and nobody else.
LAYERS = (("app",), ("erase", "cookies", "shred", "automation"), ("cleaners", "settings"), ("platform",))
ROOMS = [room for layer in LAYERS for room in layer]
LOWEST = ROOMS[-1]
# The library's own places for what a program brings itself, and the functions that the linker looks for.
RUNTIME = {"src/platform/floor.cpp", "src/platform/overwriting_delete.cpp", "src/platform/standard_errors.cpp",
           "src/platform/startup.cpp",
           "src/platform/unwind_tables_end.cpp"}
ENTRY = re.compile(r"int WINAPI WinMain\(.*\)")
FORWARD = re.compile(r"(?:enum |enum class |class |struct )\w+(?: : \w+)?")
MAY_TOUCH_ERR = re.compile(r"src/platform/(?:runtime_error|ErroHandle)\.\w+")
INCLUDE = re.compile(r'^[ \t]*#[ \t]*include[ \t]+"([^"]+)"', re.MULTILINE)
ANY_INCLUDE = re.compile(r'^[ \t]*#[ \t]*include[ \t]+["<]([^">]+)[">]', re.MULTILINE)
# Immediately after a name or a template's arguments it is no leading one.
LEADING = re.compile(r"(?<![\w>:])::\s*(\w+)")
BEGIN, END = "<!-- rooms: drawn by python3 -m tools.check_rooms --write -->\n", "<!-- end of rooms -->\n"
PICTURES = ("docs/architecture.md", "CONTRIBUTING.md")


class Source:
    def __init__(self, root: Path, path: Path):
        self.name = path.relative_to(root).as_posix()
        folder = self.name.split("/")
        self.room = folder[1] if folder[0] == "src" else folder[0]
        self.is_cpp = path.suffix in (".cpp", ".h")
        self.text = path.read_text(encoding="utf-8")

    def finding(self, line: int, what: str) -> str:
        return f"{self.name}:{line}: {what}"

    def at(self, match: re.Match) -> int:
        return self.text.count("\n", 0, match.start()) + 1

    @property
    def includes(self) -> list[tuple[int, str]]:
        return [(self.at(include), include[1]) for include in INCLUDE.finditer(self.text)]


def sources(root: Path) -> list[Source]:
    files = [path for folder in ("src", "companions") for path in sorted((root / folder).rglob("*"))]
    return [Source(root, path) for path in files if path.suffix in (".cpp", ".h", ".rc", ".inc")]


def below(room: str) -> list[str]:
    layers = [number for number, layer in enumerate(LAYERS) if room in layer]
    return [other for layer in LAYERS[layers[0] + 1:] for other in layer] if layers else [LOWEST]


def check_includes(source: Source) -> Iterator[str]:
    """Arrows point down only. A companion takes the lowest room and nothing else."""
    if source.name.startswith("src/") and source.room not in ROOMS:
        yield source.finding(1, f"the folder {source.room} is no room")
    for line, included in source.includes:
        room = included.partition("/")[0]
        if "/" in included and room not in (source.room, *below(source.room)):
            yield source.finding(line, f"{source.room} may not include {included}")
        # A panel's template and the numbers of its controls lie side by side, and so does all of a companion.
        if "/" not in included and source.is_cpp and source.room in ROOMS:
            yield source.finding(line, f'the include of "{included}" names no room')


def included_by(all_sources: list[Source]) -> Callable[[Source], set[str]]:
    """What a file includes, by itself and by headers of ours, as it is written there."""
    own = {source.name: set(ANY_INCLUDE.findall(source.text)) for source in all_sources}

    def of(source: Source) -> set[str]:
        found: set[str] = set()
        waiting = [source.name]
        while waiting:
            name = waiting.pop()
            for included in own.get(name, set()) - found:
                found.add(included)
                waiting += [f"src/{included}", f"{Path(name).parent.as_posix()}/{included}"]
        return found
    return of


def check_headers(source: Source, included: Callable[[Source], set[str]]) -> Iterator[str]:
    """What a file names comes from a header that it includes, or that a header of ours does which it includes."""
    if source.is_cpp:
        for place, what in missing(source.text, included(source)):
            yield source.finding(source.text.count("\n", 0, place) + 1, what)


def names_of_upper_rooms(all_sources: list[Source]) -> re.Pattern:
    """The other rooms as paths and namespaces, and their files by name, but for those that are plain words."""
    stems = {Path(source.name).stem for source in all_sources if source.room in ROOMS and source.room != LOWEST}
    names = sorted(stem for stem in stems if re.search(r"[a-z][A-Z]|_|[A-Z]{2}", stem))
    rooms = rf"(?:{'|'.join(ROOMS[:-1])})(?:/|::)"
    return re.compile(rf"\b(?:{'|'.join([*names, rooms])})")


def check_words(source: Source, upper: re.Pattern) -> Iterator[str]:
    """The lowest room knows the others not even in its comments and texts."""
    if source.room == LOWEST and source.is_cpp and source.name not in RUNTIME:
        for named in upper.finditer(words_of(INCLUDE.sub(lambda line: " " * len(line[0]), source.text))):
            yield source.finding(source.at(named), f"{LOWEST} names {named[0]}, which belongs to a room above it")


def _wrong_place(source: Source, declared: Declaration) -> str | None:
    scope, text = declared.scope, declared.text
    if scope[:1] == (source.room,) or text.startswith("static_assert"):
        return None
    if scope and scope[0] in ROOMS:
        return None if FORWARD.fullmatch(text) and not declared.opens else f"declared in another room, {scope[0]}"
    if scope and scope[0] == "":
        return f"declared in a namespace without a name that is not inside {source.room}"
    return None if ENTRY.fullmatch(text) else f"declared outside the namespace {source.room}"


def check_namespaces(source: Source) -> Iterator[str]:
    """A room is a namespace: only the entry, and in two files what the runtime looks for, are declared outside of it."""
    if not source.is_cpp or source.room not in ROOMS or source.name in RUNTIME:
        return
    for declared in declarations(source.text):
        wrong = _wrong_place(source, declared)
        if wrong:
            yield source.finding(declared.line, f"{wrong}: {declared.text[:60]}")


@cache
def windows_functions() -> frozenset[str]:
    floor = Floor()
    runtimes = ("crtdll", "msvcrt")
    names = {name for library, functions in floor.libraries.items() if library not in runtimes for name in functions}
    return frozenset(names | {name for library, name in floor.later if library not in runtimes})


def check_system(source: Source) -> Iterator[str]:
    """A leading :: is a call of the system's."""
    if source.is_cpp:
        for leading in LEADING.finditer(code_of(source.text)):
            if leading[1] not in windows_functions():
                yield source.finding(source.at(leading), f"::{leading[1]} is no function of Windows")


def check_errors(source: Source) -> Iterator[str]:
    """The pending error has one mechanism; the others use what that offers."""
    if source.is_cpp and not MAY_TOUCH_ERR.fullmatch(source.name):
        for touched in re.finditer(r"\bErr\s*\.", code_of(source.text)):
            yield source.finding(source.at(touched), "Err is touched outside the mechanism of run-time errors")


def arrows(all_sources: list[Source]) -> dict[str, list[str]]:
    """Each room with the others that it includes, as the includes have it."""
    found: dict[str, set[str]] = {room: set() for room in ROOMS}
    for source in all_sources:
        if source.room in ROOMS:
            found[source.room] |= {included.partition("/")[0] for _, included in source.includes} & set(ROOMS) - {source.room}
    return {room: sorted(others, key=ROOMS.index) for room, others in found.items()}


def draw(all_sources: list[Source]) -> str:
    """The rooms in their layers, and who includes whom."""
    width, lines, edges = 66, [], []
    for layer in LAYERS:
        at = [number * (width + 1) // len(layer) - 1 for number in range(len(layer))] + [width]
        edges.append({*at[1:-1]})
        cells = [f" {room}".ljust(right - left - 1) for room, left, right in zip(layer, at, at[1:])]
        lines.append("│" + "│".join(cells) + "│")
    picture = ["┌" + "─" * width + "┐"]
    for number, line in enumerate(lines):
        up, down = edges[number], edges[number + 1] if number + 1 < len(edges) else set()
        last = number + 1 == len(lines)
        rule = "".join("┼" if place in up and place in down else "┴" if place in up else "┬" if place in down else "─"
                       for place in range(width))
        picture += [line, ("└" if last else "├") + rule + ("┘" if last else "┤")]
    longest = max(map(len, ROOMS))
    who = [f"{room.ljust(longest)}  {' '.join(others) or '-'}" for room, others in arrows(all_sources).items()]
    return "\n".join([*picture, "", "what each room includes:", *who]) + "\n"


def block(all_sources: list[Source]) -> str:
    return f"{BEGIN}```\n{draw(all_sources)}```\n{END}"


def placed_block(page: str) -> str | None:
    begin, end = page.find(BEGIN), page.find(END)
    return page[begin:end + len(END)] if 0 <= begin < end else None


def check_picture(all_sources: list[Source], root: Path) -> Iterator[str]:
    for page in PICTURES:
        found = placed_block((root / page).read_text(encoding="utf-8"))
        if found is None:
            yield f"{page}: the lines that mark the place of the picture are missing"
        elif found != block(all_sources):
            yield f"{page}: the picture is not what the includes have; python3 -m tools.check_rooms --write mends it"


def write(all_sources: list[Source], root: Path) -> None:
    for name in PICTURES:
        page = (root / name).read_text(encoding="utf-8")
        old = placed_block(page)
        if old is None:
            raise SystemExit(f"quellix: {name} has no place for the picture; it is between the lines\n{BEGIN}{END}")
        (root / name).write_text(page.replace(old, block(all_sources)), encoding="utf-8")


RULES = ("includes", "headers", "words", "namespaces", "system", "errors", "picture")


def check(root: Path, rules: Sequence[str] = RULES) -> list[str]:
    all_sources = sources(root)
    upper, included = names_of_upper_rooms(all_sources), included_by(all_sources)
    of_a_file: dict[str, Callable[[Source], Iterator[str]]] = {
        "includes": check_includes, "headers": lambda source: check_headers(source, included), "words": lambda source: check_words(source, upper), "namespaces": check_namespaces,
        "system": check_system, "errors": check_errors}
    found = [finding for rule in rules if rule in of_a_file for source in all_sources for finding in of_a_file[rule](source)]
    return found + (list(check_picture(all_sources, root)) if "picture" in rules else [])


def main() -> int:
    parser = argparse.ArgumentParser(prog="check_rooms")
    parser.add_argument("--only", nargs="+", choices=RULES, default=RULES, metavar="RULE")
    parser.add_argument("--draw", action="store_true")
    parser.add_argument("--write", action="store_true")
    options = parser.parse_args()
    if options.draw:
        print(draw(sources(ROOT)), end="")
        return 0
    if options.write:
        write(sources(ROOT), ROOT)
        return 0
    found = check(ROOT, options.only)
    for finding in found or [f"rooms: {len(sources(ROOT))} files hold to {', '.join(options.only)}"]:
        print(finding)
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
