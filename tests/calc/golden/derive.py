#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Derives the calculators' golden reports apart from the program.

A golden file NAME.txt is a script (comments "#", a page, what is typed, chosen,
clicked and pressed, and the messages that must come of it), a line "----", and
the exact text of the Results box, each line end a line feed. This program reads
the script alone and plays it: boxes with their starting values, key filters and
what leaving them does, lists and option buttons, the count of comparisons,
Calculate. A message that comes and is not announced next, or is announced and
does not come, is an error.

Amounts are exact decimals: four places, ties to the even digit, where an amount
is stored; two or three places, ties away from zero, where it is shown; powers
and logarithms have 60 digits. Rates that are single or double precision are
taken for exactly what they are: a double 5 % is a hair above 0.05 and tips a tie
upwards. An amount is multiplied in doubles in one place only, where a cut to
whole cents lays bare the product's last bit.

    derive.py [FOLDER or FILE]...          rewrites the result parts in place
    derive.py --check [FOLDER or FILE]...  shows what differs, changes nothing

Without a name it takes its own folder. The result parts are written by this
program alone, never from what the program under test prints.
"""
import difflib
import math
import struct
import sys
from collections import namedtuple
from decimal import ROUND_HALF_EVEN, ROUND_HALF_UP, Decimal, getcontext
from pathlib import Path

getcontext().prec = 60
getcontext().Emax = 308  # a power beyond every double fails here, too
LARGEST = Decimal("922337203685477.5807")
RULE = "_" * 45 + "\n"


class ScriptError(Exception):
    """The script asks for what nobody could do, or its messages are wrong."""


class Refused(Exception):
    """A calculation ends with the message it carries."""


# --- numbers and their texts ---

def currency(value):
    value = value.quantize(Decimal("0.0001"), ROUND_HALF_EVEN)
    if abs(value) > LARGEST:
        raise OverflowError("beyond every amount")
    return value


def single(value):
    return Decimal(struct.unpack("f", struct.pack("f", float(value)))[0])


def hundredth(value):
    return Decimal(float(value) / 100)  # exactly what the double is


def ln(value):
    if value <= 0:
        raise ZeroDivisionError("logarithm")
    return value.ln()


def shown(value, decimals=2, grouped=True):
    """No digit before the point below one; the sign stays when every digit is zero."""
    rounded = abs(value).quantize(Decimal(1).scaleb(-decimals), ROUND_HALF_UP)
    text = format(rounded, f"{',' if grouped else ''}.{decimals}f")
    return ("-" if value < 0 else "") + (text[1:] if rounded < 1 else text)


def right(text, width):
    return text.rjust(width)[:width]


def row(label, *values):
    return label + "".join(right(shown(currency(value)), 14) for value in values) + "\n"


def dollars(value, width=13):
    return right("$" + shown(value), width)


def whole(value, width=3):
    return right(shown(Decimal(value), 0, False), width)


# --- the boxes and lists of each page, in the order of the report's heading ---

# The heading's label, the starting value, the decimals typed and shown (None: a
# text), the sign of money or percent, the width, the items of a list.
Box = namedtuple("Box", "label start decimals sign width items", defaults=(None,))


def money(label, start, width=13):
    return Box(label, Decimal(start), 2, "$", width)


def percent(label, start, width=6, decimals=2):
    return Box(label, Decimal(start), decimals, "%", width)


def years(label, start, width=3):
    return Box(label, Decimal(start), 0, "", width)


# Periods a year and the heading of the first column.
PERIODS = {"Annually": (1, "Year    "), "Quarterly": (4, "Quarter "), "Monthly": (12, "Month   ")}
COMPOUNDINGS = {"Monthly": 12, "Bimonthly": 6, "Quarterly": 3, "Semiannual": 2, "Annual": 1}
# Payments a year, the days between them (0: none counted), monthly payments they add up to.
FREQUENCIES = {"Monthly": (12, 0, 12), "Semimonthly": (24, 0, 12), "2 Weeks": (26, 14, 12),
               "1 Week": (52, 7, 12), "Biweekly(acl)": (26, 14, 13), "Weekly(acl)": (52, 7, 13)}
DAYS = [Decimal(days) for days in ("365.25", "365", "364.5", "364", "363.5", "363")]
NO_DAYS = len(DAYS)

BOXES = {
    "CompoundGain": {
        "CGInCostofInvest": money("Cost of Investment:          ", 10000),
        "CGInValueNow": money("Present/future value:        ", 20000),
        "CGInNumOfYrs": years("Number of years invested:              ", 5),
        "CGInNameOfInvest": Box("Name of investment:", "XYZ Mutual Fund", None, "", 23)},
    "CapitalRequired": {
        "CRInCapitalReq": money("Amount of capital required:", 100000),
        "CRInIntGrowthRate": percent("Annual interest/growth rate:      ", 15),
        "CRInTimeInYrs": years("Number of years:                     ", 25)},
    "InvestmentGrowth": {
        "IGInBegBal": money("Beginning balance:          ", 0),
        "IGInEachContrib": money("Each contribution:          ", 1000),
        "IGInMonthsYrs": Box("Frequency of contribution:     ", "Annually", None, "", 0,
                             PERIODS),
        "IGInIntGrowthRate": percent("Annual growth rate:                 ", 15, 5),
        "IGInAnnContribRate": percent("Increase annual contribution:       ", 0, 5),
        "IGInAnninFlatRate": percent("Annual inflation rate:              ", 0, 5),
        "IGInYearsInvested": years("Number years invested:                 ", 25, 2)},
    "PensionGrowth": {
        "PGInCurrBalance": money("Current balance in account:  ", 0),
        "PGInCurrAnnSalary": money("My current annual salary:    ", 40000),
        "PGInAnnContribRate": percent("My annual contribution rate:        ", 4),
        "PGInCompAnnContribRate": percent("Company annual contribution rate:   ", 4),
        "PGInEstSalIncrease": percent("Estimated annual salary increase:   ", 4),
        "PGInAnnIntGrowthRate": percent("Annual interest/growth rate:        ", 10),
        "PGInEstAnnFlatRate": percent("Estimated annual inflation rate:    ", 0),
        "PGInNumYearsToRetire": years("Number of years to retirement:          ", 25)},
    "Mortgage": {
        "MTCompPeriod": Box("Compound interest periods/yr:     ", "Monthly", None, "", 10,
                            COMPOUNDINGS),
        "MTInPrincipal": money("Principal amount of mortgage:  ", 100000),
        "MTInRate": percent("Annual interest rate %:               ", "6.5", decimals=3),
        "MTInTerm": years("Amortization period in years:          ", 25, 5),
        "MTInMthPayment": money("Monthly principal + interest:  ", 0),
        "MTFreqPmt": Box("Frequency/type of payment:     ", "Biweekly(acl)", None, "", 13,
                         FREQUENCIES)},
    "RetirementIncome": {  # starts with the figures of the example in its help
        "RIInCurrValue": money("Starting value of investments: ", 100000),
        "RIInAnnIntGrowthRate": percent("Annual interest/growth rate:          ", 20),
        "RIInAnnIncWDrawnRate": percent("Annual income withdrawn as a (%):     ", 15),
        "RIInTimeInYrs": years("Time in years:                        ", 25, 6)},
}
# The option buttons, and what the second of them puts in place of the page's own boxes.
# A change of the retirement option keeps the first two boxes and loads only the other
# two: 1,000 a month, not raised; the raise is typed like any percentage.
OPTIONS = {
    "CapitalRequired": ("CRCapitalChoices", {
        **BOXES["CapitalRequired"],
        "CRInCapitalReq": money("Annual income required:    ", 40000)}),
    "InvestmentGrowth": ("IGResultsChoice", {}),
    "RetirementIncome": ("RIWDrawalChoice", {
        "RIInAnnIncWDrawnRate": money("Monthly amount of cash withdrawn:", 1000, 11),
        "RIInTimeInYrs": percent("Increase annual income by:            ", 0)}),
}
SOLVED = {"MTPaymentOpt": "MTInMthPayment", "MTPrincipalOpt": "MTInPrincipal",
          "MTTermOpt": "MTInTerm"}


class Page:
    """One calculator page from the moment it is shown."""

    def __init__(self, name):
        self.name, self.boxes = name, dict(BOXES[name])
        self.value, self.text, self.said = {}, {}, []
        self.results, self.option, self.solved, self.days = "", 0, "MTInMthPayment", 1
        self.begin()
        for box in self.boxes:
            self.store(box, self.boxes[box].start)

    def begin(self):
        self.report, self.count, self.start_over = "", 0, False

    def store(self, name, value):
        _, _, decimals, sign, width, _ = self.boxes[name]
        self.value[name] = value
        if decimals is None:
            self.text[name] = right(value, width) if width else value
        elif sign == "$":
            self.text[name] = dollars(value, width)
        else:
            self.text[name] = right(shown(value, decimals, False), width) + sign

    def attempt(self, action):
        """What fails leaves the Results as they are."""
        try:
            action(self)
        except Refused as refused:
            self.said.append(str(refused))
        except ArithmeticError:
            self.said.append("message 3")

    def type_into(self, name, keys):
        box, text = self.boxes[name], ""  # the first key replaces the old text
        if not keys or self.name == "Mortgage" and name == self.solved:
            raise ScriptError(f"nothing can be typed into {name}, or nothing is")
        if self.name == "CapitalRequired":  # where it empties the report, too
            self.report = self.results = ""
        for key in keys:
            point = text.find(".")
            if (box.decimals is None or key == "." and box.decimals
                    or key in "0123456789" and (point < 0 or len(text) <= point + box.decimals)):
                text += key
        if box.decimals is None:
            return self.store(name, text)
        number = Decimal("0" + ".".join(text.split(".")[:2]))  # a second point ends it
        if box.decimals == 0 and number > 40:
            self.said.append("message 5")
            number = Decimal(40)
        self.store(name, currency(number))
        if self.name == "Mortgage":
            self.attempt(solve_mortgage)

    def choose(self, name, item):
        if item not in self.boxes[name].items:
            raise ScriptError(f"{name} has no {item}")
        self.store(name, item)
        if name == "MTFreqPmt":
            self.leave_days()

    def leave_days(self):  # of the frequency's list and of the day buttons
        if not FREQUENCIES[self.value["MTFreqPmt"]][1]:
            self.days = NO_DAYS
        elif self.days == NO_DAYS:
            self.days = 1
        self.attempt(solve_mortgage)

    def click(self, button):
        group, _, index = button.rpartition("_")
        name, second = OPTIONS.get(self.name, (None, None))
        if self.name == "Mortgage" and button in SOLVED:
            self.solved = SOLVED[button]  # worked out when a box is left next
        elif self.name == "Mortgage" and group == "MTIRFactor" and index in tuple("012345"):
            self.days = int(index)
            self.leave_days()
        elif group == name and index in ("0", "1"):
            self.option = int(index)
            if second:
                self.report = self.results = ""
            for box in second:
                self.boxes[box] = (second if self.option else BOXES[self.name])[box]
                self.store(box, self.boxes[box].start)
        else:
            raise ScriptError(f"no option button {button}")

    def press(self, button):
        prefix = next(iter(self.boxes))[:2]
        if button == prefix + "Calculate":
            self.attempt(CALCULATE[self.name])
        elif button == prefix + "Help":  # its text is not derived, a script cannot end with it
            self.report = self.results = None
            self.start_over = True
        else:
            raise ScriptError(f"no button {button}")

    def lines(self, *names):
        return "".join(self.boxes[name].label + self.text[name] + "\n"
                       for name in names or self.boxes)

    def show(self):
        self.results = self.report
        if self.count == 10:
            self.begin()
            self.said.append("message 8")


# --- the calculators ---

def compound_gain(page):
    if page.start_over:
        page.begin()
    page.count += 1  # counted, and its heading kept, even when it fails
    page.report += page.lines() + "\nYears     Cost        Value  Annual%   Total%\n" + RULE
    cost, value, n, _ = page.value.values()
    if not (cost and value and n):
        raise Refused("message 18")
    annual = (value / cost) ** (1 / n) - 1
    total = (value - cost) / cost
    page.report += (whole(n, 2) + right(shown(cost), 12) + right(shown(value), 13)
                    + right(shown(100 * annual, 3, False) + "%", 9)
                    + right(shown(100 * total, 2, False) + "%", 9) + "\n" + RULE + "\n")
    currency(100 * annual)  # kept for the chart as an amount, which it may exceed
    page.show()


def capital_required(page):
    page.begin()
    page.report = page.lines() + "\nYear     Invested    Int/Growth         Value\n" + RULE
    target, rate, n = page.value.values()
    rate /= 100
    if page.option:
        target /= rate
    payment = target * rate / ((1 + rate) * ((1 + rate) ** n - 1))
    value = gained = Decimal(0)
    for year in range(1, int(n) + 1):
        interest = rate * (value + payment)
        value += payment + interest
        gained += interest
        page.report += row(whole(year), payment, interest, value)
    page.report += RULE + row("Tot", n * payment, gained, value)
    page.show()


def investment_growth(page):
    complete = page.option == 0
    if complete or page.start_over:
        page.begin()
    page.count += 1  # counted, and its heading kept, even when it fails
    balance, contribution, frequency, *rates, n = page.value.values()
    per_year, label = PERIODS[frequency]
    page.report += page.lines() + label + " Invested    Int/Growth         Value\n" + RULE
    if not n:
        raise ZeroDivisionError("no years")
    growth, increase, inflation = (  # doubles, by way of the nominal percentage
        Decimal(((1 + float(rate) / 100) ** (1 / per_year) - 1) * per_year * 100 / per_year / 100)
        for rate in rates)
    growth = single(growth)
    value = total = balance
    rows, n = "", int(n) * per_year
    for period in range(1, n + 1):
        if period > 1:
            contribution = currency(contribution * increase + contribution)
        base = value + contribution  # only its interest is rounded, the value runs on as it is
        interest = currency(base * growth)
        value = interest + base
        value -= value * inflation
        total += contribution
        rows += row(whole(period), base if period == 1 else contribution, interest, value)
    totals = row(whole(n), total, currency(value) - currency(total), value)
    page.report += rows + RULE + totals if complete else totals + RULE + "\n"
    page.show()


def pension_growth(page):
    page.begin()
    page.report = (page.lines() + "Year    Salary    Contributions    Int/Growth         Value\n"
                   + "_" * 59 + "\n")
    balance, salary, own, company, increase, growth, inflation, n = page.value.values()
    if not n:
        raise ZeroDivisionError("no years")
    increase, inflation, growth = hundredth(increase), hundredth(inflation), single(growth / 100)
    contribution = (hundredth(own) + hundredth(company)) * salary
    base = total = balance + contribution
    for year in range(1, int(n) + 1):
        if year > 1:  # a contribution enters a year late, so the first one enters twice
            base = value + contribution
            salary = currency(salary * increase + salary)
            contribution = currency(contribution)
            contribution = currency(contribution * increase + contribution)
            total += contribution
        interest = currency(base * growth)
        value = interest + base
        value -= value * inflation
        page.report += row(whole(year), salary, contribution, interest, value)
    page.report += "_" * 59 + "\n" + row("Total:".ljust(17), total,
                                         currency(value) - currency(total), value)
    page.show()
    page.results += "\n" + " " * 28 + "Hidden column >"


def schedule(page, k, rate, principal, payment, term, normal):
    """The result labels at the chosen frequency, beside the normal mortgage's interest."""
    count, days, monthly = FREQUENCIES[page.value["MTFreqPmt"]]
    label = {"count": str(count), "days": shown(DAYS[page.days]) if days else "Normal"}
    if count == 12:
        return dict(label, years=shown(term), payment=dollars(payment),
                    saved=dollars(Decimal(0)), interest=dollars(normal))
    # Rated with the payments in that many days, to eight places, but counted in whole ones.
    per_year = (DAYS[page.days] / days).quantize(Decimal("1e-8")) if days else Decimal(count)
    rate = (1 + rate) ** (k / per_year) - 1
    part = payment * monthly / count
    term = (ln(part) - ln(part - rate * principal)) / (count * ln(1 + rate))
    growth = (1 + rate) ** (count * term)
    each = rate * growth * principal / (growth - 1)
    interest = each * count * term - principal
    return dict(label, years=right(shown(term), 5), payment=dollars(each),
                saved=dollars(normal - interest), interest=dollars(interest))


