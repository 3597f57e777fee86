"""The linter: what it finds in sources that are looked at as one, how it parts them, and what it need not look at again."""
import tempfile
import unittest
from pathlib import Path

from tools import lint
from tools.wine_home import BUILD

FLAGS = ("-std=c++20",)
NULL = "int Of(int a) {\n  int* p = nullptr;\n  if (a > 3) p = &a;\n  return *p;\n}\n"
GOOD = "namespace { int Half(int a) { return a / 2; } }\nint Good(int a) { return Half(a); }\n"


class Lint(unittest.TestCase):
    def setUp(self):
        BUILD.mkdir(exist_ok=True)
        folder = tempfile.TemporaryDirectory(dir=BUILD)  # below the settings of clang-tidy
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name) / "src"
        self.folder.mkdir()

    def sources(self, **texts: str) -> list[Path]:
        for name, text in texts.items():
            (self.folder / f"{name}.cpp").write_text(text)
        return [self.folder / f"{name}.cpp" for name in texts]

    def findings(self, **texts: str) -> str:
        return lint.tidy(FLAGS, self.sources(**texts), self.folder / "unit.cpp")

    def test_finds_nothing_in_good_sources(self):
        self.assertEqual(self.findings(one=GOOD, two=GOOD.replace("Half", "Third").replace("Good", "Better")), "")

    def test_follows_the_paths_through_each_of_several_sources(self):
        found = self.findings(good=GOOD, null=NULL)
        self.assertIn("null.cpp:4:10: error: Dereference of null pointer", found)

    def test_parts_sources_that_have_something_of_the_same_name(self):
        found = self.findings(one=GOOD, two=GOOD.replace("Good", "Better"), three=NULL)
        self.assertIn("three.cpp:4:10: error: Dereference of null pointer", found)
        self.assertNotIn("redefinition", found)

    def test_tells_what_cannot_be_compiled(self):
        self.assertIn("odd.cpp:1:1: error: ", self.findings(good=GOOD, odd="odd\n"))

    def test_looks_again_when_a_header_or_a_flag_has_changed(self):
        (self.folder / "a.h").write_text('#include "b.h"\n')
        (self.folder / "b.h").write_text("int B();\n")
        files = self.sources(one='#include "a.h"\n')
        before = lint.stamp(FLAGS, files)
        self.assertEqual(lint.stamp(FLAGS, files), before)
        self.assertNotEqual(lint.stamp((*FLAGS, "-DX"), files), before)
        (self.folder / "b.h").write_text("int C();\n")
        self.assertNotEqual(lint.stamp(FLAGS, files), before)

    def test_takes_of_a_compilation_what_says_how_it_is_read(self):
        command = r'/usr/bin/g++ -DA=\"b\" -I/x/src -Os -fno-threadsafe-statics -ffile-prefix-map=/x=. -std=c++20 -o a.obj -c /x/src/a.cpp'
        self.assertEqual(lint.flags_of(command), ('-DA="b"', "-I/x/src", "-fno-threadsafe-statics", "-std=c++20"))


if __name__ == "__main__":
    unittest.main(verbosity=2)
