#pragma once

#include <QWidget>

class QComboBox;
class QLineEdit;
class QToolButton;

namespace calorivo {

/// The row of controls above the sensor table: filter, unit, resetting, details, preferences. It holds no
/// state but what stands in the filter.
class MainWindowControls final : public QWidget {
    Q_OBJECT
  public:
    explicit MainWindowControls(QWidget* parent = nullptr);

    [[nodiscard]] QString filter() const;
    void clearFilter();
    /// The cursor goes there, and everything is selected.
    void focusFilter();
    /// The cursor goes there, and the text is added at the end.
    void typeIntoFilter(const QString& text);
    /// 0 Celsius, any other value Fahrenheit. Emits nothing, and neither does the next.
    void setUnit(int unit);
    void setDetailsShown(bool areShown);

  Q_SIGNALS:
    void filterChanged(const QString& text);
    /// The user is done with the filter: on with the table.
    void filterLeft();
    void unitChosen(int unit);
    void resetMaximumsWanted();
    void detailsWanted(bool areShown);
    void preferencesWanted();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    [[nodiscard]] QToolButton* button(const QString& name, const QString& icon, const QString& text);

    QLineEdit* filter_;
    QComboBox* unit_;
    QToolButton* details_;
};

}  // namespace calorivo
