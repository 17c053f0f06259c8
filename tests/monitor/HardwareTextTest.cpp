#include "monitor/HardwareText.h"

#include <gtest/gtest.h>

#include <array>
#include <string_view>
#include <vector>

namespace calorivo {
namespace {

using namespace std::string_view_literals;

std::string textOf(std::string_view bytes) {
    return textFromHardware(std::vector<std::uint8_t>(bytes.begin(), bytes.end()));
}

struct Case {
    std::string_view bytes;
    std::string_view text;
};

TEST(HardwareText, EndsAtTheFirstNul) {
    EXPECT_EQ(textOf("Left\0Right"sv), "Left");
    EXPECT_EQ(textOf("\0Right"sv), "");
    EXPECT_EQ(textOf("No end"), "No end");
    EXPECT_EQ(textOf(""), "");
}

TEST(HardwareText, DropsWhiteSpaceAndLineEndsAtBothEnds) {
    for (const Case& c : {Case{"  Exhaust ", "Exhaust"}, Case{"\r\nExhaust\t\v\f\n", "Exhaust"},
                          Case{"\u00A0\u3000Exhaust\u2003\u2028", "Exhaust"}, Case{" \t\r\n ", ""}})
        EXPECT_EQ(textOf(c.bytes), c.text);
}

TEST(HardwareText, KeepsBlanksWithinTheText) {
    EXPECT_EQ(textOf("Left  Side"), "Left  Side");
    EXPECT_EQ(textOf("Left\u00A0Side"), "Left\u00A0Side");
}

TEST(HardwareText, TurnsControlCharactersAndLineEndsIntoBlanks) {
    for (const Case& c : {Case{"Left\nSide", "Left Side"}, Case{"A\x1b[31mB", "A [31mB"},
                          Case{"A\x7f\x42", "A B"}, Case{"A\u0085B", "A B"}, Case{"A\u009B31mB", "A 31mB"},
                          Case{"A\u2028B\u2029\x43", "A B C"}, Case{"\x01\x02Left\x03", "Left"}})
        EXPECT_EQ(textOf(c.bytes), c.text);
}

TEST(HardwareText, KeepsCharactersOfEveryLength) {
    EXPECT_EQ(textOf("L\u00FCfter \u98A8\u6247 \U0001F300"), "L\u00FCfter \u98A8\u6247 \U0001F300");
}

TEST(HardwareText, PutsAReplacementForEachByteThatIsNotUtf8) {
    for (const Case& c : {
             Case{"A\xFF\x42", "A\uFFFDB"},                         // never a byte of UTF-8
             Case{"A\x80\x42", "A\uFFFDB"},                         // continues nothing
             Case{"A\xC3", "A\uFFFD"},                              // cut off
             Case{"A\xC3\x42", "A\uFFFDB"},                         // not continued
             Case{"\xC0\xAF", "\uFFFD\uFFFD"},                      // longer than needed
             Case{"\xE0\x80\xAF", "\uFFFD\uFFFD\uFFFD"},            // longer than needed
             Case{"\xED\xA0\x80", "\uFFFD\uFFFD\uFFFD"},            // half of a pair
             Case{"\xF4\x90\x80\x80", "\uFFFD\uFFFD\uFFFD\uFFFD"},  // past the last character
             Case{"\xF8\x88\x80\x80\x80", "\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD"},
         })
        EXPECT_EQ(textOf(c.bytes), c.text);
}

}  // namespace
}  // namespace calorivo
