#pragma once

#include <string>
#include <string_view>
#include <vector>

// Making texts of devices fit to be shown.

namespace calorivo {

/// The text as one line of valid UTF-8: control characters, line ends and runs of blanks become one blank,
/// invalid bytes become U+FFFD, blanks at both ends go, and more than 100 bytes are cut off.
[[nodiscard]] std::string cleanedText(std::string_view text);

/// Makes equal texts different: the second "DIMM" becomes "DIMM 2", unless another one is called so. Empty
/// texts stay.
void makeUnique(std::vector<std::string*>& texts);

}  // namespace calorivo
