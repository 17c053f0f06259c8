#include "platform/simulated/SimulatedLoad.h"

namespace calorivo {

namespace {

enum Channel : std::uint64_t { work, fidgets, burst, drawing, awake, files, traffic, room };

constexpr SimulatedStep minutes(SimulatedStep count) { return count * 60 * simulatedStepsPerSecond; }
constexpr SimulatedStep seconds(SimulatedStep count) { return count * simulatedStepsPerSecond; }

constexpr SimulatedStep burstSlot = minutes(2);
constexpr SimulatedStep longestBurst = seconds(60);
constexpr SimulatedStep shortestBurst = seconds(25);
constexpr SimulatedStep awakeSlot = minutes(4);

/// Rounds down also below zero, so that the waves run on smoothly through the start.
constexpr SimulatedStep cellOf(SimulatedStep step, SimulatedStep period) {
    return step / period - (step % period < 0 ? 1 : 0);
}

constexpr std::uint64_t mixed(std::uint64_t value) {
    value += 0x9E3779B97F4A7C15;
    value = (value ^ (value >> 30)) * 0xBF58476D1CE4E5B9;
    value = (value ^ (value >> 27)) * 0x94D049BB133111EB;
    return value ^ (value >> 31);
}

/// From 0 up to, but not including, 1.
constexpr double unit(std::uint64_t hash) { return static_cast<double>(hash >> 11) * 0x1p-53; }

}  // namespace

std::uint64_t SimulatedLoads::hash(std::uint64_t channel, SimulatedStep cell) const {
    return mixed(seed_ ^ mixed(static_cast<std::uint64_t>(cell) + (channel << 48)));
}

double SimulatedLoads::wave(std::uint64_t channel, SimulatedStep step, SimulatedStep period) const {
    const SimulatedStep cell = cellOf(step, period);
    const double at = static_cast<double>(step - cell * period) / static_cast<double>(period);
    const double from = unit(hash(channel, cell));
    const double to = unit(hash(channel, cell + 1));
    return from + (to - from) * at * at * (3 - 2 * at);
}

bool SimulatedLoads::isBurst(SimulatedStep step) const {
    const SimulatedStep slot = cellOf(step, burstSlot);
    const std::uint64_t dice = hash(burst, slot);
    if (dice % 3 != 0) return false;
    const auto begin = static_cast<SimulatedStep>((dice >> 8) % (burstSlot - longestBurst));
    const auto length =
        shortestBurst + static_cast<SimulatedStep>((dice >> 24) % (longestBurst - shortestBurst));
    const SimulatedStep at = step - slot * burstSlot;
    return at >= begin && at < begin + length;
}

SimulatedLoad SimulatedLoads::at(SimulatedStep step) const {
    const double busy = wave(work, step, minutes(5));
    const bool isDiscreteAwake = hash(awake, cellOf(step, awakeSlot)) % 2 == 0;
    return {
        .processor =
            isBurst(step) ? 1.0 : 0.04 + 0.45 * busy * busy + 0.15 * wave(fidgets, step, seconds(15)),
        .graphics = wave(drawing, step, seconds(50)),
        .drive = wave(files, step, seconds(40)),
        .radio = wave(traffic, step, seconds(30)),
        .room = 22.5 + 3.0 * wave(room, step, minutes(45)),
        .isDiscreteAwake = isDiscreteAwake,
    };
}

}  // namespace calorivo
