"""The audit of what ships: it passes a good program and refuses each thing that keeps one from an old Windows."""
from __future__ import annotations

import os
import struct
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path
from unittest import mock

from tests.tools import small_programs as small
from tools.audit import floor
from tools.audit.audit_pe import audit, check_icon_group, check_manifest
from tools.audit.floor import BadFloor, Floor
from tools.audit.pe_file import IMPORT, PeFile
from tools.wine_home import ROOT

GOOD_CALLS = ["Sleep(0)", "GetTickCount()", "MessageBeep(0)"]
OLD_ICONS = [small.bitmap(4), small.bitmap(8), small.bitmap(32)]
OPTIONAL_HEADER = 24  # counted from the PE signature, as the places below are
TIME_STAMP, MACHINE, OS_VERSION, SUBSYSTEM_VERSION = 8, 4, OPTIONAL_HEADER + 40, OPTIONAL_HEADER + 48
SUBSYSTEM, FLAGS, DIRECTORIES = OPTIONAL_HEADER + 68, OPTIONAL_HEADER + 70, OPTIONAL_HEADER + 96


def patched(data: bytes, place: int, layout: str, *values: int) -> bytes:
    changed = bytearray(data)
    struct.pack_into(layout, changed, struct.unpack_from("<I", data, 0x3C)[0] + place, *values)
    return bytes(changed)


class ProgramCase(unittest.TestCase):
    """Compiles the good program once for all; every other one differs from it in one thing."""

    @classmethod
    def setUpClass(cls):
        temporary = tempfile.TemporaryDirectory(prefix="quellix-audit-")
        cls.addClassCleanup(temporary.cleanup)
        cls.folder = Path(temporary.name)
        cls.floor = Floor()
        cls.res = small.resources(cls.folder, "good", icons=OLD_ICONS, manifest=small.MANIFEST)
        cls.good = small.program(cls.folder, "good", GOOD_CALLS, cls.res)

    def findings(self, data: bytes, **options) -> list[str]:
        return audit(data, self.floor, **options)

    def with_calls(self, calls: list[str], *extra: str) -> list[str]:
        return self.findings(small.program(self.folder, "calls", calls, self.res, *extra))

    def with_link(self, *link: str) -> list[str]:
        data = small.program(self.folder, "link", GOOD_CALLS, self.res, link=[*small.FLOOR_LINK, *link])
        return self.findings(data)

    def with_resources(self, **parts) -> list[str]:
        parts = {"icons": OLD_ICONS, "manifest": small.MANIFEST, **parts}
        res = small.resources(self.folder, "other", **parts)
        return self.findings(small.program(self.folder, "other", GOOD_CALLS, res))


