#include "platform/Format.h"

#include <gtest/gtest.h>

#include <array>
#include <cfloat>
#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>

namespace calorivo {
namespace {

__attribute__((format(printf, 1, 2))) std::string printfText(const char* pattern, ...) {
    std::array<char, 2048> text{};
    std::va_list arguments;
    va_start(arguments, pattern);
    std::vsnprintf(text.data(), text.size(), pattern, arguments);
    va_end(arguments);
    return text.data();
}

// The compiler compares pattern and value of a printf call only where the pattern is a literal.
#define EXPECT_AS_PRINTF(pattern, value) EXPECT_EQ(format(pattern, value), printfText(pattern, value))

constexpr double infinity = std::numeric_limits<double>::infinity();

TEST(Format, FillsPlaceholdersInOrder) {
    const std::string name = "Exhaust";
    EXPECT_EQ(format("%@: %d of %s, %.2f%%", name, 3, "seven", 12.345), "Exhaust: 3 of seven, 12.35%");
    EXPECT_EQ(format("%c%c%c%c", 'T', 'C', '0', 'P'), "TC0P");
    EXPECT_EQ(format("no placeholder"), "no placeholder");
    EXPECT_EQ(format(""), "");
}

TEST(Format, RoundsWholeFractionsHalfToEven) {
    struct Row {
        double number;
        const char* text;
    };
    const std::array rows{Row{-0.4, "-0"},
                          Row{-0.5, "-0"},
                          Row{0.5, "0"},
                          Row{1.5, "2"},
                          Row{2.5, "2"},
                          Row{-2.5, "-2"},
                          Row{47.5, "48"},
                          Row{46.5, "46"},
                          Row{0.49999, "0"},
                          Row{-1.5, "-2"},
                          Row{0.0, "0"},
                          Row{-0.0, "-0"},
                          Row{2147483648.5, "2147483648"},
                          Row{infinity, "inf"},
                          Row{-infinity, "-inf"}};
    for (const Row& row : rows) EXPECT_EQ(format("%.0f", row.number), row.text) << row.number;
    EXPECT_EQ(format("%.0f", 1e300), printfText("%.0f", 1e300));
    EXPECT_EQ(format("%.0f", std::nan("")), "nan");
}

TEST(Format, WritesFractionsAsPrintfDoes) {
    const std::array numbers{0.0,
                             -0.0,
                             0.25,
                             0.125,
                             -0.125,
                             1.0 / 3,
                             1e-7,
                             1e22,
                             1e300,
                             -1e300,
                             DBL_MAX,
                             DBL_MIN,
                             5e-324,
                             9.995,
                             99.95,
                             999.5,
                             0.05,
                             9007199254740991.0,
                             -9007199254740992.0,
                             9007199254740993.0,
                             4503599627370495.5,
                             infinity,
                             -infinity,
                             std::nan(""),
                             -std::nan("")};
    for (const double number : numbers) {
        EXPECT_AS_PRINTF("%f", number);
        EXPECT_AS_PRINTF("%.0f", number);
        EXPECT_AS_PRINTF("%.1f", number);
        EXPECT_AS_PRINTF("%.2f", number);
        EXPECT_AS_PRINTF("%.17f", number);
        EXPECT_AS_PRINTF("%.40f", number);
        EXPECT_AS_PRINTF("%.f", number);
        EXPECT_AS_PRINTF("%8.1f", number);
        EXPECT_AS_PRINTF("%-8.1f|", number);
        EXPECT_AS_PRINTF("%08.1f", number);
        EXPECT_AS_PRINTF("%06.0f", number);
    }
}

TEST(Format, WritesManyFractionsAsPrintfDoes) {
    std::mt19937_64 random(20);
    std::uniform_int_distribution<int> quarters(-20000, 20000);
    std::uniform_real_distribution<double> anything(-200, 200);
    for (int i = 0; i < 2000; ++i) {
        const double quarter = quarters(random) * 0.25;
        EXPECT_AS_PRINTF("%.0f", quarter);
        EXPECT_AS_PRINTF("%.1f", quarter);
        const double number = anything(random);
        EXPECT_AS_PRINTF("%.0f", number);
        EXPECT_AS_PRINTF("%.3f", number);
    }
}

TEST(Format, TakesFloatsAsDoubles) { EXPECT_EQ(format("%.1f %.0f", 2.25F, 8191.0F), "2.2 8191"); }

TEST(Format, WritesWholeNumbersAsPrintfDoes) {
    for (const int number : {0, 7, -7, 255, 12345678, INT32_MAX, INT32_MIN}) {
        EXPECT_AS_PRINTF("%d", number);
        EXPECT_AS_PRINTF("%5d", number);
        EXPECT_AS_PRINTF("%-5d|", number);
        EXPECT_AS_PRINTF("%05d", number);
        EXPECT_EQ(format("%-05d|", number), printfText("%-5d|", number));
        const auto bits = static_cast<unsigned>(number);
        EXPECT_AS_PRINTF("%u", bits);
        EXPECT_AS_PRINTF("%12u", bits);
        EXPECT_AS_PRINTF("%x", bits);
        EXPECT_AS_PRINTF("%X", bits);
        EXPECT_AS_PRINTF("%02x", bits);
        EXPECT_AS_PRINTF("%08x", bits);
        EXPECT_AS_PRINTF("%-10x|", bits);
    }
}

TEST(Format, WritesLongWholeNumbersAsPrintfDoes) {
    for (const long long number : {0LL, -1LL, 0x123456789abcLL, INT64_MAX + 0LL, INT64_MIN + 0LL}) {
        EXPECT_AS_PRINTF("%lld", number);
        const auto bits = static_cast<unsigned long long>(number);
        EXPECT_AS_PRINTF("%llu", bits);
        EXPECT_AS_PRINTF("%08llx", bits);
        EXPECT_AS_PRINTF("%llX", bits);
        const auto word = static_cast<long>(number);
        EXPECT_AS_PRINTF("%ld", word);
    }
}

TEST(Format, TakesTheLower32BitsOfAWholeNumberWithoutL) {
    EXPECT_EQ(format("%d", 0xffffffffU), "-1");
    EXPECT_EQ(format("%u", -1), "4294967295");
    EXPECT_EQ(format("%x", std::int64_t{0x123456789a}), "3456789a");
    EXPECT_EQ(format("%d", std::int64_t{0x100000005}), "5");
}

TEST(Format, WidensNarrowNumbersBySign) {
    EXPECT_EQ(format("%02x", std::uint8_t{255}), "ff");
    EXPECT_EQ(format("%02x", std::uint8_t{7}), "07");
    EXPECT_EQ(format("%02x", static_cast<signed char>(-1)), "ffffffff");
    EXPECT_EQ(format("%d %d", true, std::int8_t{-128}), "1 -128");
}

TEST(Format, WritesResultCodesAsEightDigits) {
    EXPECT_EQ(format("%08x", static_cast<std::int32_t>(0xe00002bc)), "e00002bc");
    EXPECT_EQ(format("%08x", std::int32_t{5}), "00000005");
    EXPECT_EQ(format("0x%08llx", static_cast<std::int32_t>(0xe00002bc)), "0xffffffffe00002bc");
}

TEST(Format, FillsTextsAndCharactersToTheirWidth) {
    EXPECT_EQ(format("[%-4s][%4s][%-4@]", "ab", "cd", "abcde"), "[ab  ][  cd][abcde]");
    EXPECT_EQ(format("[%3c][%-3c]", 'x', 'y'), "[  x][y  ]");
    EXPECT_EQ(format("[%-4s]", ""), "[    ]");
}

TEST(Format, LimitsWidthAndPrecision) {
    EXPECT_EQ(format("%99999999999999999999d", 1).size(), 999U);
    EXPECT_EQ(format("%.99999999999999999999f", 0.5).size(), 42U);
}

TEST(Format, WritesPercentSigns) {
    EXPECT_EQ(format("%%"), "%");
    EXPECT_EQ(format("100%% of %d%%d", 5), "100% of 5%d");
}

TEST(Format, CopiesPlaceholdersWithoutAValue) {
    EXPECT_EQ(format("%d and %@", 1), "1 and %@");
    EXPECT_EQ(format("%-4s|%08llx|%.2f"), "%-4s|%08llx|%.2f");
}

TEST(Format, IgnoresValuesWithoutAPlaceholder) { EXPECT_EQ(format("only %d", 1, "more", 2.5), "only 1"); }

TEST(Format, CopiesPlaceholdersOfAnotherKindAndKeepsTheValue) {
    EXPECT_EQ(format("%d %@", "text"), "%d text");
    EXPECT_EQ(format("%@ %d", 5), "%@ 5");
    EXPECT_EQ(format("%.1f %d", 5), "%.1f 5");
    EXPECT_EQ(format("%d %.1f", 5.5), "%d 5.5");
    EXPECT_EQ(format("%c %.1f %u %x %s", 0.5), "%c 0.5 %u %x %s");
}

TEST(Format, CopiesUnknownAndUnfinishedPlaceholders) {
    for (const char* pattern : {"%", "a%", "%-", "%08", "%08ll", "%.", "%q", "%n", "%*d", "%+d", "%\xc2\xb0"})
        EXPECT_EQ(format(pattern, 5), pattern);
    EXPECT_EQ(format(std::string_view("%\0%d", 4), 5), std::string_view("%\0"
                                                                        "5",
                                                                        3));
}

TEST(Format, CopiesTextsWithPercentSignsLiterally) {
    EXPECT_EQ(format("%@|%-6s|%d", "%n%s%d%%", "%@", 1), "%n%s%d%%|%@    |1");
    EXPECT_EQ(format("%@", std::string("nul\0in", 6)), std::string("nul\0in", 6));
}

TEST(Format, WritesANullTextAsPrintfDoes) {
    const char* text = nullptr;
    EXPECT_EQ(format("<%@>", text), "<(null)>");
}

TEST(Format, AppendsToWhatIsThere) {
    std::string out = "Row:";
    appendFormat(out, " %d", {7});
    appendFormat(out, ", %@", {"eight"});
    EXPECT_EQ(out, "Row: 7, eight");
}

TEST(ShortestText, ReadsBackAsTheSameNumber) {
    EXPECT_EQ(shortestText(0.1), "0.1");
    EXPECT_EQ(shortestText(50.25), "50.25");
    EXPECT_EQ(shortestText(-0.0), "-0");
    for (const double number : {1.0 / 3, DBL_MAX, -DBL_MIN, 5e-324, 1e22, 98.6})
        EXPECT_EQ(std::strtod(shortestText(number).c_str(), nullptr), number) << shortestText(number);
}

}  // namespace
}  // namespace calorivo
