"""Packs what ships: the installer, the portable zip and their check sums, in build/package.

The same files give the same bytes, wherever and whenever they are packed: names are sorted, every time in the packages is
midnight of the release's day (CHANGELOG.md).
"""
import argparse
import calendar
import hashlib
import os
import re
import shutil
import subprocess
import sys
import time
import zipfile
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
LIMIT = 500_000  # bytes, of each package


def version() -> str:
    text = (ROOT / "src/platform/product.h").read_text(encoding="ascii")
    return re.search(r'QUELLIX_VERSION_TEXT "([^"]+)"', text)[1]


def release_day(release: str) -> tuple[int, int, int]:
    """The day that the change log names for a release."""
    text = (ROOT / "CHANGELOG.md").read_text(encoding="utf-8")
    found = re.search(rf"^## {re.escape(release)} - (\d{{4}})-(\d\d)-(\d\d)$", text, re.M)
    if not found:
        raise SystemExit(f"quellix: CHANGELOG.md has no heading '## {release} - YEAR-MONTH-DAY' that gives the packages their date.")
    return tuple(map(int, found.groups()))


def stage(dist: Path, folder: Path, moment: int) -> list[str]:
    """Lays out what is installed, and returns its names, sorted, with "/"."""
    shutil.rmtree(folder, ignore_errors=True)
    for source in dist.rglob("*"):
        if source.is_file():
            target = folder / source.relative_to(dist)
            target.parent.mkdir(parents=True, exist_ok=True)
            shutil.copyfile(source, target)
    for source, name in ((ROOT / "LICENSE", "LICENSE.txt"), (ROOT / "packaging/ReadMe.txt", "ReadMe.txt")):
        lines = source.read_text(encoding="ascii").splitlines()
        (folder / name).write_bytes("".join(line + "\r\n" for line in lines).encode("ascii"))
    files = sorted(path.relative_to(folder).as_posix() for path in folder.rglob("*") if path.is_file())
    for name in files:
        os.utime(folder / name, (moment, moment))
    return files


def file_list(folder: Path, files: list[str]) -> str:
    """What the installer's script does with each file: install it, remove it by its name, and the folders when they are empty."""
    folders = sorted({Path(name).parent.as_posix() for name in files} - {"."})
    install, remove = [], []
    for place in [".", *folders]:
        target = "$INSTDIR" if place == "." else "$INSTDIR\\" + place.replace("/", "\\")
        install.append(f'  SetOutPath "{target}"')
        for name in files:
            if Path(name).parent.as_posix() == place:
                install.append(f'  File "{folder / name}"')
                remove.append(f'  Delete "{target}\\{Path(name).name}"')
    remove += ['  RMDir "$INSTDIR\\' + place.replace("/", "\\") + '"' for place in reversed(folders)]
    return "\n".join(["!macro INSTALL_FILES", *install, "!macroend", "!macro REMOVE_FILES", *remove, "!macroend", ""])


def make_setup(output: Path, folder: Path, files: list[str], release: str, moment: int) -> None:
    listed = output.parent / "files.nsh"
    listed.write_text(file_list(folder, files), encoding="ascii")
    size = sum((folder / name).stat().st_size for name in files)
    command = ["makensis", "-V2", "-NOCD", f"-DVERSION={release}", f"-DFILES={listed}", f"-DOUTPUT={output}",
               f"-DKILOBYTES={-(-size // 1024)}", str(ROOT / "packaging/quellix.nsi")]
    made = subprocess.run(command, env=dict(os.environ, SOURCE_DATE_EPOCH=str(moment), TZ="UTC"), check=False,
                          stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
    if made.returncode:
        raise SystemExit(f"quellix: makensis could not make the installer:\n{made.stdout}")
    if made.stdout.strip():
        raise SystemExit(f"quellix: makensis made the installer, but says:\n{made.stdout}")
    listed.unlink()


def make_zip(output: Path, folder: Path, files: list[str], day: tuple[int, int, int]) -> None:
    with zipfile.ZipFile(output, "w", zipfile.ZIP_DEFLATED, compresslevel=9) as packed:
        for name in files:
            entry = zipfile.ZipInfo(f"Quellix/{name}", (*day, 0, 0, 0))
            entry.compress_type = zipfile.ZIP_DEFLATED
            entry.create_system = 0  # made on Windows, for all that a reader needs to know
            packed.writestr(entry, (folder / name).read_bytes(), compresslevel=9)


def pack(dist: Path, target: Path, release: str | None = None) -> list[Path]:
    """Makes the packages of a folder and returns them, the sums last."""
    day = release_day(version())
    release = release or version()
    moment = calendar.timegm((*day, 0, 0, 0))
    shutil.rmtree(target, ignore_errors=True)
    target.mkdir(parents=True)
    folder = target / "Quellix"
    files = stage(dist, folder, moment)
    setup, archive = target / f"Quellix-{release}-setup.exe", target / f"Quellix-{release}.zip"
    make_setup(setup, folder, files, release, moment)
    make_zip(archive, folder, files, day)
    shutil.rmtree(folder)
    sums = target / "SHA256SUMS"
    sums.write_text("".join(f"{hashlib.sha256(path.read_bytes()).hexdigest()}  {path.name}\n" for path in (setup, archive)),
                    encoding="ascii")
    return [setup, archive, sums]


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--dist", type=Path, default=ROOT / "build/dist")
    parser.add_argument("--target", type=Path, default=ROOT / "build/package")
    chosen = parser.parse_args()
    made = pack(chosen.dist.resolve(), chosen.target.resolve())
    with zipfile.ZipFile(made[1]) as packed:
        for entry in packed.infolist():
            print(f"   {entry.file_size:9,}  {entry.filename}")
    too_big = False
    for path in made:
        size = path.stat().st_size
        too_big = too_big or size > LIMIT
        print(f"   {size:9,}  {os.path.relpath(path)}{'   TOO BIG' if size > LIMIT else ''}")
    print(f"   made as of {time.strftime('%Y-%m-%d', time.gmtime(calendar.timegm((*release_day(version()), 0, 0, 0))))}")
    return 1 if too_big else 0


if __name__ == "__main__":
    sys.exit(main())
