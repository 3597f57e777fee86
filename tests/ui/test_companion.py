"""The companion iea.exe: clears the AutoComplete form entries of the protected store and of the registry, nothing else.

Wine's protected store is a stub, so a double with real entries takes its place (tests/doubles/pstorec.cpp).
"""
import subprocess
import unittest
from pathlib import Path

from tests.harness.driver import BUILD, BUILT, PROGRAMS, Desktop, compile_windows_program, wait_for
from tests.harness.part_registry import registry_file
from tests.harness.program import DONE, ProgramCase, only
from tools.wine_home import ROOT, WineHome

IEA = r"C:\Quellix\iea.exe"
CLEARED, NOT_ALL_CLEARED, NOT_ASKED = 0, 1, 2

AUTOCOMPLETE = "{E161255A-37C3-11D2-BCAA-00C04FD929DB}"
OTHER_SUBTYPE = "{11111111-2222-3333-4444-555555555555}"
MAIL = "{5E7E8100-9138-11D1-945A-00C04FC308FF}", "{220D5CC1-853A-11D0-84BC-00C04FD43F8F}"
SITES = "{5E7E8100-9138-11D1-945A-00C04FC308FF}", "{00000000-0000-0000-0000-000000000000}"
# Another type with the same subtype, and with names that look like form entries.
OTHER_TYPE = "{89C39569-6841-11D2-9F59-0000F8085266}", AUTOCOMPLETE
FORMS, OTHER_FORMS = (AUTOCOMPLETE, AUTOCOMPLETE), (AUTOCOMPLETE, OTHER_SUBTYPE)

FIELDS = ["email:StringData", "email:StringIndex", "q:StringData", "q:StringIndex", "имя:StringData", "two words:StringData"]
PASSWORDS = ["http://shop.example/login:StringData", "https://mail.example/:StringIndex"]
OTHERS = {MAIL: ["POP3 password"], SITES: ["shop.example/members:StringData", "q:StringData"], OTHER_TYPE: FIELDS}

FORM_VALUES = r"Software\Microsoft\Internet Explorer\IntelliForms\Storage1"
NEIGHBOURS = {
    rf"HKCU\{FORM_VALUES}\Sub": {"kept": "in a subkey"},
    r"HKCU\Software\Microsoft\Internet Explorer\IntelliForms\Storage2": {"password": b"\1\2\3"},
    r"HKCU\Software\Microsoft\Internet Explorer\IntelliForms": {"AskUser": 1},
    r"HKCU\Software\Microsoft\Internet Explorer\TypedURLs": {"url1": "http://site.example/"},
    r"HKCU\Software\Other": {"Storage1": "kept"},
}
KEY_READ = 0x20019


def put_double_in_place(home: WineHome) -> None:
    double = compile_windows_program(ROOT / "tests/doubles/pstorec.cpp", "-shared", "-Wl,--kill-at", "-I", str(ROOT / "src"),
                                     "-lole32", output=BUILT / "pstorec.dll")
    place = home.c / "windows/system32/pstorec.dll"
    place.unlink()  # a link that every private Windows shares
    place.write_bytes(double.read_bytes())
    (home.c / "double").mkdir()
    home.environment["WINEDLLOVERRIDES"] += ";pstorec=n"


def store_text(entries: dict[tuple[str, str], list[str]]) -> str:
    lines = []
    for (kind, subtype), names in entries.items():
        lines += [f"{kind} {subtype}", *(f"{kind} {subtype} {name}" for name in names)]
    return "".join(f"{line}\n" for line in lines)


def write_lines(file: Path, text: str) -> None:
    file.write_bytes(text.encode("utf-16-le"))


def read_lines(file: Path) -> list[str]:
    return file.read_bytes().decode("utf-16-le").splitlines() if file.exists() else []


def registry_of(text: str) -> dict[str, dict[str, str]]:
    """An exported hive: key paths to value names, as written, to their data."""
    keys: dict[str, dict[str, str]] = {}
    values: dict[str, str] = {}
    for line in text.replace("\\\n", "").splitlines():
        if line.startswith("["):
            path = line[1:-1].replace("HKEY_CURRENT_USER", "HKCU")
            # Wine makes these keys for itself at some time or other.
            values = {} if path.startswith(r"HKCU\Software\Wine\Temporary") else keys.setdefault(path, {})
        elif "=" in line:
            name, _, data = line.partition('"=' if line[0] == '"' else "=")
            values[name.lstrip('"')] = data
    return keys


