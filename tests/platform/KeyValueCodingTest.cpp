#include "platform/KeyValueCoding.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <stdexcept>
#include <tuple>

namespace calorivo {
namespace {

using testing::ElementsAre;
constexpr std::int32_t lowest = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t highest = std::numeric_limits<std::int32_t>::max();
constexpr double infinity = std::numeric_limits<double>::infinity();

TEST(Value, ReadsAsEveryKind) {
    struct Row {
        Value value;
        bool flag;
        std::int32_t whole;
        double fraction;
        std::string text;
    };
    const Row rows[] = {
        {Value(), false, 0, 0, ""},
        {true, true, 1, 1, "1"},
        {false, false, 0, 0, "0"},
        {0, false, 0, 0, "0"},
        {-7, true, -7, -7, "-7"},
        {lowest, true, lowest, -2147483648.0, "-2147483648"},
        {0.0, false, 0, 0, "0"},
        {0.5, true, 0, 0.5, "0.5"},
        {-1.9, true, -1, -1.9, "-1.9"},
        {1e300, true, highest, 1e300, "1e+300"},
        {-infinity, true, lowest, -infinity, "-inf"},
        {2147483647.5, true, highest, 2147483647.5, "2147483647.5"},
        {"", false, 0, 0, ""},
        {"42", true, 42, 42, "42"},
        {" -12.75x9", false, -12, -12.75, " -12.75x9"},
        {"+3", false, 3, 3, "+3"},
        {"98.6", true, 98, 98.6, "98.6"},
        {"0.3", false, 0, 0.3, "0.3"},
        {"1e5", true, 1, 1, "1e5"},
        {"1.2.3", true, 1, 1.2, "1.2.3"},
        {".5", false, 0, 0.5, ".5"},
        {"5.", true, 5, 5, "5."},
        {"YES", true, 0, 0, "YES"},
        {"yes", true, 0, 0, "yes"},
        {"True", true, 0, 0, "True"},
        {"true", true, 0, 0, "true"},
        {"NO", false, 0, 0, "NO"},
        {"inf", false, 0, 0, "inf"},
        {"nan", false, 0, 0, "nan"},
        {"-", false, 0, 0, "-"},
        {"--5", false, 0, 0, "--5"},
        {".", false, 0, 0, "."},
        {"   ", false, 0, 0, "   "},
        {"4294967296", true, highest, 4294967296.0, "4294967296"},
        {"-99999999999", false, lowest, -99999999999.0, "-99999999999"},
        {Data{'4', '2'}, false, 0, 0, ""},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(row.value.boolValue(), row.flag) << row.text;
        EXPECT_EQ(row.value.intValue(), row.whole) << row.text;
        EXPECT_EQ(row.value.doubleValue(), row.fraction) << row.text;
        EXPECT_EQ(row.value.stringValue(), row.text);
    }
}

TEST(Value, ReadsEndlessTextsAsNumbers) {
    const std::string nines(5000, '9');
    const std::string zeros(5000, '0');
    EXPECT_EQ(Value(nines).doubleValue(), infinity);
    EXPECT_EQ(Value("-" + nines + ".5").doubleValue(), -infinity);
    EXPECT_EQ(Value("-" + nines).intValue(), lowest);
    EXPECT_EQ(Value("0." + zeros + "5").doubleValue(), 0.0);
    EXPECT_EQ(Value(zeros + "." + zeros + "5").doubleValue(), 0.0);
    EXPECT_EQ(Value(zeros + "7").doubleValue(), 7.0);
}

TEST(Value, ReadsNotANumberAsZero) { EXPECT_EQ(Value(std::nan("")).intValue(), 0); }

TEST(Value, GivesItsDataAndNoOtherKindAsData) {
    EXPECT_EQ(Value(Data{1, 2}).dataValue(), (Data{1, 2}));
    for (const Value& value : {Value(), Value(true), Value(3), Value(0.5), Value("text")})
        EXPECT_EQ(value.dataValue(), Data{});
}

TEST(Value, IsEqualToTheSameValueOfTheSameKind) {
    EXPECT_EQ(Value(3), Value(3));
    EXPECT_EQ(Value("a"), Value(std::string("a")));
    EXPECT_NE(Value(1), Value(true));
    EXPECT_NE(Value(1), Value(1.0));
    EXPECT_NE(Value(), Value(0));
    EXPECT_TRUE(Value().isNil());
    EXPECT_FALSE(Value("").isNil());
}

/// One property of each kind, under keys.
struct Settings {
    Property<bool> showAlerts{true};
    Property<int> limit{85};
    Property<double> factor{0.5};
    Property<std::string> title{"Fan"};
    Property<Data> bookmark{Data{7}};
    KeyValueCoding keys;
    std::vector<int> limitsSet;

