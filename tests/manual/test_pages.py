"""The pages of the manual: valid, linked without a dead end, and nothing that the program shows is missing from them."""
import html
import re
import subprocess
import unittest
from pathlib import Path

from tests.harness.driver import BUILD
from tests.harness.items import ITEMS
from tests.manual.pictures import NAMES, PICTURES
from tools.cpp_text import PIECE
from tools.wine_home import ROOT

MANUAL = BUILD / "dist/manual"
DTD = Path("/usr/share/xml/w3c-sgml-lib/schema/dtd/REC-html401-19991224")
DECLARATION = Path(__file__).with_name("html4.decl")

# Texts with a blank in them that no user ever sees, by what they are.
NOT_SHOWN = {
    "src/platform/os_name.cpp",        # names of systems, to look for parts of them
    "src/platform/clsIni.cpp",         # a class that the program as it ships does not ask
    "src/platform/system_functions.h",  # names of functions and libraries
    "src/settings/schema.h",           # keys and values of the registry
    "src/cleaners/kept_folders.cpp",   # the same
    "src/cleaners/NetScapeEraser.cpp", "src/cleaners/netscape_rules.cpp", "src/cleaners/OperaClean.cpp",  # names of files and keys
    "src/cleaners/modCleaning.cpp", "src/cleaners/modCleanItems.cpp",  # for a log that is not kept
    "src/cleaners/folder_contents.cpp", "src/cleaners/wipe_file.cpp",
}
NO_MESSAGE = re.compile(
    r"\\|%|^hh:mm tt$|^\.exe m$"                        # paths, keys, formats
    r"|^no ASCII$|\(No Title Given\)"                # for those who build it; a page of the history without a title
    r"|^Program already runnning"                      # a title that no window has
    r"|^(Microsoft )?Internet Explorer$|^Quellix is made|^We believe|^MS Sans")  # titles looked for; the text about the makers


def plain(page: str) -> str:
    """What a reader sees of a page, with single blanks."""
    text = re.sub(r"<[^>]*>", "", re.sub(r"(?s)<head>.*?</head>", "", page))
    return one_blank(html.unescape(text).replace("\xa0", " "))


def one_blank(text: str) -> str:
    return re.sub(r"\s+", " ", text).strip()


def captions() -> set[str]:
    """Every text in the templates of windows, panels and menus."""
    found = set()
    for source in (ROOT / "src").glob("*/*.rc"):
        for line in source.read_text(encoding="ascii").splitlines():
            row = re.match(r'\s*(?:CAPTION|(?:DEF)?PUSHBUTTON|AUTOCHECKBOX|[LC]TEXT|GROUPBOX|CONTROL|MENUITEM|POPUP)\s+"((?:[^"]|"")*)"', line)
            if row:
                found.add(one_blank(row[1].replace("&&", "&").replace('""', '"')))
    return found - {"", "SysTray"}  # a menu that is never shown by its name


def messages() -> set[str]:
    """Every text with a blank in it that the program's sources hold, parts of a message one by one."""
    found = set()
    for source in sorted((ROOT / "src").rglob("*")):
        if source.suffix not in (".cpp", ".h") or source.relative_to(ROOT).as_posix() in NOT_SHOWN:
            continue
        code = re.sub(r"static_assert\([^;]*;|#error[^\n]*|#include[^\n]*", "", source.read_text(encoding="utf-8"))
        joined, end = "", 0
        for piece in [*PIECE.finditer(code), None]:
            between = code[end:piece.start()] if piece else "."
            if joined and (between.strip() or piece is None):  # texts one after another are one
                found.add(joined)
                joined = ""
            if piece and piece["string"]:
                joined += piece[0][1:-1].replace('\\"', '"').replace("\\r\\n", " ")
            end = piece.end() if piece else 0
    return {one_blank(text) for text in found if " " in text.strip() and not NO_MESSAGE.search(text)}


class ThePages(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.pages = {path.name: path.read_text(encoding="ascii") for path in MANUAL.glob("*.html")}
        cls.text = "\n".join(map(plain, cls.pages.values()))

    def missing(self, texts) -> list[str]:
        return sorted(text for text in texts if one_blank(text) not in self.text)

    def test_are_valid_html(self):
        catalog = BUILD / "html4.cat"
        catalog.write_text(f'OVERRIDE YES\nSGMLDECL "{DECLARATION}"\nPUBLIC "-//W3C//DTD HTML 4.01 Transitional//EN" "{DTD}/loose.dtd"\n' + "".join(
            f'PUBLIC "-//W3C//ENTITIES {name}//EN//HTML" "{DTD}/{file}"\n' for name, file in
            (("Latin1", "HTMLlat1.ent"), ("Symbols", "HTMLsymbol.ent"), ("Special", "HTMLspecial.ent"))))

        def complaints(path: Path) -> list[str]:
            return subprocess.run(["onsgmls", "-s", "-wempty", "-c", str(catalog), str(path)], check=False, text=True,
                                  stderr=subprocess.PIPE, stdout=subprocess.DEVNULL).stderr.splitlines()
        broken = BUILD / "broken.html"
        broken.write_text(self.pages["index.html"].replace("</ol>", "<hrx>"))
        self.assertTrue(complaints(broken), "the validator finds nothing, not even where there is something")
        broken.unlink()
        for name in self.pages:
            self.assertEqual(complaints(MANUAL / name), [], name)

    def test_use_letters_that_every_windows_has(self):
        for path in MANUAL.glob("*.html"):
            self.assertTrue(path.read_bytes().isascii(), path.name)

    def test_have_no_dead_link_and_are_all_reached(self):
        reached = {"index.html"}
        for name, page in self.pages.items():
            for target in re.findall(r'(?:href|src)="([^"]+)"', page):
                self.assertTrue((MANUAL / target).is_file(), f"{name} leads to {target}")
                reached.add(target)
        there = {path.relative_to(MANUAL).as_posix() for path in MANUAL.rglob("*") if path.is_file()}
        self.assertEqual(there - reached, set(), "nothing leads there")
        self.assertEqual({path.stem for path in PICTURES.glob("*.gif")}, set(NAMES))

    def test_name_every_item_with_its_log_line(self):
        page = plain(self.pages["items.html"])
        for item in ITEMS:
            for text in (item.caption, *item.lines):
                self.assertIn(one_blank(text), page)

    def test_name_every_control_and_window(self):
        self.assertGreater(len(captions()), 60)
        self.assertEqual(self.missing(captions()), [])

    def test_name_every_message(self):
        found = messages()
        self.assertLessEqual({"File List is Empty", "No item(s) has been selected", "Type mismatch", "Displaying StartUP"}, found)
        self.assertEqual(self.missing(found), [])

    def test_name_the_messages_of_the_installer(self):
        script = (ROOT / "packaging/quellix.nsi").read_text(encoding="ascii")
        told = re.findall(r'MessageBox \S+ (?:\\\n\s*)?"([^"]+)"', script)
        self.assertEqual(len(told), 3)
        for who in ("Setup", "Its removal"):
            self.assertEqual(self.missing(text.replace("${who}", who).replace("${PROGRAM}", "Quellix.exe") for text in told), [])


if __name__ == "__main__":
    unittest.main(verbosity=2)
