#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

// Which file system a path is on, from the kernel's list of mounts.

namespace calorivo {

struct Mount {
    /// The folder that it is mounted on.
    std::string point;
    /// What is mounted: "/dev/sdb1", or a word of the file system's own.
    std::string source;
    bool isReadOnly = false;
    /// Its number, "8:17"; the major number is 0 for what is on no device of its own.
    std::string device{};
    friend bool operator==(const Mount&, const Mount&) = default;
};

/// The lines of /proc/self/mountinfo, in their order; a line that is not understood is left out.
[[nodiscard]] std::vector<Mount> parseMounts(std::string_view mountInfo);

/// The mount that holds the absolute path, whether the path exists or not. The later of two mounts on the
/// same folder hides the earlier. None only when the list is empty.
[[nodiscard]] std::optional<Mount> mountOf(std::string_view path, const std::vector<Mount>& mounts);

}  // namespace calorivo
