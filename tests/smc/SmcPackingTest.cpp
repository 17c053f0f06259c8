#include "smc/SmcClient.h"

#include <gtest/gtest.h>

namespace calorivo {
namespace {

TEST(SmcKeyFromString, PutsTheFirstCharacterIntoTheMostSignificantByte) {
    struct Row {
        std::string_view text;
        int size;
        int base;
        std::uint32_t packed;
    };
    const std::array rows{
        Row{"TC0P", 4, 16, 0x54433050},
        Row{"TC0P", 4, 10, 0x54433050},
        Row{"#KEY", 4, 16, 0x234b4559},
        Row{"ui8 ", 4, 10, 0x75693820},
        Row{"TC0P", 2, 16, 0x5443},
        Row{"TC0P", 1, 10, 0x54},
        Row{"TC0P", 0, 16, 0},
        Row{"TC0P", -3, 16, 0},
        Row{"TC", 4, 16, 0x54430000},
        Row{"", 4, 16, 0},
        Row{"xxTC0P", 6, 16, 0x54433050},
        Row{"TC0P", 2147483647, 16, 0},
        // With base 16 characters are signed and borrow from those before them.
        Row{"\x01\xff", 2, 16, 0x00ff},
        Row{"\x01\xff", 2, 10, 0x01ff},
        Row{"\xff", 1, 16, 0xffffffff},
        Row{"\xff", 1, 8, 0xff},
        Row{"\x80\x80\x80\x80", 4, 16, 0x7f7f7f80},
        Row{"\x80\x80\x80\x80", 4, 10, 0x80808080},
    };
    for (const Row& row : rows)
        EXPECT_EQ(smcKeyFromString(row.text, row.size, row.base), row.packed)
            << row.text << ' ' << row.size << ' ' << row.base;
}

TEST(SmcKeyToString, UnpacksFourCharactersUpToANul) {
    EXPECT_EQ(smcKeyToString(0x54433050), "TC0P");
    EXPECT_EQ(smcKeyToString(0x75693820), "ui8 ");
    EXPECT_EQ(smcKeyToString(0xfe2573ff), "\xfe%s\xff");
    EXPECT_EQ(smcKeyToString(0x54430050), "TC");
    EXPECT_EQ(smcKeyToString(0), "");
}

TEST(SmcValue, ComparesItsTypeAsFourCharacters) {
    const SmcValue value{{"FNum"}, 1, {"ui8 "}, {}};
    EXPECT_TRUE(value.hasType("ui8 "));
    EXPECT_FALSE(value.hasType("ui8"));
    EXPECT_FALSE(value.hasType("ui16"));
    EXPECT_FALSE(SmcValue{}.hasType(""));
}

TEST(SmcValue, EndsItsTextsAtTheirRoom) {
    const SmcValue value{{'T', 'C', '0', 'P', '!'}, 1, {'a', 'b', 'c', 'd', 'e'}, {}};
    EXPECT_EQ(value.keyText(), "TC0P!");
    EXPECT_EQ(value.typeText(), "abcde");
}

}  // namespace
}  // namespace calorivo
