#pragma once

#include "output/PopUpButton.h"
#include "platform/KeyValueCoding.h"
#include "platform/Property.h"

#include <QComboBox>
#include <QStringList>

#include <string>
#include <string_view>

namespace calorivo {

/// A combo box over a pop-up menu of the program: the same items at the same indexes, separators as
/// separators that the keyboard and the wheel pass over. The key holds the selected index. An index that is
/// no item shows the placeholder text.
class PanePopUp final : public QComboBox {
    Q_OBJECT

  public:
    /// `menu` and `keys` must outlive this control.
    PanePopUp(PopUpButton& menu, const KeyValueCoding& keys, std::string_view key, const QString& placeholder,
              QWidget* parent);

  private:
    void takeMenu();

    PopUpButton& menu_;
    const KeyValueCoding& keys_;
    const std::string key_;
    PopUpButton::Menu shownMenu_;
    Observation menuObservation_;
};

}  // namespace calorivo
