"""The bin of this private Windows is the trash of its private home."""


def trash(home):
    return sorted(path.name for path in (home.base / "home/.local/share/Trash").glob("*/*"))


def prepare(home):
    # On a screen without a window manager each closing window would wait two seconds for one.
    home.run("reg", "add", r"HKCU\Software\Wine\X11 Driver", "/v", "Managed", "/d", "N", "/f", check=True)


def check(home):
    assert not trash(home), f"left in the recycle bin: {trash(home)}"
