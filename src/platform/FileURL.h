#pragma once

#include <string>
#include <string_view>

// File URLs of absolute paths: "file:///home/me/Calorivo%20Log.csv".

namespace calorivo {

/// Every byte that means something in a URL, or is not ASCII, is written as a percent sign and two digits.
[[nodiscard]] std::string fileURLWithPath(std::string_view path);

/// The path; empty for anything but a file URL of this machine.
[[nodiscard]] std::string pathOfFileURL(std::string_view url);

/// The folder of the file, with its slash at the end.
[[nodiscard]] std::string URLByDeletingLastPathComponent(std::string_view url);

}  // namespace calorivo
