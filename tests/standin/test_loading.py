"""From where libraries come, and what the program asks of the system before the first of them."""
import unittest

from tests.harness.program import only
from tests.standin.program_under import UnderWindows

ALTERED_SEARCH_PATH, SYSTEM_FOLDER_ALONE = 8, 0x800
DATA_IS_NOT_RUN, TERMINATE_ON_CORRUPTION = 1, 1
HARDENING = ["SetDllDirectoryA", "SetDefaultDllDirectories", "SetProcessDEPPolicy", "HeapSetInformation"]


class Loading(UnderWindows):
    windows = "10"

    def setUp(self):
        super().setUp()
        self.start_under(only("RecentDocument"), *(f"{name} log" for name in (*HARDENING, "LoadLibraryExA")))

    def test_is_by_full_path_and_beside_the_system_s_own_libraries_alone(self):
        self.press_erase_only()
        self.wait_run_over()
        loads = self.calls("LoadLibraryExA")
        self.assertNotEqual(loads, [])
        wrong = [str(call) for call in loads
                 if not call.texts[0].lower().startswith("c:\\windows\\system32\\") or call.arguments[1:] != [0, ALTERED_SEARCH_PATH]]
        self.assertEqual(wrong, [])

    def test_begins_when_the_search_is_narrowed_data_is_not_run_and_a_damaged_heap_ends_the_program(self):
        asked = [call for call in self.calls(*HARDENING, "LoadLibraryExA") if not call.texts or "kernel32" not in call.texts[0]]
        self.assertEqual([call.function for call in asked[:4]], HARDENING)
        folder, folders, execution, heap = asked[:4]
        self.assertEqual((folder.texts, folders.arguments, execution.arguments, heap.arguments[1]),
                         ([""], [SYSTEM_FOLDER_ALONE], [DATA_IS_NOT_RUN], TERMINATE_ON_CORRUPTION))


if __name__ == "__main__":
    unittest.main(verbosity=2)
