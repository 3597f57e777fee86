"""A private Windows for one task: home, trash and prefix of its own under build/, never the caller's.

Everything of this project that starts Wine goes through WineHome. It gives a fresh profile copied from a template,
with the links to the real home folder and the drive that shows the whole machine taken away.
"""
import contextlib
import fcntl
import os
import shutil
import signal
import subprocess
import tempfile
import time
from pathlib import Path, PureWindowsPath

ROOT = Path(__file__).resolve().parent.parent
BUILD = ROOT / "build"
HOMES = BUILD / "wine"
# Letters of the width of the Windows fonts; the second has what the first lacks.
FONTS = ["/usr/share/fonts/truetype/liberation", "/usr/share/fonts/truetype/dejavu"]
JAPANESE_FONTS = ["/usr/share/fonts/opentype/ipafont-gothic"]
WESTERN, JAPANESE = "C.UTF-8", "ja_JP.UTF-8"  # the ANSI code pages 1252 and 932
USER = "quellix"
TEMPLATE_VERSION = "11"  # raise it when what the template holds changes


def private_environment(base: Path, display: str | None = None, language: str = WESTERN, user: str = USER) -> dict[str, str]:
    """The caller's environment with every place that Wine writes to moved below `base`."""
    kept = {k: v for k, v in os.environ.items() if not k.startswith(("WINE", "XDG_", "TMP", "TEMP")) and not k.lower().endswith("_proxy")}
    kept.update(
        HOME=str(base / "home"),
        XDG_DATA_HOME=str(base / "home/.local/share"),
        XDG_CONFIG_HOME=str(base / "home/.config"),
        XDG_CACHE_HOME=str(base / "home/.cache"),
        XDG_RUNTIME_DIR=str(base / "run"),
        TMPDIR=str(base / "tmp"),
        WINEPREFIX=str(base / "prefix"),
        WINEARCH="win32",
        WINEDEBUG=os.environ.get("QUELLIX_WINEDEBUG", "-all"),
        WINEDLLOVERRIDES="mscoree,mshtml,winemenubuilder.exe=",
        USER=user,
        LOGNAME=user,
        LANG=language,
        LC_ALL=language,
        FONTCONFIG_FILE=str(base / "fonts.conf"),
        XCOMPOSEFILE="/dev/null",  # nobody types accents; each program would read 5,700 lines of them at its start
    )
    kept.pop("DISPLAY", None)
    if display:
        kept["DISPLAY"] = display
    return kept


def _choose_fonts(base: Path, language: str = WESTERN) -> None:
    """The same letters on every machine: what else is installed would change the size of every dialog."""
    folders = "".join(f"<dir>{folder}</dir>" for folder in FONTS + (JAPANESE_FONTS if language == JAPANESE else []))
    (base / "fonts.conf").write_text(f"<fontconfig>{folders}<cachedir>{base}/home/.cache/fontconfig</cachedir></fontconfig>\n",
                                     encoding="utf-8")


def _make_folders(base: Path, language: str = WESTERN) -> None:
    for name in ("home/.local/share", "home/.config", "home/.cache", "run", "tmp"):
        (base / name).mkdir(parents=True, exist_ok=True)
    (base / "run").chmod(0o700)
    _choose_fonts(base, language)


def _copy_prefix(source: Path, target: Path) -> None:
    """Copies a prefix; the system's own programs and libraries, most of its bytes, are shared as hard links."""
    shared = {".dll", ".exe", ".drv", ".sys", ".ocx", ".cpl", ".acm", ".ax", ".tlb", ".nls", ".fon", ".ttf", ".msstyles",
              ".dll16", ".exe16", ".drv16", ".vxd", ".mod16", ".com", ".rll", ".ds"}

    def copy(one: str, other: str) -> str:
        if Path(one).suffix.lower() in shared and "/windows/" in one:
            os.link(one, other)
            return other
        return shutil.copy2(one, other)

    shutil.copytree(source, target, symlinks=True, copy_function=copy)


def _close_the_doors(prefix: Path) -> None:
    """Replaces every link of the profile to a real folder by a folder, and takes the whole-machine drive away."""
    for link in sorted((prefix / "drive_c/users").rglob("*")):
        if link.is_symlink():
            link.unlink()
            link.mkdir()
    for drive in (prefix / "dosdevices").iterdir():
        if drive.name != "c:" and drive.is_symlink():
            drive.unlink()


