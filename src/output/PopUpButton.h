#pragma once

#include "monitor/FanModel.h"
#include "platform/Property.h"
#include "sensors/SensorKey.h"
#include "sensors/SmartInfo.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace calorivo {

/// One item of a pop-up menu: a title and what it stands for, or a separator.
struct PopUpItem {
    using RepresentedObject = std::variant<std::monostate, SensorKey, DriveDictionary, FanModel>;

    std::string title;
    RepresentedObject representedObject = {};
    bool isSeparatorItem = false;

    [[nodiscard]] static PopUpItem separatorItem() { return {{}, {}, true}; }
    friend bool operator==(const PopUpItem&, const PopUpItem&) = default;
};

/// The menu of a pop-up button. Which item is selected is a preference, not a matter of the menu. Main
/// thread.
class PopUpButton {
  public:
    using Menu = std::vector<PopUpItem>;

    [[nodiscard]] const Menu& menu() const { return menu_; }
    void setMenu(Menu menu) {
        menu_ = std::move(menu);
        announceMenu();
    }
    /// These two tell nobody: a menu is announced when it is whole.
    void removeAllItems() { menu_.clear(); }
    void addItem(PopUpItem item) { menu_.push_back(std::move(item)); }
    void announceMenu() const { observers_.announce(); }
    /// Null for an index of no item.
    [[nodiscard]] const PopUpItem* itemAtIndex(std::int32_t index) const {
        if (index < 0 || static_cast<std::size_t>(index) >= menu_.size()) return nullptr;
        return &menu_[static_cast<std::size_t>(index)];
    }
    /// Told whenever there is another menu.
    [[nodiscard]] Observation observeMenu(std::function<void()> tell) {
        return observers_.add(std::move(tell));
    }

  private:
    Menu menu_;
    Observers observers_;
};

// The first items of the temperature menus, which stored indexes rest on.
inline constexpr std::int32_t averageTemperatureItem = 0;
inline constexpr std::int32_t averageCPUTemperatureItem = 2;
/// The first item of the fan menu.
inline constexpr std::int32_t averageRPMItem = 0;

/// The three menus from which the user picks what the menu bar shows. Null before the preferences interface
/// is loaded.
struct MenuBarPopUps {
    PopUpButton* menuBarTempPopupButton = nullptr;
    PopUpButton* menuBarTemp2PopupButton = nullptr;
    PopUpButton* menuBarFanPopupButton = nullptr;
};

}  // namespace calorivo
