#pragma once

#include "platform/FileHandle.h"

#include <string>
#include <string_view>

namespace calorivo {

inline constexpr std::string_view logFileName = "Calorivo Log.csv";

/// Appends one line, given without its end, and brings it to the disk. A line that a crash cut off is ended
/// first: it harms no other than itself.
[[nodiscard]] FileProblem appendLine(FileHandle& file, std::string_view line);

}  // namespace calorivo
