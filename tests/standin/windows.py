"""What each Windows lacks and does otherwise, as rules of the stand-in, from the floor lists of tools/audit.

A Windows is a row of `WINDOWS`. Where the lists leave a question open about a function that the program calls, `KNOWN` has
the answer; without one the rules cannot be made, which fails every test that asks for them.
"""
import re
from typing import NamedTuple

from tests.standin.rules import SPECIAL, called_in, table
from tools.audit.floor import Floor
from tools.audit.pe_file import PeFile
from tools.wine_home import BUILD

CALL_NOT_IMPLEMENTED, MODULE_NOT_FOUND = 120, 126
SYMLINK, MOUNT_POINT = 0xA000000C, 0xA0000003
NEVER = 99999


class Windows(NamedTuple):
    family: str  # "9x" or "nt"
    year: int  # of its release, to compare within the family
    version: str  # major, minor, build and platform of GetVersionEx
    explorer: int  # the Internet Explorer that came with it or that it is used with; 2 has none of the libraries
    desktop_update: bool  # of Internet Explorer 4, later part of every Windows
    links: int = 0  # the tag of a link to a folder, where there are links


# On Windows 9x the build's high word is the version again. A program that names no later Windows in its manifest is told
# that Windows 10 is Windows 8.
WINDOWS = {
    "95": Windows("9x", 1995, "4 0 0x04000457 1", 4, False),
    "98": Windows("9x", 1998, "4 10 0x040A07CE 1", 4, True),
    "NT 4": Windows("nt", 1996, "4 0 1381 2", 2, False),
    "2000": Windows("nt", 2000, "5 0 2195 2", 5, True, MOUNT_POINT),
    "XP": Windows("nt", 2001, "5 1 2600 2", 6, True, MOUNT_POINT),
    "7": Windows("nt", 2009, "6 1 7601 2", 8, True, SYMLINK),
    "10": Windows("nt", 2015, "6 2 9200 2", 11, True, SYMLINK),
}

# The words of the lists: since when on 9x, since when on NT; or since which Internet Explorer.
RELEASES = {
    "98": (1998, 2000), "Me/2000": (2000, 2000), "98/Me or 2000 (WINVER 0x0500)": (1998, 2000),
    "NT4; 95 no, 98+": (1998, 1996), "NT (NT only)": (NEVER, 1993), "NT 3.51 (NT only)": (NEVER, 1995),
    "95/NT4 (NT only)": (NEVER, 1996), "2000": (NEVER, 2000), "XP": (NEVER, 2001), "2003": (NEVER, 2003),
    "Vista": (NEVER, 2006), "Vista/7": (NEVER, 2009), "7": (NEVER, 2009), "8": (NEVER, 2012), "8.1": (NEVER, 2013),
    "10": (NEVER, 2015), "11": (NEVER, 2021),
}
KNOWN = {
    ("kernel32", "RegisterServiceProcess"): (1995, NEVER),
    ("kernel32", "CreateToolhelp32Snapshot"): (1995, 2000),
    ("kernel32", "Process32First"): (1995, 2000),
    ("kernel32", "Process32Next"): (1995, 2000),
    ("user32", "ShutdownBlockReasonCreate"): (NEVER, 2006),
    ("user32", "ShutdownBlockReasonDestroy"): (NEVER, 2006),
    ("user32", "GetGUIThreadInfo"): (1998, 1998),
    ("user32", "MsgWaitForMultipleObjectsEx"): (1998, 1996),
    # Internet Explorer 4 to Windows 7.
    ("pstorec", "PStoreCreateInstance"): (1995, 1996),
}
LIBRARY_UNTIL = {"pstorec": 2009}
OF_9X = ["no-shared-deletion", "no-folder-handles", "keys-with-subkeys"]


class Function(NamedTuple):
    dll: str
    name: str
    imported: bool


def called_by(program: str = "Quellix.exe") -> list[Function]:
    """What a program of those that ship imports, and what it can ask for by name."""
    image = (BUILD / "dist" / program).read_bytes()
    libraries = {entry.function: entry.dll.removesuffix(".dll") for entry in PeFile(image).imports() if entry.function}
    return sorted(Function(libraries[name] if imported else table()[name].dll, name, imported)
                  for name, imported in called_in(image).items())


class Systems:
    def __init__(self):
        self.floor = Floor()

    def has(self, windows: Windows, function: Function) -> bool:
        """Whether a Windows exports a function at all."""
        if windows.year > LIBRARY_UNTIL.get(function.dll, NEVER):
            return False
        listed = self.floor.libraries.get(function.dll, {}).get(function.name)
        if listed:
            tier = listed[0]
            needs = {"ie3": windows.explorer >= 3, "ie4": windows.explorer >= 4, "shell471": windows.desktop_update}
            return needs.get(tier, True)
        since = self._since(function)
        if isinstance(since, int):
            return windows.explorer >= since
        return windows.year >= since[windows.family == "nt"]

    def _since(self, function: Function) -> tuple[int, int] | int:
        if function[:2] in KNOWN:
            return KNOWN[function[:2]]
        if function.dll == "ntdll":
            return NEVER, 1993
        text = self.floor.later.get(function[:2])
        if text is None:
            raise LookupError(f"since when is there {function.name} of {function.dll}? windows.py can say so in KNOWN")
        explorer = re.fullmatch(r"IE(\d)(?:/XP)?", text)
        if explorer:
            return int(explorer[1])
        plain = re.sub(r" (from .*|v6)$", "", text)
        if plain not in RELEASES:
            raise LookupError(f"{function.name} of {function.dll} is there since '{text}'; when is that? See KNOWN")
        return RELEASES[plain]

    def only_stub(self, windows: Windows, function: Function) -> bool:
        """Whether a function that is there only answers that it is not implemented."""
        if windows.family != "9x":
            return False
        listed = self.floor.libraries.get(function.dll, {}).get(function.name)
        tags = listed[1] if listed else ["w9x"] if function.name.endswith("W") else []
        return "w9x" in tags or "stub9x" in tags

    def rules(self, name: str, program: str = "Quellix.exe") -> list[str]:
        windows, called = WINDOWS[name], called_by(program)
        special = [f"version {windows.version}", *(OF_9X if windows.family == "9x" else [])]
        special += [f"links {windows.links:#x}"] if windows.links else []
        names = {function.name for function in called}
        rules = [rule for rule in special if set(SPECIAL[rule.split()[0]][1]) & names]  # a program may call none of them
        for function in called:
            if not self.has(windows, function):
                rules.append(f"{function.name} missing")
            elif self.only_stub(windows, function):
                rules.append(f"{function.name} fail {CALL_NOT_IMPLEMENTED}")
        for library in sorted({function.dll for function in called if not function.imported}):
            if not any(self.has(windows, f) for f in called if f.dll == library):
                rules.append(f"LoadLibraryExA fail {MODULE_NOT_FOUND} with {library}.dll")
        return rules
