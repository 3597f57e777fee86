"""The rules of the stand-in, shown on a small program of their own (sample.cpp): each takes hold, and none in silence."""
import os
import shutil
import subprocess
import unittest
import unittest.mock

from tests.harness.driver import wait_for
from tests.harness.probe import ProbeError
from tests.standin import rules
from tests.standin.rules import table
from tests.standin.standin import LIBRARY, Refused, StandInDesktop
from tests.standin.windows import SYMLINK, WINDOWS, Systems, called_by

SAMPLE = r"C:\Quellix\sample.exe"
THERE, NOT_THERE = r"C:\work\a.txt", r"C:\work\none.txt"


class SampleCase(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        files = {"sample.exe": LIBRARY.with_name("sample.exe")}
        cls.d = cls.enterClassContext(StandInDesktop(f"standin-{cls.__name__}".lower(), start=False, files=files))

    def setUp(self):
        self.work = self.d.home.c / "work"
        shutil.rmtree(self.work, ignore_errors=True)
        (self.work / "folder").mkdir(parents=True)
        (self.work / "a.txt").write_text("x")

    def run_sample(self, rules: list[str], *commands: str, code: int = 0) -> list[str]:
        """What each command of the sample answered under these rules."""
        answers = self.d.home.c / "Quellix/answers.txt"
        answers.unlink(missing_ok=True)
        self.assertEqual(self.d.wait_ended(self.d.start_under(rules, SAMPLE, " ".join(commands))), code)
        return answers.read_text().splitlines()

    def seen(self, *functions: str) -> list[str]:
        return [str(call) for call in self.d.calls(*functions)]

    def check_refused(self, rule: str, *reason: str) -> None:
        with self.assertRaises(Refused) as refused:
            self.run_sample([rule], "attributes", THERE)
        for words in (rule, *reason):
            self.assertIn(words, str(refused.exception))
        self.assertEqual(self.d.processes("sample.exe"), [])


class ARule(SampleCase):
    def test_makes_a_function_fail_from_one_call_to_another_with_its_own_failing_result(self):
        commands = ["delete", NOT_THERE, "delete", THERE, "delete", NOT_THERE, "delete", NOT_THERE]
        self.assertEqual(self.run_sample(["DeleteFileW fail 5 from 2 to 3"], *commands), ["0 2", "0 5", "0 5", "0 2"])
        self.assertTrue((self.work / "a.txt").exists())
        self.assertEqual([call.rule for call in self.d.calls("DeleteFileW")],
                         ["", "DeleteFileW fail 5 from 2 to 3", "DeleteFileW fail 5 from 2 to 3", ""])
        answers = self.run_sample(["GetFileAttributesA fail 5 only 1", "CreateFileA fail 32", "RegDeleteKeyA fail 6"],
                                  "attributes", THERE, "attributes", THERE, "open", THERE, "deletekey", r"Software\Sample")
        self.assertEqual(answers, ["-1 5", "32 5", "0 32", "6"])
        self.assertEqual(self.run_sample(["NtClose fail 5 only 1"], "close", "first", "close", "second"), ["5", "closed"])

    def test_fails_with_a_given_result_or_answers_one(self):
        rules = ["GetFileAttributesA fail 3 0x10 only 1", "GetFileAttributesA answer 0x410"]
        self.assertEqual(self.run_sample(rules, "attributes", THERE, "attributes", THERE), ["16 3", "1040 0"])

    def test_is_about_the_calls_with_a_text_only_and_counts_these(self):
        rules = ["GetFileAttributesA fail 5 only 2 with A.TXT"]
        answers = self.run_sample(rules, *["attributes", THERE] * 2, *["attributes", r"C:\work"] * 2, "attributes", THERE)
        self.assertEqual([answer.split()[0] for answer in answers], ["32", "-1", "16", "16", "32"])

    def test_takes_a_function_away_that_is_bound_late(self):
        self.assertEqual(self.run_sample(["DeleteFileW missing"], "delete", THERE), ["missing"])
        self.assertTrue((self.work / "a.txt").exists())
        asked = [call for call in self.d.calls("GetProcAddress") if call.texts == ["DeleteFileW"]]
        self.assertEqual([(call.result, call.error) for call in asked], [(0, 127)])

    def test_makes_a_function_slow_or_hang_for_a_while_and_then_does_it(self):
        self.assertEqual(self.run_sample(["DeleteFileW slow 300"], "delete", THERE), ["1 0"])
        (deleted,) = self.d.calls("DeleteFileW")
        self.assertGreaterEqual(deleted.took, 250)  # the clock of the calls is coarse
        self.assertEqual(self.run_sample(["DeleteFileW hang 300"], "delete", NOT_THERE), ["0 2"])
        hangs, deleted = self.d.calls("DeleteFileW")
        self.assertEqual((hangs.result, deleted.result, hangs.number), (None, 0, deleted.number))
        self.assertGreaterEqual(deleted.took - hangs.took, 250)

    def test_makes_a_function_hang_for_ever(self):
        process = self.d.start_under(["GetFileAttributesA hang"], SAMPLE, f"attributes {THERE}")
        self.assertIsNone(self.d.wait_call("GetFileAttributesA").result)
        self.assertIsNone(self.d.ended(process))
        self.d.terminate(process)

    def test_of_the_c_runtime_leaves_the_arguments_to_the_caller(self):
        self.assertEqual(self.run_sample(["malloc log", "free log"], "allocate", "4321"), ["memory"])
        self.assertEqual([call.arguments for call in self.d.calls("malloc") if call.arguments == [4321]], [[4321]])

    def test_shows_an_end_that_does_not_return(self):
        self.run_sample(["ExitProcess log"], "end", "7", code=7)
        self.assertEqual(self.seen("ExitProcess"), ["ExitProcess(0x7) = None, error 0 []"])

    def test_leaves_everything_else_as_it_is(self):
        self.assertEqual(self.run_sample([], "delete", THERE, "attributes", NOT_THERE), ["1 0", "-1 2"])
        self.assertEqual(self.d.calls("DeleteFileW", "GetFileAttributesA"), [])


class ASpecialRule(SampleCase):
    def test_tells_a_version(self):
        for name, windows in WINDOWS.items():
            with self.subTest(name):
                major, minor, build, platform = (int(number, 0) for number in windows.version.split())
                self.assertEqual(self.run_sample([f"version {windows.version}"], "version", "-"),
                                 [f"{major}.{minor}.{build}/{platform}"])

    def test_lets_time_pass_faster(self):
        (passed,) = self.run_sample(["clock 20"], "wait", "10000")
        self.assertGreaterEqual(int(passed), 9000)
        self.assertLess(int(passed), 100000)

    def test_tags_links_and_removes_one_as_a_link(self):
        os.symlink(self.work / "folder", self.work / "link")
        (self.work / "folder/kept.txt").write_text("x")
        answers = self.run_sample([f"links {SYMLINK:#x}"], "list", r"C:\work\*", "remove", r"C:\work\folder",
                                  "remove", r"C:\work\link")
        self.assertIn(f"link={SYMLINK >> 24} ", answers[0])
        self.assertEqual(answers[1:], ["0 145", "1 0"])
        self.assertEqual(sorted(entry.name for entry in self.work.rglob("*")), ["a.txt", "folder", "kept.txt"])
        listed = [call for call in self.d.calls("FindNextFileA") if str(call.arguments[1]).startswith('"link"')]
        self.assertEqual([call.arguments[1] for call in listed], [f'"link" 1040 {SYMLINK:#x}'])

    def test_opens_no_folder_and_no_file_whose_deletion_is_shared(self):
        rules = ["no-folder-handles", "no-shared-deletion"]
        self.assertEqual(self.run_sample(rules, "open", THERE, "open", "+" + THERE, "open", r"C:\work", "open", NOT_THERE),
                         ["opened", "0 87", "0 5", "0 2"])
        self.assertEqual(self.run_sample([], "open", "+" + THERE, "open", r"C:\work"), ["opened"] * 2)

    def test_deletes_a_key_with_its_subkeys(self):
        self.assertEqual(self.run_sample([], "deletekey", r"Software\Sample"), ["5"])
        self.assertEqual(self.run_sample(["keys-with-subkeys"], "deletekey", r"Software\Sample"), ["0"])
        self.assertIsNone(self.d.reg_list("HKCU", r"Software\Sample"))


class WhatCannotTakeHold(SampleCase):
    def test_is_an_error_and_the_program_does_not_run(self):
        cases = {
            "DeleteFileX fail 5": "no such function",
            "SetWindowPlacement hang": "neither imports it nor names it",
            "CreateFileA missing": "would not be loaded",
            "DeleteFileW fial 5": "'fial'",
            "DeleteFileW fail": "has 0 numbers and needs 1 to 2",
            "DeleteFileW fail five": "cannot be understood",
            "DeleteFileW fail 5 sometimes": "cannot be understood",
            "DeleteFileW fail 5 only": "cannot be understood",
            "DeleteFileW log 5": "has 1 numbers and needs 0",
            "GetTickCount fail 5": "no failing result",
            "links": "has 0 numbers and needs 1",
        }
        for rule, reason in cases.items():
            with self.subTest(rule):
                self.check_refused(rule, reason)

    def test_is_told_with_its_line(self):
        with self.assertRaisesRegex(Refused, "rule 2: DeleteFileX log"):
            self.run_sample(["DeleteFileW log", "DeleteFileX log"], "attributes", THERE)

    def test_keeps_the_program_from_running_when_only_the_library_sees_it(self):
        with unittest.mock.patch.dict(rules.VERBS, {"explode": (0, 0)}), self.assertRaisesRegex(ProbeError, "not loaded"):
            self.run_sample(["DeleteFileW explode"], "attributes", THERE)
        wait_for("the end of the program", lambda: self.d.processes("sample.exe") == [])


class TheTable(unittest.TestCase):
    """functions.txt against the compiler's import libraries, whose decorated names end in the bytes of the arguments."""


    def decorated(self, library: str) -> dict[str, int]:
        names = subprocess.run(["i686-w64-mingw32-nm", f"/usr/i686-w64-mingw32/lib/lib{library}.a"],
                               capture_output=True, text=True).stdout.split()
        found = [name.removeprefix("__imp__").split("@") for name in names if name.startswith("__imp__")]
        return {parts[0]: int(parts[1]) for parts in found if len(parts) == 2 and parts[1].isdigit()}

    def test_has_the_right_number_of_arguments_for_every_function(self):
        libraries: dict[str, dict[str, str]] = {}
        for name, (library, arguments, _) in table().items():
            libraries.setdefault(library, {})[name] = arguments
        unknown = []
        for library, rows in libraries.items():
            bytes_of = self.decorated(library) if library not in ("msvcrt", "pstorec") else {}
            counted = {name: 0 if arguments == "-" else 4 * len(arguments) for name, arguments in rows.items()}
            wrong = {name: size for name, size in counted.items() if bytes_of.get(name, size) != size}
            self.assertEqual(wrong, {}, library)
            unknown += [name for name in rows if library != "msvcrt" and name not in bytes_of]
        self.assertEqual(sorted(unknown), ["PStoreCreateInstance", "RegisterServiceProcess"])

    def test_knows_the_letters_of_all_arguments(self):
        letters = set("-.dswSWfFuor123456789")
        self.assertEqual([name for name, row in table().items() if set(row.kinds) - letters], [])

    def test_holds_every_function_that_the_program_can_call(self):
        data = {"__initenv", "__mb_cur_max", "_iob"}  # variables of the C runtime
        self.assertEqual([f for f in called_by() if f.name not in table() and f.name not in data], [])
        self.assertGreater(len(called_by()), 150)

    def test_and_the_floor_lists_tell_of_every_windows_what_it_lacks(self):
        systems = Systems()
        lists = {name: systems.rules(name) for name in WINDOWS}
        lacks = {name: {rule.split()[0] for rule in found if rule.endswith(" missing")} for name, found in lists.items()}
        self.assertIn("GetFinalPathNameByHandleW", lacks["XP"])
        self.assertNotIn("GetFinalPathNameByHandleW", lacks["7"])
        self.assertEqual([name for name in WINDOWS if "RegisterServiceProcess" not in lacks[name]], ["95", "98"])
        self.assertIn("CreateFileW fail 120", lists["98"])
        self.assertNotIn("CreateFileW fail 120", lists["NT 4"])
        self.assertIn("no-shared-deletion", lists["95"])


if __name__ == "__main__":
    unittest.main(verbosity=2)
