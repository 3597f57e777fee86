"""The table of sizes: every byte of the file is in one row, and a function counts for the room that it belongs to."""
from __future__ import annotations

import re
import sys
import tempfile
import unittest
from pathlib import Path

from tests.tools import small_programs as small
from tools.size_table import HEADERS, LIBRARY, RUNTIME, START, TABLES, function_name, row_of, rooms, sizes, table

ROOMS = re.compile(r"\b(app|platform|shred)::")


class Rows(unittest.TestCase):
    def test_a_function_counts_for_the_first_room_in_its_name(self):
        rows = {
            "shred::ShredRun::Next()": "shred",
            "shred::(anonymous namespace)::Fill(char*) [clone .constprop.0]": "shred",
            "std::_Function_handler<void (), app::frmMain::OnInit()::{lambda()#1}>::_M_invoke(std::_Any_data const&)": "app",
            "void app::Each<shred::List>(shred::List&)": "app",
            "platform::ListBox::RemoveItem(int)": "platform",
            "platform::Statement::Statement<shred::Run()::{lambda()#1}>(shred::Run()::{lambda()#1}&&)": "shred",
            "_sub_I_65535_0.0": START,
            "std::vector<int, std::allocator<int> >::push_back(int&&)": LIBRARY,
            "void std::__introsort_loop<int*>(int*, int*)": LIBRARY,
            "std::__cxx11::basic_string<char> std::operator+<char>(char const*, char const*)": LIBRARY,
            "operator new(unsigned int)": RUNTIME,
            "__cxxabiv1::__class_type_info::__do_upcast(void**) const": RUNTIME,
            "get_adjusted_ptr(std::type_info const*, std::type_info const*, void**)": RUNTIME,
            "_Unwind_RaiseException": RUNTIME,
            "WinMain": START,
        }
        for name, row in rows.items():
            with self.subTest(name=name):
                self.assertEqual(row_of(name, ROOMS), row)

    def test_the_name_of_a_function_is_that_of_its_section(self):
        for section in (".text$_Z1fv", ".text.unlikely._Z1fv", ".text.startup._Z1fv", ".text._Z1fv"):
            self.assertEqual(function_name(section), "_Z1fv")
        self.assertEqual(function_name(".text"), "")

    def test_the_rooms_are_the_folders_of_the_sources(self):
        self.assertLess({"app", "platform", "iea"}, set(rooms()))


class Table(unittest.TestCase):
    def test_all_bytes_of_a_program_are_in_it(self):
        code = """.section .text$_ZN3app1fEv,"x"
            .skip 300, 0x90
            .section .text$_ZNSt1aC1Ev,"x"
            .skip 40, 0x90
            .section .gcc_except_table
            .skip 20
            .section .eh_frame,"r"
            .skip 24
            """
        with tempfile.TemporaryDirectory(prefix="quellix-sizes-") as name:
            folder = Path(name)
            (folder / "more.s").write_text(code)
            icons = small.resources(folder, "small", icons=[small.bitmap(4)], manifest=small.MANIFEST)
            program = small.program(folder, "small", ["Sleep(0)"], "more.s", icons, "-Wl,-Map,small.map")
            rows = sizes(program, (folder / "small.map").read_text())
        self.assertEqual(sum(rows.values()), len(program))
        self.assertEqual((rows["app"], rows[LIBRARY]), (300, 40))
        self.assertGreaterEqual(rows[TABLES], 44)
        self.assertGreater(rows["resources: icons"], len(small.bitmap(4)) - 1)
        self.assertTrue(0 < rows[HEADERS] < 5000, rows)
        lines = table({"small.exe": rows}).splitlines()
        self.assertEqual(lines[0].split(), ["bytes", "of", "small.exe"])
        self.assertEqual(lines[-1].split(), ["all", f"{len(program):,}"])
        self.assertIn(["code:", "app", "300"], [line.split() for line in lines])


if __name__ == "__main__":
    unittest.main()
