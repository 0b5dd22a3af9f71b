// SPDX-License-Identifier: GPL-3.0-or-later
// Each calculator's Calculate, with its whole report and chart data, beside the
// bare formula and the digits of the figures that its report shows.
#include <array>
#include <cmath>
#include <string>

#include "beside.h"
#include "calc/capital_required.h"
#include "calc/compound_gain.h"
#include "calc/investment_growth.h"
#include "calc/mortgage.h"
#include "calc/pension_growth.h"
#include "calc/retirement_income.h"
#include "registered.h"

namespace mirelund::bench {

namespace {

constexpr int kYears = 40;

// Money as a limit holds it: the nearest ten-thousandth, without a look at its
// range or at ties.
std::int64_t units(double value) {
  return static_cast<std::int64_t>(value * 10'000.0 + 0.5);
}
double rounded(double value) {
  return static_cast<double>(units(value)) / 10'000.0;
}

template <typename Numbers>
Global withInputs(const Numbers& values) {
  Global global;
  std::size_t slot = 0;
  for (const double value : values) global.boxes.InputValues[++slot] = ToCurrency(value);
  return global;
}

void compoundGainBench() {
  const auto limit = [buffer = Buffer<256>()]() mutable {
    const double cost = hidden(2500.0);
    const double value = hidden(4000.5);
    const double years = hidden(7.0);
    const double annual = std::exp(std::log(value / cost) / years) - 1.0;
    const double total = (value - cost) / cost;
    buffer.restart();
    for (const double figure : {years, cost, value, annual, total}) buffer.number(units(figure));
    buffer.done();
  };
  static const CompoundGainTexts texts{"    $2,500.00", "    $4,000.50", " 7", "Amber Growth"};
  beside(
      "Compound gain, calculation and report", 2.5,
      [report = std::string()]() mutable {
        const CompoundGainInput input{Currency::fromTenThousandths(hidden(25'000'000)),
                                      Currency::fromTenThousandths(hidden(40'005'000)),
                                      Currency::fromTenThousandths(hidden(70'000))};
        report.clear();
        appendCompoundGainHeading(report, texts);
        appendCompoundGainRow(report, input, compoundGain(input));
        keep(report);
      },
      limit);
  beside(
      "Compound gain, with chart data and a copy for the report box", kForInformation,
      [global = withInputs(std::array{2500.0, 4000.5, 7.0})]() mutable {
        keep(calculateCompoundGain(global.boxes, global.reports, global.chart, texts));
      },
      limit);
}

void mortgageBench() {
  for (const PaymentFrequencyRow& frequency : kPaymentFrequencies) {
    Global global;
    DaysInYearState days;
    MortgageTexts texts = loadMortgage(global.boxes, days);
    MortgageChoices choices;
    choices.frequency = frequency.frequency;
    leaveDaysInYear(days, frequency.frequency);
    const MortgageInput input{100'000.0, 8.0, 25.0, 0.0, 26.07142857, 52.14285714, choices};
    const bool monthly = frequency.frequency == PaymentFrequency::Monthly;
    const auto limit = [monthly] {
      // Two rates and the payment; then the schedule's years and payment.
      const double base = hidden(1.0 + 0.08 / 12.0);
      keep(std::pow(base, hidden(1.0)));
      keep(std::pow(base, hidden(12.0 / 26.07142857)));
      keep(std::pow(base, hidden(300.0)));
      if (monthly) return;
      keep(std::log(hidden(385.9)));
      keep(std::log(hidden(78.6)));
      keep(std::log(hidden(1.00307)));
      keep(std::pow(hidden(1.00307), hidden(519.5)));
    };
    const std::string name(frequency.text);
    beside(
        "Mortgage recalculation, " + name, 2.5, [input] { keep(solveMortgage(hidden(input))); },
        limit);
    beside(
        "Mortgage recalculation and its eight texts, " + name, 2.5,
        [boxes = global.boxes, days, texts, choices]() mutable {
          keep(RecalculateMortgage(boxes, days, choices, texts));
        },
        [limit, buffer = Buffer<256>()]() mutable {
          limit();
          buffer.restart();
          for (const double figure :
               {771.82, 131'544.9, 26.0, 365.0, 19.98, 385.91, 31'080.5, 100'464.4})
            buffer.number(units(hidden(figure)));
          buffer.done();
        });
  }
}

void investmentGrowthBench() {
  beside(
      "Investment growth, 40 years monthly, 480 rows", 2.5,
      [global = withInputs(std::array{1000.0, 100.0, 0.0, 8.0, 3.0, 2.0, 40.0})]() mutable {
        static const InvestmentGrowthTexts texts{"    $1,000.00",
                                                 "      $100.00",
                                                 ContributionFrequency::Monthly,
                                                 "  8.00%",
                                                 "  3.00%",
                                                 "  2.00%",
                                                 "40",
                                                 GrowthResults::Complete};
        keep(calculateInvestmentGrowth(global.boxes, global.reports, global.chart, texts));
      },
      [buffer = Buffer<32'768>()]() mutable {
        const double growth = std::pow(hidden(1.08), 1.0 / 12.0) - 1.0;
        const double increase = std::pow(hidden(1.03), 1.0 / 12.0) - 1.0;
        const double inflation = std::pow(hidden(1.02), 1.0 / 12.0) - 1.0;
        double value = hidden(1000.0);
        double contribution = hidden(100.0);
        buffer.restart();
        for (int period = 1; period <= 12 * kYears; ++period) {
          const double interest = rounded((value + contribution) * growth);
          value += contribution + interest;
          value -= value * inflation;
          buffer.number(period);
          buffer.number(units(contribution));
          buffer.number(units(interest));
          buffer.number(units(value));
          contribution = rounded(contribution + contribution * increase);
        }
        buffer.done();
      });
}

void pensionGrowthBench() {
  beside(
      "Pension growth, 40 years", 2.5,
      [global = withInputs(std::array{5000.0, 40'000.0, 5.0, 5.0, 3.0, 8.0, 2.0, 40.0})]() mutable {
        static const PensionGrowthTexts texts{
            "    $5,000.00", "   $40,000.00", "  5.00%", "  5.00%",
            "  3.00%",       "  8.00%",       "  2.00%", "40"};
        keep(calculatePensionGrowth(global.boxes, global.reports, global.chart, texts));
      },
      [buffer = Buffer<4096>()]() mutable {
        double value = hidden(5000.0);
        double salary = hidden(40'000.0);
        double contribution = salary * hidden(0.1);
        const double increase = hidden(0.03);
        const double growth = hidden(0.08);
        const double inflation = hidden(0.02);
        buffer.restart();
        for (int year = 1; year <= kYears; ++year) {
          const double interest = rounded((value + contribution) * growth);
          value += contribution + interest;
          value -= value * inflation;
          buffer.number(year);
          buffer.number(units(salary));
          buffer.number(units(contribution));
          buffer.number(units(interest));
          buffer.number(units(value));
          salary = rounded(salary + salary * increase);
          contribution = rounded(contribution + contribution * increase);
        }
        buffer.done();
      });
}

void capitalRequiredBench() {
  beside(
      "Capital required, 40 years", 2.5,
      [global = withInputs(std::array{100'000.0, 8.0, 40.0})]() mutable {
        static const CapitalRequiredTexts texts{"  $100,000.00", "  8.00%", "40"};
        keep(calculateCapitalRequired(global.boxes, global.reports, global.chart, 0, texts));
      },
      [buffer = Buffer<4096>()]() mutable {
        const double i = hidden(0.08);
        const double invested =
            hidden(100'000.0) * i / ((1.0 + i) * (std::pow(1.0 + i, double{kYears}) - 1.0));
        double value = 0.0;
        buffer.restart();
        for (int year = 1; year <= kYears; ++year) {
          const double interest = i * (value + invested);
          value += invested + interest;
          buffer.number(year);
          buffer.number(units(invested));
          buffer.number(units(interest));
          buffer.number(units(value));
        }
        buffer.done();
      });
}

void retirementIncomeBench() {
  beside(
      "Retirement income, percentage, 40 years", 3,
      [global = withInputs(std::array{100'000.0, 8.0, 6.0, 40.0})]() mutable {
        static const RetirementIncomeTexts texts{"  $100,000.00", "  8.00%", "  6.00%", "40"};
        keep(calculateRetirementIncome(global.boxes, global.reports, global.chart, 0, texts));
      },
      [buffer = Buffer<4096>()]() mutable {
        double value = hidden(100'000.0);
        const double growth = hidden(0.08);
        const double withdrawn = hidden(0.06);
        buffer.restart();
        for (int year = 1; year <= kYears; ++year) {
          const double interest = value * growth;
          const double income = rounded(value * withdrawn);
          value = rounded(value + value * (growth - withdrawn));
          buffer.number(year);
          buffer.number(units(interest));
          buffer.number(units(income));
          buffer.number(units(value));
        }
        buffer.done();
      });

  const Global fixed = withInputs(std::array{100'000.0, 10.0, 500.0, 1.0});
  beside(
      "Retirement income, fixed amount, 40 years", 2.5,
      [global = fixed]() mutable {
        static const RetirementIncomeTexts texts{"  $100,000.00", " 10.00%", "      $500.00",
                                                 "  1.00%"};
        keep(calculateRetirementIncome(global.boxes, global.reports, global.chart,
                                       kWithdrawalChoices[1].withdrawalOption, texts));
      },
      [buffer = Buffer<4096>()]() mutable {
        double value = hidden(100'000.0);
        const double growth = std::pow(1.0 + hidden(0.10), 1.0 / 12.0) - 1.0;
        double income = hidden(500.0);
        const double increase = hidden(0.01);
        buffer.restart();
        for (int year = 1; year <= kYears; ++year) {
          double yearInterest = 0.0;
          for (int month = 0; month < 12; ++month) {
            const double interest = value * growth;
            value += rounded(interest) - income;
            yearInterest += interest;
          }
          buffer.number(year);
          buffer.number(units(yearInterest));
          buffer.number(units(12 * income));
          buffer.number(units(value));
          value += income * increase;
          income = rounded(income + income * increase);
        }
        buffer.done();
      });
}

}  // namespace

void registerCalculators() {
  compoundGainBench();
  mortgageBench();
  investmentGrowthBench();
  pensionGrowthBench();
  capitalRequiredBench();
  retirementIncomeBench();
}

}  // namespace mirelund::bench
