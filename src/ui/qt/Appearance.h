#pragma once

#include "app/DesktopSettings.h"

#include <QPalette>

namespace calorivo {

[[nodiscard]] QPalette lightPalette();
[[nodiscard]] QPalette darkPalette();
[[nodiscard]] bool isDark(const QPalette& palette);

/// The palette for the user's choice. Automatic keeps the desktop's own, unless the desktop says that it is
/// dark while its palette is light, as where the toolkit does not follow it.
[[nodiscard]] QPalette paletteFor(ColorScheme choice, const QPalette& desktop, bool isDesktopDark);

}  // namespace calorivo
