#pragma once

#include <functional>
#include <string>

namespace calorivo {

/// What the panes can do beside the bound keys; each may be empty: then the control is disabled and says why.
/// Main thread.
struct PreferencesPorts {
    std::function<void()> sendTestNotification;
    std::function<void()> openLog;
    std::function<void()> revealLog;
    /// Why notifications cannot be shown, as a sentence to the user; an empty text: a service answers.
    std::function<std::string()> notificationServiceProblem;
    /// False: no drive of this machine can be asked.
    std::function<bool()> canCheckDrives;
};

}  // namespace calorivo
