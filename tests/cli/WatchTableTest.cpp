#include "cli/WatchTable.h"

#include "cli/Engine.h"
#include "cli/InlineDispatch.h"
#include "cli/Text.h"
#include "cli/WatchStatistics.h"
#include "platform/linux/LinuxFileManager.h"
#include "smc/SmcClient.h"
#include "support/FakeSmc.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace calorivo {

void PrintTo(const WatchRow& row, std::ostream* out) {
    *out << row.name << '|' << row.key << '|' << row.first << '|' << row.second << '|' << row.third << '|'
         << static_cast<int>(row.level) << (row.isHeading ? "|heading" : "");
}

namespace {

/// A machine of two sensors and a fan, whose values a test sets before each check.
struct WatchTableTest : testing::Test {
    WatchTableTest() {
        smc.addFan(2000, 1000, 4000, "Left");
        smc.setTemperature("TC1C", 40).setTemperature("TB0T", 30).setTemperature("TG0D", 50);
        smcOpen();
        engine.discover({"calorivo"}, {}, {});
        statistics.emplace(engine);
    }
    void check(double cpu, double gpu, int rpm) {
        smc.setTemperature("TC1C", cpu).setTemperature("TG0D", gpu).setSpeed("F0Ac", rpm);
        engine.cycle.checkTimerFired();
        statistics->add();
    }

