"""The check of the rooms: a tree that obeys has no findings, and each planted breach is one."""
import tempfile
import unittest
from pathlib import Path

from tools import check_rooms
from tools.cpp_text import code_of, declarations, words_of

GOOD = {
    "src/app/WinMain.cpp": '#include "erase/run.h"\n#include "platform/win32.h"\n#include "platform/runtime_error.h"\n'
                           "int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) { return erase::Run(); }\n",
    "src/app/fraMain.rc": '#include "fraMain_ids.h"\n#include "erase/fraClean_ids.h"\n',
    "src/app/fraMain_ids.h": "#pragma once\n#define IDC_cmdClean 1101\n",
    "src/erase/fraClean_ids.h": "#define IDC_lstCln 1201\n",
    "src/erase/run.h": "#pragma once\nnamespace app {\nclass frmMain;\n}\nnamespace erase {\nint Run();\nstruct Row { int a; };\n}\n",
    "src/erase/run.cpp": '#include "erase/run.h"\n#include "settings/schema.h"\n#include <windows.h>\n'
                         "namespace erase {\nnamespace {\nint Half(int a) { if (a) { return a / 2; } return 0; }\n}  // namespace\n"
                         "int Run() { return Half(::GetTickCount()) + settings::Count() + Row{1}.a; }\n}  // namespace erase\n",
    "src/settings/schema.h": '#include "platform/runtime_error.h"\nnamespace settings { int Count(); inline int two[] = {1, 2}; }\n',
    "src/platform/runtime_error.h": "// an erase run, its settings and a shred are words like others\nnamespace platform {\n"
                                    "struct ErrObject { int Number(); };\ninline ErrObject Err;\ninline int N() { return Err.Number(); }\n}\n",
    "src/platform/startup.cpp": 'extern "C" {\nextern const void* const import;\n}\nnamespace std { void __throw_bad_alloc() {} }\n',
    "companions/iea/iea.cpp": '#include "iea.h"\n#include "platform/runtime_error.h"\nint main() { return platform::N(); }\n',
}


