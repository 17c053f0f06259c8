#pragma once

#include <string>
#include <vector>

namespace calorivo {

/// How this process was started, and on what.
class ProcessInfo {
  public:
    ProcessInfo() = default;
    ProcessInfo(const ProcessInfo&) = delete;
    ProcessInfo& operator=(const ProcessInfo&) = delete;
    virtual ~ProcessInfo() = default;

    /// Index 0 is the program.
    [[nodiscard]] virtual std::vector<std::string> arguments() const = 0;
    /// The operating system's name and version, for people.
    [[nodiscard]] virtual std::string operatingSystemVersionString() const = 0;
};

}  // namespace calorivo
