"""Opens the program on your own display, on a private profile, until you close it."""
import os
import shutil
import sys

from tools.wine_home import BUILD, WineHome


def main() -> int:
    display = os.environ.get("DISPLAY")
    if not display:
        raise SystemExit("quellix: there is no display to open the window on; set DISPLAY, or use ./quellix run.")
    with WineHome("by-hand", display, fresh=False) as home:
        # The caller's own cookie of the display, the one thing of theirs that the program's start needs.
        cookie = os.environ.get("XAUTHORITY") or os.path.expanduser("~/.Xauthority")
        environment = {"XAUTHORITY": cookie} if os.path.exists(cookie) else {}
        # A real desktop has a window manager, which moves and decorates managed windows only.
        home.run("reg", "add", r"HKCU\Software\Wine\X11 Driver", "/v", "Managed", "/d", "Y", "/f", environment=environment)
        folder = home.c / "Quellix"
        shutil.copytree(BUILD / "dist", folder, dirs_exist_ok=True)
        print(f"== Quellix is open; its Windows lies in {home.c}")
        return home.run("explorer", "/desktop=Quellix,1024x768", r"C:\Quellix\Quellix.exe", timeout=86400,
                        environment=environment).returncode


if __name__ == "__main__":
    sys.exit(main())
