#pragma once

#include <QColor>

#include <algorithm>
#include <cmath>

namespace calorivo::test {

/// How much lighter one colour is than the other, as people see it: 1 to 21.
inline double contrast(const QColor& one, const QColor& other) {
    const auto luminance = [](const QColor& color) {
        const auto linear = [](auto part) {
            return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(static_cast<double>(color.redF())) +
               0.7152 * linear(static_cast<double>(color.greenF())) +
               0.0722 * linear(static_cast<double>(color.blueF()));
    };
    const double first = luminance(one);
    const double second = luminance(other);
    return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

}  // namespace calorivo::test
