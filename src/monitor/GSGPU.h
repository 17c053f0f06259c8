#pragma once

#include "platform/CoreGraphics.h"
#include "sensors/GPUNames.h"

#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace calorivo {

class AppleGraphicsControl;
class Dispatch;
class GPUChangeObserver;
class GSMux;
class Queue;
class SystemLog;

/// What the graphics processors' subject works with; all must outlive it.
struct GSGPUParts {
    AppleGraphicsControl& control;
    CoreGraphics& displays;
    GSMux& mux;
    Dispatch& dispatch;
    SystemLog& systemLog;
    /// Whether the values come from a recorded file, whose machine is not this one; empty for never.
    std::function<bool()> isUsingKeysFile;
};

/// Finds the names of the graphics processors, once in the life of the process, and tells one observer when
/// another of them drives the displays. Any thread, unless a call says otherwise.
class GSGPU final : public GPUNames {
  public:
    explicit GSGPU(GSGPUParts parts);
    /// All observations must have been dropped.
    ~GSGPU() override;

    /// All display devices on PCI, in the registry's order.
    [[nodiscard]] const std::vector<std::string>& getGPUNames();
    /// None while the values come from a recorded file, and when no name begins with "Intel".
    [[nodiscard]] std::optional<std::string> integratedGPUName() override;
    /// Always a name: "GPU" when none is known.
    [[nodiscard]] std::optional<std::string> discreteGPUName() override;
    /// The machine with two GPUs of one maker.
    [[nodiscard]] bool isLegacyMachine();
    [[nodiscard]] bool is2010MacBookPro();

    /// The observer is told on a queue of its own, half a second after each change, until the handle is
    /// dropped; that waits for a notification under way. Main thread; both must outlive the handle.
    [[nodiscard]] Observation registerForGPUChangeNotifications(GPUChangeObserver& observer);
    /// Tells the observer that was registered last as if the main display had changed now. Main thread.
    void fireManualChangeNotification();

  private:
    struct Registration;

    void displayWasReconfigured(Registration& registration, CGDirectDisplayID display,
                                CGDisplayChangeSummaryFlags flags);
    void notify(GPUChangeObserver& observer);
    [[nodiscard]] std::vector<std::string> findGPUNames();

    const GSGPUParts parts_;
    /// Covers the answers below, each computed when it is first asked for.
    std::mutex lock_;
    std::optional<std::vector<std::string>> names_;
    std::optional<std::optional<std::string>> integratedName_;
    std::optional<std::string> discreteName_;
    std::optional<bool> isLegacy_;
    bool isWarningLogged_ = false;
    std::weak_ptr<Registration> registration_;
};

}  // namespace calorivo
