#include "platform/qt/PreferencesStore.h"

#include "platform/Format.h"
#include "platform/qt/PreferencesStoreFile.h"

#include <cstddef>
#include <utility>

namespace calorivo {

PreferencesStore::PreferencesStore(std::string path, SystemLog& systemLog)
    : path_(std::move(path)), systemLog_(systemLog) {
    if (path_.empty()) return;
    const PreferencesFile file = readPreferencesFile(path_);
    if (file.state == PreferencesFile::State::unusable) problems_.push_back(path_ + ": " + file.reason);
    text_ = PreferencesStoreText(file.text);
    isDamaged_ = file.isTooLong || !text_.problems().empty();
    if (isDamaged_) tell(text_.problems(), file.isTooLong);
}

void PreferencesStore::tell(const std::vector<PreferencesStoreText::Problem>& found, bool isTooLong) {
    constexpr std::size_t most = 10;
    for (const auto& [line, reason] : found) {
        if (problems_.size() == most) {
            problems_.push_back(format("%@: and %llu more", path_, found.size() - most));
            break;
        }
        problems_.push_back(format("%@:%llu: %@", path_, line, reason));
    }
    if (isTooLong)
        problems_.push_back(format("%@: it is longer than %llu bytes", path_, preferencesFileLimit));
    const std::string kept = keepAside(behindSymbolicLinks(path_));
    if (!kept.empty()) problems_.push_back(format("%@: the damaged file is kept as %@", path_, kept));
}

Value PreferencesStore::objectForKey(std::string_view key) const {
    const std::scoped_lock guard(lock_);
    const auto changed = changes_.find(key);
    Value value = changed != changes_.end() ? changed->second : text_.value(key);
    if (!value.isNil()) return value;
    const auto registered = defaults_.find(key);
    return registered != defaults_.end() ? registered->second : Value();
}

void PreferencesStore::setObjectForKey(const Value& value, std::string_view key) {
    const std::scoped_lock guard(lock_);
    const auto changed = changes_.find(key);
    // As texts: by these also a fraction that is no number equals itself.
    if (preferenceText(value) == text_.writtenValue(key)) {
        if (changed != changes_.end()) changes_.erase(changed);
    } else if (changed != changes_.end()) {
        changed->second = value;
    } else {
        changes_.emplace(key, value);
    }
}

void PreferencesStore::registerDefaults(const PropertyList& defaults) {
    const std::scoped_lock guard(lock_);
    for (const auto& [key, value] : defaults) defaults_.insert_or_assign(key, value);
}

void PreferencesStore::synchronize() {
    const std::scoped_lock guard(lock_);
    if (path_.empty() || (changes_.empty() && !isDamaged_)) return;
    const std::string problem = write();
    if (problem.empty()) {
        changes_.clear();
        isDamaged_ = false;
    } else if (!std::exchange(hasLoggedFailure_, true)) {
        systemLog_.log(format("The preferences cannot be written to %@: %@", path_, problem));
    }
}

std::string PreferencesStore::write() {
    PreferencesFileWriter writer(path_);
    if (!writer.problem().empty()) return writer.problem();
    const PreferencesFile file = readPreferencesFile(path_);
    if (file.state == PreferencesFile::State::unusable) return file.reason;
    PreferencesStoreText next(file.text);
    const bool isDamaged = file.isTooLong || !next.problems().empty();
    if (isDamaged && keepAside(behindSymbolicLinks(path_)).empty()) return "its damaged state cannot be kept";
    // A key that is gone from a whole file was removed there; from another one it was lost.
    if (isDamaged || file.state == PreferencesFile::State::absent) next.addMissingFrom(text_);
    for (const auto& [key, value] : changes_) next.set(key, value);
    if (!writer.replaceWith(next.text())) return writer.problem();
    text_ = std::move(next);
    return {};
}

}  // namespace calorivo
