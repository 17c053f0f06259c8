#pragma once

#include "platform/CoreGraphics.h"
#include "platform/linux/DisplayWatch.h"
#include "platform/linux/KernelEvents.h"

#include <chrono>
#include <functional>
#include <utility>

namespace calorivo {

/// How displays are watched.
struct LinuxDisplaysOptions {
    /// Called once for each registration; empty: no events, only the period.
    std::function<KernelEvents()> listen = KernelEvents::listen;
    MachineClocks::Clock asleep = timeAsleep;
    /// Called on the watching thread when the machine has slept, before anything else is told: when the
    /// sensors of the GPU are held afterwards, they are held at what is read now. May be empty.
    std::function<void()> machineHasSlept{};
    /// How often it is looked without an event: a change of the graphics processor sends none by itself.
    std::chrono::milliseconds period = std::chrono::seconds(2);
};

/// The displays of this machine. While a callback is registered, a thread of its own looks for changes, at
/// events of the kernel and once in each period; otherwise nothing is done.
class LinuxDisplays final : public CoreGraphics {
  public:
    /// `reader` must outlive it, and all registrations.
    explicit LinuxDisplays(GraphicsReader& reader, LinuxDisplaysOptions options = {})
        : reader_(reader), options_(std::move(options)) {}

    /// The callback runs on the watching thread; it must not drop the handle itself. Where the system gives
    /// no thread, nothing is ever told.
    [[nodiscard]] Observation CGDisplayRegisterReconfigurationCallback(
        ReconfigurationCallback callback) override;
    [[nodiscard]] bool CGDisplayIsBuiltin(CGDirectDisplayID display) override {
        return display == displayNumber::builtIn;
    }
    [[nodiscard]] CGDirectDisplayID CGMainDisplayID() override { return displayNumber::builtIn; }

  private:
    GraphicsReader& reader_;
    const LinuxDisplaysOptions options_;
};

}  // namespace calorivo
