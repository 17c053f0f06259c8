#pragma once

#include "app/PreferencesController.h"
#include "support/Machine.h"
#include "support/RecordingPlatform.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace calorivo::test {

/// One drive, and one more at each reading.
class GrowingController final : public SmartController {
  public:
    explicit GrowingController(Calls& calls) : calls_(calls) {}
    void update() override {
        calls_.emplace_back("update");
        disks_.push_back({"Disk", "A" + std::to_string(disks_.size()), 37});
    }
    [[nodiscard]] std::vector<DriveDictionary> allDisks() const override { return disks_; }

  private:
    Calls& calls_;
    std::vector<DriveDictionary> disks_;
};

/// After start-up: one CPU sensor, filled menus and a status item.
class PreferencesFixture : public testing::Test {
  protected:
    PreferencesFixture() {
        machine.cpu("TC0P", 61);
        state.didLaunchInNormalMode = true;
        popups.fillInSensorPopups();
        statusItem.create(platform.statusBar, "statusMenu");
        platform.calls.clear();
    }
    void assign(const std::string& key, const Value& value) { keys.setValueForKey(value, key); }
    /// The calls that an assignment leads to.
    [[nodiscard]] Calls callsOf(const std::string& key, const Value& value) {
        platform.calls.clear();
        assign(key, value);
        return platform.calls;
    }
    [[nodiscard]] std::function<void()> record(const char* call) {
        return [this, call] { platform.calls.emplace_back(call); };
    }
    [[nodiscard]] PreferencesParts parts() {
        return {.preferences = preferences,
                .state = state,
                .keys = keys,
                .userDefaults = platform.userDefaults,
                .lists = machine.lists,
                .gpu = machine.gpuState,
                .reader = machine.reader,
                .fans = machine.fans,
                .smartInfo = smartInfo,
                .drives = drives,
                .sourceList = sourceList,
                .sensorPopups = popups,
                .popUps = buttons,
                .statusItem = statusItem,
                .modes = modes,
                .checkTimerFired = record("checkTimerFired"),
                .setUpdateIntervalSecs =
                    [this](std::int32_t seconds) {
                        preferences.updateIntervalSecs = seconds;
                        platform.calls.push_back("setUpdateIntervalSecs " + std::to_string(seconds));
                    },
                .setupLogger = record("setupLogger"),
                .reloadTable = record("reloadData")};
    }

    // Before the machine, whose controller is the one to be read.
    RecordingPlatform platform;
    Machine machine;
    Preferences& preferences = machine.preferences;
    ApplicationState state;
    SmartInfo smartInfo;
    KeyValueCoding keys;
    PopUpButton first;
    PopUpButton second;
    PopUpButton fan;
    MenuBarPopUps buttons{&first, &second, &fan};
    DriveTemperatures drives{smartInfo, [this] {
                                 platform.calls.emplace_back("makeSmartController");
                                 return std::make_unique<GrowingController>(platform.calls);
                             }};
    SourceList sourceList{machine.lists, smartInfo, preferences.checkDriveTemps, record("reloadData")};
    SensorPopups popups{machine.lists, machine.naming, smartInfo, machine.fans, buttons};
    StatusItem statusItem{{preferences, machine.averages, machine.fans, smartInfo, machine.reader, buttons}};
    ApplicationModes modes{
        {preferences, state, keys, statusItem, platform.alertPanel, platform.serviceManagement, "helper"}};
    PreferencesController controller{parts()};
};

}  // namespace calorivo::test
