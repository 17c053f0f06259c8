#include "monitor/SmartData.h"

#include "support/DriveData.h"

#include <gtest/gtest.h>

namespace calorivo {
namespace {

using test::Attribute;
using test::smartData;

TEST(SmartData, TellsAttribute194) {
    EXPECT_EQ(temperatureInSMARTData(smartData({{1, {9}}, {194, {0x2D, 0, 0, 0, 0, 0}}})), 45);
}

TEST(SmartData, TellsAttribute231Where194IsMissing) {
    EXPECT_EQ(temperatureInSMARTData(smartData({{5, {7}}, {231, {0x26}}})), 38);
}

TEST(SmartData, TakesTheFirstOfTheTwoInTheOrderOfTheTable) {
    EXPECT_EQ(temperatureInSMARTData(smartData({{231, {91}}, {194, {33}}})), 91);
    EXPECT_EQ(temperatureInSMARTData(smartData({{194, {33}}, {231, {91}}})), 33);
    EXPECT_EQ(temperatureInSMARTData(smartData({{194, {0}}, {231, {91}}})), 0);
}

TEST(SmartData, CountsTheLowestByteOnly) {
    EXPECT_EQ(temperatureInSMARTData(smartData({{194, {0x32, 0x01, 0x14, 0x00, 0x40}}})), 50);
    EXPECT_EQ(temperatureInSMARTData(smartData({{194, {0x00, 0x32}}})), 0);
    EXPECT_EQ(temperatureInSMARTData(smartData({{194, {0xFB}}})), 251);
}

TEST(SmartData, LooksThroughThirtyEntriesAndNoFurther) {
    AtaBlock data{};
    constexpr std::size_t lastEntry = 2 + 29 * 12;
    data[lastEntry] = 194;
    data[lastEntry + 5] = 41;
    EXPECT_EQ(temperatureInSMARTData(data), 41);
    data = {};
    data[lastEntry + 12] = 194;
    data[lastEntry + 17] = 41;
    EXPECT_EQ(temperatureInSMARTData(data), std::nullopt);
}

TEST(SmartData, LooksAtIdentifiersOnly) {
    AtaBlock data{};
    data[0] = 194;  // the revision of the data
    data[1] = 231;
    for (std::size_t i = 1; i < 12; ++i) data[2 + i] = 194;  // everything else of an entry
    EXPECT_EQ(temperatureInSMARTData(data), std::nullopt);
}

TEST(SmartData, HasNoTemperatureWithoutEither) {
    EXPECT_EQ(temperatureInSMARTData(smartData({{190, {40}}, {9, {1}}})), std::nullopt);
    EXPECT_EQ(temperatureInSMARTData({}), std::nullopt);
}

}  // namespace
}  // namespace calorivo
