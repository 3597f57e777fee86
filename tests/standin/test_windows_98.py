"""The shipped program on Windows 98."""
import unittest

from tests.standin import program_under


class Windows98(program_under.TheWholeProgram):
    windows = "98"


if __name__ == "__main__":
    unittest.main(verbosity=2)
