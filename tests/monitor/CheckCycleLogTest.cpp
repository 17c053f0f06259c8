#include "monitor/CheckCycle.h"

#include "support/Machine.h"

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <string>
#include <vector>

namespace calorivo {
namespace {

using test::Machine;
using test::RecordedAlert;
using Lines = std::vector<std::string>;

/// The row of one check at 14:07:09, without its date and time.
std::string fieldsOf(Machine& machine) {
    const std::string prefix = "2024-03-05,14:07:09,";
    machine.log.lines.clear();
    machine.check();
    EXPECT_FALSE(machine.log.lines.empty());
    const std::string& line = machine.log.lines.front();
    return line.compare(0, prefix.size(), prefix) == 0 ? line.substr(prefix.size()) : "no prefix: " + line;
}

TEST(CheckCycleLog, WritesSensorsAveragesAndFansInOrder) {
    Machine machine;
    machine.memory("TM0P", 30).cpu("TC1C", 40).cpu("TC2C", 50).gpu("TG0D", 60).logging();
    machine.fan(1000, 900, 3000).fan(2001, 900, 3000);
    machine.preferences.logFanSpeeds = true;
    EXPECT_EQ(fieldsOf(machine), "40,50,60,30,45,45,1000,2001,1500");
}

TEST(CheckCycleLog, WritesNothingWhileLoggingIsOff) {
    Machine machine;
    machine.cpu("TC1C", 40).fan(1800, 1200, 6000).drive(38).logging();
    machine.preferences.logFanSpeeds = true;
    machine.preferences.logToFile = false;
    machine.check();
    EXPECT_EQ(machine.log.lines, Lines{});
    EXPECT_EQ(machine.fans.avgRPM, 1800);
    EXPECT_EQ(machine.drives.readings, 1);
    EXPECT_EQ(machine.display.calls, (Lines{"reloadData", "updateStatusItem"}));
}

TEST(CheckCycleLog, WritesTheChosenColumnsOnly) {
    struct Case {
        bool temperatures, fanSpeeds;
        Lines lines;
    };
    for (const Case& c : {
             Case{false, false, {"2024-03-05,14:07:09", "2024-03-05,14:07:09"}},
             Case{true, false, {"2024-03-05,14:07:09,40,40,40", "2024-03-05,14:07:09,40,40,4038"}},
             Case{false, true, {"2024-03-05,14:07:09,1800,1800", "2024-03-05,14:07:09,1800,1800"}},
             Case{true,
                  true,
                  {"2024-03-05,14:07:09,40,40,40,1800,1800", "2024-03-05,14:07:09,40,40,40,1800,180038"}},
         }) {
        Machine machine;
        machine.cpu("TC1C", 40).fan(1800, 1200, 6000).drive(38);
        machine.preferences.logToFile = true;
        machine.preferences.logTemperatures = c.temperatures;
        machine.preferences.logFanSpeeds = c.fanSpeeds;
        machine.dispatch.hold("check");
        machine.check();
        machine.dispatch.release("check");
        machine.dispatch.run();
        EXPECT_EQ(machine.log.lines, c.lines);
        EXPECT_EQ(machine.drives.readings, 1);
    }
}

TEST(CheckCycleLog, WritesTheAverageOfTheFansAlone) {
    Machine machine;
    machine.preferences.logToFile = true;
    machine.preferences.logFanSpeeds = true;
    EXPECT_EQ(fieldsOf(machine), "0");
}

TEST(CheckCycleLog, MarksSensorsByTheirLimit) {
    struct Case {
        double celsius;
        bool showAlerts;
        const char* field;
    };
    for (const Case& c : {
             Case{79.5, true, "80"},
             Case{80, true, "80"},
             Case{80.4, true, "ALERT:80"},
             Case{80.4, false, "80"},
             Case{0, true, "N/A"},
             Case{0, false, "N/A"},
             Case{124, true, "ALERT:0"},
             Case{124, false, "N/A"},
             Case{-9, true, "N/A"},
         }) {
        Machine machine;
        machine.gpu("TG0D", c.celsius).logging().alerting(80, 110);
        machine.preferences.showAlerts = c.showAlerts;
        machine.preferences.logAlerts = !c.showAlerts;  // has no say here
        EXPECT_EQ(fieldsOf(machine).substr(0, std::string(c.field).size() + 1), std::string(c.field) + ",")
            << c.celsius;
    }
}

TEST(CheckCycleLog, MarksTheAverageByLogAlerts) {
    struct Case {
        double celsius;
        bool showAlerts, logAlerts;
        const char* fields;
        std::size_t alerts;
    };
    for (const Case& c : {
             Case{70.25, false, false, "70,70,70", 0},
             Case{70.25, false, true, "70,70,ALERT:70", 0},
             Case{70.25, true, false, "70,70,70", 1},
             Case{70.25, true, true, "70,70,ALERT:70", 1},
             Case{70, true, true, "70,70,70", 0},
         }) {
        Machine machine;
        machine.cpu("TC1C", c.celsius).logging().alerting(100, 70);
        machine.preferences.showAlerts = c.showAlerts;
        machine.preferences.logAlerts = c.logAlerts;
        EXPECT_EQ(fieldsOf(machine), c.fields);
        EXPECT_EQ(machine.alerts.posted.size(), c.alerts);
    }
}

TEST(CheckCycleLog, WritesFahrenheitAndComparesCelsius) {
    Machine machine;
    machine.cpu("TC1C", 70).cpu("TC2C", 90).gpu("TG0D", 0).drive(20).drive(0).logging().alerting(80, 79);
    machine.preferences.logAlerts = true;
    machine.fahrenheit().dispatch.hold("log");
    machine.check();
    machine.dispatch.release("log");
    machine.dispatch.run();
    EXPECT_EQ(machine.log.lines.back(), "2024-03-05,14:07:09,158,ALERT:194,N/A,176,ALERT:17668,0");
}

TEST(CheckCycleLog, WritesZeroForAveragesOfNothing) {
    Machine machine;
    machine.gpu("TG0D", 0).logging().fahrenheit();
    EXPECT_EQ(fieldsOf(machine), "N/A,0,0");
}

TEST(CheckCycleLog, WritesDrivesMarkedByShowAlertsInSinglePrecision) {
    struct Case {
        float celsius;
        bool showAlerts;
        const char* field;
    };
    for (const Case& c :
         {Case{45, true, "45"}, Case{50, true, "50"}, Case{51, true, "ALERT:51"}, Case{51, false, "51"},
          Case{0, true, "0"}, Case{150, false, "0"}, Case{150, true, "ALERT:0"}}) {
        Machine machine;
        machine.drive(c.celsius).logging().alerting(50, 100);
        machine.preferences.showAlerts = c.showAlerts;
        machine.preferences.logAlerts = !c.showAlerts;  // has no say here
        machine.check();
        EXPECT_EQ(machine.log.lines.back(), "2024-03-05,14:07:09,0,0" + std::string(c.field));
        EXPECT_EQ(machine.alerts.posted, std::vector<RecordedAlert>{});
    }
}

TEST(CheckCycleLog, GluesTheFirstDriveToTheFieldBeforeIt) {
    Machine machine;
    machine.cpu("TC1C", 40).drive(38).drive(41).logging().check();
    EXPECT_EQ(machine.log.lines.back(), "2024-03-05,14:07:09,40,40,4038,41");
}

TEST(CheckCycleLog, WritesTheRowFirstWithoutDrivesWhenTheWriterIsFaster) {
    Machine machine;
    machine.cpu("TC1C", 40).drive(38).logging();
    machine.dispatch.hold("check");
    machine.check();
    EXPECT_EQ(machine.log.lines, (Lines{"2024-03-05,14:07:09,40,40,40"}));
    machine.dispatch.release("check");
    machine.dispatch.run();
    EXPECT_EQ(machine.log.lines, (Lines{"2024-03-05,14:07:09,40,40,40", "2024-03-05,14:07:09,40,40,4038"}));
}

TEST(CheckCycleLog, WritesTheRowTwiceWithDrivesWhenTheDrivesAreFaster) {
    Machine machine;
    machine.cpu("TC1C", 40).drive(38).logging();
    machine.dispatch.hold("log");
    machine.check();
    EXPECT_EQ(machine.log.lines, Lines{});
    machine.dispatch.release("log");
    machine.dispatch.run();
    EXPECT_EQ(machine.log.lines, (Lines{"2024-03-05,14:07:09,40,40,4038", "2024-03-05,14:07:09,40,40,4038"}));
}

TEST(CheckCycleLog, WritesTheRowTwiceWithoutDrivesToo) {
    Machine machine;
    machine.cpu("TC1C", 40).logging().check();
    EXPECT_EQ(machine.log.lines, (Lines{"2024-03-05,14:07:09,40,40,40", "2024-03-05,14:07:09,40,40,40"}));
}

TEST(CheckCycleLog, HandsTheSameRowOverTwiceWithoutATimeStamp) {
    struct : CycleLog {
        void logStringIncludeDateTime(std::shared_ptr<const CSVRow> row, IncludeDateTime flag) override {
            EXPECT_EQ(flag, IncludeDateTime::no);
            rows.push_back(std::move(row));
        }
        std::vector<std::shared_ptr<const CSVRow>> rows;
    } log;
    Machine machine;
    machine.logging();
    CheckCycle cycle(machine.parts({.log = &log}));
    cycle.checkTimerFired();
    machine.dispatch.run();
    ASSERT_EQ(log.rows.size(), 2U);
    EXPECT_EQ(log.rows[0], log.rows[1]);
    cycle.checkTimerFired();
    EXPECT_NE(log.rows[2], log.rows[0]) << "a row that somebody holds is not used again";
}

TEST(CheckCycleLog, KeepsRowsApartThatAreNotWrittenYet) {
    Machine machine;
    machine.cpu("TC1C", 40).logging();
    machine.dispatch.hold("log");
    machine.check();
    machine.dispatch.advance(std::chrono::seconds(3));
    machine.temperature("TC1C", 41).check();
    machine.dispatch.release("log");
    machine.dispatch.run();
    EXPECT_EQ(machine.log.lines, (Lines{"2024-03-05,14:07:09,40,40,40", "2024-03-05,14:07:09,40,40,40",
                                        "2024-03-05,14:07:12,41,41,41", "2024-03-05,14:07:12,41,41,41"}));
}

TEST(CheckCycleLog, KeepsARowApartWhoseDrivesAreStillRead) {
    Machine machine;
    machine.cpu("TC1C", 40).drive(38).logging();
    machine.dispatch.hold("check");
    machine.check();
    machine.temperature("TC1C", 41).check();
    machine.dispatch.release("check");
    machine.dispatch.run();
    EXPECT_EQ(machine.log.lines, (Lines{"2024-03-05,14:07:09,40,40,40", "2024-03-05,14:07:09,41,41,41",
                                        "2024-03-05,14:07:09,40,40,4038", "2024-03-05,14:07:09,41,41,4138"}));
}

TEST(CheckCycleLog, RemembersForTheSecondHalfWhetherItWasLogging) {
    Machine machine;
    machine.cpu("TC1C", 40).drive(38).logging();
    machine.dispatch.hold("check");
    machine.check();
    machine.preferences.logToFile = false;
    machine.check();
    machine.preferences.logToFile = true;
    machine.dispatch.release("check");
    machine.dispatch.run();
    EXPECT_EQ(machine.log.lines, (Lines{"2024-03-05,14:07:09,40,40,40", "2024-03-05,14:07:09,40,40,4038"}));
    EXPECT_EQ(machine.drives.readings, 2);
}

TEST(CheckCycleLog, BeginsARowOfTheSameMomentWhenLoggingIsSwitchedOnInTheMiddle) {
    Machine machine;
    machine.cpu("TC1C", 40);
    const Observation switchOn = machine.averages.currentAvgTmp.observe([&] {
        machine.dispatch.advance(std::chrono::seconds(5));
        machine.logging();
    });
    machine.check();
    EXPECT_EQ(machine.log.lines.front(), "2024-03-05,14:07:09,40,40") << "the averages, without the sensor";
}

}  // namespace
}  // namespace calorivo
