#include "sensors/SmartInfo.h"

#include <gtest/gtest.h>

#include <string>

namespace calorivo {
namespace {

const DriveDictionary disk{" Fast Disk \t", "  SN 42\n", 37};
const DriveDictionary other{"Other", "B7", 51};

TEST(DriveDictionary, ReadsAsModelDescriptionAndTemperature) {
    EXPECT_EQ(driveModelFromDictionary(&disk), "Fast Disk");
    EXPECT_EQ(driveDescriptionFromDictionary(&disk), "Fast Disk (SN 42)");
    EXPECT_EQ(driveTemperatureFromDictionary(&disk), 37.0F);
}

TEST(DriveDictionary, ReadsAsNothingWhenThereIsNone) {
    EXPECT_EQ(driveModelFromDictionary(nullptr), std::nullopt);
    EXPECT_EQ(driveDescriptionFromDictionary(nullptr), "");
    EXPECT_EQ(driveTemperatureFromDictionary(nullptr), 0.0F);
}

TEST(DriveDictionary, IsShownAsItIsPercentSignsAndAll) {
    const DriveDictionary odd{"%@ 100%", " ", 1};
    EXPECT_EQ(driveDescriptionFromDictionary(&odd), "%@ 100% ()");
}

TEST(Trimmed, DropsWhiteSpaceAtBothEndsOnly) {
    EXPECT_EQ(trimmed(" \t\r\n\v\fa b \n"), "a b");
    EXPECT_EQ(trimmed(" \t "), "");
    EXPECT_EQ(trimmed(""), "");
}

TEST(SmartInfo, HoldsTheDrivesThatWereReadLast) {
    SmartInfo smartInfo;
    EXPECT_EQ(smartInfo.count(), 0U);
    smartInfo.assign({disk, other});
    EXPECT_EQ(smartInfo.drives(), (std::vector{disk, other}));
    EXPECT_EQ(smartInfo.drive(1), other);
    EXPECT_EQ(smartInfo.drive(2), std::nullopt);
    smartInfo.clear();
    EXPECT_EQ(smartInfo.count(), 0U);
}

TEST(SmartInfo, KnowsATemperatureByTheExactSerialNumberTheLastOneWinning) {
    SmartInfo smartInfo;
    smartInfo.assign({other, disk, {"Third", "B7", 63}});
    EXPECT_EQ(smartInfo.temperatureOfDriveWithSerial("B7"), 63);
    EXPECT_EQ(smartInfo.temperatureOfDriveWithSerial("  SN 42\n"), 37);
    EXPECT_EQ(smartInfo.temperatureOfDriveWithSerial("SN 42"), std::nullopt);
}

}  // namespace
}  // namespace calorivo
