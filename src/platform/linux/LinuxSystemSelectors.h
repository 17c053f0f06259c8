#pragma once

#include "platform/SystemSelectors.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace calorivo {

/// Major, minor and bug-fix number.
using VersionNumbers = std::array<std::int32_t, 3>;

/// The distribution's version from the text of os-release; where it has none, as with those that are never
/// finished, the kernel's. None when neither is a version. Missing numbers are 0.
[[nodiscard]] std::optional<VersionNumbers> systemVersion(std::string_view osRelease,
                                                          std::string_view kernelRelease);

/// The version of this system.
class LinuxSystemSelectors final : public SystemSelectors {
  public:
    explicit LinuxSystemSelectors(std::optional<VersionNumbers> version) : version_(version) {}
    /// Of the running system.
    LinuxSystemSelectors();

    [[nodiscard]] OSErr Gestalt(OSType selector, std::int32_t& response) const override;

  private:
    const std::optional<VersionNumbers> version_;
};

}  // namespace calorivo
