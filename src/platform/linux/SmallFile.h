#pragma once

#include <cstddef>
#include <string>

// Reading a small text file of a user, whatever stands in its place.

namespace calorivo {

inline constexpr std::size_t smallFileLimit = std::size_t{1} << 20U;

/// What a file gave: its text, nothing because it is absent, or the reason why it is not used.
struct SmallFile {
    enum class State { read, absent, unusable };
    State state = State::absent;
    std::string text;
    std::string reason;
};

enum class SymbolicLinks { followed, refused };

/// Reads a regular file of at most `limit` bytes. Never waits: a FIFO, a device or a folder is unusable at
/// once. With `refused` a symbolic link in the last component is unusable as well.
[[nodiscard]] SmallFile readSmallFile(const std::string& path, SymbolicLinks links,
                                      std::size_t limit = smallFileLimit);

/// The system's words for an error number: "Permission denied".
[[nodiscard]] std::string errorText(int error);

}  // namespace calorivo
