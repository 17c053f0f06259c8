#pragma once

#include "app/ApplicationModes.h"
#include "app/ApplicationState.h"
#include "app/Configuration.h"
#include "app/LinkActions.h"
#include "app/MainDisplay.h"
#include "app/Ports.h"
#include "app/PreferencesController.h"
#include "app/SensorPopups.h"
#include "app/SensorTable.h"
#include "app/Windows.h"
#include "monitor/CheckCycle.h"
#include "monitor/GPUGuard.h"
#include "output/LogWriter.h"
#include "output/Logger.h"
#include "output/OverLimitAlerts.h"
#include "output/StatusItem.h"
#include "platform/Platform.h"
#include "platform/Property.h"
#include "sensors/SensorDiscovery.h"
#include "sensors/SourceList.h"

#include <cstdint>
#include <memory>

namespace calorivo {

/// The program's controller: owns all state and all parts, starts them in order and ends them. Between its
/// making and awakeFromNib nothing else may be called. It is to be destroyed when no block of its queues can
/// be waiting for the main queue any more. Main thread.
class PyroluxAppDelegate {
  public:
    /// What is referred to must outlive this object.
    PyroluxAppDelegate(const Platform& platform, const Interface& interface, Configuration configuration,
                       ApplicationPorts ports = {});
    PyroluxAppDelegate(const PyroluxAppDelegate&) = delete;
    PyroluxAppDelegate& operator=(const PyroluxAppDelegate&) = delete;
    ~PyroluxAppDelegate();

    /// The first stage of start-up: state, and what kind of process this is. To be called once.
    void awakeFromNib();
    void applicationDidFinishLaunching();
    void applicationDidBecomeActive();
    /// The second stage: everything that touches hardware, menu bar and windows. It runs once, even when an
    /// alert in the middle of it has the program activated again.
    void finishLoadingApp();
    /// Asks whether to start at login, unless that was asked before.
    void showDialogIfFirstLaunch();
    void windowWillClose(WindowName closing);
    [[nodiscard]] bool applicationShouldTerminateAfterLastWindowClosed() const;
    void applicationWillTerminate();

    void activateAndShowMainWindow();
    void activateAndShowPreferences();
    void preferencesToolbarItemClicked(std::int32_t tag);

    // The state.
    [[nodiscard]] const ApplicationState& state() const { return state_; }
    [[nodiscard]] const SensorLists& lists() const { return lists_; }
    [[nodiscard]] const Averages& averages() const { return averages_; }
    [[nodiscard]] const Preferences& preferences() const { return preferences_; }
    [[nodiscard]] Preferences& preferences() { return preferences_; }
    [[nodiscard]] KeyValueCoding& keys() { return keys_; }
    [[nodiscard]] const MenuBarPopUps& popUps() const { return popUps_; }
    [[nodiscard]] const LinkTargets& links() const { return configuration_.links; }
    // The parts.
    /// Only after awakeFromNib.
    [[nodiscard]] CheckCycle& checkCycle() { return *checkCycle_; }
    /// Only after awakeFromNib.
    [[nodiscard]] Logger& logger() { return *logger_; }
    [[nodiscard]] const SensorNaming& naming() const { return naming_; }
    [[nodiscard]] TemperatureReader& reader() { return reader_; }
    [[nodiscard]] SensorDiscovery& discovery() { return discovery_; }
    [[nodiscard]] Fans& fans() { return fans_; }
    [[nodiscard]] SourceList& sourceList() { return sourceList_; }
    [[nodiscard]] SensorTable& sensorTable() { return sensorTable_; }
    [[nodiscard]] StatusItem& statusItem() { return statusItem_; }
    [[nodiscard]] LinkActions& linkActions() { return linkActions_; }
    [[nodiscard]] PreferencesController& preferencesController() { return preferencesController_; }

  private:
    struct NoGPUNames final : GPUNames {
        [[nodiscard]] std::optional<std::string> integratedGPUName() override { return std::nullopt; }
        [[nodiscard]] std::optional<std::string> discreteGPUName() override { return std::nullopt; }
    };

    // The steps of the first stage, in their order.
    void takeArguments();
    void beginStartUp();
    void registerDefaults();
    void clearDrivesAndLog();
    void setInitialValues();
    void chooseModelName();
    void createQueues();
    void createLog();
    void createCheckCycle();
    void restoreCustomCells();
    void chooseProcessType();
    void setLimitLabels();
    void selectFirstPreferences();
    void startNotifications();
    void observeSourceList();
    void connectToGPUSwitcher();

    // The steps of the second stage, in their order.
    void offerToMove();
    void openSMC();
    void findSensors();
    void keepPreferencesWindow();
    void loadPreferences();
    void setUpLoggerAndPromotion();
    void titleAboutItem();
    void createStatusItem();
    void loadShowAppIcon();
    void checkAtOnce();
    void endStartUp();
    void arrangeWindows();
    void showMainWindow();
    void showUpgradeWindow();

    [[nodiscard]] PreferencesParts preferencesParts();

    const Platform platform_;
    const Interface interface_;
    const Configuration configuration_;
    const ApplicationPorts ports_;
    ProcessArguments arguments_;
    bool hasBegunSecondStage_ = false;

    ApplicationState state_;
    SensorLists lists_;
    SmartInfo smartInfo_;
    Preferences preferences_;
    GPUState gpu_;
    Averages averages_;
    KeyValueCoding keys_;
    PopUpButton menuBarTempPopupButton_;
    PopUpButton menuBarTemp2PopupButton_;
    PopUpButton menuBarFanPopupButton_;
    const MenuBarPopUps popUps_{&menuBarTempPopupButton_, &menuBarTemp2PopupButton_, &menuBarFanPopupButton_};

    NoGPUNames noGPUNames_;
    SensorNaming naming_;
    TemperatureReader reader_;
    Fans fans_;
    DriveTemperatures drives_;
    SourceList sourceList_;
    SensorDiscovery discovery_;
    SensorPopups sensorPopups_;
    SensorTable sensorTable_;
    StatusItem statusItem_;
    MainDisplay display_;
    OverLimitAlerts alerts_;
    ApplicationModes modes_;
    LinkActions linkActions_;
    PreferencesController preferencesController_;
    Observation sourceListObservation_;
    std::unique_ptr<LogWriter> logWriter_;
    std::unique_ptr<Logger> logger_;
    std::unique_ptr<CheckCycle> checkCycle_;
    std::unique_ptr<GPUGuard> gpuGuard_;
    // Last, so that they end before what their blocks work on; the check queue, which hands rows to the log
    // queue, before that one, and whoever tells of GPUs before the check queue.
    std::unique_ptr<Queue> logQueue_;
    std::unique_ptr<Queue> checkQueue_;
    Observation gpuObservation_;
};

}  // namespace calorivo
