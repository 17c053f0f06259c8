#include "ui/QZTemperatureLevelIndicatorCell.h"

#include <algorithm>
#include <cmath>

namespace calorivo {

LevelZone QZTemperatureLevelIndicatorCell::zone() const {
    if (objectValue_ >= range_.criticalValue) return LevelZone::critical;
    return objectValue_ >= range_.warningValue ? LevelZone::warning : LevelZone::normal;
}

double QZTemperatureLevelIndicatorCell::filledFraction() const {
    const double span = range_.maxValue - range_.minValue;
    return span > 0.0 ? std::clamp((objectValue_ - range_.minValue) / span, 0.0, 1.0) : 0.0;
}

std::optional<Rectangle> QZTemperatureLevelIndicatorCell::tickRectangle(const Rectangle& frame) const {
    if (!(maxUsedValue_ > 0.0F) || !(range_.maxValue > 0.0)) return std::nullopt;
    constexpr double tickWidth = 2.0;
    // Kept: the place is a share of the maximum alone, wherever the range begins, and in single precision:
    // the tick stands at the same pixel as ever.
    const auto fraction = static_cast<float>(static_cast<double>(maxUsedValue_) / range_.maxValue);
    return Rectangle{std::floor(static_cast<double>(fraction) * frame.width + frame.x), std::floor(frame.y),
                     tickWidth, frame.height};
}

}  // namespace calorivo
