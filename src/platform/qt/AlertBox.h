#pragma once

#include <QMessageBox>
#include <QString>

#include <string>

// What the program's alerts have in common. Main thread.

namespace calorivo {

/// A text as it stands: no character of it makes a shortcut.
[[nodiscard]] QString textWithoutShortcut(const std::string& text);

/// Makes the box an alert of this program: its name and icon, the message bold above the other text, both
/// plain. `icon` stands in where the program has none.
void setUpAlert(QMessageBox& box, const std::string& message, const std::string& informativeText,
                QMessageBox::Icon icon);

}  // namespace calorivo
