"""The loop "every system call fails once": each function that the program imports or binds late, in each scenario, at its
first, second and later calls, and from its first one on.

    ./quellix test --faults                                    the whole loop; its outcome lies in build/faults
    QUELLIX_FAULT='shred: DeleteFileW fail 5 only 2' ...       one run of it, by python3 -B -m tests.standin.faults

A first pass without faults tells which functions a scenario calls and how often. The calls of the start are failed in two
scenarios: with nothing done afterwards, and with something to be saved.

Each function's first call, and all of them at once, fail in a run of their own. Of the later calls those of four functions
fail in the same run; where something is wrong then, or where one of them keeps another from being made, each has its own.
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
from functools import cache
from typing import NamedTuple

from tests.standin.rules import table
from tests.standin.scenarios import ANSWER_MS, SCENARIOS, Bench, Run
from tests.standin.windows import called_by
from tools.wine_home import BUILD

RESULTS = BUILD / "faults"
ACCESS_DENIED = 5
# The calls of a function that fail: the first ones each, later ones at growing distances, the last one; then all at once.
EACH_OF_THE_FIRST, GROWTH = 12, 1.3
TOGETHER = 4
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
    rule: str  # or several, with "; " between them

    @property
    def rules(self) -> list[str]:
        return self.rule.split("; ")

    def __str__(self) -> str:
        return f"{self.scenario}: {self.rule}"


@cache
def functions() -> list[str]:
    """What can fail."""
    rows = table()
    names = {f.name for f in called_by() if f.name in rows}
    return sorted(n for n in names if n not in SKIPPED and rows[n].failing not in ("-", "ends") and rows[n].dll != "msvcrt")


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
    """The faults of a scenario in rounds: each function's first call, all of its calls, then its second, its third and so on."""
    first, at_once, later = [], [], {}
    for name, count in sorted(clean.counts.items()):
        if name not in functions():
            continue
        own = clean.before.get(name, 0) + 1  # the scenario's first one
        numbers = numbers_of_calls(1, own - 1) if clean.scenario in FROM_THE_START else []
        numbers += numbers_of_calls(own, count)
        alone = next((n for n in numbers if n >= own or clean.scenario == "start"), None)
        if alone:
            first.append(f"{name} fail {ACCESS_DENIED} only {alone}")
            if name not in ONE_AT_A_TIME:
                at_once.append(f"{name} fail {ACCESS_DENIED} from {alone}")
        for place, number in enumerate(n for n in numbers if n != alone):
            later.setdefault(place, []).append(f"{name} fail {ACCESS_DENIED} only {number}")
    rounds = [first, at_once, *(in_fours(later[place], place) for place in sorted(later))]
    return [[Fault(clean.scenario, rule) for rule in rules] for rules in rounds]


def in_fours(rules: list[str], seed: int) -> list[str]:
    """Neighbours in the alphabet are often about the same thing, and one would hide the other."""
    mixed = random.Random(seed).sample(rules, len(rules))
    return ["; ".join(mixed[n:n + TOGETHER]) for n in range(0, len(mixed), TOGETHER)]


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
    return bench.run(fault.scenario, *fault.rules, clean=clean)


Outcome = tuple[Fault, list[str], str]  # what was tried, what is wrong, and the call that it was about


def outcomes(bench: Bench, fault: Fault, clean: Run) -> list[Outcome]:
    """Of faults that are tried together each one's own."""
    run = try_fault(bench, fault, clean)
    each = [Fault(fault.scenario, rule) for rule in fault.rules]
    if len(each) == 1:
        return [(fault, run.problems, run.hit)]
    open_ones = [one for one in each if run.problems or one.rule not in run.reached]
    found = [(one, [], run.reached[one.rule]) for one in each if one not in open_ones]
    found += [outcome for one in open_ones for outcome in outcomes(bench, one, clean)]
    if run.problems and not any(problems for _, problems, _ in found):
        found.append((fault, run.problems, run.hit))
    return found


# The whole loop, by several programs at once, each with a Windows of its own

class Loop(NamedTuple):
    """What is recorded of a scenario, what follows from it in rounds, and how one of those is tried."""
    record: object
    plan: object
    outcomes: object


def loops() -> dict[str, Loop]:
    from tests.standin import kills, memory  # both are made of this module
    return {"calls": Loop(record, plan, outcomes),
            "memory": Loop(memory.record_allocations, lambda clean: [[f] for f in memory.failing_allocations(clean)], outcomes),
            "kills": Loop(kills.record_writes, lambda clean: [[k] for k in kills.kills(clean)],
                          lambda bench, one, clean: [(one, *kills.kill(bench, one, clean))])}


def _work(kind: str, number: int, todo, done, recorded, known) -> None:
    """Works off what there is to do; where the test itself breaks, with a new Windows. The first records for all."""
    loop, cleans = loops()[kind], {}
    while True:
        with Bench(f"faults-{number}") as bench:
            bench.set_up_profile()
            if not cleans and number == 0:
                recorded.put({scenario: loop.record(bench, scenario) for scenario in SCENARIOS})
            cleans = cleans or known.get()
            if _work_off(loop, bench, cleans, todo, done):
                return


