#!/usr/bin/env python3
"""Tells whether a program of ours loads and runs on every supported Windows, the oldest included.

No test machine shows this: Wine exports functions that the old systems lack, so the file itself is audited.
Every finding is one line; the exit status is 1 when there is any.
"""
from __future__ import annotations

import argparse
import struct
import sys
import xml.etree.ElementTree as ElementTree
from itertools import takewhile
from pathlib import Path

from tools.audit import pe_file
from tools.audit.floor import BadFloor, Floor
from tools.audit.pe_file import BadPe, PeFile, Resource

I386 = 0x14C
SUBSYSTEMS = {"gui": 2, "console": 3}
# Systems that do not know them ignore them. The programs have no handler of structured exceptions.
EXPECTED_FLAGS = {0x0100: "NX_COMPAT", 0x0400: "NO_SEH", 0x8000: "TERMINAL_SERVER_AWARE"}
FLAG_NAMES = {
    0x0020: "HIGH_ENTROPY_VA",
    0x0040: "DYNAMIC_BASE",
    0x0080: "FORCE_INTEGRITY",
    0x0200: "NO_ISOLATION",
    0x0800: "NO_BIND",
    0x1000: "APPCONTAINER",
    0x2000: "WDM_DRIVER",
    0x4000: "GUARD_CF",
}
# The runtime of what ships is compiled for one thread (docs/runtime.md).
THREAD_STARTERS = {"CreateThread", "CreateRemoteThread", "_beginthread", "_beginthreadex", "timeSetEvent"}
PNG = b"\x89PNG\r\n\x1a\n"
OLD_DEPTHS = (4, 8)  # bits a pixel: 16 and 256 colours
SIDE_OF_256 = 0  # as an icon's directory has it
PROGRAM_MANIFEST = 1  # the only name under which the system looks for a program's manifest


def check_headers(pe: PeFile, subsystem: str) -> list[str]:
    found = []
    if pe.machine != I386:
        found.append(f"machine {pe.machine:#06x}, not i386")
    if pe.subsystem != SUBSYSTEMS[subsystem]:
        found.append(f"subsystem {pe.subsystem}, not {SUBSYSTEMS[subsystem]} ({subsystem})")
    for what, version in (("OS", pe.os_version), ("subsystem", pe.subsystem_version)):
        if version != (4, 0):
            found.append(f"{what} version {version[0]}.{version[1]}, not 4.0")
    if pe.timestamp:
        found.append(f"time stamp {pe.timestamp:#010x}, not 0")
    for bit in (1 << i for i in range(16)):
        is_set = bool(pe.dll_characteristics & bit)
        if bit in EXPECTED_FLAGS:
            found += [] if is_set else [f"DLL characteristic {EXPECTED_FLAGS[bit]} is not set"]
        elif is_set:
            found.append(f"DLL characteristic {FLAG_NAMES.get(bit, format(bit, '#06x'))} is set")
    return found


def check_directories(pe: PeFile) -> list[str]:
    unwanted = ((pe_file.EXPORT, "an export directory"), (pe_file.DELAY_IMPORT, "a delay-import directory"))
    return [f"has {name}" for index, name in unwanted if any(pe.directory(index))]


def check_imports(pe: PeFile, floor: Floor) -> list[str]:
    found = []
    for entry in pe.imports():
        if entry.ordinal is not None:
            found.append(f"{entry.dll} #{entry.ordinal}: imported by ordinal")
        elif entry.function is None:
            found.append(f"{entry.dll}: listed as imported, but nothing is taken from it")
        elif entry.function in THREAD_STARTERS:
            found.append(f"{entry.dll} {entry.function}: starts a thread, and the runtime is for one")
        else:
            objection = floor.objection(entry.dll, entry.function)
            if objection:
                found.append(f"{entry.dll} {entry.function}: {objection}")
    return found


def check_resources(resources: list[Resource]) -> list[str]:
    kinds = {resource.kind for resource in resources}
    found = [
        f"has no {name} resource"
        for kind, name in ((pe_file.GROUP_ICON, "icon"), (pe_file.VERSION, "version"))
        if kind not in kinds
    ]
    manifests = [r for r in resources if r.kind == pe_file.MANIFEST and r.name == PROGRAM_MANIFEST]
    if not manifests:
        found.append(f"has no manifest resource named {PROGRAM_MANIFEST}")
    for manifest in manifests:
        found += check_manifest(manifest.data)
    return found


