#pragma once

#include "monitor/CheckCycle.h"
#include "platform/UserDefaults.h"
#include "sensors/GPUNames.h"
#include "support/FakeSmc.h"
#include "support/RecordingOutputs.h"
#include "support/VirtualDispatch.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace calorivo::test {

/// Graphics processors by the names that a test gives them; none at first.
struct FakeGPUNames final : GPUNames {
    [[nodiscard]] std::optional<std::string> integratedGPUName() override { return integrated; }
    [[nodiscard]] std::optional<std::string> discreteGPUName() override { return discrete; }

    std::optional<std::string> integrated;
    std::optional<std::string> discrete;
};

struct CountingUserDefaults final : UserDefaults {
    void synchronize() override { ++synchronizations; }
    int synchronizations = 0;
};

/// A whole machine with its monitor, in one line:
///
///     Machine machine;
///     machine.cpu("TC1C", 40).gpu("TG0D", 60).fan(1800, 1200, 6000).logging().check();
///     EXPECT_EQ(machine.log.lines.front(), "2024-03-05,14:07:09,40,60,40,50");
///
/// Sensors are read through the record exchange, and stand in the lists as discovery would have put them
/// there, except that each area keeps the order of the calls. Everything is public and may be changed between
/// two checks. Queues are virtual; hold one to force an order: `machine.dispatch.hold("log")`.
struct Machine {
    Machine();
    ~Machine();
    Machine(const Machine&) = delete;
    Machine& operator=(const Machine&) = delete;

    /// A new sensor of this area, with a fresh cell.
    Machine& sensor(KeyList SensorLists::*area, SensorKey key, double celsius);
    Machine& cpu(SensorKey key, double celsius) { return sensor(&SensorLists::cpuSensorNames, key, celsius); }
    Machine& relativeCPU(SensorKey key, double celsius) {
        return sensor(&SensorLists::cpuRelativeSensorNames, key, celsius);
    }
    Machine& gpu(SensorKey key, double celsius) { return sensor(&SensorLists::gpuSensorNames, key, celsius); }
    Machine& memory(SensorKey key, double celsius) {
        return sensor(&SensorLists::memorySensorNames, key, celsius);
    }
    Machine& battery(SensorKey key, double celsius) {
        return sensor(&SensorLists::batterySensorNames, key, celsius);
    }
    /// What the sensor reads from now on.
    Machine& temperature(SensorKey key, double celsius);
    /// One more fan; without a name its identification cannot be read.
    Machine& fan(int rpm, int minimum, int maximum, std::string_view name = {});
    /// One more drive, and drives are checked.
    Machine& drive(float celsius);

    /// Logs temperatures.
    Machine& logging();
    /// Raises alerts above these limits, °C.
    Machine& alerting(std::int32_t limitForSpecificArea, std::int32_t limitForAverage);
    Machine& fahrenheit();

    /// One check, with everything that it puts on the queues.
    Machine& check();

    /// For a cycle of a test's own, with other outputs.
    [[nodiscard]] CheckCycleParts parts(const CycleOutputs& outputs);
    /// The sensor's cell; throws std::out_of_range when it has none.
    [[nodiscard]] QZTemperatureLevelIndicatorCell& cell(SensorKey key);

    FakeSmc smc;
    /// The clock says 2024-03-05 14:07:09 UTC.
    VirtualDispatch dispatch;
    SensorLists lists;
    FakeGPUNames gpuNames;
    SensorNaming naming{lists, gpuNames};
    Preferences preferences;
    GPUState gpuState;
    TemperatureReader reader{lists, preferences, gpuState};
    CountingUserDefaults userDefaults;
    Fans fans{lists, userDefaults};
    Averages averages;
    /// Labelled "check" and "log".
    std::unique_ptr<Queue> checkQueue = dispatch.makeSerialQueue("check");
    std::unique_ptr<Queue> logQueue = dispatch.makeSerialQueue("log");
    RecordingLog log{*logQueue};
    RecordingAlerts alerts;
    RecordingDisplay display;
    RecordingDrives drives;
    CheckCycle cycle;
};

}  // namespace calorivo::test
