#pragma once

#include "platform/Dispatch.h"

#include <QWidget>

#include <optional>
#include <string_view>

namespace calorivo {

/// Where the values come from, in words. `sourceName` is SensorProvider::sourceName.
[[nodiscard]] QString sourceInWords(std::string_view sourceName, const QString& sourceDetail);

/// The line at the bottom of the main window: the machine and the source at the left, the time of the last
/// check at the right. A new time paints only itself.
class MainWindowStatus final : public QWidget {
    Q_OBJECT
  public:
    explicit MainWindowStatus(QWidget* parent = nullptr);

    void setMachine(const QString& text, const QString& toolTip);
    void setLastCheck(std::optional<WallTime> time);
    [[nodiscard]] const QString& machine() const { return machine_; }
    /// Empty before the first check.
    [[nodiscard]] const QString& lastCheck() const { return lastCheck_; }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    [[nodiscard]] QRect lastCheckPlace() const;
    void tellAccessibility();

    QString machine_;
    QString lastCheck_;
    std::optional<qint64> shownSecond_;
};

}  // namespace calorivo
