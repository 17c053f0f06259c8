#pragma once

#include <string_view>

// Patterns of the naming rules: "nct67*|w83*".

namespace calorivo {

[[nodiscard]] constexpr char lowerCase(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// Whether the whole of `text` fits one pattern: * stands for any characters, ? for one; ASCII letters fit in
/// either case. At most length × length steps, whatever the pattern.
[[nodiscard]] constexpr bool fitsOnePattern(std::string_view text, std::string_view pattern) {
    std::size_t t = 0;
    std::size_t p = 0;
    std::size_t star = std::string_view::npos;
    std::size_t afterStar = 0;
    while (t < text.size()) {
        if (p < pattern.size() && pattern[p] == '*') {
            star = p++;
            afterStar = t;
        } else if (p < pattern.size() && (pattern[p] == '?' || lowerCase(pattern[p]) == lowerCase(text[t]))) {
            ++p;
            ++t;
        } else if (star != std::string_view::npos) {
            p = star + 1;
            t = ++afterStar;
        } else {
            return false;
        }
    }
    while (p < pattern.size() && pattern[p] == '*') ++p;
    return p == pattern.size();
}

/// Whether `isFitting` holds for one of the patterns that | separates.
template <typename Predicate>
[[nodiscard]] constexpr bool anyPattern(std::string_view patterns, Predicate isFitting) {
    for (;;) {
        const std::size_t end = patterns.find('|');
        if (isFitting(patterns.substr(0, end))) return true;
        if (end == std::string_view::npos) return false;
        patterns.remove_prefix(end + 1);
    }
}

/// Whether the whole of `text` fits one of the patterns that | separates.
[[nodiscard]] constexpr bool fits(std::string_view text, std::string_view patterns) {
    return anyPattern(patterns, [text](std::string_view pattern) { return fitsOnePattern(text, pattern); });
}

}  // namespace calorivo