    Settings() {
        keys.define("showAlerts", showAlerts);
        keys.define("limit", limit, [this](int value) {
            limitsSet.push_back(value);
            limit = value * 2;
        });
        keys.define("factor", factor);
        keys.define("title", title);
        keys.define("bookmark", bookmark);
    }
};

TEST(KeyValueCoding, ReadsPropertiesByKey) {
    const Settings settings;
    EXPECT_EQ(settings.keys.valueForKey("showAlerts"), Value(true));
    EXPECT_EQ(settings.keys.valueForKey("limit"), Value(85));
    EXPECT_EQ(settings.keys.valueForKey("factor"), Value(0.5));
    EXPECT_EQ(settings.keys.valueForKey("title"), Value("Fan"));
    EXPECT_EQ(settings.keys.valueForKey("bookmark"), Value(Data{7}));
}

TEST(KeyValueCoding, AssignsPropertiesByKeyConvertingTheValue) {
    Settings settings;
    settings.keys.setValueForKey(0, "showAlerts");
    settings.keys.setValueForKey("2.25", "factor");
    settings.keys.setValueForKey(12, "title");
    settings.keys.setValueForKey(Data{1, 2}, "bookmark");
    EXPECT_FALSE(settings.showAlerts);
    EXPECT_EQ(settings.factor, 2.25);
    EXPECT_EQ(settings.title.get(), "12");
    EXPECT_EQ(settings.bookmark.get(), (Data{1, 2}));
}

TEST(KeyValueCoding, RunsTheSetterOfAKeyThatHasOne) {
    Settings settings;
    settings.keys.setValueForKey("40", "limit");
    EXPECT_THAT(settings.limitsSet, ElementsAre(40));
    EXPECT_EQ(settings.limit, 80);
    settings.limit = 9;
    EXPECT_THAT(settings.limitsSet, ElementsAre(40));
}

TEST(KeyValueCoding, AssignsNilAsZeroNoAndEmpty) {
    Settings settings;
    for (const char* key : {"showAlerts", "limit", "factor", "title", "bookmark"})
        settings.keys.setValueForKey({}, key);
    EXPECT_FALSE(settings.showAlerts);
    EXPECT_THAT(settings.limitsSet, ElementsAre(0));
    EXPECT_EQ(settings.limit, 0);
    EXPECT_EQ(settings.factor, 0.0);
    EXPECT_EQ(settings.title.get(), "");
    EXPECT_EQ(settings.bookmark.get(), Data{});
}

TEST(KeyValueCoding, TellsObserversOfAKey) {
    Settings settings;
    std::vector<int> heard;
    Observation observation = settings.keys.observe(
        "limit", [&] { heard.push_back(settings.keys.valueForKey("limit").intValue()); });
    settings.keys.setValueForKey(5, "limit");
    settings.limit = 7;
    settings.title = "other";
    observation.drop();
    settings.limit = 8;
    EXPECT_THAT(heard, ElementsAre(10, 7));
}

std::string thrownBy(const std::function<void()>& action) {
    try {
        action();
    } catch (const std::out_of_range& error) {
        return error.what();
    }
    return "nothing";
}

TEST(KeyValueCoding, ThrowsNamingAKeyThatIsNotDefined) {
    const Settings settings;
    const std::string message = "no property under the key \"Limit %s\"";
    EXPECT_EQ(thrownBy([&] { std::ignore = settings.keys.valueForKey("Limit %s"); }), message);
    EXPECT_EQ(thrownBy([&] { settings.keys.setValueForKey(1, "Limit %s"); }), message);
    EXPECT_EQ(thrownBy([&] { std::ignore = settings.keys.observe("Limit %s", [] {}); }), message);
}

TEST(KeyValueCoding, KnowsWhichKeysItHas) {
    const Settings settings;
    EXPECT_TRUE(settings.keys.hasKey("limit"));
    EXPECT_FALSE(settings.keys.hasKey("limi"));
    EXPECT_FALSE(settings.keys.hasKey(""));
}

TEST(KeyValueCoding, TakesTheLastDefinitionOfAKey) {
    Settings settings;
    Property<int> other{11};
    settings.keys.define("limit", other);
    EXPECT_EQ(settings.keys.valueForKey("limit"), Value(11));
}

TEST(Value, IsANumberForFlagsWholeNumbersAndFractions) {
    for (const Value& value : {Value(false), Value(0), Value(2.5)}) EXPECT_TRUE(value.isNumber());
    for (const Value& value : {Value(), Value("7"), Value(Data{7})}) EXPECT_FALSE(value.isNumber());
}

}  // namespace
}  // namespace calorivo
