#include "ui/Hyperlink.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace calorivo::Hyperlink {

AttributedString hyperlinkFromStringStartingAtIndexWithURL(std::string text, std::int32_t startIndex,
                                                           std::string_view url) {
    constexpr Color blue{0.0, 0.0, 1.0, 1.0};
    const std::size_t length = text.size();
    const std::size_t start = std::min(static_cast<std::size_t>(std::max(startIndex, 0)), length);
    AttributedString linked{std::move(text), {}};
    linked.runs.push_back(
        {{start, length - start},
         {.link = std::string(url), .foregroundColor = blue, .underlineStyle = UnderlineStyle::single}});
    return linked;
}

}  // namespace calorivo::Hyperlink
