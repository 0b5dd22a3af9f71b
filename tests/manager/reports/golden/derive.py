#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Derives the expected reports from a data file by decimal arithmetic, apart
from the program:

    derive.py [--check] DATABASE DIRECTORY

writes them into the directory, or with --check compares them with what is there.
They are written by nothing else."""
import sys
from decimal import ROUND_HALF_EVEN, ROUND_HALF_UP, Decimal, getcontext
from pathlib import Path

getcontext().prec = 60
PLACES = Decimal("0.0001")
WORDS = {"B": "Bought", "S": "Sold", "F": "Fee Cash", "U": "Unit Fee", "C": "Cash Div.",
         "D": "Div/Shrs."}


def currency(value):
    return value.quantize(PLACES, ROUND_HALF_EVEN)


def shown(value, decimals, zero=False):
    value = Decimal(value)
    rounded = abs(value).quantize(Decimal(1).scaleb(-decimals), ROUND_HALF_UP)
    text = f"{rounded:,.{decimals}f}"
    if not zero and text.startswith("0."):
        text = text[1:]
    return ("-" if value < 0 else "") + text


def right(text, width):
    return text.rjust(width)[:width]


def column(value, decimals, width):
    return right(shown(value, decimals), width)


def read(path):
    lines = path.read_bytes().decode().split("\r\n")
    assert lines.pop() == ""
    records, funds = (int(field) for field in lines[0].split(",")[:2])
    names = [line.rsplit(",", 1) for line in lines[1:1 + funds]]
    rows = []
    for line in lines[1 + funds:]:
        fields = line.split(",")
        year, month, day = (int(part) for part in fields[7].strip("#").split("-"))
        rows.append({
            "fund": int(fields[0]), "price": Decimal(fields[1]), "shares": Decimal(fields[2]),
            "fees": Decimal(fields[3]), "dividend": Decimal(fields[4]),
            "book": Decimal(fields[5]), "type": fields[6].strip('"'),
            "date": f"{month}/{day}/{year}"})
    assert len(rows) == records
    return [(name.strip('"'), int(number.strip('"'))) for name, number in names], rows


def units(row):
    return currency(row["price"] * row["shares"]) if row["type"] in "DU" else Decimal(0)


def of(rows, fund):
    return [row for row in rows if row["fund"] == fund]


def record_list(rows, fund):
    lines = ["Trans-         Trade       Share      Number      Comm/   Div/Unit       Cash"
             "        Book    Rec",
             "action          Date       Price      Shares       Fees      Value      Div'd"
             "       Value    No.", "_" * 96]
    for number, row in enumerate(of(rows, fund), 1):
        lines.append(WORDS[row["type"]].ljust(10) + right(row["date"], 10)
                     + column(row["price"], 4, 12) + column(row["shares"], 4, 12)
                     + column(row["fees"], 2, 11)
                     + (column(units(row), 2, 11) if row["type"] in "DU" else " " * 11)
                     + column(row["dividend"], 2, 11) + column(row["book"], 2, 12)
                     + right(str(number), 7))
    mine = of(rows, fund)
    lines.append("_" * 96)
    lines.append("Total:".ljust(31) + column(sum(r["shares"] for r in mine), 4, 13)
                 + column(sum(r["fees"] for r in mine), 2, 11)
                 + column(sum(units(r) for r in mine), 2, 11)
                 + column(sum(r["dividend"] for r in mine), 2, 11)
                 + column(sum(r["book"] for r in mine), 2, 12))
    return lines


def totals(label, rows):
    return (label.ljust(30) + column(sum(r["shares"] for r in rows), 4, 14)
            + column(sum(r["fees"] for r in rows), 2, 11)
            + column(sum(r["shares"] for r in rows if r["type"] == "D"), 4, 11)
            + column(sum(r["dividend"] for r in rows), 2, 11)
            + column(sum(r["book"] for r in rows), 2, 13))


def all_funds(funds, rows):
    lines = []
    for _, fund in funds:
        lines += ["Trans-         Trade       Share      Number       Comm      Div'd"
                  "       Cash         Book",
                  "action          Date       Price      Shares       Fees     Shares"
                  "      Div'd        Value", "_" * 90]
        mine = of(rows, fund)
        for row in mine:
            lines.append(WORDS[row["type"]].ljust(10) + right(row["date"], 10)
                         + column(row["price"], 4, 12) + column(row["shares"], 4, 12)
                         + column(row["fees"], 2, 11)
                         + (column(row["shares"], 4, 11) if row["type"] == "D" else " " * 11)
                         + column(row["dividend"], 2, 11) + column(row["book"], 2, 13))
        shares = sum(r["shares"] for r in mine)
        average = Decimal(0)
        if shares > Decimal("0.005"):
            average = currency(sum(r["book"] for r in mine) / shares)
        lines += ["_" * 90, totals("Total:", mine),
                  "Average cost per share = " + shown(average, 4, zero=True)]
    return lines + [totals("Total all funds:", rows)]


def percent(part, whole):
    return currency(part / whole * 100) if whole else Decimal(0)


def current_value(funds, rows, price):
    lines = ["Fund      Number        Book     Current      Current       Gain/     Gain/"
             "      % 0f",
             "Name      Shares       Value       Price        Total       Loss$     Loss%"
             "     Total", "_" * 85]
    values = []
    for name, fund in funds:
        shares = sum(r["shares"] for r in of(rows, fund))
        book = sum(r["book"] for r in of(rows, fund))
        values.append((name, shares, book, currency(shares * price)))
    whole = sum(total for *_, total in values)
    for name, shares, book, total in values:
        number = shown(shares, 4)
        name = name[:min(10, 15 - len(number))]
        lines.append(name + right(number, 16 - len(name)) + column(book, 2, 12)
                     + column(price, 2, 12) + column(total, 2, 13) + column(total - book, 2, 12)
                     + column(percent(total - book, book), 2, 9) + "%"
                     + column(percent(total, whole), 2, 9) + "%")
    book = sum(value[2] for value in values)
    lines.append("_" * 85)
    lines.append(("Tot:" + column(book, 2, 24) + column(whole, 2, 25)
                  + column(whole - book, 2, 12) + column(percent(whole - book, book), 2, 9)
                  + "%").ljust(85))
    return lines


def main():
    check = sys.argv[1] == "--check"
    database, directory = (Path(word) for word in sys.argv[-2:])
    funds, rows = read(database)
    stem = directory / database.stem

    differing = []

    def write(kind, lines):
        path = Path(f"{stem}.{kind}.txt")
        derived = "".join(l + "\r\n" for l in lines).encode()
        if not check:
            path.write_bytes(derived)
        elif path.read_bytes() != derived:
            differing.append(path)

    for number, (_, fund) in enumerate(funds, 1):
        write(f"list{number}", record_list(rows, fund))
    write("funds", all_funds(funds, rows))
    write("value", current_value(funds, rows, Decimal("20.00")))
    for path in differing:
        print(f"{path} is not what is derived from {database}")
    return 1 if differing else 0


sys.exit(main())
