"""How the windows look: at each resolution, in schemes of high contrast, with 16 colours. One sheet: build/ui/looks.png.

python3 -B -m tests.ui.looks makes it; the test beside this file checks what can be measured.
"""
import contextlib
import subprocess
import sys

from tests.harness import url_cache
from tests.harness.driver import BUILD, BUILT, Desktop, wait_for
from tests.harness.panel_table import PANELS
from tests.harness.program import OFF_LINE, only
from tools.wine_home import CLASSIC_COLOURS, FONTS

DESKTOP_KEY, COLOURS_KEY = r"HKCU\Control Panel\Desktop", r"HKCU\Control Panel\Colors"
HIGH_CONTRAST_KEY = r"HKCU\Control Panel\Accessibility\HighContrast"
NAMES = [name for names in CLASSIC_COLOURS.values() for name in names.split()]


def scheme(ground: str, text: str, chosen: str, chosen_text: str, link: str) -> dict:
    """A scheme of high contrast: one ground, one text, one colour for what is chosen."""
    grounds = {"ButtonFace", "Menu", "MenuBar", "Scrollbar", "Window", "InfoWindow", "Background", "AppWorkSpace",
               "ButtonAlternateFace", "InactiveTitle", "GradientInactiveTitle", "ButtonShadow"}
    colours = {name: text for name in NAMES} | {name: ground for name in grounds}
    colours |= dict.fromkeys(("Hilight", "MenuHilight", "ActiveTitle", "GradientActiveTitle"), chosen)
    colours |= dict.fromkeys(("HilightText", "TitleText"), chosen_text) | {"HotTrackingColor": link, "GrayText": "0 128 0"}
    return {COLOURS_KEY: colours, HIGH_CONTRAST_KEY: {"Flags": "127"}}


THEME = r"C:\windows\resources\themes\light\light.msstyles"
LOOKS = {
    "96 dpi": {},
    "themed": {r"HKCU\Software\Microsoft\Windows\CurrentVersion\ThemeManager":
               {"ThemeActive": "1", "DllName": THEME, "ColorName": "Blue", "SizeName": "NormalSize"}},
    "120 dpi": {DESKTOP_KEY: {"LogPixels": 120}},
    "144 dpi": {DESKTOP_KEY: {"LogPixels": 144}},
    "192 dpi": {DESKTOP_KEY: {"LogPixels": 192}},
    "high contrast black": scheme("0 0 0", "255 255 255", "128 0 128", "255 255 255", "0 0 255"),
    "high contrast white": scheme("255 255 255", "0 0 0", "0 0 0", "255 255 255", "0 0 255"),
}
VGA = "xc:#000000 xc:#800000 xc:#008000 xc:#808000 xc:#000080 xc:#800080 xc:#008080 xc:#c0c0c0 xc:#808080 xc:#ff0000 " \
      "xc:#00ff00 xc:#ffff00 xc:#0000ff xc:#ff00ff xc:#00ffff xc:#ffffff"


@contextlib.contextmanager
def looking(look: str):
    """The program in one of the looks, with a few cookies for its list."""
    def prepare(home):
        for name in ("ann@news.example", "ann@shop.example"):
            url_cache.plant(home, "cookie", name)
    settings = only("Cookies", "RunHistory") | {"Scheduling": {"chkShEnable": "1", "ScheduleHour": "1"}}
    with Desktop(f"look-{look.replace(' ', '-')}", registry=OFF_LINE | LOOKS[look], settings=settings, prepare=prepare,
                 screen="1400x1000", files={"Quellix.exe": BUILD / "dist/Quellix.exe"}) as d:
        d.wait_icon()
        yield d


def pictures(d: Desktop, look: str) -> list:
    """Every window of the program."""
    taken = []

    def take(name: str, window=None, settled: str = "stBar") -> None:
        d.settle(settled, window)
        taken.append(d.screenshot(BUILT / f"look-{look.replace(' ', '-')}-{len(taken)}-{name}.png", window or d.main))
    for panel in PANELS:
        d.click(panel.button)
        d.wait_visible(panel.frame)
        d.settle(panel.button)
        take(panel.button, settled=panel.frame)
    d.click("cmdDefault")
    d.wait_visible("cmdCookiesOption")
    d.click("cmdCookiesOption")
    cookies = d.wait_window("#32770", "Cookies Manager")
    d.wait_control("lstKeeplist", lambda c: c.count == 2, "to be full", cookies)
    take("cookies", cookies, "lstKeeplist")
    d.click("cmdClose", cookies)
    d.click("cmdSecureDelk")
    d.wait_visible("cmdAddFolder")
    d.click("cmdAddFolder")
    folders = d.wait_window("#32770", "Quellix-Add Folder")
    take("folders", folders, "dirList")
    d.click("cmdCancel", folders)
    d.click("cmdSchedule")
    d.wait_visible("cmdRunInv")
    d.click("cmdRunInv")
    warning = d.wait_window("#32770", "Warning")
    take("warning", warning, "cmdContinue")
    return taken


def sheet(rows: dict[str, list]) -> None:
    strips = []
    for look, files in rows.items():
        strip = BUILT / f"look-strip-{len(strips)}.png"
        subprocess.run(["montage", "-font", f"{FONTS[0]}/LiberationSans-Regular.ttf", "-label", look, *map(str, files), "-tile", f"{len(files)}x1", "-geometry", "+6+6",
                        "-background", "#88aa99", str(strip)], check=True)
        strips.append(strip)
    subprocess.run(["convert", *map(str, strips), "-append", str(BUILT / "looks.png")], check=True)
    for strip in strips:
        strip.unlink()


def main() -> None:
    rows = {}
    for look in LOOKS:
        print(f"== {look}", flush=True)
        with looking(look) as d:
            rows[look] = pictures(d, look)
    palette = BUILT / "vga.png"
    subprocess.run(["convert", *VGA.split(), "+append", str(palette)], check=True)
    rows["16 colours"] = []
    for file in rows["96 dpi"]:  # as a screen with the system's 16 colours shows it: each by the nearest one
        flat = file.with_name(file.name.replace("96-dpi", "16-colours"))
        subprocess.run(["convert", str(file), "+dither", "-remap", str(palette), str(flat)], check=True)
        rows["16 colours"].append(flat)
    sheet(rows)
    print(f"   {(BUILT / 'looks.png').relative_to(BUILD.parent)}")


if __name__ == "__main__":
    sys.exit(main())
