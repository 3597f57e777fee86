"""Plants folders whose names lead elsewhere when they are written in ANSI characters, and an empty drive D:.

Each holds a marker with its own name, by which a path to it can be told from one that leads to another folder.
"""
FOLDERS = ["abc", "ａbc", "foo", "foo.", "bar", "bar ", "Zeta", "beta", "Ämter", "日本", "l", "Ł"]


def prepare(home) -> dict[str, str]:
    place = home.c / "plant" / "names"
    for name in FOLDERS:
        (place / name).mkdir(parents=True)
        (place / name / "marker.txt").write_text(name, encoding="utf-8")
    (place / "file").write_text("no folder")
    (place / "link").symlink_to(home.c / "windows")
    drive = home.prefix / "drive_d"
    drive.mkdir()
    (home.prefix / "dosdevices/d:").symlink_to("../drive_d")
    return {}
