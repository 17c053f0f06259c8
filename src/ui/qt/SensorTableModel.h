#pragma once

#include "app/SensorTable.h"
#include "ui/qt/LevelBarDelegate.h"

#include <QAbstractTableModel>
#include <QString>

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace calorivo {

/// The rows of the sensor table for the toolkit's views, as far as the filter lets them through. Each row
/// holds what was announced last, so that a reload announces the cells that look different now, one by one,
/// and nothing else. Main thread.
class SensorTableModel final : public QAbstractTableModel, public LevelBarSource {
    Q_OBJECT
  public:
    enum Column { nameColumn, valueColumn, levelColumn, columns };

    /// All must outlive this object. Empty until the first reload.
    SensorTableModel(SensorTable& table, const SourceList& sourceList, const SensorLists& lists,
                     QObject* parent);

    /// Tells the serial number of the drive whose temperature a sensor is, or nothing. Such a sensor has no
    /// row beside that of its drive.
    void setDriveMeasuredBy(std::function<std::string(const std::string& key)> driveMeasuredBy) {
        driveMeasuredBy_ = std::move(driveMeasuredBy);
    }
    /// Asks for the rows and for their values anew. What comes of it is a new sample: a drive's is recorded
    /// when its bar is painted.
    void reload();
    /// The same rows are to be painted again: announces the bars whose maximum was changed. That is no
    /// sample.
    void repaint();
    /// Only rows whose name or identifier contains the text are there, in capitals or not.
    void setFilter(const QString& text);
    [[nodiscard]] const QString& filter() const { return filter_; }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    [[nodiscard]] const QZTemperatureLevelIndicatorCell* levelBarToPaint(int row) override;

    // The row must exist.
    [[nodiscard]] const QString& nameOfRow(int row) const { return shown(row).name; }
    [[nodiscard]] const QString& valueOfRow(int row) const { return shown(row).value; }
    /// None when nothing was recorded.
    [[nodiscard]] QString maximumOfRow(int row) const;
    /// The key of a sensor, or the serial number of a drive.
    [[nodiscard]] const std::string& identifierOfRow(int row) const { return shown(row).identifier; }
    /// None for a drive.
    [[nodiscard]] std::optional<SensorKey> sensorKeyOfRow(int row) const;

  Q_SIGNALS:
    /// Around every change of which rows there are: what is selected is to be kept by identifier.
    void rowsAboutToChange();
    void rowsChanged();

  private:
    /// How the bar looks, fine enough for the eye: half degrees.
    struct Level {
        long value = 0;
        /// 0 for no tick.
        long maximum = 0;
        friend bool operator==(const Level&, const Level&) = default;
    };
    struct Place {
        /// The row's number in the table without the filter.
        std::size_t tableRow = 0;
        std::string identifier;
        bool isDrive = false;
    };
    struct Row : Place {
        std::string nameText;
        std::string valueText;
        QString name;
        QString value;
        Level level;
        /// Its value was not painted yet since the last reload, and so not recorded.
        bool isSample = true;
    };

    [[nodiscard]] const Row& shown(int row) const { return rows_[static_cast<std::size_t>(row)]; }
    void collectPlaces();
    void leaveOutSensorsOfDrives();
    [[nodiscard]] bool passesFilter(const Place& place);
    void takeOverPlaces();
    void replaceRows(std::size_t first, std::size_t oldEnd, std::size_t newEnd);
    void announceDifferences(int row);
    [[nodiscard]] bool readName(Row& row);
    [[nodiscard]] bool readValue(Row& row);
    [[nodiscard]] bool readLevel(Row& row);
    [[nodiscard]] std::string text(TableColumn column, std::size_t tableRow);
    [[nodiscard]] double celsius(std::size_t tableRow);
    [[nodiscard]] float recordedMaximum(const std::string& identifier) const;
    void announce(int row, Column column);

    SensorTable& table_;
    const SourceList& sourceList_;
    const SensorLists& lists_;
    std::function<std::string(const std::string& key)> driveMeasuredBy_;
    QString filter_;
    std::vector<Row> rows_;
    /// The last thing was a repaint: rows that the filter lets in are no new samples either.
    bool isOnlyRepainted_ = false;
    /// What the table has now: kept only to be used again.
    std::vector<Place> places_;
    QZTemperatureLevelIndicatorCell paintedAgain_;
};

}  // namespace calorivo
