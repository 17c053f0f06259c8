#include "cli/Text.h"

#include "platform/Utf8.h"

#include <algorithm>
#include <span>

namespace calorivo {

namespace {

struct Range {
    char32_t first;
    char32_t last;
};

// Marks that combine with the character before them, and characters without a shape.
constexpr Range zeroWidth[] = {
    {0x0300, 0x036F}, {0x0483, 0x0489}, {0x0591, 0x05BD}, {0x0610, 0x061A},
    {0x064B, 0x065F}, {0x0900, 0x0902}, {0x0E34, 0x0E3A}, {0x0E47, 0x0E4E},
    {0x1AB0, 0x1AFF}, {0x1DC0, 0x1DFF}, {0x200B, 0x200F}, {0x2060, 0x2064},
    {0x20D0, 0x20FF}, {0xFE00, 0xFE0F}, {0xFE20, 0xFE2F}, {0xFEFF, 0xFEFF},
};
constexpr Range doubleWidth[] = {
    {0x1100, 0x115F},   {0x2E80, 0x303E},   {0x3041, 0x33FF},   {0x3400, 0x4DBF},   {0x4E00, 0xA4CF},
    {0xAC00, 0xD7A3},   {0xF900, 0xFAFF},   {0xFE30, 0xFE6F},   {0xFF00, 0xFF60},   {0xFFE0, 0xFFE6},
    {0x1F300, 0x1F64F}, {0x1F680, 0x1F6FF}, {0x1F900, 0x1F9FF}, {0x20000, 0x3FFFD},
};
// Line separators and the characters that turn the direction of writing: they can make a text show as
// another.
constexpr Range unprintable[] = {
    {0x0000, 0x001F}, {0x007F, 0x009F}, {0x2028, 0x202E}, {0x2066, 0x2069}, {0xFEFF, 0xFEFF},
};

constexpr bool isIn(std::span<const Range> ranges, char32_t character) {
    return std::any_of(ranges.begin(), ranges.end(), [character](const Range& range) {
        return character >= range.first && character <= range.last;
    });
}

std::size_t widthOf(char32_t character) {
    if (character < 0x300) return 1;
    if (isIn(zeroWidth, character)) return 0;
    return isIn(doubleWidth, character) ? 2 : 1;
}

/// The longest beginning that takes at most `width` columns, and the columns that it takes.
std::string_view cut(std::string_view text, std::size_t width, std::size_t& taken) {
    std::size_t end = 0;
    taken = 0;
    while (end < text.size()) {
        const Utf8Character next = firstCharacter(text.substr(end));
        if (taken + widthOf(next.code) > width) break;
        taken += widthOf(next.code);
        end += next.length;
    }
    return text.substr(0, end);
}

/// One visible ASCII character a byte, as nearly all texts are.
bool isPlain(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c <= '~'; });
}

}  // namespace

std::string cleanText(std::string_view text) {
    if (isPlain(text)) return std::string(text);
    std::string clean;
    clean.reserve(text.size());
    while (!text.empty()) {
        const Utf8Character next = firstCharacter(text);
        const bool isBlank = next.code == '\n' || next.code == '\r' || next.code == '\t';
        if (!next.isValid)
            clean += "\xEF\xBF\xBD";
        else if (isBlank)
            clean += ' ';
        else if (!isIn(unprintable, next.code))
            clean += text.substr(0, next.length);
        text.remove_prefix(next.length);
    }
    return clean;
}

std::size_t displayWidth(std::string_view text) {
    if (isPlain(text)) return text.size();
    std::size_t width = 0;
    while (!text.empty()) {
        const Utf8Character next = firstCharacter(text);
        width += widthOf(next.code);
        text.remove_prefix(next.length);
    }
    return width;
}

void appendFitted(std::string& out, std::string_view text, std::size_t width, Align align) {
    std::size_t taken = displayWidth(text);
    const bool isCut = taken > width;
    if (isCut) text = cut(text, width == 0 ? 0 : width - 1, taken);
    if (isCut && width > 0) ++taken;
    const std::size_t blanks = width - std::min(width, taken);
    if (align == Align::right) out.append(blanks, ' ');
    out += text;
    if (isCut && width > 0) out += "…";
    if (align == Align::left) out.append(blanks, ' ');
}

}  // namespace calorivo
