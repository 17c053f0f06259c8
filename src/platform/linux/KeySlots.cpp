#include "platform/linux/KeySlots.h"

#include <algorithm>

namespace calorivo {
namespace {

bool isLetterOrDigit(char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

/// The characters of "0-9A-Z".
std::string expandedSet(std::string_view set) {
    std::string characters;
    for (std::size_t i = 0; i < set.size(); ++i) {
        if (i + 2 < set.size() && set[i + 1] == '-') {
            for (char c = set[i]; c <= set[i + 2]; ++c) characters.push_back(c);
            i += 2;
        } else {
            characters.push_back(set[i]);
        }
    }
    return characters;
}

/// Cores that number from 0 shift the numbers of all cores; the other two are relative readings.
constexpr std::array<std::string_view, 4> forbiddenKeys{"TC0C", "TC0c", "TCAC", "TCBC"};

}  // namespace

const KeyFamilyRow* keyFamilyNamed(std::string_view name) {
    const auto* const row = std::ranges::find(keyFamilies, name, &KeyFamilyRow::name);
    return row == keyFamilies.end() ? nullptr : row;
}

bool isTemperatureKey(std::string_view key) {
    return key.size() == 4 && key[0] == 'T' && std::ranges::all_of(key, isLetterOrDigit) && key[3] != 'G' &&
           key[3] != 'g' && std::ranges::find(forbiddenKeys, key) == forbiddenKeys.end();
}

bool isFanKey(std::string_view key) {
    return key.size() == 2 && key[0] == 'F' && key[1] >= '0' && key[1] <= '9';
}

bool SlotCursor::beginWord() {
    if (rest_.empty()) return false;
    const std::size_t end = std::min(rest_.find(' '), rest_.size());
    std::string_view word = rest_.substr(0, end);
    rest_.remove_prefix(std::min(end + 1, rest_.size()));
    count_ = 1;
    for (std::string& choice : choices_) {
        const std::size_t length = word.front() == '[' ? word.find(']') + 1 : 1;
        choice = length == 1 ? std::string(word.substr(0, 1)) : expandedSet(word.substr(1, length - 2));
        word.remove_prefix(length);
        count_ *= choice.size();
    }
    index_ = 0;
    return true;
}

std::optional<std::string> SlotCursor::next() {
    if (index_ == count_ && !beginWord()) return std::nullopt;
    std::string key(choices_.size(), '\0');
    std::size_t rest = index_++;
    for (std::size_t i = choices_.size(); i-- > 0;) {
        key[i] = choices_[i][rest % choices_[i].size()];
        rest /= choices_[i].size();
    }
    return key;
}

std::string KeySlots::nextFree(SlotCursor& cursor) const {
    while (std::optional<std::string> key = cursor.next())
        if (!store_.isTaken(*key)) return *key;
    return {};
}

std::string KeySlots::take(KeyFamily family) {
    const auto* const row = std::ranges::find(keyFamilies, family, &KeyFamilyRow::family);
    if (row != keyFamilies.end()) {
        const auto cursor = cursors_.try_emplace(family, row->slots).first;
        if (std::string key = nextFree(cursor->second); !key.empty()) return key;
    }
    return nextFree(overflow_);
}

std::string KeySlots::takeLiteral(std::string_view key) {
    return store_.isTaken(key) ? nextFree(overflow_) : std::string(key);
}

}  // namespace calorivo
