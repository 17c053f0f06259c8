#include "platform/linux/SmcEncoding.h"

#include "smc/SmcDecode.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace calorivo {
namespace {

double decoded(const EncodedValue& value) { return smcSp78FromBytes(value.bytes[0], value.bytes[1]); }
float speed(const EncodedValue& value) {
    return smcFpe2FromBytes(std::span(value.bytes).first(value.size), 2);
}

TEST(SmcEncoding, CompensatedTemperaturesDecodeToEveryQuarterDegree) {
    for (long milli = -40000; milli <= 127000; milli += 250)
        EXPECT_EQ(decoded(encodeCompensatedSp78(milli)), static_cast<double>(milli) / 1000) << milli;
}

TEST(SmcEncoding, RoundsToTheNearestQuarter) {
    EXPECT_EQ(decoded(encodeCompensatedSp78(45124)), 45.0);
    EXPECT_EQ(decoded(encodeCompensatedSp78(45125)), 45.25);
    EXPECT_EQ(decoded(encodeCompensatedSp78(37850)), 37.75);
    EXPECT_EQ(decoded(encodeCompensatedSp78(-10130)), -10.25);
}

TEST(SmcEncoding, RoundingNeverMakesAValidTemperatureInvalid) {
    EXPECT_EQ(decoded(encodeCompensatedSp78(119990)), 119.75);
    EXPECT_EQ(decoded(encodeCompensatedSp78(120000)), 120.0);
    EXPECT_EQ(decoded(encodeCompensatedSp78(1)), 0.25);
    EXPECT_EQ(decoded(encodeCompensatedSp78(0)), 0.0);
}

TEST(SmcEncoding, KeepsTemperaturesInTheRangeOfTheType) {
    EXPECT_EQ(decoded(encodeCompensatedSp78(150000)), 127.0);
    EXPECT_EQ(decoded(encodeCompensatedSp78(-90000)), -40.0);
}

TEST(SmcEncoding, FaithfulTemperaturesAreTheControllersOwnBytes) {
    // The driver prints 250 times the upper ten bits: 0x31 0x80 is 49500.
    EXPECT_EQ(encodeFaithfulSp78(49500).bytes[0], 0x31);
    EXPECT_EQ(encodeFaithfulSp78(49500).bytes[1], 0x80);
    EXPECT_EQ(decoded(encodeFaithfulSp78(49500)), 48.5);
    EXPECT_EQ(decoded(encodeFaithfulSp78(60250)), 60.25);
    EXPECT_EQ(encodeFaithfulSp78(-127000).bytes[0], 0x81);
    EXPECT_EQ(encodeFaithfulSp78(-250).bytes[0], 0xff);
    EXPECT_EQ(encodeFaithfulSp78(-250).bytes[1], 0xc0);
}

TEST(SmcEncoding, SpeedsDecodeExactly) {
    for (long rpm = 0; rpm < 60000; ++rpm) ASSERT_EQ(speed(encodeFpe2(rpm)), static_cast<float>(rpm));
    EXPECT_EQ(encodeFpe2(8191).size, 2U);
    EXPECT_EQ(encodeFpe2(8192).size, 3U);
    EXPECT_EQ(speed(encodeFpe2(-19)), 0.0F);
    EXPECT_EQ(speed(encodeFpe2(999999999)), 500000.0F);
}

TEST(SmcEncoding, FanNamesStandAfterFourBytesAndEndWithANul) {
    const EncodedValue value = encodeFanName("Left side  ");
    EXPECT_EQ(value.size, 16U);
    EXPECT_STREQ(reinterpret_cast<const char*>(value.bytes.data()) + 4, "Left side  ");
}

TEST(SmcEncoding, LongFanNamesAreCutBetweenCharacters) {
    const std::string name = std::string(26, 'a') + "\xc3\xa9";
    const EncodedValue value = encodeFanName(name);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(value.bytes.data()) + 4), std::string(26, 'a'));
    EXPECT_LE(value.size, 32U);
    EXPECT_EQ(encodeFanName(std::string(99, 'b')).size, 32U);
}

TEST(SmcEncoding, KnowsWhatNoSensorMeasures) {
    for (const long milli : {-40000L, -134L, 0L, 119990L, 150000L})
        EXPECT_TRUE(isPlausibleTemperature(milli)) << milli;
    for (const long milli : {-127000L, -40001L, -133L, -19L, -1L, 150001L, 6280000L})
        EXPECT_FALSE(isPlausibleTemperature(milli)) << milli;
}

TEST(SmcEncoding, UnsignedNumbersAreBigEndian) {
    const EncodedValue value = encodeUnsigned(0x01020304, 4);
    EXPECT_EQ(smcUnsignedFromBytes(std::span(value.bytes).first(value.size)), 0x01020304U);
    EXPECT_EQ(encodeUnsigned(7, 1).bytes[0], 7);
}

}  // namespace
}  // namespace calorivo