def check_manifest(text: bytes) -> list[str]:
    try:
        # Element names come as {name space}name.
        elements = [(e.tag.rpartition("}")[2], e) for e in ElementTree.fromstring(text).iter()]
    except ElementTree.ParseError as error:
        return [f"manifest cannot be read: {error}"]
    levels = [e.get("level") for tag, e in elements if tag == "requestedExecutionLevel"]
    aware = [(e.text or "").strip().lower() for tag, e in elements if tag == "dpiAware"]
    found = []
    if levels != ["asInvoker"]:
        found.append(f"manifest asks for level {', '.join(map(str, levels)) or 'none'}, not asInvoker")
    if len(aware) != 1 or not aware[0].startswith("true"):
        found.append("manifest does not state dpiAware true")
    return found


def check_icons(resources: list[Resource]) -> list[str]:
    images = {r.name: r.data for r in resources if r.kind == pe_file.ICON}
    found = []
    for group in (r for r in resources if r.kind == pe_file.GROUP_ICON):
        found += [f"icon {group.name}: {finding}" for finding in check_icon_group(group.data, images)]
    return found


def check_icon_group(directory: bytes, images: dict[int | str, bytes]) -> list[str]:
    try:
        count = struct.unpack_from("<HHH", directory)[2]
        names = [struct.unpack_from("<H", directory, 6 + 14 * i + 12)[0] for i in range(count)]
        found, depths = [], []
        sides = [directory[6 + 14 * i] for i in range(count)]
        for number, (name, side) in enumerate(zip(names, sides), 1):
            image = images[name]
            if image.startswith(PNG):
                # Only Windows Vista and later ask for that size, and they know the form.
                if side != SIDE_OF_256 or number != count:
                    found.append(f"image {number} is PNG-compressed, and not the last one with 256 by 256 points")
                depths.append(32)
                continue
            size, _, _, _, depth, compression = struct.unpack_from("<IiiHHI", image)
            if size != 40 or compression:
                found.append(f"image {number} is not a plain bitmap")
            depths.append(depth)
    except (struct.error, KeyError):
        return ["is damaged"]
    leading = list(takewhile(lambda depth: depth in OLD_DEPTHS, depths))
    # What every system can show comes before what only the newer ones can.
    if set(leading) != set(OLD_DEPTHS) or any(depth in OLD_DEPTHS for depth in depths[len(leading) :]):
        order = ", ".join(map(str, depths)) or "none"
        found.append(f"images with 16 and 256 colours do not come first (bits a pixel in order: {order})")
    return found


def check_same(data: bytes, other: Path) -> list[str]:
    other_data = other.read_bytes()
    if data == other_data:
        return []
    length = min(len(data), len(other_data))
    first = next((i for i in range(length) if data[i] != other_data[i]), length)
    return [f"differs from {other}: {len(data)} and {len(other_data)} bytes, first difference at {first:#x}"]


def audit(data: bytes, floor: Floor, subsystem: str = "gui", max_size: int | None = None) -> list[str]:
    found = []
    if max_size is not None and len(data) > max_size:
        found.append(f"{len(data)} bytes, {len(data) - max_size} over the budget of {max_size}")
    try:
        pe = PeFile(data)
        found += check_headers(pe, subsystem) + check_directories(pe)
        found += check_imports(pe, floor)  # apart, so that a damaged table does not swallow what stands above
        resources = pe.resources()
        found += check_resources(resources) + check_icons(resources)
    except BadPe as error:
        found.append(str(error))
    return found


def summary(data: bytes) -> str:
    taken = {(entry.dll, entry.function) for entry in PeFile(data).imports()}
    libraries = {library for library, _ in taken}
    return f"{len(taken)} imports from {len(libraries)} libraries, {len(data)} bytes, all on the floor"


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("file", type=Path, help="the program to audit")
    parser.add_argument("--max-size", type=int, metavar="BYTES", help="the most that the file may weigh")
    parser.add_argument("--subsystem", choices=SUBSYSTEMS, default="gui")
    parser.add_argument("--same", type=Path, metavar="FILE", help="another build that must hold the same bytes")
    options = parser.parse_args()
    try:
        data = options.file.read_bytes()
        found = audit(data, Floor(), options.subsystem, options.max_size)
        if options.same:
            found += check_same(data, options.same)
    except (OSError, BadFloor) as error:
        found = [str(error)]
    for finding in found or [summary(data)]:
        print(f"{options.file.name}: {finding}")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
