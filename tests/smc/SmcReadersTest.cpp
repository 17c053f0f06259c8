#include "smc/SmcReaders.h"

#include "support/FakeSmc.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace calorivo {
namespace {

using test::FakeSmc;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(SmcKeyCount, IsTheNumberUnderItsKey) {
    FakeSmc smc;
    smc.set("#KEY", "ui32", {0x00, 0x00, 0x01, 0x5a});
    EXPECT_EQ(smcKeyCount(), 346);
    EXPECT_THAT(smc.requests, ElementsAre("9 #KEY", "5 #KEY"));
}

TEST(SmcKeyCount, TakesAnySizeAndType) {
    FakeSmc smc;
    smc.set("#KEY", "hex_", {0x01, 0x02});
    EXPECT_EQ(smcKeyCount(), 258);
}

TEST(SmcKeyCount, IsZeroWithoutData) {
    FakeSmc smc;
    EXPECT_EQ(smcKeyCount(), 0);
    smc.set("#KEY", "ui32", {});
    EXPECT_EQ(smcKeyCount(), 0);
    smc.set("#KEY", "ui32", {0, 0, 0, 9}).fail("#KEY");
    EXPECT_EQ(smcKeyCount(), 0);
}

TEST(SmcKeyCount, IsNegativeWhenTheHighestBitIsSet) {
    FakeSmc smc;
    smc.set("#KEY", "ui32", {0xff, 0xff, 0xff, 0xff});
    EXPECT_EQ(smcKeyCount(), -1);
}

TEST(SmcTemperature, DecodesDegreesCelsius) {
    FakeSmc smc;
    smc.set("TC0P", "sp78", {0x32, 0x40});
    EXPECT_EQ(smcTemperature("TC0P"), 50.25);
    smc.set("TC0P", "sp78", {0xf6, 0x00});
    EXPECT_EQ(smcTemperature("TC0P"), -10.0);
}

TEST(SmcTemperature, TakesTheLowByteAsSigned) {
    FakeSmc smc;
    smc.set("TC0P", "sp78", {0x32, 0x80});
    EXPECT_EQ(smcTemperature("TC0P"), 49.5);
}

TEST(SmcTemperature, ReadsOnlyTheFirstFourCharactersOfItsKey) {
    FakeSmc smc;
    smc.set("TC0P", "sp78", {0x32, 0x00});
    EXPECT_EQ(smcTemperature("TC0P and more"), 50.0);
}

TEST(SmcTemperature, TakesTheFirstTwoBytesWhateverTheSize) {
    FakeSmc smc;
    smc.set("TC0P", "sp78", {0x29, 0x00, 0x77});
    EXPECT_EQ(smcTemperature("TC0P"), 41.0);
    smc.set("TC0P", "sp78", {0x29});
    EXPECT_EQ(smcTemperature("TC0P"), 41.0);
}

TEST(SmcTemperature, IsZeroWithoutAValueOfItsType) {
    FakeSmc smc;
    smc.set("TW0P", "fpe2", {0x32, 0x00}).set("TN0P", "sp78", {}).set("TF0P", "sp78", {0x32, 0x00});
    smc.set("TU0P", "SP78", {0x32, 0x00}).fail("TF0P");
    for (const char* key : {"TW0P", "TN0P", "TF0P", "TU0P", "none", "", "T"})
        EXPECT_EQ(smcTemperature(key), 0.0) << key;
}

TEST(SmcFanCount, IsTheByteUnderItsKey) {
    FakeSmc smc;
    smc.set("FNum", "ui8 ", {0x03, 0x09});
    EXPECT_EQ(smcFanCount(), 3);
}

TEST(SmcFanCount, TakesTheByteAsSigned) {
    FakeSmc smc;
    smc.set("FNum", "ui8 ", {0x7f});
    EXPECT_EQ(smcFanCount(), 127);
    smc.set("FNum", "ui8 ", {0xff});
    EXPECT_EQ(smcFanCount(), -1);
}

TEST(SmcFanCount, IsZeroWithoutAValueOfItsType) {
    FakeSmc smc;
    EXPECT_EQ(smcFanCount(), 0);
    smc.set("FNum", "ui16", {0x02, 0x02});
    EXPECT_EQ(smcFanCount(), 0);
    smc.set("FNum", "ui8 ", {});
    EXPECT_EQ(smcFanCount(), 0);
    smc.set("FNum", "ui8 ", {0x02}).fail("FNum");
    EXPECT_EQ(smcFanCount(), 0);
}

TEST(SmcFanSpeed, IsTruncatedToWholeRevolutions) {
    FakeSmc smc;
    smc.set("F0Ac", "fpe2", {0x1f, 0x43});
    EXPECT_EQ(smcFanSpeed("F0Ac"), 2000);
    smc.set("F0Ac", "fpe2", {0x02, 0x0c, 0xa0});
    EXPECT_EQ(smcFanSpeed("F0Ac"), 9000);
    smc.set("F0Ac", "fpe2", {0x00, 0x00});
    EXPECT_EQ(smcFanSpeed("F0Ac"), 0);
}

TEST(SmcFanSpeed, RepairsOnlyALeadingByteOf80) {
    FakeSmc smc;
    smc.set("F0Ac", "fpe2", {0x80, 0x28});
    EXPECT_EQ(smcFanSpeed("F0Ac"), 8202);
    smc.set("F0Ac", "fpe2", {0xc0, 0x00});
    EXPECT_EQ(smcFanSpeed("F0Ac"), -4096);
}

TEST(SmcFanSpeed, IsMinusOneWithoutAValueOfItsType) {
    FakeSmc smc;
    smc.set("F0Ac", "sp78", {0x1f, 0x40}).set("F1Ac", "fpe2", {}).set("F2Ac", "fpe2", {0x1f, 0x40});
    smc.set("F3Ac", "FPE2", {0x1f, 0x40}).fail("F2Ac");
    for (const char* key : {"F0Ac", "F1Ac", "F2Ac", "F3Ac", "none", ""})
        EXPECT_EQ(smcFanSpeed(key), -1) << key;
}

TEST(SmcFanSpeed, IsMinusOneForALongValueThatIsNoSpeed) {
    FakeSmc smc;
    smc.set("F0Ac", "fpe2", std::vector<std::uint8_t>(32, 0x7f));
    EXPECT_EQ(smcFanSpeed("F0Ac"), -1);
    smc.set("F0Ac", "fpe2", std::vector<std::uint8_t>(32, 0x90));
    EXPECT_EQ(smcFanSpeed("F0Ac"), -1);
    std::vector<std::uint8_t> endless(40, 0x80);
    endless[0] = 0x7f;
    smc.set("F0Ac", "fpe2", endless);
    EXPECT_EQ(smcFanSpeed("F0Ac"), -1);
}

std::vector<std::uint8_t> bytesSetFor(int rpm) {
    FakeSmc smc;
    smc.set("F0Mn", "fpe2", {0x12, 0x34});
    smcSetFanSpeed("F0Mn", rpm);
    if (smc.writes.size() != 1) return {};
    const SMCKeyData& record = smc.writes[0];
    if (record.key != 0x46304d6e || record.keyInfo.dataSize != 2) return {};
    if (std::any_of(record.bytes.begin() + 2, record.bytes.end(), [](auto byte) { return byte != 0; }))
        return {};
    return {record.bytes[0], record.bytes[1]};
}

TEST(SmcSetFanSpeed, EncodesTwoFractionBits) {
    EXPECT_THAT(bytesSetFor(2000), ElementsAre(0x1f, 0x40));
    EXPECT_THAT(bytesSetFor(1), ElementsAre(0x00, 0x04));
    EXPECT_THAT(bytesSetFor(0), ElementsAre(0x00, 0x00));
    EXPECT_THAT(bytesSetFor(16383), ElementsAre(0xff, 0xfc));
}

TEST(SmcSetFanSpeed, DividesANegativeSpeedTowardZero) {
    EXPECT_THAT(bytesSetFor(-1), ElementsAre(0x00, 0xfc));
    EXPECT_THAT(bytesSetFor(-100), ElementsAre(0xff, 0x70));
}

TEST(SmcSetFanSpeed, WrapsWhatDoesNotFit) {
    EXPECT_THAT(bytesSetFor(0x40000001), ElementsAre(0x00, 0x04));
    EXPECT_THAT(bytesSetFor(20000), ElementsAre(0x38, 0x80));
}

TEST(SmcSetFanSpeed, WritesNothingOverAValueOfAnotherSize) {
    FakeSmc smc;
    smc.set("F0Mn", "ui8 ", {0x12});
    smcSetFanSpeed("F0Mn", 2000);
    EXPECT_THAT(smc.writes, IsEmpty());
}

}  // namespace
}  // namespace calorivo
