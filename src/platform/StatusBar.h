#pragma once

#include "platform/AttributedString.h"
#include "platform/Image.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace calorivo {

/// Where the title is shown. Some bars show a text beside the icon; in the others the first reading's digits
/// can be drawn into the icon itself.
enum class TitlePlace { automatic = 0, besideIcon = 1, insideIcon = 2 };

/// One item of the menu bar; destroying it takes it away. Main thread.
class StatusBarItem {
  public:
    StatusBarItem() = default;
    StatusBarItem(const StatusBarItem&) = delete;
    StatusBarItem& operator=(const StatusBarItem&) = delete;
    virtual ~StatusBarItem() = default;

    virtual void setTitle(const std::string& title) = 0;
    virtual void setAttributedTitle(const AttributedString& title) = 0;
    /// None removes the image.
    virtual void setImage(const std::optional<Image>& image) = 0;
    /// The menu of this name in the user interface.
    virtual void setMenu(std::string_view name) = 0;
    virtual void setHighlightMode(bool isHighlighted) = 0;
};

/// The system's menu bar, or what stands for it: a tray, a panel. Main thread.
class StatusBar {
  public:
    StatusBar() = default;
    StatusBar(const StatusBar&) = delete;
    StatusBar& operator=(const StatusBar&) = delete;
    virtual ~StatusBar() = default;

    /// The item is as wide as its contents.
    static constexpr double variableLength = -1.0;
    /// Never null: without a menu bar the item is just not seen.
    [[nodiscard]] virtual std::unique_ptr<StatusBarItem> statusItemWithLength(double length) = 0;
};

}  // namespace calorivo
