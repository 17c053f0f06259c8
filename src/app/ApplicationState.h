#pragma once

#include "platform/Property.h"
#include "platform/TryLock.h"

#include <string>

namespace calorivo {

/// Where the program is in its life, and what it is for this run. Main thread, except where a member says
/// otherwise.
struct ApplicationState {
    /// From the first stage of start-up until the end of the second one: setters are silent meanwhile.
    bool isStartingUp = false;
    bool isShuttingDown = false;
    /// This run has its place among the running applications. Settled in the first stage.
    bool didLaunchInNormalMode = false;
    Property<bool> isOkToShowRate;
    /// Whether the user may change "showAppIcon" now.
    Property<bool> isShowAppIconEnabled;
    /// The operating system's, for the feedback mail.
    std::string osVersionString;
    /// Declared for bound controls; nothing assigns or reads these two.
    Property<std::string> hostName;
    Property<std::string> appVersionString;

    /// The log's file, empty for none. Changed on the main thread while `logURLLock` is held; any thread may
    /// read it that holds the lock.
    Property<std::string> logFileURL;
    TryLock logURLLock;
};

}  // namespace calorivo
