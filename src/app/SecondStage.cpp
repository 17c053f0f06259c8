// The second stage of start-up: hardware, preferences, menu bar and windows.

#include "app/PyroluxAppDelegate.h"
#include "platform/Bundle.h"
#include "platform/Format.h"
#include "platform/SensorProvider.h"
#include "smc/SmcClient.h"

namespace calorivo {

void PyroluxAppDelegate::finishLoadingApp() {
    if (!state_.isStartingUp || hasBegunSecondStage_) return;
    hasBegunSecondStage_ = true;
    offerToMove();
    openSMC();
    findSensors();
    keepPreferencesWindow();
    loadPreferences();
    setUpLoggerAndPromotion();
    titleAboutItem();
    createStatusItem();
    loadShowAppIcon();
    checkAtOnce();
    endStartUp();
    arrangeWindows();
    showMainWindow();
    showDialogIfFirstLaunch();
    showUpgradeWindow();
}

void PyroluxAppDelegate::offerToMove() { callIfPresent(ports_.offerToMoveToApplicationsFolder); }

void PyroluxAppDelegate::openSMC() {
    smcSetIOKit(&platform_.ioKit);
    // A failure has been told by then; the program runs on without sensors.
    smcOpen();
}

void PyroluxAppDelegate::findSensors() {
    DiscoverySteps steps{
        .getAllFanSensors = [this] { fans_.getAllFanSensors(); },
        .getTemperatureForSensor = [this](SensorKey key) { return reader_.getTemperatureForSensor(key); },
        .setupSourceList = [this] { sourceList_.setupSourceList(); },
        .machineSensors = {}};
    if (platform_.sensorProvider != nullptr)
        steps.machineSensors = platform_.sensorProvider->machineSensors();
    discovery_.getAllSensors(arguments_, steps);
    sensorPopups_.fillInSensorPopups();
}

void PyroluxAppDelegate::keepPreferencesWindow() {
    interface_.windows.setCanHide(WindowName::prefWindow, false);
}

void PyroluxAppDelegate::loadPreferences() { preferencesController_.loadPreferences(); }

void PyroluxAppDelegate::setUpLoggerAndPromotion() {
    logger_->setupLogger();
    callIfPresent(ports_.setupVantixView);
}

void PyroluxAppDelegate::titleAboutItem() {
    interface_.controls.setStatusAboutMenuItemTitle(
        format("Calorivo %@", platform_.bundle.objectForInfoDictionaryKey("CFBundleVersion")));
}

void PyroluxAppDelegate::createStatusItem() { statusItem_.create(platform_.statusBar, statusMenuName); }

void PyroluxAppDelegate::loadShowAppIcon() {
    preferencesController_.loadShowAppIcon();
    modes_.updateShowAppIconEnabled();
}

void PyroluxAppDelegate::checkAtOnce() { checkCycle_->checkTimerFired(); }

void PyroluxAppDelegate::endStartUp() { state_.isStartingUp = false; }

void PyroluxAppDelegate::arrangeWindows() {
    interface_.windows.center(WindowName::prefWindow);
    interface_.windows.setShouldCascadeWindows(WindowName::window, false);
}

void PyroluxAppDelegate::showMainWindow() {
    if (preferences_.appMode == 0) interface_.windows.makeKeyAndOrderFront(WindowName::window);
}

void PyroluxAppDelegate::showUpgradeWindow() {
    interface_.windows.center(WindowName::vantixUpgradeWindow);
    interface_.windows.setLevel(WindowName::vantixUpgradeWindow, WindowLevel::modalPanel);
    interface_.windows.orderFront(WindowName::vantixUpgradeWindow);
}

}  // namespace calorivo
