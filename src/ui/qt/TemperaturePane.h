#pragma once

#include "platform/KeyValueCoding.h"

#include <QWidget>

#include <functional>

QT_BEGIN_NAMESPACE
class QCheckBox;
QT_END_NAMESPACE

namespace calorivo {

class PaneForm;
class PaneNote;

/// How temperatures are read and shown: unit, interval, drives, recorded maxima.
class TemperaturePane final : public QWidget {
    Q_OBJECT

  public:
    /// `keys` must outlive this pane. `canCheckDrives` may be empty.
    TemperaturePane(const KeyValueCoding& keys, std::function<void()> resetMaximums,
                    std::function<bool()> canCheckDrives, QWidget* parent);

    /// Shows what `canCheckDrives` answers now.
    void refreshPorts();

  private:
    void addUnit(PaneForm& form, const KeyValueCoding& keys);
    void addInterval(PaneForm& form, const KeyValueCoding& keys);
    void addDrives(PaneForm& form, const KeyValueCoding& keys);
    void addMaximums(PaneForm& form, const std::function<void()>& resetMaximums);

    std::function<bool()> canCheckDrives_;
    QCheckBox* checkDriveTemps_ = nullptr;
    PaneNote* drivesNote_ = nullptr;
};

}  // namespace calorivo
