#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Derives the expected pages of Insights from a data file by exact fractions and long
decimals, apart from the program:

    derive.py [--check] DATABASE DIRECTORY

writes them into the directory, or with --check compares them with what is there. They are
written by nothing else. Every share is worth 20.00 on 1/1/2026. A fund whose records its
types cannot make is not foreseen here, nor one with several rates."""
import datetime
import sys
from decimal import ROUND_HALF_UP, Decimal, getcontext
from fractions import Fraction
from pathlib import Path

getcontext().prec = 50
PRICE = Fraction(20)
VALUED = datetime.date(2026, 1, 1)
SPLIT = Fraction(1, 10_000)
WORDS = {"S": "Sold", "U": "Unit Fee"}
METHODS = {"average": "Average cost", "lots": "First in, first out"}
PLACES = {"B": 0, "D": 0, "C": 1, "F": 2, "S": 3, "U": 4}


def currency(value):
    """Four decimals, a tie to even: what round does with a fraction."""
    return Fraction(round(Fraction(value) * 10_000), 10_000)


def shown(value, decimals, zero=False):
    exact = Decimal(value.numerator) / Decimal(value.denominator)
    text = f"{abs(exact).quantize(Decimal(1).scaleb(-decimals), ROUND_HALF_UP):,.{decimals}f}"
    if not zero and text.startswith("0."):
        text = text[1:]
    return ("-" if value < 0 else "") + text


def right(text, width):
    return text.rjust(width)[:width]


def day(date):
    return f"{date.month}/{date.day}/{date.year}"


def read(path):
    lines = path.read_bytes().decode().split("\r\n")
    records, funds = (int(field) for field in lines[0].split(",")[:2])
    names = [line.rsplit(",", 1) for line in lines[1:1 + funds]]
    rows = []
    for line in lines[1 + funds:1 + funds + records]:
        fields = line.split(",")
        rows.append({"fund": int(fields[0]), "price": Fraction(fields[1]),
                     "shares": Fraction(fields[2]), "book": Fraction(fields[5]),
                     "type": fields[6].strip('"'),
                     "date": datetime.date.fromisoformat(fields[7].strip("#"))})
    return [(name.strip('"'), int(number.strip('"'))) for name, number in names], rows


COLUMNS = ("bought", "sold", "cash", "reinvested", "cash_fees", "unit_fees", "other", "realised")


class Account:
    """A fund's holding as a list of lots [shares, cost]; by average there is one."""

    def __init__(self, method):
        self.method, self.lots, self.years, self.disposals = method, [], {}, []
        self.flows, self.book = {}, Fraction(0)

    def shares(self):
        return sum((lot[0] for lot in self.lots), Fraction(0))

    def cost(self):
        return sum((lot[1] for lot in self.lots), Fraction(0))

    def add(self, shares, cost):
        if self.method == "average" and self.lots:
            self.lots[0][0] += shares
            self.lots[0][1] += cost
        else:
            self.lots.append([shares, cost])

    def take(self, shares):
        taken = Fraction(0)
        while shares:
            lot = self.lots[0]
            if lot[0] <= shares:
                shares -= lot[0]
                taken += lot[1]
                self.lots.pop(0)
                continue
            part = currency(lot[1] * shares / lot[0])
            lot[0] -= shares
            lot[1] -= part
            return taken + part
        return taken

    def split(self, held):
        before, running, gone = self.shares(), Fraction(0), Fraction(0)
        for lot in self.lots:
            running += lot[0]
            now = currency(running * held / before)
            lot[0], gone = now - gone, now

    def record(self, row):
        year = self.years.setdefault(row["date"].year, dict.fromkeys(COLUMNS, Fraction(0)) | {
            "opening": (self.shares(), self.cost())})
        kind, shares, book = row["type"], row["shares"], row["book"]
        self.book += book
        if kind not in "DU":
            self.flows[row["date"]] = self.flows.get(row["date"], 0) - book
        else:
            year["other"] -= book
        worth = currency(row["price"] * abs(shares))
        if kind == "B":
            year["bought"] += book
            self.add(shares, book)
        elif kind == "C":
            year["cash"] -= book
        elif kind == "F":
            year["cash_fees"] += book
        elif row["price"] == SPLIT and kind in "DU":
            self.split(self.shares() + shares)
        elif kind == "D":
            year["reinvested"] += worth
            self.add(shares, worth)
        else:
            proceeds = -book if kind == "S" else worth
            year["sold" if kind == "S" else "unit_fees"] += proceeds
            cost = self.take(-shares)
            year["realised"] += proceeds - cost
            self.disposals.append((kind, row["date"], -shares, proceeds, cost))
        year["closing"] = self.shares(), self.cost()

    def sum(self, column):
        return sum((year[column] for year in self.years.values()), Fraction(0))

    def income(self):
        return self.sum("cash") + self.sum("reinvested")

    def value(self):
        return currency(self.shares() * PRICE)

    def gain(self):
        return (self.value() - self.cost() + self.sum("realised") + self.income()
                - self.sum("cash_fees") - self.sum("unit_fees") + self.sum("other"))


