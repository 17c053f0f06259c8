#pragma once

#include "platform/linux/FileDescriptor.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

// Reading the kernel's attribute files. None of these blocks on a FIFO or a device that a recorded tree may
// hold.

namespace calorivo {

/// A decimal number with an optional minus sign and one closing line feed: the only form the kernel writes.
/// None for anything else, and for what does not fit.
[[nodiscard]] std::optional<long> parseAttributeNumber(std::string_view text);

/// Opens a folder for use with the calls below; the descriptor pins the folder, whatever takes its name
/// later.
[[nodiscard]] FileDescriptor openFolder(const std::string& path);
[[nodiscard]] FileDescriptor openFolderAt(int folder, const char* name);
/// Opens an attribute for reading.
[[nodiscard]] FileDescriptor openAttribute(int folder, const char* name);

/// Makes room for so many descriptors now, with the help of an open one. While a program has several threads
/// the kernel stops it for some 10 ms each time that its table of descriptors must grow.
void makeRoomForDescriptors(int open, std::size_t count);

/// The attribute's text without its one closing line feed; none when it cannot be read. 4096 bytes at most.
[[nodiscard]] std::optional<std::string> readAttribute(int folder, const char* name);
[[nodiscard]] std::optional<long> readAttributeNumber(int folder, const char* name);
/// A number like "0x1002".
[[nodiscard]] std::uint32_t readAttributeHex(int folder, const char* name);

/// What one reading of an open attribute gave: a number, or the errno of the failure (EINVAL for no number).
struct AttributeReading {
    long value = 0;
    int error = 0;
};
[[nodiscard]] AttributeReading readOpenNumber(int descriptor);

/// The names in a folder, sorted; empty when it cannot be read.
[[nodiscard]] std::vector<std::string> namesInFolder(int folder);
/// The target of a symbolic link as it is written; none when it is no link.
[[nodiscard]] std::optional<std::string> linkTarget(int folder, const char* name);
/// Joins a folder and a relative path and takes "." and ".." out, by their text alone. Never climbs above
/// "/".
[[nodiscard]] std::string joinedPath(std::string_view folder, std::string_view relative);
/// The last component of a path.
[[nodiscard]] std::string_view lastComponent(std::string_view path);
/// True when the folder lies in a real sysfs, not in a copy of one.
[[nodiscard]] bool isRealSysfs(int folder);

}  // namespace calorivo
