#include "ui/QZTemperatureLevelIndicatorCell.h"

#include <gtest/gtest.h>

namespace calorivo {
namespace {

TEST(QZTemperatureLevelIndicatorCell, HasRecordedNothingAtFirst) {
    const QZTemperatureLevelIndicatorCell cell;
    EXPECT_EQ(cell.objectValue(), 0.0F);
    EXPECT_EQ(cell.maxUsedValue(), 0.0F);
}

TEST(QZTemperatureLevelIndicatorCell, RaisesItsMaximumAndNeverLowersIt) {
    QZTemperatureLevelIndicatorCell cell;
    cell.setObjectValue(47.5F);
    cell.setObjectValue(61.25F);
    cell.setObjectValue(30.0F);
    EXPECT_EQ(cell.objectValue(), 30.0F);
    EXPECT_EQ(cell.maxUsedValue(), 61.25F);
}

TEST(QZTemperatureLevelIndicatorCell, DoesNotRecordValuesBelowZero) {
    QZTemperatureLevelIndicatorCell cell;
    cell.setObjectValue(-12.0F);
    EXPECT_EQ(cell.objectValue(), -12.0F);
    EXPECT_EQ(cell.maxUsedValue(), 0.0F);
}

TEST(QZTemperatureLevelIndicatorCell, StartsAnewFromAMaximumThatWasSet) {
    QZTemperatureLevelIndicatorCell cell;
    cell.setObjectValue(80.0F);
    cell.setMaxUsedValue(0.0F);
    EXPECT_EQ(cell.objectValue(), 80.0F);
    cell.setObjectValue(40.0F);
    EXPECT_EQ(cell.maxUsedValue(), 40.0F);
}

TEST(QZTemperatureLevelIndicatorCell, CopiesWithItsMaximum) {
    QZTemperatureLevelIndicatorCell cell;
    cell.setObjectValue(55.0F);
    QZTemperatureLevelIndicatorCell copy = cell;
    EXPECT_EQ(copy, cell);
    copy.setObjectValue(66.0F);
    EXPECT_EQ(cell.maxUsedValue(), 55.0F);
}

}  // namespace
}  // namespace calorivo