class Together:
    """All accounts as one."""

    def __init__(self, accounts):
        self.accounts = accounts
        self.flows, self.book = {}, sum(account.book for account in accounts)
        for account in accounts:
            for date, amount in account.flows.items():
                self.flows[date] = self.flows.get(date, 0) + amount
        self.years, held = {}, {}
        for year in sorted({year for account in accounts for year in account.years}):
            mine = dict.fromkeys(COLUMNS, Fraction(0))
            mine["opening"] = tuple(sum(h[i] for h in held.values()) for i in (0, 1))
            for account in accounts:
                if year in account.years:
                    held[account] = account.years[year]["closing"]
                    for column in COLUMNS:
                        mine[column] += account.years[year][column]
            mine["closing"] = tuple(sum(h[i] for h in held.values()) for i in (0, 1))
            self.years[year] = mine

    def __getattr__(self, name):  # shares, cost, value, gain
        return lambda: sum(getattr(account, name)() for account in self.accounts)

    sum = Account.sum
    income = Account.income


def rate(flows):
    """In percent, by halving: one sign change is foreseen."""
    first = min(flows)
    terms = [(Decimal(amount.numerator) / Decimal(amount.denominator),
              Decimal((date - first).days) / 365) for date, amount in flows.items() if amount]

    def at(growth):
        return sum(amount * (-years * growth).exp() for amount, years in terms)

    low, high = Decimal(-3), Decimal(3)
    assert at(low) > 0 > at(high)
    for _ in range(120):
        middle = (low + high) / 2
        low, high = (middle, high) if at(middle) > 0 else (low, middle)
    return Fraction((low.exp() - 1) * 100)


def title(page, method):
    name = METHODS[method]
    return [f"{page}: {name}",
            f"{name} is the base for your tax return; the law of your country may differ.", ""]


def gains(accounts, together, method):
    lines = title("Gains", method) + [
        "Trans-           Trade            Number          Proceeds              Cost"
        "             Gain/",
        "action            Date            Shares".ljust(76) + "             Loss$", "_" * 94]
    for name, account in accounts:
        if account.disposals:
            lines.append(name)
        for kind, date, shares, proceeds, cost in account.disposals:
            lines.append(WORDS[kind].ljust(12) + right(day(date), 10)
                         + right(shown(shares, 4), 18) + right(shown(proceeds, 2), 18)
                         + right(shown(cost, 2), 18) + right(shown(proceeds - cost, 2), 18))
    lines += ["", "Fund".ljust(16) + "".join(right(word, 16) for word in (
        "Number", "Cost", "Cost per", "Current", "Unrealised")),
              "Name".ljust(16) + "".join(right(word, 16) for word in (
                  "Shares", "", "Share", "Value", "Gain/Loss$")), "_" * 96]

    def holding(name, of):
        each = currency(of.cost() / of.shares()) if of.shares() else Fraction(0)
        lines.append(name[:15].ljust(16) + right(shown(of.shares(), 4), 16)
                     + right(shown(of.cost(), 2), 16) + right(shown(each, 4, zero=True), 16)
                     + right(shown(of.value(), 2), 16)
                     + right(shown(of.value() - of.cost(), 2), 16))

    for name, account in accounts:
        holding(name, account)
    lines.append("_" * 96)
    holding("Total:", together)
    lines += ["", "Fund                Realised      Income      Cash      Unit     Other"
              "        Gain/ the same, by",
              "Name              Gain/Loss$                  Fees      Fees          "
              "        Loss$   Cur. Value", "_" * 96]

    def earned(name, of):
        lines.append(name[:15].ljust(16) + right(shown(of.sum("realised"), 2), 12)
                     + right(shown(of.income(), 2), 12) + right(shown(of.sum("cash_fees"), 2), 10)
                     + right(shown(of.sum("unit_fees"), 2), 10)
                     + right(shown(of.sum("other"), 2), 10) + right(shown(of.gain(), 4), 13)
                     + right(shown(of.value() - of.book, 4), 13))

    for name, account in accounts:
        earned(name, account)
    lines.append("_" * 96)
    earned("Total:", together)
    return lines


