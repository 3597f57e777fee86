"""A program that tells how it was started, and a proxy that has every page of the world."""
import shutil

from tests.harness.probe import PROGRAMS, compile_windows_program
from tests.win.prepare.erro_handle_prepare import prepare as go_online


def prepare(home):
    shutil.copy2(compile_windows_program(PROGRAMS / "witness.cpp", "-mwindows"), home.c / "witness.exe")
    return go_online(home)
