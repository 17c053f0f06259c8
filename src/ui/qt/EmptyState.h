#pragma once

#include <QString>
#include <QStringList>
#include <QWidget>

#include <string_view>

class QLabel;
class QPushButton;

namespace calorivo {

/// What stands in the place of a table without rows: what is the matter, and what to do about it.
struct EmptyStateText {
    QString headline;
    QString advice;
    friend bool operator==(const EmptyStateText&, const EmptyStateText&) = default;
};

/// For a machine without any sensor, by where the program looked for them (SensorProvider::sourceName).
/// `file` is the keys file's name. `problems` are appended, one a line.
[[nodiscard]] EmptyStateText noSensorsText(std::string_view sourceName, const QString& file,
                                           const QStringList& problems);
/// For an area in which the filter leaves no row, or that has none.
[[nodiscard]] EmptyStateText noRowsText(const QString& area, const QString& filter);

class EmptyState final : public QWidget {
    Q_OBJECT
  public:
    explicit EmptyState(QWidget* parent = nullptr);

    enum class ClearButton { hidden, shown };
    void show(const EmptyStateText& text, ClearButton button);
    using QWidget::show;

  Q_SIGNALS:
    /// The filter is to be cleared.
    void clearWanted();

  protected:
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void showIcon();

    QLabel* icon_;
    QLabel* headline_;
    QLabel* advice_;
    QPushButton* clear_;
    ClearButton button_ = ClearButton::hidden;
};

}  // namespace calorivo
