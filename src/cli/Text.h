#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// Texts as a terminal shows them: UTF-8, clean, aligned by the columns that they take.

namespace calorivo {

/// The text as it may be sent to a terminal: line ends and tabs become blanks, other control characters and
/// those that turn the direction of writing are left out, and what is not UTF-8 becomes U+FFFD. Text from
/// hardware or from a file goes through here before it is shown.
[[nodiscard]] std::string cleanText(std::string_view text);

/// The columns that a clean text takes: 2 for wide East Asian characters and pictographs, 0 for combining
/// marks.
[[nodiscard]] std::size_t displayWidth(std::string_view text);

enum class Align { left, right };
/// Appends the text filled up with blanks to `width` columns; one that is too long is cut, with an ellipsis
/// as its last column.
void appendFitted(std::string& out, std::string_view text, std::size_t width, Align align = Align::left);

}  // namespace calorivo
