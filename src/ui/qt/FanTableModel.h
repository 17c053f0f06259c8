#pragma once

#include "monitor/FanModel.h"
#include "ui/qt/LevelBarDelegate.h"

#include <QAbstractTableModel>

#include <vector>

namespace calorivo {

class Fans;

/// The fans for the toolkit's views. Like the sensors' model it announces the cells that look different, and
/// nothing else. Main thread.
class FanTableModel final : public QAbstractTableModel, public LevelBarSource {
    Q_OBJECT
  public:
    enum Column { nameColumn, speedColumn, levelColumn, minimumColumn, maximumColumn, columns };

    /// Empty until the first reload. The fans must outlive this object.
    FanTableModel(const Fans& fans, QObject* parent);

    void reload();

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    [[nodiscard]] const QZTemperatureLevelIndicatorCell* levelBarToPaint(int row) override;

  private:
    [[nodiscard]] const FanModel& shown(int row) const { return shown_[static_cast<std::size_t>(row)]; }
    [[nodiscard]] bool hasSameFans() const;
    [[nodiscard]] QString display(const FanModel& fan, int column) const;
    void announce(int row, Column column);

    const Fans& fans_;
    /// As they were announced last.
    std::vector<FanModel> shown_;
    QZTemperatureLevelIndicatorCell bar_;
};

}  // namespace calorivo
