"""Plants a canary in every place that must not be taken for the temporary folder, and other ways to reach such a place.

C:\\canaries.txt tells the program under test where they are; afterwards they are looked for from outside of Windows.
"""
import os
from pathlib import Path

LONG = "C:\\long\\" + "\\".join(["x" * 100, "y" * 100, "z" * 60])
FITTING = "C:\\long\\" + "\\".join(["x" * 100, "y" * 100, "z" * 40])

planted: list[Path] = []
kept: list[Path] = []


def put(path: Path) -> None:
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text("some bytes")


def below_c(home, path: str) -> Path:
    return home.c.joinpath(*path.split("\\")[1:])


def prepare(home) -> dict[str, str]:
    profile, share = home.profile, home.prefix / "dosdevices/unc/server/share"
    documents = profile / "Documents"
    documents.rmdir()
    (home.c / "data/docs").mkdir(parents=True)
    documents.symlink_to(home.c / "data/docs")
    folders = [home.c / name for name in (
        "", "windows", "windows/system32", "windows/system32/drivers", "windows/Fonts", "windows/system32/of a user", "WINNT",
        "Program Files", "Program Files/some temp", "Program Files/Common Files", "Program Files/Common Files/System",
        "ProgramData", "ProgramData/of all", "users", "users/Public", "users/Public/of all", "test", "elsewhere",
        "current", "current/temp", "data", "data/docs")]
    folders += [profile / name for name in ("", "Desktop", "AppData", "AppData/Roaming", "AppData/Local")]
    folders += [share, share / "profiles", below_c(home, LONG)]
    for folder in folders:
        for name in ("canary.txt", "canary folder/inner/canary.txt"):
            put(folder / name)
            planted.append(folder / name)
    links = {"link": "good/target", "link to a link": "link", "link to fonts": "windows/Fonts", "link to the profile": profile,
             "link to all": "ProgramData/of all", "link to windows temp": "windows/temp", "to c": ".", "to users": "users", "to elsewhere": "elsewhere", "to profile": profile}
    for name, target in links.items():
        (home.c / name).symlink_to(target)
    (home.prefix / "dosdevices/x:").symlink_to(home.c / "users")
    kept.extend([documents, *(home.c / name for name in links)])
    put(below_c(home, FITTING) / "trace.txt")
    (share / "temp").mkdir()
    (home.c / "good/target").mkdir(parents=True)
    (home.c / "elsewhere/temp").mkdir()
    seen = [f"{path}\r\n" for path in (windows_name(home, share, path) for path in planted) if len(path) < 260]
    (home.c / "canaries.txt").write_text("".join(seen), newline="")
    return {"QUELLIX_TEST_TOO_LONG": LONG, "QUELLIX_TEST_FITTING": FITTING}


def windows_name(home, share: Path, path: Path) -> str:
    if path.is_relative_to(share):
        return "\\\\server\\share\\" + str(path.relative_to(share)).replace("/", "\\")
    return "C:\\" + str(path.relative_to(home.c)).replace("/", "\\")


def check(home) -> None:
    gone = [str(path) for path in planted if not path.is_file()] + [str(path) for path in kept if not path.is_symlink()]
    if gone:
        raise AssertionError(f"gone: {gone}")
    if os.listdir(below_c(home, FITTING)):
        raise AssertionError(f"{FITTING} was not cleaned")
