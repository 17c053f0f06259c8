#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace calorivo {

/// One socket for a display, or the panel of a notebook.
struct GraphicsConnector {
    /// "card1-HDMI-A-1"
    std::string name;
    /// What its card's device is called: the address, where that is on PCI. May be empty.
    std::string device;
    /// Built into the machine.
    bool isPanel = false;
    bool isConnected = false;
    /// It shows a picture. Panels only: of the others it is not asked.
    bool isEnabled = false;
    friend bool operator==(const GraphicsConnector&, const GraphicsConnector&) = default;
};

/// Whether a connector of this name ("card0-eDP-1") is a built-in panel.
[[nodiscard]] bool isPanelName(std::string_view name);

/// What the folder of graphics devices ("class/drm") below the root of sysfs shows.
struct GraphicsConnectors {
    /// The names of the cards: another list means that one came or went.
    std::vector<std::string> cards;
    /// In the order of their names.
    std::vector<GraphicsConnector> connectors;
    friend bool operator==(const GraphicsConnectors&, const GraphicsConnectors&) = default;
};

/// Reads what the kernel last saw: it looks at no display for this, and wakes no device.
[[nodiscard]] GraphicsConnectors findGraphicsConnectors(const std::string& sys);

}  // namespace calorivo
