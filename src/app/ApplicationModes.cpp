#include "app/ApplicationModes.h"

#include <optional>

namespace calorivo {

namespace {

constexpr std::int32_t menuOnlyMode = 1;

Alert menuOnlyModeAlert() {
    // Kept: "runnng" is how the text has always been spelt; translations go by it.
    return {.message = "Menu Only Mode",
            .defaultButton = "OK",
            .informativeText =
                "In this mode, Calorivo will hide its dock icon and application menu bar when it is runnng. "
                "All functions will be available from the status menu in the top right of the menu "
                "bar.\n\nThis change will take effect the next time Calorivo is launched."};
}

Alert normalModeAlert() {
    return {
        .message = "Normal Mode",
        .defaultButton = "OK",
        .informativeText =
            "Calorivo will run in normal mode with the dock icon and application menu bar "
            "visible.\n\nThis change will take effect the next time Calorivo is launched (it can be found "
            "in the Applications folder)."};
}

Alert applicationIconAlert() {
    return {.message = "Application Icon",
            .defaultButton = "OK",
            .informativeText =
                "The application icon will be removed from the menu bar the next time Calorivo is launched "
                "(it can be found in the Applications folder)."};
}

Alert loginItemAlert() {
    // Kept: there is no blank after "2)"; translations go by it.
    return {.message = "Calorivo was not able to add itself to the login item list.",
            .defaultButton = "OK",
            .informativeText =
                "1) Make sure the app is in the Applications folder.\n2)Run Disk Utility with "
                "Repair Disk Permissions and try again."};
}

}  // namespace

void ApplicationModes::setAppMode(std::int32_t mode) {
    parts_.preferences.appMode = mode;
    updateShowAppIconEnabled();
    if (parts_.state.isStartingUp) return;
    if (mode != menuOnlyMode) {
        parts_.alertPanel.runModal(normalModeAlert());
        return;
    }
    parts_.keys.setValueForKey(true, "launchOnLogin");
    parts_.keys.setValueForKey(true, "hideOnLaunch");
    parts_.alertPanel.runModal(menuOnlyModeAlert());
}

void ApplicationModes::updateShowAppIconEnabled() {
    const bool lacksDockIcon =
        parts_.preferences.appMode == menuOnlyMode || !parts_.state.didLaunchInNormalMode;
    const bool isIconNeeded = lacksDockIcon && !showsValuesInMenuBar();
    if (isIconNeeded) parts_.keys.setValueForKey(true, "showAppIcon");
    parts_.state.isShowAppIconEnabled = !isIconNeeded;
}

void ApplicationModes::setShowAppIcon(bool isShown) {
    parts_.preferences.showAppIcon = isShown;
    const std::optional<Image> noImage;
    if (isShown)
        parts_.statusItem.setImage(Image{"NewIcon_16px", true});
    else if (parts_.state.isStartingUp || parts_.state.didLaunchInNormalMode || showsValuesInMenuBar())
        parts_.statusItem.setImage(noImage);
    else  // Kept: the icon stays for the rest of this run, else nothing of the program would be left to see.
        parts_.alertPanel.runModal(applicationIconAlert());
}

void ApplicationModes::setLaunchOnLogin(bool isLaunched) {
    parts_.preferences.launchOnLogin = isLaunched;
    toggleLaunchAtStartupShouldHide(isLaunched, parts_.preferences.hideOnLaunch);
}

void ApplicationModes::setHideOnLaunch(bool isHidden) {
    parts_.preferences.hideOnLaunch = isHidden;
    toggleLaunchAtStartupShouldHide(parts_.preferences.launchOnLogin, isHidden);
}

void ApplicationModes::toggleLaunchAtStartupShouldHide(bool isLaunched, bool /*shouldHide*/) {
    const bool isDone =
        parts_.serviceManagement.SMLoginItemSetEnabled(parts_.loginHelperIdentifier, isLaunched);
    if (isLaunched && !isDone) parts_.alertPanel.runModal(loginItemAlert());
}

bool ApplicationModes::showsValuesInMenuBar() const {
    const Preferences& preferences = parts_.preferences;
    return preferences.showTempInMenuBar || preferences.showTemp2InMenuBar || preferences.showFanInMenuBar;
}

}  // namespace calorivo
