#include "sensors/SensorDiscovery.h"
#include "support/FakeSysCtl.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace calorivo {
namespace {

using Text = std::optional<std::string>;

TEST(GetMacModelString, AsksForTheSizeThenForTheValue) {
    test::FakeSysCtl sysCtl;
    sysCtl.set("hw.model", "MacBookPro11,3").set("hw.machine", "x86_64");
    EXPECT_EQ(getMacModelString(sysCtl), Text("MacBookPro11,3"));
    EXPECT_EQ(sysCtl.calls, (std::vector<std::string>{"hw.model size", "hw.model value"}));
}

TEST(GetMacModelString, IsNoneWhenTheMachineDoesNotTell) {
    test::FakeSysCtl sysCtl;
    EXPECT_EQ(getMacModelString(sysCtl), Text());
    EXPECT_EQ(sysCtl.calls, (std::vector<std::string>{"hw.model size"}));
}

TEST(GetMacModelString, IsNoneWhenTheValueCannotBeCopied) {
    test::FakeSysCtl sysCtl;
    sysCtl.set("hw.model", "iMac14,2").failsToCopy = true;
    EXPECT_EQ(getMacModelString(sysCtl), Text());
}

TEST(GetMacModelString, EndsAtTheFirstNUL) {
    test::FakeSysCtl sysCtl;
    sysCtl.set("hw.model", std::string("iMac\0 14,2", 10));
    EXPECT_EQ(getMacModelString(sysCtl), Text("iMac"));
    sysCtl.set("hw.model", "");
    EXPECT_EQ(getMacModelString(sysCtl), Text(""));
}

struct Row {
    ProcessArguments arguments;
    Text model;
    Text keysFile;
};

const std::vector<Row> rows{
    {{}, "Real1,1", {}},
    {{"calorivo"}, "Real1,1", {}},
    {{"calorivo", "-custommodel"}, "Real1,1", {}},
    {{"calorivo", "-custommodel", "Other2,2"}, "Other2,2", {}},
    {{"calorivo", "-custommodel", ""}, "", {}},
    {{"calorivo", "-CustomModel", "Other2,2"}, "Real1,1", {}},
    {{"calorivo", "--custommodel", "Other2,2"}, "Real1,1", {}},
    {{"calorivo", "-keysfile"}, "Real1,1", {}},
    {{"calorivo", "-keysfile", "a.txt"}, "Real1,1", "a.txt"},
    {{"calorivo", "a.txt", "-keysfile"}, "Real1,1", {}},
    {{"calorivo", "-x", "-keysfile", "a.txt"}, "Real1,1", {}},
    {{"calorivo", "-custommodel", "Other2,2", "-keysfile"}, "Other2,2", {}},
    {{"calorivo", "-custommodel", "Other2,2", "-keysfile", "b.txt"}, "Other2,2", "b.txt"},
    {{"calorivo", "-custommodel", "Other2,2", "-keysfile", "b.txt", "more"}, "Other2,2", "b.txt"},
    {{"calorivo", "-x", "y", "-keysfile", "b.txt"}, "Real1,1", "b.txt"},
    {{"calorivo", "-keysfile", "a.txt", "-keysfile", "b.txt"}, "Real1,1", "b.txt"},
    {{"calorivo", "-keysfile", "a.txt", "-keysfile"}, "Real1,1", "a.txt"},
    {{"calorivo", "-keysfile", "a.txt", "-custommodel", "Other2,2"}, "Real1,1", "a.txt"},
    {{"calorivo", "-custommodel", "-keysfile", "a.txt"}, "-keysfile", {}},
};

TEST(ProcessOptions, AreTakenAtTheirPlacesOnly) {
    test::FakeSysCtl sysCtl;
    sysCtl.set("hw.model", "Real1,1");
    for (const Row& row : rows) {
        EXPECT_EQ(modelNameFor(row.arguments, sysCtl), row.model) << testing::PrintToString(row.arguments);
        EXPECT_EQ(keysFilePath(row.arguments), row.keysFile) << testing::PrintToString(row.arguments);
    }
}

TEST(ProcessOptions, SpareTheQuestionForTheModelWhenOneIsGiven) {
    test::FakeSysCtl sysCtl;
    EXPECT_EQ(modelNameFor({"calorivo", "-custommodel", "Other2,2"}, sysCtl), Text("Other2,2"));
    EXPECT_TRUE(sysCtl.calls.empty());
    EXPECT_EQ(modelNameFor({"calorivo"}, sysCtl), Text());
}

}  // namespace
}  // namespace calorivo
