// The alert of the rating prompt, its answers, and the whole prompt over several versions.

#include "app/UAAppReviewManager.h"

#include "app/ReviewFixture.h"

#include <gtest/gtest.h>

namespace calorivo {
namespace {

using test::Calls;
using test::ReviewFixture;

const std::string shown = "runModal Rate Calorivo";
const std::string shownAsSheet = "sheet Rate Calorivo";
const std::string reviewPage =
    "openURL macappstore://store.example.org/us/app/thumbs/id42?ls=1&mt=12&at=000000&ct=UAAppReviewManager";

class UAAppReviewManagerAlertTest : public testing::Test, protected ReviewFixture {
  protected:
    void tellAll() {
        manager().setOnDidDisplayAlert([this] { calls.emplace_back("displayed"); });
        manager().setOnDeclineToRate([this] { calls.emplace_back("declined"); });
        manager().setOnDidOptToRate([this] { calls.emplace_back("rated"); });
        manager().setOnDidOptToRemindLater([this] { calls.emplace_back("reminded"); });
    }
    Calls launch() {
        manager().appLaunched();
        return takeCalls();
    }
};

TEST_F(UAAppReviewManagerAlertTest, HasThreeButtons) {
    meetConditions();
    launch();
    const Alert expected{
        .message = "Rate Calorivo",
        .defaultButton = "Rate Calorivo",
        .alternateButton = "No, Thanks",
        .otherButton = "Remind me later",
        .informativeText =
            "If you enjoy using Calorivo, would you mind taking a moment to rate it? It won't "
            "take more than a minute. Thanks for your support!"};
    EXPECT_EQ(alertPanel.alerts, std::vector<Alert>{expected});
    EXPECT_EQ(manager().ratingAlert(), expected);
}

TEST_F(UAAppReviewManagerAlertTest, HasTwoButtonsWithoutReminding) {
    meetConditions();
    manager().setDaysBeforeReminding(0);
    launch();
    ASSERT_EQ(alertPanel.alerts.size(), 1U);
    EXPECT_EQ(alertPanel.alerts.front().otherButton, std::nullopt);
}

TEST_F(UAAppReviewManagerAlertTest, ShowsPercentSignsOfASetMessageAsTheyAre) {
    meetConditions();
    manager().setReviewMessage("100%@ %d %");
    launch();
    EXPECT_EQ(alertPanel.alerts.at(0).informativeText, "100%@ %d %");
}

TEST_F(UAAppReviewManagerAlertTest, TakesTheAnswersOfAModalAlert) {
    struct Row {
        AlertAnswer answer;
        Calls calls;
        std::map<std::string, Value> stored;
    };
    const double now = 20'000 * 86400.0;
    const Row rows[] = {
        {AlertAnswer::defaultButton,
         {shown, reviewPage, "rated", "displayed"},
         {{"RatedCurrentVersion", true}, {"RatedAnyVersion", true}}},
        {AlertAnswer::alternateButton, {shown, "declined", "displayed"}, {{"DeclinedToRate", true}}},
        {AlertAnswer::otherButton, {shown, "reminded", "displayed"}, {{"ReminderRequestDate", now}}},
    };
    for (const Row& row : rows) {
        ReviewFixture fixture;
        fixture.meetConditions();
        fixture.manager().setOnDidDisplayAlert([&] { fixture.calls.emplace_back("displayed"); });
        fixture.manager().setOnDeclineToRate([&] { fixture.calls.emplace_back("declined"); });
        fixture.manager().setOnDidOptToRate([&] { fixture.calls.emplace_back("rated"); });
        fixture.manager().setOnDidOptToRemindLater([&] { fixture.calls.emplace_back("reminded"); });
        fixture.alertPanel.answers = {row.answer};
        fixture.manager().appLaunched();
        EXPECT_EQ(fixture.takeCalls(), row.calls);
        for (const char* name :
             {"RatedCurrentVersion", "RatedAnyVersion", "DeclinedToRate", "ReminderRequestDate"}) {
            const auto expected = row.stored.find(name);
            EXPECT_EQ(fixture.stored(name), expected != row.stored.end() ? expected->second : Value())
                << name;
        }
    }
}

TEST_F(UAAppReviewManagerAlertTest, HangsOnTheKeyWindowAndWaitsForNoAnswer) {
    struct Row {
        std::int32_t answer;
        Calls calls;
    };
    const Row rows[] = {
        {1, {reviewPage, "rated"}}, {0, {"declined"}}, {-1, {"reminded"}}, {2, {}}, {-1000, {}}};
    for (const Row& row : rows) {
        ReviewFixture fixture;
        fixture.meetConditions();
        fixture.sheet.isThere = true;
        fixture.manager().setOnDidDisplayAlert([&] { fixture.calls.emplace_back("displayed"); });
        fixture.manager().setOnDeclineToRate([&] { fixture.calls.emplace_back("declined"); });
        fixture.manager().setOnDidOptToRate([&] { fixture.calls.emplace_back("rated"); });
        fixture.manager().setOnDidOptToRemindLater([&] { fixture.calls.emplace_back("reminded"); });
        fixture.manager().appLaunched();
        EXPECT_EQ(fixture.takeCalls(), (Calls{shownAsSheet, "displayed"}));
        fixture.sheet.end(row.answer);
        EXPECT_EQ(fixture.takeCalls(), row.calls) << row.answer;
    }
}

TEST_F(UAAppReviewManagerAlertTest, WritesTheAnswerThrough) {
    for (const AlertAnswer answer :
         {AlertAnswer::defaultButton, AlertAnswer::alternateButton, AlertAnswer::otherButton}) {
        ReviewFixture fixture;
        fixture.meetConditions();
        fixture.alertPanel.answers = {answer};
        fixture.calls.clear();
        fixture.manager().showPrompt();
        EXPECT_EQ(std::count(fixture.calls.begin(), fixture.calls.end(), "synchronize"), 1);
    }
}

TEST_F(UAAppReviewManagerAlertTest, RatesWithoutAskingWhenToldTo) {
    tellAll();
    manager().setAppID("42");
    manager().rateApp();
    EXPECT_EQ(takeCalls(), (Calls{reviewPage, "rated"}));
    EXPECT_EQ(stored("RatedCurrentVersion"), Value(true));
    EXPECT_EQ(stored("RatedAnyVersion"), Value(true));
}

TEST_F(UAAppReviewManagerAlertTest, EndsWithTheProgramGoingToTheBack) {
    meetConditions();
    sheet.isThere = true;
    launch();
    notifications.willResignActive.announce();
    EXPECT_EQ(takeCalls(), Calls{"endSheet"});
    EXPECT_EQ(manager().ratingAlert(), std::nullopt);
    notifications.willResignActive.announce();
    EXPECT_EQ(takeCalls(), Calls{});
}

TEST_F(UAAppReviewManagerAlertTest, LogsItsEndWhenDebugging) {
    manager().setDebug(true);
    sheet.isThere = true;
    EXPECT_EQ(launch(), Calls{shownAsSheet});
    notifications.willResignActive.announce();
    EXPECT_EQ(takeCalls(), (Calls{"log [UAAppReviewManager] Hiding Alert", "endSheet"}));
}

TEST_F(UAAppReviewManagerAlertTest, StopsListeningWhenItGoes) {
    { const UAAppReviewManager short_(parts()); }
    notifications.didFinishLaunching.announce();
    notifications.willResignActive.announce();
    EXPECT_EQ(time.pending("global"), 0U);
}

// The whole prompt, as a program has it that sets the identifier and calls appLaunched.

class WholePrompt : public UAAppReviewManagerAlertTest {
  protected:
    /// Starts the program and uses it once; what was shown.
    Calls day(const std::string& version) {
        restart(version).setAppID("42");
        notifications.didFinishLaunching.announce();
        manager().appLaunched();
        Calls seen = takeCalls();
        passDays(1);
        return seen;
    }
    /// Days until something was shown, up to a hundred.
    int daysUntilAsked(const std::string& version) {
        for (int days = 1; days <= 100; ++days)
            if (!day(version).empty()) return days;
        return 0;
    }
};

TEST_F(WholePrompt, AsksAfterAMonthAndAgainADayAfterARemindMeLater) {
    alertPanel.answers = {AlertAnswer::otherButton, AlertAnswer::alternateButton};
    // The first day counts as day 0, and a launch is judged before it is counted.
    EXPECT_EQ(daysUntilAsked("7"), 31);
    EXPECT_EQ(stored("UseCount"), Value(31));
    EXPECT_EQ(daysUntilAsked("7"), 1);
    // Declined: never again for this version.
    EXPECT_EQ(daysUntilAsked("7"), 0);
}

TEST_F(WholePrompt, AsksAgainInANewVersionUnlessRatingOnceIsEnough) {
    alertPanel.answers = {AlertAnswer::defaultButton, AlertAnswer::alternateButton};
    EXPECT_EQ(daysUntilAsked("7"), 31);
    EXPECT_EQ(daysUntilAsked("7"), 0);
    EXPECT_EQ(daysUntilAsked("8"), 31);
    EXPECT_EQ(stored("PreviousVersion"), Value("7"));
    EXPECT_EQ(stored("PreviousVersionRated"), Value(true));
    EXPECT_EQ(stored("PreviousVersionDeclinedToRate"), Value(false));
    EXPECT_EQ(daysUntilAsked("9"), 31);
    EXPECT_EQ(stored("PreviousVersionDeclinedToRate"), Value(true));
    EXPECT_EQ(stored("PreviousVersionRated"), Value(false));
}

TEST_F(WholePrompt, IsOneForTheWholeProgram) {
    // Its own world, which lasts as long as the manager: to the end of the program.
    static ReviewFixture world;
    static ReviewFixture another;
    UAAppReviewManager& first = UAAppReviewManager::defaultManager(world.parts());
    EXPECT_EQ(&UAAppReviewManager::defaultManager(another.parts()), &first);
    EXPECT_EQ(&first.userDefaultsObject(), &world.defaults);
    another.notifications.didFinishLaunching.announce();
    another.time.run();
    EXPECT_TRUE(world.stored("UseCount").isNil());
    world.notifications.didFinishLaunching.announce();
    world.time.run();
    EXPECT_EQ(world.stored("UseCount"), Value(1));
}

}  // namespace
}  // namespace calorivo
