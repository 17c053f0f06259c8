#pragma once

#include "platform/CoreGraphics.h"
#include "platform/linux/GraphicsReader.h"
#include "platform/linux/SleepWatch.h"

#include <functional>

namespace calorivo {

/// The numbers of the displays: all that are not built in share one.
namespace displayNumber {
inline constexpr CGDirectDisplayID builtIn = 1;
inline constexpr CGDirectDisplayID external = 2;
}  // namespace displayNumber

/// Tells of what has changed with the graphics since it last looked. One thread at a time.
class DisplayWatch {
  public:
    /// What is now, is known. `reader` must outlive it. `machineHasSlept` is called after each sleep of the
    /// machine, before anything else is told; it may be empty.
    explicit DisplayWatch(GraphicsReader& reader, MachineClocks::Clock asleep = timeAsleep,
                          std::function<void()> machineHasSlept = {});

    /// Calls back once when the graphics processor in use is another one, when a discrete one fell asleep or
    /// awoke, or when the machine has slept, after which GPU sensors give nonsense as well; and once for
    /// displays that were plugged in.
    void look(const CoreGraphics::ReconfigurationCallback& callback);

  private:
    GraphicsReader& reader_;
    SleepWatch sleep_;
    const std::function<void()> machineHasSlept_;
    GraphicsState known_;
};

}  // namespace calorivo
