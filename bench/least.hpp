// SPDX-License-Identifier: Apache-2.0
#ifndef BENCH_LEAST_HPP
#define BENCH_LEAST_HPP

#include <benchmark/benchmark.h>

#include <algorithm>
#include <vector>

/// Reports the least time of many runs, which can be compared even when other programs are running.
inline void leastOfMany(benchmark::internal::Benchmark* benchmark)
{
  benchmark->Repetitions(12)->ReportAggregatesOnly()->ComputeStatistics(
      "least", [](const std::vector<double>& times)
      { return *std::min_element(times.begin(), times.end()); });
}

/// Runs with packages of 1, 100 and 10,000 behaviors; several of each in a row, since some leave
/// work for the allocator to later ones.
inline void behaviorCounts(benchmark::internal::Benchmark* benchmark)
{
  benchmark->Arg(1)
      ->Arg(100)
      ->Arg(10000)
      ->Unit(benchmark::kMicrosecond)
      ->MinTime(1.5)
      ->Apply(leastOfMany);
}

#endif
