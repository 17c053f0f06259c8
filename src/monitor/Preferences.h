#pragma once

#include "platform/KeyValueCoding.h"
#include "platform/Property.h"

#include <cstdint>

namespace calorivo {

/// The user's settings: the working copy that everything reads. The names are the keys of the store. Assigned
/// on the main thread; numbers and flags may be read from any queue.
struct Preferences {
    /// 0 Celsius, any other value Fahrenheit.
    Property<std::int32_t> tempUnit;
    /// Seconds between two checks.
    Property<std::int32_t> updateIntervalSecs;
    Property<bool> showTempInMenuBar;
    Property<bool> showTemp2InMenuBar;
    Property<bool> showFanInMenuBar;
    Property<std::int32_t> menuBarTempSensorIndex;
    Property<std::int32_t> menuBarTemp2SensorIndex;
    Property<std::int32_t> menuBarFanSensorIndex;
    Property<bool> launchOnLogin;
    Property<bool> hideOnLaunch;
    /// 0 normal, 1 menu-only.
    Property<std::int32_t> appMode;
    Property<bool> checkDriveTemps;
    Property<bool> useSmallerMenuFont;
    Property<bool> showAppIcon;
    Property<bool> useShorterTitles;
    Property<bool> isFirstLaunch;
    /// Limits in whole degrees Celsius, whatever the unit is.
    Property<std::int32_t> limitForSpecificArea;
    Property<std::int32_t> limitForAverage;
    Property<bool> showAlerts;
    Property<bool> useStickyAlerts;
    Property<bool> logToFile;
    Property<bool> logTemperatures;
    Property<bool> logFanSpeeds;
    Property<bool> logAlerts;
    Property<bool> useSameLogFile;
    Property<Data> logFileBookmarkData;
    Property<bool> hideVantixView;
};

}  // namespace calorivo
