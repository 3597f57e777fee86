"""The bin of this private Windows is the trash of its private home."""


def trash(home):
    return sorted(path.name for path in (home.base / "home/.local/share/Trash").glob("*/*"))


def check(home):
    assert not trash(home), f"left in the recycle bin: {trash(home)}"
