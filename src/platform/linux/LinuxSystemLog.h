#pragma once

#include "platform/SystemLog.h"
#include "platform/linux/FileDescriptor.h"

#include <unistd.h>

#include <cstddef>
#include <mutex>
#include <string>
#include <string_view>

namespace calorivo {

/// Where the lines of the log go.
struct SystemLogTargets {
    /// The name of the program in the log.
    std::string identifier = "calorivo";
    /// The socket of the system's log: journald's or a syslog daemon's.
    std::string socket = "/dev/log";
    int standardError = STDERR_FILENO;
    /// The variable JOURNAL_STREAM: the device and inode ("8:1234") of the standard error stream when that
    /// goes into the journal already.
    std::string journalStream = {};
};

/// One line for the log: control characters are blanks, bytes that are not UTF-8 are marked as such, and what
/// is longer than the log takes is cut off between two characters.
[[nodiscard]] std::string systemLogLine(std::string_view text);

/// The log of the system, as a user's program of medium importance ("info"). A line goes to the system's log
/// socket, and to the standard error stream when that is a terminal or the system has no log. A line that
/// cannot be taken at once is lost: logging never blocks. Any thread.
class LinuxSystemLog final : public SystemLog {
  public:
    explicit LinuxSystemLog(SystemLogTargets targets);

    void log(std::string_view line) override;

  private:
    [[nodiscard]] bool sendToSystem(const std::string& line);
    void print(const std::string& text) const;

    const SystemLogTargets targets_;
    const bool isStandardErrorJournal_;
    const bool isStandardErrorTerminal_;
    std::mutex lock_;
    FileDescriptor socket_;
};

}  // namespace calorivo
