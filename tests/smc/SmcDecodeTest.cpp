#include "smc/SmcDecode.h"

#include <gtest/gtest.h>

#include <array>
#include <vector>

namespace calorivo {
namespace {

using Bytes = std::vector<std::uint8_t>;

TEST(SmcDecode, ReadsUnsignedNumbersMostSignificantByteFirst) {
    EXPECT_EQ(smcUnsignedFromBytes(Bytes{0x05}), 5U);
    EXPECT_EQ(smcUnsignedFromBytes(Bytes{0x12, 0x34}), 0x1234U);
    EXPECT_EQ(smcUnsignedFromBytes(Bytes{0xfe, 0xdc, 0xba, 0x98}), 0xfedcba98U);
    EXPECT_EQ(smcUnsignedFromBytes(Bytes{}), 0U);
}

TEST(SmcDecode, KeepsTheLowestBytesOfNumbersThatAreTooLong) {
    EXPECT_EQ(smcUnsignedFromBytes(Bytes{0x77, 0x00, 0x00, 0x00, 0x09}), 9U);
}

TEST(SmcDecode, ReadsFanSpeeds) {
    struct Row {
        Bytes bytes;
        float rpm;
    };
    const std::array rows{
        Row{{0x1f, 0x40}, 2000},       Row{{0x00, 0x03}, 0},    Row{{0x00, 0x07}, 1},
        Row{{0x7f, 0xff}, 8191},       Row{{0x80, 0x00}, 8192}, Row{{0x80, 0x28}, 8202},
        Row{{0x02, 0x0c, 0xa0}, 9000}, Row{{0xc8}, 50},         Row{{}, 0},
    };
    for (const Row& row : rows) EXPECT_EQ(smcFpe2FromBytes(row.bytes, 2), row.rpm);
}

TEST(SmcDecode, LeavesALeadingByteAbove80Negative) {
    EXPECT_EQ(smcFpe2FromBytes(Bytes{0xc0, 0x00}, 2), -4096.0F);
    EXPECT_EQ(smcFpe2FromBytes(Bytes{0x81, 0x00}, 2), -8128.0F);
}

TEST(SmcDecode, DecodesAnyLengthUpTo32Bytes) {
    EXPECT_EQ(smcFpe2FromBytes(Bytes(32, 0x00), 2), 0.0F);
    EXPECT_GT(smcFpe2FromBytes(Bytes(32, 0x7f), 2), 0.0F);
}

TEST(SmcDecode, ReadsTemperatures) {
    EXPECT_EQ(smcSp78FromBytes(0x32, 0x00), 50.0);
    EXPECT_EQ(smcSp78FromBytes(0x32, 0x40), 50.25);
    EXPECT_EQ(smcSp78FromBytes(0xf6, 0x00), -10.0);
}

TEST(SmcDecode, TakesTheLowByteOfATemperatureAsSigned) {
    EXPECT_EQ(smcSp78FromBytes(0x32, 0x80), 49.5);
    EXPECT_EQ(smcSp78FromBytes(0x32, 0xc0), 49.75);
}

TEST(SmcDecode, DropsTheTwoLowestBitsOfATemperature) {
    EXPECT_EQ(smcSp78FromBytes(0x32, 0x03), 50.0);
    EXPECT_EQ(smcSp78FromBytes(0x32, 0x04), 50.015625);
}

TEST(SmcDecode, NeverTakesMoreBytesThanAValueHas) {
    SmcValue value;
    value.dataSize = 4000000000U;
    EXPECT_EQ(smcDataBytes(value).size(), 32U);
    value.dataSize = 3;
    EXPECT_EQ(smcDataBytes(value).size(), 3U);
}

}  // namespace
}  // namespace calorivo
