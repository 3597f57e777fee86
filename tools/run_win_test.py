"""Runs one Windows test program in a private Windows that pretends to be the given version.

usage: python3 -m tools.run_win_test PROGRAM.exe VERSION [--display]

For a program NAME_test.exe, tests/win/prepare/NAME_prepare.py may offer prepare(home) -> environment and check(home), which
is called afterwards and raises what it finds wrong.
"""
import contextlib
import importlib
import shutil
import sys
from pathlib import Path

from tools.one_processor import settle
from tools.wine_home import HOMES, ROOT, Display, WineHome


def load_preparation(name: str):
    if (ROOT / f"tests/win/prepare/{name}_prepare.py").exists():
        return importlib.import_module(f"tests.win.prepare.{name}_prepare")
    return None


def main() -> int:
    program, version = Path(sys.argv[1]), sys.argv[2]
    name = program.stem.removesuffix("_test")
    preparation = load_preparation(name)
    settle(HOMES)
    with contextlib.ExitStack() as stack:
        display = stack.enter_context(Display()).name if "--display" in sys.argv else None
        home = stack.enter_context(WineHome(f"{program.parents[2].name}-{name}-{version}", display))
        if version != "default":
            home.set_windows_version(version)
        place = home.c / "test"
        place.mkdir()
        shutil.copy(program, place)
        environment = {"QUELLIX_WINDOWS_VERSION": version}
        if hasattr(preparation, "prepare"):
            environment.update(preparation.prepare(home) or {})
        done = home.run(f"C:\\test\\{program.name}", "--gtest_brief=1", timeout=880, environment=environment)
        print(done.stdout, end="")
        # A program whose server is ended under it still reports 0: only its own last line tells that it came to its end.
        complete = "[  PASSED  ]" in done.stdout
        if done.returncode == 0 and not complete:
            print("the program ended before its last test")
        if done.returncode and complete and "[  FAILED  ]" not in done.stdout:
            print(f"the program ended with {done.returncode} after its last test")
        if done.returncode == 0 and hasattr(preparation, "check"):
            preparation.check(home)
    if done.returncode == 0 and complete:
        shutil.rmtree(home.base, ignore_errors=True)
    return done.returncode or not complete


if __name__ == "__main__":
    sys.exit(main())
