#include "ui/qt/SensorTableModel.h"

#include "ui/qt/MainWindowText.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <variant>

namespace calorivo {

namespace {

constexpr auto table = TableView::cpuTableView;

long halfDegrees(double celsius) { return std::lround(celsius * 2.0); }

/// Assigns the text where it differs; whether it did.
bool update(std::string& text, QString& shown, std::string now) {
    if (text == now) return false;
    text = std::move(now);
    shown = asQString(text);
    return true;
}

}  // namespace

SensorTableModel::SensorTableModel(SensorTable& sensorTable, const SourceList& sourceList,
                                   const SensorLists& lists, QObject* parent)
    : QAbstractTableModel(parent), table_(sensorTable), sourceList_(sourceList), lists_(lists) {}

void SensorTableModel::reload() {
    isOnlyRepainted_ = false;
    collectPlaces();
    takeOverPlaces();
    for (int row = 0; row < rowCount(); ++row) announceDifferences(row);
}

void SensorTableModel::repaint() {
    isOnlyRepainted_ = true;
    for (int row = 0; row < rowCount(); ++row) {
        Row& repainted = rows_[static_cast<std::size_t>(row)];
        repainted.isSample = false;
        const Level now{repainted.level.value,
                        halfDegrees(static_cast<double>(recordedMaximum(repainted.identifier)))};
        if (std::exchange(repainted.level, now) != now) announce(row, levelColumn);
    }
}

void SensorTableModel::setFilter(const QString& text) {
    if (std::exchange(filter_, text.trimmed()) == text.trimmed()) return;
    collectPlaces();
    takeOverPlaces();
}

void SensorTableModel::collectPlaces() {
    places_.clear();
    const std::size_t count = sourceList_.numberOfRowsInTableView(table);
    for (std::size_t tableRow = 0; tableRow < count; ++tableRow) {
        auto identifier = sourceList_.getTemperatureSensorNameForRow(tableRow);
        // The drives may have become fewer since they were counted.
        if (!identifier) continue;
        Place place{tableRow, std::move(*identifier),
                    std::holds_alternative<DriveDictionary>(sourceList_.row(tableRow))};
        places_.push_back(std::move(place));
    }
    leaveOutSensorsOfDrives();
    std::erase_if(places_, [this](const Place& place) { return !passesFilter(place); });
}

void SensorTableModel::leaveOutSensorsOfDrives() {
    if (!driveMeasuredBy_) return;
    std::vector<std::string> serials;
    for (const Place& place : places_)
        if (place.isDrive) serials.emplace_back(trimmed(place.identifier));
    if (serials.empty()) return;
    std::erase_if(places_, [&](const Place& place) {
        return !place.isDrive &&
               std::ranges::find(serials, driveMeasuredBy_(place.identifier)) != serials.end();
    });
}

bool SensorTableModel::passesFilter(const Place& place) {
    if (filter_.isEmpty()) return true;
    const auto matches = [this](const std::string& text) {
        return asQString(text).contains(filter_, Qt::CaseInsensitive);
    };
    return matches(place.identifier) || matches(text(TableColumn::sensorNameTableColumn, place.tableRow));
}

void SensorTableModel::takeOverPlaces() {
    const auto isSame = [](const Place& old, const Place& now) {
        return old.identifier == now.identifier && old.isDrive == now.isDrive;
    };
    const auto [oldMiddle, newMiddle] =
        std::mismatch(rows_.begin(), rows_.end(), places_.begin(), places_.end(), isSame);
    const auto first = static_cast<std::size_t>(oldMiddle - rows_.begin());
    std::size_t oldEnd = rows_.size();
    std::size_t newEnd = places_.size();
    while (oldEnd > first && newEnd > first && isSame(rows_[oldEnd - 1], places_[newEnd - 1])) {
        --oldEnd;
        --newEnd;
    }
    if (oldEnd > first || newEnd > first) {
        Q_EMIT rowsAboutToChange();
        replaceRows(first, oldEnd, newEnd);
    }
    for (std::size_t row = 0; row < rows_.size(); ++row) rows_[row].tableRow = places_[row].tableRow;
    if (oldEnd > first || newEnd > first) Q_EMIT rowsChanged();
}

void SensorTableModel::replaceRows(std::size_t first, std::size_t oldEnd, std::size_t newEnd) {
    const auto at = [this](std::size_t row) { return rows_.begin() + static_cast<std::ptrdiff_t>(row); };
    if (oldEnd > first) {
        beginRemoveRows({}, static_cast<int>(first), static_cast<int>(oldEnd) - 1);
        rows_.erase(at(first), at(oldEnd));
        endRemoveRows();
    }
    if (newEnd == first) return;
    std::vector<Row> added;
    added.reserve(newEnd - first);
    for (std::size_t place = first; place < newEnd; ++place) {
        Row& row = added.emplace_back(Row{places_[place], {}, {}, {}, {}, {}, !isOnlyRepainted_});
        static_cast<void>(readName(row));
        static_cast<void>(readValue(row));
        static_cast<void>(readLevel(row));
    }
    beginInsertRows({}, static_cast<int>(first), static_cast<int>(newEnd) - 1);
    rows_.insert(at(first), std::make_move_iterator(added.begin()), std::make_move_iterator(added.end()));
    endInsertRows();
}

void SensorTableModel::announceDifferences(int row) {
    Row& read = rows_[static_cast<std::size_t>(row)];
    read.isSample = true;
    const bool hasNewName = readName(read);
    const bool hasNewValue = readValue(read);
    const bool hasNewLevel = readLevel(read);
    if (hasNewName) announce(row, nameColumn);
    if (hasNewValue) announce(row, valueColumn);
    if (hasNewLevel) announce(row, levelColumn);
}

bool SensorTableModel::readName(Row& row) {
    return update(row.nameText, row.name, text(TableColumn::sensorNameTableColumn, row.tableRow));
}

bool SensorTableModel::readValue(Row& row) {
    return update(row.valueText, row.value, text(TableColumn::cpuValueTableColumn, row.tableRow));
}

bool SensorTableModel::readLevel(Row& row) {
    const double value = celsius(row.tableRow);
    // What painting will record counts already: it is the difference that makes the bar be painted.
    const double maximum = std::max(value, static_cast<double>(recordedMaximum(row.identifier)));
    const Level now{halfDegrees(value), halfDegrees(maximum)};
    return std::exchange(row.level, now) != now;
}

std::string SensorTableModel::text(TableColumn column, std::size_t tableRow) {
    return table_.tableViewObjectValueForTableColumnRow(table, column, tableRow).stringValue();
}

double SensorTableModel::celsius(std::size_t tableRow) {
    return table_.tableViewObjectValueForTableColumnRow(table, TableColumn::maxTempTableColumn, tableRow)
        .doubleValue();
}

float SensorTableModel::recordedMaximum(const std::string& identifier) const {
    const auto cell = lists_.sensorNameToCustomCellMap.find(identifier);
    return cell != lists_.sensorNameToCustomCellMap.end() ? cell->second.maxUsedValue() : 0.0F;
}

void SensorTableModel::announce(int row, Column column) {
    // One cell at a time: for a range the views paint everything.
    const QModelIndex cell = index(row, column);
    Q_EMIT dataChanged(cell, cell);
}

const QZTemperatureLevelIndicatorCell* SensorTableModel::levelBarToPaint(int row) {
    Row& painted = rows_[static_cast<std::size_t>(row)];
    if (std::exchange(painted.isSample, false)) return table_.levelCellToPaint(painted.tableRow);
    // The value was recorded, or is not to be: after a reset the tick comes back with the next sample only.
    const auto* const cell =
        table_.tableViewDataCellForTableColumnRow(table, TableColumn::maxTempTableColumn, painted.tableRow);
    if (cell == nullptr) return nullptr;
    paintedAgain_ = *cell;
    paintedAgain_.setObjectValue(celsius(painted.tableRow));
    paintedAgain_.setMaxUsedValue(cell->maxUsedValue());
    return &paintedAgain_;
}

int SensorTableModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int SensorTableModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : columns; }

