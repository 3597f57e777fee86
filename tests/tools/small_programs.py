"""Tiny Windows programs for the tests of the audit, cross-compiled without a C runtime so that each takes a moment."""
from __future__ import annotations

import struct
import subprocess
from pathlib import Path

COMPILER = "i686-w64-mingw32-g++-win32"
COMPILE = ["-Os", "-march=i486", "-nostdlib", "-nostartfiles", "-s", "-mwindows", "-Wl,--entry=_start@0"]
FLOOR_LINK = [
    "-Wl,--major-os-version=4,--minor-os-version=0,--major-subsystem-version=4,--minor-subsystem-version=0",
    "-Wl,--disable-dynamicbase,--disable-reloc-section,--nxcompat,--tsaware,--no-seh",
    "-Wl,--no-insert-timestamp",
]
MANIFEST = """<?xml version="1.0" encoding="UTF-8" standalone="yes"?>
<assembly xmlns="urn:schemas-microsoft-com:asm.v1" manifestVersion="1.0">
<trustInfo xmlns="urn:schemas-microsoft-com:asm.v3"><security><requestedPrivileges>
<requestedExecutionLevel level="asInvoker" uiAccess="false"/></requestedPrivileges></security></trustInfo>
<application xmlns="urn:schemas-microsoft-com:asm.v3"><windowsSettings>
<dpiAware xmlns="http://schemas.microsoft.com/SMI/2005/WindowsSettings">true</dpiAware>
</windowsSettings></application></assembly>
"""
VERSION = "1 VERSIONINFO\nFILEVERSION 1,0,0,0\nBEGIN\nEND\n"


def run(folder: Path, *command: str) -> None:
    done = subprocess.run(command, cwd=folder, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
    if done.returncode:
        raise RuntimeError(f"{' '.join(command)}\n{done.stdout}")


def bitmap(depth: int) -> bytes:
    """An 8 by 8 icon image with `depth` bits a pixel."""
    colours = 4 << depth if depth <= 8 else 0
    row = (8 * depth + 31) // 32 * 4
    header = struct.pack("<IiiHHIIiiII", 40, 8, 16, 1, depth, 0, 0, 0, 0, 0, 0)
    return header + bytes(colours + 8 * row + 8 * 4)


PNG = b"\x89PNG\r\n\x1a\n" + bytes(32)


def icon_file(images: list[bytes]) -> bytes:
    directory, body = struct.pack("<HHH", 0, 1, len(images)), b""
    for image in images:
        offset = 6 + 16 * len(images) + len(body)
        side = 0 if image == PNG else 8  # 0 means 256
        directory += struct.pack("<BBBBHHII", side, side, 0, 0, 1, 32, len(image), offset)
        body += image
    return directory + body


def resources(folder: Path, name: str, *, icons: list[bytes] | None, version: bool = True, manifest: str | None) -> str:
    """Compiles a resource file and gives the name of the object; what is None is left out."""
    script = VERSION if version else ""
    if icons is not None:
        (folder / f"{name}.ico").write_bytes(icon_file(icons))
        script += f'1 ICON "{name}.ico"\n'
    if manifest is not None:
        (folder / f"{name}.manifest").write_text(manifest)
        script += f'1 24 "{name}.manifest"\n'
    (folder / f"{name}.rc").write_text(script or "STRINGTABLE { 1 \"none\" }\n")
    run(folder, "i686-w64-mingw32-windres", f"{name}.rc", f"{name}.res.o")
    return f"{name}.res.o"


def import_library(folder: Path, name: str, definition: str) -> str:
    (folder / f"{name}.def").write_text(definition)
    run(folder, "i686-w64-mingw32-dlltool", "-k", "-d", f"{name}.def", "-l", f"{name}.a")
    return f"{name}.a"


def declaration(call: str) -> str:
    name, arguments = call.rstrip(")").split("(")
    # The number of parameters is part of the name that the linker looks for.
    parameters = ", ".join("int" for argument in arguments.split(",") if argument)
    return f'extern "C" __declspec(dllimport) int __stdcall {name}({parameters});\n'


def program(folder: Path, name: str, calls: list[str], *extra: str, link: list[str] = FLOOR_LINK) -> bytes:
    """A program that makes each call of `calls`, written as in C with plain numbers: "Sleep(0)"."""
    source = "".join(map(declaration, calls))
    source += 'extern "C" void __stdcall start() {\n' + "".join(f"{call};\n" for call in calls) + "}\n"
    (folder / f"{name}.cpp").write_text(source)
    run(folder, COMPILER, *COMPILE, *link, f"{name}.cpp", *extra, "-o", f"{name}.exe", "-lkernel32", "-luser32")
    return (folder / f"{name}.exe").read_bytes()
