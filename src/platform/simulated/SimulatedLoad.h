#pragma once

#include <cstdint>

namespace calorivo {

/// Time in the simulated machine: whole steps from its start, also before it.
using SimulatedStep = std::int64_t;
inline constexpr std::int64_t simulatedStepsPerSecond = 2;

/// What the machine is asked to do during one step, each from 0 (nothing) to 1 (all it can).
struct SimulatedLoad {
    double processor;
    double graphics;
    double drive;
    double radio;
    /// The room around it, degrees Celsius.
    double room;
    /// Graphics work is done by the discrete unit; else it sleeps.
    bool isDiscreteAwake;
    friend bool operator==(const SimulatedLoad&, const SimulatedLoad&) = default;
};

/// Slow waves and occasional bursts of work: a function of seed and step alone. Whole numbers and plain
/// arithmetic only, so that every system makes the same waves.
class SimulatedLoads {
  public:
    explicit SimulatedLoads(std::uint64_t seed) : seed_(seed) {}

    [[nodiscard]] SimulatedLoad at(SimulatedStep step) const;
    /// A wave from 0 to 1 with a new height every `period` steps, smooth between them. Channels are
    /// independent of each other.
    [[nodiscard]] double wave(std::uint64_t channel, SimulatedStep step, SimulatedStep period) const;

  private:
    [[nodiscard]] std::uint64_t hash(std::uint64_t channel, SimulatedStep cell) const;
    [[nodiscard]] bool isBurst(SimulatedStep step) const;

    std::uint64_t seed_;
};

}  // namespace calorivo
