#include "platform/linux/GraphicsReader.h"

#include "platform/linux/SmallFile.h"
#include "platform/linux/VgaSwitch.h"

#include <algorithm>
#include <cstddef>

namespace calorivo {

namespace {

std::optional<VgaSwitch> readVgaSwitch(const std::string& sys) {
    constexpr std::size_t limit = 4096;
    const SmallFile file =
        readSmallFile(sys + "/kernel/debug/vgaswitcheroo/switch", SymbolicLinks::followed, limit);
    return file.state == SmallFile::State::read ? parseVgaSwitch(file.text) : std::nullopt;
}

}  // namespace

GraphicsState GraphicsReader::read() {
    GraphicsConnectors found = findGraphicsConnectors(sys_);
    const std::lock_guard lock(mutex_);
    updateCards(found);
    choosePanelOwner(found.connectors);
    const bool isPanelFree = canPanelChangeOver(found.connectors);

    GraphicsState state;
    for (const GraphicsCard& card : cards_) {
        if (card.isIntegrated) continue;
        const bool isAwake = isCardAwake(sys_, card.address);
        const bool isManaged = isCardPowerManaged(sys_, card.address);
        const bool isInUse = isPanelFree && !isManaged ? panelOwner_ == card.address : isAwake;
        if (isAwake) state.awake.push_back(card.address);
        if (isManaged) state.isSwitchedDynamically = true;
        if (isInUse) state.isIntegratedInUse = false;
    }
    if (const auto vgaSwitch = readVgaSwitch(sys_)) {
        state.isIntegratedInUse = !vgaSwitch->isDiscreteInUse;
        state.isSwitchedDynamically = vgaSwitch->isDynamic;
    }
    for (GraphicsConnector& connector : found.connectors)
        if (!connector.isPanel && connector.isConnected) state.displays.push_back(std::move(connector.name));
    return state;
}

void GraphicsReader::updateCards(const GraphicsConnectors& found) {
    if (isFound_ && names_ == found.cards) return;
    isFound_ = true;
    names_ = found.cards;
    cards_ = findCards();
}

void GraphicsReader::choosePanelOwner(const std::vector<GraphicsConnector>& connectors) {
    // A panel that is switched off, with its lid closed for instance, stays with its owner.
    for (const GraphicsConnector& connector : connectors)
        if (connector.isPanel && connector.isConnected && connector.isEnabled) panelOwner_ = connector.device;
}

bool GraphicsReader::canPanelChangeOver(const std::vector<GraphicsConnector>& connectors) const {
    const auto hasPanel = [&](const GraphicsCard& card) {
        return std::ranges::any_of(connectors, [&](const GraphicsConnector& connector) {
            return connector.isPanel && connector.device == card.address;
        });
    };
    bool isOnIntegrated = false;
    bool isOnDiscrete = false;
    for (const GraphicsCard& card : cards_)
        (card.isIntegrated ? isOnIntegrated : isOnDiscrete) |= hasPanel(card);
    return isOnIntegrated && isOnDiscrete;
}

}  // namespace calorivo
