"""A Windows whose shell's libraries lack what deletes keys and starts programs, and a proxy that has every page of the world."""
from tests.win.prepare.erro_handle_prepare import prepare as go_online

# The new name has the same place of the alphabet, by which a library's names are searched.
RENAMED = {"shlwapi": {b"SHDeleteKeyA": b"SHDeleteKeyB"},
           "shell32": {b"ShellExecuteA": b"ShellExecuteB", b"ShellExecuteW": b"ShellExecuteX"}}


def take_away(home, library: str, names: dict[bytes, bytes]) -> None:
    place = home.c / f"windows/system32/{library}.dll"
    code = place.read_bytes()
    for name, other in names.items():
        code = code.replace(b"\0" + name + b"\0", b"\0" + other + b"\0")
    code = code.replace(b"Wine builtin DLL", bytes(16))  # by this mark Wine would load its own in its place
    place.unlink()  # a link that every private Windows shares
    place.write_bytes(code)


def prepare(home):
    for library, names in RENAMED.items():
        take_away(home, library, names)
    overrides = home.environment["WINEDLLOVERRIDES"] + "".join(f";{library}=n" for library in RENAMED)
    return go_online(home) | {"WINEDLLOVERRIDES": overrides}
