#include "platform/simulated/KeysFileSmc.h"

#include "platform/Format.h"

#include <algorithm>
#include <charconv>
#include <unordered_map>
#include <utility>

namespace calorivo {

namespace {

constexpr std::string_view blanks = " \t\r";
constexpr std::size_t longestText = 200;

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

bool isPrintable(char character) { return character >= ' ' && character <= '~'; }

/// One to four printable characters, filled up with blanks.
std::optional<std::uint32_t> paddedCode(std::string_view text) {
    if (text.empty() || text.size() > 4 || !std::ranges::all_of(text, isPrintable)) return std::nullopt;
    std::string padded(text);
    padded.resize(4, ' ');
    return smcCode(padded);
}

/// The key from what stands before the type's bracket: its last four characters before two blanks, which
/// keeps the blanks that belong to the key, or else the one word that is there.
std::optional<std::uint32_t> keyBefore(std::string_view text) {
    if (text.size() >= 6 && text.ends_with("  ")) {
        const std::string_view four = text.substr(text.size() - 6, 4);
        if (four.front() != ' ' && trimmed(text.substr(0, text.size() - 6)).empty()) return paddedCode(four);
    }
    const std::string_view word = trimmed(text);
    return word.find_first_of(blanks) == std::string_view::npos ? paddedCode(word) : std::nullopt;
}

std::optional<std::vector<std::uint8_t>> hexBytes(std::string_view text) {
    std::string digits;
    for (const char character : text) {
        if (blanks.find(character) != std::string_view::npos) continue;
        if (digits.size() == 64) return std::nullopt;
        digits += character;
    }
    if (digits.size() % 2 != 0) return std::nullopt;
    std::vector<std::uint8_t> bytes(digits.size() / 2);
    const char* next = digits.data();
    for (std::uint8_t& byte : bytes) {
        if (std::from_chars(next, next + 2, byte, 16).ptr != next + 2) return std::nullopt;
        next += 2;
    }
    return bytes;
}

/// The bytes from what stands behind the type's bracket; none when that is no value.
std::optional<std::vector<std::uint8_t>> bytesAfter(std::string_view text) {
    constexpr std::string_view label = "(bytes";
    if (trimmed(text) == "no data") return std::vector<std::uint8_t>{};
    const std::size_t begin = text.find(label);
    if (begin == std::string_view::npos) return std::nullopt;
    text.remove_prefix(begin + label.size());
    const std::size_t end = text.find(')');
    return end == std::string_view::npos ? std::nullopt : hexBytes(text.substr(0, end));
}

/// The line as it can be shown: of a bounded length and without anything that would move a terminal's cursor.
std::string shownText(std::string_view line) {
    std::string text(trimmed(line).substr(0, longestText));
    std::ranges::replace_if(
        text, [](char character) { return !isPrintable(character); }, '?');
    return text;
}

}  // namespace

KeysFileSmc::KeysFileSmc(std::string_view text, std::string fileName) : fileName_(std::move(fileName)) {
    text = text.substr(0, mostBytes);
    std::unordered_map<std::uint32_t, std::size_t> places;
    for (std::size_t number = 1; !text.empty(); ++number) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        const std::string_view line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        std::optional<Entry> entry = parse(line);
        if (!entry) continue;
        entry->line = number;
        const auto [place, isNew] = places.try_emplace(entry->key, keys_.size());
        if (!isNew)
            keys_[place->second] = std::move(*entry);
        else if (keys_.size() < mostKeys)
            keys_.push_back(std::move(*entry));
        else
            places.erase(place);
    }
    std::ranges::sort(keys_, {}, &Entry::key);
    if (!keys_.empty()) countKeys();
}

std::optional<KeysFileSmc::Entry> KeysFileSmc::parse(std::string_view line) {
    const std::size_t open = line.find('[');
    const std::size_t close = std::min(line.find(']', std::min(open, line.size())), line.size());
    if (close == line.size()) return std::nullopt;
    const auto key = keyBefore(line.substr(0, open));
    const auto type = paddedCode(line.substr(open + 1, close - open - 1));
    auto bytes = bytesAfter(line.substr(close + 1));
    if (!key || !type || !bytes) return std::nullopt;
    return Entry{.key = *key, .type = *type, .bytes = std::move(*bytes), .line = 0, .text = shownText(line)};
}

void KeysFileSmc::countKeys() {
    constexpr std::uint32_t countKey = smcCode("#KEY");
    auto place = std::ranges::lower_bound(keys_, countKey, {}, &Entry::key);
    if (place == keys_.end() || place->key != countKey) place = keys_.emplace(place);
    place->key = countKey;
    const auto count = static_cast<std::uint32_t>(keys_.size());
    place->type = smcCode("ui32");
    place->bytes = {static_cast<std::uint8_t>(count >> 24), static_cast<std::uint8_t>(count >> 16),
                    static_cast<std::uint8_t>(count >> 8), static_cast<std::uint8_t>(count)};
}

const KeysFileSmc::Entry* KeysFileSmc::find(std::uint32_t key) const {
    const auto found = std::ranges::lower_bound(keys_, key, {}, &Entry::key);
    return found != keys_.end() && found->key == key ? &*found : nullptr;
}

std::optional<KeyOrigin> KeysFileSmc::originOf(std::string_view key) {
    const Entry* const entry = key.size() == 4 ? find(smcCode(key)) : nullptr;
    if (entry == nullptr) return std::nullopt;
    KeyOrigin origin{.device = "keys file", .file = fileName_, .content = entry->text, .note = {}};
    if (entry->line != 0) origin.file += format(":%llu", entry->line);
    if (key == "#KEY") origin.note = "counted: the keys of this file";
    return origin;
}

std::optional<std::uint32_t> KeysFileSmc::keyAt(std::uint32_t index) {
    if (index >= keys_.size()) return std::nullopt;
    return keys_[index].key;
}

kern_return_t KeysFileSmc::keyInformation(std::uint32_t key, SmcKeyInformation& information) {
    const Entry* const entry = find(key);
    // A failure, not an empty value: a fan whose identification was not recorded keeps its plain name.
    if (entry == nullptr) return io_return::notFound;
    information = {.dataSize = static_cast<std::uint32_t>(entry->bytes.size()), .dataType = entry->type};
    return io_return::success;
}

kern_return_t KeysFileSmc::readBytes(std::uint32_t key, std::span<std::uint8_t, 32> bytes) {
    if (const Entry* const entry = find(key)) std::ranges::copy(entry->bytes, bytes.begin());
    return io_return::success;
}

}  // namespace calorivo