def solve_mortgage(page):
    """What Calculate and every leaving of a box work out: the solved box and the labels."""
    failure = "message 3"
    try:
        if page.solved != "MTInTerm":
            page.store(page.solved, Decimal(0))
        compounding, principal, rate, term, payment, _ = page.value.values()
        k = Decimal(COMPOUNDINGS[compounding])
        rate = single(single(rate / 100) / k)
        monthly = (1 + rate) ** (k / 12) - 1
        if page.solved == "MTInTerm":
            failure = "platform Payment is too small, repayment would take over 40 years."
            term = (ln(payment) - ln(payment - monthly * principal)) / (12 * ln(1 + monthly))
            if term > Decimal("40.004"):
                raise Refused(failure)
            if payment >= principal:
                raise Refused("platform Payment is too large. Greater than principal.")
            # At most two decimals, a whole one with its point, and not justified as typed ones.
            page.value["MTInTerm"], page.text["MTInTerm"] = term, shown(term).rstrip("0")
        else:
            growth = (1 + monthly) ** (12 * term)
            factor = monthly * growth / (growth - 1)
            if page.solved == "MTInMthPayment":
                solved = payment = factor * principal
            else:
                solved = principal = payment / factor
            if not solved:
                raise Refused(failure)
            page.store(page.solved, solved)  # unrounded, as the next solving takes it
        normal = payment * 12 * term - principal
        label = schedule(page, k, rate, principal, payment, term, normal)
    except ArithmeticError:
        raise Refused(failure) from None
    return dict(label, normal=dollars(normal))


