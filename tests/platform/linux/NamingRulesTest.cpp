#include "platform/linux/NamingRules.h"

#include "HwmonMachines.h"
#include "TemporaryFolder.h"
#include "platform/linux/Glob.h"
#include "platform/linux/SmallFile.h"
#include "sensors/Areas.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>

namespace calorivo {
namespace {

using namespace machines;
using testing::ElementsAre;
using testing::IsEmpty;

using Texts = std::vector<std::string>;

const ChipFilter all = [](std::string_view) { return true; };

Texts problemsOf(std::string_view text) {
    Texts problems;
    EXPECT_THAT(parseNamingRules(text, "own.conf", all, problems), IsEmpty());
    return problems;
}

TEST(NamingRules, ReadsAllColumns) {
    Texts problems;
    const std::string_view text =
        "\xEF\xBB\xBF# a comment\r\n"
        "\n"
        "\tnct67*|w83*  temp? \"PECI *\" cpu-peci  \"CPU Relative\" \"PECI {n}\" unless=coretemp \"with=A "
        "B\" # why\r\n"
        "a temp1 - TC5H CPU {label}#1\n"
        "b temp* * skip\n"
        "c fan2 * fan - {label}\n"
        "d fan2 * skip - - unless=e";
    EXPECT_EQ(parseNamingRules(text, "own.conf", all, problems),
              (std::vector<NamingRule>{
                  {"nct67*|w83*", "temp?", "PECI *", KeyFamily::cpuPeci, "", "CPU Relative", "PECI {n}",
                   "coretemp", "A B"},
                  {"a", "temp1", "-", KeyFamily::literal, "TC5H", "CPU", "{label}#1", "", ""},
                  {"b", "temp*", "*", KeyFamily::skip, "", "", "", "", ""},
                  {"c", "fan2", "*", KeyFamily::fan, "", "", "{label}", "", ""},
                  {"d", "fan2", "*", KeyFamily::skip, "", "", "", "e", ""},
              }));
    EXPECT_THAT(problems, IsEmpty());
}

TEST(NamingRules, SaysWhatIsWrongWithALine) {
    struct Row {
        std::string line;
        std::string reason;
    };
    const std::string missing = "columns are missing: chip, channel, label, key, area and name are needed";
    const std::array rows{
        Row{"a", missing},
        Row{"a temp1 *", missing},
        Row{"a temp1 * drive \"Hard Drive\"", missing},
        Row{"a temp1 * drive \"Hard Drive\" # \"a name\"", missing},
        Row{"a temp1 * drive \"Hard Drive", "a quote is not closed"},
        Row{"\"a temp1 * skip", "a quote is not closed"},
        Row{"a temp1 * drive \"Hard Drive\"x y", "a blank is missing after a closing quote"},
        Row{"a temp1 * drive GPU x \"unless=b", "a quote is not closed"},
        Row{"a in0 * drive GPU x", "the channel \"in0\" begins neither with temp nor with fan"},
        Row{"a temp1 \"\" drive GPU x", "the label is empty; \"-\" stands for none"},
        Row{"a temp1 * drives GPU x", "unknown kind of sensor \"drives\""},
        Row{"a temp1 * XC0P GPU x", "unknown kind of sensor \"XC0P\""},
        Row{"a temp1 * TC0G GPU x", "no sensor can have the key \"TC0G\""},
        Row{"a temp1 * TC0g GPU x", "no sensor can have the key \"TC0g\""},
        Row{"a temp1 * T%0x GPU x", "no sensor can have the key \"T%0x\""},
        Row{"a temp1 * TC0C GPU x", "no sensor can have the key \"TC0C\""},
        Row{"a temp1 * TCAC GPU x", "no sensor can have the key \"TCAC\""},
        Row{"a temp1 * fan - x", "a fan's key is \"fan\" or \"skip\", a temperature's another one"},
        Row{"a fan1 * drive - x", "a fan's key is \"fan\" or \"skip\", a temperature's another one"},
        Row{"a fan1 * TC1C - x", "unknown kind of sensor \"TC1C\""},
        Row{"a fan1 * fan CPU x", "the area of a fan is -"},
        Row{"a temp1 * drive All x", "unknown area \"All\""},
        Row{"a temp1 * drive gpu x", "unknown area \"gpu\""},
        Row{"a temp1 * drive GPU \"\"", "the name is empty"},
        Row{"a temp1 * drive GPU \"{n} {model}\"", "unknown placeholder \"{model}\""},
        Row{"a temp1 * drive GPU {n", "unknown placeholder \"{n\""},
        Row{"a temp1 * drive GPU x y", "unknown condition \"y\""},
        Row{"a temp1 * drive GPU x unless=", "unknown condition \"unless=\""},
        Row{"a temp1 * drive GPU x with=", "unknown condition \"with=\""},
        Row{"a temp1 * drive GPU " + std::string(1000, 'x'), "the line is too long"},
    };
    for (const Row& row : rows)
        EXPECT_THAT(problemsOf("# first\n" + row.line + "\n"), ElementsAre("own.conf:2: " + row.reason))
            << row.line;
}

TEST(NamingRules, GoesOnAfterABadLine) {
    Texts problems;
    EXPECT_EQ(parseNamingRules("a temp1\nb temp1 * skip\nc temp1\n", "f", all, problems).size(), 1U);
    EXPECT_EQ(problems.size(), 2U);
}

TEST(NamingRules, DoesNotParseRulesForAbsentChips) {
    Texts problems;
    const auto rules = parseNamingRules(
        "a nonsense\nb temp1 * skip\n", "f", [](std::string_view chips) { return chips == "b"; }, problems);
    EXPECT_EQ(rules.size(), 1U);
    EXPECT_THAT(problems, IsEmpty());
}

TEST(NamingRules, KnowsTheAreasOfTheSourceList) {
    std::vector<std::string_view> names;
    for (const Area& area : areas)
        if (area.tag != allAreasTag) names.push_back(area.name);
    EXPECT_THAT(names, testing::ElementsAreArray(ruleAreas));
}

TEST(NamingRules, AllShippedRulesAreGood) {
    const SmallFile file =
        readSmallFile(CALORIVO_SOURCE_DIR "/data/hwmon-names.conf", SymbolicLinks::followed);
    Texts problems;
    const auto rules = parseNamingRules(file.text, "hwmon-names.conf", all, problems);
    EXPECT_THAT(problems, IsEmpty());
    const auto lines =
        static_cast<std::size_t>(std::ranges::count_if(file.text, [isStart = true](char c) mutable {
            const bool isRule = isStart && c != '#' && c != '\n';
            isStart = c == '\n';
            return isRule;
        }));
    EXPECT_EQ(rules.size(), lines);
    EXPECT_GT(rules.size(), 60U);
    for (const KeyFamilyRow& family : keyFamilies)
        EXPECT_NE(file.text.find(family.name), std::string::npos) << family.name;
    for (const std::string_view area : ruleAreas) EXPECT_NE(file.text.find(area), std::string::npos) << area;
    for (const std::string_view placeholder : rulePlaceholders)
        EXPECT_NE(file.text.find(placeholder), std::string::npos) << placeholder;
}

TEST(NamingRules, ReportsFilesThatCannotBeUsedAndNeverWaits) {
    const TemporaryFolder folder;
    ASSERT_EQ(::mkfifo(folder.path("fifo").c_str(), 0600), 0);
    const std::string big = folder.write("big", std::string(smallFileLimit + 1, '#'));
    const std::string good = folder.write("good", "* temp1 * skip\n");
    const std::vector<HwmonChip> chips{chip("a", "/a", {temperature(1)})};
    Texts problems;
    const NamingRules rules(
        chips, {folder.path("absent"), folder.path(), folder.path("fifo"), big, good, good + "/below"},
        problems);
    EXPECT_THAT(
        problems,
        ElementsAre(folder.path() + ": it is a folder", folder.path("fifo") + ": it is no regular file",
                    big + ": it is longer than 1048576 bytes", good + "/below: Not a directory"));
    ASSERT_NE(rules.rulesOf(chips[0])[0], nullptr);
    EXPECT_EQ(rules.rulesOf(chips[0])[0]->family, KeyFamily::skip);
}

TEST(NamingRules, TakesTheFirstRuleThatFitsOfTheLastFile) {
    const TemporaryFolder folder;
    const std::string first = folder.write("1", "a temp1 * drive GPU one\na temp* * drive GPU two\n");
    const std::string second = folder.write("2", "a temp* x drive GPU three\na temp* x|y drive GPU four\n");
    const std::vector<HwmonChip> chips{chip(
        "a", "/a", {temperature(1), temperature(2, "X "), temperature(3, "y"), temperature(4, "z"), fan(1)})};
    Texts problems;
    const NamingRules rules(chips, {first, second}, problems);
    Texts names;
    for (const NamingRule* rule : rules.rulesOf(chips[0]))
        names.push_back(rule == nullptr ? "none" : rule->name);
    EXPECT_EQ(names, (Texts{"one", "three", "four", "two", "none"}));
}

TEST(NamingRules, KnowsClassesOfChips) {
    HwmonChip network = chip("r8169", "/r", {});
    network.interfaceName = "enp3s0";
    HwmonChip wirelessCard = chip("odd", "/o", {});
    wirelessCard.pciClass = 0x0280;
    HwmonChip mouse = battery("mouse", "Device");
    const HwmonChip card = amdCard("0000:01:00.0");
    struct Row {
        const HwmonChip& chip;
        std::string classes;
    };
    const HwmonChip ownBattery = battery("BAT0");
    const std::array rows{Row{network, "@network"}, Row{wirelessCard, "@network @wireless"},
                          Row{mouse, "@supply"}, Row{ownBattery, "@battery @supply"}, Row{card, "@gpu"}};
    for (const Row& row : rows)
        for (const std::string name : {"@battery", "@supply", "@network", "@wireless", "@gpu", "@other"})
            EXPECT_EQ(NamingRules::isChip(row.chip, "x|" + name), row.classes.find(name) != std::string::npos)
                << row.chip.name << name;
}

TEST(NamingRules, FitsPatterns) {
    struct Row {
        std::string_view text;
        std::string_view pattern;
        bool isFitting;
    };
    constexpr std::array rows{
        Row{"nct6798", "nct67*", true},
        Row{"nct6798", "nct66*", false},
        Row{"nct6798", "NCT????", true},
        Row{"nct6798", "nct???", false},
        Row{"", "*", true},
        Row{"", "?", false},
        Row{"", "", true},
        Row{"a", "", false},
        Row{"aXbXc", "*x*c", true},
        Row{"aXbXcd", "*x*c", false},
        Row{"abc", "x|abc", true},
        Row{"abc", "x|ab|", false},
        Row{"", "x|", true},
        Row{"a*b", "a*b", true},
        Row{"CPU VRM 2", "*VRM*|*PSU*", true},
    };
    for (const Row& row : rows)
        EXPECT_EQ(fits(row.text, row.pattern), row.isFitting) << row.text << row.pattern;
}

TEST(NamingRules, EndsSoonForHostilePatterns) {
    const std::string text(4096, 'a');
    EXPECT_FALSE(fits(text, "*a*a*a*a*a*a*a*a*a*a*a*a*a*a*b"));
}

}  // namespace
}  // namespace calorivo
