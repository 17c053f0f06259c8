#pragma once

#include <string_view>

namespace calorivo {

/// The log of the operating system. Any thread.
class SystemLog {
  public:
    SystemLog() = default;
    SystemLog(const SystemLog&) = delete;
    SystemLog& operator=(const SystemLog&) = delete;
    virtual ~SystemLog() = default;

    /// One line, without a line end.
    virtual void log(std::string_view line) = 0;
};

}  // namespace calorivo
