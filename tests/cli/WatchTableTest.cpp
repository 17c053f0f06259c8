#include "cli/WatchTable.h"

#include "cli/Engine.h"
#include "cli/InlineDispatch.h"
#include "cli/Text.h"
#include "cli/WatchStatistics.h"
#include "platform/linux/LinuxFileManager.h"
#include "smc/SmcClient.h"
#include "support/FakeSmc.h"

#include <gtest/gtest.h>

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
