#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Derives the golden payment schedules apart from the program.

A golden file NAME.txt is what was typed, a line each, a line "----", and the exact
report, each line end a line feed. This program reads the part above the line alone.
Rates come from powers and logarithms of 60 digits, of the annual rate in single
precision; amounts are whole cents, interest an exact fraction that is rounded once,
half up.

    derive.py [FOLDER or FILE]...          rewrites the reports in place
    derive.py --check [FOLDER or FILE]...  shows what differs, changes nothing

Without a name it takes its own folder. The reports are written by this program alone,
never from what the program under test prints.
"""
import difflib
import math
import struct
import sys
from decimal import ROUND_CEILING, ROUND_HALF_UP, Decimal, getcontext
from fractions import Fraction
from pathlib import Path

getcontext().prec = 60

COMPOUNDINGS = {"Monthly": 12, "Bimonthly": 6, "Quarterly": 3, "Semiannual": 2, "Annual": 1}
# Payments a year, the days between them (0: none counted), monthly payments they add up to.
FREQUENCIES = {"Monthly": (12, 0, 12), "Semimonthly": (24, 0, 12), "2 Weeks": (26, 14, 12),
               "1 Week": (52, 7, 12), "Biweekly(acl)": (26, 14, 13), "Weekly(acl)": (52, 7, 13)}
HEADING = 45
END = """\
The page rounds nothing, and may count a
part of a payment. Here each payment and
its interest are whole cents, and the last
payment takes what is left.
"""


def single(value):
    return Decimal(struct.unpack("f", struct.pack("f", float(value)))[0])


def cents(value):
    return int((value * 100).quantize(Decimal(1), ROUND_HALF_UP))


def money(count):
    text = f"{count // 100:,}.{count % 100:02}"
    return text[1:] if text.startswith("0.") else text


def hundredths(value):
    text = str(value.quantize(Decimal("0.01"), ROUND_HALF_UP))
    return text[1:] if text.startswith("0.") else text


def entry(label, value):
    return label + value.rjust(HEADING - len(label)) + "\n"


class Loan:
    """What the page works out: payment, rate of a period, payments, total interest."""

    def __init__(self, typed):
        principal = Decimal(typed["principal"])
        years = Decimal(typed["years"])
        k = COMPOUNDINGS[typed["compounding"]]
        a = single(float(typed["rate"]) / 100)
        base = 1 + single(a / k)
        r = base ** (Decimal(k) / 12) - 1
        grown = (1 + r) ** (12 * years)
        payment = r * grown * principal / (grown - 1)
        self.kind = typed["kind"]
        self.frequency = typed["frequency"] if self.kind == "chosen" else "Monthly"
        self.per_year, between, monthly = FREQUENCIES[self.frequency]
        self.rate = r
        if self.kind == "chosen" and self.frequency != "Monthly":
            n = Decimal(self.per_year)
            if between:
                n = (Decimal(typed["days"]) / between).quantize(Decimal("0.00000001"))
            self.rate = base ** (Decimal(k) / n) - 1
            # 12 monthly payments spread over the year, or 52 quarters and 26 halves of one.
            payment = payment * 12 / self.per_year if monthly == 12 else (
                payment * 13 / self.per_year)
            years = (payment.ln() - (payment - self.rate * principal).ln()) / (
                self.per_year * (1 + self.rate).ln())
        self.principal = cents(principal)
        self.payment = cents(payment)
        exact = years * self.per_year
        self.payments = int((exact - Decimal("0.005")).to_integral_value(ROUND_CEILING))
        self.page_interest = payment * exact - principal

    def rows(self, extra, yearly):
        rate = Fraction(self.rate)
        balance = self.principal
        rows = []
        while balance > 0:
            number = len(rows) + 1
            interest = math.floor(balance * rate + Fraction(1, 2))
            owed = balance + interest
            paid = owed if number == self.payments else min(self.payment, owed)
            asked = extra + (yearly if number % self.per_year == 0 else 0)
            more = min(asked, owed - paid)
            balance = owed - paid - more
            rows.append((paid, more, interest, paid + more - interest, balance))
        return rows


def summed(rows):
    return tuple(sum(row[i] for row in rows) for i in range(4)) + (rows[-1][4],)


def report(typed):
    loan = Loan(typed)
    extra, yearly = cents(Decimal(typed["extra"])), cents(Decimal(typed["yearly"]))
    plain = loan.rows(0, 0)
    rows = loan.rows(extra, yearly)
    total = summed(rows)
    width = max(12, len(money(max(total))) + 2)

    def line(label, row):
        return label + "".join(money(amount).rjust(width) for amount in row) + "\n"

    rule = "_" * (8 + 5 * width) + "\n"
    text = ("   Payment schedule at the chosen frequency\n" if loan.kind == "chosen"
            else "     Payment schedule, conventional mortgage\n")
    text += entry("Principal amount of mortgage:", money(loan.principal))
    text += entry("Annual interest rate %:", f"{Decimal(typed['rate']):.3f}".lstrip("0"))
    text += entry("Compound interest periods/yr:", typed["compounding"])
    text += entry("Frequency/type of payment:", loan.frequency)
    text += entry("Number of payments each year:", str(loan.per_year))
    text += entry("Each payment, principal + int:", money(loan.payment))
    text += entry("Extra with each payment:", money(extra))
    text += entry("Extra once a year:", money(yearly))
    text += rule + "No.     " + "".join(
        name.rjust(width) for name in ("Payment", "Extra", "Interest", "Principal", "Balance"))
    text += "\n" + rule
    for start in range(0, len(rows), loan.per_year):
        year = rows[start:start + loan.per_year]
        if start:
            text += "\n"
        for i, row in enumerate(year):
            text += line(str(start + i + 1).rjust(8), row)
        text += line("Year" + str(start // loan.per_year + 1).rjust(4), summed(year))
    text += rule + line("Total   ", total) + "\n"
    text += entry("Number of payments:", str(len(rows)))
    text += entry("Number of years to final payment:",
                  hundredths(Decimal(len(rows)) / loan.per_year))
    text += entry("Last payment:", money(rows[-1][0]))
    text += entry("Total interest paid:", money(total[2])) + "\n"
    text += "Against the schedule without extras:\n"
    text += entry("Years saved:", hundredths(Decimal(len(plain) - len(rows)) / loan.per_year))
    saved = summed(plain)[2]
    text += entry("Interest saved:", money(saved - total[2])) + "\n"
    text += entry("Total interest on the page:", money(cents(loan.page_interest)))
    text += entry("Total interest here, no extras:", money(saved))
    return text + END


def main():
    names = [name for name in sys.argv[1:] if name != "--check"]
    checks = "--check" in sys.argv
    files = []
    for name in names or [Path(__file__).parent]:
        path = Path(name)
        files += sorted(path.glob("*.txt")) if path.is_dir() else [path]
    differ = 0
    for path in files:
        script, _, kept = path.read_text().partition("----\n")
        typed = dict(line.split(" ", 1) for line in script.splitlines() if line[:1] not in "#")
        derived = report(typed)
        if checks and derived != kept:
            differ += 1
            sys.stdout.writelines(difflib.unified_diff(
                kept.splitlines(True), derived.splitlines(True), str(path), "derived"))
        elif not checks:
            path.write_text(script + "----\n" + derived)
    print(f"{len(files)} schedules, {differ} differ")
    return 1 if differ or not files else 0


if __name__ == "__main__":
    sys.exit(main())
