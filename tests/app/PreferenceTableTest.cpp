#include "app/PreferenceTable.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace calorivo {
namespace {

using testing::ElementsAre;

TEST(PreferenceTable, HasEveryKeyInTheOrderOfSavingWithItsType) {
    const std::array typeNames{"int", "bool", "data", "cells"};
    std::vector<std::string> rows;
    for (const PreferenceKey& row : preferenceTable)
        rows.push_back(std::string(row.key) + ' ' + typeNames.at(row.place.index()));
    EXPECT_THAT(
        rows,
        ElementsAre("tempUnit int", "updateIntervalSecs int", "showTempInMenuBar bool",
                    "showTemp2InMenuBar bool", "showFanInMenuBar bool", "menuBarTempSensorIndex int",
                    "menuBarTemp2SensorIndex int", "menuBarFanSensorIndex int", "launchOnLogin bool",
                    "hideOnLaunch bool", "appMode int", "checkDriveTemps bool", "useSmallerMenuFont bool",
                    "showAppIcon bool", "useShorterTitles bool", "isFirstLaunch bool",
                    "limitForSpecificArea int", "limitForAverage int", "showAlerts bool",
                    "useStickyAlerts bool", "logToFile bool", "logTemperatures bool", "logFanSpeeds bool",
                    "logAlerts bool", "useSameLogFile bool", "sensorNameToCustomCellMap cells",
                    "logFileBookmarkData data", "hideVantixView bool"));
}

TEST(PreferenceTable, LoadsInAnOrderOfItsOwn) {
    EXPECT_THAT(preferenceLoadingOrder,
                ElementsAre("checkDriveTemps", "tempUnit", "updateIntervalSecs", "showTempInMenuBar",
                            "showTemp2InMenuBar", "showFanInMenuBar", "menuBarTempSensorIndex",
                            "menuBarTemp2SensorIndex", "menuBarFanSensorIndex", "launchOnLogin",
                            "hideOnLaunch", "appMode", "useSmallerMenuFont", "useShorterTitles",
                            "isFirstLaunch", "limitForSpecificArea", "limitForAverage", "showAlerts",
                            "useStickyAlerts", "logToFile", "logTemperatures", "logFanSpeeds", "logAlerts",
                            "useSameLogFile", "logFileBookmarkData", "hideVantixView"));
}

TEST(PreferenceTable, HasADefaultForEveryKeyButTheDataOnes) {
    std::ifstream file(CALORIVO_SOURCE_DIR "/data/Defaults.plist");
    std::map<std::string, std::string> defaults;
    std::string key;
    for (std::string line; std::getline(file, line);) {
        const std::string text = line.substr(std::min(line.find('<'), line.size()));
        if (text.starts_with("<key>"))
            key = text.substr(5, text.find("</key>") - 5);
        else if (!key.empty())
            defaults[std::exchange(key, {})] = text;
    }
    std::map<std::string, std::string> expected;
    for (const PreferenceKey& row : preferenceTable)
        if (row.place.index() < 2) expected[std::string(row.key)] = "<false/>";
    for (const char* const isSet : {"showTempInMenuBar", "showAppIcon", "isFirstLaunch", "showAlerts",
                                    "logTemperatures", "logFanSpeeds", "logAlerts"})
        expected[isSet] = "<true/>";
    for (const char* const zero : {"tempUnit", "menuBarTemp2SensorIndex", "menuBarFanSensorIndex", "appMode"})
        expected[zero] = "<integer>0</integer>";
    expected["updateIntervalSecs"] = "<integer>5</integer>";
    expected["menuBarTempSensorIndex"] = "<integer>2</integer>";
    expected["limitForSpecificArea"] = "<integer>90</integer>";
    expected["limitForAverage"] = "<integer>80</integer>";
    EXPECT_EQ(defaults, expected);
}

}  // namespace
}  // namespace calorivo
