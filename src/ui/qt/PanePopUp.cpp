#include "ui/qt/PanePopUp.h"

#include "ui/qt/KeyBinding.h"

#include <QString>

#include <algorithm>

namespace calorivo {

namespace {

constexpr int shortestWidthInCharacters = 26;
constexpr int longestMenuWithoutScrolling = 20;

bool looksTheSame(const PopUpItem& one, const PopUpItem& other) {
    return one.title == other.title && one.isSeparatorItem == other.isSeparatorItem;
}

}  // namespace

PanePopUp::PanePopUp(PopUpButton& menu, const KeyValueCoding& keys, std::string_view key,
                     const QString& placeholder, QWidget* parent)
    : QComboBox(parent), menu_(menu), keys_(keys), key_(key) {
    // Names of sensors may be of any length; the open menu shows them whole.
    setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(shortestWidthInCharacters);
    setMaxVisibleItems(longestMenuWithoutScrolling);
    setPlaceholderText(placeholder);
    takeMenu();
    KeyBinding::bind(*this, keys_, key_);
    menuObservation_ = menu_.observeMenu([this] { takeMenu(); });
}

void PanePopUp::takeMenu() {
    const PopUpButton::Menu& menu = menu_.menu();
    const bool isSame =
        std::equal(menu.begin(), menu.end(), shownMenu_.begin(), shownMenu_.end(), looksTheSame);
    // An open menu is not taken from under the user's hand for nothing.
    if (isSame) return;
    shownMenu_ = menu;
    clear();
    for (const PopUpItem& item : menu) {
        if (item.isSeparatorItem)
            insertSeparator(count());
        else
            addItem(QString::fromStdString(item.title));
    }
    KeyBinding::showIndex(*this, keys_.valueForKey(key_).intValue());
}

}  // namespace calorivo
