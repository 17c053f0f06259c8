#include "app/ReviewStore.h"

#include <chrono>
#include <limits>
#include <utility>

namespace calorivo {

namespace {

using Type = UAAppReviewManagerKeyType;

constexpr std::array allTypes{Type::firstUseDate,          Type::useCount,
                              Type::significantEventCount, Type::currentVersion,
                              Type::ratedCurrentVersion,   Type::declinedToRate,
                              Type::reminderRequestDate,   Type::previousVersion,
                              Type::previousVersionRated,  Type::previousVersionDeclinedToRate,
                              Type::ratedAnyVersion,       Type::appiraterMigrationCompleted};
static_assert(allTypes.size() == reviewKeyCount);

struct OldKey {
    std::string_view name;
    Type type;
};
constexpr std::array oldKeys{
    OldKey{"kAppiraterFirstUseDate", Type::firstUseDate},
    OldKey{"kAppiraterUseCount", Type::useCount},
    OldKey{"kAppiraterSignificantEventCount", Type::significantEventCount},
    OldKey{"kAppiraterCurrentVersion", Type::currentVersion},
    OldKey{"kAppiraterRatedCurrentVersion", Type::ratedCurrentVersion},
    OldKey{"kAppiraterRatedAnyVersion", Type::ratedAnyVersion},
    OldKey{"kAppiraterDeclinedToRate", Type::declinedToRate},
    OldKey{"kAppiraterReminderRequestDate", Type::reminderRequestDate},
};

std::optional<std::size_t> indexOf(Type type) {
    const auto index = static_cast<std::int32_t>(type);
    if (index < 0 || index >= static_cast<std::int32_t>(reviewKeyCount)) return std::nullopt;
    return static_cast<std::size_t>(index);
}

bool isString(const Value& value) { return value == Value(value.stringValue()); }

using Locked = std::lock_guard<std::mutex>;

}  // namespace

double secondsSince1970(WallTime time) {
    return std::chrono::duration<double>(time.time_since_epoch()).count();
}

std::optional<std::string> ReviewKeys::keyForType(Type type) const {
    const std::optional<std::size_t> index = indexOf(type);
    if (!index) return std::nullopt;
    return type == Type::appiraterMigrationCompleted ? names[*index] : prefix + names[*index];
}

void ReviewKeys::setName(std::string name, Type type) {
    if (const std::optional<std::size_t> index = indexOf(type)) names[*index] = std::move(name);
}

void ReviewStore::count(ReviewCounter counter, const std::string& runningVersion, TracksNewVersions tracks,
                        WallTime now) {
    const Locked locked(*lock_);
    if (!isString(read(Type::currentVersion))) write(Type::currentVersion, runningVersion);
    if (read(Type::currentVersion).stringValue() == runningVersion)
        increment(counter == ReviewCounter::uses ? Type::useCount : Type::significantEventCount, now);
    else if (tracks == TracksNewVersions::yes)
        startAfresh(runningVersion, now);
    defaults_.synchronize();
}

void ReviewStore::increment(Type counter, WallTime now) {
    if (read(Type::firstUseDate).doubleValue() == 0.0) write(Type::firstUseDate, secondsSince1970(now));
    const std::int32_t counted = read(counter).intValue();
    write(counter, counted < std::numeric_limits<std::int32_t>::max() ? counted + 1 : counted);
}

/// What caused it is not counted on top.
void ReviewStore::startAfresh(const std::string& runningVersion, WallTime now) {
    write(Type::previousVersion, read(Type::currentVersion));
    write(Type::previousVersionRated, read(Type::ratedCurrentVersion).boolValue());
    write(Type::previousVersionDeclinedToRate, read(Type::declinedToRate).boolValue());
    write(Type::currentVersion, runningVersion);
    write(Type::firstUseDate, secondsSince1970(now));
    write(Type::useCount, 1);
    write(Type::significantEventCount, 0);
    write(Type::ratedCurrentVersion, false);
    write(Type::declinedToRate, false);
    write(Type::reminderRequestDate, 0.0);
}

void ReviewStore::migrateAppiraterKeysIfNecessary() {
    const Locked locked(*lock_);
    // Kept: that it was done before is read and changes nothing; values under the old keys are taken over
    // whenever there are any.
    static_cast<void>(read(Type::appiraterMigrationCompleted).boolValue());
    for (const OldKey& old : oldKeys) {
        const Value value = defaults_.objectForKey(old.name);
        if (value.isNil()) continue;
        write(old.type, value);
        defaults_.setObjectForKey({}, old.name);
    }
    write(Type::appiraterMigrationCompleted, true);
    defaults_.synchronize();
}

void ReviewStore::setDeclined() {
    const Locked locked(*lock_);
    write(Type::declinedToRate, true);
    defaults_.synchronize();
}

void ReviewStore::setReminderRequest(WallTime now) {
    const Locked locked(*lock_);
    write(Type::reminderRequestDate, secondsSince1970(now));
    defaults_.synchronize();
}

void ReviewStore::setRated() {
    const Locked locked(*lock_);
    write(Type::ratedCurrentVersion, true);
    write(Type::ratedAnyVersion, true);
    defaults_.synchronize();
}

Value ReviewStore::value(Type type) const {
    const Locked locked(*lock_);
    return read(type);
}

TrackingDictionary ReviewStore::trackingDictionary() const {
    const Locked locked(*lock_);
    TrackingDictionary dictionary;
    for (const Type type : allTypes) dictionary[*keys_.keyForType(type)] = read(type);
    return dictionary;
}

Value ReviewStore::read(Type type) const {
    const auto key = keys_.keyForType(type);
    return key ? defaults_.objectForKey(*key) : Value();
}

void ReviewStore::write(Type type, const Value& value) {
    if (const auto key = keys_.keyForType(type)) defaults_.setObjectForKey(value, *key);
}

}  // namespace calorivo
