#include "platform/linux/DisplayWatch.h"

#include <algorithm>
#include <utility>

namespace calorivo {

DisplayWatch::DisplayWatch(GraphicsReader& reader, MachineClocks::Clock asleep,
                           std::function<void()> machineHasSlept)
    : reader_(reader),
      sleep_(std::move(asleep)),
      machineHasSlept_(std::move(machineHasSlept)),
      known_(reader.read()) {}

void DisplayWatch::look(const CoreGraphics::ReconfigurationCallback& callback) {
    const bool hasSlept = sleep_.hasSlept();
    if (hasSlept && machineHasSlept_) machineHasSlept_();
    const GraphicsState before = std::exchange(known_, reader_.read());
    const bool isOther = before.isIntegratedInUse != known_.isIntegratedInUse || before.awake != known_.awake;
    // Both lists are sorted.
    const bool isPluggedIn = !std::ranges::includes(before.displays, known_.displays);

    if (hasSlept || isOther) callback(displayNumber::builtIn, kCGDisplaySetModeFlag);
    if (isPluggedIn) callback(displayNumber::external, kCGDisplayAddFlag | kCGDisplaySetModeFlag);
}

}  // namespace calorivo
