#!/usr/bin/env python3
"""Checks benchmark ratio budgets.

usage: bench_budgets.py BUDGETS RESULT.json...

BUDGETS has one budget per line: `name numerator denominator limit`, where numerator and
denominator are Google Benchmark run names and the budget holds when
time(numerator) / time(denominator) <= limit. A numerator with shell wildcards stands for
the slowest of the runs it matches (a worst case over placements or sizes). Each time is the fastest CPU time of that run
over all result files and repetitions (the least disturbed by other load). Prints one line per budget
with ok/MISS (or `missing` when a run is absent) and exits 1 only when ZEL_BENCH_STRICT=1
and a budget is missed or missing.
"""
import fnmatch
import json
import os
import sys


def load_times(paths):
    times = {}
    for path in paths:
        with open(path) as f:
            data = json.load(f)
        for b in data.get("benchmarks", []):
            if b.get("run_type", "iteration") != "iteration" or "error_occurred" in b:
                continue
            name = b.get("run_name", b["name"])
            t = float(b["cpu_time"])
            times[name] = min(t, times.get(name, t))
    return times


def load_budgets(path):
    budgets = []
    with open(path) as f:
        for number, line in enumerate(f, 1):
            line = line.split("#", 1)[0].strip()
            if not line:
                continue
            fields = line.split()
            if len(fields) != 4:
                sys.exit(f"{path}:{number}: expected `name numerator denominator limit`")
            budgets.append((fields[0], fields[1], fields[2], float(fields[3])))
    return budgets


def main(argv):
    if len(argv) < 3:
        sys.exit(__doc__)
    times = load_times(argv[2:])
    failed = False
    width = max((len(b[0]) for b in load_budgets(argv[1])), default=10)
    for name, num, den, limit in load_budgets(argv[1]):
        note = ""
        if any(c in num for c in "*?["):
            matched = [n for n in times if fnmatch.fnmatchcase(n, num)]
            if matched:
                worst = max(matched, key=lambda n: times[n])
                times[num] = times[worst]
                note = f"  (worst: {worst})"
        if num not in times or den not in times:
            absent = num if num not in times else den
            print(f"{name:<{width}}  missing ({absent})")
            failed = True
            continue
        ratio = times[num] / times[den]
        verdict = "ok" if ratio <= limit else "MISS"
        failed |= verdict != "ok"
        print(f"{name:<{width}}  {ratio:6.2f} (limit {limit:4.2f})  {verdict}{note}")
    strict = os.environ.get("ZEL_BENCH_STRICT") == "1"
    return 1 if failed and strict else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
