#include "app/PreferencesController.h"

#include "app/PreferenceTable.h"
#include "app/PreferencesFixture.h"

#include <cstddef>
#include <limits>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace calorivo {
namespace {

using test::Calls;
using PreferencesControllerTest = test::PreferencesFixture;

TEST_F(PreferencesControllerTest, HoldsEverySettingUnderItsKey) {
    for (const PreferenceKey& row : preferenceTable)
        EXPECT_EQ(keys.hasKey(row.key), row.place.index() < 3) << row.key;
    // Those without side effects are just stored.
    for (const char* const key :
         {"isFirstLaunch", "showAlerts", "useStickyAlerts", "useSameLogFile", "hideVantixView"}) {
        EXPECT_EQ(callsOf(key, true), Calls{}) << key;
        EXPECT_EQ(keys.valueForKey(key), Value(true)) << key;
    }
    for (const char* const key : {"limitForSpecificArea", "limitForAverage"}) {
        EXPECT_EQ(callsOf(key, 73), Calls{}) << key;
        EXPECT_EQ(keys.valueForKey(key), Value(73)) << key;
    }
    EXPECT_EQ(callsOf("logFileBookmarkData", Data{1, 2}), Calls{});
    EXPECT_EQ(preferences.logFileBookmarkData.get(), (Data{1, 2}));
}

TEST_F(PreferencesControllerTest, BeginsANewLogForAnotherUnitOnlyAndChecksAtOnce) {
    EXPECT_EQ(callsOf("tempUnit", 1), (Calls{"setupLogger", "checkTimerFired"}));
    EXPECT_EQ(callsOf("tempUnit", 1), (Calls{"checkTimerFired"}));
    state.isStartingUp = true;
    EXPECT_EQ(callsOf("tempUnit", 0), (Calls{"checkTimerFired"}));
    EXPECT_EQ(preferences.tempUnit, 0);
}

TEST_F(PreferencesControllerTest, TellsOfTheUnitsLabelWhenTheUnitIsAssigned) {
    std::vector<std::string> heard;
    const Observation observation = keys.observe(
        "degreesLabelString", [&] { heard.push_back(keys.valueForKey("degreesLabelString").stringValue()); });
    assign("tempUnit", 1);
    assign("tempUnit", 1);
    assign("tempUnit", 0);
    EXPECT_EQ(heard, (std::vector<std::string>{"°F", "°F", "°C"}));
    EXPECT_THROW(assign("degreesLabelString", "°K"), std::out_of_range);
}

TEST_F(PreferencesControllerTest, RestartsTheTimerForANewInterval) {
    EXPECT_EQ(callsOf("updateIntervalSecs", 9), (Calls{"setUpdateIntervalSecs 9"}));
}

TEST_F(PreferencesControllerTest, AppliesTheIconRuleAndComposesTheTitleForEachMenuBarSwitch) {
    state.didLaunchInNormalMode = false;
    machine.averages.avgTempAsString = "45°C";
    machine.fans.avgRPMAsString = "1200 RPM";
    const Calls forced{"statusItem setImage NewIcon_16px", "statusItem setTitle \"\""};
    EXPECT_EQ(callsOf("showTempInMenuBar", 2), (Calls{"statusItem setTitle \"45°C\""}));
    EXPECT_EQ(keys.valueForKey("showTempInMenuBar"), Value(true));
    EXPECT_EQ(callsOf("showTempInMenuBar", false), forced);
    EXPECT_EQ(callsOf("showTemp2InMenuBar", true), (Calls{"statusItem setTitle \"\""}));
    EXPECT_TRUE(state.isShowAppIconEnabled);
    EXPECT_EQ(callsOf("showTemp2InMenuBar", false), forced);
    EXPECT_EQ(callsOf("showFanInMenuBar", true), (Calls{"statusItem setTitle \"1200 RPM\""}));
    EXPECT_EQ(callsOf("showFanInMenuBar", false), forced);
    EXPECT_FALSE(state.isShowAppIconEnabled);
}

TEST_F(PreferencesControllerTest, StoresTheCPUAverageForASeparatorOfItsOwnMenu) {
    second.setMenu({{"none"}, {"none"}, {"none"}, PopUpItem::separatorItem()});
    const std::vector<std::pair<std::int32_t, std::int32_t>> ofFirst{{0, 0}, {1, 2}, {2, 2},
                                                                     {3, 3}, {9, 9}, {-1, -1}};
    for (const auto& [index, stored] : ofFirst) {
        EXPECT_EQ(callsOf("menuBarTempSensorIndex", index), (Calls{"statusItem setTitle \"\""}));
        EXPECT_EQ(preferences.menuBarTempSensorIndex, stored) << index;
    }
    const std::vector<std::pair<std::int32_t, std::int32_t>> ofSecond{{1, 1}, {3, 2}};
    for (const auto& [index, stored] : ofSecond) {
        EXPECT_EQ(callsOf("menuBarTemp2SensorIndex", index), (Calls{"statusItem setTitle \"\""}));
        EXPECT_EQ(preferences.menuBarTemp2SensorIndex, stored) << index;
    }
}

TEST_F(PreferencesControllerTest, BoundsTheFanIndexByTheNumberOfFans) {
    EXPECT_EQ(callsOf("menuBarFanSensorIndex", 5), (Calls{"statusItem setTitle \"\""}));
    EXPECT_EQ(preferences.menuBarFanSensorIndex, -1);
    assign("menuBarFanSensorIndex", 0);
    EXPECT_EQ(preferences.menuBarFanSensorIndex, -1);
    machine.fan(1800, 1200, 6000, "Left").fan(1900, 1200, 6000, "Right");
    const std::vector<std::pair<std::int32_t, std::int32_t>> rows{
        {5, 1}, {2, 1}, {1, 1}, {0, 0}, {-4, -4}, {std::numeric_limits<std::int32_t>::max(), 1}};
    for (const auto& [index, stored] : rows) {
        assign("menuBarFanSensorIndex", index);
        EXPECT_EQ(preferences.menuBarFanSensorIndex, stored) << index;
    }
}

TEST_F(PreferencesControllerTest, AnnouncesTheFanIndexThatItStored) {
    std::vector<std::int32_t> heard;
    const Observation observation =
        keys.observe("menuBarFanSensorIndex", [&] { heard.push_back(preferences.menuBarFanSensorIndex); });
    assign("menuBarFanSensorIndex", 5);
    EXPECT_EQ(heard, std::vector<std::int32_t>{-1});
}

TEST_F(PreferencesControllerTest, ListsTheDrivesWhenTheyAreCheckedAndForgetsThemWhenNot) {
    sourceList.setupSourceList();
    EXPECT_EQ(callsOf("checkDriveTemps", true),
              (Calls{"makeSmartController", "update", "setupLogger", "reloadData"}));
    EXPECT_EQ(smartInfo.count(), 1U);
    EXPECT_EQ(first.menu().back().title, "Disk (A0)");
    EXPECT_EQ(second.menu(), first.menu());
    EXPECT_EQ(sourceList.sourceListNames.get().back().name, "Hard Drive");

    EXPECT_EQ(callsOf("checkDriveTemps", true), (Calls{"update", "reloadData"}));
    EXPECT_EQ(smartInfo.count(), 2U);

    EXPECT_EQ(callsOf("checkDriveTemps", false), (Calls{"setupLogger", "reloadData"}));
    EXPECT_EQ(smartInfo.count(), 0U);
    EXPECT_EQ(first.menu().size(), 4U);
    EXPECT_EQ(sourceList.sourceListNames.get().back().name, "CPU");
}

TEST_F(PreferencesControllerTest, MakesTheDriveReaderEvenWhenDrivesAreNotChecked) {
    state.isStartingUp = true;
    EXPECT_EQ(callsOf("checkDriveTemps", false), (Calls{"makeSmartController", "reloadData"}));
    EXPECT_EQ(callsOf("checkDriveTemps", true), (Calls{"update", "reloadData"}));
}

TEST_F(PreferencesControllerTest, AnnouncesDriveCheckingBeforeTheListsChange) {
    std::size_t drivesThen = 99;
    const Observation observation = keys.observe("checkDriveTemps", [&] { drivesThen = smartInfo.count(); });
    assign("checkDriveTemps", true);
    EXPECT_EQ(drivesThen, 0U);
}

TEST_F(PreferencesControllerTest, ComposesTheTitleForItsPresentation) {
    EXPECT_EQ(callsOf("useSmallerMenuFont", true), (Calls{"statusItem setAttributedTitle \"\""}));
    machine.fan(1800, 1200, 6000);
    int updates = 0;
    const Observation observation = machine.fans.observeFansArray([&] { ++updates; });
    EXPECT_EQ(callsOf("useShorterTitles", true), (Calls{"statusItem setAttributedTitle \"\""}));
    EXPECT_EQ(updates, 1);
    EXPECT_EQ(machine.fans.avgRPMAsString.get(), "1800 RPM");
}

TEST_F(PreferencesControllerTest, BeginsALogOnlyWhenLoggingIsTurnedOn) {
    Calls heard;
    const Observation observation =
        keys.observe("logToFile", [this] { platform.calls.emplace_back("announced"); });
    EXPECT_EQ(callsOf("logToFile", true), (Calls{"setupLogger", "announced"}));
    EXPECT_EQ(callsOf("logToFile", true), (Calls{"setupLogger", "announced"}));
    EXPECT_EQ(callsOf("logToFile", false), (Calls{"announced"}));
    EXPECT_FALSE(preferences.logToFile);
}

TEST_F(PreferencesControllerTest, StoresLoggingBeforeItBeginsTheLog) {
    bool wasSet = false;
    PreferencesParts other = parts();
    other.setupLogger = [&] { wasSet = preferences.logToFile; };
    PreferencesController(other).setLogToFile(true);
    EXPECT_TRUE(wasSet);
}

TEST_F(PreferencesControllerTest, BeginsANewLogWhicheverWayItsColumnsMove) {
    for (const bool isStartingUp : {true, false}) {
        state.isStartingUp = isStartingUp;
        for (const char* const key : {"logTemperatures", "logFanSpeeds", "logAlerts"})
            for (const bool isLogged : {true, true, false, false}) {
                EXPECT_EQ(callsOf(key, isLogged), (Calls{"setupLogger"})) << key;
                EXPECT_EQ(keys.valueForKey(key), Value(isLogged)) << key;
            }
    }
}

TEST_F(PreferencesControllerTest, DropsALogFileThatComesWhileALineIsWritten) {
    int announcements = 0;
    const Observation observation = keys.observe("logFileURL", [&] { ++announcements; });
    assign("logFileURL", "file:///one.csv");
    ASSERT_TRUE(state.logURLLock.tryLock());
    assign("logFileURL", "file:///two.csv");
    EXPECT_EQ(state.logFileURL.get(), "file:///one.csv");
    state.logURLLock.unlock();
    assign("logFileURL", "file:///three.csv");
    EXPECT_EQ(state.logFileURL.get(), "file:///three.csv");
    EXPECT_EQ(announcements, 2);
    EXPECT_TRUE(state.logURLLock.tryLock());
}

TEST_F(PreferencesControllerTest, AnnouncesALogFileWhileItHoldsTheLock) {
    bool wasFree = true;
    const Observation observation = keys.observe("logFileURL", [&] { wasFree = state.logURLLock.tryLock(); });
    assign("logFileURL", "file:///one.csv");
    EXPECT_FALSE(wasFree);
}

TEST_F(PreferencesControllerTest, ReloadsTheTableForAnotherArea) {
    EXPECT_EQ(callsOf("activeAreaTag", 9), (Calls{"reloadData"}));
    EXPECT_EQ(sourceList.activeAreaTag, 9);
}

TEST_F(PreferencesControllerTest, ChoosesTheAreaOfTheFirstSelectedEntry) {
    machine.battery("TB0T", 30);
    sourceList.setupSourceList();
    sourceList.setSourceListSelectedIndexes({2, 0});
    controller.observeValueForKeyPath("selectedObjects");
    EXPECT_EQ(sourceList.activeAreaTag, allAreasTag);
    sourceList.setSourceListSelectedIndexes({2});
    controller.observeValueForKeyPath("selection");
    EXPECT_EQ(sourceList.activeAreaTag, allAreasTag);
    controller.observeValueForKeyPath("selectedObjects");
    EXPECT_EQ(sourceList.activeAreaTag, 5);
    sourceList.setSourceListSelectedIndexes({});
    controller.observeValueForKeyPath("selectedObjects");
    EXPECT_EQ(sourceList.activeAreaTag, 5);
}

TEST_F(PreferencesControllerTest, DoesWithoutItsPorts) {
    PreferencesParts bare = parts();
    bare.checkTimerFired = nullptr;
    bare.setUpdateIntervalSecs = nullptr;
    bare.setupLogger = nullptr;
    bare.reloadTable = nullptr;
    PreferencesController other(bare);
    for (const char* const key :
         {"tempUnit", "updateIntervalSecs", "checkDriveTemps", "logToFile", "logTemperatures"}) {
        assign(key, 1);
        EXPECT_TRUE(keys.valueForKey(key).boolValue()) << key;
    }
}

}  // namespace
}  // namespace calorivo
