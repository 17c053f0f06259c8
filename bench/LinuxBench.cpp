#include "bench/AllocationCount.h"
#include "bench/BenchMachine.h"
#include "platform/linux/LinuxSmc.h"
#include "smc/SmcClient.h"
#include "support/FakeTree.h"

#include <benchmark/benchmark.h>

// The provider of real machines on a tree of files: the argument is the number of temperatures in it, twenty a chip.

namespace calorivo::bench {
namespace {

void fill(test::FakeTree& tree, std::int64_t channels) {
    for (int number = 0; channels > 0; ++number) {
        const std::string chip =
            tree.chip(number, "coretemp", "platform/coretemp." + std::to_string(number));
        for (int channel = 1; channel <= 20 && channels > 0; ++channel, --channels)
            tree.temperature(chip, channel, std::to_string(40000 + 250 * channel),
                             "Core " + std::to_string(channel - 1));
    }
}

LinuxSmcOptions optionsFor(const test::FakeTree& tree) {
    LinuxSmcOptions options;
    options.sys = tree.root();
    options.namingFiles = {CALORIVO_SOURCE_DIR "/data/hwmon-names.conf"};
    options.minimumAge = {};  // each check reads the files anew
    return options;
}

/// The provider, connected.
class ConnectedSmc {
  public:
    explicit ConnectedSmc(const test::FakeTree& tree) : smc_(optionsFor(tree)) {
        smcSetIOKit(&smc_);
        smcOpen();
    }
    ~ConnectedSmc() {
        smcClose();
        smcSetIOKit(nullptr);
    }
    ConnectedSmc(const ConnectedSmc&) = delete;
    ConnectedSmc& operator=(const ConnectedSmc&) = delete;
    [[nodiscard]] std::vector<ModelTableEntry> sensors() const { return smc_.machineSensors(); }

  private:
    LinuxSmc smc_;
};

void openMachine(benchmark::State& state) {
    test::FakeTree tree;
    fill(tree, state.range(0));
    for (auto _ : state) {
        const ConnectedSmc smc(tree);
        benchmark::DoNotOptimize(&smc);
    }
}
BENCHMARK(openMachine)->Arg(60)->Arg(600)->Unit(benchmark::kMicrosecond)->UseRealTime();

void checkMachine(benchmark::State& state) {
    test::FakeTree tree;
    fill(tree, state.range(0));
    const ConnectedSmc smc(tree);
    BenchEngine engine(smc.sensors());
    for (int i = 0; i < 4; ++i) engine.check();  // the first ones make room
    const std::uint64_t before = allocationCount();
    for (auto _ : state) engine.check();
    const auto allocations = static_cast<double>(allocationCount() - before);
    state.counters["allocs_per_cycle"] = benchmark::Counter(allocations, benchmark::Counter::kAvgIterations);
    state.counters["sensors"] = static_cast<double>(engine.lists().validSensorNames.count());
}
BENCHMARK(checkMachine)->Arg(60)->Arg(600)->Unit(benchmark::kMicrosecond)->UseRealTime();

}  // namespace
}  // namespace calorivo::bench
