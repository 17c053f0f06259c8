#include "platform/linux/AtaCommand.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

namespace calorivo {
namespace {

using Bytes = std::array<std::uint8_t, 16>;

TEST(AtaCommand, GoesIntoAPassThroughByteByByte) {
    EXPECT_EQ(passThroughOf(ataIdentifyDevice),
              (Bytes{0x85, 0x08, 0x0E, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0, 0xEC, 0}));
    EXPECT_EQ(passThroughOf(ataSmartReadData),
              (Bytes{0x85, 0x08, 0x0E, 0, 0xD0, 0, 1, 0, 0, 0, 0x4F, 0, 0xC2, 0, 0xB0, 0}));
    EXPECT_EQ(passThroughOf(ataSmartReturnStatus),
              (Bytes{0x85, 0x06, 0x20, 0, 0xDA, 0, 0, 0, 0, 0, 0x4F, 0, 0xC2, 0, 0xB0, 0}));
    EXPECT_EQ(passThroughOf(ataCheckPowerMode),
              (Bytes{0x85, 0x06, 0x20, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xE5, 0}));
}

TEST(AtaCommand, IsAnsweredInADescriptorOfTheSenseData) {
    const std::vector<std::uint8_t> sense{0x72, 0x01, 0x00, 0x1D, 0, 0, 0, 14, 9, 12,   0,
                                          0x11, 0,    0x80, 0,    1, 0, 2, 0,  3, 0x40, 0x50};
    const AtaRegisters expected{0x11, 0x80, 1, 2, 3, 0x40, 0x50};
    EXPECT_EQ(registersInSense(sense), expected);
}

TEST(AtaCommand, IsAnsweredInALaterDescriptorToo) {
    const std::vector<std::uint8_t> sense{0x73, 0,  0, 0, 0, 0,    0, 20, 0x02, 4,    0, 0,    0, 0,
                                          9,    12, 0, 0, 0, 0xFF, 0, 0,  0,    0x4F, 0, 0xC2, 0, 0x50};
    const AtaRegisters expected{0, 0xFF, 0, 0x4F, 0xC2, 0, 0x50};
    EXPECT_EQ(registersInSense(sense), expected);
}

TEST(AtaCommand, IsAnsweredInSenseDataOfTheFixedFormat) {
    const std::vector<std::uint8_t> sense{0xF0, 0, 0, 0x04, 0x51, 0xA0, 0x40, 10, 0, 7, 8, 9, 0, 0x1D};
    const AtaRegisters expected{0x04, 0x40, 7, 8, 9, 0xA0, 0x51};
    EXPECT_EQ(registersInSense(sense), expected);
}

TEST(AtaCommand, HasNoAnswerInOtherSenseData) {
    const std::vector<std::uint8_t> whole{0x72, 1, 0,    0x1D, 0, 0, 0, 14, 9, 12, 0,
                                          0,    0, 0xFF, 0,    0, 0, 0, 0,  0, 0,  0x50};
    for (std::size_t size = 0; size < whole.size(); ++size)
        EXPECT_EQ(registersInSense(std::span(whole).first(size)), std::nullopt) << size;
    EXPECT_NE(registersInSense(whole), std::nullopt);
    EXPECT_EQ(registersInSense(std::vector<std::uint8_t>{0x72, 5, 0x20, 0, 0, 0, 0, 0}), std::nullopt);
    EXPECT_EQ(registersInSense(std::vector<std::uint8_t>(64, 0)), std::nullopt);
}

TEST(AtaCommand, HasNoAnswerInARefusalOfTheFixedFormat) {
    // Answered; then by one that does not know the command, one that was just reset, and one that gave it up.
    std::vector<std::uint8_t> sense{0x70, 0, 1, 0, 0, 0, 0, 10, 0, 0, 0, 0, 0x00, 0x1D, 0, 0, 0, 0};
    EXPECT_NE(registersInSense(sense), std::nullopt);
    for (std::size_t size = 0; size < 14; ++size)
        EXPECT_EQ(registersInSense(std::span(sense).first(size)), std::nullopt) << size;
    for (const auto& [key, code] : {std::pair{5, 0x20}, {6, 0x29}, {0xB, 0x00}}) {
        sense[2] = static_cast<std::uint8_t>(key);
        sense[12] = static_cast<std::uint8_t>(code);
        sense[13] = 0;
        EXPECT_EQ(registersInSense(sense), std::nullopt) << key;
    }
}

TEST(AtaCommand, FailsWhenTheStatusSaysErrorOrFault) {
    EXPECT_FALSE(isFailure({.status = 0x50}));
    EXPECT_TRUE(isFailure({.status = 0x51}));
    EXPECT_TRUE(isFailure({.status = 0x70}));
}

TEST(PowerMode, IsStandbyWhereReadingWouldSpinTheDriveUp) {
    std::vector<int> standby;
    for (int mode = 0; mode < 256; ++mode)
        if (isStandby({.count = static_cast<std::uint8_t>(mode)})) standby.push_back(mode);
    EXPECT_EQ(standby, (std::vector{0x00, 0x01, 0x40}));
}

}  // namespace
}  // namespace calorivo
