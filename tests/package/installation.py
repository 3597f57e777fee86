"""What an installation leaves on the disk and in the registry of a `Desktop`, to be compared with what was there before."""
from pathlib import Path

from tests.harness.driver import Desktop, wait_for

UNINSTALL_KEY = r"Software\Microsoft\Windows\CurrentVersion\Uninstall\Quellix"
RUN_KEY = r"Software\Microsoft\Windows\CurrentVersion\Run"
RUN_VALUE = "Quellix - 1.0"
# What the system itself keeps there of every program that runs.
OF_THE_SYSTEM = ("Explorer\\MountPoints", "\\Shell Extensions\\Cached", "Explorer\\SessionInfo", "Software\\Wine\\")


def files(desktop: Desktop) -> set[str]:
    """Every file and folder of the disk by its name, without those of Windows itself."""
    c = desktop.home.c
    return {path.relative_to(c).as_posix() for path in c.rglob("*") if not path.is_relative_to(c / "windows")}


def registry(desktop: Desktop) -> set[str]:
    """Every key and value that a setup may touch, as one line each."""
    found = set()
    out = desktop.home.c / "exported.reg"
    for root in (r"HKLM\Software\Microsoft\Windows", r"HKLM\Software\Quellix", "HKCU"):
        if desktop.home.run("reg", "export", root, r"C:\exported.reg", "/y").returncode:
            continue  # there is no such key
        key = ""
        for line in out.read_bytes().decode("utf-16").split("\r\n"):
            key = line if line.startswith("[") else key
            if line and not any(part in key for part in OF_THE_SYSTEM):
                found.add(key if line == key else key + line)
        out.unlink()
    return found


def run_setup(desktop: Desktop, path: str, arguments: str = "/S", seconds: float = 60) -> int:
    """Runs an installer or uninstaller to its end; an uninstaller goes on as a copy of itself in the temporary folder."""
    code = desktop.wait_ended(desktop.start(path, arguments), seconds)
    wait_for("the uninstaller's copy to end", lambda: not desktop.processes("Un.exe"), seconds)
    return code


def restart_windows(desktop: Desktop) -> None:
    """What a restart does with files that are to go then: the uninstaller's copy of itself is one."""
    desktop.home.run("wineboot", "-r", check=True)


def installed(desktop: Desktop, hive: str = "HKLM") -> str | None:
    """The folder that "Add or Remove Programs" knows."""
    value = desktop.reg(hive, UNINSTALL_KEY, "InstallLocation")
    return value.text if value else None


def host_path(desktop: Desktop, path: str) -> Path:
    return desktop.home.c.joinpath(*path.split("\\")[1:])
