#include "app/ReviewStore.h"

#include "support/RecordingPlatform.h"

#include <gtest/gtest.h>

#include <chrono>
#include <limits>
#include <thread>

namespace calorivo {
namespace {

using Type = UAAppReviewManagerKeyType;
using Stored = std::map<std::string, Value, std::less<>>;

WallTime at(int seconds) { return WallTime(std::chrono::seconds(seconds)); }

const std::string prefix = "UAAppReviewManagerKey";

class ReviewStoreTest : public testing::Test {
  protected:
    void use(const std::string& version, int now, TracksNewVersions tracks = TracksNewVersions::yes) {
        store.count(ReviewCounter::uses, version, tracks, at(now));
    }
    void event(const std::string& version, int now) {
        store.count(ReviewCounter::significantEvents, version, TracksNewVersions::yes, at(now));
    }
    test::Calls calls;
    test::RecordingUserDefaults defaults{calls};
    ReviewStore store{defaults, {}};
};

TEST(ReviewKeys, AreTwelveAndOnlyTheLastHasNoPrefix) {
    ReviewKeys keys;
    keys.prefix = "my.";
    const std::string expected[] = {"my.UAAppReviewManagerKeyFirstUseDate",
                                    "my.UAAppReviewManagerKeyUseCount",
                                    "my.UAAppReviewManagerKeySignificantEventCount",
                                    "my.UAAppReviewManagerKeyCurrentVersion",
                                    "my.UAAppReviewManagerKeyRatedCurrentVersion",
                                    "my.UAAppReviewManagerKeyDeclinedToRate",
                                    "my.UAAppReviewManagerKeyReminderRequestDate",
                                    "my.UAAppReviewManagerKeyPreviousVersion",
                                    "my.UAAppReviewManagerKeyPreviousVersionRated",
                                    "my.UAAppReviewManagerKeyPreviousVersionDeclinedToRate",
                                    "my.UAAppReviewManagerKeyRatedAnyVersion",
                                    "UAAppReviewManagerKeyAppiraterMigrationCompleted"};
    for (std::int32_t type = 0; type < 12; ++type)
        EXPECT_EQ(keys.keyForType(static_cast<Type>(type)), expected[type]);
    for (const std::int32_t type : {-1, 12, 1000}) {
        EXPECT_EQ(keys.keyForType(static_cast<Type>(type)), std::nullopt);
        keys.setName("x", static_cast<Type>(type));
    }
    keys.setName("uses", Type::useCount);
    keys.setName("migrated", Type::appiraterMigrationCompleted);
    EXPECT_EQ(keys.keyForType(Type::useCount), "my.uses");
    EXPECT_EQ(keys.keyForType(Type::appiraterMigrationCompleted), "migrated");
}

TEST_F(ReviewStoreTest, CountsUsesAndEventsOfAVersion) {
    use("7", 1000);
    use("7", 2000);
    event("7", 3000);
    EXPECT_EQ(defaults.stored, (Stored{{prefix + "CurrentVersion", "7"},
                                       {prefix + "FirstUseDate", 1000.0},
                                       {prefix + "UseCount", 2},
                                       {prefix + "SignificantEventCount", 1}}));
    EXPECT_EQ(calls.back(), "synchronize");
}

TEST_F(ReviewStoreTest, TakesAVersionThatIsNoTextForNone) {
    for (const Value& odd : {Value(), Value(7), Value(true), Value(7.0), Value(Data{7}), Value(Data{})}) {
        defaults.stored = {{prefix + "CurrentVersion", odd}, {prefix + "UseCount", 4}};
        use("7", 1000);
        EXPECT_EQ(defaults.stored.at(prefix + "CurrentVersion"), Value("7"));
        EXPECT_EQ(defaults.stored.at(prefix + "UseCount"), Value(5));
    }
}

TEST_F(ReviewStoreTest, TakesADateOfZeroForNone) {
    defaults.stored = {{prefix + "FirstUseDate", 0.0}};
    use("7", 1000);
    EXPECT_EQ(defaults.stored.at(prefix + "FirstUseDate"), Value(1000.0));
}

TEST_F(ReviewStoreTest, StartsAfreshWithANewVersion) {
    defaults.stored = {{prefix + "CurrentVersion", "7"},
                       {prefix + "FirstUseDate", 1000.0},
                       {prefix + "UseCount", 30},
                       {prefix + "SignificantEventCount", 4},
                       {prefix + "RatedCurrentVersion", true},
                       {prefix + "DeclinedToRate", true},
                       {prefix + "ReminderRequestDate", 5.0},
                       {prefix + "RatedAnyVersion", true}};
    // Neither counter is raised on top.
    event("8", 2000);
    EXPECT_EQ(defaults.stored, (Stored{{prefix + "PreviousVersion", "7"},
                                       {prefix + "PreviousVersionRated", true},
                                       {prefix + "PreviousVersionDeclinedToRate", true},
                                       {prefix + "CurrentVersion", "8"},
                                       {prefix + "FirstUseDate", 2000.0},
                                       {prefix + "UseCount", 1},
                                       {prefix + "SignificantEventCount", 0},
                                       {prefix + "RatedCurrentVersion", false},
                                       {prefix + "DeclinedToRate", false},
                                       {prefix + "ReminderRequestDate", 0.0},
                                       {prefix + "RatedAnyVersion", true}}));
}

TEST_F(ReviewStoreTest, CarriesMissingAnswersOverAsNo) {
    defaults.stored = {{prefix + "CurrentVersion", "7"}};
    use("8", 2000);
    EXPECT_EQ(defaults.stored.at(prefix + "PreviousVersionRated"), Value(false));
    EXPECT_EQ(defaults.stored.at(prefix + "PreviousVersionDeclinedToRate"), Value(false));
}

TEST_F(ReviewStoreTest, CountsNothingForANewVersionThatIsNotTracked) {
    const Stored before{{prefix + "CurrentVersion", "7"}, {prefix + "UseCount", 30}};
    defaults.stored = before;
    use("8", 2000, TracksNewVersions::no);
    EXPECT_EQ(defaults.stored, before);
    EXPECT_EQ(calls.back(), "synchronize");
}

TEST_F(ReviewStoreTest, StaysAtTheHighestCount) {
    const std::int32_t most = std::numeric_limits<std::int32_t>::max();
    defaults.stored = {{prefix + "UseCount", most}};
    use("7", 1000);
    EXPECT_EQ(defaults.stored.at(prefix + "UseCount"), Value(most));
}

TEST_F(ReviewStoreTest, TakesOverTheOldKeysEveryTime) {
    ReviewKeys keys;
    keys.prefix = "my.";
    ReviewStore migrating(defaults, keys);
    for (int round = 0; round < 2; ++round) {
        defaults.stored["kAppiraterFirstUseDate"] = 11.0 + round;
        defaults.stored["kAppiraterUseCount"] = 12;
        defaults.stored["kAppiraterSignificantEventCount"] = 13;
        defaults.stored["kAppiraterCurrentVersion"] = "14";
        defaults.stored["kAppiraterRatedCurrentVersion"] = true;
        defaults.stored["kAppiraterRatedAnyVersion"] = true;
        defaults.stored["kAppiraterDeclinedToRate"] = false;
        defaults.stored["kAppiraterReminderRequestDate"] = 18.0;
        migrating.migrateAppiraterKeysIfNecessary();
        const std::string mine = "my." + prefix;
        EXPECT_EQ(defaults.stored, (Stored{{mine + "FirstUseDate", 11.0 + round},
                                           {mine + "UseCount", 12},
                                           {mine + "SignificantEventCount", 13},
                                           {mine + "CurrentVersion", "14"},
                                           {mine + "RatedCurrentVersion", true},
                                           {mine + "RatedAnyVersion", true},
                                           {mine + "DeclinedToRate", false},
                                           {mine + "ReminderRequestDate", 18.0},
                                           {prefix + "AppiraterMigrationCompleted", true}}));
        EXPECT_EQ(calls.back(), "synchronize");
    }
}

TEST_F(ReviewStoreTest, LeavesTheNewValuesWithoutOldOnes) {
    defaults.stored = {{prefix + "UseCount", 3}};
    store.migrateAppiraterKeysIfNecessary();
    EXPECT_EQ(defaults.stored,
              (Stored{{prefix + "UseCount", 3}, {prefix + "AppiraterMigrationCompleted", true}}));
}

TEST_F(ReviewStoreTest, RemembersTheAnswers) {
    store.setDeclined();
    EXPECT_EQ(defaults.stored, (Stored{{prefix + "DeclinedToRate", true}}));
    store.setReminderRequest(at(1234));
    EXPECT_EQ(store.value(Type::reminderRequestDate), Value(1234.0));
    store.setRated();
    EXPECT_EQ(store.value(Type::ratedCurrentVersion), Value(true));
    EXPECT_EQ(store.value(Type::ratedAnyVersion), Value(true));
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "synchronize"), 3);
}

TEST_F(ReviewStoreTest, TellsEveryKeyWithItsValueOrNil) {
    use("7", 1000);
    const TrackingDictionary tracking = store.trackingDictionary();
    EXPECT_EQ(tracking.size(), 12U);
    EXPECT_EQ(tracking.at(prefix + "UseCount"), Value(1));
    EXPECT_EQ(tracking.at(prefix + "CurrentVersion"), Value("7"));
    EXPECT_TRUE(tracking.at(prefix + "DeclinedToRate").isNil());
    EXPECT_TRUE(tracking.at(prefix + "AppiraterMigrationCompleted").isNil());
}

TEST_F(ReviewStoreTest, LosesNoCountOfTwoThreads) {
    const auto countMany = [copy = store]() mutable {
        for (int i = 0; i < 500; ++i) copy.count(ReviewCounter::uses, "7", TracksNewVersions::yes, at(1000));
    };
    std::thread other(countMany);
    auto here = countMany;
    here();
    other.join();
    EXPECT_EQ(store.value(Type::useCount), Value(1000));
}

}  // namespace
}  // namespace calorivo
