#include "app/PyroluxAppDelegate.h"

#include "platform/AlertPanel.h"
#include "platform/UserDefaults.h"
#include "smc/SmcClient.h"

#include <utility>

namespace calorivo {

PyroluxAppDelegate::PyroluxAppDelegate(const Platform& platform, const Interface& interface,
                                       Configuration configuration, ApplicationPorts ports)
    : platform_(platform),
      interface_(interface),
      configuration_(std::move(configuration)),
      ports_(std::move(ports)),
      naming_(lists_, ports_.gpuNames != nullptr ? *ports_.gpuNames : noGPUNames_),
      reader_(lists_, preferences_, gpu_, configuration_.retainingGPUModel),
      fans_(lists_, platform_.userDefaults),
      drives_(smartInfo_, ports_.makeSmartController, [this] { return preferences_.checkDriveTemps.get(); }),
      sourceList_(lists_, smartInfo_, preferences_.checkDriveTemps,
                  [this] { interface_.cpuTableView.reloadData(); }),
      discovery_(lists_, naming_, platform_.fileManager, configuration_.modelTables),
      sensorPopups_(lists_, naming_, smartInfo_, fans_, popUps_),
      sensorTable_(lists_, sourceList_, naming_, reader_),
      statusItem_({preferences_, averages_, fans_, smartInfo_, reader_, popUps_}),
      display_(interface_.cpuTableView, statusItem_),
      alerts_({platform_.dispatch, preferences_, reader_, platform_.growl, platform_.systemLog,
               [this] { activateAndShowMainWindow(); }}),
      modes_({preferences_, state_, keys_, statusItem_, platform_.alertPanel, platform_.serviceManagement,
              configuration_.loginHelperIdentifier}),
      linkActions_(configuration_.links, platform_.workspace, platform_.sysCtl, platform_.bundle,
                   state_.osVersionString),
      preferencesController_(preferencesParts()) {
    keys_.define("currentAvgTmp", averages_.currentAvgTmp);
    keys_.define("avgTempAsString", averages_.avgTempAsString);
    keys_.define("avgCPUTempAsString", averages_.avgCPUTempAsString);
    keys_.define("ambientTempAsString", averages_.ambientTempAsString);
}

PyroluxAppDelegate::~PyroluxAppDelegate() = default;

PreferencesParts PyroluxAppDelegate::preferencesParts() {
    return {.preferences = preferences_,
            .state = state_,
            .keys = keys_,
            .userDefaults = platform_.userDefaults,
            .lists = lists_,
            .gpu = gpu_,
            .reader = reader_,
            .fans = fans_,
            .smartInfo = smartInfo_,
            .drives = drives_,
            .sourceList = sourceList_,
            .sensorPopups = sensorPopups_,
            .popUps = popUps_,
            .statusItem = statusItem_,
            .modes = modes_,
            .checkTimerFired = [this] { checkCycle_->checkTimerFired(); },
            .setUpdateIntervalSecs =
                [this](std::int32_t seconds) { checkCycle_->setUpdateIntervalSecs(seconds); },
            .setupLogger = [this] { logger_->setupLogger(); },
            .reloadTable = [this] { interface_.cpuTableView.reloadData(); }};
}

void PyroluxAppDelegate::applicationDidFinishLaunching() {
    constexpr std::int32_t menuOnlyMode = 1;
    if (platform_.userDefaults.objectForKey("appMode").intValue() == menuOnlyMode) finishLoadingApp();
}

void PyroluxAppDelegate::applicationDidBecomeActive() {
    if (state_.isStartingUp) finishLoadingApp();
}

void PyroluxAppDelegate::showDialogIfFirstLaunch() {
    if (!preferences_.isFirstLaunch) return;
    interface_.windows.activateIgnoringOtherApps();
    const AlertAnswer answer = platform_.alertPanel.runModal(
        {.message = "Launch on Startup",
         .defaultButton = "Yes",
         .alternateButton = "No",
         .informativeText =
             "Calorivo can be configured so it launches in the background when you start up your computer. A "
             "status menu icon will be available in the menu bar in this mode.\n\nWould you like to turn "
             "this "
             "on now? You can change this later in the preferences."});
    if (answer == AlertAnswer::defaultButton) {
        keys_.setValueForKey(true, "launchOnLogin");
        keys_.setValueForKey(std::int32_t{1}, "appMode");
    }
    preferences_.isFirstLaunch = false;
    preferencesController_.savePreferences();
}

void PyroluxAppDelegate::windowWillClose(WindowName closing) {
    // Kept: asked for and not used, since nothing asks for a rating here.
    if (closing == WindowName::window) static_cast<void>(state_.isOkToShowRate.get());
    if (closing == WindowName::prefWindow && !state_.isShuttingDown) preferencesController_.savePreferences();
}

bool PyroluxAppDelegate::applicationShouldTerminateAfterLastWindowClosed() const {
    return state_.didLaunchInNormalMode && !state_.isStartingUp;
}

void PyroluxAppDelegate::applicationWillTerminate() {
    state_.isShuttingDown = true;
    preferences_.isFirstLaunch = false;
    preferencesController_.savePreferences();
    smcClose();
}

void PyroluxAppDelegate::activateAndShowMainWindow() {
    interface_.windows.activateIgnoringOtherApps();
    interface_.windows.makeKeyAndOrderFront(WindowName::window);
}

void PyroluxAppDelegate::activateAndShowPreferences() {
    interface_.windows.activateIgnoringOtherApps();
    interface_.windows.center(WindowName::prefWindow);
    interface_.windows.makeKeyAndOrderFront(WindowName::prefWindow);
}

void PyroluxAppDelegate::preferencesToolbarItemClicked(std::int32_t tag) {
    interface_.controls.selectTabViewItemAtIndex(tag);
}

}  // namespace calorivo
