#include "sensors/SensorGrouping.h"

#include "sensors/Areas.h"
#include "support/PrintKeys.h"

#include <gtest/gtest.h>

#include <map>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace calorivo {
namespace {

/// The lists that are not empty, by area, each as "KEY KEY".
std::map<std::string, std::string> byArea(const SensorLists& lists) {
    std::map<std::string, std::string> filled;
    for (const auto list : validSensorOrder)
        for (const SensorKey key : lists.*list) {
            std::string& text = filled[std::string(areaOf(list).name)];
            text += (text.empty() ? "" : " ") + key.text();
        }
    return filled;
}

using ByArea = std::map<std::string, std::string>;

ByArea grouped(const KeyList& found, const std::map<std::string, double>& temperatures = {}) {
    SensorLists lists;
    lists.tempSensorNames = found;
    groupSensors(lists, [&](SensorKey key) { return temperatures.at(key.text()); });
    return byArea(lists);
}

struct Row {
    /// "2" or "3 4"; empty when no rule takes the keys.
    std::string_view rules;
    std::string_view area;
    KeyList keys;
};

const std::vector<Row> rowsByRule{
    {"", "", {"TC0G", "TC0g", "TG0g", "TNFG", "TW0g", "TeGG", "TCXG"}},
    {"1", "CPU Relative", {"TCAC", "TCBC", "TCXr"}},
    {"2", "CPU", {"TC0D", "TC1P", "TC9H", "TCAD", "TCFC", "TC0d", "TC5p", "TCDh"}},
    {"", "", {"TCGD", "TCaC", "TCXD", "TC0S", "TC0T", "TCXR"}},
    {"3", "CPU", {"TC0c", "TCac", "TCZc", "TC-c"}},
    {"4", "CPU", {"TCXC", "TCGC"}},
    {"5", "GPU", {"TG0D", "TG1P", "TGxH", "TG-T"}},
    {"", "", {"TG0d", "TG0p", "TG0h", "TG0S"}},
    {"6", "GPU", {"TCGc"}},
    {"7", "Battery", {"TB0T", "TB1T", "TB2T"}},
    {"", "", {"TB3T", "TB0P"}},
    {"8", "Hard Drive", {"TH0A", "TH0B"}},
    {"", "", {"TH0C", "TH1A", "TH9P", "TH0p"}},
    {"9", "Memory", {"TM0S", "TM9S", "TMAS", "TMFS"}},
    {"", "", {"TMGS", "TMaS", "Tm0S"}},
    {"10", "Memory", {"TM0P", "TM9P", "TM0D", "TMxD", "TMAD"}},
    {"", "", {"TMAP", "TM0p", "TMPV", "Tm0D"}},
    {"11", "Optical Drive", {"TO0P", "TOxP"}},
    {"", "", {"TO0p", "TO0D"}},
    {"12", "LCD", {"TL0P", "TLVP"}},
    {"", "", {"TL0p", "TL0V"}},
    {"13", "Northbridge", {"TN0D", "TNFP", "TN0x", "TNzC"}},
    {"14",
     "Power Supply",
     {"Tp0C", "Tp1C", "Tp0P", "Tp1P", "Tp2H", "Tp3H", "Tp2P", "Tp3P", "Tp4P", "Tp5P", "Tm0P", "Ta0P"}},
    {"", "", {"Tp6P", "Tp2C", "Tp0H", "TP0C", "Tm1P", "Ta1P"}},
    {"15", "Wireless", {"TW0P", "TW1p", "TWxx"}},
    {"16", "Palm Rest", {"Ts0P", "Ts1P", "TsxP"}},
    {"", "", {"Ts2S", "Ts0p"}},
    {"17", "PCI", {"Te1S", "TeAS", "TexS"}},
    {"", "", {"Te1P", "Te0T"}},
    {"18", "Thunderbolt", {"THSP", "TI0P", "TI1P"}},
    {"", "", {"TI2P", "THSp"}},
    {"19", "Logic Board", {"TPOP", "TPCD", "Th1H", "Th2H", "Th3H", "TCSA", "TCSc", "Ts0S", "Ts1S"}},
    {"", "", {"TP0P", "Th0H", "Th4H", "TCSC"}},
    {"20", "Logic Board", {"TA0P"}},
    {"", "", {"TA0p", "TA1P"}},
    {"21",
     "Enclosure",
     {"TS2p", "TS0p", "TH0P", "TH1P", "TH2P", "TH3P", "TH4P", "TH5P", "TH6P", "TH7P", "TH8P"}},
    {"", "", {"TS1p", "TS0P"}},
};

TEST(SensorGrouping, PutsEachKeyInTheAreaOfItsRule) {
    for (const Row& row : rowsByRule)
        for (const SensorKey key : row.keys) {
            const ByArea expected = row.area.empty() ? ByArea{} : ByArea{{std::string(row.area), key.text()}};
            EXPECT_EQ(grouped({key}), expected) << key.view();
        }
}

TEST(SensorGrouping, ExplainsWhichRuleTookAKey) {
    for (const Row& row : rowsByRule)
        for (const SensorKey key : row.keys) {
            std::string rules;
            for (const GroupingMatch& match : groupingRulesFor(key)) {
                rules += (rules.empty() ? "" : " ") + std::to_string(match.rule);
                EXPECT_EQ(areaOf(match.list).name, row.area) << key.view();
            }
            EXPECT_EQ(rules, row.rules) << key.view();
        }
}

TEST(SensorGrouping, TakesLowerCaseCoresOnceThroughTwoRulesTwice) {
    // "c" is no kind of rule 2, so an ordinary lower-case core is taken by rule 3 alone.
    EXPECT_EQ(grouped({"TC0c"}), (ByArea{{"CPU", "TC0c"}}));
    EXPECT_EQ(grouped({"TCXc"}), (ByArea{{"CPU", "TCXc TCXc"}}));
    ASSERT_EQ(groupingRulesFor("TCXc").size(), 2U);
    EXPECT_EQ(groupingRulesFor("TCXc")[0].rule, 3);
    EXPECT_EQ(groupingRulesFor("TCXc")[1].rule, 4);
}

TEST(SensorGrouping, KeepsTheOrderOfDiscoveryAndDuplicates) {
    EXPECT_EQ(grouped({"TC1C", "TG0D", "TC0C", "TC1C"}),
              (ByArea{{"CPU", "TC1C TC0C TC1C"}, {"GPU", "TG0D"}}));
}

TEST(SensorGrouping, NeverGroupsTheGPUOfAPCIeCard) {
    EXPECT_EQ(grouped({"TeGG"}), ByArea{});
    EXPECT_TRUE(groupingRulesFor("TeGG").empty());
}

TEST(SensorGrouping, TakesTPOPWithTheLetterOOnly) {
    EXPECT_EQ(grouped({"TP0P", "TPOP"}), (ByArea{{"Logic Board", "TPOP"}}));
}

TEST(SensorGrouping, PutsDriveBaysInTheEnclosureAndDrivesAmongTheDrives) {
    EXPECT_EQ(grouped({"TH0P", "TH0A", "TH8P", "TH0B"}),
              (ByArea{{"Enclosure", "TH0P TH8P"}, {"Hard Drive", "TH0A TH0B"}}));
}

TEST(SensorGrouping, TakesTheHotterAmbientSensor) {
    EXPECT_EQ(grouped({"TA0P", "TA0p"}, {{"TA0P", 30}, {"TA0p", 35}}), (ByArea{{"Logic Board", "TA0p"}}));
    EXPECT_EQ(grouped({"TA0p", "TA0P"}, {{"TA0P", 35.25}, {"TA0p", 35}}), (ByArea{{"Logic Board", "TA0P"}}));
    EXPECT_EQ(grouped({"TA0P", "TA0p"}, {{"TA0P", 35}, {"TA0p", 35}}), (ByArea{{"Logic Board", "TA0p"}}));
}

TEST(SensorGrouping, ReadsNoTemperatureForOneAmbientSensor) {
    EXPECT_EQ(grouped({"TA0P"}), (ByArea{{"Logic Board", "TA0P"}}));
    EXPECT_EQ(grouped({"TA0p"}), ByArea{});
}

TEST(SensorGrouping, CountsBothAmbientSensorsAs0WithoutAReader) {
    SensorLists lists;
    lists.tempSensorNames = {"TA0P", "TA0p"};
    groupSensors(lists, nullptr);
    EXPECT_EQ(lists.logicBoardSensorNames, (KeyList{"TA0p"}));
}

TEST(SensorGrouping, PassesOverKeysThatHaveANameOfTheirOwn) {
    SensorLists lists;
    lists.tempSensorNames = {"TC0P", "TA0P", "TA0p", "TC0D"};
    lists.customSensorsToReadableNamesMap["TC0P"] = "Socket";
    lists.customSensorsToReadableNamesMap["TA0p"] = "Case";
    lists.cpuSensorNames = {"TC0P"};
    lists.lcdSensorNames = {"TA0p"};
    groupSensors(lists, [](SensorKey) -> double { throw std::logic_error("one ambient sensor is left"); });
    EXPECT_EQ(byArea(lists), (ByArea{{"CPU", "TC0P TC0D"}, {"LCD", "TA0p"}, {"Logic Board", "TA0P"}}));
}

}  // namespace
}  // namespace calorivo
