#include "monitor/AtaIdentify.h"

#include "support/DriveData.h"

#include <gtest/gtest.h>

namespace calorivo {
namespace {

using test::identifyData;
using test::putText;
using test::sealBlock;

TEST(AtaIdentify, TellsModelAndSerialNumberWithTheirBytesInOrder) {
    const AtaBlock data = identifyData("SAMPLE DISK 4000", "  WX12-0042");
    ASSERT_EQ(data[54], 'A');  // the words are stored swapped
    ASSERT_EQ(data[55], 'S');
    EXPECT_EQ(driveFromIdentifyData(data), (DriveDictionary{"SAMPLE DISK 4000", "  WX12-0042         ", 0}));
}

TEST(AtaIdentify, TrimsTheModelAndNotTheSerialNumber) {
    EXPECT_EQ(driveFromIdentifyData(identifyData("  Disk\t", " A1 ")),
              (DriveDictionary{"Disk", " A1                 ", 0}));
}

TEST(AtaIdentify, EndsFullFieldsWhereTheyEnd) {
    AtaBlock data = identifyData("1234567890123456789012345678901234567890", "ABCDEFGHIJKLMNOPQRST");
    data[40] = 'x';  // what follows the fields belongs to others
    data[41] = 'x';
    data[94] = 'y';
    data[95] = 'y';
    EXPECT_EQ(driveFromIdentifyData(data),
              (DriveDictionary{"1234567890123456789012345678901234567890", "ABCDEFGHIJKLMNOPQRST", 0}));
}

TEST(AtaIdentify, EndsATextAtItsFirstZero) {
    AtaBlock data = identifyData("Disk", "A1");
    data[54 + (2U ^ 1U)] = 0;
    data[20 + (1U ^ 1U)] = 0;
    EXPECT_EQ(driveFromIdentifyData(data), (DriveDictionary{"Di", "A", 0}));
}

TEST(AtaIdentify, KnowsNoDriveWithoutSMART) {
    AtaBlock data = identifyData("Disk", "A1");
    data[164] = 0xFE;
    EXPECT_EQ(driveFromIdentifyData(data), std::nullopt);
    data[164] = 0xFF;
    EXPECT_NE(driveFromIdentifyData(data), std::nullopt);
}

TEST(AtaIdentify, KnowsNoDriveWhoseTextsAreNotUTF8) {
    EXPECT_EQ(driveFromIdentifyData(identifyData("Disk \xff", "A1")), std::nullopt);
    EXPECT_EQ(driveFromIdentifyData(identifyData("Disk", "A\xc3")), std::nullopt);
    EXPECT_EQ(driveFromIdentifyData(identifyData("Disk \xc2\xb5", "A1"))->model, "Disk \xc2\xb5");
}

TEST(AtaIdentify, KnowsADriveWithEmptyTexts) {
    AtaBlock data{};
    data[164] = 1;
    EXPECT_EQ(driveFromIdentifyData(data), (DriveDictionary{"", "", 0}));
}

TEST(AtaIdentify, ChecksTheSumOfABlockThatHasOne) {
    AtaBlock data = identifyData("Disk", "A1");
    EXPECT_EQ(checkedIdentifyData(data), 0);
    data[100] = 3;
    EXPECT_EQ(checkedIdentifyData(data), 3);
    data[511] = static_cast<std::uint8_t>(data[511] + 252);
    EXPECT_EQ(checkedIdentifyData(data), 255);
    sealBlock(data);
    data[510] = 0xA4;
    EXPECT_EQ(checkedIdentifyData(data), 255);
}

}  // namespace
}  // namespace calorivo
