#include "sensors/Areas.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace calorivo {
namespace {

TEST(Areas, StandInTheOrderOfTheSourceListWithTheirFixedTags) {
    std::vector<std::string> shown;
    for (const Area& area : areas)
        shown.push_back(std::string(area.name) + " " + std::string(area.icon) + " " +
                        std::to_string(area.tag));
    EXPECT_EQ(shown, (std::vector<std::string>{
                         "All computer 17", "CPU cpu 0", "CPU Relative cpu_relative 18", "GPU gpu 1",
                         "Battery battery 5", "Enclosure enclosure 16", "Hard Drive hd 2", "LCD lcd 9",
                         "Logic Board motherboard 15", "Memory memory 7", "Northbridge northbridge 10",
                         "Optical Drive optical 3", "Palm Rest trackpad 12", "PCI pci 13",
                         "Power Supply power 11", "Thunderbolt thunderbolt 14", "Wireless wireless 4"}));
}

TEST(Areas, AreFoundByTheirWholeNameButNotAll) {
    ASSERT_NE(areaNamed("Palm Rest"), nullptr);
    EXPECT_EQ(areaNamed("Palm Rest")->sensors, &SensorLists::palmRestSensorNames);
    EXPECT_EQ(areaNamed("palm rest"), nullptr);
    EXPECT_EQ(areaNamed("All"), nullptr);
    EXPECT_EQ(areaNamed(""), nullptr);
}

TEST(Areas, HaveEachOfTheSixteenListsOnceInTheValidOrder) {
    for (const Area& area : areas) {
        const auto times = std::count(validSensorOrder.begin(), validSensorOrder.end(), area.sensors);
        EXPECT_EQ(times, area.tag == allAreasTag ? 0 : 1) << area.name;
        EXPECT_EQ(areaOf(area.sensors).name, area.name);
    }
}

}  // namespace
}  // namespace calorivo
