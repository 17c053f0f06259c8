#include "platform/linux/SensorText.h"

#include <algorithm>
#include <array>
#include <unordered_map>
#include <unordered_set>

namespace calorivo {
namespace {

constexpr std::size_t longestText = 100;
constexpr std::string_view replacement = "\xEF\xBF\xBD";
constexpr std::string_view ellipsis = "\xE2\x80\xA6";

struct Character {
    char32_t code = 0;
    /// Bytes in the text; 0 when they are no UTF-8.
    std::size_t length = 0;
};

struct Form {
    unsigned mask;
    unsigned value;
    std::size_t length;
    char32_t lowest;
};
constexpr std::array<Form, 4> forms{{
    {0x80, 0x00, 1, 0x0},
    {0xE0, 0xC0, 2, 0x80},
    {0xF0, 0xE0, 3, 0x800},
    {0xF8, 0xF0, 4, 0x10000},
}};

/// The character at the beginning of the text, which is not empty.
Character firstCharacter(std::string_view text) {
    const auto first = static_cast<unsigned char>(text[0]);
    const auto* const form =
        std::ranges::find_if(forms, [first](const Form& f) { return (first & f.mask) == f.value; });
    if (form == forms.end() || form->length > text.size()) return {};
    char32_t code = first & ~form->mask;
    for (std::size_t i = 1; i < form->length; ++i) {
        const auto next = static_cast<unsigned char>(text[i]);
        if ((next & 0xC0U) != 0x80U) return {};
        code = code << 6U | (next & 0x3FU);
    }
    const bool isSurrogate = code >= 0xD800 && code <= 0xDFFF;
    if (code < form->lowest || code > 0x10FFFF || isSurrogate) return {};
    return {code, form->length};
}

/// Blanks, control characters, line ends, and marks that turn the direction of what follows.
bool isInvisible(char32_t code) {
    return code <= 0x20 || (code >= 0x7F && code <= 0xA0) || (code >= 0x200B && code <= 0x200F) ||
           (code >= 0x2028 && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069) || code == 0xFEFF;
}

}  // namespace

std::string cleanedText(std::string_view text) {
    std::string result;
    while (!text.empty()) {
        const Character character = firstCharacter(text);
        const std::string_view bytes = character.length == 0 ? replacement : text.substr(0, character.length);
        if (character.length != 0 && isInvisible(character.code)) {
            if (!result.empty() && result.back() != ' ') result += ' ';
        } else {
            if (result.size() + bytes.size() > longestText) {
                while (result.ends_with(' ')) result.pop_back();
                return result.append(ellipsis);
            }
            result += bytes;
        }
        text.remove_prefix(std::max<std::size_t>(character.length, 1));
    }
    while (result.ends_with(' ')) result.pop_back();
    return result;
}

void makeUnique(std::vector<std::string*>& texts) {
    std::unordered_set<std::string> used;
    for (const std::string* text : texts) used.insert(*text);
    // How many have borne each text, so that many equal ones are numbered without counting anew each time.
    std::unordered_map<std::string, int> counts;
    for (std::string* text : texts) {
        if (text->empty()) continue;
        int& count = counts[*text];
        if (count++ == 0) continue;
        std::string numbered;
        do numbered = *text + ' ' + std::to_string(count++);
        while (!used.insert(numbered).second);
        --count;
        *text = numbered;
    }
}

}  // namespace calorivo
