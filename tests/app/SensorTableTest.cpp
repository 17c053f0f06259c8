#include "app/SensorTable.h"

#include "support/Machine.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace calorivo {
namespace {

using Column = TableColumn;

constexpr std::int32_t cpuTag = 0;
const DriveDictionary disk{"Disk ", " A1", 37};

/// Two CPU sensors at 61 and 47.5 degrees, one drive sensor at 33, and a drive at 37; the CPU area is chosen.
class SensorTableTest : public testing::Test {
  protected:
    SensorTableTest() {
        machine.cpu("TC0P", 61).cpu("TC1C", 47.5).sensor(&SensorLists::hdSensorNames, "TH0A", 33);
        machine.preferences.checkDriveTemps = true;
        smartInfo.assign({disk});
        sourceList.activeAreaTag = cpuTag;
    }
    [[nodiscard]] Value value(Column column, std::size_t row) {
        return table.tableViewObjectValueForTableColumnRow(TableView::cpuTableView, column, row);
    }
    /// Name, text, level and whatever any other column has.
    [[nodiscard]] std::vector<Value> row(std::size_t row) {
        return {value(Column::sensorNameTableColumn, row), value(Column::cpuValueTableColumn, row),
                value(Column::maxTempTableColumn, row), value(Column::other, row)};
    }
    [[nodiscard]] QZTemperatureLevelIndicatorCell* cell(std::size_t row) {
        return table.tableViewDataCellForTableColumnRow(TableView::cpuTableView, Column::maxTempTableColumn,
                                                        row);
    }
    [[nodiscard]] std::optional<std::string> toolTip(std::size_t row) const {
        return table.tableViewToolTipForCellRectTableColumnRowMouseLocation(TableView::cpuTableView,
                                                                            Column::maxTempTableColumn, row);
    }
    [[nodiscard]] std::string name(SensorKey key) const {
        return machine.naming.convertKeyNameToHumanString(key);
    }

