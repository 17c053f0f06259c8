#pragma once

#include "platform/Dispatch.h"
#include "platform/UserDefaults.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace calorivo {

/// What is stored, by the number of its key.
enum class UAAppReviewManagerKeyType : std::int32_t {
    firstUseDate,
    useCount,
    significantEventCount,
    currentVersion,
    ratedCurrentVersion,
    declinedToRate,
    reminderRequestDate,
    previousVersion,
    previousVersionRated,
    previousVersionDeclinedToRate,
    ratedAnyVersion,
    appiraterMigrationCompleted,
};

inline constexpr std::size_t reviewKeyCount = 12;

/// The name under which each value is stored, and the prefix of all but the last.
struct ReviewKeys {
    std::string prefix;
    std::array<std::string, reviewKeyCount> names{
        "UAAppReviewManagerKeyFirstUseDate",          "UAAppReviewManagerKeyUseCount",
        "UAAppReviewManagerKeySignificantEventCount", "UAAppReviewManagerKeyCurrentVersion",
        "UAAppReviewManagerKeyRatedCurrentVersion",   "UAAppReviewManagerKeyDeclinedToRate",
        "UAAppReviewManagerKeyReminderRequestDate",   "UAAppReviewManagerKeyPreviousVersion",
        "UAAppReviewManagerKeyPreviousVersionRated",  "UAAppReviewManagerKeyPreviousVersionDeclinedToRate",
        "UAAppReviewManagerKeyRatedAnyVersion",       "UAAppReviewManagerKeyAppiraterMigrationCompleted"};

    /// The whole key; none for a type outside 0 to 11.
    [[nodiscard]] std::optional<std::string> keyForType(UAAppReviewManagerKeyType type) const;
    /// Gives the value another name, the prefix not counted. Without effect for a type that has no key.
    void setName(std::string name, UAAppReviewManagerKeyType type);
};

enum class ReviewCounter { uses, significantEvents };
enum class TracksNewVersions { no, yes };

/// Every key with its stored value; nil for what is not stored.
using TrackingDictionary = std::map<std::string, Value>;

/// Seconds since 1970.
[[nodiscard]] double secondsSince1970(WallTime time);

/// The counters and answers of the rating prompt, in a key-value store. Any thread: calls are let in one
/// after another, those of every ReviewStore; the store itself must bear being called from any thread.
class ReviewStore {
  public:
    /// `defaults` must outlive this object. Stores with the same lock let in each other's calls one by one.
    ReviewStore(StandardUserDefaults& defaults, ReviewKeys keys,
                std::shared_ptr<std::mutex> lock = std::make_shared<std::mutex>())
        : defaults_(defaults), keys_(std::move(keys)), lock_(std::move(lock)) {}

    /// Adds one to a counter; for a version that is not the tracked one it starts afresh instead, if new
    /// versions are tracked.
    void count(ReviewCounter counter, const std::string& runningVersion, TracksNewVersions tracks,
               WallTime now);
    /// Takes over what is stored under the keys of an older scheme.
    void migrateAppiraterKeysIfNecessary();

    void setDeclined();
    void setReminderRequest(WallTime now);
    void setRated();

    [[nodiscard]] Value value(UAAppReviewManagerKeyType type) const;
    [[nodiscard]] TrackingDictionary trackingDictionary() const;

  private:
    // The caller holds the lock.
    [[nodiscard]] Value read(UAAppReviewManagerKeyType type) const;
    void write(UAAppReviewManagerKeyType type, const Value& value);
    void startAfresh(const std::string& runningVersion, WallTime now);
    void increment(UAAppReviewManagerKeyType counter, WallTime now);

    StandardUserDefaults& defaults_;
    const ReviewKeys keys_;
    std::shared_ptr<std::mutex> lock_;
};

}  // namespace calorivo
