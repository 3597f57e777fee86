"""The packages as files: what is in them, how big they are, and that the same sources give the same bytes."""
import hashlib
import os
import shutil
import subprocess
import sys
import tempfile
import unittest
import zipfile
from pathlib import Path

from tests.harness.driver import BUILD
from tools.audit import audit_pe
from tools.audit.floor import Floor
from tools.audit.pe_file import PeFile
from tools.package import LIMIT, pack, version
from tools.wine_home import ROOT

DIST = BUILD / "dist"
# Windows 9x exports them, and fails: they are for a restart and for files that only the next start can remove.
OF_THE_NT_FAMILY = {"OpenProcessToken", "LookupPrivilegeValueA", "AdjustTokenPrivileges", "MoveFileExA"}
FLOPPY = 1_457_664  # bytes of a formatted one


class ThePackages(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.setup, cls.zip, cls.sums = pack(DIST, BUILD / "test-package/files")

    def test_are_the_same_bytes_from_another_folder_at_another_time(self):
        with tempfile.TemporaryDirectory() as elsewhere:
            tree = Path(elsewhere) / "a folder with blanks"
            tree.mkdir()
            for name in ("tools", "packaging", "CHANGELOG.md", "LICENSE", "src/platform/product.h", "src/app/res"):
                source, target = ROOT / name, tree / name
                target.parent.mkdir(parents=True, exist_ok=True)
                (shutil.copytree if source.is_dir() else shutil.copy)(source, target)
            shutil.copytree(DIST, tree / "dist")
            for path in tree.rglob("*"):
                os.utime(path, (1_000_000_000, 1_000_000_000))
                if path.is_file():
                    path.chmod(0o600)
            subprocess.run([sys.executable, "-B", "-m", "tools.package", "--dist", "dist", "--target", "out"], cwd=tree, check=True,
                           env=dict(os.environ, TZ="Asia/Tokyo", LC_ALL="C"), stdout=subprocess.DEVNULL)
            for path in (self.setup, self.zip, self.sums):
                self.assertEqual((tree / "out" / path.name).read_bytes(), path.read_bytes(), path.name)

    def test_are_small_and_fit_a_floppy_together(self):
        sizes = [path.stat().st_size for path in (self.setup, self.zip, self.sums)]
        self.assertLess(max(sizes), LIMIT)
        self.assertLess(sum(sizes), FLOPPY)

    def test_come_with_their_sums(self):
        for line in self.sums.read_text().splitlines():
            told, name = line.split("  ")
            self.assertEqual(hashlib.sha256((self.sums.parent / name).read_bytes()).hexdigest(), told)
        self.assertEqual(len(self.sums.read_text().splitlines()), 2)

    def test_carry_everything_that_ships_and_nothing_else(self):
        shipped = {path.relative_to(DIST).as_posix(): path.read_bytes() for path in DIST.rglob("*") if path.is_file()}
        with zipfile.ZipFile(self.zip) as packed:
            inside = {name.removeprefix("Quellix/"): packed.read(name) for name in packed.namelist()}
        texts = {name: inside.pop(name) for name in ("LICENSE.txt", "ReadMe.txt")}
        self.assertEqual(inside, shipped)
        self.assertLessEqual({"Quellix.exe", "iea.exe", "manual/index.html"}, set(shipped))
        for name, text in texts.items():
            self.assertNotIn(b"\n", text.replace(b"\r\n", b""), name)
        self.assertIn(f"Quellix {version()}\r\n".encode(), texts["ReadMe.txt"])

    def test_begin_with_a_program_that_windows_95_loads(self):
        pe = PeFile(self.setup.read_bytes())
        self.assertEqual((pe.machine, pe.subsystem_version), (audit_pe.I386, (4, 0)))
        doubtful = {finding.partition(":")[0].split()[-1] for finding in audit_pe.check_imports(pe, Floor())}
        self.assertEqual(doubtful, OF_THE_NT_FAMILY | {"CreateThread"})  # the second: our own runtime is for one, not this one
        resources = pe.resources()
        self.assertEqual(audit_pe.check_icons(resources) + audit_pe.check_resources(resources), [])

    def test_bear_names_that_a_floppy_of_windows_95_shows(self):
        with zipfile.ZipFile(self.zip) as packed:
            names = packed.namelist()
        self.assertEqual(len({name.lower() for name in names}), len(names))
        self.assertTrue(all(name.isascii() and " " not in name for name in names))


if __name__ == "__main__":
    unittest.main(verbosity=2)
