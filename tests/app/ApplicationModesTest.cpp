#include "app/ApplicationModes.h"

#include "support/Machine.h"
#include "support/RecordingPlatform.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace calorivo {
namespace {

using Calls = test::Calls;

const Alert menuOnlyAlert{
    .message = "Menu Only Mode",
    .defaultButton = "OK",
    .informativeText =
        "In this mode, Calorivo will hide its dock icon and application menu bar when it is "
        "runnng. All functions will be available from the status menu in the top right of the "
        "menu bar.\n\nThis change will take effect the next time Calorivo is launched."};
const Alert normalAlert{
    .message = "Normal Mode",
    .defaultButton = "OK",
    .informativeText =
        "Calorivo will run in normal mode with the dock icon and application menu bar "
        "visible.\n\nThis change will take effect the next time Calorivo is launched (it can be "
        "found in the Applications folder)."};
const Alert iconAlert{.message = "Application Icon",
                      .defaultButton = "OK",
                      .informativeText =
                          "The application icon will be removed from the menu bar the next time Calorivo is "
                          "launched (it can be found in the Applications folder)."};
const Alert loginAlert{
    .message = "Calorivo was not able to add itself to the login item list.",
    .defaultButton = "OK",
    .informativeText =
        "1) Make sure the app is in the Applications folder.\n2)Run Disk Utility with Repair "
        "Disk Permissions and try again."};

/// A menu-only launch after start-up, with a status item that has its icon.
class ApplicationModesTest : public testing::Test {
  protected:
    ApplicationModesTest() {
        keys.define("showAppIcon", preferences.showAppIcon, [this](bool is) { modes.setShowAppIcon(is); });
        keys.define("launchOnLogin", preferences.launchOnLogin,
                    [this](bool is) { modes.setLaunchOnLogin(is); });
        keys.define("hideOnLaunch", preferences.hideOnLaunch, [this](bool is) { modes.setHideOnLaunch(is); });
        statusItem.create(platform.statusBar, "statusMenu");
        statusItem.setImage(icon);
        platform.calls.clear();
    }
    [[nodiscard]] const std::optional<Image>& image() const { return platform.statusBar.shown.image; }

