"""The shipped program on a Japanese Windows 98, whose functions for files all take texts of the code page."""
import unittest

from tests.standin import program_under


class Windows98Japanese(program_under.Japanese, program_under.TheWholeProgram):
    windows = "98"


if __name__ == "__main__":
    unittest.main(verbosity=2)
