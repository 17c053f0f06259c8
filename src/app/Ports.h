#pragma once

#include "monitor/DriveTemperatures.h"
#include "monitor/GPUChangeObserver.h"
#include "platform/Property.h"
#include "sensors/GPUNames.h"

#include <functional>

namespace calorivo {

/// The switch between two graphics processors. Main thread.
class GPUSwitcher {
  public:
    GPUSwitcher() = default;
    GPUSwitcher(const GPUSwitcher&) = delete;
    GPUSwitcher& operator=(const GPUSwitcher&) = delete;
    virtual ~GPUSwitcher() = default;

    /// False when the machine has no switch.
    virtual bool switcherOpen() = 0;
    /// The observer is told of each change until the handle is dropped.
    [[nodiscard]] virtual Observation registerForGPUChangeNotifications(GPUChangeObserver& observer) = 0;
    [[nodiscard]] virtual bool isUsingDiscreteGPU() = 0;
};

/// The parts of the program that may be left out: whatever is empty or null is just not done. All must
/// outlive the controller.
struct ApplicationPorts {
    /// May end the process and start it again elsewhere.
    std::function<void()> offerToMoveToApplicationsFolder;
    std::function<void()> setupVantixView;
    MakeSmartController makeSmartController;
    GPUSwitcher* gpuSwitcher = nullptr;
    GPUNames* gpuNames = nullptr;
};

/// Calls the step unless it is left out.
inline void callIfPresent(const std::function<void()>& step) {
    if (step) step();
}

}  // namespace calorivo
