#pragma once

#include <QSlider>
#include <QWidget>

#include <array>
#include <cstddef>
#include <cstdint>

QT_BEGIN_NAMESPACE
class QLabel;
class QPaintEvent;
class QResizeEvent;
QT_END_NAMESPACE

namespace calorivo {

/// A slider of limits, from 40 to 100 °C: a knob without a track.
class LimitSlider final : public QSlider {
    Q_OBJECT

  public:
    static constexpr int lowest = 40;
    static constexpr int highest = 100;

    explicit LimitSlider(QWidget* parent = nullptr);

    /// The middle of the knob, in this widget, where it stands for `value`.
    [[nodiscard]] int xOfValue(int value) const;

  protected:
    void paintEvent(QPaintEvent* event) override;
};

/// A limit slider on a ruler with a tick for every ten degrees, and three numbers, each at its place.
class LimitScale final : public QWidget {
    Q_OBJECT

  public:
    static constexpr std::size_t labelCount = 3;

    /// The labels are named for `names`.
    LimitScale(const std::array<const char*, labelCount>& names, QWidget* parent);

    [[nodiscard]] LimitSlider& slider() { return slider_; }
    /// A temperature in degrees Celsius, as it stands.
    void setIntValue(std::size_t label, std::int32_t celsius);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void placeLabels();

    LimitSlider& slider_;
    std::array<QLabel*, labelCount> labels_{};
};

}  // namespace calorivo
