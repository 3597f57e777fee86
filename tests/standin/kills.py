"""Kill anywhere: the program is ended at each of its writes, in each scenario, and started again.

    ./quellix test --faults          does it at every write, after the calls that fail
    QUELLIX_KILL='save: RegSetValueExA kill only 7' python3 -B -m tests.standin.kills     does it at one
"""
import os
import random
import sys
from typing import NamedTuple

from tests.standin.faults import record
from tests.standin.rules import called_in
from tests.standin.scenarios import SCENARIOS, Bench, Run, damaged
from tests.standin.windows import Systems
from tools.wine_home import BUILD

# What changes files and the registry; a number names the argument that says how much is written.
WRITES = {"WriteFile": 2, "RegSetValueExA": 5, "CreateFileW": None, "DeleteFileW": None, "RemoveDirectoryW": None,
          "MoveFileExW": None, "SetFileAttributesW": None, "RegDeleteValueA": None, "RegDeleteKeyA": None, "SHDeleteKeyA": None,
          "RegCreateKeyExA": None, "FlushFileBuffers": None, "DeleteUrlCacheEntryA": None, "CreateFileA": None,
          "DeleteFileA": None, "MoveFileA": None, "RemoveDirectoryA": None, "SetFileAttributesA": None}
CUT_IN_HALF = {"WriteFile"}  # a value of the registry is written as a whole or not at all


class Kill(NamedTuple):
    scenario: str
    rule: str

    def __str__(self) -> str:
        return f"{self.scenario}: {self.rule}"


def writes() -> list[str]:
    called = called_in((BUILD / "dist/Quellix.exe").read_bytes())
    return [name for name in WRITES if name in called]


def record_writes(bench: Bench, scenario: str) -> Run:
    return record(bench, scenario, writes())


def kills(clean: Run) -> list[Kill]:
    """At every write of the scenario; those of the start in the scenario that does nothing else."""
    found = []
    for name in writes():
        before = 0 if clean.scenario == "start" else clean.before.get(name, 0)
        for number in range(before + 1, clean.counts.get(name, 0) + 1):
            found.append(Kill(clean.scenario, f"{name} kill only {number}"))
            if name in CUT_IN_HALF:
                found.append(Kill(clean.scenario, f"{name} kill {WRITES[name]} only {number}"))
    return found


def kill(bench: Bench, one: Kill, clean: Run) -> tuple[list[str], str]:
    """What is wrong after the kill and after the next start; and the call at which it ended."""
    bench.restore()
    old, listed = bench.state(), SCENARIOS[one.scenario].listed
    run = bench.run(one.scenario, one.rule, clean=clean, restored=False)
    problems = run.problems
    again = bench.run("start", restored=False)
    problems += [f"the next start: {problem}" for problem in again.problems + damaged(old, again.state, clean, listed)]
    if not bench.was_shown:
        problems.append("the next start shows no window")
    return problems, run.hit


def windows_98(bench: Bench) -> None:
    """From now on the program is under Windows 98, which replaces no file in one step."""
    bench.system = Systems().rules("98")


def sample(cleans: dict[str, Run], seed: int) -> list[Kill]:
    """All kills in an order drawn by a number."""
    found = [one for clean in cleans.values() for one in kills(clean)]
    random.Random(seed).shuffle(found)
    return found


def main() -> int:
    scenario, _, rule = os.environ["QUELLIX_KILL"].partition(": ")
    with Bench("kill") as bench:
        bench.set_up_profile()
        problems, hit = kill(bench, Kill(scenario, rule), record_writes(bench, scenario))
    print(hit, problems or "nothing is wrong", sep="\n")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