class Headers(ProgramCase):
    def test_a_good_program_has_no_findings(self):
        self.assertEqual(self.findings(self.good), [])

    def test_a_linked_time_stamp_is_refused(self):
        found = self.with_link("-Wl,--insert-timestamp")
        self.assertEqual(len(found), 1, found)
        self.assertRegex(found[0], r"^time stamp 0x[0-9a-f]{8}, not 0$")

    def test_a_patched_time_stamp_is_shown(self):
        self.assertEqual(self.findings(patched(self.good, TIME_STAMP, "<I", 0x1234)), ["time stamp 0x00001234, not 0"])

    def test_a_program_linked_for_a_dynamic_base_is_refused(self):
        self.assertEqual(self.with_link("-Wl,--dynamicbase"), ["DLL characteristic DYNAMIC_BASE is set"])

    def test_each_missing_hardening_flag_is_named(self):
        names = {0x0100: "NX_COMPAT", 0x0400: "NO_SEH", 0x8000: "TERMINAL_SERVER_AWARE"}
        for flag, name in names.items():
            with self.subTest(name):
                found = self.findings(patched(self.good, FLAGS, "<H", 0x8500 & ~flag))
                self.assertEqual(found, [f"DLL characteristic {name} is not set"])
        self.assertEqual(self.findings(patched(self.good, FLAGS, "<H", 0x8500)), [])

    def test_every_other_characteristic_is_named(self):
        found = self.findings(patched(self.good, FLAGS, "<H", 0xC581))
        names = ("0x0001", "FORCE_INTEGRITY", "GUARD_CF")
        self.assertEqual(found, [f"DLL characteristic {name} is set" for name in names])

    def test_another_machine_is_refused(self):
        self.assertEqual(self.findings(patched(self.good, MACHINE, "<H", 0x8664)), ["machine 0x8664, not i386"])

    def test_a_console_program_is_refused_unless_asked_for(self):
        console = patched(self.good, SUBSYSTEM, "<H", 3)
        self.assertEqual(self.findings(console), ["subsystem 3, not 2 (gui)"])
        self.assertEqual(self.findings(console, subsystem="console"), [])

    def test_versions_other_than_four_are_refused(self):
        self.assertEqual(self.findings(patched(self.good, OS_VERSION, "<HH", 5, 1)), ["OS version 5.1, not 4.0"])
        found = self.findings(patched(self.good, SUBSYSTEM_VERSION, "<HH", 4, 10))
        self.assertEqual(found, ["subsystem version 4.10, not 4.0"])

    def test_a_program_over_the_budget_is_refused_and_one_on_it_is_not(self):
        size = len(self.good)
        self.assertEqual(self.findings(self.good, max_size=size), [])
        found = self.findings(self.good, max_size=size - 7)
        self.assertEqual(found, [f"{size} bytes, 7 over the budget of {size - 7}"])

    def test_exports_and_delayed_imports_are_refused(self):
        exports = patched(self.good, DIRECTORIES + 8 * 0, "<II", 0x1000, 40)
        self.assertEqual(self.findings(exports), ["has an export directory"])
        delayed = patched(self.good, DIRECTORIES + 8 * 13, "<II", 0x1000, 64)
        self.assertEqual(self.findings(delayed), ["has a delay-import directory"])

    def test_what_is_no_program_or_cut_short_is_a_finding_and_no_crash(self):
        self.assertEqual(self.findings(b"text"), ["is no Windows program (no MZ at its start)"])
        wide = patched(self.good, OPTIONAL_HEADER, "<H", 0x20B)
        self.assertEqual(self.findings(wide), ["is not PE32 (machine 0x014c, magic 0x20b)"])
        for length in range(0, len(self.good) - 512, 97):
            self.assertNotEqual(self.findings(self.good[:length]), [], f"cut to {length} bytes")

    def test_resources_that_end_beyond_the_file_are_told_as_damage(self):
        end = self.good.index(b"</assembly>")
        self.assertIn("is damaged (address", self.findings(self.good[:end])[-1])


class Imports(ProgramCase):
    def test_a_newer_function_is_refused_with_the_windows_that_first_had_it(self):
        found = self.with_calls(["Sleep(0)", "GetTickCount64()"])
        self.assertEqual(found, ["kernel32.dll GetTickCount64: not on the floor, first in Vista"])

    def test_wide_functions_that_only_fail_on_windows_9x_are_refused(self):
        found = self.with_calls(["LoadLibraryW(0)", "GetModuleHandleW(0)", "CreateSemaphoreW(0,0,0,0)"])
        why = "tag w9x: wide function, a failing stub on Windows 95, 98 and Me"
        names = ("CreateSemaphoreW", "GetModuleHandleW", "LoadLibraryW")
        self.assertEqual(sorted(found), [f"kernel32.dll {name}: {why}" for name in names])

    def test_functions_that_always_fail_on_windows_9x_are_refused(self):
        found = self.with_calls(["GetProcessTimes(0,0,0,0,0)"])
        self.assertEqual(found, ["kernel32.dll GetProcessTimes: tag stub9x: always fails on Windows 95, 98 and Me"])

    def test_a_second_thread_is_refused(self):
        found = self.with_calls(["CreateThread(0,0,0,0,0,0)"])
        self.assertEqual(found, ["kernel32.dll CreateThread: starts a thread, and the runtime is for one"])

    def test_a_function_that_came_with_internet_explorer_is_refused(self):
        found = self.with_calls(["PathFileExistsA(0)"], "-lshlwapi")
        self.assertEqual(found, ["shlwapi.dll PathFileExistsA: tier ie3: comes with Internet Explorer 3"])

    def test_common_controls_of_version_4_70_may_be_imported(self):
        self.assertEqual(self.with_calls(["InitCommonControlsEx(0)"], "-lcomctl32"), [])

    def test_a_library_without_a_list_is_refused(self):
        library = small.import_library(self.folder, "odd", "LIBRARY odd.dll\nEXPORTS\nOdd@0\n")
        self.assertEqual(self.with_calls(["Odd()"], library), ["odd.dll Odd: no floor list for this library"])

    def test_a_function_that_no_list_knows_is_refused(self):
        library = small.import_library(self.folder, "more", "LIBRARY kernel32.dll\nEXPORTS\nNobodyKnows@0\n")
        found = self.with_calls(["NobodyKnows()"], library)
        self.assertEqual(found, ["kernel32.dll NobodyKnows: not on the floor, unknown since when"])

    def test_an_import_by_ordinal_is_refused(self):
        library = small.import_library(self.folder, "number", "LIBRARY shell32.dll\nEXPORTS\nHidden@0 @62 NONAME\n")
        self.assertEqual(self.with_calls(["Hidden()"], library), ["shell32.dll #62: imported by ordinal"])

    def test_a_row_with_a_reason_allows_a_refused_function(self):
        with mock.patch.dict(floor.ALLOWED, {("kernel32", "GetProcessTimes"): "a failed call shows no times"}):
            self.assertEqual(self.with_calls(["GetProcessTimes(0,0,0,0,0)"]), [])

    def test_names_are_read_where_binding_leaves_them(self):
        descriptor = PeFile(self.good).directory(IMPORT)[0]
        section = next(s for s in PeFile(self.good).sections if s.address <= descriptor < s.address + s.size)
        addresses = struct.unpack_from("<I", self.good, descriptor - section.address + section.offset + 16)[0]
        bound = bytearray(self.good)
        struct.pack_into("<I", bound, addresses - section.address + section.offset, 0x77E80001)
        self.assertEqual(self.findings(bytes(bound)), [])

    def test_imports_are_read_whole(self):
        taken = {(entry.dll, entry.function) for entry in PeFile(self.good).imports()}
        expected = {("kernel32.dll", "Sleep"), ("kernel32.dll", "GetTickCount"), ("user32.dll", "MessageBeep")}
        self.assertEqual(taken, expected)


