#include "platform/linux/GpuSlots.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>

namespace calorivo {
namespace {

constexpr std::uint32_t intel = 0x8086;
constexpr std::uint32_t amd = 0x1002;

constexpr std::string_view digits = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
constexpr std::size_t memoryDistance = 4;
/// Slots for all further GPUs: four in eight, so that memory keys never meet edge keys.
constexpr std::string_view furtherSlots = "2389ABGHIJOPQRWXYZefghmnopuv";

/// Device numbers of AMD's processors with a GPU, first and last of each range.
struct DeviceRange {
    std::uint32_t first;
    std::uint32_t last;
};
constexpr std::array<DeviceRange, 24> amdProcessors{{
    {0x1114, 0x1114}, {0x1304, 0x131d}, {0x13c0, 0x13c0}, {0x13fe, 0x13fe}, {0x1435, 0x1435},
    {0x1506, 0x1506}, {0x150e, 0x150e}, {0x1586, 0x1586}, {0x15bf, 0x15bf}, {0x15c8, 0x15c8},
    {0x15d8, 0x15d8}, {0x15dd, 0x15dd}, {0x15e7, 0x15e7}, {0x1636, 0x163f}, {0x164c, 0x164f},
    {0x1681, 0x1681}, {0x1900, 0x1902}, {0x9640, 0x964f}, {0x9802, 0x980a}, {0x9830, 0x983d},
    {0x9850, 0x9857}, {0x9870, 0x9877}, {0x98e4, 0x98e4}, {0x9900, 0x99a4},
}};

/// On the processor's own bus, not behind a bridge: "0000:00:02.0".
bool isOnRootBus(std::string_view address) { return address.find(":00:") != std::string_view::npos; }

bool hasHotSpotOrMemory(const HwmonChip& chip) {
    return std::ranges::any_of(chip.channels, [](const HwmonChannel& channel) {
        return channel.label == "junction" || channel.label == "mem";
    });
}

bool isFree(const KeyStore& store, char slot) {
    constexpr std::array families{KeyFamily::gpuEdge, KeyFamily::gpuHotspot, KeyFamily::gpuMemory};
    return std::ranges::none_of(
        families, [&store, slot](KeyFamily family) { return store.isTaken(gpuKey(family, slot)); });
}

char freeSlot(const std::vector<GpuSlot>& gpus, const GpuSlot& gpu, const KeyStore& store) {
    const auto user = [&gpus](char slot) {
        return std::ranges::find(gpus, slot, [](const GpuSlot& other) { return other.slot; });
    };
    const bool isFirstFree = user('0') == gpus.end() && isFree(store, '0');
    const bool isSecondFree = user('1') == gpus.end() && isFree(store, '1');
    // A key of a GPU that has gone may come back.
    const bool isFirstIntegrated = isFirstFree || (user('0') != gpus.end() && user('0')->isIntegrated);

    if (gpu.isIntegrated && isFirstFree) return '0';
    if (gpus.size() == 1 && isFirstFree && isSecondFree) return '0';
    if (gpus.size() > 1 && !gpu.isIntegrated && isSecondFree && isFirstIntegrated) return '1';
    for (const char slot : furtherSlots)
        if (user(slot) == gpus.end() && isFree(store, slot)) return slot;
    return '\0';
}

}  // namespace

bool isProcessorGPU(std::uint32_t vendor, std::uint32_t device, std::string_view address) {
    if (vendor == intel) return isOnRootBus(address);
    return vendor == amd && std::ranges::any_of(amdProcessors, [device](const DeviceRange& range) {
               return device >= range.first && device <= range.last;
           });
}

bool isIntegratedGPU(const HwmonChip& chip, const std::vector<const HwmonChip*>& gpus) {
    if (isProcessorGPU(chip.pciVendor, chip.pciDevice, chip.pciAddress)) return true;
    if (chip.pciVendor != amd) return false;
    // A newer one: it starts the screen and has one sensor, beside a card that has more.
    return chip.isBootVGA && !hasHotSpotOrMemory(chip) &&
           std::ranges::any_of(gpus, [](const HwmonChip* other) { return hasHotSpotOrMemory(*other); });
}

void chooseGpuSlots(std::vector<GpuSlot>& gpus, const KeyStore& store) {
    for (GpuSlot& gpu : gpus)
        if (gpu.slot == '\0') gpu.slot = freeSlot(gpus, gpu, store);
}

std::string gpuKey(KeyFamily family, char slot) {
    if (family == KeyFamily::gpuHotspot) return std::string("TG") + slot + 'P';
    if (family == KeyFamily::gpuMemory) slot = digits[digits.find(slot) + memoryDistance];
    return std::string("TG") + slot + 'D';
}

char gpuSlotOf(KeyFamily family, std::string_view key) {
    if (key.size() != 4 || !key.starts_with("TG")) return '\0';
    if (key[3] != (family == KeyFamily::gpuHotspot ? 'P' : 'D')) return '\0';
    if (family != KeyFamily::gpuMemory) return key[2];
    const std::size_t position = digits.find(key[2]);
    return position == std::string_view::npos || position < memoryDistance
               ? '\0'
               : digits[position - memoryDistance];
}

}  // namespace calorivo
