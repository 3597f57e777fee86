"""The runtime that is compiled for what ships: exceptions, static objects, the want of memory, the end of the program."""
from __future__ import annotations

import subprocess
import sys
import unittest
from pathlib import Path

from tools.wine_home import BUILD, ROOT, WineHome

EXPECTED = """
made first static
made second static
made late static
made outer
made inner
destroyed inner
caught as second base 7
destroyed outer
caught again, a Derived: yes
inside the handler 2
after it 1, uncaught 0
bad_alloc
all memory taken: bad_alloc
caught 20000
map 150 from 105 to 993
empty function: run-time error 5
outside a vector: run-time error 5
destroyed late static
destroyed second static
destroyed first static
"""
QUIET_END = 3


class Runtime(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        built = subprocess.run(["cmake", "--build", "--preset", "win32", "--target", "runtime_probe"], cwd=ROOT,
                               stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
        if built.returncode:
            raise RuntimeError(built.stdout)
        cls.home = cls.enterClassContext(WineHome("runtime"))
        (cls.home.c / "probe.exe").write_bytes((BUILD / "win32/tests/runtime/runtime_probe.exe").read_bytes())

    def run_probe(self, *arguments: str) -> subprocess.CompletedProcess:
        return self.home.run(r"C:\probe.exe", *arguments)

    def test_exceptions_static_objects_and_the_library_do_what_they_should(self):
        done = self.run_probe()
        self.assertEqual(done.stdout.replace("\r", "").strip().splitlines(), EXPECTED.strip().splitlines())
        self.assertEqual(done.returncode, 42)

    def test_an_exception_that_nobody_catches_ends_the_program_quietly(self):
        for way in ("throws-through-noexcept", "throws-out-of-main", "aborts"):
            with self.subTest(way=way):
                done = self.run_probe(way)
                self.assertEqual((done.returncode, done.stdout.count("\n")), (QUIET_END, 2), done.stdout)

    def test_a_buffer_that_is_written_over_its_end_ends_the_program(self):
        done = self.run_probe("writes-over-the-end")
        self.assertEqual((done.returncode, done.stdout.count("\n")), (QUIET_END, 2), done.stdout)

    def test_the_number_that_guards_the_stack_is_another_one_at_each_start(self):
        guards = {int(self.run_probe("tells-the-guard").stdout.split("\n")[2]) for _ in range(3)}
        self.assertGreater(len(guards), 1, guards)
        for guard in guards:
            self.assertEqual(guard & 0xFF, 0, hex(guard))


if __name__ == "__main__":
    unittest.main()
