#pragma once

#include "output/PopUpButton.h"
#include "platform/KeyValueCoding.h"

#include <QWidget>

#include <functional>
#include <string>

namespace calorivo {

class PaneForm;

/// What the menu bar shows: two temperatures, a fan speed, the icon, and how.
class MenuBarPane final : public QWidget {
    Q_OBJECT

  public:
    /// `desktopKeys` has "titlePlace". What is referred to must outlive this pane. `title` answers with the
    /// title as it would be shown now.
    MenuBarPane(const KeyValueCoding& keys, const KeyValueCoding& desktopKeys, const MenuBarPopUps& popUps,
                std::function<std::string()> title, QWidget* parent);

  private:
    void addReadings(PaneForm& form, const KeyValueCoding& keys, const MenuBarPopUps& popUps);
    void addTitlePlace(PaneForm& form, const KeyValueCoding& desktopKeys);
    void addAppearance(PaneForm& form, const KeyValueCoding& keys);
};

}  // namespace calorivo
