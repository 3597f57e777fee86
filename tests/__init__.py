"""The tests: packages run from the root of the repository, `python3 -m unittest tests.ui.test_run`."""
