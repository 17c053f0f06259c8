#include "ui/QZTemperatureLevelIndicatorCell.h"

#include <gtest/gtest.h>

#include <optional>
#include <utility>
#include <vector>

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

constexpr LevelRange narrow{.minValue = 20, .maxValue = 110, .warningValue = 70, .criticalValue = 95};

TEST(QZTemperatureLevelIndicatorCell, SpansAllValidTemperaturesUnlessToldOtherwise) {
    EXPECT_EQ(QZTemperatureLevelIndicatorCell().range(), (LevelRange{0, 120, 80, 100}));
    EXPECT_EQ(QZTemperatureLevelIndicatorCell(narrow).range(), narrow);
}

TEST(QZTemperatureLevelIndicatorCell, IsInTheZoneThatBeginsAtItsValue) {
    QZTemperatureLevelIndicatorCell cell(narrow);
    const std::vector<std::pair<double, LevelZone>> rows{
        {-5, LevelZone::normal},    {69.9, LevelZone::normal}, {70, LevelZone::warning},
        {94.9, LevelZone::warning}, {95, LevelZone::critical}, {200, LevelZone::critical}};
    for (const auto& [value, zone] : rows) {
        cell.setObjectValue(value);
        EXPECT_EQ(cell.zone(), zone) << value;
    }
}

TEST(QZTemperatureLevelIndicatorCell, FillsItsBarInProportion) {
    QZTemperatureLevelIndicatorCell cell(narrow);
    const std::vector<std::pair<double, double>> rows{{20, 0}, {65, 0.5}, {110, 1}, {10, 0}, {130, 1}};
    for (const auto& [value, fraction] : rows) {
        cell.setObjectValue(value);
        EXPECT_EQ(cell.filledFraction(), fraction) << value;
    }
}

TEST(QZTemperatureLevelIndicatorCell, FillsNothingOfARangeThatIsNone) {
    QZTemperatureLevelIndicatorCell cell({.minValue = 50, .maxValue = 50});
    cell.setObjectValue(60);
    EXPECT_EQ(cell.filledFraction(), 0.0);
}

TEST(QZTemperatureLevelIndicatorCell, HasNoTickUntilSomethingIsRecordedAndAfterAReset) {
    QZTemperatureLevelIndicatorCell cell;
    EXPECT_EQ(cell.tickRectangle({0, 0, 100, 10}), std::nullopt);
    cell.setObjectValue(48);
    EXPECT_NE(cell.tickRectangle({0, 0, 100, 10}), std::nullopt);
    cell.setMaxUsedValue(0);
    EXPECT_EQ(cell.tickRectangle({0, 0, 100, 10}), std::nullopt);
}

TEST(QZTemperatureLevelIndicatorCell, HasItsTickAtTheRecordedMaximum) {
    QZTemperatureLevelIndicatorCell cell(narrow);
    for (const double value : {40.0, 55.0, 50.0}) cell.setObjectValue(value);
    EXPECT_EQ(cell.tickRectangle({10.5, 3.75, 201, 12.5}), (Rectangle{111, 3, 2, 12.5}));
    EXPECT_EQ(QZTemperatureLevelIndicatorCell::tickColor, (Color{0.45, 0.45, 0.45, 1}));
}

TEST(QZTemperatureLevelIndicatorCell, PlacesItsTickInSinglePrecision) {
    QZTemperatureLevelIndicatorCell cell({.minValue = 0, .maxValue = 100});
    cell.setMaxUsedValue(70);
    // 70 / 100 in single precision is a little less than 0.7.
    EXPECT_EQ(cell.tickRectangle({0, 0, 10, 1}), (Rectangle{6, 0, 2, 1}));
}

TEST(QZTemperatureLevelIndicatorCell, HasItsTickOutsideForAMaximumBeyondItsRange) {
    QZTemperatureLevelIndicatorCell cell(narrow);
    cell.setObjectValue(220);
    EXPECT_EQ(cell.tickRectangle({0, 0, 100, 10}), (Rectangle{200, 0, 2, 10}));
}

TEST(QZTemperatureLevelIndicatorCell, HasNoTickOnARangeWithoutAnEnd) {
    QZTemperatureLevelIndicatorCell cell({.minValue = -10, .maxValue = 0});
    cell.setObjectValue(30);
    EXPECT_EQ(cell.tickRectangle({0, 0, 100, 10}), std::nullopt);
}

}  // namespace
}  // namespace calorivo
