// The first stage of start-up: state, and what kind of process this is. No hardware, no windows.

#include "app/PyroluxAppDelegate.h"
#include "platform/Bundle.h"
#include "platform/Dispatch.h"
#include "platform/ProcessInfo.h"
#include "platform/ProcessManager.h"
#include "platform/UserDefaults.h"

#include <array>
#include <string>
#include <utility>

namespace calorivo {

void PyroluxAppDelegate::awakeFromNib() {
    takeArguments();
    beginStartUp();
    registerDefaults();
    clearDrivesAndLog();
    setInitialValues();
    chooseModelName();
    createQueues();
    createLog();
    createCheckCycle();
    restoreCustomCells();
    chooseProcessType();
    setLimitLabels();
    selectFirstPreferences();
    startNotifications();
    observeSourceList();
    connectToGPUSwitcher();
}

void PyroluxAppDelegate::takeArguments() { arguments_ = platform_.processInfo.arguments(); }

void PyroluxAppDelegate::beginStartUp() {
    state_.isStartingUp = true;
    keys_.setValueForKey(true, "isFirstLaunch");
}

void PyroluxAppDelegate::registerDefaults() {
    // Without them every preference reads as 0, NO or empty.
    if (const auto defaults = platform_.bundle.dictionaryForResource("Defaults", "plist"))
        platform_.userDefaults.registerDefaults(*defaults);
}

void PyroluxAppDelegate::clearDrivesAndLog() {
    smartInfo_.clear();
    state_.logFileURL = std::string();
    preferences_.logFileBookmarkData = Data{};
    state_.didLaunchInNormalMode = false;
    sourceList_.sourceListSelectedIndexes = SourceList::Indexes{1};
    // Kept: cleared, and announced, a second time. It does no harm.
    preferences_.logFileBookmarkData = Data{};
}

void PyroluxAppDelegate::setInitialValues() {
    state_.isOkToShowRate = true;
    state_.isShuttingDown = false;
    state_.osVersionString = platform_.processInfo.operatingSystemVersionString();
    gpu_.isOkToCheckGPUSensors = true;
}

void PyroluxAppDelegate::chooseModelName() { lists_.modelName = modelNameFor(arguments_, platform_.sysCtl); }

void PyroluxAppDelegate::createQueues() {
    checkQueue_ = platform_.dispatch.makeSerialQueue(std::string(configuration_.checkQueueLabel));
    logQueue_ = platform_.dispatch.makeSerialQueue(std::string(configuration_.logQueueLabel));
    gpuGuard_ = std::make_unique<GPUGuard>(platform_.dispatch, *checkQueue_, gpu_);
}

void PyroluxAppDelegate::createLog() {
    logWriter_ = std::make_unique<LogWriter>(LogWriterParts{.dispatch = platform_.dispatch,
                                                            .logQueue = *logQueue_,
                                                            .files = platform_.fileHandles,
                                                            .systemLog = platform_.systemLog,
                                                            .logFileURL = state_.logFileURL,
                                                            .logURLLock = state_.logURLLock,
                                                            .failed = [this] { logger_->writerFailed(); }});
    logger_ = std::make_unique<Logger>(LoggerParts{.dispatch = platform_.dispatch,
                                                   .keys = keys_,
                                                   .logFileURL = state_.logFileURL,
                                                   .preferences = preferences_,
                                                   .lists = lists_,
                                                   .naming = naming_,
                                                   .fans = fans_,
                                                   .files = platform_.fileHandles,
                                                   .systemLog = platform_.systemLog,
                                                   .alertPanel = platform_.alertPanel,
                                                   .workspace = platform_.workspace,
                                                   .documentDirectories = configuration_.documentDirectories,
                                                   .writer = *logWriter_});
}

void PyroluxAppDelegate::createCheckCycle() {
    checkCycle_ = std::make_unique<CheckCycle>(
        CheckCycleParts{.dispatch = platform_.dispatch,
                        .checkQueue = *checkQueue_,
                        .lists = lists_,
                        .naming = naming_,
                        .reader = reader_,
                        .fans = fans_,
                        .preferences = preferences_,
                        .gpu = gpu_,
                        .averages = averages_,
                        .outputs = {logWriter_.get(), &alerts_, &display_, &drives_}});
}

void PyroluxAppDelegate::restoreCustomCells() { preferencesController_.loadCustomCells(); }

void PyroluxAppDelegate::chooseProcessType() {
    if (platform_.userDefaults.objectForKey("appMode").intValue() != 0) {
        interface_.controls.setQuitMenuItemKeyEquivalent("");
        return;
    }
    platform_.processManager.transformProcessTypeToForegroundApplication();
    platform_.processManager.SetFrontProcess();
    state_.didLaunchInNormalMode = true;
}

void PyroluxAppDelegate::setLimitLabels() {
    constexpr std::array<std::pair<LimitLabel, std::int32_t>, 6> labels{{
        {LimitLabel::specificAreaLowLabel, 40},
        {LimitLabel::specificAreaMedLabel, 90},
        {LimitLabel::specificAreaHighLabel, 100},
        {LimitLabel::averageLowLabel, 40},
        {LimitLabel::averageMedLabel, 90},
        {LimitLabel::averageHighLabel, 100},
    }};
    for (const auto& [label, value] : labels) interface_.controls.setIntValue(label, value);
}

void PyroluxAppDelegate::selectFirstPreferences() {
    interface_.controls.setSelectedItemIdentifier("Temperature");
}

void PyroluxAppDelegate::startNotifications() { alerts_.initGrowl(); }

void PyroluxAppDelegate::observeSourceList() {
    sourceListObservation_ = sourceList_.observeSelectedObjects(
        [this] { preferencesController_.observeValueForKeyPath("selectedObjects"); });
}

void PyroluxAppDelegate::connectToGPUSwitcher() {
    GPUSwitcher* const switcher = ports_.gpuSwitcher;
    if (switcher == nullptr || !switcher->switcherOpen()) {
        gpu_.currentGPUType = 0;
        return;
    }
    gpuObservation_ = switcher->registerForGPUChangeNotifications(*gpuGuard_);
    gpu_.currentGPUType = switcher->isUsingDiscreteGPU() ? 1 : 0;
}

}  // namespace calorivo