QVariant SensorTableModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid)) return {};
    const Row& row = shown(index.row());
    switch (role) {
        case Qt::DisplayRole:
            if (index.column() == nameColumn) return row.name;
            return index.column() == valueColumn ? row.value : QVariant();
        case Qt::TextAlignmentRole:
            return index.column() == valueColumn
                       ? QVariant::fromValue(static_cast<int>(Qt::AlignRight | Qt::AlignVCenter))
                       : QVariant();
        case Qt::ToolTipRole: {
            if (index.column() == nameColumn) return asQString(row.identifier);
            if (index.column() != levelColumn) return {};
            const auto toolTip = table_.tableViewToolTipForCellRectTableColumnRowMouseLocation(
                table, TableColumn::maxTempTableColumn, row.tableRow);
            return toolTip ? QVariant(asQString(*toolTip)) : QVariant();
        }
        case Qt::AccessibleTextRole: {
            if (index.column() != levelColumn) return {};
            const QString maximum = maximumOfRow(index.row());
            return maximum.isEmpty() ? row.value : tr("%1, highest %2").arg(row.value, maximum);
        }
        default:
            return {};
    }
}

QVariant SensorTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal) return {};
    if (role == Qt::TextAlignmentRole)
        return static_cast<int>((section == valueColumn ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    if (role != Qt::DisplayRole) return {};
    switch (section) {
        case nameColumn:
            return tr("Sensor");
        case valueColumn:
            return tr("Temperature");
        case levelColumn:
            return tr("Level");
        default:
            return {};
    }
}

QString SensorTableModel::maximumOfRow(int row) const {
    const Row& asked = shown(row);
    // A bar that was made and shown nothing yet has no maximum either.
    if (!(recordedMaximum(asked.identifier) > 0.0F)) return {};
    const auto maximum = table_.maximumTextOfRow(asked.tableRow);
    return maximum ? asQString(*maximum) : QString();
}

std::optional<SensorKey> SensorTableModel::sensorKeyOfRow(int row) const {
    const Row& asked = shown(row);
    return asked.isDrive ? std::nullopt : std::optional(SensorKey(asked.identifier));
}

}  // namespace calorivo
