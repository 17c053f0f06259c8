#include "cli/CommandRun.h"
#include "platform/linux/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace calorivo {
namespace {

/// The value of a labelled line; empty when there is none.
std::string field(const std::string& text, std::string_view label) {
    std::string begin = "\n  ";
    begin.append(label).resize(12, ' ');
    const std::size_t at = text.find(begin);
    if (at == std::string::npos) return {};
    const std::size_t value = at + begin.size();
    return text.substr(value, text.find('\n', value) - value);
}

std::string explained(std::string_view dump, const std::string& key, std::vector<std::string> more = {}) {
    const TemporaryFolder folder;
    more.insert(more.begin(), {"why", key, "--keysfile", folder.write("dump", dump)});
    const test::CommandAnswer answer = test::runCommandLine(more);
    EXPECT_EQ(answer.code, exitAnswered) << answer.errors;
    return answer.out;
}

TEST(Explanation, SaysWhyAKeyIsHidden) {
    struct Row {
        std::string_view dump;
        std::string key;
        std::string shown;
    };
    constexpr std::string_view inKeysFile =
        "no. In a keys file only whole degrees above 0 and below 120 count, or GPU sensors.";
    const Row rows[] = {
        {"  TC1C  [sp78]  (bytes 28 00)\n", "TC1C", "yes"},
        {"  FNum  [ui8 ]  2 (bytes 02)\n", "FNum",
         "no. It is no temperature: the keys of temperatures begin with T."},
        {"  TC1C  [flt ]  (bytes 00 00 20 42)\n", "TC1C",
         "no. Its type is \"flt \", not \"sp78\": only that type is a temperature."},
        {"  TC1C  [sp78]  (bytes 00 40)\n", "TC1C", std::string(inKeysFile)},
        {"  TC1C  [sp78]  (bytes 80 00)\n", "TC1C", std::string(inKeysFile)},
        {"  TeGG  [sp78]  (bytes 28 00)\n", "TeGG",
         "no. Keys that end in G or g are left out by grouping rule 0."},
        {"  TP0P  [sp78]  (bytes 28 00)\n", "TP0P", "no. No grouping rule takes it into an area."},
        {"  TA0p  [sp78]  (bytes 28 00)\n", "TA0p", "no. No grouping rule takes it into an area."},
        {"  TA0P  [sp78]  (bytes 1e 00)\n  TA0p  [sp78]  (bytes 23 00)\n", "TA0P",
         "no. TA0p is shown in its place: it read hotter."},
        {"  TA0P  [sp78]  (bytes 24 00)\n  TA0p  [sp78]  (bytes 23 00)\n", "TA0p",
         "no. TA0P is shown in its place: it read hotter."},
        {"  TC0C  [sp78]  (bytes 1e 00)\n  TC0c  [sp78]  (bytes 23 00)\n", "TC0c",
         "no. Its twin in upper case, TC0C, is shown in its place."},
    };
    for (const Row& row : rows)
        EXPECT_EQ(field(explained(row.dump, row.key), "shown"), row.shown) << row.dump;
}

TEST(Explanation, ATableSaysWhatIsShown) {
    const std::string dump = "  TN0P  [sp78]  (bytes 28 00)\n  TCSA  [sp78]  (bytes 28 00)\n";
    const std::string hidden = explained(dump, "TN0P", {"--custommodel", "MacBookPro11,4"});
    EXPECT_EQ(field(hidden, "shown"), "no. The table of this model does not list it.");
    EXPECT_EQ(field(hidden, "put by"), "");
    const std::string shown = explained(dump, "TCSA", {"--custommodel", "MacBookPro11,4"});
    EXPECT_EQ(field(shown, "named by"), "the table of this model");
    EXPECT_EQ(field(shown, "put by"), "the table of this model");
    EXPECT_EQ(field(shown, "area"), "CPU");
    EXPECT_EQ(field(shown, "shown"), "yes");
}

TEST(Explanation, ASensorOfTheTableIsExplainedEvenWhereTheMachineLacksIt) {
    const std::string text =
        explained("  TC1C  [sp78]  (bytes 28 00)\n", "TCSA", {"--custommodel", "MacBookPro11,4"});
    EXPECT_EQ(field(text, "bytes"), "no data");
    EXPECT_EQ(field(text, "reading"), "0 °C, not valid: shown as N/A");
    EXPECT_EQ(field(text, "shown"), "yes");
}

TEST(Explanation, GivesBytesAndWhatTheyMean) {
    const std::string text = explained("  TC1C  [sp78]  (bytes 28 40)\n", "TC1C", {"--fahrenheit"});
    EXPECT_EQ(field(text, "source"), "keysfile");
    EXPECT_EQ(field(text, "type"), "sp78");
    EXPECT_EQ(field(text, "bytes"), "28 40");
    EXPECT_EQ(field(text, "decoded"), "40.25");
    // In a keys file the fraction is dropped.
    EXPECT_EQ(field(text, "reading"), "40 °C, valid: shown as 104°F");
}

TEST(Explanation, NamesTheHotterOfTheAmbientTwins) {
    const std::string text =
        explained("  TA0P  [sp78]  (bytes 1e 00)\n  TA0p  [sp78]  (bytes 23 00)\n", "TA0p");
    EXPECT_EQ(field(text, "put by"), "grouping rule 20: Logic Board, because it reads hotter than TA0P");
    EXPECT_EQ(field(text, "shown"), "yes");
}

TEST(Explanation, NamesEveryRuleThatTakesAKey) {
    const std::string text = explained("  TCXc  [sp78]  (bytes 1e 00)\n", "TCXc");
    EXPECT_NE(text.find("  put by   grouping rule 3: CPU\n  put by   grouping rule 4: CPU\n"),
              std::string::npos)
        << text;
}

}  // namespace
}  // namespace calorivo
