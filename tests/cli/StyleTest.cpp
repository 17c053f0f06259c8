#include "cli/Style.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace calorivo {
namespace {

TEST(Style, ATemperatureIsAWarningFrom80AndCriticalFrom90) {
    struct Row {
        double celsius;
        Level level;
    };
    constexpr Row rows[] = {
        {0.0, Level::none},      {-3.0, Level::none},       {0.25, Level::normal},
        {79.75, Level::normal},  {80.0, Level::warning},    {89.75, Level::warning},
        {90.0, Level::critical}, {119.75, Level::critical}, {120.0, Level::none},
    };
    for (const Row& row : rows) EXPECT_EQ(levelOf(row.celsius), row.level) << row.celsius;
}

TEST(Style, AFanIsMeasuredByItsOwnLimits) {
    FanModel fan;
    fan.maxRPM = 6000;
    fan.warningRPM = 4500;
    fan.criticalRPM = 5400;
    struct Row {
        int rpm;
        Level level;
    };
    constexpr Row rows[] = {{-1, Level::normal},
                            {4499, Level::normal},
                            {4500, Level::warning},
                            {5399, Level::warning},
                            {5400, Level::critical}};
    for (const Row& row : rows) {
        fan.actualRPM = row.rpm;
        EXPECT_EQ(levelOf(fan), row.level) << row.rpm;
    }
    fan.maxRPM = -1;
    EXPECT_EQ(levelOf(fan), Level::normal) << "without a maximum there are no limits";
}

TEST(Style, MarksTellTheLevelWithoutColour) {
    EXPECT_EQ(markOf(Level::none), "");
    EXPECT_EQ(markOf(Level::normal), "");
    EXPECT_EQ(markOf(Level::warning), "!");
    EXPECT_EQ(markOf(Level::critical), "!!");
}

TEST(Style, ColoursOnlyWhenTheyAreWanted) {
    std::string out;
    Style(false).append(out, "hot", Ink::critical);
    EXPECT_EQ(out, "hot");
    out.clear();
    Style(true).append(out, "hot", Ink::critical);
    EXPECT_EQ(out, "\033[1;31mhot\033[0m");
    out.clear();
    Style(true).append(out, "cool", Ink::plain);
    EXPECT_EQ(out, "cool");
}

TEST(Style, ColoursBelongOnATerminalThatCanAndMay) {
    using Text = std::optional<std::string>;
    struct Row {
        bool isTerminal;
        Text noColor;
        Text term;
        bool isWanted;
    };
    const Row rows[] = {
        {true, {}, "xterm", true},   {true, {}, {}, true},      {true, "", "xterm", true},
        {true, "1", "xterm", false}, {true, {}, "dumb", false}, {false, {}, "xterm", false},
    };
    for (const Row& row : rows)
        EXPECT_EQ(isColourWanted(row.isTerminal, row.noColor, row.term), row.isWanted);
}

}  // namespace
}  // namespace calorivo
