#include "sensors/SourceList.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace calorivo {
namespace {

constexpr std::int32_t batteryTag = 5;
constexpr std::int32_t lcdTag = 9;

class SourceListTest : public testing::Test {
  protected:
    [[nodiscard]] std::vector<std::string> names() const {
        std::vector<std::string> all;
        for (const SourceListModel& entry : sourceList.sourceListNames.get()) all.push_back(entry.name);
        return all;
    }
    /// The names of the rows of an area, as many as the table has; "nil" for none.
    [[nodiscard]] std::vector<std::string> rows(std::int32_t tag) {
        sourceList.activeAreaTag = tag;
        std::vector<std::string> all;
        const std::size_t count = sourceList.numberOfRowsInTableView(TableView::cpuTableView);
        for (std::size_t row = 0; row < count; ++row)
            all.push_back(sourceList.getTemperatureSensorNameForRow(row).value_or("nil"));
        return all;
    }
    /// What follows the selection, as the controller does.
    [[nodiscard]] Observation follow() {
        return sourceList.observeSelectedObjects([this] {
            ++changes;
            const auto selected = sourceList.selectedObjects();
            if (!selected.empty()) sourceList.setActiveAreaTag(selected.front().tag);
        });
    }

    SensorLists lists;
    SmartInfo smartInfo;
    Property<bool> checkDriveTemps{true};
    int reloads = 0;
    int changes = 0;
    SourceList sourceList{lists, smartInfo, checkDriveTemps, [this] { ++reloads; }};
};

using Names = std::vector<std::string>;

TEST_F(SourceListTest, ShowsAllEvenWithoutSensors) {
    sourceList.setupSourceList();
    EXPECT_EQ(sourceList.sourceListNames.get(), (SourceList::Entries{{"All", {"computer", true}, 17}}));
}

TEST_F(SourceListTest, ListsEveryAreaThatHasSensorsInItsOrder) {
    for (const Area& area : areas) (lists.*area.sensors).append("TEST");
    sourceList.setupSourceList();
    SourceList::Entries expected;
    for (const Area& area : areas)
        expected.push_back({std::string(area.name), {std::string(area.icon), true}, area.tag});
    EXPECT_EQ(sourceList.sourceListNames.get(), expected);
}

TEST_F(SourceListTest, LeavesAreasWithoutSensorsOut) {
    lists.cpuSensorNames = {"TC0P"};
    lists.memorySensorNames = {"TM0P"};
    sourceList.setupSourceList();
    EXPECT_EQ(names(), (Names{"All", "CPU", "Memory"}));
}

TEST_F(SourceListTest, ShowsHardDriveForDrivesAloneAndForSensorsAlone) {
    smartInfo.assign({{"Disk", "A1", 30}});
    sourceList.setupSourceList();
    EXPECT_EQ(names(), (Names{"All", "Hard Drive"}));
    smartInfo.clear();
    sourceList.setupSourceList();
    EXPECT_EQ(names(), (Names{"All"}));
    lists.hdSensorNames = {"TH0A"};
    sourceList.setupSourceList();
    EXPECT_EQ(names(), (Names{"All", "Hard Drive"}));
}

TEST_F(SourceListTest, AddsAnAreaOnlyWhenItHoldsSomethingAndMakesItsIconATemplate) {
    SourceList::Entries entries;
    SourceList::addAreaToSourceListWithNameWithIconWithTag(0, entries, "Empty", {"none", false}, 40);
    SourceList::addAreaToSourceListWithNameWithIconWithTag(3, entries, "Full", {"some", false}, 41);
    EXPECT_EQ(entries, (SourceList::Entries{{"Full", {"some", true}, 41}}));
}

TEST_F(SourceListTest, HasTheDrivesFirstInHardDriveAndLastInAll) {
    lists.hdSensorNames = {"TH0A", "TH0B", "TH0C"};
    lists.validSensorNames = {"TC0P", "TH0A", "TH0B", "TH0C"};
    smartInfo.assign({{"Disk", "  A1 ", 30}, {"Disk", "B2\t", 40}});
    EXPECT_EQ(rows(hardDriveAreaTag), (Names{"A1", "B2", "TH0A", "TH0B", "TH0C"}));
    EXPECT_EQ(rows(allAreasTag), (Names{"TC0P", "TH0A", "TH0B", "TH0C", "A1", "B2"}));
}

TEST_F(SourceListTest, HasOnlySensorsInAllWhileDrivesAreNotChecked) {
    lists.validSensorNames = {"TC0P", "TM0P"};
    checkDriveTemps = false;
    smartInfo.assign({{"Disk", "A1", 30}});
    EXPECT_EQ(rows(allAreasTag), (Names{"TC0P", "TM0P"}));
}

TEST_F(SourceListTest, HasTheRowsOfEachArea) {
    std::map<std::int32_t, Names> expected;
    for (const Area& area : areas) {
        const std::string key = "T" + std::to_string(100 + area.tag);
        (lists.*area.sensors).append(SensorKey(key));
        expected[area.tag] = {key};
    }
    for (const auto& [tag, keys] : expected) EXPECT_EQ(rows(tag), keys) << tag;
}

TEST_F(SourceListTest, HasNoRowsForTagsOfNoArea) {
    for (const Area& area : areas) (lists.*area.sensors).append("TEST");
    smartInfo.assign({{"Disk", "A1", 30}});
    for (const std::int32_t tag : {6, 8, 19, 1000, -1}) {
        EXPECT_EQ(rows(tag), Names{}) << tag;
        EXPECT_EQ(sourceList.getTemperatureSensorNameForRow(0), std::nullopt) << tag;
    }
}

TEST_F(SourceListTest, HasNoRowsInAnyOtherTable) {
    lists.cpuSensorNames = {"TC0P"};
    sourceList.activeAreaTag = 0;
    EXPECT_EQ(sourceList.numberOfRowsInTableView(TableView::cpuTableView), 1U);
    EXPECT_EQ(sourceList.numberOfRowsInTableView(TableView::other), 0U);
}

TEST_F(SourceListTest, NamesNothingBeyondItsRows) {
    lists.cpuSensorNames = {"TC0P"};
    lists.hdSensorNames = {"TH0A"};
    lists.validSensorNames = {"TC0P"};
    smartInfo.assign({{"Disk", "A1", 30}});
    for (const std::int32_t tag : {std::int32_t{0}, hardDriveAreaTag, allAreasTag}) {
        sourceList.activeAreaTag = tag;
        EXPECT_EQ(sourceList.getTemperatureSensorNameForRow(2), std::nullopt) << tag;
        EXPECT_EQ(sourceList.row(2), TableRow()) << tag;
    }
}

TEST_F(SourceListTest, ShowsSensorsAndWholeDrivesAsRows) {
    lists.hdSensorNames = {"TH0A"};
    const DriveDictionary disk{"Disk", " A1", 30};
    smartInfo.assign({disk});
    sourceList.activeAreaTag = hardDriveAreaTag;
    EXPECT_EQ(sourceList.row(0), TableRow(disk));
    EXPECT_EQ(sourceList.row(1), TableRow(SensorKey("TH0A")));
}

TEST_F(SourceListTest, ReloadsTheTableWhenAnotherAreaIsChosen) {
    EXPECT_EQ(sourceList.activeAreaTag, 0);
    sourceList.setActiveAreaTag(lcdTag);
    EXPECT_EQ(sourceList.activeAreaTag, lcdTag);
    EXPECT_EQ(reloads, 1);
}

TEST_F(SourceListTest, SelectsTheAreaBelowAllAtFirst) {
    lists.batterySensorNames = {"TB0T"};
    lists.lcdSensorNames = {"TL0P"};
    const Observation following = follow();
    EXPECT_EQ(sourceList.sourceListSelectedIndexes.get(), SourceList::Indexes{1});
    sourceList.setupSourceList();
    EXPECT_EQ(sourceList.selectedObjects(),
              (SourceList::Entries{{"Battery", {"battery", true}, batteryTag}}));
    EXPECT_EQ(sourceList.activeAreaTag, batteryTag);
}

TEST_F(SourceListTest, SelectsTheAreaBelowAllWhenThereComesToBeOne) {
    const Observation following = follow();
    sourceList.setupSourceList();
    EXPECT_EQ(sourceList.selectedObjects(), SourceList::Entries{});
    smartInfo.assign({{"Disk", "A1", 30}});
    sourceList.setupSourceList();
    EXPECT_EQ(sourceList.activeAreaTag, hardDriveAreaTag);
}

TEST_F(SourceListTest, TellsOfTheSelectionWheneverItIsMade) {
    lists.batterySensorNames = {"TB0T"};
    lists.lcdSensorNames = {"TL0P"};
    sourceList.setupSourceList();
    const Observation following = follow();
    sourceList.setSourceListSelectedIndexes({2});
    sourceList.setSourceListSelectedIndexes({});
    sourceList.setSourceListSelectedIndexes({9});
    EXPECT_EQ(changes, 3);
    EXPECT_EQ(sourceList.activeAreaTag, lcdTag);
}

TEST_F(SourceListTest, KeepsTheChosenAreaSelectedWhenTheListIsBuiltAnew) {
    lists.lcdSensorNames = {"TL0P"};
    lists.validSensorNames = {"TL0P"};
    const Observation following = follow();
    sourceList.setupSourceList();
    ASSERT_EQ(sourceList.activeAreaTag, lcdTag);
    smartInfo.assign({{"Disk", "A1", 30}});
    sourceList.setupSourceList();
    EXPECT_EQ(names(), (Names{"All", "Hard Drive", "LCD"}));
    EXPECT_EQ(sourceList.sourceListSelectedIndexes.get(), SourceList::Indexes{2});
    EXPECT_EQ(sourceList.activeAreaTag, lcdTag);
}

TEST_F(SourceListTest, KeepsTheChosenAreaEvenWhenItIsNotListedAnyMore) {
    lists.lcdSensorNames = {"TL0P"};
    smartInfo.assign({{"Disk", "A1", 30}});
    const Observation following = follow();
    sourceList.setupSourceList();
    ASSERT_EQ(sourceList.activeAreaTag, hardDriveAreaTag);
    smartInfo.clear();
    sourceList.setupSourceList();
    EXPECT_EQ(sourceList.selectedObjects(), SourceList::Entries{});
    EXPECT_EQ(sourceList.activeAreaTag, hardDriveAreaTag);
    smartInfo.assign({{"Disk", "A1", 30}});
    sourceList.setupSourceList();
    EXPECT_EQ(sourceList.selectedObjects(),
              (SourceList::Entries{{"Hard Drive", {"hd", true}, hardDriveAreaTag}}));
}

}  // namespace
}  // namespace calorivo
