#include "app/StringsTable.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

namespace calorivo {
namespace {

using namespace std::string_literals;
using Entries = std::map<std::string, std::string, std::less<>>;

StringsTable::Parsed parse(std::string_view bytes) { return StringsTable::parse(bytes, "de.strings"); }

TEST(StringsTable, ReadsEntriesBetweenComments) {
    const auto parsed =
        parse("/* one\n two */ \"a\" = \"b\";\n// \"no\" = \"no\";\n\"c\"=\"d\";\"e\"\n=\n\"\";// end");
    EXPECT_EQ(parsed.problem, "");
    EXPECT_EQ(parsed.table.entries(), (Entries{{"a", "b"}, {"c", "d"}, {"e", ""}}));
    EXPECT_EQ(parsed.table.find("c"), "d");
    EXPECT_EQ(parsed.table.find("x"), std::nullopt);
}

TEST(StringsTable, ReadsEscapes) {
    const auto parsed = parse(R"("q\"\\" = "1\n2\t3\r \U00e4\U20AC \UD83D\UDE00 /* no */ // no";)");
    EXPECT_EQ(parsed.problem, "");
    EXPECT_EQ(parsed.table.find("q\"\\"), "1\n2\t3\r ä€ 😀 /* no */ // no");
}

TEST(StringsTable, ReplacesHalvesOfACharacterThatStandAlone) {
    const auto parsed = parse(R"("a" = "\UD83D!"; "b" = "\UDE00"; "c" = "\UD83D";)");
    EXPECT_EQ(parsed.table.entries(), (Entries{{"a", "\uFFFD!"}, {"b", "\uFFFD"}, {"c", "\uFFFD"}}));
}

TEST(StringsTable, ReadsUtf8AndUtf16) {
    const Entries expected{{"k", "ü😀"}};
    const std::string little = "\xFF\xFE\"\0k\0\"\0=\0\"\0\xFC\0\x3D\xD8\x00\xDE\"\0;\0"s;
    const std::string big = "\xFE\xFF\0\"\0k\0\"\0=\0\"\0\xFC\xD8\x3D\xDE\x00\0\"\0;"s;
    for (const std::string& bytes : {"\"k\"=\"ü😀\";"s, "\xEF\xBB\xBF\"k\"=\"ü😀\";"s, little, big}) {
        const auto parsed = parse(bytes);
        EXPECT_EQ(parsed.problem, "");
        EXPECT_EQ(parsed.table.entries(), expected);
    }
}

TEST(StringsTable, NamesFileAndLineOfTheFirstMistakeAndKeepsWhatStandsBefore) {
    struct Row {
        std::string rest;
        std::string problem;
    };
    const Row rows[] = {
        {"x", "de.strings:2: expected a key in quotes"},
        {"\"b\"", "de.strings:2: expected ="},
        {"\n\"b\" \"c\";", "de.strings:3: expected ="},
        {"\"b\" = c;", "de.strings:2: expected a text in quotes"},
        {"\"b\" = \"c\"\n\n", "de.strings:4: expected ;"},
        {"\"b\" = \"c\n\n", "de.strings:2: a quotation mark without its partner"},
        {"\"b\n\\\"", "de.strings:2: a quotation mark without its partner"},
        {"/* c\n", "de.strings:2: a comment without its end"},
        {"\"b\" = /*", "de.strings:2: a comment without its end"},
        {"\"b\" = \"\\q\";", "de.strings:2: an escape that means nothing"},
        {"\"b\" = \"\\", "de.strings:2: an escape that means nothing"},
        {"\"b\" = \"\\U12g4\";", "de.strings:2: \\U takes four hexadecimal digits"},
        {"\"b\" = \"\\U12", "de.strings:2: \\U takes four hexadecimal digits"},
        {"\n\"a\" = \"2\"; \"d\" = \"e\";", "de.strings:3: this key stands above already"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.rest);
        const auto parsed = parse("\"a\" = \"1\";\n" + row.rest);
        EXPECT_EQ(parsed.problem, row.problem);
        EXPECT_EQ(parsed.table.entries(), (Entries{{"a", "1"}}));
    }
}

TEST(StringsTable, RefusesOtherEncodings) {
    EXPECT_EQ(parse("\"a\" = \"b\";\n\"c\" = \"\xFC\";").problem, "de.strings:2: neither UTF-8 nor UTF-16");
}

TEST(StringsTable, IsEmptyForAnEmptyFile) {
    for (const std::string& bytes : {""s, " \n"s, "\xFF\xFE"s, "// x"s}) {
        EXPECT_EQ(parse(bytes).problem, "");
        EXPECT_EQ(parse(bytes).table.entries(), Entries{});
    }
}

}  // namespace
}  // namespace calorivo
