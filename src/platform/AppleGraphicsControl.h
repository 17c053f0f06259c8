#pragma once

#include "platform/IOServices.h"

#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <variant>
#include <vector>

namespace calorivo {

/// What the registry says about a device, by the names of its properties: texts and raw bytes.
using RegistryProperties =
    std::map<std::string, std::variant<std::string, std::vector<std::uint8_t>>, std::less<>>;

/// The requests that the driver of the switch takes.
namespace graphics_switch {
namespace selector {
inline constexpr std::uint32_t open = 0;
inline constexpr std::uint32_t close = 1;
inline constexpr std::uint32_t setMuxState = 2;
inline constexpr std::uint32_t getMuxState = 3;
}  // namespace selector

/// The first number of every request about a state.
inline constexpr std::uint64_t number = 1;

namespace state {
inline constexpr std::uint64_t dynamicSwitchingDisabled = 0;
inline constexpr std::uint64_t dynamicSwitchingEnabled = 1;
inline constexpr std::uint64_t forceSwitch = 2;
/// Not 0 when the system switches by itself.
inline constexpr std::uint64_t dynamicSwitching = 4;
inline constexpr std::uint64_t switchPolicy = 5;
/// Not 0 when the integrated GPU drives the displays.
inline constexpr std::uint64_t graphicsSelection = 7;
}  // namespace state
}  // namespace graphics_switch

/// The platform's driver of the switch between two graphics processors ("AppleGraphicsControl"), and its
/// registry of the PCI devices ("IOPCIDevice"). Any thread, several at once.
class AppleGraphicsControl : public IOServices {
  public:
    /// One request of 64-bit numbers. `outputCount` holds the room at `output`, and receives how many were
    /// written there.
    virtual kern_return_t IOConnectCallScalarMethod(io_connect_t connection, std::uint32_t selector,
                                                    std::span<const std::uint64_t> input,
                                                    std::uint64_t* output, std::uint32_t& outputCount) = 0;
    virtual kern_return_t IORegistryEntryCreateCFProperties(io_object_t entry,
                                                            RegistryProperties& properties) = 0;
};

}  // namespace calorivo
