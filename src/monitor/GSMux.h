#pragma once

#include "platform/AppleGraphicsControl.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <utility>

namespace calorivo {

class Dispatch;
class SystemLog;

/// The modes that setMode knows.
namespace GSMuxMode {
inline constexpr std::int32_t integratedOnly = 0;
inline constexpr std::int32_t discreteOnly = 1;
inline constexpr std::int32_t dynamicSwitching = 2;
/// Changes over once, whatever the mode is.
inline constexpr std::int32_t toggle = 3;
}  // namespace GSMuxMode

/// What the switch works with; all must outlive it.
struct GSMuxParts {
    AppleGraphicsControl& control;
    Dispatch& dispatch;
    SystemLog& systemLog;
    /// Whether this is the machine whose switch needs another treatment; any thread.
    std::function<bool()> is2010MacBookPro;
};

/// Asks and tells the switch between two graphics processors what drives the displays. Every request leaves a
/// line in the log of the system. Open and close on one thread; queries on any.
class GSMux {
  public:
    explicit GSMux(GSMuxParts parts) : parts_(std::move(parts)) {}

    /// False on a machine without a switch.
    bool switcherOpen();
    void switcherClose();
    /// True unless there is no connection, even for a mode that does not exist. Sleeps for a second in the
    /// first two modes: never on the main thread.
    bool setMode(std::int32_t mode);

    [[nodiscard]] bool isUsingIntegratedGPU();
    /// True without a connection: ask only after a successful open.
    [[nodiscard]] bool isUsingDiscreteGPU();
    [[nodiscard]] bool isUsingDynamicSwitching();
    [[nodiscard]] bool isUsingOldStyleSwitchPolicy();
    [[nodiscard]] bool isOnIntegratedOnlyMode();
    [[nodiscard]] bool isOnDiscreteOnlyMode();

  private:
    [[nodiscard]] bool isOpen() const { return connection_ != 0; }
    /// 0 when it fails.
    [[nodiscard]] std::uint64_t getMuxState(std::uint64_t state);
    void setMuxState(std::uint64_t state, std::uint64_t value);
    void chooseOnly(std::int32_t mode);
    void logResult(const char* pattern, kern_return_t result);

    const GSMuxParts parts_;
    /// 0 when closed.
    std::atomic<io_connect_t> connection_{0};
};

}  // namespace calorivo
