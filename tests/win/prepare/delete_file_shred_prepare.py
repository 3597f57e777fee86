"""The proxy of the error reporter's tests, links in C:\\plant to what is in C:\\outside, and where this user may mount one a drive D: of 64 kilobytes."""
import atexit
import os
import subprocess
from pathlib import Path

from tests.win.prepare import erro_handle_prepare
from tests.win.prepare.folder_contents_prepare import put

mounts: list[Path] = []


def let_go() -> None:
    while mounts:
        subprocess.run(["umount", "-l", str(mounts.pop())], check=False)


def prepare(home) -> dict[str, str]:
    environment = erro_handle_prepare.prepare(home)
    for name in ("canary.txt", "folder/chosen.txt"):
        put(home.c / "outside" / name)
    (home.c / "plant").mkdir()
    (home.c / "plant/link to a file.txt").symlink_to("../outside/canary.txt")
    (home.c / "plant/link to a folder").symlink_to("../outside/folder")
    drive = home.prefix / "drive_d"
    drive.mkdir()
    mount = ["mount", "-t", "tmpfs", "-o", "size=64k", "quellix-test", str(drive)]
    if os.getuid() == 0 and subprocess.run(mount, capture_output=True).returncode == 0:
        mounts.append(drive)
        atexit.register(let_go)
        (home.prefix / "dosdevices/d:").symlink_to("../drive_d")
        environment["QUELLIX_TEST_SMALL_DRIVE"] = "D:"
    return environment


def check(home) -> None:
    let_go()
