#pragma once

#include "app/ApplicationState.h"
#include "monitor/Preferences.h"
#include "output/StatusItem.h"
#include "platform/AlertPanel.h"
#include "platform/KeyValueCoding.h"
#include "platform/ServiceManagement.h"

#include <cstdint>
#include <string_view>

namespace calorivo {

/// What the modes work on. All must outlive them.
struct ApplicationModesParts {
    Preferences& preferences;
    ApplicationState& state;
    const KeyValueCoding& keys;
    StatusItem& statusItem;
    AlertPanel& alertPanel;
    ServiceManagement& serviceManagement;
    std::string_view loginHelperIdentifier;
};

/// Normal and menu-only mode, the icon in the menu bar and the login item. A change of mode never changes the
/// running process; it takes effect at the next start. Main thread.
class ApplicationModes {
  public:
    explicit ApplicationModes(const ApplicationModesParts& parts) : parts_(parts) {}

    void setAppMode(std::int32_t mode);
    void setShowAppIcon(bool isShown);
    /// Sees to it that the program can always be reached: without a place among the running applications
    /// and without values in the menu bar, the icon is there and cannot be switched off.
    void updateShowAppIconEnabled();
    void setLaunchOnLogin(bool isLaunched);
    void setHideOnLaunch(bool isHidden);
    /// `shouldHide` is not used: it only travels along, and is kept as a preference.
    void toggleLaunchAtStartupShouldHide(bool isLaunched, bool shouldHide);

  private:
    [[nodiscard]] bool showsValuesInMenuBar() const;

    ApplicationModesParts parts_;
};

}  // namespace calorivo
