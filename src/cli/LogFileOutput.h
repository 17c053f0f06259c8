#pragma once

#include "cli/Output.h"
#include "output/LogWriter.h"
#include "platform/Dispatch.h"
#include "platform/Property.h"
#include "platform/SystemLog.h"
#include "platform/TryLock.h"
#include "platform/linux/LinuxFileHandle.h"

#include <memory>
#include <string>

namespace calorivo {

/// The rows of the log in a file: written on a queue of their own, so that a slow disk holds no check. What
/// goes wrong on the way is told on the standard error. Main thread.
class LogFileOutput {
  public:
    /// `dispatch` must outlive it, and its main queue be closed before this ends.
    LogFileOutput(Dispatch& dispatch, Streams streams);
    LogFileOutput(const LogFileOutput&) = delete;
    LogFileOutput& operator=(const LogFileOutput&) = delete;

    /// Opens the file, making it if it is not there; one without a line gets the header. False, with a
    /// message, when that cannot be done.
    [[nodiscard]] bool open(const std::string& path, std::string header);
    void write(std::string row);
    /// Waits until everything is written; false, with a message, when lines were lost.
    [[nodiscard]] bool close();

  private:
    /// Messages as they come. Any thread.
    class Messages final : public SystemLog {
      public:
        explicit Messages(int descriptor) : descriptor_(descriptor) {}
        void log(std::string_view line) override;

      private:
        int descriptor_;
    };

    [[nodiscard]] FileProblem beginFile();
    void replaceMissingFile();

    Dispatch& dispatch_;
    Output& errors_;
    Messages messages_;
    LinuxFileHandles files_;
    std::string path_;
    std::string header_;
    Property<std::string> logFileURL_;
    TryLock logURLLock_;
    std::unique_ptr<LogWriter> writer_;
    std::unique_ptr<Queue> logQueue_;  // last: its blocks work on the others
};

}  // namespace calorivo
