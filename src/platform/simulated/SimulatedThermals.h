#pragma once

#include "platform/simulated/SimulatedLoad.h"

#include <array>
#include <cstddef>

namespace calorivo {

/// The parts whose heat is followed; `air` is the room's.
enum class SimulatedPart : std::size_t {
    air,
    processor,
    graphics,
    heatsink,
    board,
    hub,
    battery,
    drive,
    radio,
    palmRest,
};
inline constexpr std::size_t simulatedPartCount = 10;

struct SimulatedFan {
    int minimum;
    int maximum;
};
/// Revolutions per minute.
inline constexpr std::array<SimulatedFan, 2> simulatedFans{{{2000, 6200}, {2160, 6200}}};

/// The whole machine at the end of one step.
struct SimulatedState {
    SimulatedStep step = 0;
    /// Degrees Celsius, by part.
    std::array<double, simulatedPartCount> degrees{};
    double processorWatts = 0;
    double graphicsWatts = 0;
    bool isDiscreteAwake = false;
    /// The temperature that the fans answer to.
    double fanDegrees = 0;
    std::array<double, 2> fanTargets{};
    std::array<double, 2> fanSpeeds{};

    [[nodiscard]] double at(SimulatedPart part) const { return degrees[static_cast<std::size_t>(part)]; }
    friend bool operator==(const SimulatedState&, const SimulatedState&) = default;
};

/// Heat on its way from the chips through heatsink and case to the room, and fans that follow it, in fixed
/// steps. The state at a step depends on the seed and that step alone, whatever was asked before, and costs a
/// bounded amount of work however far away it is.
class SimulatedThermals {
  public:
    explicit SimulatedThermals(std::uint64_t seed);

    /// The state at this step; valid until the next call.
    const SimulatedState& at(SimulatedStep step);
    [[nodiscard]] const SimulatedLoads& loads() const { return loads_; }

  private:
    SimulatedLoads loads_;
    SimulatedState state_;
    /// The steps are counted from here for the present state.
    SimulatedStep origin_ = 0;
    bool isStarted_ = false;
};

}  // namespace calorivo
