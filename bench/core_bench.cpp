// SPDX-License-Identifier: GPL-3.0-or-later
// The core beside its limits; bench/ratios.py runs it and makes the table.
#include <benchmark/benchmark.h>

#include "registered.h"

int main(int argc, char** argv) {
  mirelund::bench::registerFormatting();
  mirelund::bench::registerCalculators();
  mirelund::bench::registerManager();
  mirelund::bench::registerInsights();
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
