#include "app/PreferencesController.h"

#include "app/Ports.h"
#include "app/PreferenceTable.h"
#include "ui/CellMapArchive.h"

#include <optional>
#include <utility>
#include <variant>

namespace calorivo {

namespace {

constexpr std::string_view cellMapKey = "sensorNameToCustomCellMap";

}  // namespace

PreferencesController::PreferencesController(const PreferencesParts& parts) : parts_(parts) { defineKeys(); }

void PreferencesController::loadCustomCells() {
    const Value stored = parts_.userDefaults.objectForKey(cellMapKey);
    SensorLists& lists = parts_.lists;
    lists.sensorNameToCustomCellMap.clear();
    lists.hasCustomCellMap = true;
    if (stored.isNil()) return;
    auto cells = unarchivedCellMap(stored.dataValue());
    lists.hasCustomCellMap = cells.has_value();
    if (cells) lists.sensorNameToCustomCellMap = std::move(*cells);
}

void PreferencesController::loadPreferences() {
    for (const std::string_view key : preferenceLoadingOrder) loadPreference(key);
}

void PreferencesController::loadShowAppIcon() { loadPreference("showAppIcon"); }

void PreferencesController::loadPreference(std::string_view key) {
    parts_.keys.setValueForKey(parts_.userDefaults.objectForKey(key), key);
}

void PreferencesController::savePreferences() {
    for (const PreferenceKey& row : preferenceTable)
        parts_.userDefaults.setObjectForKey(storedForm(row.key), row.key);
    parts_.userDefaults.synchronize();
}

Value PreferencesController::storedForm(std::string_view key) const {
    if (key != cellMapKey) {
        Value value = parts_.keys.valueForKey(key);
        // No bookmark is not stored as an empty one.
        return value == Value(Data{}) ? Value() : value;
    }
    // Without a map nothing is stored, so that the next start begins with a new one.
    if (!parts_.lists.hasCustomCellMap) return {};
    return archivedCellMap(parts_.lists.sensorNameToCustomCellMap);
}

void PreferencesController::setTempUnit(std::int32_t unit) {
    const std::int32_t oldUnit = parts_.preferences.tempUnit;
    parts_.preferences.tempUnit = unit;
    degreesLabelObservers_.announce();
    if (!parts_.state.isStartingUp && unit != oldUnit) callIfPresent(parts_.setupLogger);
    callIfPresent(parts_.checkTimerFired);
}

void PreferencesController::setUpdateIntervalSecs(std::int32_t seconds) {
    if (parts_.setUpdateIntervalSecs)
        parts_.setUpdateIntervalSecs(seconds);
    else
        parts_.preferences.updateIntervalSecs = seconds;
}

void PreferencesController::setShown(Property<bool>& property, bool isShown) {
    property = isShown;
    parts_.modes.updateShowAppIconEnabled();
    parts_.statusItem.updateStatusItem();
}

void PreferencesController::setShowTempInMenuBar(bool isShown) {
    setShown(parts_.preferences.showTempInMenuBar, isShown);
}

void PreferencesController::setShowTemp2InMenuBar(bool isShown) {
    setShown(parts_.preferences.showTemp2InMenuBar, isShown);
}

void PreferencesController::setShowFanInMenuBar(bool isShown) {
    setShown(parts_.preferences.showFanInMenuBar, isShown);
}

std::int32_t PreferencesController::withoutSeparator(const PopUpButton* button, std::int32_t index) {
    const PopUpItem* const item = button != nullptr ? button->itemAtIndex(index) : nullptr;
    // The CPU average is the one sensor that every machine has.
    return item != nullptr && item->isSeparatorItem ? averageCPUTemperatureItem : index;
}

void PreferencesController::setMenuBarTempSensorIndex(std::int32_t index) {
    parts_.preferences.menuBarTempSensorIndex = withoutSeparator(parts_.popUps.menuBarTempPopupButton, index);
    parts_.statusItem.updateStatusItem();
}

void PreferencesController::setMenuBarTemp2SensorIndex(std::int32_t index) {
    parts_.preferences.menuBarTemp2SensorIndex =
        withoutSeparator(parts_.popUps.menuBarTemp2PopupButton, index);
    parts_.statusItem.updateStatusItem();
}

void PreferencesController::setMenuBarFanSensorIndex(std::int32_t index) {
    // Kept: the index is a position in the menu, where two items stand before the fans, and is bounded by the
    // number of fans all the same. Stored indexes rest on it. Without fans it is -1, which shows nothing.
    const auto fans = static_cast<std::int32_t>(parts_.fans.fansArray().size());
    parts_.preferences.menuBarFanSensorIndex = index >= fans ? fans - 1 : index;
    parts_.statusItem.updateStatusItem();
}

void PreferencesController::setCheckDriveTemps(bool isChecked) {
    const bool wasChecked = parts_.preferences.checkDriveTemps;
    parts_.preferences.checkDriveTemps = isChecked;
    parts_.drives.createSmartController();
    if (isChecked)
        parts_.drives.getDiskTemps();
    else
        parts_.smartInfo.clear();
    if (!parts_.state.isStartingUp && isChecked != wasChecked) callIfPresent(parts_.setupLogger);
    parts_.sensorPopups.fillInSensorPopups();
    parts_.sourceList.setupSourceList();
    callIfPresent(parts_.reloadTable);
}

void PreferencesController::setUseSmallerMenuFont(bool isSmaller) {
    parts_.preferences.useSmallerMenuFont = isSmaller;
    parts_.statusItem.updateStatusItem();
}

void PreferencesController::setUseShorterTitles(bool isShorter) {
    parts_.preferences.useShorterTitles = isShorter;
    parts_.fans.updateFans();
    parts_.statusItem.updateStatusItem();
}

void PreferencesController::setLogToFile(bool isLogged) {
    parts_.preferences.logToFile.store(isLogged);
    if (isLogged) callIfPresent(parts_.setupLogger);
    parts_.preferences.logToFile.announce();
}

void PreferencesController::setLogged(Property<bool>& property, bool isLogged) {
    property = isLogged;
    callIfPresent(parts_.setupLogger);
}

void PreferencesController::setLogTemperatures(bool isLogged) {
    setLogged(parts_.preferences.logTemperatures, isLogged);
}

void PreferencesController::setLogFanSpeeds(bool isLogged) {
    setLogged(parts_.preferences.logFanSpeeds, isLogged);
}

void PreferencesController::setLogAlerts(bool isLogged) { setLogged(parts_.preferences.logAlerts, isLogged); }

void PreferencesController::setLogFileURL(std::string url) {
    if (!parts_.state.logURLLock.tryLock()) return;
    parts_.state.logFileURL = std::move(url);
    parts_.state.logURLLock.unlock();
}

void PreferencesController::observeValueForKeyPath(std::string_view keyPath) {
    if (keyPath != "selectedObjects") return;
    const SourceList::Entries selected = parts_.sourceList.selectedObjects();
    if (!selected.empty()) parts_.keys.setValueForKey(selected.front().tag, "activeAreaTag");
}

}  // namespace calorivo
