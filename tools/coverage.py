"""What the logic tests run through of the rules: a line a file, the sum, and exit status 1 below the aim.

usage: python3 -m tools.coverage     after `cmake --build --preset coverage`
"""
import json
import os
import subprocess
import sys
from pathlib import Path

from tools.wine_home import BUILD, ROOT

AIM = 97.0  # percent of the lines
# The version of the compiler whose counts these are.
TOOLS = Path("/usr/lib/llvm-14/bin")


def counted() -> list[dict]:
    """The counts of each of the product's files that the tests' program holds."""
    program = BUILD / "coverage/tests/logic/logic_tests"
    raw, profile = BUILD / "coverage/raw.profraw", BUILD / "coverage/profile.profdata"
    subprocess.run([program, "--gtest_brief=1"], check=True, env=dict(os.environ, LLVM_PROFILE_FILE=str(raw)))
    subprocess.run([TOOLS / "llvm-profdata", "merge", "-sparse", raw, "-o", profile], check=True)
    told = subprocess.run([TOOLS / "llvm-cov", "export", "-summary-only", f"-instr-profile={profile}", program],
                          check=True, stdout=subprocess.PIPE, text=True).stdout
    files = json.loads(told)["data"][0]["files"]
    for file in files:  # a compiler cache may have made them relative to the build
        file["filename"] = os.path.normpath(BUILD / "coverage" / file["filename"])
    ours = (str(ROOT / "src") + "/", str(ROOT / "companions") + "/")
    return [file for file in files if file["filename"].startswith(ours)]


def row(name: str, lines: tuple[int, int], branches: tuple[int, int]) -> str:
    def share(covered: int, count: int) -> str:
        return f"{covered:6} of {count:5} {100 * covered / count if count else 100:6.1f} %"
    return f"{name:44}{share(*lines)}  {share(*branches)}"


def main() -> int:
    files = counted()
    print(f"{'':44}{'lines':>23}  {'branches':>23}")
    sums = {kind: [0, 0] for kind in ("lines", "branches")}
    for file in sorted(files, key=lambda file: file["filename"]):
        counts = {}
        for kind, total in sums.items():
            counts[kind] = (file["summary"][kind]["covered"], file["summary"][kind]["count"])
            total[0] += counts[kind][0]
            total[1] += counts[kind][1]
        print(row(str(Path(file["filename"]).relative_to(ROOT)), counts["lines"], counts["branches"]))
    print(row(f"all of {len(files)} files", tuple(sums["lines"]), tuple(sums["branches"])))
    return 0 if 100 * sums["lines"][0] >= AIM * sums["lines"][1] else 1


if __name__ == "__main__":
    sys.exit(main())
