#include "cli/Text.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>

namespace calorivo {
namespace {

using namespace std::string_view_literals;

TEST(Text, LeavesOutWhatATerminalWouldObey) {
    struct Row {
        std::string_view text;
        std::string_view clean;
    };
    constexpr Row rows[] = {
        {"CPU Core 1 ", "CPU Core 1 "},
        {"", ""},
        {"Left\033[2J side", "Left[2J side"},
        {"bell\a nul\0 del\x7F"sv, "bell nul del"},
        {"one\ntwo\r\nthree\tfour", "one two  three four"},
        {"csi \u009B31m", "csi 31m"},
        {"turned \u202Eback\u2066 and\u2028line", "turned back andline"},
        {"47°C ▲ 温度", "47°C ▲ 温度"},
        {"\xFF\xC3", "\uFFFD\uFFFD"},
        {"\xC0\x80 overlong", "\uFFFD\uFFFD overlong"},
        {"\xED\xA0\x80 surrogate", "\uFFFD\uFFFD\uFFFD surrogate"},
        {"\xF4\x90\x80\x80 too high", "\uFFFD\uFFFD\uFFFD\uFFFD too high"},
        {"cut \xE6\xB8", "cut \uFFFD\uFFFD"},
    };
    for (const Row& row : rows) EXPECT_EQ(cleanText(row.text), row.clean);
}

TEST(Text, KnowsTheColumnsOfATextOnATerminal) {
    EXPECT_EQ(displayWidth(""), 0U);
    EXPECT_EQ(displayWidth("CPU"), 3U);
    EXPECT_EQ(displayWidth("47°C"), 4U);
    EXPECT_EQ(displayWidth("温度"), 4U);
    EXPECT_EQ(displayWidth("e\u0301"), 1U);
    EXPECT_EQ(displayWidth("🔥"), 2U);
}

TEST(Text, IsFilledUpOrCutToItsColumns) {
    struct Row {
        std::string_view text;
        std::size_t width;
        Align align;
        std::string_view fitted;
    };
    constexpr Row rows[] = {
        {"CPU", 6, Align::left, "CPU   "},
        {"9°C", 6, Align::right, "   9°C"},
        {"CPU Core", 8, Align::left, "CPU Core"},
        {"CPU Core", 7, Align::left, "CPU Co…"},
        {"温度温度", 6, Align::left, "温度… "},
        {"温度温度", 4, Align::right, " 温…"},
        {"CPU", 1, Align::left, "…"},
        {"CPU", 0, Align::left, ""},
        {"", 2, Align::right, "  "},
    };
    for (const Row& row : rows) {
        std::string out = "|";
        appendFitted(out, row.text, row.width, row.align);
        EXPECT_EQ(out, "|" + std::string(row.fitted));
    }
}

}  // namespace
}  // namespace calorivo
