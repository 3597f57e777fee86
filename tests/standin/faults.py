"""The loop "every system call fails once": each function that the program imports or binds late, in each scenario, at its
first, second and later calls, and from its first one on.

    ./quellix test --faults                                    the whole loop; its outcome lies in build/faults
    QUELLIX_FAULT='shred: DeleteFileW fail 5 only 2' ...       one run of it, by python3 -B -m tests.standin.faults

A first pass without faults tells which functions a scenario calls and how often. The calls of the start are failed in two
scenarios: with nothing done afterwards, and with something to be saved.
"""
import argparse
import json
import multiprocessing
import os
import queue
import random
import sys
import time
from collections import Counter
from typing import NamedTuple

from tests.standin.rules import table
from tests.standin.scenarios import ANSWER_MS, SCENARIOS, Bench, Run
from tests.standin.windows import called_by
from tools.wine_home import BUILD

RESULTS = BUILD / "faults"
ACCESS_DENIED = 5
# The calls of a function that fail: the first ones each, later ones at growing distances, the last one; then all at once.
EACH_OF_THE_FIRST, GROWTH = 12, 1.3
OWN = "what goes between the program and its own windows does not fail"
WAIT = "an answer that a program is to come back for, for ever"
SKIPPED = {
    "SendMessageA": OWN, "SendMessageW": OWN, "SendDlgItemMessageA": OWN, "CallWindowProcA": OWN, "DefDlgProcA": OWN,
    "PeekMessageA": "its failing result means that there is nothing", "GetMessageA": "fails for a wrong pointer only",
    "MsgWaitForMultipleObjects": WAIT, "WaitForSingleObject": WAIT, "TranslateMessage": "its result means something else",
    "IsDialogMessageA": "its result means something else", "TranslateAcceleratorA": "its result means something else",
    "GetProcAddress": "a function that is missing is another Windows", "LoadLibraryA": "a library that is missing is another Windows",
    "GetWindowTextA": OWN, "GetWindowTextLengthA": OWN,
    "malloc": "has a loop of its own", "MessageBoxA": "nobody would be told of anything",
    "GetModuleHandleA": "of the program itself and of libraries that it has loaded",
}
# Not all at once: no window would know whose it is.
FROM_THE_START = ("start", "save")
ONE_AT_A_TIME = {"GetWindowLongA", "SetWindowLongA"}


class Fault(NamedTuple):
    scenario: str
    rule: str

    def __str__(self) -> str:
        return f"{self.scenario}: {self.rule}"


def functions() -> list[str]:
    """What can fail."""
    rows = table()
    names = {f.name for f in called_by() if f.name in rows}
    return sorted(n for n in names if n not in SKIPPED and rows[n].failing not in ("-", "ends") and rows[n].library != "msvcrt")


def record(bench: Bench, scenario: str, names: list[str] | None = None) -> Run:
    """The scenario without faults, with every call that can fail, or those of some functions, written down."""
    bench.limit = 10_000
    clean = bench.run(scenario, *(f"{name} log" for name in names or functions()))
    if clean.problems:
        raise AssertionError(f"{scenario} without faults: {clean.problems}")
    bench.limit = max(ANSWER_MS, 1.5 * clean.freeze)
    return clean


def own_call(clean: Run, name: str, number: int) -> int:
    """The number of a scenario's n-th call of a function after the start."""
    return clean.before.get(name, 0) + number


def numbers_of_calls(first: int, last: int) -> list[int]:
    chosen, step = list(range(first, min(last, first + EACH_OF_THE_FIRST - 1) + 1)), 2.0
    while chosen and chosen[-1] < last:
        chosen.append(min(last, int(chosen[-1] + step)))
        step *= GROWTH
    return chosen


def plan(clean: Run) -> list[list[Fault]]:
    """The faults of a scenario in rounds: each function's first call, then each one's second, and so on."""
    rounds: dict[int, list[Fault]] = {}
    for name, count in sorted(clean.counts.items()):
        if name not in functions():
            continue
        before = 0 if clean.scenario in FROM_THE_START else clean.before.get(name, 0)
        numbers = numbers_of_calls(before + 1, count)
        rules = [f"{name} fail {ACCESS_DENIED} only {number}" for number in numbers]
        if numbers and name not in ONE_AT_A_TIME:
            rules.insert(1, f"{name} fail {ACCESS_DENIED} from {numbers[0]}")
        for place, rule in enumerate(rules):
            rounds.setdefault(place, []).append(Fault(clean.scenario, rule))
    return [rounds[place] for place in sorted(rounds)]


def draw(seed: int, cleans: dict[str, Run]):
    """Faults without end, drawn by a number: the same ones wherever the scenarios make the same calls."""
    chance = random.Random(seed)
    names = functions()
    while True:
        scenario, name, place = chance.choice(list(SCENARIOS)), chance.choice(names), chance.random()
        clean = cleans[scenario]
        before = 0 if scenario in FROM_THE_START else clean.before.get(name, 0)
        own = clean.counts.get(name, 0) - before
        if own > 0:
            yield Fault(scenario, f"{name} fail {ACCESS_DENIED} only {before + 1 + int(place * own)}")


def try_fault(bench: Bench, fault: Fault, clean: Run) -> Run:
    return bench.run(fault.scenario, fault.rule, clean=clean)


# The whole loop, by several programs at once, each with a Windows of its own

