#include "platform/Utf8.h"

#include <array>
#include <cstdint>

namespace calorivo {

namespace {

constexpr Utf8Character invalid{U'\uFFFD', 1, false};

}  // namespace

Utf8Character firstCharacter(std::string_view text) {
    const auto byte = [text](std::size_t i) { return static_cast<std::uint8_t>(text[i]); };
    const std::uint8_t lead = byte(0);
    if (lead < 0x80) return {lead, 1, true};
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || text.size() < length) return invalid;
    char32_t code = lead & (0xFFU >> (length + 1));
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xC0U) != 0x80) return invalid;
        code = (code << 6) | (byte(i) & 0x3FU);
    }
    constexpr std::array<char32_t, 5> smallest{0, 0, 0x80, 0x800, 0x10000};
    const bool isSurrogate = code >= 0xD800 && code <= 0xDFFF;
    if (code < smallest[length] || code > 0x10FFFF || isSurrogate) return invalid;
    return {code, length, true};
}

std::optional<std::size_t> firstInvalidByte(std::string_view text) {
    for (std::size_t position = 0; position < text.size();) {
        const Utf8Character next = firstCharacter(text.substr(position));
        if (!next.isValid) return position;
        position += next.length;
    }
    return std::nullopt;
}

}  // namespace calorivo
