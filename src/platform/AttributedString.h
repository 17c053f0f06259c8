#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace calorivo {

/// A colour of the device; each part from 0 to 1.
struct Color {
    double red = 0.0;
    double green = 0.0;
    double blue = 0.0;
    double alpha = 1.0;

    [[nodiscard]] static constexpr Color white(double white) { return {white, white, white, 1.0}; }
    friend bool operator==(const Color&, const Color&) = default;
};

/// The font that the menu bar uses, in this size.
struct MenuBarFont {
    double pointSize;

    friend bool operator==(const MenuBarFont&, const MenuBarFont&) = default;
};

enum class UnderlineStyle { none = 0, single = 1 };

/// How a stretch of text looks; what is absent is left as it would be.
struct TextAttributes {
    std::optional<std::string> link = std::nullopt;
    std::optional<Color> foregroundColor = std::nullopt;
    std::optional<UnderlineStyle> underlineStyle = std::nullopt;
    std::optional<MenuBarFont> font = std::nullopt;

    friend bool operator==(const TextAttributes&, const TextAttributes&) = default;
};

/// A stretch of a text, in bytes of its UTF-8 form.
struct TextRange {
    std::size_t location = 0;
    std::size_t length = 0;

    friend bool operator==(const TextRange&, const TextRange&) = default;
};

/// A text of which stretches look different from the rest.
struct AttributedString {
    struct Run {
        TextRange range;
        TextAttributes attributes;
        friend bool operator==(const Run&, const Run&) = default;
    };
    std::string text;
    std::vector<Run> runs;

    friend bool operator==(const AttributedString&, const AttributedString&) = default;
};

}  // namespace calorivo
