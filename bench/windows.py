#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Measures what a person waits for, on the display that is in use.

    windows.py FOLDER

FOLDER holds program_start, bare_start and window_bench. The starts alternate, a
process each, from just before the process is made to the end of its first paint;
window_bench tells NAME|MOST|MILLISECONDS lines, once a process.
"""
import collections
import os
import statistics
import subprocess
import sys
import tempfile
import time

PAIRS = 21
RUNS = 15
MOST_TIME = 1.25
MOST_MEMORY = 1.35


def start(program):
    """Seconds, and peak memory in MiB."""
    begun = time.perf_counter()
    with subprocess.Popen([program], stdout=subprocess.PIPE, text=True) as process:
        peak = process.stdout.readline()
        seconds = time.perf_counter() - begun
    return seconds, int(peak.split()[0]) / 1024


def row(name, unit, measured, limit, most):
    ratios = [m / l for m, l in zip(measured, limit)]
    ratio = statistics.median(ratios)
    print(f"| {name} | {statistics.median(measured):.1f} {unit} "
          f"| {statistics.median(limit):.1f} {unit} | {ratio:.2f} | {min(ratios):.2f} "
          f"| {max(ratios):.2f} | {most:g}{' **missed**' if ratio > most else ''} |")
    return ratio > most


def main():
    folder = sys.argv[1]
    runtime = tempfile.TemporaryDirectory()
    os.environ.setdefault("XDG_RUNTIME_DIR", runtime.name)
    programs = [folder + "/program_start", folder + "/bare_start"]
    for program in programs:
        start(program)  # from the disk into memory
    program, bare = [], []
    for pair in range(PAIRS):
        order = [(programs[0], program), (programs[1], bare)]
        for path, into in order if pair % 2 else reversed(order):
            into.append(start(path))
    print("| measured | median | bare window | ratio | min | max | held to |")
    print("|---|---:|---:|---:|---:|---:|---:|")
    missed = row("Start to the first painted window", "ms", [1e3 * p[0] for p in program],
                 [1e3 * b[0] for b in bare], MOST_TIME)
    missed += row("Peak memory by then", "MiB", [p[1] for p in program],
                  [b[1] for b in bare], MOST_MEMORY)

    times = collections.defaultdict(list)
    for _ in range(RUNS):
        lines = subprocess.run([folder + "/window_bench"], check=True, stdout=subprocess.PIPE,
                               text=True).stdout
        for line in lines.splitlines():
            name, most, milliseconds = line.split("|")
            times[name, float(most)].append(float(milliseconds))
    print("\n| measured | median, ms | min | max | held to, ms |")
    print("|---|---:|---:|---:|---:|")
    for (name, most), values in times.items():
        median = statistics.median(values)
        missed += median > most
        print(f"| {name} | {median:.1f} | {min(values):.1f} | {max(values):.1f} "
              f"| {most:g}{' **missed**' if median > most else ''} |")
    return 1 if missed else 0


if __name__ == "__main__":
    sys.exit(main())