def mortgage(page):
    if page.start_over:
        page.begin()
    label = solve_mortgage(page)  # a failure appends and counts nothing
    page.count += 1
    page.report += (
        "           Conventional Mortgage\n" + page.lines(*list(page.boxes)[:5])
        + "Total interest paid:           " + label["normal"] + "\n\n"
        + "             Accelerated Mortgage\n" + page.lines("MTFreqPmt")
        + "Number of payments each year:             " + label["count"] + "\n"
        + "Number of days in year used:          " + label["days"] + "\n"
        + "Interest saved v normal mtge:  " + label["saved"] + "\n"
        + "No. of years to final payment:         " + label["years"] + "\n"
        + "Each payment, Principal + int: " + label["payment"] + "\n"
        + "Total interest paid:           " + label["interest"] + "\n" + "_" * 44 + "\n\n")
    page.show()


def percentage_years(value, growth, share, n):
    def cut(double):  # whole cents, downwards; the half of a tenth stays in the amount
        return currency((math.floor(100 * double) + Decimal("0.05")) / 100)

    if not n:
        raise ZeroDivisionError("no years")
    growth, share, rows = single(growth / 100), float(share) / 100, []
    for _ in range(int(n)):
        opening = float(value)  # in doubles 99.99 % of 100,000 falls below 99,990
        interest, income = value * growth, cut(opening * share)
        if income > value:
            raise Refused("message 7")
        value = cut(opening + opening * (float(growth) - share))
        rows.append((interest, income, value))
    return rows, sum(values[1] for values in rows), value