class Resources(ProgramCase):
    def test_a_program_without_resources_is_told_all_three_it_lacks(self):
        found = self.findings(small.program(self.folder, "bare", GOOD_CALLS))
        missing = ["has no icon resource", "has no version resource", "has no manifest resource named 1"]
        self.assertEqual(found, missing)

    def test_each_missing_resource_is_named(self):
        self.assertEqual(self.with_resources(icons=None), ["has no icon resource"])
        self.assertEqual(self.with_resources(version=False), ["has no version resource"])
        self.assertEqual(self.with_resources(manifest=None), ["has no manifest resource named 1"])

    def test_a_manifest_that_asks_for_an_administrator_is_refused(self):
        found = self.with_resources(manifest=small.MANIFEST.replace("asInvoker", "requireAdministrator"))
        self.assertEqual(found, ["manifest asks for level requireAdministrator, not asInvoker"])

    def test_a_manifest_without_level_or_awareness_is_refused(self):
        empty = b'<assembly xmlns="urn:schemas-microsoft-com:asm.v1"/>'
        expected = ["manifest asks for level none, not asInvoker", "manifest does not state dpiAware true"]
        self.assertEqual(check_manifest(empty), expected)

    def test_a_manifest_that_denies_awareness_or_is_no_xml_is_refused(self):
        denied = small.MANIFEST.replace(">true<", ">false<").encode()
        self.assertEqual(check_manifest(denied), ["manifest does not state dpiAware true"])
        self.assertRegex(check_manifest(b"<assembly>")[0], "^manifest cannot be read: ")

    def test_a_png_compressed_image_is_refused_unless_it_is_the_last_and_of_256_points(self):
        what = "image 3 is PNG-compressed, and not the last one with 256 by 256 points"
        old = [small.bitmap(4), small.bitmap(8)]
        self.assertEqual(self.with_resources(icons=[*old, small.PNG]), [])
        self.assertEqual(self.with_resources(icons=[*old, small.PNG, small.bitmap(32)]), ["icon 1: " + what])
        images = dict(enumerate([*old, small.PNG], 1))
        for side, expected in ((0, []), (48, [what]), (255, [what])):
            group = struct.pack("<HHH", 0, 1, 3) + b"".join(
                struct.pack("<BBBBHHIH", side if number == 3 else 8, side if number == 3 else 8, 0, 0, 1, 32, len(image), number)
                for number, image in images.items())
            self.assertEqual(check_icon_group(group, images), expected, side)

    def test_a_compressed_or_oversized_bitmap_header_is_refused(self):
        for place, value in ((0, 108), (16, 1)):  # the header's size, the compression
            image = bytearray(small.bitmap(32))
            struct.pack_into("<I", image, place, value)
            found = self.with_resources(icons=[small.bitmap(4), small.bitmap(8), bytes(image)])
            self.assertEqual(found, ["icon 1: image 3 is not a plain bitmap"])

    def test_images_with_many_colours_do_not_come_first(self):
        what = "icon 1: images with 16 and 256 colours do not come first (bits a pixel in order: "
        for order in ([32, 4, 8], [4, 32, 8], [4, 8, 32, 8], [4, 4, 32], [8, 32], [1, 4, 8], [32]):
            with self.subTest(order=order):
                found = self.with_resources(icons=[small.bitmap(depth) for depth in order])
                self.assertEqual(found, [what + ", ".join(map(str, order)) + ")"])

    def test_images_of_two_sizes_may_share_the_old_depths(self):
        self.assertEqual(self.with_resources(icons=[small.bitmap(depth) for depth in (4, 4, 8, 8, 32)]), [])

    def test_an_icon_group_that_names_a_missing_image_is_damaged(self):
        group = struct.pack("<HHHBBBBHHIH", 0, 1, 1, 8, 8, 16, 0, 1, 4, 40, 9)
        self.assertEqual(check_icon_group(group, {}), ["is damaged"])


