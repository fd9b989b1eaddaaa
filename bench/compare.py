#!/usr/bin/env python3
"""How long the benchmarks of one build take beside those of another, as ratios of processor time, both measured in
turns in one run: compare.py BEFORE AFTER [FILTER]. BEFORE and AFTER are build folders."""

import json
import re
import statistics
import subprocess
import sys
from pathlib import Path

ROUNDS = 5
PROGRAMS = ("core_bench", "display_bench")


def times_of(program, wanted):
    """Processor time by the name of the benchmark, in its unit."""
    command = [program, "--benchmark_format=json", "--benchmark_min_time=0.2", f"--benchmark_filter={wanted}"]
    ran = subprocess.run(command, capture_output=True, check=True)
    if not ran.stdout.strip():
        return {}
    results = json.loads(ran.stdout)["benchmarks"]
    chosen = [r for r in results if r["run_type"] == "iteration" or r["aggregate_name"] == "median"]
    # A clock that a benchmark has of its own stands behind its name.
    plain = re.compile("/(process_time|real_time)")
    return {plain.sub("", result["run_name"]): result["cpu_time"] for result in chosen}


def main():
    before, after = (Path(folder).resolve() / "bench" for folder in sys.argv[1:3])
    wanted = sys.argv[3] if len(sys.argv) > 3 else "."
    for program in PROGRAMS:
        ratios = {}
        for _ in range(ROUNDS):
            old, new = times_of(before / program, wanted), times_of(after / program, wanted)
            for name in old.keys() & new.keys():
                ratios.setdefault(name, []).append(new[name] / old[name])
        for name, values in sorted(ratios.items()):
            print(f"{name:45} {statistics.median(values):.2f}  ({min(values):.2f} to {max(values):.2f})")


if __name__ == "__main__":
    main()
