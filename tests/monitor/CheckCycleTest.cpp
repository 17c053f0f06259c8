#include "monitor/CheckCycle.h"

#include "support/Machine.h"

#include <gtest/gtest.h>

#include <chrono>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace calorivo {
namespace {

using namespace std::chrono_literals;
using test::Machine;
using test::RecordedAlert;
using Calls = std::vector<std::string>;
using Alerts = std::vector<RecordedAlert>;

/// The three averages as one text.
std::string averagesOf(const Machine& machine) {
    return std::to_string(machine.averages.currentAvgTmp) + " | " + machine.averages.avgTempAsString.get() +
           " | " + machine.averages.avgCPUTempAsString.get();
}

TEST(CheckCycle, CarriesAReadingFromTheRecordExchangeToEveryOutput) {
    Machine machine;
    machine.cpu("TC0P", 0).logging().alerting(90, 80);
    machine.smc.set("TC0P", "sp78", {0x5f, 0x00});
    machine.check();
    EXPECT_EQ(machine.cell("TC0P").objectValue(), 95.0F);
    EXPECT_EQ(machine.cell("TC0P").maxUsedValue(), 95.0F);
    EXPECT_EQ(machine.reader.getCachedTemperatureForSensor("TC0P"), 95.0);
    EXPECT_EQ(machine.log.lines.front(), "2024-03-05,14:07:09,ALERT:95,95,95");
    EXPECT_EQ(machine.alerts.posted, (Alerts{{95, "CPU Proximity "}, {95, RecordedAlert::forAverage}}));
    EXPECT_EQ(averagesOf(machine), "95 | 95°C | 95°C");
    EXPECT_EQ(machine.display.calls, (Calls{"reloadData", "updateStatusItem"}));
}

TEST(CheckCycle, CountsARelativeSensorForTheCPUAverageOnly) {
    Machine machine;
    machine.cpu("TC1C", 40).cpu("TC2C", 50).cpu("TC3C", 60).cpu("TCAC", 90).check();
    EXPECT_EQ(averagesOf(machine), "50 | 50°C | 60°C");
}

TEST(CheckCycle, CountsASensorOfTheRelativeAreaForNoAverage) {
    Machine machine;
    machine.cpu("TC1C", 40).relativeCPU("TCXr", 90).check();
    EXPECT_EQ(averagesOf(machine), "40 | 40°C | 40°C");
    EXPECT_EQ(machine.cell("TCXr").objectValue(), 90.0F);
}

TEST(CheckCycle, CountsASensorTwiceThatStandsInTwoAreas) {
    Machine machine;
    machine.cpu("TC1C", 40).memory("TC1C", 40).memory("TM0P", 70).check();
    EXPECT_EQ(averagesOf(machine), "50 | 50°C | 40°C");
}

TEST(CheckCycle, CutsThePublishedAverageTowardZeroAndRoundsItsText) {
    Machine machine;
    machine.cpu("TC1C", 40).cpu("TC2C", 41).memory("TM0P", 42).memory("TM1P", 43.75).check();
    EXPECT_EQ(averagesOf(machine), "41 | 42°C | 40°C") << "41.6875 and 40.5";
}

TEST(CheckCycle, HasAveragesOfZeroWithoutSensors) {
    Machine machine;
    machine.averages.currentAvgTmp = 77;
    machine.logging().alerting(50, -1).check();
    EXPECT_EQ(averagesOf(machine), "0 | N/A | N/A");
    EXPECT_EQ(machine.log.lines.front(), "2024-03-05,14:07:09,0,0");
    EXPECT_EQ(machine.alerts.posted, (Alerts{{0, RecordedAlert::forAverage}}));
}

TEST(CheckCycle, NeverWritesTheAmbientText) {
    Machine machine;
    machine.averages.ambientTempAsString = "as before";
    machine.cpu("TC1C", 40).check();
    EXPECT_EQ(machine.averages.ambientTempAsString.get(), "as before");
}

TEST(CheckCycle, AnnouncesTheAveragesOnEveryCheck) {
    Machine machine;
    machine.cpu("TC1C", 40);
    Calls told;
    Averages& averages = machine.averages;
    const Observation number = averages.currentAvgTmp.observe([&] { told.emplace_back("number"); });
    const Observation all =
        averages.avgTempAsString.observe([&] { told.push_back(averages.avgTempAsString); });
    const Observation cpu = averages.avgCPUTempAsString.observe([&] { told.emplace_back("CPU"); });
    machine.check().check();
    EXPECT_EQ(told, (Calls{"number", "40°C", "CPU", "number", "40°C", "CPU"}));
}

TEST(CheckCycle, SkipsAnInvalidSensorThatIsNotAGPU) {
    for (const double celsius : {0.0, -7.0, 120.0}) {
        Machine machine;
        machine.cpu("TC1C", 40).cpu("TC2C", 50).logging().alerting(-20, 100).check();
        machine.alerts.posted.clear();
        machine.log.lines.clear();
        machine.temperature("TC1C", 30).temperature("TC2C", celsius).check();
        EXPECT_EQ(machine.cell("TC2C").objectValue(), 50.0F);
        EXPECT_EQ(averagesOf(machine), "30 | 30°C | 30°C");
        EXPECT_EQ(machine.log.lines.front(), "2024-03-05,14:07:09,ALERT:30,30,30");
        EXPECT_EQ(machine.alerts.posted.size(), 1U);
    }
}

TEST(CheckCycle, KeepsAnInvalidGPUSensor) {
    Machine machine;
    machine.cpu("TC1C", 40).gpu("TG0D", 55).logging().check();
    machine.log.lines.clear();
    machine.temperature("TG0D", 0).check();
    EXPECT_EQ(machine.cell("TG0D").objectValue(), 0.0F);
    EXPECT_EQ(machine.cell("TG0D").maxUsedValue(), 55.0F);
    EXPECT_EQ(averagesOf(machine), "40 | 40°C | 40°C");
    EXPECT_EQ(machine.log.lines.front(), "2024-03-05,14:07:09,40,N/A,40,40");
}

TEST(CheckCycle, CountsAnInvalidGPUSensorOfTheCPUAreaForTheCPUAverage) {
    Machine machine;
    machine.cpu("TC1C", 40).cpu("TG0D", 0);
    machine.lists.gpuSensorNames.append("TG0D");
    machine.check();
    EXPECT_EQ(averagesOf(machine), "40 | 40°C | 20°C");
}

TEST(CheckCycle, TakesGPUSensorsFromTheCacheWhileTheGPUsChangeOver) {
    Machine machine;
    machine.cpu("TC1C", 40).gpu("TG0D", 60).check();
    machine.gpuState.isOkToCheckGPUSensors = false;
    machine.temperature("TC1C", 50).temperature("TG0D", 110).check();
    EXPECT_EQ(machine.cell("TC1C").objectValue(), 50.0F);
    EXPECT_EQ(machine.cell("TG0D").objectValue(), 60.0F);
    EXPECT_EQ(averagesOf(machine), "55 | 55°C | 50°C");
    machine.gpuState.isOkToCheckGPUSensors = true;
    machine.check();
    EXPECT_EQ(machine.cell("TG0D").objectValue(), 110.0F);
}

TEST(CheckCycle, ReadsAGPUSensorOnceThatWasNeverReadWhileTheGPUsChangeOver) {
    Machine machine;
    machine.gpu("TG0D", 60);
    machine.gpuState.isOkToCheckGPUSensors = false;
    machine.check();
    machine.temperature("TG0D", 70).check();
    EXPECT_EQ(machine.cell("TG0D").objectValue(), 60.0F);
    EXPECT_EQ(machine.smc.reads, 1);
}

TEST(CheckCycle, KeepsAnInvalidGPUSensorFromTheCache) {
    Machine machine;
    machine.gpu("TG0D", 0).logging().check();
    machine.gpuState.isOkToCheckGPUSensors = false;
    machine.temperature("TG0D", 50).check();
    EXPECT_EQ(machine.log.lines.back(), "2024-03-05,14:07:09,N/A,0,0");
}

TEST(CheckCycle, RaisesTheMaximumOfEachCellOnly) {
    Machine machine;
    machine.cpu("TC1C", 70).cpu("TC2C", 30).check();
    machine.temperature("TC1C", 40).temperature("TC2C", 45).check();
    EXPECT_EQ(machine.cell("TC1C").objectValue(), 40.0F);
    EXPECT_EQ(machine.cell("TC1C").maxUsedValue(), 70.0F);
    EXPECT_EQ(machine.cell("TC2C").maxUsedValue(), 45.0F);
}

TEST(CheckCycle, CountsASensorWithoutACell) {
    Machine machine;
    machine.cpu("TC1C", 40).cpu("TC2C", 50);
    machine.lists.sensorNameToCustomCellMap.erase("TC1C");
    machine.check();
    EXPECT_EQ(averagesOf(machine), "45 | 45°C | 45°C");
    EXPECT_EQ(machine.lists.sensorNameToCustomCellMap.count("TC1C"), 0U);
}

TEST(CheckCycle, FollowsTheListsAsTheyChange) {
    Machine machine;
    machine.cpu("TC1C", 40).memory("TM0P", 60).check();
    EXPECT_EQ(averagesOf(machine), "50 | 50°C | 40°C");
    machine.lists.cpuSensorNames = {"TM0P"};
    machine.lists.validSensorNames = {"TM0P", "TM0P"};
    machine.lists.sensorNameToCustomCellMap = {{"TM0P", {}}};
    machine.temperature("TM0P", 30).check();
    EXPECT_EQ(averagesOf(machine), "30 | 30°C | 30°C");
    EXPECT_EQ(machine.cell("TM0P").maxUsedValue(), 30.0F);
}

TEST(CheckCycle, FollowsAKeyThatEntersOrLeavesAnAreaBetweenTwoChecks) {
    Machine machine;
    machine.memory("TM0P", 60).memory("TG0D", 40).check();
    EXPECT_EQ(averagesOf(machine), "50 | 50°C | N/A");
    machine.lists.cpuSensorNames.append("TM0P");
    machine.check();
    EXPECT_EQ(averagesOf(machine), "50 | 50°C | 60°C");
    machine.lists.cpuSensorNames.assign({"TG0D"});
    machine.lists.gpuSensorNames.append("TG0D");
    machine.temperature("TG0D", 0).check();
    EXPECT_EQ(averagesOf(machine), "60 | 60°C | N/A");
    EXPECT_EQ(machine.cell("TG0D").objectValue(), 0.0F);
    machine.lists.gpuSensorNames.clear();
    machine.temperature("TG0D", 130).check();
    EXPECT_EQ(machine.cell("TG0D").objectValue(), 0.0F) << "invalid, and no GPU any more";
}

TEST(CheckCycle, FollowsListsThatAreReplacedByOthersOfTheSameLength) {
    Machine machine;
    machine.cpu("TC1C", 40).temperature("TC2C", 70).check();
    SensorLists others;
    others.cpuSensorNames = others.validSensorNames = {"TC2C"};
    machine.lists.cpuSensorNames = std::move(others.cpuSensorNames);
    machine.lists.validSensorNames = std::move(others.validSensorNames);
    machine.check();
    EXPECT_EQ(averagesOf(machine), "70 | 70°C | 70°C");
}

TEST(CheckCycle, AlertsStrictlyAboveTheLimitOnly) {
    struct Case {
        double celsius;
        Alerts alerts;
    };
    for (const Case& c : {Case{79.75, {}}, Case{80, {}}, Case{80.25, {{80.25, "Core"}}}}) {
        Machine machine;
        machine.cpu("TC1C", c.celsius).alerting(80, 100);
        machine.lists.customSensorsToReadableNamesMap["TC1C"] = "Core";
        machine.check();
        EXPECT_EQ(machine.alerts.posted, c.alerts);
    }
}

TEST(CheckCycle, AlertsForEverySensorInOrderAndForTheAverageAfterThem) {
    Machine machine;
    machine.memory("TM0P", 91).cpu("TC1C", 92).gpu("TG0D", 123).cpu("TC2C", 40).alerting(90, 70);
    auto& names = machine.lists.customSensorsToReadableNamesMap;
    names["TM0P"] = "M";
    names["TC1C"] = "C";
    names["TG0D"] = "G";
    machine.check();
    EXPECT_EQ(machine.alerts.posted,
              (Alerts{{92, "C"}, {123, "G"}, {91, "M"}, {(92.0 + 40 + 91) / 3, RecordedAlert::forAverage}}));
}

TEST(CheckCycle, RaisesNoAlertWhileAlertsAreOff) {
    Machine machine;
    machine.cpu("TC1C", 95).alerting(80, 70);
    machine.preferences.showAlerts = false;
    machine.check();
    EXPECT_EQ(machine.alerts.posted, Alerts{});
}

TEST(CheckCycle, ComparesCelsiusWithTheLimitsWhateverTheUnitIs) {
    Machine machine;
    machine.cpu("TC1C", 70).fahrenheit().alerting(80, 80).check();
    EXPECT_EQ(machine.alerts.posted, Alerts{}) << "70 degrees Celsius are 158 degrees Fahrenheit";
    EXPECT_EQ(averagesOf(machine), "70 | 158°F | 158°F");
}

TEST(CheckCycle, RefreshesTheFansWhateverIsLogged) {
    Machine machine;
    machine.fan(1800, 1200, 6000).check();
    EXPECT_EQ(machine.fans.avgRPM, 1800);
}

TEST(CheckCycle, ReadsTheDrivesOnTheCheckQueueOnly) {
    Machine machine;
    machine.drive(38);
    machine.cycle.checkTimerFired();
    EXPECT_EQ(machine.drives.readings, 0);
    EXPECT_EQ(machine.display.calls, Calls{});
    machine.dispatch.run();
    EXPECT_EQ(machine.drives.readings, 1);
    EXPECT_EQ(machine.display.calls, (Calls{"reloadData", "updateStatusItem"}));
}

TEST(CheckCycle, AsksForTheDrivesWhenTheirTurnComes) {
    Machine machine;
    machine.drive(38);
    machine.cycle.checkTimerFired();
    machine.preferences.checkDriveTemps = false;
    machine.dispatch.run();
    EXPECT_EQ(machine.drives.readings, 0);
    machine.cycle.checkTimerFired();
    machine.preferences.checkDriveTemps = true;
    machine.dispatch.run();
    EXPECT_EQ(machine.drives.readings, 1);
}

TEST(CheckCycle, RefreshesTheDisplayWithoutDrivesToo) {
    Machine machine;
    machine.check();
    EXPECT_EQ(machine.drives.readings, 0);
    EXPECT_EQ(machine.display.calls, (Calls{"reloadData", "updateStatusItem"}));
}

TEST(CheckCycle, WaitsForTheMainThreadToRefreshTheDisplay) {
    Machine machine;
    machine.dispatch.hold("main");
    try {
        machine.check();
        FAIL() << "the check queue did not wait";
    } catch (const std::logic_error& error) {
        EXPECT_STREQ(error.what(), "deadlock: waiting for main, which is held");
    }
}

TEST(CheckCycle, NeverWaitsForTheCheckQueue) {
    Machine machine;
    machine.cpu("TC1C", 40).drive(38).logging();
    machine.dispatch.hold("check");
    EXPECT_NO_THROW(machine.check().check());
    EXPECT_EQ(machine.dispatch.pending("check"), 2U);
    EXPECT_EQ(machine.display.calls, Calls{});
    machine.dispatch.release("check");
    machine.dispatch.run();
    EXPECT_EQ(machine.drives.readings, 2);
    EXPECT_EQ(machine.display.calls.size(), 4U);
}

TEST(CheckCycle, RunsWithoutAnyOutput) {
    Machine machine;
    machine.cpu("TC1C", 95).fan(1800, 1200, 6000).drive(38).logging().alerting(80, 70);
    CheckCycle cycle(machine.parts({}));
    cycle.checkTimerFired();
    EXPECT_EQ(machine.dispatch.pending("check"), 0U);
    EXPECT_EQ(averagesOf(machine), "95 | 95°C | 95°C");
    EXPECT_EQ(machine.fans.avgRPM, 1800);
    EXPECT_EQ(machine.cell("TC1C").maxUsedValue(), 95.0F);
    cycle.resetMaxTempsClicked();
    EXPECT_EQ(machine.cell("TC1C").maxUsedValue(), 0.0F);
}

TEST(CheckCycle, PutsNothingOnTheCheckQueueWhenThereIsNothingToDoThere) {
    struct Case {
        const char* what;
        bool hasDisplay, checksDrives, isLogging;
        std::size_t blocks;
    };
    for (const Case& c : {Case{"nothing", false, false, false, 0}, Case{"display", true, false, false, 1},
                          Case{"drives", false, true, false, 1}, Case{"log", false, false, true, 1}}) {
        Machine machine;
        machine.preferences.checkDriveTemps = c.checksDrives;
        machine.preferences.logToFile = c.isLogging;
        CheckCycle cycle(machine.parts(
            {&machine.log, &machine.alerts, c.hasDisplay ? &machine.display : nullptr, &machine.drives}));
        cycle.checkTimerFired();
        EXPECT_EQ(machine.dispatch.pending("check"), c.blocks) << c.what;
        EXPECT_NO_THROW(machine.dispatch.run());
    }
}

TEST(CheckCycle, ClearsTheMaximaAndHasTheTableRedrawn) {
    Machine machine;
    machine.cpu("TC1C", 70).memory("TM0P", 50).check();
    machine.lists.sensorNameToCustomCellMap["SERIAL1"].setObjectValue(38.0F);
    machine.display.calls.clear();
    machine.cycle.resetMaxTempsClicked();
    for (const auto& [name, cell] : machine.lists.sensorNameToCustomCellMap)
        EXPECT_EQ(cell.maxUsedValue(), 0.0F) << name;
    EXPECT_EQ(machine.cell("TC1C").objectValue(), 70.0F);
    EXPECT_EQ(machine.display.calls, Calls{"setNeedsDisplay"});
    machine.temperature("TC1C", 45).check();
    EXPECT_EQ(machine.cell("TC1C").maxUsedValue(), 45.0F);
}

TEST(CheckCycle, SurvivesACheckWithinACheck) {
    Machine machine;
    machine.cpu("TC1C", 40).logging().check();
    machine.log.lines.clear();
    bool isInside = false;
    const Observation again = machine.averages.currentAvgTmp.observe([&] {
        if (std::exchange(isInside, true)) return;
        machine.temperature("TC1C", 70);
        machine.cycle.checkTimerFired();
    });
    machine.check();
    EXPECT_EQ(machine.log.lines, (Calls{"2024-03-05,14:07:09,70,70,70", "2024-03-05,14:07:09,40,40,40",
                                        "2024-03-05,14:07:09,70,70,70", "2024-03-05,14:07:09,40,40,40"}));
}

}  // namespace
}  // namespace calorivo