class CompanionCase(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.home = cls.enterClassContext(WineHome(f"ui-companion-{cls.__name__.lower()}"))
        put_double_in_place(cls.home)
        (cls.home.c / "Quellix").mkdir()
        (cls.home.c / "Quellix/iea.exe").write_bytes((BUILD / "dist/iea.exe").read_bytes())
        locker = compile_windows_program(PROGRAMS / "with_locked_key.cpp", "-I", str(ROOT / "src"), "-ladvapi32")
        (cls.home.c / "with_locked_key.exe").write_bytes(locker.read_bytes())
        cls.import_registry(NEIGHBOURS)

    def setUp(self):
        for file in self.double.iterdir():
            file.unlink()
        self.run_program("reg", "delete", rf"HKCU\{FORM_VALUES}", "/va", "/f")
        self.import_registry({rf"HKCU\{FORM_VALUES}": {}})
        self.store({FORMS: FIELDS + PASSWORDS, **OTHERS})

    # What is laid out and read

    @property
    def double(self) -> Path:
        return self.home.c / "double"

    @classmethod
    def import_registry(cls, values: dict[str, dict]) -> None:
        file = cls.home.c / "double/preset.reg"
        file.write_bytes(registry_file(values))
        cls.home.run("regedit", "/S", r"C:\double\preset.reg", check=True)

    def store(self, entries: dict[tuple[str, str], list[str]], *orders: str) -> None:
        """What the protected store holds, and what it is to do wrong."""
        write_lines(self.double / "store.txt", store_text(entries))
        write_lines(self.double / "orders.txt", "".join(f"{order}\n" for order in orders))

    def left_in_store(self, *wanted: tuple[str, str]) -> dict[tuple[str, str], list[str]]:
        found: dict[tuple[str, str], list[str]] = {}
        for line in read_lines(self.double / "store.txt"):
            kind, subtype, *name = line.split(" ", 2)
            found.setdefault((kind, subtype), []).extend(name)
        return {key: found[key] for key in wanted} if wanted else found

    def calls(self) -> list[str]:
        return read_lines(self.double / "calls.txt")

    def registry(self) -> dict[str, dict[str, str]]:
        file = self.double / "hive.reg"
        self.home.run("reg", "export", "HKCU", r"C:\double\hive.reg", "/y", check=True)
        return registry_of(file.read_text(encoding="utf-16"))

    def form_values(self, count: int = 3) -> None:
        self.import_registry({rf"HKCU\{FORM_VALUES}": {f"{number:040X}": b"\1\2\3" for number in range(count)}})

    def files(self) -> dict[str, tuple]:
        paths = (path for path in self.home.c.rglob("*") if self.double not in (path, *path.parents))
        return {str(path): (path.lstat().st_size, path.lstat().st_mtime_ns if path.is_file() else 0) for path in paths}

    # Running it

    def run_program(self, *command: str, libraries: str | None = None) -> int:
        own = self.home.environment["WINEDLLOVERRIDES"]
        overrides = own if libraries is None else own.replace("pstorec=n", libraries)
        return self.home.run(*command, timeout=60, environment={"WINEDLLOVERRIDES": overrides}).returncode

    def iea(self, *arguments: str, libraries: str | None = None) -> int:
        """Its exit status. Every object and text of the store has to be given back, and nothing but its own calls made."""
        status = self.run_program(IEA, *arguments, libraries=libraries)
        if "PStoreCreateInstance" in self.calls():
            self.assertEqual(read_lines(self.double / "left.txt"), ["objects 0, texts 0"])
        self.assertEqual([call for call in self.calls() if call.startswith("refused")], [])
        return status

    def locked(self, access: int) -> int:
        return self.run_program(r"C:\with_locked_key.exe", FORM_VALUES, hex(access), IEA, "1")


class ClearingTheProtectedStore(CompanionCase):
    def test_takes_the_form_entries_and_leaves_passwords_and_every_other_type(self):
        self.assertEqual(self.iea("1"), CLEARED)
        self.assertEqual(self.left_in_store(), {FORMS: PASSWORDS, **OTHERS})

    def test_takes_the_entries_of_every_subtype_and_leaves_the_subtypes(self):
        self.store({FORMS: FIELDS, OTHER_FORMS: FIELDS + PASSWORDS, **OTHERS})
        self.assertEqual(self.iea("1"), CLEARED)
        self.assertEqual(self.left_in_store(), {FORMS: [], OTHER_FORMS: PASSWORDS, **OTHERS})

    def test_skips_no_entry_of_many(self):
        fields = [f"field {number}:String{kind}" for number in range(100) for kind in ("Data", "Index")]
        self.store({FORMS: fields[:100] + PASSWORDS + fields[100:]})
        self.assertEqual(self.iea("1"), CLEARED)
        self.assertEqual(self.left_in_store(FORMS), {FORMS: PASSWORDS})

    def test_opens_only_lists_of_the_autocomplete_type(self):
        self.iea("1")
        self.assertEqual({call.split()[1] for call in self.calls() if call.startswith("Enum")}, {AUTOCOMPLETE})

    def test_is_done_when_there_is_no_entry(self):
        self.store({FORMS: [], **OTHERS})
        self.assertEqual(self.iea("1"), CLEARED)
        self.assertEqual(self.left_in_store(), {FORMS: [], **OTHERS})

    def test_is_done_when_the_store_has_no_such_type(self):
        self.store(OTHERS)
        self.assertEqual(self.iea("1"), CLEARED)
        self.assertEqual(self.left_in_store(), OTHERS)

    def test_is_done_when_the_system_has_no_protected_store(self):
        self.form_values()
        self.assertEqual(self.iea("1", libraries="pstorec="), CLEARED)
        self.assertEqual(self.registry()[rf"HKCU\{FORM_VALUES}"], {})
        self.assertEqual(self.calls(), [])

    def test_is_done_when_the_system_has_only_the_library_of_the_store(self):
        # Wine's own: it opens, and whatever it is asked for is not implemented.
        self.form_values()
        self.assertEqual(self.iea("1", libraries="pstorec=b"), CLEARED)
        self.assertEqual(self.registry()[rf"HKCU\{FORM_VALUES}"], {})
        self.assertEqual(self.calls(), [])

    def test_takes_no_library_from_its_own_folder_or_the_current_one(self):
        # A library of that name that would fail; the system folder has the right one.
        planted = self.home.c / "Quellix/pstorec.dll"
        planted.write_bytes(b"no library")
        self.addCleanup(planted.unlink)
        done = self.home.run(IEA, "1", cwd=str(planted.parent), timeout=60)
        self.assertEqual((done.returncode, self.left_in_store(FORMS)), (CLEARED, {FORMS: PASSWORDS}))

    def test_goes_on_after_an_entry_that_cannot_be_deleted_and_tells(self):
        self.store({FORMS: FIELDS, OTHER_FORMS: FIELDS}, "delete q:StringData")
        self.form_values()
        self.assertEqual(self.iea("1"), NOT_ALL_CLEARED)
        self.assertEqual(self.left_in_store(), {FORMS: ["q:StringData"], OTHER_FORMS: ["q:StringData"]})
        self.assertEqual(self.registry()[rf"HKCU\{FORM_VALUES}"], {})

    def test_goes_on_after_a_subtype_that_gives_no_list_and_tells(self):
        self.store({FORMS: FIELDS, OTHER_FORMS: FIELDS}, f"items {AUTOCOMPLETE}")
        self.assertEqual(self.iea("1"), NOT_ALL_CLEARED)
        self.assertEqual(self.left_in_store(), {FORMS: FIELDS, OTHER_FORMS: []})

    def test_tells_when_the_store_does_not_open_or_gives_no_list_of_subtypes_and_clears_the_registry(self):
        for order in ("create", "subtypes"):
            with self.subTest(order):
                self.store({FORMS: FIELDS}, order)
                self.form_values()
                self.assertEqual(self.iea("1"), NOT_ALL_CLEARED)
                self.assertEqual(self.left_in_store(FORMS), {FORMS: FIELDS})
                self.assertEqual(self.registry()[rf"HKCU\{FORM_VALUES}"], {})

    def test_ends_with_a_list_however_the_list_ends(self):
        for order in ("endless", "end fails"):
            with self.subTest(order):
                self.store({FORMS: FIELDS + PASSWORDS, OTHER_FORMS: FIELDS}, order)
                self.assertEqual(self.iea("1"), CLEARED)
                self.assertEqual(self.left_in_store(), {FORMS: PASSWORDS, OTHER_FORMS: []})


class ClearingTheRegistry(CompanionCase):
    def check_only_values_went(self, before: dict[str, dict[str, str]]) -> None:
        self.assertEqual(self.registry(), before | {rf"HKCU\{FORM_VALUES}": {}})

    def test_takes_every_value_of_the_key_and_leaves_its_subkeys_and_every_other_key(self):
        self.import_registry({rf"HKCU\{FORM_VALUES}": {
            "0A1B": b"\1\2", "": "the default value", "number": 7, "text": "x", "two words": "y", "Я и ты": "outside",
            "日本語": b"\3", "?": "a", "??????": "b", "back\\slash": "c", "n" * 255: "long"}})
        before = self.registry()
        self.assertEqual(len(before[rf"HKCU\{FORM_VALUES}"]), 11)
        self.assertEqual(self.iea("1"), CLEARED)
        self.check_only_values_went(before)

    def test_takes_1000_values(self):
        self.form_values(1000)
        before = self.registry()
        self.assertEqual(len(before[rf"HKCU\{FORM_VALUES}"]), 1000)
        self.assertEqual(self.iea("1"), CLEARED)
        self.check_only_values_went(before)

    def test_is_done_when_there_is_no_such_key_and_makes_none(self):
        self.run_program("reg", "delete", rf"HKCU\{FORM_VALUES}", "/f")
        self.addCleanup(self.import_registry, NEIGHBOURS)
        before = self.registry()
        self.assertNotIn(rf"HKCU\{FORM_VALUES}", before)
        self.assertEqual(self.iea("1"), CLEARED)
        self.assertEqual(self.registry(), before)

    def test_tells_of_a_key_that_cannot_be_written_and_clears_the_store(self):
        self.form_values()
        before = self.registry()
        self.assertEqual(self.locked(KEY_READ), NOT_ALL_CLEARED)
        self.assertEqual(self.registry(), before)
        self.assertEqual(self.left_in_store(FORMS), {FORMS: PASSWORDS})

    def test_tells_of_a_key_that_cannot_be_read_and_clears_the_store(self):
        self.form_values()
        before = self.registry()
        self.assertEqual(self.locked(0), NOT_ALL_CLEARED)
        self.assertEqual(self.registry(), before)
        self.assertEqual(self.left_in_store(FORMS), {FORMS: PASSWORDS})

    def test_is_done_with_a_key_that_cannot_be_written_when_it_holds_nothing(self):
        self.assertEqual(self.locked(KEY_READ), CLEARED)


class TheCompanion(CompanionCase):
    def test_does_nothing_at_all_without_the_argument_1(self):
        self.form_values()
        registry, files = self.registry(), self.files()
        for arguments in ((), ("0",), ("2",), ("11",), ("01",), ("1", "2"), ("2", "1"), ("-1",), ("/1",), ("1 2",), ("one",)):
            with self.subTest(arguments):
                self.assertEqual(self.iea(*arguments), NOT_ASKED)
                self.assertEqual(self.calls(), [])
        self.assertEqual(self.registry(), registry)
        self.assertEqual(self.files(), files)
        self.assertEqual(self.left_in_store(), {FORMS: FIELDS + PASSWORDS, **OTHERS})

    def test_clears_from_a_folder_with_a_blank_in_its_name(self):
        folder = self.home.c / "Program Files/my 1"
        folder.mkdir(parents=True)
        (folder / "iea.exe").write_bytes((BUILD / "dist/iea.exe").read_bytes())
        self.assertEqual(self.run_program(r"C:\Program Files\my 1\iea.exe"), NOT_ASKED)
        self.assertEqual(self.run_program(r"C:\Program Files\my 1\iea.exe", "1"), CLEARED)
        self.assertEqual(self.left_in_store(FORMS), {FORMS: PASSWORDS})

    def test_leaves_no_file_and_no_value_behind(self):
        self.form_values()
        registry, files = self.registry(), self.files()
        self.assertEqual(self.iea("1"), CLEARED)
        self.assertEqual(self.files(), files)
        self.assertEqual(self.registry(), registry | {rf"HKCU\{FORM_VALUES}": {}})

    def test_finds_nothing_left_the_second_time(self):
        self.form_values()
        self.assertEqual(self.iea("1"), CLEARED)
        (self.double / "calls.txt").unlink()
        self.assertEqual(self.iea("1"), CLEARED)
        self.assertEqual([call for call in self.calls() if call.startswith("DeleteItem")], [])

    def test_says_in_its_resources_what_it_is(self):
        self.assertIn("Quellix AutoComplete companion".encode("utf-16-le"), (BUILD / "dist/iea.exe").read_bytes())

    def test_takes_nothing_of_the_library_that_windows_come_from(self):
        tables = subprocess.run(["i686-w64-mingw32-objdump", "-p", str(BUILD / "dist/iea.exe")], check=True,
                                capture_output=True, text=True).stdout
        libraries = {line.split()[-1].lower() for line in tables.splitlines() if "DLL Name:" in line}
        self.assertEqual(libraries, {"kernel32.dll", "advapi32.dll", "msvcrt.dll"})


class OnTheScreen(unittest.TestCase):
    def test_shows_no_window_and_ends_by_itself_whatever_happens(self):
        with Desktop("companion", start=False, prepare=put_double_in_place) as d:
            double = d.home.c / "double"
            for order, status in (("", CLEARED), ("create", NOT_ALL_CLEARED), ("delete email:StringData", NOT_ALL_CLEARED)):
                with self.subTest(order):
                    write_lines(double / "store.txt", store_text({FORMS: FIELDS}))
                    write_lines(double / "orders.txt", f"{order}\n")
                    (double / "calls.txt").unlink(missing_ok=True)
                    (double / "hold").touch()
                    before = {window.hwnd for window in d.find_windows()}
                    pid = d.start(IEA, "1")
                    wait_for("the store to be opened", (double / "calls.txt").exists)
                    self.assertIsNone(d.ended(pid))
                    self.assertEqual({window.hwnd for window in d.find_windows()} - before, set())
                    self.assertEqual(d.find_windows(pid=pid), [])
                    (double / "hold").unlink()
                    self.assertEqual(d.wait_ended(pid), status)
                    self.assertEqual({window.hwnd for window in d.find_windows()} - before, set())


class StartedByTheItem(ProgramCase):
    options = {"prepare": put_double_in_place}

    def test_clears_the_store_and_the_registry_behind_the_run(self):
        d = self.d
        double = d.home.c / "double"
        write_lines(double / "store.txt", store_text({FORMS: FIELDS + PASSWORDS, **OTHERS}))
        d.reg_set("HKCU", FORM_VALUES, "0A1B", "x")
        # Another item clears this key with everything in it; here it is left, so that the companion alone was at work.
        passwords = FORM_VALUES.replace("Storage1", "Storage2")
        d.reg_set("HKCU", passwords, "0C2D", "y")
        self.start(only("ClearAutoComplete"))
        self.press_erase_only()
        self.assertEqual(self.wait_run_over()[-1], DONE[-1])
        # Written when it ends.
        wait_for("the end of the companion", (double / "left.txt").exists)
        self.assertEqual(read_lines(double / "store.txt"), store_text({FORMS: PASSWORDS, **OTHERS}).splitlines())
        self.assertEqual(d.reg_list("HKCU", FORM_VALUES)["values"], {})
        self.assertEqual(list(d.reg_list("HKCU", passwords)["values"]), ["0C2D"])


class MissingInAFolderWithABlank(ProgramCase):
    options = {"files": {"My Programs/Quellix.exe": BUILD / "dist/Quellix.exe"}, "program": r"My Programs\Quellix.exe"}

    def test_starts_no_other_program_of_that_beginning(self):
        traps = [self.d.home.c / "Quellix/My.exe", self.d.home.c / "Quellix/My Programs/iea.exe 1.exe"]
        for trap in traps:
            trap.write_bytes(compile_windows_program(PROGRAMS / "witness.cpp", "-mwindows").read_bytes())
        self.start(only("ClearAutoComplete"))
        self.press_erase_only()
        self.assertEqual(self.wait_run_over()[-2:], DONE)
        self.end()
        for trap in traps:
            self.assertFalse(trap.with_name(trap.name + ".txt").exists(), trap)


if __name__ == "__main__":
    unittest.main(verbosity=2)
