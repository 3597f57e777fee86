"""Out of memory: the n-th allocation of the program fails, in each scenario.

The program's allocations come as calls of malloc. A scenario makes thousands of them, so that the loop takes every one of the
first few and then chosen ones up to the last.
"""
from tests.standin.faults import Fault, record
from tests.standin.scenarios import Bench, Run

RULE = "malloc answer 0 8"
CHOSEN = 120  # of a scenario


def record_allocations(bench: Bench, scenario: str) -> Run:
    return record(bench, scenario, ["malloc"])


def failing_allocations(clean: Run, count: int = CHOSEN) -> list[Fault]:
    """Single ones, and some with the twenty after them, which what tells of the failure would need."""
    first = 1 if clean.scenario == "start" else clean.before.get("malloc", 0) + 1
    last = clean.counts.get("malloc", 0)
    step = max(1, (last - first + 1) // count)
    numbers = range(first, last + 1, step)
    return [Fault(clean.scenario, f"{RULE} only {n}" if place % 3 else f"{RULE} from {n} to {n + 20}")
            for place, n in enumerate(numbers)]
