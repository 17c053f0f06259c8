#pragma once

#include <QIcon>

class QString;

namespace calorivo {

/// The drawing ":/icons/NAME.svg" in the colour that the application's palette has for text when it is drawn:
/// that of windows, of a selection, or of disabled text. Sharp at every size and device pixel ratio; the file
/// is parsed when it is drawn first. An empty icon for a name without a drawing. For the thread of the user
/// interface only.
[[nodiscard]] QIcon templateIcon(const QString& name);

/// The application's own icon, in its own colours.
[[nodiscard]] QIcon applicationIcon();

}  // namespace calorivo
