#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Runs a benchmark program and sets each measurement beside its limit.

    ratios.py PROGRAM [OPTION...]

Every benchmark is named NAME|MOST|measured or NAME|MOST|limit, MOST being the
ratio that it is held to, 0 for none. The repetitions
of all of them run in random order; repetition i of a measurement is divided by
repetition i of its limit. NAME/SIZE at several sizes gets a table of growth.
"""
import collections
import json
import math
import statistics
import subprocess
import sys

REPETITIONS = 15


def run(program, options):
    output = subprocess.run(
        [program, "--benchmark_format=json", "--benchmark_enable_random_interleaving=true",
         f"--benchmark_repetitions={REPETITIONS}", "--benchmark_min_time=0.03", *options],
        check=True, stdout=subprocess.PIPE, text=True).stdout
    times = collections.defaultdict(lambda: collections.defaultdict(list))
    for entry in json.loads(output)["benchmarks"]:
        if entry["run_type"] != "iteration":
            continue
        name, most, side = entry["run_name"].split("|")
        # Work with a preparation is timed by the clock, all else by the processor.
        side, _, by_hand = side.partition("/")
        times[name, float(most)][side].append(entry["real_time" if by_hand else "cpu_time"])
    return times


def order(item):
    name = item[0][0]
    stem, slash, size = name.rpartition("/")
    return (stem, int(size)) if slash else (name, 0)


def main():
    times = run(sys.argv[1], sys.argv[2:])
    print("| measured | ns | limit, ns | ratio | min | max | held to |")
    print("|---|---:|---:|---:|---:|---:|---:|")
    missed = 0
    # The program runs them in random order; the table keeps alike things together.
    for (name, most), sides in sorted(times.items(), key=order):
        ratios = [m / l for m, l in zip(sides["measured"], sides["limit"])]
        ratio = statistics.median(ratios)
        over = 0 < most < ratio
        missed += over
        print(f"| {name} | {statistics.median(sides['measured']):,.0f} "
              f"| {statistics.median(sides['limit']):,.0f} | {ratio:.2f} | {min(ratios):.2f} "
              f"| {max(ratios):.2f} | {f'{most:g}' if most else ''}{' **missed**' if over else ''} |")

    # The fastest repetitions tell how the work itself grows.
    growth = collections.defaultdict(dict)
    for (name, _), sides in times.items():
        stem, _, size = name.rpartition("/")
        if stem:
            growth[stem][int(size)] = min(sides["measured"]), min(sides["limit"])
    print("\n| measured | from | to | time grows | limit grows | n log n grows |")
    print("|---|---:|---:|---:|---:|---:|")
    for stem, by_size in sorted(growth.items()):
        small, large = min(by_size), max(by_size)
        bound = large * math.log(large) / (small * math.log(small))
        grown, limit = (b / a for a, b in zip(by_size[small], by_size[large]))
        over = grown > max(bound, limit)  # the required sort itself may grow faster
        missed += over
        print(f"| {stem} | {small} | {large} | {grown:.1f} | {limit:.1f} | {bound:.1f}"
              f"{' **missed**' if over else ''} |")
    return 1 if missed else 0


if __name__ == "__main__":
    sys.exit(main())
