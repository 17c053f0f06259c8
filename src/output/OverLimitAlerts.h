#pragma once

#include "monitor/CyclePorts.h"
#include "monitor/Preferences.h"
#include "monitor/TemperatureReader.h"
#include "platform/Dispatch.h"
#include "platform/GrowlApplicationBridge.h"
#include "platform/SystemLog.h"

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <utility>

namespace calorivo {

/// What the alerts work with. All must outlive them.
struct OverLimitAlertsParts {
    const Dispatch& dispatch;
    const Preferences& preferences;
    const TemperatureReader& reader;
    GrowlApplicationBridge& growl;
    SystemLog& systemLog;
    std::function<void()> activateAndShowMainWindow;
};

/// Notifications of readings above the user's limits: each sensor's, and that of the average, at most once in
/// ten minutes. Without a service that shows them it is silent. Main thread.
class OverLimitAlerts final : public CycleAlerts, public GrowlApplicationBridgeDelegate {
  public:
    explicit OverLimitAlerts(OverLimitAlertsParts parts) : parts_(std::move(parts)) {}
    ~OverLimitAlerts() override;

    /// Looks for the service and registers with it. To be called once.
    void initGrowl();

    void showAlertForOverlimitAreaWithName(double celsius, const std::string& name) override;
    void showAlertForOverlimitAverage(double celsius) override;

    [[nodiscard]] GrowlDictionary registrationDictionaryForGrowl() const override;
    void growlNotificationWasClicked(const std::string& clickContext) override;

  private:
    /// Whether the alert of this key is to be posted now, which is recorded then: not when one was posted
    /// less than the pause ago, nor while nobody can show it.
    [[nodiscard]] bool beginAlert(std::string_view key);

    OverLimitAlertsParts parts_;
    /// When each alert was posted last, by the sensor's readable name or the average's own key.
    std::map<std::string, Moment, std::less<>> nameToAlertTimeMap_;
};

}  // namespace calorivo
