#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Has a spreadsheet find the rates of random funds:

    make.py [OUT]          writes xirr.csv, or OUT, by Gnumeric's XIRR

Funds are drawn from a fixed seed: buyers who hold for decades, savers by the month,
sellers, and steep ones that double or lose nearly all within weeks. Every fund is some
rows "fund,date,amount"; the spreadsheet gets =XIRR(amounts,dates) beside the first row of
each, is recalculated by ssconvert, and what it answers (17 digits, or its error) is the
fourth column. Made with ssconvert 1.12.55 (Debian 12: gnumeric)."""
import csv
import datetime
import random
import subprocess
import sys
import tempfile
from pathlib import Path

FUNDS = 260


def day(year, number):
    return datetime.date(year, 1, 1) + datetime.timedelta(days=number)


def held(draw):
    """A purchase or more, dividends, and the value at the end."""
    start = day(draw.randrange(1990, 2015), draw.randrange(365))
    days = draw.randrange(400, 9000)
    flows = {start: -draw.randrange(50_000, 2_000_000)}
    for _ in range(draw.randrange(0, 25)):
        on = start + datetime.timedelta(days=draw.randrange(1, days))
        amount = draw.randrange(1_000, 100_000)
        flows[on] = flows.get(on, 0) + (amount if draw.random() < 0.7 else -5 * amount)
    paid = -sum(amount for amount in flows.values() if amount < 0)
    flows[start + datetime.timedelta(days=days)] = int(paid * draw.uniform(0.2, 6))
    return flows


def monthly(draw):
    """The same sum every month, then all of it back."""
    start = day(draw.randrange(1995, 2018), draw.randrange(365))
    months = draw.randrange(6, 120)
    sum_ = draw.randrange(5_000, 100_000)
    flows = {start + datetime.timedelta(days=30 * month): -sum_ for month in range(months)}
    flows[start + datetime.timedelta(days=30 * months)] = int(sum_ * months *
                                                              draw.uniform(0.5, 3))
    return flows


def steep(draw):
    """Weeks, and a result out of all proportion."""
    start = day(draw.randrange(2000, 2024), draw.randrange(365))
    days = draw.randrange(20, 200)
    paid = draw.randrange(10_000, 500_000)
    flows = {start: -paid}
    if draw.random() < 0.5:
        flows[start + datetime.timedelta(days=draw.randrange(1, days))] = -paid // 3
    factor = draw.choice([draw.uniform(0.3, 0.9), draw.uniform(1.2, 1.9)])
    flows[start + datetime.timedelta(days=days)] = int(paid * factor)
    return flows


def funds():
    draw = random.Random(20_261_122)
    made = []
    for number in range(FUNDS):
        kind = (held, monthly, steep)[number % 3]
        made.append(sorted(kind(draw).items()))
    return made


def main():
    out = Path(sys.argv[1] if len(sys.argv) > 1 else Path(__file__).parent / "xirr.csv")
    rows = []
    for number, flows in enumerate(funds(), 1):
        first = len(rows) + 1
        last = first + len(flows) - 1
        for at, (on, cents) in enumerate(flows):
            formula = f"=XIRR(C{first}:C{last},B{first}:B{last})" if at == 0 else ""
            amount = f"{'-' if cents < 0 else ''}{abs(cents) // 100}.{abs(cents) % 100:02}"
            rows.append([number, on.isoformat(), amount, formula])
    with tempfile.TemporaryDirectory() as folder:
        sheet, answer = Path(folder) / "in.csv", Path(folder) / "out.csv"
        with sheet.open("w", newline="") as file:
            csv.writer(file, lineterminator="\n").writerows(rows)
        subprocess.run(["ssconvert", "--recalc", "-T", "Gnumeric_stf:stf_assistant", "-O",
                        "format=raw locale=C", str(sheet), str(answer)], check=True,
                       env={"LC_ALL": "C.UTF-8", "PATH": "/usr/bin:/bin", "HOME": folder})
        with answer.open(newline="") as file:
            answered = list(csv.reader(file))
    assert len(answered) == len(rows)
    with out.open("w", newline="") as file:
        writer = csv.writer(file, lineterminator="\n")
        writer.writerow(["fund", "date", "amount", "xirr"])
        for row, calculated in zip(rows, answered):
            writer.writerow(row[:3] + [calculated[3] if len(calculated) > 3 else ""])


main()
