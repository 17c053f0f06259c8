#include "ui/qt/FanTableModel.h"

#include "monitor/Fans.h"
#include "ui/qt/MainWindowText.h"

#include <algorithm>
#include <cmath>

namespace calorivo {

namespace {

/// The bar of a fan from its lowest to its highest speed. A fan does not record a maximum.
QZTemperatureLevelIndicatorCell barOf(const FanModel& fan) {
    QZTemperatureLevelIndicatorCell bar(LevelRange{.minValue = static_cast<double>(fan.minRPM),
                                                   .maxValue = static_cast<double>(fan.maxRPM),
                                                   .warningValue = static_cast<double>(fan.warningRPM),
                                                   .criticalValue = static_cast<double>(fan.criticalRPM)});
    bar.setObjectValue(fan.actualRPM);
    bar.setMaxUsedValue(0.0F);
    return bar;
}

bool hasBar(const FanModel& fan) { return fan.minRPM >= 0 && fan.maxRPM > fan.minRPM && fan.actualRPM >= 0; }

/// How far the bar is filled, fine enough for the eye.
long level(const FanModel& fan) {
    constexpr double steps = 200.0;
    return hasBar(fan) ? std::lround(barOf(fan).filledFraction() * steps) : -1;
}

bool isSameFan(const FanModel& one, const FanModel& other) {
    return one.name == other.name && one.minRPM == other.minRPM && one.maxRPM == other.maxRPM &&
           one.warningRPM == other.warningRPM && one.criticalRPM == other.criticalRPM;
}

}  // namespace

FanTableModel::FanTableModel(const Fans& fans, QObject* parent) : QAbstractTableModel(parent), fans_(fans) {}

void FanTableModel::reload() {
    if (!hasSameFans()) {
        beginResetModel();
        shown_ = fans_.fansArray();
        endResetModel();
        return;
    }
    for (int row = 0; row < rowCount(); ++row) {
        FanModel& old = shown_[static_cast<std::size_t>(row)];
        const FanModel& now = fans_.fansArray()[static_cast<std::size_t>(row)];
        const bool hasNewSpeed = old.actualRPMAsString != now.actualRPMAsString;
        const bool hasNewLevel = level(old) != level(now) || barOf(old).zone() != barOf(now).zone();
        // A bar that did not move yet is still compared with what was painted.
        if (hasNewLevel) old.actualRPM = now.actualRPM;
        if (hasNewSpeed) old.actualRPMAsString = now.actualRPMAsString;
        if (hasNewSpeed) announce(row, speedColumn);
        if (hasNewLevel) announce(row, levelColumn);
    }
}

bool FanTableModel::hasSameFans() const {
    return std::equal(shown_.begin(), shown_.end(), fans_.fansArray().begin(), fans_.fansArray().end(),
                      isSameFan);
}

void FanTableModel::announce(int row, Column column) {
    const QModelIndex cell = index(row, column);
    Q_EMIT dataChanged(cell, cell);
}

const QZTemperatureLevelIndicatorCell* FanTableModel::levelBarToPaint(int row) {
    const FanModel& fan = shown(row);
    if (!hasBar(fan)) return nullptr;
    bar_ = barOf(fan);
    return &bar_;
}

int FanTableModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(shown_.size());
}

int FanTableModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : columns; }

QString FanTableModel::display(const FanModel& fan, int column) const {
    switch (column) {
        case nameColumn:
            return asQString(fan.name);
        case speedColumn:
            return asQString(fan.actualRPMAsString);
        case minimumColumn:
            return asQString(fan.minRPMAsString);
        case maximumColumn:
            return asQString(fan.maxRPMAsString);
        default:
            return {};
    }
}

QVariant FanTableModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid)) return {};
    const FanModel& fan = shown(index.row());
    const int column = index.column();
    switch (role) {
        case Qt::DisplayRole:
            return column == levelColumn ? QVariant() : display(fan, column);
        case Qt::TextAlignmentRole:
            if (column == nameColumn || column == levelColumn) return {};
            return static_cast<int>(Qt::AlignRight | Qt::AlignVCenter);
        case Qt::AccessibleTextRole:
        case Qt::ToolTipRole:
            if (column != levelColumn) return {};
            return tr("%1, from %2 to %3")
                .arg(display(fan, speedColumn), display(fan, minimumColumn), display(fan, maximumColumn));
        default:
            return {};
    }
}

QVariant FanTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal) return {};
    const bool isLeft = section == nameColumn || section == levelColumn;
    if (role == Qt::TextAlignmentRole)
        return static_cast<int>((isLeft ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter);
    if (role != Qt::DisplayRole) return {};
    switch (section) {
        case nameColumn:
            return tr("Fan");
        case speedColumn:
            return tr("Speed");
        case levelColumn:
            return tr("Level");
        case minimumColumn:
            return tr("Minimum");
        case maximumColumn:
            return tr("Maximum");
        default:
            return {};
    }
}

}  // namespace calorivo
