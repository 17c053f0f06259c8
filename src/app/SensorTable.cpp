#include "app/SensorTable.h"

#include "monitor/DriveTemperatures.h"
#include "platform/Format.h"

#include <variant>

namespace calorivo {

Value SensorTable::tableViewObjectValueForTableColumnRow(TableView table, TableColumn column,
                                                         std::size_t row) {
    if (table != TableView::cpuTableView) return {};
    const TableRow shown = sourceList_.row(row);
    if (const auto* key = std::get_if<SensorKey>(&shown)) return valueOfSensor(*key, column);
    if (const auto* drive = std::get_if<DriveDictionary>(&shown)) return valueOfDrive(*drive, column);
    return {};
}

Value SensorTable::valueOfSensor(SensorKey key, TableColumn column) {
    switch (column) {
        case TableColumn::sensorNameTableColumn:
            return naming_.convertKeyNameToHumanString(key);
        case TableColumn::cpuValueTableColumn:
            return reader_.convertDegreesToString(reader_.getCachedTemperatureForSensor(key));
        case TableColumn::maxTempTableColumn:
            // In Celsius, whatever the unit is: the bar's range and its marks are in Celsius.
            return reader_.getCachedTemperatureForSensor(key);
        case TableColumn::other:
            break;
    }
    return {};
}

Value SensorTable::valueOfDrive(const DriveDictionary& drive, TableColumn column) const {
    switch (column) {
        case TableColumn::sensorNameTableColumn:
            return driveDescriptionFromDictionary(&drive);
        case TableColumn::cpuValueTableColumn:
            return driveTemperatureStringFromDictionary(&drive, reader_);
        case TableColumn::maxTempTableColumn:
        case TableColumn::other:
            break;
    }
    return drive.temp;
}

QZTemperatureLevelIndicatorCell* SensorTable::tableViewDataCellForTableColumnRow(TableView table,
                                                                                 TableColumn column,
                                                                                 std::size_t row) {
    if (table != TableView::cpuTableView || column != TableColumn::maxTempTableColumn) return nullptr;
    const auto name = sourceList_.getTemperatureSensorNameForRow(row);
    if (!name) return nullptr;
    if (!lists_.hasCustomCellMap) {
        unmappedCell_ = lists_.customCell;
        return &unmappedCell_;
    }
    return &lists_.sensorNameToCustomCellMap.try_emplace(*name, lists_.customCell).first->second;
}

std::optional<std::string> SensorTable::tableViewToolTipForCellRectTableColumnRowMouseLocation(
    TableView table, TableColumn column, std::size_t row) const {
    if (table != TableView::cpuTableView || column != TableColumn::maxTempTableColumn) return std::nullopt;
    const auto maximum = maximumTextOfRow(row);
    if (!maximum) return std::nullopt;
    return format("Maximum Recorded Temperature: %@", *maximum);
}

std::optional<std::string> SensorTable::maximumTextOfRow(std::size_t row) const {
    const auto name = sourceList_.getTemperatureSensorNameForRow(row);
    if (!name) return std::nullopt;
    const auto cell = lists_.sensorNameToCustomCellMap.find(*name);
    if (cell == lists_.sensorNameToCustomCellMap.end()) return std::nullopt;
    return reader_.convertDegreesToString(static_cast<double>(cell->second.maxUsedValue()));
}

const QZTemperatureLevelIndicatorCell* SensorTable::levelCellToPaint(std::size_t row) {
    constexpr auto table = TableView::cpuTableView;
    constexpr auto column = TableColumn::maxTempTableColumn;
    QZTemperatureLevelIndicatorCell* const cell = tableViewDataCellForTableColumnRow(table, column, row);
    if (cell != nullptr)
        cell->setObjectValue(tableViewObjectValueForTableColumnRow(table, column, row).doubleValue());
    return cell;
}

}  // namespace calorivo
