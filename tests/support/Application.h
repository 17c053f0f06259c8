#pragma once

#include "app/PyroluxAppDelegate.h"
#include "support/PrintedText.h"
#include "support/RecordingPlatform.h"

#include <memory>
#include <utility>

namespace calorivo::test {

/// The program's controller on a recording platform: a machine with one CPU sensor, "TC0P" at 40 degrees, and
/// a fan at 1800 RPM. Stored preferences that differ from 0, NO and empty: checks every 7 seconds; no
/// first-launch question; the first temperature, that of the sensor, in the menu bar; the icon too.
class Application {
  public:
    Application() {
        machine.ioKit.smc.setTemperature("TC0P", 40).addFan(1800, 1200, 6000, "Left");
        auto& stored = machine.userDefaults.stored;
        stored["updateIntervalSecs"] = 7;
        stored["isFirstLaunch"] = false;
        stored["showTempInMenuBar"] = true;
        stored["menuBarTempSensorIndex"] = 3;
        stored["showAppIcon"] = true;
        configuration.documentDirectories = {"/home/u/My Documents"};
    }

    void store(const std::string& key, Value value) { machine.userDefaults.stored[key] = std::move(value); }
    /// Makes the controller; from here on `delegate` may be used.
    PyroluxAppDelegate& make(ApplicationPorts ports) {
        made_ = std::make_unique<PyroluxAppDelegate>(machine.platform(), machine.interface(), configuration,
                                                     std::move(ports));
        return *made_;
    }
    PyroluxAppDelegate& make() { return make(machine.ports()); }
    /// Up to the end of start-up, in whichever mode is stored; the calls of that are forgotten.
    PyroluxAppDelegate& start() {
        make();
        made_->awakeFromNib();
        made_->applicationDidFinishLaunching();
        made_->applicationDidBecomeActive();
        machine.dispatch.time.run();
        machine.calls.clear();
        return *made_;
    }
    [[nodiscard]] PyroluxAppDelegate& delegate() { return *made_; }

    PrintedText printed;
    RecordingPlatform machine;
    Configuration configuration;

  private:
    std::unique_ptr<PyroluxAppDelegate> made_;
};

}  // namespace calorivo::test
