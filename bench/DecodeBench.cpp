#include "smc/SmcDecode.h"

#include <benchmark/benchmark.h>

#include <array>

// From the bytes of one value to its number.

namespace calorivo::bench {
namespace {

void sp78(benchmark::State& state) {
    std::array<std::uint8_t, 2> bytes{49, 0x80};
    for (auto _ : state) {
        benchmark::DoNotOptimize(bytes);
        benchmark::DoNotOptimize(smcSp78FromBytes(bytes[0], bytes[1]));
    }
}
BENCHMARK(sp78);

void fpe2(benchmark::State& state) {
    std::array<std::uint8_t, 2> bytes{0x1c, 0x20};
    for (auto _ : state) {
        benchmark::DoNotOptimize(bytes);
        benchmark::DoNotOptimize(smcFpe2FromBytes(bytes, 2));
    }
}
BENCHMARK(fpe2);

void unsignedNumber(benchmark::State& state) {
    std::array<std::uint8_t, 4> bytes{0, 0, 1, 0x2c};
    for (auto _ : state) {
        benchmark::DoNotOptimize(bytes);
        benchmark::DoNotOptimize(smcUnsignedFromBytes(bytes));
    }
}
BENCHMARK(unsignedNumber);

}  // namespace
}  // namespace calorivo::bench