    const Image icon{"NewIcon_16px", true};
    test::RecordingPlatform platform;
    test::Machine machine;
    Preferences& preferences = machine.preferences;
    SmartInfo smartInfo;
    KeyValueCoding keys;
    ApplicationState state;
    StatusItem statusItem{
        {preferences, machine.averages, machine.fans, smartInfo, machine.reader, MenuBarPopUps{}}};
    ApplicationModes modes{
        {preferences, state, keys, statusItem, platform.alertPanel, platform.serviceManagement, "helper"}};
};

TEST_F(ApplicationModesTest, NeverLeaveTheProgramUnreachable) {
    for (unsigned flags = 0; flags < 128; ++flags) {
        const auto bit = [flags](unsigned position) { return (flags >> position & 1U) != 0; };
        preferences.appMode = bit(0) ? 1 : 0;
        state.didLaunchInNormalMode = bit(1);
        preferences.showTempInMenuBar = bit(2);
        preferences.showTemp2InMenuBar = bit(3);
        preferences.showFanInMenuBar = bit(4);
        preferences.showAppIcon = bit(5);
        state.isStartingUp = bit(6);
        statusItem.setImage(std::nullopt);
        modes.updateShowAppIconEnabled();

        const bool hasDockIcon = !bit(0) && bit(1);
        const bool hasValues = bit(2) || bit(3) || bit(4);
        const bool isForced = !hasDockIcon && !hasValues;
        EXPECT_EQ(state.isShowAppIconEnabled, !isForced) << flags;
        EXPECT_EQ(preferences.showAppIcon, isForced || bit(5)) << flags;
        EXPECT_EQ(image(), isForced ? std::optional(icon) : std::nullopt) << flags;
    }
    EXPECT_EQ(platform.alertPanel.alerts, std::vector<Alert>{});
}

TEST_F(ApplicationModesTest, ShowOrRemoveTheIconOrExplainWhyItStays) {
    for (unsigned flags = 0; flags < 64; ++flags) {
        const auto bit = [flags](unsigned position) { return (flags >> position & 1U) != 0; };
        state.isStartingUp = bit(0);
        state.didLaunchInNormalMode = bit(1);
        preferences.showTempInMenuBar = bit(2);
        preferences.showTemp2InMenuBar = bit(3);
        preferences.showFanInMenuBar = bit(4);
        const bool isShown = bit(5);
        platform.alertPanel.alerts.clear();
        statusItem.setImage(icon);
        modes.setShowAppIcon(isShown);

        const bool isExplained = !isShown && (flags & 0x1FU) == 0;
        EXPECT_EQ(preferences.showAppIcon, isShown) << flags;
        EXPECT_EQ(image(), isShown || isExplained ? std::optional(icon) : std::nullopt) << flags;
        EXPECT_EQ(platform.alertPanel.alerts, isExplained ? std::vector{iconAlert} : std::vector<Alert>{})
            << flags;
    }
}

TEST_F(ApplicationModesTest, ForceTheIconOnWithoutValuesAndFreeItWithOne) {
    preferences.appMode = 1;
    modes.updateShowAppIconEnabled();
    EXPECT_FALSE(state.isShowAppIconEnabled);
    preferences.showFanInMenuBar = true;
    modes.updateShowAppIconEnabled();
    EXPECT_TRUE(state.isShowAppIconEnabled);
    EXPECT_TRUE(preferences.showAppIcon);
}

TEST_F(ApplicationModesTest, TurnTheLoginItemOnForMenuOnlyModeAndTell) {
    state.didLaunchInNormalMode = true;
    preferences.showTempInMenuBar = true;
    modes.setAppMode(1);
    EXPECT_EQ(preferences.appMode, 1);
    EXPECT_TRUE(preferences.launchOnLogin);
    EXPECT_TRUE(preferences.hideOnLaunch);
    EXPECT_EQ(platform.calls, (Calls{"SMLoginItemSetEnabled helper YES", "SMLoginItemSetEnabled helper YES",
                                     "runModal Menu Only Mode"}));
    EXPECT_EQ(platform.alertPanel.alerts, std::vector{menuOnlyAlert});
}

TEST_F(ApplicationModesTest, LeaveTheLoginItemOnForNormalModeAndTell) {
    preferences.launchOnLogin = true;
    preferences.showTempInMenuBar = true;
    for (const std::int32_t mode : {0, 2}) {
        platform.calls.clear();
        platform.alertPanel.alerts.clear();
        modes.setAppMode(mode);
        EXPECT_EQ(preferences.appMode, mode);
        EXPECT_TRUE(preferences.launchOnLogin);
        EXPECT_EQ(platform.calls, (Calls{"runModal Normal Mode"}));
        EXPECT_EQ(platform.alertPanel.alerts, std::vector{normalAlert});
    }
}

TEST_F(ApplicationModesTest, ApplyTheIconRuleWhenTheModeChanges) {
    state.didLaunchInNormalMode = true;
    state.isShowAppIconEnabled = true;
    statusItem.setImage(std::nullopt);
    modes.setAppMode(1);
    EXPECT_FALSE(state.isShowAppIconEnabled);
    EXPECT_EQ(image(), icon);
}

TEST_F(ApplicationModesTest, AreSilentDuringStartUp) {
    state.isStartingUp = true;
    preferences.showTempInMenuBar = true;
    modes.setAppMode(1);
    modes.setAppMode(0);
    EXPECT_FALSE(preferences.launchOnLogin);
    EXPECT_EQ(platform.calls, Calls{});
}

TEST_F(ApplicationModesTest, RegisterTheLoginItemFromBothSettings) {
    modes.setLaunchOnLogin(true);
    modes.setHideOnLaunch(true);
    modes.setLaunchOnLogin(false);
    modes.setHideOnLaunch(false);
    EXPECT_EQ(platform.calls, (Calls{"SMLoginItemSetEnabled helper YES", "SMLoginItemSetEnabled helper YES",
                                     "SMLoginItemSetEnabled helper NO", "SMLoginItemSetEnabled helper NO"}));
    EXPECT_FALSE(preferences.launchOnLogin);
    EXPECT_FALSE(preferences.hideOnLaunch);
}

TEST_F(ApplicationModesTest, TellWhenTheLoginItemCannotBeAddedButNotWhenItCannotBeRemoved) {
    platform.serviceManagement.fails = true;
    modes.setLaunchOnLogin(true);
    EXPECT_EQ(platform.alertPanel.alerts, std::vector{loginAlert});
    EXPECT_TRUE(preferences.launchOnLogin);
    modes.setLaunchOnLogin(false);
    EXPECT_EQ(platform.alertPanel.alerts, std::vector{loginAlert});
    EXPECT_FALSE(preferences.launchOnLogin);
}

TEST_F(ApplicationModesTest, TellOfTheLoginItemDuringStartUpToo) {
    state.isStartingUp = true;
    platform.serviceManagement.fails = true;
    modes.toggleLaunchAtStartupShouldHide(true, false);
    EXPECT_EQ(platform.alertPanel.alerts, std::vector{loginAlert});
}

}  // namespace
}  // namespace calorivo
