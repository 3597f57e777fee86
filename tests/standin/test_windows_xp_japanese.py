"""The shipped program on a Japanese Windows XP, which has wide functions and the same code page."""
import unittest

from tests.standin import program_under


class WindowsXpJapanese(program_under.Japanese, program_under.TheWholeProgram):
    windows = "XP"


if __name__ == "__main__":
    unittest.main(verbosity=2)
