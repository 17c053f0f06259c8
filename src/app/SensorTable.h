#pragma once

#include "monitor/TemperatureReader.h"
#include "platform/KeyValueCoding.h"
#include "sensors/SensorLists.h"
#include "sensors/SensorNaming.h"
#include "sensors/SourceList.h"

#include <cstddef>
#include <optional>
#include <string>

namespace calorivo {

enum class TableColumn { sensorNameTableColumn, cpuValueTableColumn, maxTempTableColumn, other };

/// What the sensor table shows of the chosen area: one row for each sensor or drive. Main thread.
class SensorTable {
  public:
    /// All must outlive this object.
    SensorTable(SensorLists& lists, const SourceList& sourceList, const SensorNaming& naming,
                TemperatureReader& reader)
        : lists_(lists), sourceList_(sourceList), naming_(naming), reader_(reader) {}

    /// A text, or for the level bar a number of degrees Celsius; nil where there is nothing.
    [[nodiscard]] Value tableViewObjectValueForTableColumnRow(TableView table, TableColumn column,
                                                              std::size_t row);
    /// The row's own level bar, made when it is first asked for; null for the other columns, and where there
    /// is no row. Good until the next call.
    [[nodiscard]] QZTemperatureLevelIndicatorCell* tableViewDataCellForTableColumnRow(TableView table,
                                                                                      TableColumn column,
                                                                                      std::size_t row);
    /// None but for a level bar that was made already.
    [[nodiscard]] std::optional<std::string> tableViewToolTipForCellRectTableColumnRowMouseLocation(
        TableView table, TableColumn column, std::size_t row) const;

    /// The highest temperature recorded, as a text in the user's unit. None as above.
    [[nodiscard]] std::optional<std::string> maximumTextOfRow(std::size_t row) const;

    /// The row's level bar with its present value, as a table paints it. Showing a value also records it: a
    /// drive has its maximum from here alone. Null and good as above.
    [[nodiscard]] const QZTemperatureLevelIndicatorCell* levelCellToPaint(std::size_t row);

  private:
    [[nodiscard]] Value valueOfSensor(SensorKey key, TableColumn column);
    [[nodiscard]] Value valueOfDrive(const DriveDictionary& drive, TableColumn column) const;

    SensorLists& lists_;
    const SourceList& sourceList_;
    const SensorNaming& naming_;
    TemperatureReader& reader_;
    /// Stands in for the cell of a row while there is no map.
    QZTemperatureLevelIndicatorCell unmappedCell_;
};

}  // namespace calorivo
