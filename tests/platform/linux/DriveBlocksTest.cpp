#include "platform/linux/DriveBlocks.h"

#include "support/DriveData.h"

#include <gtest/gtest.h>

namespace calorivo {
namespace {

using test::sealBlock;
using test::smartData;

/// Identify data of a drive with this rotation rate; 1 is one without moving parts.
AtaBlock driveTurningAt(std::uint16_t rate) {
    AtaBlock identify = test::identifyData("Disk", "A1");
    identify[434] = static_cast<std::uint8_t>(rate);
    identify[435] = static_cast<std::uint8_t>(rate >> 8U);
    sealBlock(identify);
    return identify;
}
const AtaBlock solidState = driveTurningAt(1);

TEST(DriveBlocks, TellADriveAsItWouldItself) {
    EXPECT_EQ(identifyBlock("SAMPLE NVME 1TB", "S42"), test::identifyData("SAMPLE NVME 1TB", "S42"));
    EXPECT_TRUE(isSmartSwitchedOn(identifyBlock("", "")));
    EXPECT_FALSE(isSmartSwitchedOn({}));
}

TEST(DriveBlocks, CutTextsThatAreTooLong) {
    EXPECT_EQ(identifyBlock(std::string(50, 'm'), std::string(30, 's')),
              test::identifyData(std::string(40, 'm'), std::string(20, 's')));
}

TEST(DriveBlocks, TellATemperatureAsAttribute194) {
    AtaBlock expected{};
    expected[2] = 194;
    expected[7] = 45;
    sealBlock(expected);
    EXPECT_EQ(temperatureBlock(45), expected);
    EXPECT_TRUE(isChecksumRight(temperatureBlock(45)));
    EXPECT_EQ(temperatureBlock(-5), temperatureBlock(0));
    EXPECT_EQ(temperatureBlock(256), temperatureBlock(0));
    EXPECT_EQ(temperatureBlock(255)[7], 255);
}

TEST(DriveBlocks, KnowARightChecksum) {
    AtaBlock data = smartData({{194, {45}}});
    EXPECT_TRUE(isChecksumRight(data));
    ++data[300];
    EXPECT_FALSE(isChecksumRight(data));
}

TEST(WearAttribute, GivesWayToTheTemperatureBehindIt) {
    EXPECT_EQ(withoutWearAttribute(solidState, smartData({{231, {97}, 97}, {194, {33}, 67}})),
              smartData({{0, {97}, 97}, {194, {33}, 67}}));
}

TEST(WearAttribute, GivesWayToTheAirTemperatureWhereThereIsNoOther) {
    EXPECT_EQ(withoutWearAttribute(solidState, smartData({{190, {31}, 69}, {231, {100}, 100}})),
              smartData({{194, {31}, 69}, {0, {100}, 100}}));
    EXPECT_EQ(withoutWearAttribute(solidState, smartData({{190, {31}, 69}, {231, {100}, 100}, {194, {33}}})),
              smartData({{190, {31}, 69}, {0, {100}, 100}, {194, {33}}}));
}

TEST(WearAttribute, IsLeftOutWhereThereIsNoTemperature) {
    EXPECT_EQ(withoutWearAttribute(solidState, smartData({{231, {90}, 90}})), smartData({{0, {90}, 90}}));
}

TEST(WearAttribute, IsATemperatureUnlessAllSpeaksForWear) {
    const AtaBlock wear = smartData({{231, {90}, 90}});
    EXPECT_EQ(withoutWearAttribute(driveTurningAt(7200), wear), wear);
    EXPECT_EQ(withoutWearAttribute(driveTurningAt(0x0101), wear), wear);
    EXPECT_EQ(withoutWearAttribute(driveTurningAt(0), wear), wear);
    const AtaBlock temperature = smartData({{231, {38}, 62}});
    EXPECT_EQ(withoutWearAttribute(solidState, temperature), temperature);
    const AtaBlock withExtremes = smartData({{231, {50, 0, 19, 0, 60}, 50}});
    EXPECT_EQ(withoutWearAttribute(solidState, withExtremes), withExtremes);
    const AtaBlock noPercentage = smartData({{231, {120}, 120}});
    EXPECT_EQ(withoutWearAttribute(solidState, noPercentage), noPercentage);
}

TEST(WearAttribute, StaysInDamagedData) {
    AtaBlock damaged = smartData({{231, {90}, 90}});
    ++damaged[400];
    EXPECT_EQ(withoutWearAttribute(solidState, damaged), damaged);
}

}  // namespace
}  // namespace calorivo