class WineHome:
    """One private Windows. Use it as a context manager: leaving it ends every process of its prefix.

    The language decides the ANSI code page. A user of another name has a profile folder of that name, without what the
    registry keeps for the first user: TEMP and the folders that nobody has asked for yet.
    """

    def __init__(self, name: str, display: str | None = None, fresh: bool = True, language: str = WESTERN, user: str = USER):
        self.base = HOMES / name
        self.prefix = self.base / "prefix"
        self.c = self.prefix / "drive_c"
        self.user = user
        self.windows_version = "default"
        template = _template()
        if fresh and self.base.exists():
            self.environment = private_environment(self.base, display, language, user)
            self.stop()
            shutil.rmtree(self.base)
        if not self.base.exists():
            _make_folders(self.base, language)
            _copy_prefix(template / "prefix", self.prefix)
        self.environment = private_environment(self.base, display, language, user)
        self._server = None

    def __enter__(self) -> "WineHome":
        # One server for the whole task: each command then starts in a tenth of the time.
        subprocess.run(["wineserver", "-p"], env=self.environment, check=False, stderr=subprocess.DEVNULL)
        return self

    def __exit__(self, *_) -> None:
        self.stop()

    @property
    def profile(self) -> Path:
        return self.c / "users" / self.user

    @property
    def temp(self) -> Path:
        """The folder that Windows calls TEMP."""
        for candidate in ("AppData/Local/Temp", "Temp", "Local Settings/Temp"):
            if (self.profile / candidate).is_dir():
                return self.profile / candidate
        raise FileNotFoundError(f"no temp folder in {self.profile}")

    def start(self, *command: str, tracer: list[str] | None = None, **options) -> subprocess.Popen:
        """Starts a Windows program, within the tracer where one is given."""
        options.setdefault("cwd", str(self.c))
        environment = dict(self.environment, **options.pop("environment", {}))
        return subprocess.Popen([*(tracer or []), *self._in_wine(command)], env=environment, **options)

    def run(self, *command: str, timeout: float = 120, check: bool = False, environment: dict | None = None,
            cwd: str | None = None) -> subprocess.CompletedProcess:
        """Runs a Windows program to its end and gives its output as text.

        The output goes through a file: the services that the first program of a prefix starts inherit its output and
        would hold a pipe open for ever.
        """
        with tempfile.TemporaryFile(dir=self.base) as out:
            done = subprocess.run(self._in_wine(command), env=dict(self.environment, **(environment or {})),
                                  timeout=timeout, cwd=cwd or str(self.c), stdin=subprocess.DEVNULL, stdout=out,
                                  stderr=subprocess.STDOUT)
            out.seek(0)
            text = out.read().decode("utf-8", "replace")
        if check and done.returncode:
            raise subprocess.CalledProcessError(done.returncode, command, text)
        return subprocess.CompletedProcess(command, done.returncode, text)

    def _in_wine(self, command: tuple[str, ...]) -> list[str]:
        """A program of the system by its whole name: for a bare one Wine starts another program that looks for it."""
        program = command[0]
        for folder in ("system32", "."):
            if "\\" not in program and (self.c / "windows" / folder / f"{program}.exe").exists():
                program = str(PureWindowsPath(r"C:\windows", folder, f"{program}.exe"))
        return ["wine", program, *command[1:]]

    def set_windows_version(self, version: str, program: str | None = None) -> None:
        key = r"HKCU\Software\Wine" + (rf"\AppDefaults\{program}" if program else "")
        self.run("reg", "add", key, "/v", "Version", "/d", version, "/f", check=True)
        if not program:
            self.windows_version = version

    def stop(self) -> None:
        if not self.prefix.exists():
            return
        subprocess.run(["wineserver", "-k"], env=self.environment, check=False,
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        subprocess.run(["wineserver", "-w"], env=self.environment, check=False, timeout=30,
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)


# The colours of the systems that the program is for.
CLASSIC_COLOURS = {
    "192 192 192": "ActiveBorder ButtonAlternateFace ButtonFace InactiveBorder InactiveTitleText Menu MenuBar Scrollbar "
                   "GradientInactiveTitle",
    "0 0 128": "ActiveTitle Hilight MenuHilight",
    "16 132 208": "GradientActiveTitle",
    "128 128 128": "AppWorkSpace ButtonShadow GrayText InactiveTitle",
    "0 128 128": "Background",
    "0 0 0": "ButtonDkShadow ButtonText InfoText MenuText WindowFrame WindowText",
    "255 255 255": "ButtonHilight HilightText TitleText Window",
    "223 223 223": "ButtonLight",
    "255 255 225": "InfoWindow",
    "0 0 255": "HotTrackingColor",
}


def _registry_text() -> str:
    """No crash window, no sound, and the classic look: the one that the layouts are judged in."""
    colours = [f'"{name}"="{value}"' for value, names in CLASSIC_COLOURS.items() for name in names.split()]
    return "\r\n".join([
        "REGEDIT4", "",
        r"[HKEY_CURRENT_USER\Software\Wine\WineDbg]", '"ShowCrashDialog"=dword:00000000', "",
        # Without a window manager a managed window takes two seconds to close.
        r"[HKEY_CURRENT_USER\Software\Wine\X11 Driver]", '"Managed"="N"', "",
        r"[HKEY_CURRENT_USER\Software\Wine\Drivers]", '"Audio"=""', "",
        r"[HKEY_CURRENT_USER\Software\Microsoft\Windows\CurrentVersion\ThemeManager]", '"ThemeActive"="0"', "",
        # Nobody asks these; starting them takes a quarter of the time that a fresh Windows takes.
        *[line for name in ("Eventlog", "PlugPlay")
          for line in (rf"[HKEY_LOCAL_MACHINE\System\CurrentControlSet\Services\{name}]", '"Start"=dword:00000004', "")],
        r"[HKEY_CURRENT_USER\Control Panel\Colors]", *colours, ""])


def _template() -> Path:
    """The template prefix, made once; a lock keeps two tasks from making it at the same time."""
    HOMES.mkdir(parents=True, exist_ok=True)
    base = HOMES / f"template-{TEMPLATE_VERSION}"
    with open(HOMES / "template.lock", "w") as lock:
        fcntl.flock(lock, fcntl.LOCK_EX)
        done = base / "made"
        if done.exists():
            return base
        shutil.rmtree(base, ignore_errors=True)
        _make_folders(base)
        environment = private_environment(base)
        made = subprocess.run(["wineboot", "-i"], env=environment, timeout=180,
                              stdout=subprocess.DEVNULL, stderr=subprocess.PIPE)
        subprocess.run(["wineserver", "-w"], env=environment, timeout=60, check=False)
        prefix = base / "prefix"
        if made.returncode or not (prefix / "drive_c/windows").is_dir():
            raise SystemExit("quellix: Wine could not make a private Windows; run `wineboot -i` by hand to see why. "
                             + made.stderr.decode(errors="replace")[-400:])
        _close_the_doors(prefix)
        # The caption buttons are drawn with it, and Wine only finds it here.
        marlett = Path("/usr/share/wine/fonts/marlett.ttf")
        if marlett.exists():
            shutil.copy(marlett, prefix / "drive_c/windows/Fonts")
        look = prefix / "drive_c/look.reg"
        look.write_text(_registry_text(), encoding="ascii")
        subprocess.run(["wine", "regedit", "/S", r"C:\look.reg"], env=environment, check=True,
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        look.unlink()
        subprocess.run(["wineserver", "-k"], env=environment, check=False)
        subprocess.run(["wineserver", "-w"], env=environment, timeout=60, check=False)
        _close_the_doors(prefix)
        done.touch()
        return base


class Display:
    """A virtual screen of its own; its number is found by the X server, so two tasks never share one.

    A key that is held does not repeat itself: how long a busy machine holds it would decide what a program makes of it.
    """

    def __init__(self, size: str = "1024x768", depth: int = 24):
        reader, writer = os.pipe()
        self.process = subprocess.Popen(
            ["Xvfb", "-displayfd", str(writer), "-screen", "0", f"{size}x{depth}", "-nolisten", "tcp", "-noreset",
             "-r", "-extension", "GLX"],
            pass_fds=(writer,), stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(writer)
        with os.fdopen(reader) as stream:
            number = stream.readline().strip()
        if not number:
            raise SystemExit("quellix: no virtual screen could be started; is another Xvfb holding /tmp/.X11-unix?")
        self.name = f":{number}"

    def __enter__(self) -> "Display":
        return self

    def __exit__(self, *_) -> None:
        # A signal that comes while the server is about to wait for its clients is lost.
        for _ in range(20):
            self.process.send_signal(signal.SIGTERM)
            with contextlib.suppress(subprocess.TimeoutExpired):
                self.process.wait(1)
                return
        self.process.kill()
        self.process.wait()

    def screenshot(self, path: Path) -> Path:
        path.parent.mkdir(parents=True, exist_ok=True)
        subprocess.run(["import", "-display", self.name, "-window", "root", str(path)], check=True,
                       env=dict(os.environ, DISPLAY=self.name))
        return path


def wait_for(what: str, condition, seconds: float = 120.0, every: float = 0.05):
    """Waits until `condition()` is true and returns its value; the message says what never came."""
    end = time.monotonic() + seconds
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > end:
            raise TimeoutError(f"waited {seconds:g} s in vain: {what}")
        time.sleep(every)
