"""The check of wording: it finds what points outside the repository and nothing else."""
from __future__ import annotations

import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
SCRIPT = ROOT / "tools/audit/wording.py"
sys.path.insert(0, str(SCRIPT.parent))

from wording import findings_in

# In pieces, so that this file is no finding of its own.
S = "sp" + "ec"
ROOTED = "/" + "root/"


def git(folder: Path, *arguments: str) -> None:
    subprocess.run(["git", "-C", str(folder), *arguments], check=True, stdout=subprocess.DEVNULL)


class Lines(unittest.TestCase):
    def test_each_forbidden_wording_is_found(self):
        forbidden = [
            f"see the {S}ification", f"{S.upper()}IFICATIONS", f"docs/{S.title()}.md", f"as The {S} says", f"(the {S})",
            "see P" + "art 2.3", "p" + "art 5.6.", "the Seed d" + "ocument", "for iss" + "ue 12", "Iss" + "ue #7",
            "../share" + f"d/{S}.md", "`share" + "d/design/x`", "share" + "d/habits.md",
            "share" + "d/platform-facts.md", "share" + "d/win_floor/a.txt", f'"{ROOTED}x"', f"cp {ROOTED}a b",
            "=/wo" + "rk/main", "PATH=/usr/bin:" + ROOTED + "bin", "file://" + ROOTED + "a", "-I/hom" + "e/ann/x",
            ROOTED + "at the start",
        ]  # fmt: skip
        for line in forbidden:
            with self.subTest(line=line):
                self.assertEqual(findings_in(f"before\n{line}\nafter"), [(2, line)])

    def test_wording_that_only_resembles_it_is_left_alone(self):
        allowed = [
            "specific, special, inspect", f"the {S}imen", "part 6.1, part 1.7, part 12.3", "apart 1.1", "an issue of 3",
            "tissue 4", "seed 7, document 8", "share" + "d/designer.h", "unshare" + f"d/{S}", "share" + "d/cache",
            "build/wo" + "rk/x", "$HOME" + ROOTED, "${base}" + ROOTED, "$(pwd)/wo" + "rk/", "C:/wo" + "rk/",
            "https://example.org" + ROOTED, "/home/<name>/", "/workshop/a", "HKEY_CURRENT_USER/home",
        ]  # fmt: skip
        for line in allowed:
            with self.subTest(line=line):
                self.assertEqual(findings_in(line), [])

    def test_words_parted_by_a_line_break_in_a_comment_are_found(self):
        self.assertEqual(findings_in(f"a\n// as the\n// {S} says\n"), [(2, "// as the")])

    def test_two_findings_on_one_line_are_one(self):
        line = f"the {S} and {ROOTED}"
        self.assertEqual(findings_in(line), [(1, line)])


class Repository(unittest.TestCase):
    def setUp(self):
        temporary = tempfile.TemporaryDirectory(prefix="quellix-wording-")
        self.addCleanup(temporary.cleanup)
        self.folder = Path(temporary.name)
        git(self.folder, "init", "-q")
        (self.folder / ".gitignore").write_text("build/\n")
        git(self.folder, "add", ".gitignore")

    def write(self, name: str, data: bytes) -> None:
        path = self.folder / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(data)

    def check(self, status: int, output: str) -> None:
        done = subprocess.run([sys.executable, str(SCRIPT), str(self.folder)], stdout=subprocess.PIPE, text=True)
        self.assertEqual((done.returncode, done.stdout), (status, output))

    def test_a_clean_tree_gives_one_line_and_status_0(self):
        self.write("a.txt", b"plain\n")
        self.check(0, "wording: 2 files, nothing to object to\n")

    def test_tracked_and_new_files_are_looked_through_and_ignored_ones_are_not(self):
        for name in ("tracked.h", "new name.txt", "build/log.txt"):
            self.write(name, f"one\n  from {ROOTED}x\n".encode())
        git(self.folder, "add", "tracked.h")
        self.check(1, f"new name.txt:2: from {ROOTED}x\ntracked.h:2: from {ROOTED}x\n")

    def test_wide_text_and_file_names_are_looked_at_and_binary_files_are_not(self):
        self.write("wide.rc", f"see {ROOTED}x\n".encode("utf-16"))
        self.write("picture.ico", b"\0\0\1\0 " + ROOTED.encode())
        self.write(f"{S}.md", b"")
        self.check(1, f"{S}.md: the name itself\nwide.rc:1: see {ROOTED}x\n")

    def test_a_file_deleted_but_still_tracked_is_passed_over(self):
        self.write("gone.txt", b"x")
        git(self.folder, "add", "gone.txt")
        (self.folder / "gone.txt").unlink()
        self.check(0, "wording: 2 files, nothing to object to\n")

    def test_a_folder_that_git_does_not_know_is_an_error(self):
        with tempfile.TemporaryDirectory(prefix="quellix-wording-") as name:
            done = subprocess.run([sys.executable, str(SCRIPT), name], capture_output=True, text=True)
        self.assertEqual(done.returncode, 1)
        self.assertIn("git does not list the files", done.stdout)


if __name__ == "__main__":
    unittest.main()
