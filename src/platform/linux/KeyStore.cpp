#include "platform/linux/KeyStore.h"

#include "platform/linux/KeySlots.h"
#include "platform/linux/SmallFile.h"
#include "platform/linux/StateFile.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace calorivo {
namespace {

constexpr std::string_view fileName = "sensor-keys";

std::string escaped(std::string_view text) {
    std::string result;
    for (const char c : text) {
        if (c == '\t')
            result += "\\t";
        else if (c == '\n')
            result += "\\n";
        else if (c == '\\')
            result += "\\\\";
        else
            result += c;
    }
    return result;
}

/// The opposite; none when a backslash is followed by anything else.
std::optional<std::string> unescaped(std::string_view text) {
    if (text.find('\\') == std::string_view::npos) return std::string(text);
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\') {
            result += text[i];
            continue;
        }
        const char c = ++i < text.size() ? text[i] : '\0';
        if (c != 't' && c != 'n' && c != '\\') return std::nullopt;
        result += c == 't' ? '\t' : c == 'n' ? '\n' : '\\';
    }
    return result;
}

bool isFanIdentity(std::string_view identity) {
    const std::size_t name = identity.find('|');
    if (name == std::string_view::npos) return false;
    const std::size_t channel = identity.find('|', name + 1);
    return channel != std::string_view::npos && identity.substr(channel + 1).starts_with("fan");
}

/// The identity of a line "KEY<TAB>identity"; none, and the reason, when the line is damaged.
std::optional<std::string> identityOfLine(std::string_view line, std::string& reason) {
    const std::size_t tab = line.find('\t');
    if (tab == std::string_view::npos) {
        reason = "no tabulator between key and sensor";
        return std::nullopt;
    }
    std::optional<std::string> identity = unescaped(line.substr(tab + 1));
    if (!identity || identity->empty()) {
        reason = "no sensor that can be read";
        return std::nullopt;
    }
    const std::string_view key = line.substr(0, tab);
    if (isFanIdentity(*identity) ? !isFanKey(key) : !isTemperatureKey(key)) {
        reason = "no key that this sensor can have";
        return std::nullopt;
    }
    return identity;
}

}  // namespace

std::string KeyStore::path() const { return folder_ + '/' + std::string(fileName); }

void KeyStore::giveUp(const std::string& reason) {
    isGivenUp_ = true;
    problems_.push_back(path() + ": " + reason);
}

bool KeyStore::add(const std::string& key, const std::string& identity) {
    const auto byKey = identityByKey_.find(key);
    if (byKey != identityByKey_.end() && byKey->second == identity) return true;
    if (byKey != identityByKey_.end() || keyByIdentity_.contains(identity)) return false;
    keyByIdentity_.emplace(identity, key);
    identityByKey_.emplace(key, identity);
    return true;
}

void KeyStore::load() {
    if (folder_.empty()) return;
    const SmallFile file = readSmallFile(path(), SymbolicLinks::refused);
    if (file.state == SmallFile::State::unusable) return giveUp(file.reason);
    std::string_view rest = file.text;
    for (int number = 1; !rest.empty(); ++number) {
        const std::size_t end = std::min(rest.find('\n'), rest.size());
        const std::string_view line = rest.substr(0, end);
        rest.remove_prefix(std::min(end + 1, rest.size()));
        if (line.empty()) continue;
        std::string reason;
        std::optional<std::string> identity = identityOfLine(line, reason);
        std::string key(line.substr(0, line.find('\t')));
        if (identity && (identityByKey_.contains(key) || keyByIdentity_.contains(*identity)))
            reason = "its key or sensor has a line already";
        if (reason.empty()) {
            keyByIdentity_.emplace(*identity, key);
            identityByKey_.emplace_hint(identityByKey_.end(), std::move(key), std::move(*identity));
        } else {
            damagedLines_.emplace_back(line);
            problems_.push_back(path() + ':' + std::to_string(number) + ": " + reason);
        }
    }
}

std::string KeyStore::keyOf(std::string_view identity) const {
    const auto found = keyByIdentity_.find(identity);
    return found == keyByIdentity_.end() || reserved_.contains(found->second) ? "" : found->second;
}

std::string KeyStore::identityOf(std::string_view key) const {
    const auto found = identityByKey_.find(key);
    return found == identityByKey_.end() ? "" : found->second;
}

bool KeyStore::isTaken(std::string_view key) const {
    return identityByKey_.contains(key) || reserved_.contains(key);
}

void KeyStore::assign(std::string key, std::string identity) {
    if (const auto old = keyByIdentity_.find(identity); old != keyByIdentity_.end()) {
        identityByKey_.erase(old->second);
        keyByIdentity_.erase(old);
    }
    keyByIdentity_.emplace(identity, key);
    identityByKey_.emplace(std::move(key), std::move(identity));
    isChanged_ = true;
}

void KeyStore::release(std::string_view key) {
    const auto found = identityByKey_.find(key);
    if (found == identityByKey_.end()) return;
    keyByIdentity_.erase(found->second);
    identityByKey_.erase(found);
    isChanged_ = true;
}

bool KeyStore::mergeFile() {
    KeyStore other(folder_);
    other.load();
    if (other.isGivenUp_) {
        giveUp("not written: " + other.problems_.back().substr(path().size() + 2));
        return false;
    }
    for (const auto& [key, identity] : other.identityByKey_) add(key, identity);
    // Lines that an older state of the file had and this one has not were removed by somebody.
    damagedLines_ = std::move(other.damagedLines_);
    return true;
}

std::string KeyStore::text() const {
    std::string result;
    for (const auto& [key, identity] : identityByKey_) result += key + '\t' + escaped(identity) + '\n';
    for (const std::string& line : damagedLines_) result += line + '\n';
    return result;
}

void KeyStore::save() {
    if (folder_.empty() || !isChanged_ || isGivenUp_) return;
    if (const std::string reason = createPrivateFolder(folder_); !reason.empty())
        return giveUp("not written: " + reason);
    if (!mergeFile()) return;
    const std::string contents = text();
    // The next start would refuse a longer one.
    if (contents.size() > smallFileLimit) return giveUp("not written: there are too many sensors");
    if (const std::string reason = replaceFile(folder_, std::string(fileName), contents); !reason.empty())
        return giveUp("not written: " + reason);
    isChanged_ = false;
}

}  // namespace calorivo
