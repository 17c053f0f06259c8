#pragma once

#include <string>
#include <string_view>

// Writing a small file of the program's own so that readers see either the old or the new one.

namespace calorivo {

/// Creates the folder and its parents, each for its owner only. Returns the reason of a failure; empty when
/// the folder exists.
[[nodiscard]] std::string createPrivateFolder(const std::string& folder);

/// Writes `text` to a temporary file in `folder`, which then takes the place of the file `name`. Returns the
/// reason of a failure, after which the old file stands as it was; empty on success.
[[nodiscard]] std::string replaceFile(const std::string& folder, const std::string& name,
                                      std::string_view text);

}  // namespace calorivo
