#include "platform/simulated/SimulatedThermals.h"

#include <algorithm>

namespace calorivo {

namespace {

/// A state is reached from the beginning of the stretch before its own. By then the heat that the machine
/// began with has left even its slowest part, so that nobody sees where a stretch ends.
constexpr SimulatedStep stretch = SimulatedStep{15} * 60 * simulatedStepsPerSecond;

constexpr double idleWatts = 6;
constexpr double fullWatts = 70;
constexpr double discreteIdleWatts = 5;
constexpr double discreteFullWatts = 38;
/// Degrees per watt from chip to heatsink.
constexpr double processorResistance = 0.6;
constexpr double discreteResistance = 0.55;
/// Watts per degree from heatsink to room: standing air, and what the fans add at full speed.
constexpr double stillConductance = 1.0;
constexpr double fanConductance = 1.6;
/// The processor slows down from here on, and does next to nothing at the other end.
constexpr double throttleBegin = 94;
constexpr double throttleEnd = 108;
/// The fans turn at their minimum up to here, and at full speed from the other end on.
constexpr double fansBegin = 58;
constexpr double fansEnd = 94;

/// Moves `value` the part of the way to `target` that one step is of the time that the part takes.
void approach(double& value, double target, double seconds) {
    value += (target - value) / (seconds * simulatedStepsPerSecond);
}

double& degreesOf(SimulatedState& state, SimulatedPart part) {
    return state.degrees[static_cast<std::size_t>(part)];
}

double fanShare(const SimulatedState& state) {
    double share = 0;
    for (std::size_t fan = 0; fan < simulatedFans.size(); ++fan) {
        const auto [minimum, maximum] = simulatedFans[fan];
        share += (state.fanSpeeds[fan] - minimum) / (maximum - minimum);
    }
    return share / static_cast<double>(simulatedFans.size());
}

void heatChips(SimulatedState& state, const SimulatedLoad& load) {
    double& processor = degreesOf(state, SimulatedPart::processor);
    double& heatsink = degreesOf(state, SimulatedPart::heatsink);
    const double allowed = std::clamp((throttleEnd - processor) / (throttleEnd - throttleBegin), 0.25, 1.0);
    state.processorWatts = (idleWatts + (fullWatts - idleWatts) * load.processor) * allowed;
    state.isDiscreteAwake = load.isDiscreteAwake;
    state.graphicsWatts = load.isDiscreteAwake
                              ? discreteIdleWatts + (discreteFullWatts - discreteIdleWatts) * load.graphics
                              : 0;
    const double conductance = stillConductance + fanConductance * fanShare(state);
    approach(heatsink, load.room + (state.processorWatts + state.graphicsWatts) / conductance, 25);
    approach(processor, heatsink + state.processorWatts * processorResistance, 2);
    approach(degreesOf(state, SimulatedPart::graphics), heatsink + state.graphicsWatts * discreteResistance,
             5);
}

void heatSurroundings(SimulatedState& state, const SimulatedLoad& load) {
    const double air = load.room;
    const double heatsink = state.at(SimulatedPart::heatsink);
    double& board = degreesOf(state, SimulatedPart::board);
    degreesOf(state, SimulatedPart::air) = air;
    approach(board, air + 6 + 0.35 * (heatsink - air), 90);
    approach(degreesOf(state, SimulatedPart::hub), board + 8 + 6 * load.drive, 60);
    approach(degreesOf(state, SimulatedPart::battery), air + 5 + 0.2 * (board - air), 150);
    approach(degreesOf(state, SimulatedPart::drive), board + 2 + 12 * load.drive, 40);
    approach(degreesOf(state, SimulatedPart::radio), board + 2 + 10 * load.radio, 30);
    approach(degreesOf(state, SimulatedPart::palmRest), air + 2 + 0.25 * (board - air), 120);
}

void turnFans(SimulatedState& state) {
    approach(state.fanDegrees,
             std::max(state.at(SimulatedPart::processor), state.at(SimulatedPart::graphics)), 8);
    const double demand = std::clamp((state.fanDegrees - fansBegin) / (fansEnd - fansBegin), 0.0, 1.0);
    for (std::size_t fan = 0; fan < simulatedFans.size(); ++fan) {
        const auto [minimum, maximum] = simulatedFans[fan];
        state.fanTargets[fan] = minimum + demand * (maximum - minimum);
        approach(state.fanSpeeds[fan], state.fanTargets[fan], 5);
    }
}

/// A machine that has been on for a while, in a common room.
SimulatedState warmMachine(SimulatedStep step) {
    SimulatedState state;
    state.step = step;
    state.degrees = {24, 55, 50, 45, 37, 48, 31, 45, 44, 29};
    state.fanDegrees = 55;
    for (std::size_t fan = 0; fan < simulatedFans.size(); ++fan)
        state.fanTargets[fan] = state.fanSpeeds[fan] = simulatedFans[fan].minimum;
    return state;
}

}  // namespace

SimulatedThermals::SimulatedThermals(std::uint64_t seed) : loads_(seed) {}

const SimulatedState& SimulatedThermals::at(SimulatedStep step) {
    const SimulatedStep origin = (step / stretch - 1) * stretch;
    if (!isStarted_ || origin != origin_ || step < state_.step) {
        isStarted_ = true;
        origin_ = origin;
        state_ = warmMachine(origin);
    }
    while (state_.step < step) {
        const SimulatedLoad load = loads_.at(++state_.step);
        heatChips(state_, load);
        heatSurroundings(state_, load);
        turnFans(state_);
    }
    return state_;
}

}  // namespace calorivo
