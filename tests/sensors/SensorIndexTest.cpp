#include "sensors/SensorNaming.h"
#include "support/FixedGPUNames.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace calorivo {
namespace {

/// The index texts of the keys on a machine whose valid sensors are `valid`.
std::vector<std::string> indexes(const KeyList& valid, const KeyList& keys) {
    SensorLists lists;
    lists.validSensorNames = valid;
    test::FixedGPUNames gpuNames;
    const SensorNaming naming(lists, gpuNames);
    std::vector<std::string> texts;
    for (const SensorKey key : keys) texts.push_back(naming.indexText(key));
    return texts;
}

std::vector<std::string> indexes(const KeyList& valid) { return indexes(valid, valid); }

using Texts = std::vector<std::string>;

TEST(SensorIndex, CountsFromOne) {
    EXPECT_EQ(indexes({"TG2D", "TG3D", "TM8S", "TM9S"}), (Texts{"3", "4", "9", "10"}));
}

TEST(SensorIndex, LeavesOtherCharactersAsTheyAre) {
    EXPECT_EQ(indexes({"TMAS", "TGxD", "TC-C", "TC0C"}), (Texts{"A", "x", "-", ""}));
}

TEST(SensorIndex, CountsProcessorCoresFromOneOnlyWhereThereIsACore0) {
    EXPECT_EQ(indexes({"TC3C", "TC3D", "TC4P"}), (Texts{"3", "3", "4"}));
    EXPECT_EQ(indexes({"TC3C", "TC3D", "TC4P", "TC0C"}), (Texts{"4", "4", "5", ""}));
    EXPECT_EQ(indexes({"TC3C", "TC3D", "TC4P", "TC0c"}), (Texts{"4", "4", "5", ""}));
    EXPECT_EQ(indexes({"TC3C", "TC3D", "TC4P", "TC0D"}), (Texts{"3", "3", "4", ""}));
}

TEST(SensorIndex, LeavesDriveBaysAsTheyAreNumbered) {
    EXPECT_EQ(indexes({"TH0P", "TH1P", "TH3P", "TH8P"}), (Texts{"0", "1", "3", "8"}));
    EXPECT_EQ(indexes({}, {"TH9P"}), (Texts{"10"}));
    EXPECT_EQ(indexes({}, {"TH3p"}), (Texts{"4"}));
}

TEST(SensorIndex, GivesALoneSensorNoNumber) {
    EXPECT_EQ(indexes({"TG0D"}), (Texts{""}));
    EXPECT_EQ(indexes({"TG1D"}), (Texts{""}));
    EXPECT_EQ(indexes({"TG0D", "TG0P", "TG1d", "TC1D"}), (Texts{"", "", "", ""}));
}

TEST(SensorIndex, NumbersAPairFromOne) {
    EXPECT_EQ(indexes({"TG0D", "TG1D"}), (Texts{"1", "2"}));
    EXPECT_EQ(indexes({"TC0C", "TC1C"}), (Texts{"1", "2"}));
}

TEST(SensorIndex, GivesInstance1TheNumber1WhenThereIsAnInstance2) {
    EXPECT_EQ(indexes({"TC0C", "TC1C", "TC2C"}), (Texts{"1", "1", "3"}));
    EXPECT_EQ(indexes({"TM0S", "TM1S", "TM2S", "TM3S"}), (Texts{"1", "1", "3", "4"}));
    EXPECT_EQ(indexes({"TH0P", "TH1P", "TH2P"}), (Texts{"0", "1", "2"}));
}

TEST(SensorIndex, KeepsOneBasedCoresAsTheyAre) {
    EXPECT_EQ(indexes({"TC1C", "TC2C", "TC3C", "TC4C"}), (Texts{"1", "2", "3", "4"}));
}

TEST(SensorIndex, GivesInstance0NoNumberWhenOnlyAnInstance2IsThere) {
    EXPECT_EQ(indexes({"TM0S", "TM2S"}), (Texts{"", "3"}));
}

}  // namespace
}  // namespace calorivo
