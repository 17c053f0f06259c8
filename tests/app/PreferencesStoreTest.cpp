#include "app/PreferenceTable.h"
#include "app/PreferencesController.h"
#include "app/PreferencesFixture.h"

#include <array>
#include <string>

// Loading the settings from the store and saving them there.

namespace calorivo {
namespace {

using test::Calls;
using PreferencesStoreTest = test::PreferencesFixture;

TEST_F(PreferencesStoreTest, LoadsTheLastStoredOfEveryKeyInTheLoadingOrder) {
    state.isStartingUp = true;
    for (const PreferenceKey& row : preferenceTable) {
        if (row.place.index() == 0) platform.userDefaults.stored[std::string(row.key)] = 1;
        if (row.place.index() == 1) platform.userDefaults.stored[std::string(row.key)] = true;
    }
    platform.userDefaults.stored["logFileBookmarkData"] = Data{4, 2};
    machine.fan(1800, 1200, 6000).fan(1900, 1200, 6000);
    controller.loadPreferences();
    for (const PreferenceKey& row : preferenceTable) {
        if (row.loadMoment != LoadMoment::inOrder) continue;
        const bool isTemperatureIndex =
            row.key == "menuBarTempSensorIndex" || row.key == "menuBarTemp2SensorIndex";
        const std::array<Value, 3> loaded{isTemperatureIndex ? 2 : 1, true, Data{4, 2}};
        EXPECT_EQ(keys.valueForKey(row.key), loaded.at(row.place.index())) << row.key;
    }
    Calls asked;
    for (const std::string& call : platform.calls)
        if (call.starts_with("objectForKey ")) asked.push_back(call.substr(13));
    EXPECT_EQ(asked, Calls(preferenceLoadingOrder.begin(), preferenceLoadingOrder.end()));
    EXPECT_FALSE(preferences.showAppIcon);
    controller.loadShowAppIcon();
    EXPECT_TRUE(preferences.showAppIcon);
}

TEST_F(PreferencesStoreTest, ChecksTheIndexesAgainstTheMenusWithDrives) {
    state.isStartingUp = true;
    machine.lists.memorySensorNames = {"TM0P"};
    platform.userDefaults.stored["checkDriveTemps"] = true;
    // Without the drive this is the memory sensor; with it, the drive's separator comes before it.
    platform.userDefaults.stored["menuBarTempSensorIndex"] = 6;
    controller.loadPreferences();
    EXPECT_TRUE(first.itemAtIndex(6)->isSeparatorItem);
    EXPECT_EQ(preferences.menuBarTempSensorIndex, 2);
}

TEST_F(PreferencesStoreTest, ReadsAnEmptyStoreAsZeroNoAndEmpty) {
    assign("tempUnit", 1);
    assign("showAlerts", true);
    assign("logFileBookmarkData", Data{1});
    controller.loadPreferences();
    EXPECT_EQ(preferences.tempUnit, 0);
    EXPECT_FALSE(preferences.showAlerts);
    EXPECT_TRUE(preferences.logFileBookmarkData.get().empty());
}

TEST_F(PreferencesStoreTest, SavesEveryKeyInItsOrderThenSynchronizes) {
    preferences.tempUnit = 1;
    preferences.useSameLogFile = true;
    preferences.limitForAverage = 77;
    preferences.hideVantixView = true;
    preferences.logFileBookmarkData = Data{9, 8, 7};
    controller.savePreferences();
    Calls expected;
    for (const PreferenceKey& row : preferenceTable) {
        const Value value = platform.userDefaults.stored.at(std::string(row.key));
        expected.push_back("setObject " + test::described(value) + " forKey " + std::string(row.key));
        if (row.place.index() < 3) {
            EXPECT_EQ(value, keys.valueForKey(row.key)) << row.key;
        }
    }
    expected.emplace_back("synchronize");
    EXPECT_EQ(platform.calls, expected);
}

TEST_F(PreferencesStoreTest, StoresNumbersAsNumbersAndFlagsAsFlags) {
    assign("limitForAverage", "77");
    assign("showAlerts", 5);
    controller.savePreferences();
    EXPECT_EQ(platform.userDefaults.stored.at("limitForAverage"), Value(77));
    EXPECT_EQ(platform.userDefaults.stored.at("showAlerts"), Value(true));
}

TEST_F(PreferencesStoreTest, RemovesTheBookmarkFromTheStoreWhenThereIsNone) {
    platform.userDefaults.stored["logFileBookmarkData"] = Data{1};
    controller.savePreferences();
    EXPECT_EQ(platform.userDefaults.stored.count("logFileBookmarkData"), 0U);
}

TEST_F(PreferencesStoreTest, GivesBackTheCellsThatItSaved) {
    machine.cell("TC0P").setObjectValue(64);
    machine.lists.sensorNameToCustomCellMap["A1"].setMaxUsedValue(58);
    const CellMap saved = machine.lists.sensorNameToCustomCellMap;
    controller.savePreferences();
    machine.lists.sensorNameToCustomCellMap = {{"other", {}}};
    controller.loadCustomCells();
    EXPECT_EQ(machine.lists.sensorNameToCustomCellMap, saved);
    EXPECT_TRUE(machine.lists.hasCustomCellMap);
}

TEST_F(PreferencesStoreTest, BeginsWithANewMapWhenNoneIsStored) {
    machine.lists.hasCustomCellMap = false;
    controller.loadCustomCells();
    EXPECT_TRUE(machine.lists.hasCustomCellMap);
    EXPECT_TRUE(machine.lists.sensorNameToCustomCellMap.empty());
}

TEST_F(PreferencesStoreTest, HasNoMapForThisRunWhenTheStoredOneCannotBeRead) {
    for (const Value& damaged : {Value(Data{'b', 'p', 'l'}), Value("text"), Value(5), Value(Data{})}) {
        platform.userDefaults.stored["sensorNameToCustomCellMap"] = damaged;
        controller.loadCustomCells();
        EXPECT_FALSE(machine.lists.hasCustomCellMap);
        EXPECT_TRUE(machine.lists.sensorNameToCustomCellMap.empty());
    }
    controller.savePreferences();
    EXPECT_EQ(platform.userDefaults.stored.count("sensorNameToCustomCellMap"), 0U);
}

}  // namespace
}  // namespace calorivo
