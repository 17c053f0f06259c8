#pragma once

#include <cstdint>
#include <string>

// Copying and removing whole folders.

namespace calorivo {

/// Copies a file, a symbolic link (as a link) or a folder with all in it; permissions and times of change are
/// kept, and files are on the disk when it returns. Returns 0 or an error number: EEXIST when something is at
/// the destination, EINVAL for a folder into itself, ENOTSUP for a FIFO, a socket or a device. After an error
/// nothing is left at the destination.
[[nodiscard]] int copyTree(const std::string& source, const std::string& destination);

/// Removes the entry and, of a folder, all in it; links are not followed. Returns 0 or an error number.
[[nodiscard]] int removeTree(const std::string& path);

/// The bytes of all files in a folder, or of one file; what cannot be read counts nothing.
[[nodiscard]] std::uintmax_t treeSize(const std::string& path);

}  // namespace calorivo
