#include "platform/linux/GraphicsCards.h"

#include "platform/linux/GpuSlots.h"
#include "platform/linux/HwmonScan.h"
#include "platform/linux/Sysfs.h"

#include <algorithm>
#include <optional>
#include <string_view>

namespace calorivo {

namespace {

constexpr std::string_view pciDevices = "/bus/pci/devices";

/// The GPU of a chip set that stood beside a card of the same maker in notebooks.
constexpr std::uint32_t nvidia = 0x10de;
constexpr std::uint32_t nvidiaChipSet = 0x0863;

std::optional<GraphicsCard> cardAt(int devices, const std::string& address) {
    constexpr std::uint32_t displayClass = 0x03;
    const FileDescriptor device = openFolderAt(devices, address.c_str());
    if (!device.isOpen() || readAttributeHex(device.get(), "class") >> 16 != displayClass)
        return std::nullopt;
    GraphicsCard card;
    card.address = address;
    card.identity = {.vendor = readAttributeHex(device.get(), "vendor"),
                     .device = readAttributeHex(device.get(), "device"),
                     .subvendor = readAttributeHex(device.get(), "subsystem_vendor"),
                     .subdevice = readAttributeHex(device.get(), "subsystem_device")};
    card.isBootVGA = readAttributeNumber(device.get(), "boot_vga").value_or(0) == 1;
    return card;
}

std::optional<std::string> powerAttribute(const std::string& sys, const std::string& address,
                                          const char* name) {
    const FileDescriptor device = openFolder(sys + std::string(pciDevices) + '/' + address);
    if (!device.isOpen()) return std::nullopt;
    return readAttribute(device.get(), name).value_or("");
}

}  // namespace

std::vector<GraphicsCard> findGraphicsCards(const std::string& sys) {
    std::vector<GraphicsCard> cards;
    const FileDescriptor devices = openFolder(sys + std::string(pciDevices));
    if (!devices.isOpen()) return cards;
    for (const std::string& address : namesInFolder(devices.get()))
        if (auto card = cardAt(devices.get(), address)) cards.push_back(std::move(*card));
    chooseIntegratedCards(cards);
    return cards;
}

void chooseIntegratedCards(std::vector<GraphicsCard>& cards) {
    for (GraphicsCard& card : cards) {
        const auto [vendor, device, subvendor, subdevice] = card.identity;
        card.isIntegrated =
            isProcessorGPU(vendor, device, card.address) || (vendor == nvidia && device == nvidiaChipSet);
    }
    if (std::ranges::any_of(cards, &GraphicsCard::isIntegrated)) return;
    for (GraphicsCard& card : cards) card.isIntegrated = card.isBootVGA;
}

bool canSwitchGraphics(const std::vector<GraphicsCard>& cards) {
    return std::ranges::any_of(cards, &GraphicsCard::isIntegrated) &&
           !std::ranges::all_of(cards, &GraphicsCard::isIntegrated);
}

bool isCardAwake(const std::string& sys, const std::string& address) {
    const auto status = powerAttribute(sys, address, "power/runtime_status");
    return status && !isAsleepStatus(*status);
}

bool isCardPowerManaged(const std::string& sys, const std::string& address) {
    return powerAttribute(sys, address, "power/control") == "auto";
}

}  // namespace calorivo
