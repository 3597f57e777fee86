"""A disk D: of 64 KB, where this user may mount one."""
import atexit
import os
import subprocess

mounted: list[str] = []


def let_go() -> None:
    while mounted:
        subprocess.run(["umount", "-l", mounted.pop()], check=True)


def prepare(home) -> dict[str, str]:
    disk = home.prefix / "drive_d"
    disk.mkdir()
    if os.getuid() != 0 or subprocess.run(["mount", "-t", "tmpfs", "-o", "size=64k", "quellix-test", str(disk)],
                                          capture_output=True).returncode:
        return {}
    mounted.append(str(disk))
    atexit.register(let_go)
    (home.prefix / "dosdevices/d:").symlink_to("../drive_d")
    return {"QUELLIX_TEST_SMALL_DISK": "D:\\"}


def check(home) -> None:
    let_go()
