"""The benchmarks, run from the root of the repository: `python3 -m bench.bench`."""
