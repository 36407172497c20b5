// SPDX-License-Identifier: Apache-2.0
// Handing packages to the runtime, beside a deep copy of the same package.
#include "least.hpp"
#include "samplepackage.hpp"

#include <package/interop/xovalue.hpp>
#include <vesk/anyvalue.hpp>

namespace
{
void deepCopy(benchmark::State& state)
{
  const vesk::PackageInfo package = samplePackage(static_cast<int>(state.range(0)));
  while (state.KeepRunning())
  {
    vesk::PackageInfo copy(package);
    benchmark::DoNotOptimize(copy);
  }
}

void toVariant(benchmark::State& state)
{
  const vesk::PackageInfo package = samplePackage(static_cast<int>(state.range(0)));
  while (state.KeepRunning())
  {
    XO::XOValue value;
    toXOValue(package, value);
    benchmark::DoNotOptimize(value);
  }
}

void fromVariant(benchmark::State& state)
{
  XO::XOValue value;
  toXOValue(samplePackage(static_cast<int>(state.range(0))), value);
  while (state.KeepRunning())
  {
    vesk::PackageInfo package(value);
    benchmark::DoNotOptimize(package);
  }
}

void copyVariant(benchmark::State& state)
{
  XO::XOValue value;
  toXOValue(samplePackage(static_cast<int>(state.range(0))), value);
  while (state.KeepRunning())
  {
    XO::XOValue copy(value);
    benchmark::DoNotOptimize(copy);
  }
}

void fromSections(benchmark::State& state)
{
  const vesk::PackageInfo2 sections = sampleSections(static_cast<int>(state.range(0)));
  while (state.KeepRunning())
  {
    vesk::PackageInfo package(sections);
    benchmark::DoNotOptimize(package);
  }
}

void holdInAnyValue(benchmark::State& state)
{
  const vesk::PackageInfo package = samplePackage(static_cast<int>(state.range(0)));
  while (state.KeepRunning())
  {
    vesk::AnyValue value(package);
    benchmark::DoNotOptimize(value);
  }
}

void memberByName(benchmark::State& state)
{
  const vesk::AnyValue value(samplePackage(1));
  while (state.KeepRunning())
  {
    benchmark::DoNotOptimize(value.member("descriptionLanguages"));
  }
}
} // namespace

BENCHMARK(deepCopy)->Apply(behaviorCounts);
BENCHMARK(toVariant)->Apply(behaviorCounts);
BENCHMARK(fromVariant)->Apply(behaviorCounts);
BENCHMARK(copyVariant)->Apply(behaviorCounts);
BENCHMARK(fromSections)->Apply(behaviorCounts);
BENCHMARK(holdInAnyValue)->Apply(behaviorCounts);
BENCHMARK(memberByName)->Apply(leastOfMany);
