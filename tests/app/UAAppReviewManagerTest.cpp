#include "app/UAAppReviewManager.h"

#include "app/ReviewFixture.h"

#include <gtest/gtest.h>

namespace calorivo {
namespace {

using test::Calls;
using test::ReviewFixture;
using Type = UAAppReviewManagerKeyType;

const std::string shown = "runModal Rate Calorivo";
const std::string reviewPage =
    "openURL macappstore://store.example.org/us/app/thumbs/id42?ls=1&mt=12&at=000000&ct=UAAppReviewManager";

class UAAppReviewManagerTest : public testing::Test, protected ReviewFixture {
  protected:
    /// What a launch shows, the answer being no answer at all.
    Calls launch() {
        manager().appLaunched();
        return takeCalls();
    }
};

// Counting.

TEST_F(UAAppReviewManagerTest, CountsLaunchesAndActivationsBesideTheMainThread) {
    manager();
    notifications.didFinishLaunching.announce();
    notifications.willBecomeActive.announce();
    EXPECT_TRUE(stored("UseCount").isNil());
    EXPECT_EQ(time.pending("global"), 2U);
    time.run();
    EXPECT_EQ(stored("UseCount"), Value(2));
    EXPECT_EQ(stored("CurrentVersion"), Value("7"));
    EXPECT_EQ(stored("FirstUseDate"), Value(20'000 * 86400.0));
}

TEST_F(UAAppReviewManagerTest, MigratesBeforeItCounts) {
    defaults.stored["kAppiraterUseCount"] = 8;
    use();
    EXPECT_EQ(stored("UseCount"), Value(9));
    EXPECT_EQ(stored("AppiraterMigrationCompleted"), Value(true));
    defaults.stored["kAppiraterUseCount"] = 2;
    use();
    EXPECT_EQ(stored("UseCount"), Value(3));
}

TEST_F(UAAppReviewManagerTest, MigratesEvenWhenTheUseIsNotToBeCounted) {
    defaults.stored["kAppiraterUseCount"] = 8;
    manager().setShouldIncrementUseCountBlock([] { return false; });
    use();
    EXPECT_EQ(stored("UseCount"), Value(8));
    manager().setShouldIncrementUseCountBlock([] { return true; });
    use();
    EXPECT_EQ(stored("UseCount"), Value(9));
}

TEST_F(UAAppReviewManagerTest, CountsUsesWithoutAnIdentifierButShowsNothing) {
    for (int i = 0; i < 50; ++i) use();
    passDays(100);
    EXPECT_EQ(launch(), Calls{});
    manager().showPrompt();
    EXPECT_EQ(takeCalls(), Calls{});
    EXPECT_EQ(stored("UseCount"), Value(50));
}

TEST_F(UAAppReviewManagerTest, UsesItsPrefixItsNamesAndItsStore) {
    test::Calls otherCalls;
    test::RecordingUserDefaults other(otherCalls);
    manager().setUserDefaultsObject(other);
    manager().setKeyPrefix("my.");
    manager().setKeyForUAAppReviewManagerKeyType("uses", Type::useCount);
    use();
    EXPECT_EQ(other.stored.at("my.uses"), Value(1));
    EXPECT_EQ(other.stored.at("UAAppReviewManagerKeyAppiraterMigrationCompleted"), Value(true));
    EXPECT_TRUE(defaults.stored.empty());
}

// The conditions.

TEST_F(UAAppReviewManagerTest, AsksWhenAllConditionsAreMet) {
    meetConditions();
    EXPECT_EQ(launch(), (Calls{shown, reviewPage}));
}

TEST_F(UAAppReviewManagerTest, AsksOnlyWhenEachConditionIsMet) {
    struct Row {
        const char* name;
        std::function<void(ReviewFixture&)> change;
        bool isAsked;
    };
    const auto ago = [](const ReviewFixture& f, double days) {
        return Value(secondsSince1970(f.time.wallTime()) - days * 86400.0);
    };
    const Row rows[] = {
        {"no identifier", [](auto& f) { f.manager().setAppID(std::nullopt); }, false},
        {"a second too early", [&](auto& f) { f.store("FirstUseDate", ago(f, 30 - 1 / 86400.0)); }, false},
        {"later", [&](auto& f) { f.store("FirstUseDate", ago(f, 31)); }, true},
        {"more days wanted", [](auto& f) { f.manager().setDaysUntilPrompt(31); }, false},
        {"the 20th use", [](auto& f) { f.store("UseCount", 20); }, false},
        {"no use wanted, none counted",
         [](auto& f) {
             f.manager().setUsesUntilPrompt(0);
             f.store("UseCount", 0);
         },
         false},
        {"very many uses wanted", [](auto& f) { f.manager().setUsesUntilPrompt(4'000'000'000U); }, false},
        {"too few events",
         [](auto& f) {
             f.manager().setSignificantEventsUntilPrompt(3);
             f.store("SignificantEventCount", 2);
         },
         false},
        {"events enough",
         [](auto& f) {
             f.manager().setSignificantEventsUntilPrompt(3);
             f.store("SignificantEventCount", 3);
         },
         true},
        {"declined", [](auto& f) { f.store("DeclinedToRate", true); }, false},
        {"rated", [](auto& f) { f.store("RatedCurrentVersion", true); }, false},
        {"reminder soon", [&](auto& f) { f.store("ReminderRequestDate", ago(f, 1 - 1 / 86400.0)); }, false},
        {"reminder due", [&](auto& f) { f.store("ReminderRequestDate", ago(f, 1)); }, true},
        {"another version rated", [](auto& f) { f.store("RatedAnyVersion", true); }, true},
        {"another version rated and that is enough",
         [](auto& f) {
             f.store("RatedAnyVersion", true);
             f.manager().setShouldPromptIfRated(false);
         },
         false},
        {"no version rated", [](auto& f) { f.manager().setShouldPromptIfRated(false); }, true},
        {"everything wrong but debugging",
         [](auto& f) {
             f.defaults.stored.clear();
             f.store("DeclinedToRate", true);
             f.manager().setDebug(true);
         },
         true},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        ReviewFixture fixture;
        fixture.meetConditions();
        row.change(fixture);
        fixture.manager().appLaunched();
        const Calls seen = fixture.takeCalls();
        EXPECT_EQ(!seen.empty() && seen.front() == shown, row.isAsked);
    }
}

TEST_F(UAAppReviewManagerTest, AsksOnEveryOccasionThatMayPrompt) {
    struct Row {
        const char* name;
        std::function<void(UAAppReviewManager&)> happen;
        bool isAsked;
    };
    const auto yes = [](const TrackingDictionary&) { return true; };
    const auto no = [](const TrackingDictionary&) { return false; };
    const Row rows[] = {
        {"launched", [](auto& m) { m.appLaunched(); }, true},
        {"launched, may", [](auto& m) { m.appLaunched(CanPrompt::yes); }, true},
        {"launched, may not", [](auto& m) { m.appLaunched(CanPrompt::no); }, false},
        {"launched, block", [&](auto& m) { m.appLaunchedWithShouldPromptBlock(yes); }, true},
        {"launched, veto", [&](auto& m) { m.appLaunchedWithShouldPromptBlock(no); }, false},
        {"foreground, may", [](auto& m) { m.appEnteredForeground(CanPrompt::yes); }, true},
        {"foreground, may not", [](auto& m) { m.appEnteredForeground(CanPrompt::no); }, false},
        {"foreground, block", [&](auto& m) { m.appEnteredForegroundWithShouldPromptBlock(yes); }, true},
        {"foreground, veto", [&](auto& m) { m.appEnteredForegroundWithShouldPromptBlock(no); }, false},
        {"event, may", [](auto& m) { m.userDidSignificantEvent(CanPrompt::yes); }, true},
        {"event, may not", [](auto& m) { m.userDidSignificantEvent(CanPrompt::no); }, false},
        {"event, block", [&](auto& m) { m.userDidSignificantEventWithShouldPromptBlock(yes); }, true},
        {"event, veto", [&](auto& m) { m.userDidSignificantEventWithShouldPromptBlock(no); }, false},
        {"necessary", [](auto& m) { m.showPromptIfNecessary(); }, true},
        {"prompt", [](auto& m) { m.showPrompt(); }, true},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        ReviewFixture fixture;
        fixture.meetConditions();
        row.happen(fixture.manager());
        const Calls seen = fixture.takeCalls();
        EXPECT_EQ(!seen.empty() && seen.front() == shown, row.isAsked);
    }
}

TEST_F(UAAppReviewManagerTest, CountsASignificantEventBeforeItDecides) {
    meetConditions();
    manager().setSignificantEventsUntilPrompt(2);
    manager().userDidSignificantEvent(CanPrompt::yes);
    EXPECT_EQ(takeCalls(), Calls{});
    manager().userDidSignificantEvent(CanPrompt::yes);
    EXPECT_EQ(takeCalls(), (Calls{shown, reviewPage}));
    EXPECT_EQ(stored("SignificantEventCount"), Value(2));
}

TEST_F(UAAppReviewManagerTest, ShowsTheAlertLaterAndOnTheMainQueue) {
    meetConditions();
    manager().appLaunched();
    EXPECT_TRUE(alertPanel.alerts.empty());
    EXPECT_EQ(time.pending("main"), 1U);
    // When asked to show it now, it does.
    manager().showPrompt();
    EXPECT_EQ(alertPanel.alerts.size(), 1U);
}

TEST_F(UAAppReviewManagerTest, TellsTheVetoingBlockEverythingThatIsStored) {
    meetConditions();
    TrackingDictionary told;
    manager().setShouldPromptBlock([&told](const TrackingDictionary& tracking) {
        told = tracking;
        return false;
    });
    EXPECT_EQ(launch(), Calls{});
    EXPECT_EQ(told.size(), 12U);
    EXPECT_EQ(told.at("UAAppReviewManagerKeyUseCount"), Value(21));
    EXPECT_TRUE(told.at("UAAppReviewManagerKeyDeclinedToRate").isNil());
}

TEST_F(UAAppReviewManagerTest, HopsToTheMainQueueForTheVetoAfterAnEvent) {
    meetConditions();
    bool isAsked = false;
    manager().setShouldPromptBlock([&isAsked](const TrackingDictionary&) { return isAsked = true; });
    manager().userDidSignificantEvent(CanPrompt::yes);
    // While the main queue stands still, the block cannot run: the other queue waits for it.
    time.hold("main");
    EXPECT_THROW(time.runOne("global"), std::logic_error);
    EXPECT_FALSE(isAsked);
    time.release("main");
    manager().userDidSignificantEvent(CanPrompt::yes);
    EXPECT_EQ(takeCalls(), (Calls{shown, reviewPage}));
    EXPECT_TRUE(isAsked);
}

TEST_F(UAAppReviewManagerTest, AsksNobodyForAVetoWhenItWouldNotAskAnyway) {
    int asked = 0;
    manager().setShouldPromptBlock([&asked](const TrackingDictionary&) { return ++asked > 0; });
    launch();
    meetConditions();
    reachability.flags = 0;
    launch();
    EXPECT_EQ(asked, 0);
}

// The network.

TEST_F(UAAppReviewManagerTest, AsksOnlyWithANetwork) {
    constexpr std::uint32_t transient = ReachabilityFlags::transientConnection;
    constexpr std::uint32_t reachable = ReachabilityFlags::reachable;
    constexpr std::uint32_t required = ReachabilityFlags::connectionRequired;
    struct Row {
        std::optional<std::uint32_t> flags;
        bool canConnect;
        bool isAsked;
        std::size_t requests;
    };
    const Row rows[] = {{reachable, true, true, 1},
                        {reachable, false, false, 1},
                        {reachable + required, true, false, 0},
                        {reachable + required + transient, true, true, 1},
                        {transient, true, true, 1},
                        {transient + required, true, true, 1},
                        {0, true, false, 0},
                        {required, true, false, 0},
                        {std::nullopt, true, false, 0}};
    for (const Row& row : rows) {
        ReviewFixture fixture;
        fixture.meetConditions();
        fixture.reachability.flags = row.flags;
        fixture.reachability.canConnect = row.canConnect;
        fixture.manager().appLaunched();
        EXPECT_EQ(!fixture.takeCalls().empty(), row.isAsked) << row.flags.value_or(99);
        EXPECT_EQ(fixture.reachability.requests.size(), row.requests);
        fixture.manager().showPrompt();
        EXPECT_EQ(!fixture.takeCalls().empty(), row.isAsked);
    }
}

TEST_F(UAAppReviewManagerTest, ConnectsToAPageThatIsAlwaysThere) {
    meetConditions();
    launch();
    EXPECT_EQ(
        reachability.requests,
        (std::vector<URLRequest>{{"https://example.org/", CachePolicy::reloadIgnoringLocalCacheData, 20.0}}));
}

TEST_F(UAAppReviewManagerTest, LogsOnlyWhenDebuggingThatTheNetworkIsUnknown) {
    reachability.flags = std::nullopt;
    manager().setDebug(true);
    EXPECT_EQ(launch(),
              Calls{"log [UAAppReviewManager] Error. Could not recover network reachability flags"});
    meetConditions();
    manager().setDebug(false);
    EXPECT_EQ(launch(), Calls{});
}

}  // namespace
}  // namespace calorivo
