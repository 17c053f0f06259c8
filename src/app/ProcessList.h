#pragma once

#include "platform/ProcessListing.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace calorivo {

/// What is known of a running process.
struct ProcessRecord {
    std::int32_t processID = 0;
    /// The name under which it is registered as an application; none for what is no application.
    std::optional<std::string> processName = std::nullopt;
    /// Both none for a user whom the user database does not know.
    std::optional<std::uint32_t> userID = std::nullopt;
    std::optional<std::string> userName = std::nullopt;
    friend bool operator==(const ProcessRecord&, const ProcessRecord&) = default;
};

struct Utils {
    /// All running processes in the kernel's order; none when the kernel does not tell. Main thread.
    [[nodiscard]] static std::vector<ProcessRecord> getBSDProcessList(ProcessListing& listing);
};

}  // namespace calorivo
