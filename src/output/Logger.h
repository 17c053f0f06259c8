#pragma once

#include "monitor/Fans.h"
#include "monitor/Preferences.h"
#include "output/LogWriter.h"
#include "platform/AlertPanel.h"
#include "platform/Dispatch.h"
#include "platform/FileHandle.h"
#include "platform/KeyValueCoding.h"
#include "platform/SystemLog.h"
#include "platform/Workspace.h"
#include "sensors/SensorLists.h"
#include "sensors/SensorNaming.h"

#include <memory>
#include <string>
#include <vector>

namespace calorivo {

/// What the log is made of. All must outlive it.
struct LoggerParts {
    Dispatch& dispatch;
    /// Where "logFileURL" is assigned.
    KeyValueCoding& keys;
    const Property<std::string>& logFileURL;
    const Preferences& preferences;
    const SensorLists& lists;
    const SensorNaming& naming;
    const Fans& fans;
    FileHandles& files;
    SystemLog& systemLog;
    AlertPanel& alertPanel;
    Workspace& workspace;
    /// The user's Documents folders, absolute paths; the log is in the first one.
    const std::vector<std::string>& documentDirectories;
    LogWriter& writer;
};

/// The log as a file of the user: begins it with its header, shows and opens it. Main thread, except where a
/// call says otherwise.
class Logger {
  public:
    explicit Logger(const LoggerParts& parts) : parts_(parts) {}
    Logger(const Logger&) = delete;
    Logger& operator=(const Logger&) = delete;

    /// Begins the log anew, as the preferences have it now. May show an alert.
    void setupLogger();
    void restartLogFile() { setupLogger(); }
    /// Opens the folder of the log.
    void revealLogFileInFinder();
    /// Opens the log in the user's program for such files.
    void openLogFile();
    /// Kept: does nothing. The menu has the command, and choosing another file is not offered.
    void chooseLogFile() {}

    /// For the writer's failures: makes the file again, soon, if it is gone although the user wants a log.
    /// Any thread.
    void writerFailed();

  private:
    void replaceMissingFile();
    /// What went wrong; empty when there is a new file with its header to come.
    [[nodiscard]] FileProblem beginFile(const std::string& path);
    void alertAboutPath(const std::string& path);

    LoggerParts parts_;
    /// Gone with the logger, for blocks that come too late.
    std::shared_ptr<Logger*> self_ = std::make_shared<Logger*>(this);
};

}  // namespace calorivo
