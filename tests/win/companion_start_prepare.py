"""A program that tells how it was started, and a proxy that has every page of the world."""
import shutil
import sys
from pathlib import Path

HERE = Path(__file__).resolve().parent
sys.path[:0] = [str(HERE), str(HERE.parent / "ui")]
from erro_handle_prepare import prepare as go_online  # noqa: E402
from probe import compile_windows_program  # noqa: E402


def prepare(home):
    shutil.copy2(compile_windows_program(HERE.parent / "ui/witness.cpp", "-mwindows"), home.c / "witness.exe")
    return go_online(home)
