#pragma once

#include "platform/Dispatch.h"
#include "platform/SystemLog.h"

#include <map>
#include <mutex>
#include <string>

namespace calorivo {

/// Tells the system's log why lines of the log could not be written: each cause at most once a minute, since
/// a full disk would otherwise fill that log with every check. Any thread.
class LogFileFailures {
  public:
    /// Both must outlive it.
    LogFileFailures(const Dispatch& dispatch, SystemLog& systemLog)
        : dispatch_(dispatch), systemLog_(systemLog) {}

    /// `description` may tell more than the cause, a number that grows. True when it was written.
    bool tell(const std::string& cause, const std::string& description);
    bool tell(const std::string& cause) { return tell(cause, cause); }

  private:
    [[nodiscard]] bool isTimeToTell(const std::string& cause);

    const Dispatch& dispatch_;
    SystemLog& systemLog_;
    std::mutex mutex_;
    /// When each cause was told, for one minute.
    std::map<std::string, Moment> told_;
};

}  // namespace calorivo
