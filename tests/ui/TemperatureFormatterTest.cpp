#include "ui/TemperatureFormatter.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

namespace calorivo {
namespace {

TEST(TemperatureFormatter, ShowsWholeDegreesInTheUsersUnit) {
    struct Row {
        std::int32_t unit;
        Value value;
        const char* text;
    };
    const std::vector<Row> rows{
        {0, 47, "47°C"},   {0, 47.9, "47°C"}, {0, -47.9, "-47°C"}, {0, true, "1°C"},  {0, 0, "0°C"},
        {1, 100, "212°F"}, {1, 37, "99°F"},   {1, 37.9, "99°F"},   {1, -40, "-40°F"}, {2, 47.9, "47"},
        {-1, 100, "100"},  {0, 120, "120°C"}, {1, 0.9, "32°F"},
    };
    for (const Row& row : rows) {
        const Property<std::int32_t> unit(row.unit);
        EXPECT_EQ(TemperatureFormatter(unit).stringForObjectValue(row.value), row.text);
    }
}

TEST(TemperatureFormatter, CountsInSinglePrecision) {
    const Property<std::int32_t> fahrenheit(1);
    // 10000000 * 1.8 + 32 has no single-precision form.
    EXPECT_EQ(TemperatureFormatter(fahrenheit).stringForObjectValue(20000001), "36000032°F");
}

TEST(TemperatureFormatter, FollowsTheUnitWhenItChanges) {
    Property<std::int32_t> unit(0);
    const TemperatureFormatter formatter(unit);
    EXPECT_EQ(formatter.stringForObjectValue(50), "50°C");
    unit = 1;
    EXPECT_EQ(formatter.stringForObjectValue(50), "122°F");
}

TEST(TemperatureFormatter, ShowsNothingButNumbers) {
    const Property<std::int32_t> unit(0);
    const TemperatureFormatter formatter(unit);
    EXPECT_EQ(formatter.stringForObjectValue("47"), std::nullopt);
    EXPECT_EQ(formatter.stringForObjectValue(Value()), std::nullopt);
    EXPECT_EQ(formatter.stringForObjectValue(Data{4, 7}), std::nullopt);
}

TEST(TemperatureFormatter, ReadsNothing) {
    Value value = 5;
    std::string error = "none";
    EXPECT_FALSE(TemperatureFormatter::getObjectValueForStringErrorDescription(value, "47°C", error));
    EXPECT_EQ(value, Value(5));
    EXPECT_EQ(error, "none");
}

}  // namespace
}  // namespace calorivo
