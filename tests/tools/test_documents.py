"""The documents: no link leads nowhere, every test they name is there, and they agree about version and licence."""
import re
import subprocess
import unittest

from tools.package import release_day, version
from tools.wine_home import ROOT

PAGES = sorted([*ROOT.glob("*.md"), *(ROOT / "docs").glob("*.md"), *ROOT.glob("tests/*/README.md"), *ROOT.glob("tools/*/README.md")])
# The kinds of tests to the files that hold one of a name; the rules, `logic/rules`, are one program.
KINDS = {"logic": "tests/logic/*_test.cpp", "win": "tests/win/{}_test.cpp", "fuzz": "tests/fuzz/{}_fuzz.cpp", "ui": "tests/ui/test_{}.py",
         "standin": "tests/standin/test_{}.py", "package": "tests/package/test_{}.py", "manual": "tests/manual/test_{}.py"}


class TheDocuments(unittest.TestCase):
    def test_have_no_dead_link(self):
        seen = 0
        for page in PAGES:
            for target in re.findall(r"\]\(([^)#]+)(?:#[^)]*)?\)", page.read_text(encoding="utf-8")):
                if not target.startswith("http"):
                    self.assertTrue((page.parent / target).exists(), f"{page.relative_to(ROOT)} leads to {target}")
                    seen += 1
        self.assertGreater(seen, 15)

    def test_name_tests_that_there_are(self):
        seen = 0
        for page in PAGES:
            for kind, name in re.findall(r"`(win|fuzz|ui|standin|package|manual)/([a-z_0-9]+)`", page.read_text(encoding="utf-8")):
                self.assertTrue((ROOT / KINDS[kind].format(name)).exists(), f"{page.relative_to(ROOT)} names {kind}/{name}")
                seen += 1
        self.assertGreater(seen, 40)

    def test_name_cases_that_there_are(self):
        """In brackets after a test: suites and tests of it, "…" for a part of the name that is left out."""
        seen = 0
        row = re.compile(r"`(logic|win|fuzz|ui|standin)/([a-z_0-9]+)`(?: \(([^)]*)\))?")
        for kind, name, told in row.findall((ROOT / "docs/quality.md").read_text(encoding="utf-8")):
            text = "\n".join(path.read_text(encoding="utf-8") for path in ROOT.glob(KINDS[kind].format(name)))
            there = re.findall(r"^TEST(?:_[FP])?\((\w+),\s*(\w+)\)|^class (\w+)|^\s+def (?:test_)?(\w+)", text, re.M)
            # What is no plain word.
            for case in re.findall(r"…?(?:[A-Z]\w*[A-Z]\w*|[a-z]+_\w+|(?<=…)\w+)…?", told):
                pattern = re.compile(re.escape(case).replace("…", r"\w*"))
                self.assertTrue(any(pattern.fullmatch(part) for parts in there for part in parts if part),
                                f"{kind}/{name} has no {case}")
                seen += 1
        self.assertGreater(seen, 80)

    def test_name_every_task_of_the_entry_script(self):
        usage = subprocess.run([ROOT / "quellix", "help"], check=True, capture_output=True, text=True).stdout
        tasks = re.findall(r"^  (\w+) ", usage, re.M)
        self.assertGreater(len(tasks), 7)
        readme = (ROOT / "README.md").read_text(encoding="utf-8")
        for task in tasks:
            self.assertTrue(f"`{task}`" in readme or f"./quellix {task}" in readme, task)

    def test_agree_about_the_version(self):
        self.assertEqual(len(release_day(version())), 3)
        for name in ("README.md", "docs/manual/index.txt", "docs/manual/install.txt", "packaging/ReadMe.txt"):
            told = set(re.findall(r"Quellix[ -](\d+\.\d+)", (ROOT / name).read_text(encoding="utf-8")))
            self.assertEqual(told, {version()}, name)

    def test_tell_what_the_on_line_probe_sends_and_when(self):
        for name in ("README.md", "docs/manual/network.txt"):
            text = " ".join((ROOT / name).read_text(encoding="utf-8").split())
            for told in ("something failed", "one (web )?page", "title", "without a cookie", "three seconds"):
                self.assertRegex(text, told, name)

    def test_bear_the_licence(self):
        for name in ("LICENSE", "README.md", "packaging/ReadMe.txt"):
            self.assertRegex((ROOT / name).read_text(encoding="utf-8"), "MIT")
        self.assertIn("the Quellix authors", (ROOT / "LICENSE").read_text(encoding="ascii"))


if __name__ == "__main__":
    unittest.main(verbosity=2)
