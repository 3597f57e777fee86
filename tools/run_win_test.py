"""Runs one Windows test program in a private Windows that pretends to be the given version.

usage: run_win_test.py PROGRAM.exe VERSION SOURCE_FOLDER [--display]

A file NAME_prepare.py in SOURCE_FOLDER, where the program is NAME_test.exe, may offer prepare(home) -> environment and
check(home), which is called afterwards and raises what it finds wrong.
"""
import contextlib
import importlib.util
import shutil
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent))
from wine_home import Display, WineHome  # noqa: E402


def load_preparation(folder: Path, name: str):
    source = folder / f"{name}_prepare.py"
    if not source.exists():
        return None
    spec = importlib.util.spec_from_file_location(source.stem, source)
    module = importlib.util.module_from_spec(spec)
    spec.loader.exec_module(module)
    return module


def main() -> int:
    program, version, folder = Path(sys.argv[1]), sys.argv[2], Path(sys.argv[3])
    name = program.stem.removesuffix("_test")
    preparation = load_preparation(folder, name)
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
        done = home.run(f"C:\\test\\{program.name}", "--gtest_brief=1", timeout=280, environment=environment)
        print(done.stdout, end="")
        # A program whose server is ended under it still reports 0: only its own last line tells that it came to its end.
        complete = "[  PASSED  ]" in done.stdout
        if done.returncode == 0 and not complete:
            print("the program ended before its last test")
        if done.returncode == 0 and hasattr(preparation, "check"):
            preparation.check(home)
    if done.returncode == 0 and complete:
        shutil.rmtree(home.base, ignore_errors=True)
    return done.returncode or not complete


if __name__ == "__main__":
    sys.exit(main())
