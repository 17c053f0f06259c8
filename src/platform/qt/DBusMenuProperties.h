#pragma once

#include "platform/qt/DBusMenuTypes.h"

#include <QKeySequence>
#include <QString>
#include <QVariant>
#include <QVariantMap>

class QAction;

namespace calorivo {

/// An action as the menu protocol describes it: only what is different from the protocol's defaults.
[[nodiscard]] QVariantMap menuPropertiesOf(const QAction& action);

/// What an entry has that does not mention the property; invalid for a property that the protocol does not
/// know.
[[nodiscard]] QVariant menuPropertyDefault(const QString& name);

/// A label with Qt's mark of the access key, "&", as one with the protocol's, "_".
[[nodiscard]] QString menuLabelOf(const QString& text);

/// Empty for no shortcut.
[[nodiscard]] MenuShortcut menuShortcutOf(const QKeySequence& sequence);

}  // namespace calorivo
