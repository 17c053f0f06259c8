#pragma once

#include "monitor/Preferences.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <variant>

namespace calorivo {

/// When a stored preference is loaded.
enum class LoadMoment {
    /// In the first stage of start-up, by a way of its own.
    firstStage,
    /// In the second stage, one after another in the loading order.
    inOrder,
    /// When there is a status item: its setter changes the item's image.
    afterStatusItem,
};

/// A setting of the user.
struct PreferenceKey {
    /// Where the setting is held, which also tells its type; the archived cells are held elsewhere.
    using Place = std::variant<Property<std::int32_t> Preferences::*, Property<bool> Preferences::*,
                               Property<Data> Preferences::*, std::monostate>;

    std::string_view key;
    Place place;
    LoadMoment loadMoment;
    /// From 1, among those that are loaded in order; 0 for the others.
    std::size_t loadOrder;
};

/// Every preference, in the order in which they are saved.
///
/// The values beside them are those of the property list "Defaults" (data/Defaults.plist), where alone they
/// take effect.
inline constexpr std::array<PreferenceKey, 28> preferenceTable{{
    {"tempUnit", &Preferences::tempUnit, LoadMoment::inOrder, 2},                                // 0
    {"updateIntervalSecs", &Preferences::updateIntervalSecs, LoadMoment::inOrder, 3},            // 5
    {"showTempInMenuBar", &Preferences::showTempInMenuBar, LoadMoment::inOrder, 4},              // true
    {"showTemp2InMenuBar", &Preferences::showTemp2InMenuBar, LoadMoment::inOrder, 5},            // false
    {"showFanInMenuBar", &Preferences::showFanInMenuBar, LoadMoment::inOrder, 6},                // false
    {"menuBarTempSensorIndex", &Preferences::menuBarTempSensorIndex, LoadMoment::inOrder, 7},    // 2
    {"menuBarTemp2SensorIndex", &Preferences::menuBarTemp2SensorIndex, LoadMoment::inOrder, 8},  // 0
    {"menuBarFanSensorIndex", &Preferences::menuBarFanSensorIndex, LoadMoment::inOrder, 9},      // 0
    {"launchOnLogin", &Preferences::launchOnLogin, LoadMoment::inOrder, 10},                     // false
    {"hideOnLaunch", &Preferences::hideOnLaunch, LoadMoment::inOrder, 11},                       // false
    {"appMode", &Preferences::appMode, LoadMoment::inOrder, 12},                                 // 0
    {"checkDriveTemps", &Preferences::checkDriveTemps, LoadMoment::inOrder, 1},                  // false
    {"useSmallerMenuFont", &Preferences::useSmallerMenuFont, LoadMoment::inOrder, 13},           // false
    {"showAppIcon", &Preferences::showAppIcon, LoadMoment::afterStatusItem, 0},                  // true
    {"useShorterTitles", &Preferences::useShorterTitles, LoadMoment::inOrder, 14},               // false
    {"isFirstLaunch", &Preferences::isFirstLaunch, LoadMoment::inOrder, 15},                     // true
    {"limitForSpecificArea", &Preferences::limitForSpecificArea, LoadMoment::inOrder, 16},       // 90
    {"limitForAverage", &Preferences::limitForAverage, LoadMoment::inOrder, 17},                 // 80
    {"showAlerts", &Preferences::showAlerts, LoadMoment::inOrder, 18},                           // true
    {"useStickyAlerts", &Preferences::useStickyAlerts, LoadMoment::inOrder, 19},                 // false
    {"logToFile", &Preferences::logToFile, LoadMoment::inOrder, 20},                             // false
    {"logTemperatures", &Preferences::logTemperatures, LoadMoment::inOrder, 21},                 // true
    {"logFanSpeeds", &Preferences::logFanSpeeds, LoadMoment::inOrder, 22},                       // true
    {"logAlerts", &Preferences::logAlerts, LoadMoment::inOrder, 23},                             // true
    {"useSameLogFile", &Preferences::useSameLogFile, LoadMoment::inOrder, 24},                   // false
    {"sensorNameToCustomCellMap", std::monostate{}, LoadMoment::firstStage, 0},                  // absent
    {"logFileBookmarkData", &Preferences::logFileBookmarkData, LoadMoment::inOrder, 25},         // absent
    {"hideVantixView", &Preferences::hideVantixView, LoadMoment::inOrder, 26},                   // false
}};

/// The keys that are loaded one after another, in that order. "checkDriveTemps" comes first: with the drives
/// the menus change, on which the indexes rest that are checked when they are loaded.
inline constexpr auto preferenceLoadingOrder = [] {
    std::array<std::string_view, 26> order{};
    for (const PreferenceKey& row : preferenceTable)
        if (row.loadMoment == LoadMoment::inOrder) order.at(row.loadOrder - 1) = row.key;
    return order;
}();

}  // namespace calorivo
