#include "bench/AllocationCount.h"
#include "bench/BenchMachine.h"

#include <benchmark/benchmark.h>

// What is done at every check: each sensor is read through the record exchange, decoded, kept, averaged and shown in
// its cell. The argument is the number of sensors. `allocs_per_cycle` must be 0.

namespace calorivo::bench {
namespace {

void checkCycle(benchmark::State& state) {
    const MemorySmc smc(temperatureKeys(static_cast<std::size_t>(state.range(0))));
    BenchEngine engine;
    engine.check();  // the first one makes room
    const std::uint64_t before = allocationCount();
    for (auto _ : state) engine.check();
    const auto allocations = static_cast<double>(allocationCount() - before);
    state.counters["allocs_per_cycle"] = benchmark::Counter(allocations, benchmark::Counter::kAvgIterations);
    state.counters["sensors"] = static_cast<double>(engine.lists().validSensorNames.count());
}
BENCHMARK(checkCycle)->Arg(60)->Arg(600)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace calorivo::bench
