#include "platform/linux/GraphicsConnectors.h"

#include "platform/linux/Sysfs.h"

#include <algorithm>
#include <array>
#include <optional>

namespace calorivo {

namespace {

constexpr std::string_view digits = "0123456789";

/// "card0", and neither "renderD128" nor a connector of a card.
bool isCardName(std::string_view name) {
    constexpr std::string_view prefix = "card";
    return name.starts_with(prefix) && name.size() > prefix.size() &&
           name.find_first_not_of(digits, prefix.size()) == std::string_view::npos;
}

/// "card0" of "card0-eDP-1"; empty when the name is no connector's.
std::string_view cardOfConnector(std::string_view name) {
    const std::size_t dash = name.find('-');
    if (dash == std::string_view::npos || !isCardName(name.substr(0, dash))) return {};
    return name.substr(0, dash);
}

std::string deviceOf(int folder, std::string_view card) {
    const auto target = linkTarget(folder, (std::string(card) + "/device").c_str());
    return target ? std::string(lastComponent(*target)) : std::string();
}

GraphicsConnector connectorAt(int folder, const std::string& name, std::string device) {
    GraphicsConnector connector{.name = name, .device = std::move(device), .isPanel = isPanelName(name)};
    connector.isConnected = readAttribute(folder, (name + "/status").c_str()) == "connected";
    connector.isEnabled =
        connector.isPanel && readAttribute(folder, (name + "/enabled").c_str()) == "enabled";
    return connector;
}

}  // namespace

bool isPanelName(std::string_view name) {
    constexpr std::array<std::string_view, 3> panels{"eDP", "LVDS", "DSI"};
    const std::size_t begin = name.find('-') + 1;
    const std::size_t end = name.rfind('-');
    return begin != 0 && end > begin &&
           std::ranges::find(panels, name.substr(begin, end - begin)) != panels.end();
}

GraphicsConnectors findGraphicsConnectors(const std::string& sys) {
    GraphicsConnectors found;
    const FileDescriptor folder = openFolder(sys + "/class/drm");
    if (!folder.isOpen()) return found;
    // A card's name comes before those of its connectors: names are sorted.
    std::string device;
    for (const std::string& name : namesInFolder(folder.get())) {
        if (isCardName(name)) {
            found.cards.push_back(name);
            device = deviceOf(folder.get(), name);
        } else if (const std::string_view card = cardOfConnector(name); !card.empty()) {
            const bool isOfLast = !found.cards.empty() && found.cards.back() == card;
            found.connectors.push_back(
                connectorAt(folder.get(), name, isOfLast ? device : deviceOf(folder.get(), card)));
        }
    }
    return found;
}

}  // namespace calorivo
