#pragma once

#include "platform/ProcessInfo.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace calorivo {

/// The value of a key in the text of an os-release file, as a shell would read it but without expansions; of
/// several lines with the key the last one counts. Empty when there is none.
[[nodiscard]] std::string osReleaseValue(std::string_view text, std::string_view key);

/// This process, and the distribution and kernel that it runs on. Main thread.
class LinuxProcessInfo final : public ProcessInfo {
  public:
    /// `root` stands before the paths of the system's files.
    explicit LinuxProcessInfo(std::vector<std::string> arguments, std::string root = {})
        : arguments_(std::move(arguments)), root_(std::move(root)) {}

    [[nodiscard]] std::vector<std::string> arguments() const override { return arguments_; }
    /// "Debian GNU/Linux 12 (bookworm), Linux 6.1.0-13-amd64"; just "Linux" when the system tells nothing.
    [[nodiscard]] std::string operatingSystemVersionString() const override;

  private:
    std::vector<std::string> arguments_;
    std::string root_;
};

}  // namespace calorivo
