#pragma once

#include "app/Explanation.h"

#include <string>

namespace calorivo {

[[nodiscard]] std::string explanationText(const Explanation& explanation);
/// One JSON object with a line end.
[[nodiscard]] std::string explanationJSON(const Explanation& explanation);

}  // namespace calorivo
