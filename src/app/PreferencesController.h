#pragma once

#include "app/ApplicationModes.h"
#include "app/ApplicationState.h"
#include "app/SensorPopups.h"
#include "monitor/DriveTemperatures.h"
#include "monitor/TemperatureReader.h"
#include "output/StatusItem.h"
#include "platform/UserDefaults.h"
#include "sensors/SourceList.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace calorivo {

/// What the setters work on. All must outlive them.
struct PreferencesParts {
    Preferences& preferences;
    ApplicationState& state;
    KeyValueCoding& keys;
    StandardUserDefaults& userDefaults;
    SensorLists& lists;
    GPUState& gpu;
    const TemperatureReader& reader;
    Fans& fans;
    SmartInfo& smartInfo;
    DriveTemperatures& drives;
    SourceList& sourceList;
    SensorPopups& sensorPopups;
    MenuBarPopUps popUps;
    StatusItem& statusItem;
    ApplicationModes& modes;
    /// Each may be empty.
    std::function<void()> checkTimerFired;
    std::function<void(std::int32_t)> setUpdateIntervalSecs;
    std::function<void()> setupLogger;
    std::function<void()> reloadTable;
};

/// Loads and saves the user's settings, and does what belongs to a change of each. Nothing is written to the
/// store but by savePreferences. Main thread.
class PreferencesController {
  public:
    /// Defines the keys.
    explicit PreferencesController(const PreferencesParts& parts);

    /// Reads the archived level cells.
    void loadCustomCells();
    /// Assigns every stored setting by its key, in the loading order.
    void loadPreferences();
    /// To be called when there is a status item.
    void loadShowAppIcon();
    /// Writes every setting to the store.
    void savePreferences();

    void setTempUnit(std::int32_t unit);
    void setUpdateIntervalSecs(std::int32_t seconds);
    void setShowTempInMenuBar(bool isShown);
    void setShowTemp2InMenuBar(bool isShown);
    void setShowFanInMenuBar(bool isShown);
    void setMenuBarTempSensorIndex(std::int32_t index);
    void setMenuBarTemp2SensorIndex(std::int32_t index);
    void setMenuBarFanSensorIndex(std::int32_t index);
    void setCheckDriveTemps(bool isChecked);
    void setUseSmallerMenuFont(bool isSmaller);
    void setUseShorterTitles(bool isShorter);
    void setLogToFile(bool isLogged);
    void setLogTemperatures(bool isLogged);
    void setLogFanSpeeds(bool isLogged);
    void setLogAlerts(bool isLogged);
    /// Without effect while a line is being written: the file in use never changes under its writer.
    void setLogFileURL(std::string url);

    /// A change under "selectedObjects" chooses the area of the first selected entry; other paths are
    /// ignored.
    void observeValueForKeyPath(std::string_view keyPath);

  private:
    void defineKeys();
    void defineSetters();
    void defineOtherKeys();
    void loadPreference(std::string_view key);
    [[nodiscard]] Value storedForm(std::string_view key) const;
    void setShown(Property<bool>& property, bool isShown);
    void setLogged(Property<bool>& property, bool isLogged);
    [[nodiscard]] static std::int32_t withoutSeparator(const PopUpButton* button, std::int32_t index);

    PreferencesParts parts_;
    Observers degreesLabelObservers_;
};

}  // namespace calorivo
