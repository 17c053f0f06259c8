#pragma once

#include <sys/types.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

// Starting other programs. Their arguments are passed as they are: no shell reads them.

namespace calorivo {

/// How a child ended.
struct ChildEnd {
    /// None for a child that a signal ended.
    std::optional<std::int32_t> exitCode = std::nullopt;
};

enum class Session { shared, own };

/// Starts a program by its whole path. With `own` it has a session of its own, the root as its folder and no
/// input or output: it lives on when this process ends. Variables that belong to the package of the running
/// program are not handed on then. None when it could not be started.
[[nodiscard]] std::optional<pid_t> spawn(const std::string& tool, const std::vector<std::string>& arguments,
                                         Session session);

/// Waits for a child; none when that fails.
[[nodiscard]] std::optional<ChildEnd> waitForChild(pid_t child);

}  // namespace calorivo
