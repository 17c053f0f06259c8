#pragma once

#include <string>

namespace calorivo {

/// Every command, every option, the exit codes.
[[nodiscard]] std::string helpText();
[[nodiscard]] std::string versionText();

}  // namespace calorivo