class Rooms(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = Path(folder.name)
        for name, text in GOOD.items():
            self.put(name, text)
        for page in check_rooms.PICTURES:
            self.put(page, f"# Rooms\n\n{check_rooms.BEGIN}{check_rooms.END}\nThe end.\n")
        check_rooms.write(check_rooms.sources(self.root), self.root)

    def put(self, name: str, text: str) -> None:
        (self.root / name).parent.mkdir(parents=True, exist_ok=True)
        (self.root / name).write_text(text, encoding="utf-8")

    def findings(self, *rules: str) -> list[str]:
        return check_rooms.check(self.root, rules or check_rooms.RULES)

    def expect(self, name: str, more: str, *findings: str) -> None:
        """The findings when text is added to a file that was good, or is a file of its own."""
        old = GOOD.get(name, "")
        line = old.count("\n") + 1
        self.put(name, old + more)
        found = self.findings("includes", "words", "namespaces", "system", "errors")
        self.put(name, old)
        self.assertEqual(found, [f"{name}:{line + at}: {text}" for at, text in enumerate(findings)])

    def test_a_tree_that_obeys_has_no_findings(self):
        self.assertEqual(self.findings(), [])

    def test_an_arrow_upwards_or_sideways_is_found(self):
        for name, included in (("src/platform/runtime_error.h", "erase/run.h"), ("src/settings/schema.h", "cleaners/walk.h"),
                               ("src/erase/run.cpp", "shred/fraShred.h"), ("src/erase/run.cpp", "app/fraMain_ids.h"),
                               ("companions/iea/iea.cpp", "settings/schema.h")):
            room = name.split("/")[1] if name.startswith("src") else "companions"
            with self.subTest(name):
                self.expect(name, f'  #  include "{included}"\n', f"{room} may not include {included}")

    def test_an_include_without_its_room_and_a_folder_that_is_no_room_are_found(self):
        self.expect("src/erase/run.cpp", '#include "run.h"\n', 'the include of "run.h" names no room')
        self.expect("src/tools/x.h", "\n", "the folder tools is no room")

    def test_a_name_without_the_header_that_it_comes_from_is_found(self):
        for text, finding in (
                ("std::vector<int> a; std::vector<int> b;", "std::vector needs <vector>"),
                ("auto a = std::ranges::find(b, 1);", "std::find needs <algorithm>"),
                ("std::barrier<> a;", "of which header std::barrier is, tools/standard_headers.py does not say"),
                ("HWND a;", "HWND needs platform/win32.h"),
                ("inline int B() { return ::GetTickCount(); }", "::GetTickCount needs platform/win32.h")):
            with self.subTest(text):
                self.put("src/settings/schema.h", GOOD["src/settings/schema.h"] + f"namespace settings {{ {text} }}\n")
                self.assertEqual(self.findings("headers"), [f"src/settings/schema.h:3: {finding}"])
        self.put("src/settings/schema.h", "#include <vector>\n#include <cstring>\n// std::string\n"
                                          "namespace settings { std::vector<std::size_t> a; const char* b = \"HWND\"; }\n")
        self.put("src/erase/run.h", '#include "settings/schema.h"\n#include <windows.h>\nnamespace erase { std::vector<HWND> c; }\n')
        self.assertEqual(self.findings("headers"), [])

    def test_the_lowest_room_may_not_name_the_others_in_words(self):
        for words, name in (("// as fraClean_ids does", "fraClean_ids"), ("/* see erase/run.h */", "erase/"),
                            ('namespace platform { const char* t = "fraMain"; }', "fraMain"), ("// settings::Count", "settings::")):
            with self.subTest(words):
                self.expect("src/platform/runtime_error.h", words + "\n",
                            f"platform names {name}, which belongs to a room above it")

    def test_what_is_declared_outside_of_the_namespace_of_its_room_is_found(self):
        for text, finding in (
                ("int Loose();", "declared outside the namespace erase: int Loose()"),
                ("const int kLoose = 3;", "declared outside the namespace erase: const int kLoose = 3"),
                ("struct Loose { int a; };", "declared outside the namespace erase: struct Loose"),
                ("int Loose() { namespace_(1); return 0; }", "declared outside the namespace erase: int Loose()"),
                ('extern "C" int loose();', 'declared outside the namespace erase: extern " " int loose()'),
                ("namespace std { void loose(); }", "declared outside the namespace erase: void loose()"),
                ("namespace { int a; }", "declared in a namespace without a name that is not inside erase: int a"),
                ("namespace settings { int Loose(); }", "declared in another room, settings: int Loose()"),
                ("namespace settings { class Loose {}; }", "declared in another room, settings: class Loose")):
            with self.subTest(text):
                self.expect("src/erase/run.cpp", text + "\n", finding)
        self.expect("src/erase/run.cpp", "namespace erase::deep { int a; }\nstatic_assert(sizeof(int) == 4);\n")

    def test_a_definition_in_another_room_is_no_announcement(self):
        self.expect("src/erase/run.cpp", "namespace settings { class Named; }\n")
        self.expect("src/erase/run.cpp", "namespace settings { int n; }\n", "declared in another room, settings: int n")

    def test_a_leading_pair_of_colons_before_what_is_not_the_systems_is_found(self):
        for call in ("::Run()", "::settings::Count()", ":: strlen(0)", "a + ::memcmp(0, 0, 0)"):
            name = call.split("::")[1].strip().split("(")[0]
            with self.subTest(call):
                self.expect("src/erase/run.cpp", f"namespace erase {{ int B(int a) {{ return {call}; }} }}\n",
                            f"::{name} is no function of Windows")
        self.expect("src/erase/run.cpp", "namespace erase { int B() { return std::min(::GetTickCount(), Row<int>::value); } }\n")

    def test_the_pending_error_is_touched_in_its_mechanism_only(self):
        finding = "Err is touched outside the mechanism of run-time errors"
        for text in ("Err.Clear()", "platform::Err . Number()"):
            self.expect("src/erase/run.cpp", f"namespace erase {{ int B() {{ return {text}; }} }}\n", finding)
        self.expect("src/platform/other.cpp", "namespace platform { int B() { return Err.Number(); } }\n", finding)
        self.expect("src/platform/ErroHandle.cpp", "namespace platform { int B() { return Err.Number(); } }\n")
        self.expect("src/erase/run.cpp", "// Err.Clear() would be wrong here\n")

    def test_a_picture_that_is_not_what_the_includes_have_is_found(self):
        self.assertIn("erase       settings\n", check_rooms.draw(check_rooms.sources(self.root)))
        self.put("src/erase/more.h", '#include "cleaners/walk.h"\n')
        self.assertEqual(len(self.findings("picture")), len(check_rooms.PICTURES))
        check_rooms.write(check_rooms.sources(self.root), self.root)
        self.assertEqual(self.findings("picture"), [])
        page = (self.root / "docs/architecture.md").read_text(encoding="utf-8")
        self.assertTrue(page.startswith("# Rooms\n") and page.endswith("\nThe end.\n"), page)
        self.assertIn("erase       cleaners settings\n", page)

    def test_a_page_without_the_place_of_the_picture_is_found(self):
        self.put("docs/architecture.md", "# Rooms\n")
        self.assertEqual(self.findings("picture"), ["docs/architecture.md: the lines that mark the place of the picture are missing"])


class Text(unittest.TestCase):
    CODE = 'int a = \'{\'; // "not a text" }\nauto b = "// no comment {"; /* two\nlines { */ int c = 1\'000;\nauto d = R"x(" } // )x";\n'

    def test_code_and_words_part_a_text_and_keep_its_lines(self):
        code, words = code_of(self.CODE), words_of(self.CODE)
        self.assertEqual(code.split(), ["int", "a", "=", "'", "';", "auto", "b", "=", '"', '";', "int", "c", "=", "1'000;", "auto", "d",
                                        "=", "R", '";'])
        self.assertEqual(code.count("\n"), words.count("\n"))
        for word in ('// "not a text" }', '"// no comment {"', "lines { */", 'R"x(" } // )x"'):
            self.assertIn(word, words)
        self.assertNotIn("int", words)

    def test_declarations_are_told_with_their_place_and_namespaces(self):
        text = self.CODE + "#define MACRO {\\\n  {\nnamespace one::two {\n\nclass\n  X final : Y { int m() { return 0; } } x;\n}\nvoid f();\n"
        self.assertEqual([tuple(found) for found in declarations(text)][-3:],
                         [(9, ("one", "two"), "class X final : Y", True), (10, ("one", "two"), "x", False),
                          (12, (), "void f()", False)])


if __name__ == "__main__":
    unittest.main(verbosity=2)
