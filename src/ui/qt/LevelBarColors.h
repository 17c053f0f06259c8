#pragma once

#include "ui/QZTemperatureLevelIndicatorCell.h"

#include <QColor>
#include <QPalette>

// The colours of the level bars. They differ in hue and in lightness, so that people who do not tell red from
// green tell the zones apart too; the critical zone is hatched besides.

namespace calorivo {

/// What the filled part of a bar is painted in, on this palette's ground.
[[nodiscard]] QColor levelColor(LevelZone zone, const QPalette& palette);
/// What lies over it in the critical zone.
[[nodiscard]] QColor hatchColor(const QPalette& palette);
/// The part of a bar that is not filled.
[[nodiscard]] QColor troughColor(const QPalette& palette);
/// For captions beside the texts that matter.
[[nodiscard]] QColor mutedTextColor(const QPalette& palette);

}  // namespace calorivo
