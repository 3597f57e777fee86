"""A Windows whose shell's libraries lack two functions, and a proxy that has every page of the world."""
from tests.win.prepare.erro_handle_prepare import prepare as go_online

# The new name stands in the same place of the alphabet, by which a library's names are searched.
RENAMED = {"shlwapi": (b"SHDeleteKeyA", b"SHDeleteKeyB"), "shell32": (b"ShellExecuteA", b"ShellExecuteB")}


def take_away(home, library: str, name: bytes, other: bytes) -> None:
    place = home.c / f"windows/system32/{library}.dll"
    code = place.read_bytes()
    code = code.replace(b"\0" + name + b"\0", b"\0" + other + b"\0")
    code = code.replace(b"Wine builtin DLL", bytes(16))  # by this mark Wine would load its own in its place
    place.unlink()  # a link that every private Windows shares
    place.write_bytes(code)


def prepare(home):
    for library, (name, other) in RENAMED.items():
        take_away(home, library, name, other)
    overrides = home.environment["WINEDLLOVERRIDES"] + "".join(f";{library}=n" for library in RENAMED)
    return go_online(home) | {"WINEDLLOVERRIDES": overrides}