    test::FakeSmc smc;
    InlineDispatch dispatch{WallTime{}};
    LinuxFileManager files;
    Engine engine{dispatch, dispatch.mainQueue(), files, {}};
    std::optional<WatchStatistics> statistics;
};

WatchRow heading(std::string name) { return {std::move(name), {}, {}, {}, {}, Level::normal, true}; }

TEST_F(WatchTableTest, ShowsValuesNowWithTheirExtremes) {
    check(95, 0, 3000);
    check(42, 0, 3700);
    EXPECT_EQ(watchRows(engine, *statistics),
              (std::vector<WatchRow>{
                  heading("CPU"),
                  {"CPU Core ", "TC1C", "42°C", "42°C", "95°C"},
                  heading("GPU"),
                  {"GPU Diode ", "TG0D", "N/A", "", "", Level::none},
                  heading("Battery"),
                  {"Battery", "TB0T", "30°C", "30°C", "30°C"},
                  heading("Fans"),
                  {"Left", "F0Ac", "3700 RPM", "3000 RPM", "3700 RPM", Level::critical},
                  heading("Averages"),
                  {"CPU", "", "42°C", "", ""},
                  {"All sensors", "", "36°C", "", ""},
              }));
}

TEST_F(WatchTableTest, SumsUpWhatItSaw) {
    check(95, 0, 3000);
    check(42, 60, 3700);
    check(42, 70, 3700);
    EXPECT_EQ(summaryRows(engine, *statistics),
              (std::vector<WatchRow>{
                  heading("CPU"),
                  {"CPU Core ", "TC1C", "42°C", "60°C", "95°C", Level::critical},
                  heading("GPU"),
                  {"GPU Diode ", "TG0D", "60°C", "65°C", "70°C"},
                  heading("Battery"),
                  {"Battery", "TB0T", "30°C", "30°C", "30°C"},
                  heading("Fans"),
                  {"Left", "F0Ac", "3000 RPM", "3467 RPM", "3700 RPM"},
              }));
    EXPECT_EQ(statistics->checks(), 3U);
}

TEST_F(WatchTableTest, ASpeedThatCannotBeReadCountsAsNone) {
    check(40, 50, 3000);
    smc.fail("F0Ac");
    engine.cycle.checkTimerFired();
    statistics->add();
    const std::vector<WatchRow> rows = summaryRows(engine, *statistics);
    EXPECT_EQ(rows.back(), (WatchRow{"Left", "F0Ac", "3000 RPM", "3000 RPM", "3000 RPM"}));
}

DriveDetails disk(std::string serial, std::optional<std::int32_t> celsius) {
    return {"SAMPLE DISK", std::move(serial), "sda", celsius, "smart", false, true, ""};
}

TEST_F(WatchTableTest, ShowsDrivesBeforeTheSensorsOfTheirArea) {
    smc.setTemperature("TH0A", 35);
    Engine other{dispatch, dispatch.mainQueue(), files, {}};
    other.discover({"calorivo"}, {}, {});
    WatchStatistics all(other);
    other.cycle.checkTimerFired();
    all.add();
    all.addDrives({disk("A1", 48), disk("B2", {})});
    all.addDrives({disk("A1", 46), disk("B2", {})});
    const std::vector<WatchRow> rows = watchRows(other, all);
    const auto drives = std::ranges::find(rows, heading("Hard Drive"));
    ASSERT_GE(rows.end() - drives, 4);
    EXPECT_EQ(std::vector<WatchRow>(drives, drives + 4),
              (std::vector<WatchRow>{heading("Hard Drive"),
                                     {"SAMPLE DISK (A1)", "", "46°C", "46°C", "48°C"},
                                     {"SAMPLE DISK (B2)", "", "N/A", "", "", Level::none},
                                     {"SSD A", "TH0A", "35°C", "35°C", "35°C"}}));
}

TEST_F(WatchTableTest, ASensorThatIsInADriveHasNoRowBesideIt) {
    smc.setTemperature("TH0A", 35);
    Engine other{dispatch, dispatch.mainQueue(), files, {}};
    other.discover({"calorivo"}, {}, {});
    WatchStatistics all(other, [](SensorKey key) { return key.view() == "TH0A" ? "N1" : ""; });
    other.cycle.checkTimerFired();
    all.add();
    const auto areaOfDrives = [&] {
        std::vector<std::string> names;
        const std::vector<WatchRow> rows = watchRows(other, all);
        auto row = std::ranges::find(rows, heading("Hard Drive"));
        for (++row; row != rows.end() && !row->isHeading; ++row) names.push_back(row->name);
        return names;
    };
    EXPECT_EQ(areaOfDrives(), std::vector<std::string>{"SSD A"}) << "as long as the drive is not there";
    all.addDrives({disk("A1", 48)});
    EXPECT_EQ(areaOfDrives(), (std::vector<std::string>{"SAMPLE DISK (A1)", "SSD A"}));
    all.addDrives({disk("A1", 48), disk("N1", 35)});
    EXPECT_EQ(areaOfDrives(), (std::vector<std::string>{"SAMPLE DISK (A1)", "SAMPLE DISK (N1)"}));
    all.addDrives({disk("A1", 48)});
    EXPECT_EQ(areaOfDrives(), (std::vector<std::string>{"SAMPLE DISK (A1)", "SSD A"})) << "it has gone";
}

TEST_F(WatchTableTest, SaysThatADriveSleepsInsteadOfWhatItToldBefore) {
    check(40, 50, 3000);
    statistics->addDrives({disk("A1", 48)});
    DriveDetails asleep = disk("A1", 48);
    asleep.isAsleep = true;
    for (int time = 0; time < 3; ++time) statistics->addDrives({asleep});
    const std::vector<WatchRow> rows = watchRows(engine, *statistics);
    EXPECT_EQ(
        std::ranges::count(rows, WatchRow{"SAMPLE DISK (A1)", "", "asleep", "48°C", "48°C", Level::none}), 1);
    EXPECT_EQ(statistics->drives().at(0).extent.count, 1U);
}

TEST_F(WatchTableTest, SumsUpDrivesThatAreGoneToo) {
    check(40, 50, 3000);
    statistics->addDrives({disk("A1", 40), disk("B2", 80)});
    DriveDetails elsewhere = disk("A1", 50);
    elsewhere.device = "sdb";
    statistics->addDrives({elsewhere});
    const auto drivesIn = [](const std::vector<WatchRow>& rows) {
        std::vector<WatchRow> drives;
        std::ranges::copy_if(rows, std::back_inserter(drives),
                             [](const WatchRow& row) { return row.name.starts_with("SAMPLE"); });
        return drives;
    };
    EXPECT_EQ(drivesIn(watchRows(engine, *statistics)),
              (std::vector<WatchRow>{{"SAMPLE DISK (A1)", "", "50°C", "40°C", "50°C"}}));
    EXPECT_EQ(drivesIn(summaryRows(engine, *statistics)),
              (std::vector<WatchRow>{{"SAMPLE DISK (A1)", "", "40°C", "45°C", "50°C"},
                                     {"SAMPLE DISK (B2)", "", "80°C", "80°C", "80°C", Level::warning}}));
}

TEST_F(WatchTableTest, HasNoRowForADriveThatIsNotListed) {
    DriveDetails hidden = disk("A1", {});
    hidden.isListed = false;
    statistics->addDrives({hidden});
    EXPECT_TRUE(statistics->drives().empty());
}

TEST_F(WatchTableTest, TellsDrivesWithoutSerialNumbersApart) {
    DriveDetails first = disk("", 40);
    DriveDetails second = disk("", 50);
    second.device = "sdb";
    statistics->addDrives({first, second});
    statistics->addDrives({first, second});
    ASSERT_EQ(statistics->drives().size(), 2U);
    EXPECT_EQ(statistics->drives()[1].extent.minimum, 50);
    // Two that are alike in everything are still two.
    statistics->addDrives({disk("C3", 30), disk("C3", 31)});
    EXPECT_EQ(statistics->drives().size(), 4U);
}

TEST(WatchTable, LeavesOutColumnsThatFindNoRoomTheKeysFirst) {
    const std::vector<WatchRow> rows{heading("CPU"),
                                     {"CPU Core 1", "TC1C", "95°C", "42°C", "95°C", Level::critical}};
    const WatchRow titles{{}, {}, "now", "min", "max"};
    using Lines = std::vector<std::string>;
    EXPECT_EQ(tableLines(rows, titles, 80, Style(false)),
              (Lines{"                          now           min        max", "CPU",
                     "  CPU Core 1  TC1C       95°C !!       42°C       95°C"}));
    EXPECT_EQ(tableLines(rows, titles, 52, Style(false)),
              (Lines{"                    now           min        max", "CPU",
                     "  CPU Core 1       95°C !!       42°C       95°C"}));
    EXPECT_EQ(tableLines(rows, titles, 24, Style(false)),
              (Lines{"                  now   ", "CPU", "  CPU Cor…       95°C !!"}));
}

TEST(WatchTable, NeverGrowsWiderThanTheScreen) {
    const std::vector<WatchRow> rows{heading("A heading of some length"),
                                     {std::string(100, 'x'), "TC1C", "12345 RPM", "12345 RPM", "12345 RPM"}};
    for (std::size_t columns = 17; columns < 120; ++columns)
        for (const std::string& line : tableLines(rows, {{}, {}, "now", "min", "max"}, columns, Style(false)))
            EXPECT_LE(displayWidth(line), columns) << line;
}

}  // namespace
}  // namespace calorivo
