"""The shipped program on Windows 95 with Internet Explorer 4 and without its desktop update."""
import unittest

from tests.standin import program_under


class Windows95(program_under.TheWholeProgram):
    windows = "95"
    stays = {"recycle bin": 2}  # the shell has no function that empties it


if __name__ == "__main__":
    unittest.main(verbosity=2)