class Lists(unittest.TestCase):
    def floor_of(self, library: str, later: str = "") -> Floor:
        with tempfile.TemporaryDirectory() as name:
            (Path(name) / "odd.txt").write_text(library)
            (Path(name) / "later.tsv").write_text(later)
            return Floor(Path(name))

    def test_a_misspelt_tier_or_tag_or_a_lost_column_is_an_error(self):
        for row in ("Name\tokay\t-\n", "Name\tok\tw9\n", "Name\tok\n", "Name\tok\t\n"):
            with self.subTest(row=row), self.assertRaises(BadFloor):
                self.floor_of(row)

    def test_a_folder_without_lists_is_an_error(self):
        with tempfile.TemporaryDirectory() as name, self.assertRaises(BadFloor):
            Floor(Path(name))

    def test_tier_and_tags_are_all_told(self):
        objection = self.floor_of("Name\tdcom95\tw9x,nowine\n").objection("odd.dll", "Name")
        expected = "tier dcom95: absent on the first Windows 95 without DCOM; tag w9x: wide function, "
        self.assertEqual(objection, expected + "a failing stub on Windows 95, 98 and Me")

    def test_no_function_is_both_on_the_floor_and_later(self):
        lists = Floor()
        both = [(dll, name) for dll, name in lists.later if name in lists.libraries.get(dll, {})]
        self.assertEqual(both, [])


class CommandLine(ProgramCase):
    def run_audit(self, *arguments: str) -> tuple[int, str]:
        command = [sys.executable, "-B", "-m", "tools.audit.audit_pe", *arguments]
        done = subprocess.run(command, cwd=self.folder, env=dict(os.environ, PYTHONPATH=str(ROOT)),
                              stdout=subprocess.PIPE, text=True)
        return done.returncode, done.stdout

    def test_a_good_program_gives_one_line_and_status_0(self):
        (self.folder / "again.exe").write_bytes(self.good)
        status, output = self.run_audit("good.exe", "--max-size", str(len(self.good)), "--same", "again.exe")
        line = f"good.exe: 3 imports from 2 libraries, {len(self.good)} bytes, all on the floor\n"
        self.assertEqual((status, output), (0, line))

    def test_another_build_that_differs_is_a_finding_with_the_place(self):
        (self.folder / "other.exe").write_bytes(self.good[:-1] + bytes([self.good[-1] ^ 1]))
        size = len(self.good)
        status, output = self.run_audit("good.exe", "--same", "other.exe")
        line = f"good.exe: differs from other.exe: {size} and {size} bytes, first difference at {size - 1:#x}\n"
        self.assertEqual((status, output), (1, line))

    def test_every_finding_is_one_line_and_status_1(self):
        (self.folder / "bad.exe").write_bytes(patched(patched(self.good, TIME_STAMP, "<I", 1), FLAGS, "<H", 0x8540))
        expected = "bad.exe: time stamp 0x00000001, not 0\nbad.exe: DLL characteristic DYNAMIC_BASE is set\n"
        self.assertEqual(self.run_audit("bad.exe"), (1, expected))

    def test_a_missing_file_is_a_finding(self):
        status, output = self.run_audit("nowhere.exe")
        self.assertEqual((status, output.count("\n")), (1, 1), output)


if __name__ == "__main__":
    unittest.main()