def _work_off(loop: Loop, bench: Bench, cleans: dict[str, Run], todo, done) -> bool:
    """True when there is no more to do."""
    while (fault := todo.get()) is not None:
        begun = time.monotonic()
        try:
            found = loop.outcomes(bench, fault, cleans[fault.scenario])
        except Exception as broken:  # noqa: BLE001 whatever it is, it is told with the others
            done.put(([(fault, [f"the test broke: {type(broken).__name__}: {broken}"], "")], 0))
            return False
        done.put((found, time.monotonic() - begun))
    return True


class Log:
    """What has come out so far, also of an earlier part of a loop that was cut short."""

    def __init__(self, kind: str, goes_on: bool):
        RESULTS.mkdir(parents=True, exist_ok=True)
        self.kind, self._place = kind, RESULTS / f"{kind}.jsonl"
        self._file = self._place.open("a" if goes_on else "w")
        self._fine = {one["fault"] for one in self._found() if not one["problems"]}

    def _found(self) -> list[dict]:
        return [one for line in self._place.read_text().splitlines() for one in json.loads(line)["found"]]

    def still_open(self, fault: Fault) -> Fault | None:
        rules = [rule for rule in fault.rule.split("; ") if str(Fault(fault.scenario, rule)) not in self._fine]
        return fault._replace(rule="; ".join(rules)) if rules else None

    def add(self, found: list[Outcome], took: float) -> None:
        self._file.write(json.dumps({"took": round(took, 2), "found": [
            {"fault": str(fault), "problems": problems, "hit": hit} for fault, problems, hit in found]}) + "\n")
        self._file.flush()
        for fault, problems, hit in found:
            if problems:
                print(f"{fault}\n    {problems}\n    {hit}", flush=True)

    def report(self, planned: int) -> int:
        found = list({one["fault"]: one for one in self._found()}.values())
        made = [one for one in found if one["hit"]]
        scenarios = Counter(one["fault"].partition(":")[0] for one in made)
        wrong = [one for one in found if one["problems"]]
        lines = [f"{self.kind}: {len(found)} of {planned}, {len(made)} of them reached, of "
                 f"{len({one['fault'].split()[1] for one in made})} functions: "
                 + ", ".join(f"{scenario} {count}" for scenario, count in scenarios.items()),
                 f"{len(wrong)} with something wrong, {len(found) - len(made)} whose call was not made"]
        print(*lines, sep="\n")
        lines += [f"{one['fault']}: {'; '.join(one['problems'])}" for one in wrong]
        (RESULTS / f"{self.kind}.txt").write_text("\n".join(lines) + "\n")
        return 1 if wrong else 0


def whole_loop(kind: str, workers: int, seconds: float, goes_on: bool) -> int:
    log = Log(kind, goes_on)
    todo, done, recorded, known = (multiprocessing.Queue() for _ in range(4))
    processes = [multiprocessing.Process(target=_work, args=(kind, n, todo, done, recorded, known)) for n in range(workers)]
    for process in processes:
        process.start()
    cleans = recorded.get(timeout=1800)
    for _ in processes:
        known.put(cleans)
    plans = [loops()[kind].plan(clean) for clean in cleans.values()]
    depth = max(map(len, plans))
    faults = [fault for place in range(depth) for rounds in plans for fault in (rounds[place] if place < len(rounds) else [])]
    planned = sum(fault.rule.count("; ") + 1 for fault in faults)
    left = [rest for fault in faults if (rest := log.still_open(fault))]
    print(f"{kind}: {planned} in {len(faults)} turns; {len(left)} turns left", flush=True)
    _all(left, 2 * workers, time.monotonic() + seconds, todo, done, log)
    for _ in processes:
        todo.put(None)
    for process in processes:
        process.join(60)
        process.terminate()
    return log.report(planned)


def _all(faults: list[Fault], at_a_time: int, end: float, todo, done, log: Log) -> None:
    waiting, under_way = iter(faults), 0
    while True:
        while under_way < at_a_time and time.monotonic() < end and (fault := next(waiting, None)):
            todo.put(fault)
            under_way += 1
        if not under_way:
            return
        try:
            found, took = done.get(timeout=900)
        except queue.Empty:
            print("nothing has come out for a quarter of an hour")
            return
        under_way -= 1
        log.add(found, took)


def one(text: str) -> int:
    scenario, _, rule = text.partition(": ")
    with Bench("fault") as bench:
        bench.set_up_profile()
        run = try_fault(bench, Fault(scenario, rule), record(bench, scenario))
        print(*(str(call) for call in bench.calls() if call.rule and not call.rule.startswith("clock")), sep="\n")
        print(run.problems or "nothing is wrong")
    return 1 if run.problems else 0


def main() -> int:
    reader = argparse.ArgumentParser(description=__doc__)
    reader.add_argument("--only", choices=["calls", "memory", "kills"])
    reader.add_argument("--seconds", type=float, default=3 * 3600, help="how long new runs are begun")
    reader.add_argument("--go-on", action="store_true", help="goes on with a loop that was cut short")
    reader.add_argument("--workers", type=int, default=2 * (os.cpu_count() or 1))
    options = reader.parse_args()
    if "QUELLIX_FAULT" in os.environ:
        return one(os.environ["QUELLIX_FAULT"])
    kinds = [options.only] if options.only else ["calls", "memory", "kills"]
    return max(whole_loop(kind, options.workers, options.seconds, options.go_on) for kind in kinds)


if __name__ == "__main__":
    sys.exit(main())