    test::Machine machine;
    SmartInfo smartInfo;
    SourceList sourceList{machine.lists, smartInfo, machine.preferences.checkDriveTemps, {}};
    SensorTable table{machine.lists, sourceList, machine.naming, machine.reader};
};

using Values = std::vector<Value>;

TEST_F(SensorTableTest, ShowsNameTextAndLevelOfASensor) {
    EXPECT_EQ(row(0), (Values{name("TC0P"), "61°C", 61.0, {}}));
    EXPECT_EQ(row(1), (Values{name("TC1C"), "48°C", 47.5, {}}));
}

TEST_F(SensorTableTest, ShowsTheTextInTheUsersUnitAndTheLevelInCelsius) {
    machine.fahrenheit();
    EXPECT_EQ(row(0), (Values{name("TC0P"), "142°F", 61.0, {}}));
}

TEST_F(SensorTableTest, ShowsTheLastReadings) {
    machine.check().temperature("TC0P", 80);
    EXPECT_EQ(row(0), (Values{name("TC0P"), "61°C", 61.0, {}}));
}

TEST_F(SensorTableTest, ShowsADriveByItsDescriptionWithItsTemperatureInEveryOtherColumn) {
    sourceList.activeAreaTag = hardDriveAreaTag;
    EXPECT_EQ(row(0), (Values{"Disk (A1)", "37°C", 37, 37}));
    EXPECT_EQ(row(1), (Values{name("TH0A"), "33°C", 33.0, {}}));
    sourceList.activeAreaTag = allAreasTag;
    EXPECT_EQ(row(3), (Values{"Disk (A1)", "37°C", 37, 37}));
}

TEST_F(SensorTableTest, ShowsNothingInNoAreaBeyondTheRowsAndInOtherTables) {
    EXPECT_EQ(row(2), Values(4));
    for (const std::int32_t tag : {6, 8, 19}) {
        sourceList.activeAreaTag = tag;
        EXPECT_EQ(row(0), Values(4)) << tag;
    }
    sourceList.activeAreaTag = cpuTag;
    EXPECT_EQ(table.tableViewObjectValueForTableColumnRow(TableView::other, Column::sensorNameTableColumn, 0),
              Value());
}

TEST_F(SensorTableTest, GivesEachRowTheCellOfItsSensor) {
    EXPECT_EQ(cell(0), &machine.cell("TC0P"));
    EXPECT_EQ(cell(1), &machine.cell("TC1C"));
    EXPECT_EQ(cell(2), nullptr);
}

TEST_F(SensorTableTest, GivesACellInTheLevelColumnOnly) {
    for (const Column column : {Column::sensorNameTableColumn, Column::cpuValueTableColumn, Column::other})
        EXPECT_EQ(table.tableViewDataCellForTableColumnRow(TableView::cpuTableView, column, 0), nullptr);
    EXPECT_EQ(table.tableViewDataCellForTableColumnRow(TableView::other, Column::maxTempTableColumn, 0),
              nullptr);
}

TEST_F(SensorTableTest, MakesTheCellOfADriveFromThePrototypeWhenItIsFirstShown) {
    machine.lists.customCell.setRange({.minValue = 10, .maxValue = 90});
    sourceList.activeAreaTag = hardDriveAreaTag;
    EXPECT_EQ(toolTip(0), std::nullopt);
    EXPECT_EQ(machine.lists.sensorNameToCustomCellMap.count("A1"), 0U);
    EXPECT_EQ(*cell(0), machine.lists.customCell);
    cell(0)->setMaxUsedValue(44);
    EXPECT_EQ(machine.lists.sensorNameToCustomCellMap.at("A1").maxUsedValue(), 44.0F);
    EXPECT_EQ(cell(0)->maxUsedValue(), 44.0F);
}

TEST_F(SensorTableTest, KeepsTheRestoredMaximumOfADrive) {
    machine.lists.sensorNameToCustomCellMap["A1"].setMaxUsedValue(58);
    sourceList.activeAreaTag = hardDriveAreaTag;
    EXPECT_EQ(toolTip(0), "Maximum Recorded Temperature: 58°C");
    EXPECT_EQ(table.levelCellToPaint(0)->objectValue(), 37.0);
    EXPECT_EQ(table.levelCellToPaint(0)->maxUsedValue(), 58.0F);
}

TEST_F(SensorTableTest, TellsTheRecordedMaximumInTheUsersUnit) {
    for (const double value : {40.0, 55.0, 50.0}) machine.cell("TC0P").setObjectValue(value);
    EXPECT_EQ(toolTip(0), "Maximum Recorded Temperature: 55°C");
    machine.fahrenheit();
    EXPECT_EQ(toolTip(0), "Maximum Recorded Temperature: 131°F");
    EXPECT_EQ(toolTip(1), "Maximum Recorded Temperature: N/A");
}

TEST_F(SensorTableTest, HasToolTipsOnLevelBarsOnly) {
    const auto tip = [this](TableView view, Column column) {
        return table.tableViewToolTipForCellRectTableColumnRowMouseLocation(view, column, 0);
    };
    EXPECT_EQ(tip(TableView::cpuTableView, Column::sensorNameTableColumn), std::nullopt);
    EXPECT_EQ(tip(TableView::cpuTableView, Column::cpuValueTableColumn), std::nullopt);
    EXPECT_EQ(tip(TableView::other, Column::maxTempTableColumn), std::nullopt);
    EXPECT_EQ(toolTip(7), std::nullopt);
}

TEST_F(SensorTableTest, RecordsWhatItPaints) {
    sourceList.activeAreaTag = hardDriveAreaTag;
    ASSERT_NE(table.levelCellToPaint(0), nullptr);
    smartInfo.assign({{"Disk ", " A1", 25}});
    EXPECT_EQ(table.levelCellToPaint(0)->objectValue(), 25.0);
    EXPECT_EQ(table.levelCellToPaint(0)->maxUsedValue(), 37.0F);
    EXPECT_EQ(table.levelCellToPaint(9), nullptr);
}

TEST_F(SensorTableTest, HasNoTicksAfterAResetUntilTheNextCheck) {
    machine.check();
    EXPECT_EQ(machine.cell("TC0P").maxUsedValue(), 61.0F);
    machine.cycle.resetMaxTempsClicked();
    EXPECT_EQ(cell(0)->tickRectangle({0, 0, 100, 10}), std::nullopt);
    machine.check();
    EXPECT_EQ(cell(0)->tickRectangle({0, 0, 100, 10}), (Rectangle{50, 0, 2, 10}));
}

TEST_F(SensorTableTest, CopesWithAnAbsentMap) {
    machine.lists.sensorNameToCustomCellMap.clear();
    machine.lists.hasCustomCellMap = false;
    machine.lists.customCell.setRange({.minValue = 10, .maxValue = 90});
    EXPECT_EQ(*cell(0), machine.lists.customCell);
    EXPECT_EQ(table.levelCellToPaint(0)->objectValue(), 61.0);
    EXPECT_EQ(table.levelCellToPaint(1)->maxUsedValue(), 47.5F);
    EXPECT_EQ(toolTip(0), std::nullopt);
    EXPECT_TRUE(machine.lists.sensorNameToCustomCellMap.empty());
}

}  // namespace
}  // namespace calorivo
