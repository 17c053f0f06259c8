#include "platform/qt/PreferencesStoreText.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <ostream>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace calorivo {

void PrintTo(const PreferencesStoreText::Problem& problem, std::ostream* out) {
    *out << problem.line << ": " << problem.reason;
}

namespace {

using namespace std::string_literals;
using Problems = std::vector<PreferencesStoreText::Problem>;

/// A text of every kind of value.
const std::string sample =
    "# by hand\n[General]\ntempUnit=1\nshowAlerts=true\nthreshold=2.5\nname=\"50 \\\"\xC2\xB0\\\"\"\n"
    "data=@Data(AAEC/w==)\nfuture=@Point(1 2)\n\n[Other]\ntempUnit=7\nwhat ever\n";

TEST(PreferencesStoreText, EveryValueComesBackAsItWas) {
    using Numbers = std::numeric_limits<double>;
    const std::pair<Value, std::string> rows[] = {
        {true, "true"},
        {false, "false"},
        {0, "0"},
        {1, "1"},
        {std::numeric_limits<std::int32_t>::min(), "-2147483648"},
        {1.0, "1.0"},
        {-0.0, "-0.0"},
        {0.1, "0.1"},
        {1e300, "1e+300"},
        {Numbers::denorm_min(), "5e-324"},
        {Numbers::infinity(), "inf"},
        {-Numbers::infinity(), "-inf"},
        {"", R"("")"},
        {"true", R"("true")"},
        {"12", R"("12")"},
        {"@Data(AA==)", "\"@Data(AA==)\""},
        {"a \"b\" \\ ; # = [c]", R"("a \"b\" \\ ; # = [c]")"},
        {"50 °C", "\"50 °C\""},
        {"a\nb\r\t\x1B\x7F"s, R"("a\nb\x0D\x09\x1B\x7F")"},
        {"\0\xFFz"s, R"("\x00\xFFz")"},
        {Data{}, "@Data()"},
        {Data{0, 1, 2, 255}, "@Data(AAEC/w==)"},
    };
    for (const auto& [value, text] : rows) {
        EXPECT_EQ(preferenceText(value), text);
        EXPECT_EQ(preferenceValue(text), value) << text;
    }
    EXPECT_EQ(preferenceText(Numbers::quiet_NaN()), "nan");
    EXPECT_TRUE(std::isnan(preferenceValue("nan").value().doubleValue()));
    EXPECT_EQ(preferenceText({}), "");
}

TEST(PreferencesStoreText, TakesNothingElseForAValue) {
    for (const char* text :
         {"",       "maybe",    "True",       "99999999999", "-2147483649", "1 2",       "1,5",
          "1.5.",   "0x10",     "+5",         "1e999",       "e",           "--1",       "\"",
          "\"a",    "\"a\"b\"", "\"\\\"",     R"("\q")",     R"("\x1")",    R"("\xZZ")", R"("\x-1")",
          "@Data(", "@Data(A)", "@Data(AAE)", "@Data(A*==)", "@Data(AA=="})
        EXPECT_EQ(preferenceValue(text), std::nullopt) << text;
}

TEST(PreferencesStoreText, ReadsEveryKindOfLine) {
    const PreferencesStoreText text(sample);
    EXPECT_EQ(text.problems(), Problems{});
    EXPECT_EQ(text.value("tempUnit"), Value(1));
    EXPECT_EQ(text.value("showAlerts"), Value(true));
    EXPECT_EQ(text.value("threshold"), Value(2.5));
    EXPECT_EQ(text.value("name"), Value("50 \"°\""));
    EXPECT_EQ(text.value("data"), Value(Data{0, 1, 2, 255}));
    EXPECT_EQ(text.value("future"), Value());
    EXPECT_EQ(text.value("what ever"), Value());
    EXPECT_EQ(text.value(""), Value());
    EXPECT_EQ(text.text(), sample);
}

TEST(PreferencesStoreText, ForgivesHowPeopleAndEditorsWrite) {
    const PreferencesStoreText text("\xEF\xBB\xBF\r\n; note\r\n  tempUnit\t= 1 \r\n[General]\r\na=1\na=2\n");
    EXPECT_EQ(text.problems(), Problems{});
    EXPECT_EQ(text.value("tempUnit"), Value(1));
    EXPECT_EQ(text.value("a"), Value(2));
}

TEST(PreferencesStoreText, ChangesOnlyTheLinesOfWhatIsSet) {
    PreferencesStoreText text(sample);
    text.set("tempUnit", 0);
    text.set("threshold", {});
    text.set("added", "x");
    EXPECT_EQ(text.text(),
              "# by hand\n[General]\ntempUnit=0\nshowAlerts=true\nname=\"50 \\\"\xC2\xB0\\\"\"\n"
              "data=@Data(AAEC/w==)\nfuture=@Point(1 2)\nadded=\"x\"\n\n[Other]\ntempUnit=7\nwhat ever\n");
    EXPECT_EQ(PreferencesStoreText(text.text()).value("added"), Value("x"));
}

TEST(PreferencesStoreText, BeginsWithItsSectionWhereThereIsNone) {
    PreferencesStoreText empty;
    empty.set("a", 1);
    empty.set("b", 2);
    empty.set("a", {});
    empty.set("absent", {});
    EXPECT_EQ(empty.text(), "[General]\nb=2\n");
    PreferencesStoreText foreign("[Other]\na=1\n");
    foreign.set("a", 2);
    EXPECT_EQ(foreign.text(), "[General]\na=2\n[Other]\na=1\n");
}

TEST(PreferencesStoreText, WritesEveryKeySoThatItComesBack) {
    for (const std::string& key : {"a=b"s, "[x]"s, "# c"s, "a b"s, "ä"s, "a%41"s, "\0\n"s, "\xFF"s}) {
        PreferencesStoreText text;
        text.set(key, 5);
        const PreferencesStoreText read(text.text());
        EXPECT_EQ(read.value(key), Value(5)) << text.text();
        EXPECT_EQ(read.problems(), Problems{});
    }
}

TEST(PreferencesStoreText, TellsWhichLinesOfHostileFilesAreLeftOut) {
    struct Row {
        std::string text;
        Problems problems;
        std::string left;
    };
    const Row rows[] = {
        {"", {}, ""},
        {"\n\n", {}, "\n\n"},
        {"[General]\na=1\nb=8", {{3, "it has no end: the file was cut off"}}, "[General]\na=1\n"},
        {"a=1\n[Gene\nb=2\n", {{2, "the name of the section has no end"}}, "a=1\nb=2\n"},
        {"a=1\nnonsense\nb=2\n", {{2, "it is neither KEY=VALUE nor a comment"}}, "a=1\nb=2\n"},
        {"=1\n%=1\n%4=1\n%GG=1\na b=1\n",
         {{1, "there is no key before the \"=\""},
          {2, "there is no key before the \"=\""},
          {3, "there is no key before the \"=\""},
          {4, "there is no key before the \"=\""},
          {5, "there is no key before the \"=\""}},
         ""},
        {"a=\nb=maybe\nc=99999999999\nd=@Data(!)\n",
         {{1, "the value of \"a\" cannot be read"},
          {2, "the value of \"b\" cannot be read"},
          {3, "the value of \"c\" cannot be read"},
          {4, "the value of \"d\" cannot be read"}},
         ""},
        {"a=1\n"s + std::string(4096, '\0') + "\nb=2\n", {{2, "it has NUL bytes"}}, "a=1\nb=2\n"},
        {"a=1\nb=\"\xC3\x28\"\n[Other]\n\xFF\n",
         {{2, "it is not UTF-8"}, {4, "it is not UTF-8"}},
         "a=1\n[Other]\n"},
        {"\xFF\xFE\x61\x00\x3D\x00"s, {{1, "it has NUL bytes"}}, ""},
        {std::string(1 << 20, 'x'), {{1, "it has no end: the file was cut off"}}, ""},
        {std::string(1 << 20, '[') + '\n', {{1, "the name of the section has no end"}}, ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text.substr(0, 60));
        const PreferencesStoreText text(row.text);
        EXPECT_EQ(text.problems(), row.problems);
        EXPECT_EQ(text.text(), row.left);
        EXPECT_EQ(PreferencesStoreText(text.text()).problems(), Problems{});
    }
}

TEST(PreferencesStoreText, ACutOffFileNeverGivesAnotherValue) {
    const PreferencesStoreText whole(sample);
    for (std::size_t length = 0; length <= sample.size(); ++length) {
        const PreferencesStoreText cut(sample.substr(0, length));
        for (const char* key : {"tempUnit", "showAlerts", "threshold", "name", "data", "future"}) {
            const std::string written = cut.writtenValue(key);
            EXPECT_TRUE(written.empty() || written == whole.writtenValue(key)) << length << ' ' << key;
        }
    }
}

TEST(PreferencesStoreText, WhateverIsReadCanBeWrittenAndReadAgain) {
    std::mt19937 random(20);  // NOLINT(cert-msc51-cpp): the same bytes in every run
    const auto below = [&random](std::size_t limit) { return random() % limit; };
    constexpr std::string_view hostile = "=\n\r\"\\@()[]%#;\0\xFF\xC3x1.e-";
    for (int round = 0; round < 3000; ++round) {
        std::string bytes = sample;
        for (std::size_t i = 0; i < 1 + below(6); ++i) {
            const std::size_t place = below(bytes.size());
            if (below(3) == 0)
                bytes.erase(place, below(8));
            else
                bytes[place] = hostile[below(hostile.size())];
            if (bytes.empty()) bytes = "x";
        }
        PreferencesStoreText text(bytes);
        text.set("probe", round);
        const PreferencesStoreText again(text.text());
        ASSERT_EQ(again.problems(), Problems{}) << bytes;
        ASSERT_EQ(again.value("probe"), Value(round)) << bytes;
        ASSERT_EQ(again.text(), text.text()) << bytes;
    }
}

}  // namespace
}  // namespace calorivo
