#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// The user interface, as far as the logic moves it. Main thread.

namespace calorivo {

enum class WindowName { window, prefWindow, vantixUpgradeWindow };
enum class WindowLevel { normal, modalPanel };

/// The program's windows.
class Windows {
  public:
    Windows() = default;
    Windows(const Windows&) = delete;
    Windows& operator=(const Windows&) = delete;
    virtual ~Windows() = default;

    /// Brings the program in front of all others.
    virtual void activateIgnoringOtherApps() = 0;
    virtual void center(WindowName window) = 0;
    virtual void orderFront(WindowName window) = 0;
    virtual void makeKeyAndOrderFront(WindowName window) = 0;
    /// Whether the window goes away when the program is hidden.
    virtual void setCanHide(WindowName window, bool canHide) = 0;
    /// Whether the window moves aside for others when it opens.
    virtual void setShouldCascadeWindows(WindowName window, bool shouldCascade) = 0;
    virtual void setLevel(WindowName window, WindowLevel level) = 0;
};

/// The labels below the limit sliders.
enum class LimitLabel {
    specificAreaLowLabel,
    specificAreaMedLabel,
    specificAreaHighLabel,
    averageLowLabel,
    averageMedLabel,
    averageHighLabel,
};

/// Controls and menu items that are no matter of a bound key.
class Controls {
  public:
    Controls() = default;
    Controls(const Controls&) = delete;
    Controls& operator=(const Controls&) = delete;
    virtual ~Controls() = default;

    virtual void setIntValue(LimitLabel label, std::int32_t value) = 0;
    /// Of the preferences toolbar.
    virtual void setSelectedItemIdentifier(std::string_view identifier) = 0;
    /// Of the preferences window.
    virtual void selectTabViewItemAtIndex(std::int32_t index) = 0;
    virtual void setStatusAboutMenuItemTitle(const std::string& title) = 0;
    /// Empty for no shortcut.
    virtual void setQuitMenuItemKeyEquivalent(std::string_view key) = 0;
};

/// The view of the sensor table.
class SensorTableView {
  public:
    SensorTableView() = default;
    SensorTableView(const SensorTableView&) = delete;
    SensorTableView& operator=(const SensorTableView&) = delete;
    virtual ~SensorTableView() = default;

    /// Rows and values are to be asked for again.
    virtual void reloadData() = 0;
    /// The same rows are to be painted again.
    virtual void setNeedsDisplay() = 0;
};

/// All of it. Everything must outlive the controller.
struct Interface {
    Windows& windows;
    Controls& controls;
    SensorTableView& cpuTableView;
};

/// The name of the status item's menu.
inline constexpr std::string_view statusMenuName = "statusMenu";

}  // namespace calorivo
