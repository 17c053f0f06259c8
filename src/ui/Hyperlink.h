#pragma once

#include "platform/AttributedString.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace calorivo::Hyperlink {

/// The text with its end, from `startIndex` on, looking and working like a link: blue, underlined once.
/// `startIndex` counts bytes; one outside of the text stands for its nearest end.
[[nodiscard]] AttributedString hyperlinkFromStringStartingAtIndexWithURL(std::string text,
                                                                         std::int32_t startIndex,
                                                                         std::string_view url);

}  // namespace calorivo::Hyperlink