def amount_years(value, growth, month, raised):
    def months(value, count):
        interest = Decimal(0)
        for _ in range(count):
            interest += value * growth  # shown unrounded, but added to the value as an amount
            value = currency(value + currency(value * growth) - month)
        return interest, value

    growth = single((1 + single(growth / 100)) ** (Decimal(1) / 12) - 1)
    year, raised, rows, income = 12 * month, currency(raised / 100), [], Decimal(0)
    if year > value:
        raise Refused("message 7")
    while len(rows) < 40 and (not rows or value > year):
        interest, value = months(value, 12)
        rows.append((interest, year, value))
        # A raise is an amount, rounded once, and goes to the value, too; the total takes
        # the year's amount already raised.
        value = currency(value + currency(raised * month))
        month, year = (currency(old + currency(raised * old)) for old in (month, year))
        income += year
    if len(rows) < 40:
        interest, _ = months(value, math.floor(value / month))
        rows.append((interest, interest + value, Decimal(0)))
        income += interest + value
        value = Decimal(0)
    return rows, income, value


def retirement_income(page):
    page.begin()
    rows, income, value = (amount_years if page.option else percentage_years)(
        *page.value.values())
    page.report = page.lines() + "\nYear   Int/Growth   Annual Income       Value\n" + RULE
    for number, values in enumerate(rows, 1):
        page.report += row(whole(number), *values)
    page.report += RULE + row("Tot", sum(values[0] for values in rows), income, value)
    page.show()


