#pragma once

#include "platform/AttributedString.h"
#include "ui/Geometry.h"

#include <optional>

namespace calorivo {

/// What a level bar spans, and from where on it warns, in degrees Celsius.
struct LevelRange {
    double minValue = 0.0;
    /// No valid temperature reaches it, so that each has a place on the bar.
    double maxValue = 120.0;
    double warningValue = 80.0;
    double criticalValue = 100.0;
    friend bool operator==(const LevelRange&, const LevelRange&) = default;
};

enum class LevelZone { normal, warning, critical };

/// The level bar of one sensor: its current temperature and the highest one recorded, in degrees Celsius.
class QZTemperatureLevelIndicatorCell {
  public:
    QZTemperatureLevelIndicatorCell() = default;
    explicit QZTemperatureLevelIndicatorCell(const LevelRange& range) : range_(range) {}

    /// Shows the value; the maximum only ever rises here.
    void setObjectValue(double celsius) {
        objectValue_ = celsius;
        if (celsius > static_cast<double>(maxUsedValue_)) maxUsedValue_ = static_cast<float>(celsius);
    }
    [[nodiscard]] double objectValue() const { return objectValue_; }

    /// 0 means that nothing was recorded.
    [[nodiscard]] float maxUsedValue() const { return maxUsedValue_; }
    void setMaxUsedValue(float celsius) { maxUsedValue_ = celsius; }

    [[nodiscard]] const LevelRange& range() const { return range_; }
    void setRange(const LevelRange& range) { range_ = range; }
    /// A value at a limit is in the zone above it.
    [[nodiscard]] LevelZone zone() const;
    /// How much of the bar is filled, from 0 to 1.
    [[nodiscard]] double filledFraction() const;

    static constexpr Color tickColor{0.45, 0.45, 0.45, 1.0};
    /// Where in the bar's frame the recorded maximum is marked; none when nothing was recorded. A maximum
    /// beyond the range lies outside of the frame.
    [[nodiscard]] std::optional<Rectangle> tickRectangle(const Rectangle& frame) const;

    friend bool operator==(const QZTemperatureLevelIndicatorCell&,
                           const QZTemperatureLevelIndicatorCell&) = default;

  private:
    LevelRange range_;
    double objectValue_ = 0.0;
    float maxUsedValue_ = 0.0F;
};

}  // namespace calorivo
