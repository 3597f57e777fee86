"""What the tests of the panel "Shredder" share: files to shred, the file dialog, drops, and what an overwrite leaves."""
import os
import shutil
from pathlib import Path

from tests.harness.driver import PROGRAMS, compile_windows_program, wait_for
from tests.harness.part_registry import RUNNING_TITLE
from tests.harness.program import ProgramCase, only

LIST_FILE = "QUELLIX_Shred"
PBM_GETPOS = 0x0408


def ready(count: int) -> str:
    return f"There are {count} files ready for deleting!"


def overwritten_size(level: int) -> int:
    return 520 * level + 440


class ShredderCase(ProgramCase):
    """One program for a class. Each test begins with empty lists and an empty folder C:\\work."""

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls().start(only("RecentDocument"))

    def setUp(self):
        if self.d.find_windows("#32770"):  # a test before this one has failed
            self.start(only("RecentDocument"))
        self.empty_lists()
        shutil.rmtree(self.work, ignore_errors=True)
        self.work.mkdir()

    def empty_lists(self) -> None:
        d = self.d
        self.show_shredder()
        for items, button in (("lstFileShred", "cmdClear"), ("lstFolder", "cmdFolClear"), ("lstFiles", "cmdCustomDeleteAll")):
            if d.control(items).count:
                d.click(button)
                self.wait_count(items, 0)

    def show_shredder(self) -> None:
        if not self.d.control("fraShred").visible:
            self.d.click("cmdSecureDelk")
            self.d.wait_visible("fraShred")

    # Files

    @property
    def work(self) -> Path:
        return self.d.home.c / "work"

    @property
    def list_file(self) -> Path:
        return self.d.home.c / "Quellix" / LIST_FILE

    def dos(self, path: Path) -> str:
        return "C:\\" + str(path.relative_to(self.d.home.c)).replace("/", "\\")

    def files(self, *names: str, content: str = "content") -> list[str]:
        """Makes files in the folder C:\\work and gives their paths as Windows names them."""
        for name in names:
            (self.work / name).parent.mkdir(parents=True, exist_ok=True)
            (self.work / name).write_text(content)
        return [self.dos(self.work / name) for name in names]

    def many_files(self, count: int) -> list[str]:
        return self.files(*(f"{number:04}.txt" for number in range(count)))

    def left(self) -> list[str]:
        return sorted(str(f.relative_to(self.work)) for f in self.work.rglob("*"))

    def second_name(self, path: str) -> Path:
        """Another name of a file, which still shows its bytes when the first one is gone."""
        second = self.d.home.c / f"second {path.rpartition(chr(92))[2]}"
        second.unlink(missing_ok=True)
        os.link(self.d.home.c / path[3:].replace("\\", "/"), second)
        return second

    def hold(self, path: str) -> int:
        """Another program that lets nobody else open a file, until it is terminated."""
        program = compile_windows_program(PROGRAMS / "hold_file.cpp")
        (self.d.home.c / program.name).write_bytes(program.read_bytes())
        (self.d.home.c / "held").unlink(missing_ok=True)
        holder = self.d.start(rf"C:\{program.name}", f'"{path}"')
        wait_for(f"a program to hold {path}", (self.d.home.c / "held").exists)
        return holder

    # Filling the lists

    def drop(self, name: str, *paths: str) -> None:
        """Drops files and folders on the middle of a control, as Explorer does."""
        self.d.probe.ask("drop", *self.d.control(name).centre, *paths)

    def fill(self, name: str, paths: list[str]) -> None:
        before = self.count(name)
        self.drop(name, *paths)
        self.wait_count(name, before + len(paths))

    def count(self, name: str) -> int:
        return self.d.send(self.d.handle(name), 0x018B).result  # LB_GETCOUNT

    def wait_count(self, name: str, count: int, seconds: float = 120) -> None:
        wait_for(f"{count} lines in {name}", lambda: self.count(name) == count, seconds)

    def choose_files(self, button: str, *names: str) -> None:
        """Adds files of C:\\work from the file dialog."""
        self.d.click(button)
        self.d.answer_file_dialog(*(rf"C:\work\{name}" for name in names))

    # What is shown

    def press_ok(self) -> tuple[str, str, str]:
        """Answers the message box: its text, icon and title."""
        box = self.d.press_button_in_box("OK")
        self.assertEqual((box.buttons, box.owner), (["OK"], self.d.main.hwnd))
        return box.text, box.icon, box.title

    def bar(self) -> int:
        return self.d.send(self.d.handle("PbarShred"), PBM_GETPOS).result

    def wait_bar_moves(self) -> None:
        wait_for("the bar to move", lambda: self.bar() > 0, every=0.01)


EMPTY_FILE_LIST = ("File List is Empty", "warning", RUNNING_TITLE)
EMPTY_FOLDER_LIST = ("Folder List is Empty", "warning", RUNNING_TITLE)
EMPTY_COLLECTION = ("Error: Enter a file for shredding!", "error", RUNNING_TITLE)