CALCULATE = {"CompoundGain": compound_gain, "CapitalRequired": capital_required,
             "InvestmentGrowth": investment_growth, "PensionGrowth": pension_growth,
             "Mortgage": mortgage, "RetirementIncome": retirement_income}


# --- scripts and golden files ---

def play(script):
    """The Results text that a script leaves."""
    first, *rest = [line for line in script if line and not line.startswith("#")] or [""]
    if not first.startswith("page ") or first[5:] not in BOXES:
        raise ScriptError("does not begin with a page")
    page = Page(first[5:])
    for line in rest + ["end"]:
        verb, _, what = line.partition(" ")
        if verb in ("message", "platform"):
            if not page.said or page.said.pop(0) != line:
                raise ScriptError(f"announced, but did not come here: {line}")
        elif page.said:
            raise ScriptError(f"came unannounced before '{line}': {page.said[0]}")
        elif verb == "click":
            page.click(what)
        elif verb == "press":
            page.press(what)
        elif verb in page.boxes and what.startswith("= "):
            (page.choose if page.boxes[verb].items else page.type_into)(verb, what[2:])
        elif line != "end":
            raise ScriptError(f"not understood: {line}")
    if page.results is None:
        raise ScriptError("ends with a help text")
    return page.results


def main(arguments):
    check = "--check" in arguments
    paths = [Path(name) for name in arguments if name != "--check"] or [Path(__file__).parent]
    files = [file for path in paths
             for file in (sorted(path.glob("*.txt")) if path.is_dir() else [path])]
    good = 0
    for file in files:
        script, line, before = file.read_bytes().decode().partition("\n----\n")
        try:
            if not line:
                raise ScriptError("has no line ----")
            after = play(script.split("\n"))
        except (ScriptError, ArithmeticError) as error:
            print(f"{file.name}: {error}")
            continue
        if check and after != before:
            print(*difflib.unified_diff(before.split("\n"), after.split("\n"),
                                        f"{file.name} as it is", "derived", lineterm=""), sep="\n")
            continue
        good += 1
        if after != before:
            file.write_bytes((script + line + after).encode())
            print(f"{file.name} rewritten")
    print(f"{good} of {len(files)} files {'reproduced' if check else 'as derived'}")
    return 0 if files and good == len(files) else 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
