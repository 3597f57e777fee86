"""What ./quellix starts, run from the root of the repository: `python3 -m tools.run_job`."""