class Loop(NamedTuple):
    """What is recorded of a scenario, what follows from it in rounds, and how one of those is tried: problems and call."""
    record: object
    plan: object
    attempt: object


def loops() -> dict[str, Loop]:
    from tests.standin import kills, memory  # both are made of this module
    def attempt(bench, fault, clean):
        run = try_fault(bench, fault, clean)
        return run.problems, run.hit
    return {"calls": Loop(record, plan, attempt),
            "memory": Loop(memory.record_allocations, lambda clean: [[f] for f in memory.failing_allocations(clean)], attempt),
            "kills": Loop(kills.record_writes, lambda clean: [[k] for k in kills.kills(clean)], kills.kill)}


def _work(kind: str, number: int, todo, done, started) -> None:
    """Works off what there is to do; where the test itself breaks, with a new Windows."""
    loop, cleans = loops()[kind], {}
    while True:
        with Bench(f"faults-{number}") as bench:
            bench.set_up_profile()
            if not cleans:
                cleans = {scenario: loop.record(bench, scenario) for scenario in SCENARIOS}
                started.put([loop.plan(clean) for clean in cleans.values()])
            if _work_off(loop, bench, cleans, todo, done):
                return


def _work_off(loop: Loop, bench: Bench, cleans: dict[str, Run], todo, done) -> bool:
    """True when there is no more to do."""
    while (fault := todo.get()) is not None:
        begun = time.monotonic()
        try:
            problems, hit = loop.attempt(bench, fault, cleans[fault.scenario])
        except Exception as broken:  # noqa: BLE001 whatever it is, it is told with the others
            done.put((fault, [f"the test broke: {type(broken).__name__}: {broken}"], "", 0))
            return False
        done.put((fault, problems, hit, time.monotonic() - begun))
    return True


def whole_loop(kind: str, workers: int, seconds: float, first: int) -> int:
    RESULTS.mkdir(parents=True, exist_ok=True)
    todo, done, started = multiprocessing.Queue(), multiprocessing.Queue(), multiprocessing.Queue()
    processes = [multiprocessing.Process(target=_work, args=(kind, n, todo, done, started)) for n in range(workers)]
    for process in processes:
        process.start()
    plans = [started.get(timeout=900) for _ in processes][0]
    depth = max(map(len, plans))
    faults = [fault for place in range(depth) for rounds in plans for fault in (rounds[place] if place < len(rounds) else [])]
    print(f"{kind}: {len(faults)}, of {len({f.rule.split()[0] for f in faults})} functions", flush=True)
    end, results = time.monotonic() + seconds, []
    waiting = iter(faults[first:])
    under_way = 0
    with open(RESULTS / f"{kind}.jsonl", "a" if first else "w") as log:
        while True:
            while under_way < 2 * workers and time.monotonic() < end:
                fault = next(waiting, None)
                if fault is None:
                    break
                todo.put(fault)
                under_way += 1
            if not under_way:
                break
            try:
                fault, problems, hit, took = done.get(timeout=300)
            except queue.Empty:
                print("no run has ended for five minutes")
                break
            under_way -= 1
            results.append((fault, problems, hit))
            log.write(json.dumps({"fault": str(fault), "problems": problems, "hit": hit, "took": round(took, 2)}) + "\n")
            log.flush()
            if problems:
                print(f"{fault}\n    {problems}\n    {hit}", flush=True)
    for _ in processes:
        todo.put(None)
    for process in processes:
        process.join(60)
        process.terminate()
    return report(kind, faults, results)


def report(kind: str, faults: list[Fault], results: list) -> int:
    wrong = [(fault, problems) for fault, problems, _ in results if problems]
    made = Counter(fault.scenario for fault, _, hit in results if hit)
    lines = [f"{kind}: {len(results)} of {len(faults)} runs, {sum(made.values())} of them with a call that was reached, of "
             f"{len({f.rule.split()[0] for f, _, hit in results if hit})} functions: "
             + ", ".join(f"{scenario} {count}" for scenario, count in made.items()),
             f"{len(wrong)} with something wrong"]
    lines += [f"{fault}: {'; '.join(problems)}" for fault, problems in wrong]
    (RESULTS / f"{kind}.txt").write_text("\n".join(lines) + "\n")
    print("\n".join(lines[:2]))
    return 1 if wrong else 0


def one(text: str) -> int:
    scenario, _, rule = text.partition(": ")
    with Bench("fault") as bench:
        bench.set_up_profile()
        run = bench.run(scenario, *rule.split("; "), clean=record(bench, scenario))
        print(*(str(call) for call in bench.calls() if call.rule and not call.rule.startswith("clock")), sep="\n")
        print(run.problems or "nothing is wrong")
    return 1 if run.problems else 0


def main() -> int:
    reader = argparse.ArgumentParser(description=__doc__)
    reader.add_argument("--only", choices=["calls", "memory", "kills"])
    reader.add_argument("--seconds", type=float, default=3 * 3600, help="how long new runs are begun")
    reader.add_argument("--first", type=int, default=0, help="goes on with a loop that was cut short after so many runs")
    reader.add_argument("--workers", type=int, default=2 * (os.cpu_count() or 1))
    options = reader.parse_args()
    if "QUELLIX_FAULT" in os.environ:
        return one(os.environ["QUELLIX_FAULT"])
    kinds = [options.only] if options.only else ["calls", "memory", "kills"]
    return max(whole_loop(kind, options.workers, options.seconds, options.first) for kind in kinds)


if __name__ == "__main__":
    sys.exit(main())
