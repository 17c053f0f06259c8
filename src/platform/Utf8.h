#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace calorivo {

/// One character of a UTF-8 text; a byte that is none is U+FFFD, of length 1.
struct Utf8Character {
    char32_t code;
    std::size_t length;
    bool isValid;
};

/// The character at the beginning of a text that is not empty. No overlong forms, no surrogates.
[[nodiscard]] Utf8Character firstCharacter(std::string_view text);

/// The position of the first byte that is not UTF-8; none when all of it is.
[[nodiscard]] std::optional<std::size_t> firstInvalidByte(std::string_view text);

}  // namespace calorivo
