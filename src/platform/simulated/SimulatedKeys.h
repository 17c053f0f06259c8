#pragma once

#include "platform/simulated/SimulatedThermals.h"
#include "smc/SmcService.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace calorivo {

/// How the value of a simulated key comes about.
enum class SimulatedValue {
    constant,
    keyCount,
    /// The part's temperature.
    temperature,
    /// The same, but nothing while the discrete unit sleeps.
    discreteTemperature,
    /// How far the processor is from its limit.
    headroom,
    fanSpeed,
    fanTarget,
    processorPower,
    totalPower,
};

/// One key of the simulated controller.
struct SimulatedKey {
    std::string_view key;
    std::string_view type;
    SimulatedValue value = SimulatedValue::constant;
    /// Constants: the bytes themselves.
    std::string_view bytes{};
    std::size_t fan = 0;
    /// A temperature is that of the air, plus this share of what the part has above it, plus the offset,
    /// plus or minus half the unrest.
    SimulatedPart part = SimulatedPart::air;
    double share = 1;
    double offset = 0;
    double unrest = 0;
};

/// All of them, in byte order.
[[nodiscard]] std::span<const SimulatedKey> simulatedKeys();
/// The place of this packed key in `simulatedKeys()`; none for any other key.
[[nodiscard]] std::optional<std::size_t> simulatedKeyIndex(std::uint32_t key);
[[nodiscard]] std::uint32_t simulatedKeySize(const SimulatedKey& key);
/// Fills in the bytes that the key at this place holds in this state.
void fillSimulatedValue(std::size_t index, const SimulatedState& state, const SimulatedLoads& loads,
                        std::span<std::uint8_t, 32> bytes);

}  // namespace calorivo
