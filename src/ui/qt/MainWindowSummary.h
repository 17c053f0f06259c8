#pragma once

#include <QWidget>

#include <string>

class QLabel;

namespace calorivo {

class AveragesView;
class Fans;
class FanTable;
class FanTableModel;

/// The strip below the sensor table: averages at the left, fans beside them. Without fans there are only the
/// averages.
class MainWindowSummary final : public QWidget {
    Q_OBJECT
  public:
    explicit MainWindowSummary(QWidget* parent = nullptr);

    /// Once. The fans must outlive this object.
    void setFans(const Fans& fans);
    /// All texts with their unit.
    void showAverages(const std::string& computer, const std::string& processor);
    void reloadFans();
    void showAverageSpeed(const std::string& speed);
    /// Only after setFans.
    [[nodiscard]] FanTable& fanTable() { return *fanTable_; }

  private:
    AveragesView* averages_;
    QWidget* fanSection_;
    QLabel* averageSpeed_;
    FanTable* fanTable_;
    FanTableModel* fanModel_ = nullptr;
};

}  // namespace calorivo
