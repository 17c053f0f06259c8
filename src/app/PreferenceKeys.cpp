// The keys under which settings and published values are read, assigned and observed.

#include "app/PreferenceTable.h"
#include "app/PreferencesController.h"

#include <stdexcept>
#include <utility>
#include <variant>

namespace calorivo {

namespace {

/// Defines the row's key as a plain one, without side effects.
struct DefinePlainKey {
    KeyValueCoding& keys;
    Preferences& preferences;
    std::string_view key;

    template <typename T>
    void operator()(Property<T> Preferences::*place) const {
        keys.define(std::string(key), preferences.*place);
    }
    void operator()(std::monostate) const {}
};

}  // namespace

void PreferencesController::defineKeys() {
    for (const PreferenceKey& row : preferenceTable)
        std::visit(DefinePlainKey{parts_.keys, parts_.preferences, row.key}, row.place);
    defineSetters();
    defineOtherKeys();
}

void PreferencesController::defineSetters() {
    using Self = PreferencesController;
    const auto define = [this](std::string_view key, auto& property, auto setter, auto& owner) {
        parts_.keys.define(std::string(key), property,
                           [&owner, setter](const auto& value) { (owner.*setter)(value); });
    };
    Preferences& p = parts_.preferences;
    define("tempUnit", p.tempUnit, &Self::setTempUnit, *this);
    define("updateIntervalSecs", p.updateIntervalSecs, &Self::setUpdateIntervalSecs, *this);
    define("showTempInMenuBar", p.showTempInMenuBar, &Self::setShowTempInMenuBar, *this);
    define("showTemp2InMenuBar", p.showTemp2InMenuBar, &Self::setShowTemp2InMenuBar, *this);
    define("showFanInMenuBar", p.showFanInMenuBar, &Self::setShowFanInMenuBar, *this);
    define("menuBarTempSensorIndex", p.menuBarTempSensorIndex, &Self::setMenuBarTempSensorIndex, *this);
    define("menuBarTemp2SensorIndex", p.menuBarTemp2SensorIndex, &Self::setMenuBarTemp2SensorIndex, *this);
    define("menuBarFanSensorIndex", p.menuBarFanSensorIndex, &Self::setMenuBarFanSensorIndex, *this);
    define("checkDriveTemps", p.checkDriveTemps, &Self::setCheckDriveTemps, *this);
    define("useSmallerMenuFont", p.useSmallerMenuFont, &Self::setUseSmallerMenuFont, *this);
    define("useShorterTitles", p.useShorterTitles, &Self::setUseShorterTitles, *this);
    define("logToFile", p.logToFile, &Self::setLogToFile, *this);
    define("logTemperatures", p.logTemperatures, &Self::setLogTemperatures, *this);
    define("logFanSpeeds", p.logFanSpeeds, &Self::setLogFanSpeeds, *this);
    define("logAlerts", p.logAlerts, &Self::setLogAlerts, *this);
    define("launchOnLogin", p.launchOnLogin, &ApplicationModes::setLaunchOnLogin, parts_.modes);
    define("hideOnLaunch", p.hideOnLaunch, &ApplicationModes::setHideOnLaunch, parts_.modes);
    define("appMode", p.appMode, &ApplicationModes::setAppMode, parts_.modes);
    define("showAppIcon", p.showAppIcon, &ApplicationModes::setShowAppIcon, parts_.modes);
    define("activeAreaTag", parts_.sourceList.activeAreaTag, &SourceList::setActiveAreaTag,
           parts_.sourceList);
    define("logFileURL", parts_.state.logFileURL, &Self::setLogFileURL, *this);
}

void PreferencesController::defineOtherKeys() {
    KeyValueCoding& keys = parts_.keys;
    keys.define("currentGPUType", parts_.gpu.currentGPUType);
    keys.define("isOkToCheckGPUSensors", parts_.gpu.isOkToCheckGPUSensors);
    keys.define("isShowAppIconEnabled", parts_.state.isShowAppIconEnabled);
    keys.define("isOkToShowRate", parts_.state.isOkToShowRate);
    keys.define("hostName", parts_.state.hostName);
    keys.define("appVersionString", parts_.state.appVersionString);
    keys.define("numFans", parts_.lists.numFans);
    keys.define("avgRPM", parts_.fans.avgRPM);
    keys.define("avgRPMAsString", parts_.fans.avgRPMAsString);
    keys.define(
        "degreesLabelString", [this] { return Value(parts_.reader.degreesLabelString()); },
        [](const Value&) { throw std::out_of_range("the property degreesLabelString is read-only"); },
        [this](std::function<void()> tell) { return degreesLabelObservers_.add(std::move(tell)); });
}

}  // namespace calorivo
