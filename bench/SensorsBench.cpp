#include "bench/BenchMachine.h"
#include "sensors/SensorDiscovery.h"
#include "sensors/SensorGrouping.h"
#include "smc/SmcClient.h"

#include <benchmark/benchmark.h>

// What is done once, at the start: finding, naming and grouping the sensors. The argument is their number.

namespace calorivo::bench {
namespace {

struct NoGPUNames final : GPUNames {
    [[nodiscard]] std::optional<std::string> integratedGPUName() override { return std::nullopt; }
    [[nodiscard]] std::optional<std::string> discreteGPUName() override { return std::nullopt; }
};

void readKey(benchmark::State& state) {
    const std::vector<SensorKey> keys = temperatureKeys(60);
    const MemorySmc smc(keys);
    SmcValue value;
    std::size_t next = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(smcReadKey(keys[next].view(), value));
        benchmark::DoNotOptimize(value);
        next = (next + 1) % keys.size();
    }
}
BENCHMARK(readKey);

void liveScan(benchmark::State& state) {
    const MemorySmc smc(temperatureKeys(static_cast<std::size_t>(state.range(0))));
    test::FakeFileManager files;
    NoGPUNames gpuNames;
    const std::vector<ModelTable> noTables;
    for (auto _ : state) {
        SensorLists lists;
        const SensorNaming naming(lists, gpuNames);
        SensorDiscovery discovery(lists, naming, files, noTables);
        discovery.getAllTempSensorNames({"bench"});
        benchmark::DoNotOptimize(lists);
    }
}
BENCHMARK(liveScan)->Arg(60)->Arg(600)->Unit(benchmark::kMicrosecond);

void naming(benchmark::State& state) {
    SensorLists lists;
    lists.tempSensorNames.assign(temperatureKeys(static_cast<std::size_t>(state.range(0))));
    NoGPUNames gpuNames;
    const SensorNaming names(lists, gpuNames);
    for (auto _ : state)
        for (const SensorKey key : lists.tempSensorNames)
            benchmark::DoNotOptimize(names.convertKeyNameToHumanString(key));
}
BENCHMARK(naming)->Arg(60)->Arg(600)->Unit(benchmark::kMicrosecond);

void grouping(benchmark::State& state) {
    const std::vector<SensorKey> keys = temperatureKeys(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        state.PauseTiming();
        SensorLists lists;
        lists.tempSensorNames.assign(keys);
        state.ResumeTiming();
        groupSensors(lists, {});
        benchmark::DoNotOptimize(lists);
    }
}
BENCHMARK(grouping)->Arg(60)->Arg(600)->Unit(benchmark::kMicrosecond);

void discovery(benchmark::State& state) {
    const MemorySmc smc(temperatureKeys(static_cast<std::size_t>(state.range(0))));
    std::size_t sensors = 0;
    for (auto _ : state) {
        const BenchEngine engine;
        sensors = engine.lists().validSensorNames.count();
    }
    state.counters["sensors"] = static_cast<double>(sensors);
}
BENCHMARK(discovery)->Arg(60)->Arg(600)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace calorivo::bench
