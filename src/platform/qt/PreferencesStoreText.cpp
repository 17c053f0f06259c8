#include "platform/qt/PreferencesStoreText.h"

#include "platform/Format.h"
#include "platform/Utf8.h"

#include <algorithm>
#include <utility>

namespace calorivo {

namespace {

constexpr std::string_view ownSection = "[General]";
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r";
    text.remove_prefix(std::min(text.size(), text.find_first_not_of(blanks)));
    text.remove_suffix(text.size() - (text.find_last_not_of(blanks) + 1));
    return text;
}

bool isPlainInKey(char character) {
    return (character >= 'A' && character <= 'Z') || (character >= 'a' && character <= 'z') ||
           (character >= '0' && character <= '9') || character == '_' || character == '.' || character == '-';
}

std::string escapedKey(std::string_view key) {
    std::string out;
    for (const char character : key) {
        if (isPlainInKey(character))
            out += character;
        else
            appendFormat(out, "%%%02X", {static_cast<unsigned char>(character)});
    }
    return out;
}

int hexDigit(char character) {
    if (character >= '0' && character <= '9') return character - '0';
    if (character >= 'A' && character <= 'F') return character - 'A' + 10;
    if (character >= 'a' && character <= 'f') return character - 'a' + 10;
    return -1;
}

/// The key that is written so; empty for what is none.
std::string unescapedKey(std::string_view written) {
    std::string key;
    for (std::size_t i = 0; i < written.size(); ++i) {
        if (isPlainInKey(written[i])) {
            key += written[i];
            continue;
        }
        if (written[i] != '%' || i + 2 >= written.size()) return {};
        const int high = hexDigit(written[i + 1]);
        const int low = hexDigit(written[i + 2]);
        if (high < 0 || low < 0) return {};
        key += static_cast<char>(high * 16 + low);
        i += 2;
    }
    return key;
}

}  // namespace

PreferencesStoreText::PreferencesStoreText(std::string_view text) {
    if (text.starts_with(byteOrderMark)) text.remove_prefix(byteOrderMark.size());
    for (std::size_t number = 1; !text.empty(); ++number) {
        const std::size_t end = text.find('\n');
        takeLine(text.substr(0, end), number, end != std::string_view::npos);
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
}

void PreferencesStoreText::takeLine(std::string_view line, std::size_t number, bool isWhole) {
    std::string reason;
    if (line.find('\0') != std::string_view::npos)
        reason = "it has NUL bytes";
    else if (firstInvalidByte(line))
        reason = "it is not UTF-8";
    else if (!isWhole)
        // What is left may look like a value and be a part of one: 8 of 80.
        reason = "it has no end: the file was cut off";
    else
        reason = takeContent(trimmed(line), Line{std::string(line), {}, {}, {}});
    if (!reason.empty()) problems_.push_back({number, std::move(reason)});
}

std::string PreferencesStoreText::takeContent(std::string_view content, Line line) {
    const bool isComment = content.empty() || content.front() == '#' || content.front() == ';';
    if (!isComment && content.front() == '[') {
        if (content.back() != ']') return "the name of the section has no end";
        isOwnSection_ = content == ownSection;
    } else if (!isComment && isOwnSection_) {
        return takeKey(content, std::move(line));
    }
    const bool isBlank = content.empty();
    lines_.push_back(std::move(line));
    if (isOwnSection_ && !isBlank) endOfOwnSection_ = lines_.size();
    return {};
}

std::string PreferencesStoreText::takeKey(std::string_view content, Line line) {
    const std::size_t equals = content.find('=');
    if (equals == std::string_view::npos) return "it is neither KEY=VALUE nor a comment";
    line.key = unescapedKey(trimmed(content.substr(0, equals)));
    if (line.key.empty()) return "there is no key before the \"=\"";
    const std::string_view written = trimmed(content.substr(equals + 1));
    auto value = preferenceValue(written);
    if (!value) return "the value of \"" + escapedKey(line.key) + "\" cannot be read";
    line.writtenValue = written;
    line.value = std::move(*value);
    std::erase_if(lines_, [&line](const Line& other) { return other.key == line.key; });
    lines_.push_back(std::move(line));
    endOfOwnSection_ = lines_.size();
    return {};
}

const PreferencesStoreText::Line* PreferencesStoreText::find(std::string_view key) const {
    const auto found =
        std::find_if(lines_.begin(), lines_.end(), [key](const Line& line) { return line.key == key; });
    return key.empty() || found == lines_.end() ? nullptr : &*found;
}

Value PreferencesStoreText::value(std::string_view key) const {
    const Line* const line = find(key);
    return line != nullptr ? line->value : Value();
}

std::string PreferencesStoreText::writtenValue(std::string_view key) const {
    const Line* const line = find(key);
    return line != nullptr ? line->writtenValue : std::string();
}

void PreferencesStoreText::set(std::string_view key, const Value& value) {
    if (key.empty()) return;
    const auto found =
        std::find_if(lines_.begin(), lines_.end(), [key](const Line& line) { return line.key == key; });
    const std::string written = preferenceText(value);
    if (written.empty() && found != lines_.end()) {
        if (std::cmp_less(found - lines_.begin(), endOfOwnSection_)) --endOfOwnSection_;
        lines_.erase(found);
    }
    if (written.empty()) return;
    Line line{escapedKey(key) + '=' + written, std::string(key), written, value};
    if (found != lines_.end())
        *found = std::move(line);
    else
        append(std::move(line));
}

void PreferencesStoreText::append(Line line) {
    if (endOfOwnSection_ == 0) {
        lines_.insert(lines_.begin(), Line{std::string(ownSection), {}, {}, {}});
        endOfOwnSection_ = 1;
    }
    lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(endOfOwnSection_), std::move(line));
    ++endOfOwnSection_;
}

void PreferencesStoreText::addMissingFrom(const PreferencesStoreText& other) {
    for (const Line& line : other.lines_)
        if (!line.key.empty() && find(line.key) == nullptr) append(line);
}

std::string PreferencesStoreText::text() const {
    std::string out;
    for (const Line& line : lines_) (out += line.text) += '\n';
    return out;
}

}  // namespace calorivo
