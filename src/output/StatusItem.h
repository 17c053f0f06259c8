#pragma once

#include "monitor/CheckCycle.h"
#include "output/PopUpButton.h"
#include "platform/StatusBar.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace calorivo {

/// What the title is made of. All must outlive the status item.
struct StatusItemParts {
    const Preferences& preferences;
    const Averages& averages;
    const Fans& fans;
    const SmartInfo& smartInfo;
    TemperatureReader& reader;
    MenuBarPopUps popUps;
};

/// The program's item in the menu bar: up to two temperatures and one fan speed as its title. Main thread.
class StatusItem {
  public:
    explicit StatusItem(const StatusItemParts& parts) : parts_(parts) {}

    /// Puts the item into the menu bar; before that it has no title and no image.
    void create(StatusBar& statusBar, std::string_view menuName);
    /// Does nothing before there is an item.
    void setImage(const std::optional<Image>& image);
    /// Composes the title and shows it.
    void updateStatusItem();

    /// The title as it would be shown now.
    [[nodiscard]] std::string title();
    /// The reading that an item of a temperature menu stands for, as text; empty where there is none.
    [[nodiscard]] std::string getStringForSensorPopupButtonAtItemIndex(const PopUpButton* button,
                                                                       std::int32_t index);

  private:
    [[nodiscard]] std::string readingOf(const PopUpItem& item);
    [[nodiscard]] std::string readingOfDrive(const DriveDictionary& drive) const;
    [[nodiscard]] std::string fanPiece() const;

    StatusItemParts parts_;
    std::unique_ptr<StatusBarItem> statusItem_;
};

}  // namespace calorivo
