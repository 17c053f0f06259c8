#include "platform/simulated/SimulatedKeys.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>

namespace calorivo {

namespace {

using namespace std::string_view_literals;
using enum SimulatedPart;

constexpr SimulatedKey constant(std::string_view key, std::string_view type, std::string_view bytes) {
    return {.key = key, .type = type, .bytes = bytes};
}
constexpr SimulatedKey computed(std::string_view key, std::string_view type, SimulatedValue value,
                                std::size_t fan = 0) {
    return {.key = key, .type = type, .value = value, .fan = fan};
}
constexpr SimulatedKey warm(std::string_view key, SimulatedPart part, double share, double offset,
                            double unrest) {
    return {.key = key,
            .type = "sp78",
            .value = SimulatedValue::temperature,
            .part = part,
            .share = share,
            .offset = offset,
            .unrest = unrest};
}
constexpr SimulatedKey discrete(std::string_view key, SimulatedPart part, double share, double offset,
                                double unrest) {
    SimulatedKey row = warm(key, part, share, offset, unrest);
    row.value = SimulatedValue::discreteTemperature;
    return row;
}

// clang-format off
constexpr SimulatedKey keys[] = {
    computed("#KEY", "ui32", SimulatedValue::keyCount),
    constant("ACID", "ch8*", "\xBA\xBE\x00\x3C\x03\x11\x00\x00"sv),
    constant("ALSF", "fp1f", "\x20\x00"sv),
    constant("B0AV", "ui16", "\x31\x2C"sv),
    constant("B0FC", "ui16", "\x1F\x0E"sv),
    constant("B0St", "hex_", "\x00\xE0"sv),
    constant("BATP", "flag", "\x00"sv),
    constant("BNum", "ui8 ", "\x01"sv),
    constant("CLKH", "{clh", "\x00\x00\x70\x80\x00\x01\x19\x40"sv),
    computed("F0Ac", "fpe2", SimulatedValue::fanSpeed, 0),
    constant("F0ID", "{fds", "\x00\x01\x00\x00Right Side\x00\x00"sv),
    constant("F0Mn", "fpe2", "\x1F\x40"sv),
    constant("F0Mx", "fpe2", "\x60\xE0"sv),
    constant("F0Sf", "fpe2", "\x1F\x40"sv),
    computed("F0Tg", "fpe2", SimulatedValue::fanTarget, 0),
    computed("F1Ac", "fpe2", SimulatedValue::fanSpeed, 1),
    constant("F1ID", "{fds", "\x00\x01\x00\x00Left side  \x00"sv),
    constant("F1Mn", "fpe2", "\x21\xC0"sv),
    constant("F1Mx", "fpe2", "\x60\xE0"sv),
    constant("F1Sf", "fpe2", "\x21\xC0"sv),
    computed("F1Tg", "fpe2", SimulatedValue::fanTarget, 1),
    constant("FNum", "ui8 ", "\x02"sv),
    constant("FS! ", "ui16", "\x00\x00"sv),
    constant("LSOF", "flag", "\x01"sv),
    constant("MSLD", "ui8 ", "\x00"sv),
    constant("NATJ", "ui8 ", "\x00"sv),
    computed("PC0C", "sp96", SimulatedValue::processorPower),
    computed("PDTR", "sp96", SimulatedValue::totalPower),
    constant("REV ", "{rev", "\x02\x19\x0F\x00\x00\x12"sv),
    constant("RPlt", "ch8*", "sim\x00\x00\x00\x00\x00"sv),
    warm("TA0P", air, 1.0, 1.5, 0.5),
    warm("TA0p", board, 0.2, 0.5, 0.5),
    warm("TB0T", battery, 1.0, 0.5, 0.0),
    warm("TB1T", battery, 1.0, 0.5, 0.0),
    warm("TB2T", battery, 0.95, -0.5, 0.0),
    warm("TC0D", processor, 1.0, 0.0, 1.0),
    warm("TC0E", processor, 0.98, -0.5, 1.0),
    warm("TC0F", processor, 1.0, 0.5, 1.0),
    constant("TC0G", "sp78", "\x5A\x00"sv),
    constant("TC0J", "sp96", "\x00\x00"sv),
    warm("TC0P", processor, 0.7, 0.0, 0.5),
    warm("TC1C", processor, 1.0, 0.5, 3.0),
    warm("TC2C", processor, 1.0, -0.5, 3.0),
    warm("TC3C", processor, 1.0, 0.0, 3.0),
    warm("TC4C", processor, 1.0, -1.0, 3.0),
    warm("TCGC", processor, 0.85, 0.0, 1.0),
    warm("TCGc", processor, 0.85, 0.0, 1.0),
    warm("TCSA", processor, 0.8, 0.0, 1.0),
    warm("TCXC", processor, 1.0, 1.0, 1.0),
    warm("TCXc", processor, 1.0, 1.0, 1.0),
    computed("TCXr", "sp78", SimulatedValue::headroom),
    // The integrated unit sits on the processor's die.
    warm("TG0D", processor, 0.85, 0.0, 1.0),
    warm("TG0P", processor, 0.65, 0.0, 0.5),
    discrete("TG1D", graphics, 1.0, 0.0, 1.0),
    discrete("TG1P", graphics, 0.8, 0.0, 0.5),
    discrete("TG1d", graphics, 0.97, 0.0, 1.0),
    warm("TH0A", drive, 1.0, 0.0, 0.5),
    warm("TH0B", drive, 0.95, 0.5, 0.5),
    warm("THSP", board, 0.9, 1.0, 0.5),
    warm("TI0P", board, 1.0, 3.0, 0.5),
    warm("TI1P", board, 1.0, 1.5, 0.5),
    warm("TM0P", board, 1.1, 2.0, 0.5),
    warm("TM0S", board, 1.15, 4.0, 0.5),
    // A probe that this machine was built without.
    constant("TM1P", "sp78", "\x81\x00"sv),
    warm("TM1S", board, 1.1, 3.5, 0.5),
    warm("TN0D", hub, 1.0, 1.0, 0.5),
    warm("TN0P", hub, 0.9, 0.0, 0.5),
    warm("TPCD", hub, 1.0, 3.0, 0.5),
    warm("TS0p", board, 0.7, 0.0, 0.0),
    warm("TW0P", radio, 1.0, 0.0, 0.5),
    warm("Ta0P", heatsink, 0.5, 1.0, 0.5),
    warm("Th1H", heatsink, 1.0, 0.5, 0.5),
    warm("Th2H", heatsink, 0.97, 0.0, 0.5),
    warm("Tm0P", board, 0.95, 1.0, 0.5),
    warm("Tp0C", board, 1.0, 2.0, 0.5),
    warm("Ts0P", palmRest, 1.0, 0.0, 0.0),
    warm("Ts0S", heatsink, 0.8, 0.0, 0.5),
    warm("Ts1P", palmRest, 0.95, 0.5, 0.0),
    warm("Ts1S", heatsink, 0.78, 0.5, 0.5),
    constant("VP0R", "sp4b", "\x62\x40"sv),
};
// clang-format on

constexpr std::array<std::uint32_t, std::size(keys)> codes = [] {
    std::array<std::uint32_t, std::size(keys)> packed{};
    for (std::size_t i = 0; i < packed.size(); ++i) packed[i] = smcCode(keys[i].key);
    return packed;
}();
static_assert(std::ranges::adjacent_find(codes, std::greater_equal<>{}) == codes.end());

/// Where a sensor's own unrest begins among the channels of the waves.
constexpr std::uint64_t unrestChannels = 1000;
constexpr SimulatedStep unrestPeriod = 4 * simulatedStepsPerSecond;
/// The processor's limit, to which relative temperatures refer.
constexpr double processorLimit = 110;
/// What runs whatever the load is: display, memory, radio.
constexpr double baseWatts = 14;

void fill(std::span<std::uint8_t, 32> bytes, std::uint32_t number, std::uint32_t size) {
    for (std::uint32_t i = 0; i < size; ++i)
        bytes[i] = static_cast<std::uint8_t>(number >> (8 * (size - 1 - i)));
}

/// "sp78" as the readers take it, whose low byte counts as signed: they come out at the quarter degree that
/// is meant.
void fillTemperature(std::span<std::uint8_t, 32> bytes, double degrees) {
    const int fixedPoint = static_cast<int>(std::lround(degrees * 4)) * 64;
    const auto low = static_cast<std::int8_t>(fixedPoint);
    bytes[0] = static_cast<std::uint8_t>((fixedPoint - low) / 256);
    bytes[1] = static_cast<std::uint8_t>(low);
}

double degreesOf(std::size_t index, const SimulatedState& state, const SimulatedLoads& loads) {
    const SimulatedKey& row = keys[index];
    const double air = state.at(SimulatedPart::air);
    const double steady = air + row.share * (state.at(row.part) - air) + row.offset;
    if (row.unrest == 0) return steady;
    return steady + row.unrest * (loads.wave(unrestChannels + index, state.step, unrestPeriod) - 0.5);
}

}  // namespace

std::span<const SimulatedKey> simulatedKeys() { return keys; }

std::optional<std::size_t> simulatedKeyIndex(std::uint32_t key) {
    const auto found = std::ranges::lower_bound(codes, key);
    if (found == codes.end() || *found != key) return std::nullopt;
    return static_cast<std::size_t>(found - codes.begin());
}

std::uint32_t simulatedKeySize(const SimulatedKey& key) {
    if (key.value == SimulatedValue::constant) return static_cast<std::uint32_t>(key.bytes.size());
    return key.value == SimulatedValue::keyCount ? 4 : 2;
}

void fillSimulatedValue(std::size_t index, const SimulatedState& state, const SimulatedLoads& loads,
                        std::span<std::uint8_t, 32> bytes) {
    const SimulatedKey& row = keys[index];
    const auto fillScaled = [bytes](double number, int scale) {
        fill(bytes, static_cast<std::uint32_t>(std::lround(number)) * static_cast<std::uint32_t>(scale), 2);
    };
    switch (row.value) {
        case SimulatedValue::constant:
            std::ranges::copy(row.bytes, bytes.begin());
            break;
        case SimulatedValue::keyCount:
            fill(bytes, std::size(keys), 4);
            break;
        case SimulatedValue::discreteTemperature:
            if (state.isDiscreteAwake) fillTemperature(bytes, degreesOf(index, state, loads));
            break;
        case SimulatedValue::temperature:
            fillTemperature(bytes, degreesOf(index, state, loads));
            break;
        case SimulatedValue::headroom:
            fillTemperature(bytes, processorLimit - state.at(SimulatedPart::processor));
            break;
        case SimulatedValue::fanSpeed:
            fillScaled(state.fanSpeeds[row.fan], 4);
            break;
        case SimulatedValue::fanTarget:
            fillScaled(state.fanTargets[row.fan], 4);
            break;
        case SimulatedValue::processorPower:
            fillScaled(state.processorWatts * 64, 1);
            break;
        case SimulatedValue::totalPower:
            fillScaled((baseWatts + state.processorWatts + state.graphicsWatts) * 64, 1);
            break;
    }
}

}  // namespace calorivo
