#pragma once

#include "app/Ports.h"
#include "monitor/GSGPU.h"
#include "monitor/GSMux.h"

#include <functional>
#include <optional>
#include <string>

namespace calorivo {

/// What the switch between graphics processors needs of the system; all must outlive it.
struct GraphicsSwitcherParts {
    AppleGraphicsControl& control;
    CoreGraphics& displays;
    Dispatch& dispatch;
    SystemLog& systemLog;
    /// Whether the values come from a recorded file; empty for never.
    std::function<bool()> isUsingKeysFile;
};

/// Both ports about graphics processors over the platform's driver: the switch, and their names.
class GraphicsSwitcher final : public GPUSwitcher, public GPUNames {
  public:
    explicit GraphicsSwitcher(const GraphicsSwitcherParts& parts)
        : mux_({parts.control, parts.dispatch, parts.systemLog, [this] { return gpu_.is2010MacBookPro(); }}),
          gpu_({parts.control, parts.displays, mux_, parts.dispatch, parts.systemLog,
                parts.isUsingKeysFile}) {}

    bool switcherOpen() override { return mux_.switcherOpen(); }
    [[nodiscard]] Observation registerForGPUChangeNotifications(GPUChangeObserver& observer) override {
        return gpu_.registerForGPUChangeNotifications(observer);
    }
    [[nodiscard]] bool isUsingDiscreteGPU() override { return mux_.isUsingDiscreteGPU(); }

    [[nodiscard]] std::optional<std::string> integratedGPUName() override { return gpu_.integratedGPUName(); }
    [[nodiscard]] std::optional<std::string> discreteGPUName() override { return gpu_.discreteGPUName(); }

  private:
    GSMux mux_;
    GSGPU gpu_;
};

}  // namespace calorivo
