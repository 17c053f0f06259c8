#pragma once

#include <QImage>
#include <QString>

namespace calorivo {

/// The first number of a title as it is drawn into an icon: "45" of "45°C / 1200 RPM", "-5" of "-5°C"; empty
/// when the title has no digits.
[[nodiscard]] QString firstNumber(const QString& title);

/// A text as wide as the title gets with the usual readings in it: every temperature of two digits, every fan
/// speed of four.
[[nodiscard]] QString widestTitle(const QString& title);

/// The text in a square of `side` pixels, as large as fits: bright with a dark edge, to be read on light and
/// on dark panels. `scale`: above 0, at most 1; the height of the digits compared with the largest.
[[nodiscard]] QImage drawDigits(const QString& text, int side, double scale);

/// The shape of an image, bright with a dark edge for the same reason: for images of which only the shape
/// counts.
[[nodiscard]] QImage drawShape(const QImage& shape);

}  // namespace calorivo
