#pragma once

#include "platform/Property.h"

#include <cstdint>
#include <functional>

namespace calorivo {

using CGDirectDisplayID = std::uint32_t;
/// A sum of the flags below, and of others that mean nothing here.
using CGDisplayChangeSummaryFlags = std::uint32_t;

/// The display's mode, or what drives it, has changed.
inline constexpr CGDisplayChangeSummaryFlags kCGDisplaySetModeFlag = 8;
inline constexpr CGDisplayChangeSummaryFlags kCGDisplayAddFlag = 16;

/// The platform's displays. Any thread.
class CoreGraphics {
  public:
    using ReconfigurationCallback = std::function<void(CGDirectDisplayID, CGDisplayChangeSummaryFlags)>;

    CoreGraphics() = default;
    CoreGraphics(const CoreGraphics&) = delete;
    CoreGraphics& operator=(const CoreGraphics&) = delete;
    virtual ~CoreGraphics() = default;

    /// The callback runs on a thread of the platform's choice at every change of a display, until the handle
    /// is dropped; dropping it waits for a call that runs.
    [[nodiscard]] virtual Observation CGDisplayRegisterReconfigurationCallback(
        ReconfigurationCallback callback) = 0;
    [[nodiscard]] virtual bool CGDisplayIsBuiltin(CGDirectDisplayID display) = 0;
    [[nodiscard]] virtual CGDirectDisplayID CGMainDisplayID() = 0;
};

}  // namespace calorivo