def returns(accounts, together):
    lines = [f"Money-weighted return a year, valued on {day(VALUED)}", "",
             "Fund".ljust(32) + "      First       Last  Flows          Rate",
             "Name".ljust(32) + "       Date       Date               a Year", "_" * 75]

    def line(name, of):
        flows = dict(of.flows)
        flows[VALUED] = flows.get(VALUED, 0) + of.value()
        flows = {date: amount for date, amount in flows.items() if amount}
        lines.append(name.ljust(32) + right(day(min(flows)), 11) + right(day(max(flows)), 11)
                     + right(str(len(flows)), 7) + right(shown(rate(flows), 2, zero=True) + "%", 14))

    for name, account in accounts:
        line(name, account)
    lines.append("_" * 75)
    line("All funds", together)
    return lines


def years(accounts, together, method):
    lines = title("Years", method)

    def block(name, of):
        lines.extend([name, "            Opening      Opening      Bought        Sold    Realised"
                      "        Closing      Closing",
                      "Year         Shares         Cost                          Gain/Loss$"
                      "         Shares         Cost", "_" * 96])
        for year, mine in of.years.items():
            lines.append(str(year) + right(shown(mine["opening"][0], 4), 15)
                         + right(shown(mine["opening"][1], 2), 13)
                         + "".join(right(shown(mine[column], 2), 12)
                                   for column in ("bought", "sold", "realised"))
                         + right(shown(mine["closing"][0], 4), 15)
                         + right(shown(mine["closing"][1], 2), 13))
        lines.extend(["_" * 96, ("Tot:" + " " * 28 + "".join(
            right(shown(of.sum(column), 2), 12)
            for column in ("bought", "sold", "realised"))).ljust(96),
                      "               Cash   Reinvested        Cash        Unit       Other",
                      "Year      Dividends    Dividends        Fees        Fees            ",
                      "_" * 68])

        def went(label, value):
            lines.append(label + right(shown(value("cash"), 2), 15)
                         + right(shown(value("reinvested"), 2), 13)
                         + "".join(right(shown(value(column), 2), 12)
                                   for column in ("cash_fees", "unit_fees", "other")))

        for year, mine in of.years.items():
            went(str(year), mine.get)
        lines.append("_" * 68)
        went("Tot:", of.sum)
        lines.append("")

    for name, account in accounts:
        block(name, account)
    block("All funds", together)
    return lines


def main():
    check = sys.argv[1] == "--check"
    database, directory = (Path(word) for word in sys.argv[-2:])
    funds, rows = read(database)
    rows.sort(key=lambda row: (row["date"], PLACES[row["type"]]))
    differing = []

    def write(kind, lines):
        path = directory / f"{database.stem}.{kind}.txt"
        derived = "".join(line + "\r\n" for line in lines).encode()
        if not check:
            path.write_bytes(derived)
        elif path.read_bytes() != derived:
            differing.append(path)

    for method in METHODS:
        accounts = []
        for name, number in funds:
            account = Account(method)
            for row in rows:
                if row["fund"] == number:
                    account.record(row)
            accounts.append((name, account))
        together = Together([account for _, account in accounts])
        write(f"gains.{method}", gains(accounts, together, method))
        write(f"years.{method}", years(accounts, together, method))
        write("return", returns(accounts, together))
    for path in differing:
        print(f"{path} is not what is derived from {database}")
    return 1 if differing else 0


sys.exit(main())
