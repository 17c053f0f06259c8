#include "output/OverLimitAlerts.h"

#include "support/Machine.h"
#include "support/RecordingPlatform.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <string>
#include <vector>

namespace calorivo {
namespace {

using test::Calls;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using namespace std::chrono_literals;

constexpr const char* advice =
    "Quitting applications or putting the computer to sleep for a while will help to cool it down.";

struct OverLimitAlertsTest : testing::Test {
    std::vector<std::string> titles() const {
        std::vector<std::string> all;
        for (const GrowlNotification& notification : growl.posted) all.push_back(notification.title);
        return all;
    }

    test::Machine machine;
    Calls calls;
    test::RecordingGrowl growl{calls};
    test::RecordingSystemLog systemLog{calls};
    std::unique_ptr<OverLimitAlerts> alerts = std::make_unique<OverLimitAlerts>(
        OverLimitAlertsParts{machine.dispatch, machine.preferences, machine.reader, growl, systemLog,
                             [this] { calls.emplace_back("activateAndShowMainWindow"); }});
};

TEST_F(OverLimitAlertsTest, PostsASensorInItsWords) {
    machine.preferences.useStickyAlerts = true;
    alerts->showAlertForOverlimitAreaWithName(95.4, "CPU Core 1 & <2>");
    EXPECT_THAT(growl.posted, ElementsAre(GrowlNotification{.title = "CPU Core 1 & <2> is 95°C",
                                                            .description = advice,
                                                            .notificationName = "SpecificTemperature",
                                                            .iconData = "",
                                                            .priority = 0,
                                                            .isSticky = true,
                                                            .clickContext = "showAlertForOverlimitArea",
                                                            .identifier = ""}));
}

TEST_F(OverLimitAlertsTest, PostsTheAverageInItsWords) {
    machine.fahrenheit();
    alerts->showAlertForOverlimitAverage(95);
    EXPECT_THAT(growl.posted, ElementsAre(GrowlNotification{.title = "Avg CPU Temp is 203°F",
                                                            .description = advice,
                                                            .notificationName = "ComputerTemperature",
                                                            .iconData = "",
                                                            .priority = 0,
                                                            .isSticky = false,
                                                            .clickContext = "showAlertForOverlimitAverage",
                                                            .identifier = ""}));
}

TEST_F(OverLimitAlertsTest, RegistersBothKinds) {
    const std::vector<std::string> both{"SpecificTemperature", "ComputerTemperature"};
    const std::map<std::string, std::string> names{
        {"SpecificTemperature", "Specific Temperature Over Limit"},
        {"ComputerTemperature", "Computer Temperature Over Limit"}};
    EXPECT_EQ(alerts->registrationDictionaryForGrowl(), (GrowlDictionary{{"ApplicationName", "Calorivo"},
                                                                         {"AllNotifications", both},
                                                                         {"DefaultNotifications", both},
                                                                         {"HumanReadableNames", names}}));
}

TEST_F(OverLimitAlertsTest, TellsOfTheServiceAndRegistersWithItTwice) {
    alerts->initGrowl();
    EXPECT_THAT(calls, ElementsAre("Growl load", "log Using Growl.framework Fake Growl (2.5)",
                                   "setGrowlDelegate", "setGrowlDelegate"));
    EXPECT_EQ(growl.delegate, alerts.get());
}

TEST_F(OverLimitAlertsTest, RegistersWithoutAService) {
    growl.isPresent = false;
    alerts->initGrowl();
    EXPECT_THAT(calls, ElementsAre("Growl load", "setGrowlDelegate"));
    growl.appear("Late Growl", "3");
    EXPECT_THAT(calls, ElementsAre("Growl load", "setGrowlDelegate",
                                   "log Using Growl.framework Late Growl (3)", "setGrowlDelegate"));
}

TEST_F(OverLimitAlertsTest, TakesItsRegistrationBackAtItsEnd) {
    alerts->initGrowl();
    alerts.reset();
    EXPECT_EQ(growl.delegate, nullptr);
    calls.clear();
    growl.appear("Later Growl", "4");
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(OverLimitAlertsTest, WaitsTenMinutes) {
    alerts->showAlertForOverlimitAreaWithName(91, "A");
    machine.dispatch.advance(599s);
    alerts->showAlertForOverlimitAreaWithName(92, "A");
    EXPECT_THAT(titles(), ElementsAre("A is 91°C"));
    machine.dispatch.advance(1s);
    alerts->showAlertForOverlimitAreaWithName(93, "A");
    EXPECT_THAT(titles(), ElementsAre("A is 91°C", "A is 93°C"));
}

TEST_F(OverLimitAlertsTest, WaitsForTheAverageToo) {
    alerts->showAlertForOverlimitAverage(91);
    machine.dispatch.advance(599s);
    alerts->showAlertForOverlimitAverage(92);
    EXPECT_THAT(growl.posted, SizeIs(1));
    machine.dispatch.advance(1s);
    alerts->showAlertForOverlimitAverage(93);
    EXPECT_THAT(growl.posted, SizeIs(2));
}

TEST_F(OverLimitAlertsTest, WaitsForEachKeyAlone) {
    alerts->showAlertForOverlimitAreaWithName(91, "CPU Core 1");
    alerts->showAlertForOverlimitAreaWithName(92, "CPU Core 2");
    alerts->showAlertForOverlimitAverage(90);
    EXPECT_THAT(titles(), ElementsAre("CPU Core 1 is 91°C", "CPU Core 2 is 92°C", "Avg CPU Temp is 90°C"));
}

TEST_F(OverLimitAlertsTest, SharesTheWindowOfASensorThatIsCalledLikeTheAverage) {
    alerts->showAlertForOverlimitAverage(90);
    alerts->showAlertForOverlimitAreaWithName(91, "CPUAverage");
    EXPECT_THAT(growl.posted, SizeIs(1));
}

TEST_F(OverLimitAlertsTest, DoesNotFollowTheUsersClock) {
    alerts->showAlertForOverlimitAreaWithName(91, "A");
    machine.dispatch.setWallTime(machine.dispatch.wallTime() + std::chrono::hours(2));
    alerts->showAlertForOverlimitAreaWithName(92, "A");
    EXPECT_THAT(growl.posted, SizeIs(1));
    machine.dispatch.setWallTime(machine.dispatch.wallTime() - std::chrono::hours(20));
    machine.dispatch.advance(10min);
    alerts->showAlertForOverlimitAreaWithName(93, "A");
    EXPECT_THAT(growl.posted, SizeIs(2));
}

TEST_F(OverLimitAlertsTest, RecordsNothingWhileThereIsNoService) {
    growl.isPresent = false;
    alerts->showAlertForOverlimitAreaWithName(91, "A");
    growl.isPresent = true;
    alerts->showAlertForOverlimitAreaWithName(92, "A");
    EXPECT_THAT(titles(), ElementsAre("A is 92°C"));
}

TEST_F(OverLimitAlertsTest, ShowsTheMainWindowForAnyClick) {
    alerts->initGrowl();
    calls.clear();
    for (const char* context : {"showAlertForOverlimitArea", "showAlertForOverlimitAverage", "something", ""})
        growl.delegate->growlNotificationWasClicked(context);
    EXPECT_EQ(calls, Calls(4, "activateAndShowMainWindow"));
}

TEST_F(OverLimitAlertsTest, PostsEachOfSixtySensors144TimesADay) {
    constexpr int sensors = 60;
    std::vector<std::string> names;
    for (int sensor = 0; sensor < sensors; ++sensor) names.push_back("Sensor " + std::to_string(sensor));
    for (int second = 0; second < 24 * 60 * 60; ++second) {
        // Each is above its limit in every other check.
        for (std::size_t sensor = 0; sensor < names.size(); ++sensor)
            if ((static_cast<std::size_t>(second) + sensor) % 2 == 0)
                alerts->showAlertForOverlimitAreaWithName(95, names[sensor]);
        machine.dispatch.advance(1s);
    }
    EXPECT_THAT(growl.posted, SizeIs(sensors * 144));
}

}  // namespace
}  // namespace calorivo
