#include "monitor/HardwareText.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>

namespace calorivo {

namespace {

using Bytes = std::span<const std::uint8_t>;

struct Character {
    char32_t code;
    std::size_t length;
};

/// The character that `bytes`, which are not empty, begin with; none where they are not UTF-8.
std::optional<Character> firstCharacter(Bytes bytes) {
    const std::uint8_t lead = bytes[0];
    if (lead < 0x80) return Character{lead, 1};
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC0 || lead > 0xF7 || bytes.size() < length) return std::nullopt;
    char32_t code = lead & (0xFFU >> (length + 1));
    for (const std::uint8_t byte : bytes.subspan(1, length - 1)) {
        if ((byte & 0xC0U) != 0x80U) return std::nullopt;
        code = (code << 6) | (byte & 0x3FU);
    }
    // Longer forms than needed, halves of pairs and codes past the last one are not characters.
    constexpr std::array<char32_t, 5> smallest{0, 0, 0x80, 0x800, 0x10000};
    if (code < smallest[length] || (code >= 0xD800 && code <= 0xDFFF) || code > 0x10FFFF) return std::nullopt;
    return Character{code, length};
}

/// Control characters and line ends: they would break a row, or move the cursor of a terminal.
bool isControl(char32_t code) {
    return code < 0x20 || (code >= 0x7F && code <= 0x9F) || code == 0x2028 || code == 0x2029;
}

bool isBlank(char32_t code) {
    return code == ' ' || code == 0xA0 || code == 0x1680 || (code >= 0x2000 && code <= 0x200A) ||
           code == 0x202F || code == 0x205F || code == 0x3000;
}

}  // namespace

std::string textFromHardware(Bytes bytes) {
    bytes = bytes.first(static_cast<std::size_t>(std::ranges::find(bytes, std::uint8_t{0}) - bytes.begin()));
    std::string text;
    std::size_t end = 0;  // behind the last character that is not blank
    while (!bytes.empty()) {
        const auto character = firstCharacter(bytes);
        const Bytes own = bytes.first(character ? character->length : 1);
        bytes = bytes.subspan(own.size());
        if (character && (isControl(character->code) || isBlank(character->code))) {
            if (text.empty()) continue;
            if (isControl(character->code))
                text.push_back(' ');
            else
                text.append(own.begin(), own.end());
            continue;
        }
        if (character)
            text.append(own.begin(), own.end());
        else
            text.append("\uFFFD");
        end = text.size();
    }
    text.resize(end);
    return text;
}

}  // namespace calorivo
