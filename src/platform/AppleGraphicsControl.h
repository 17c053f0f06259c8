#pragma once

#include "platform/IOKit.h"

#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace calorivo {

/// What the registry says about a device, by the names of its properties: texts and raw bytes.
using RegistryProperties =
    std::map<std::string, std::variant<std::string, std::vector<std::uint8_t>>, std::less<>>;

/// The platform's driver of the switch between two graphics processors ("AppleGraphicsControl"), and its
/// registry of the PCI devices ("IOPCIDevice"). Any thread, several at once.
class AppleGraphicsControl {
  public:
    AppleGraphicsControl() = default;
    AppleGraphicsControl(const AppleGraphicsControl&) = delete;
    AppleGraphicsControl& operator=(const AppleGraphicsControl&) = delete;
    virtual ~AppleGraphicsControl() = default;

    [[nodiscard]] virtual MatchingDictionary IOServiceMatching(std::string_view className) const {
        return {std::string(className)};
    }
    /// Success with an empty iterator when nothing matches.
    virtual kern_return_t IOServiceGetMatchingServices(mach_port_t masterPort,
                                                       const MatchingDictionary& matching,
                                                       io_iterator_t& services) = 0;
    /// 0 when there is no further object.
    [[nodiscard]] virtual io_object_t IOIteratorNext(io_iterator_t iterator) = 0;
    virtual kern_return_t IOObjectRelease(io_object_t object) = 0;
    [[nodiscard]] virtual task_port_t machTaskSelf() const = 0;
    /// Leaves `connection` alone when it fails.
    virtual kern_return_t IOServiceOpen(io_service_t service, task_port_t owningTask, std::uint32_t type,
                                        io_connect_t& connection) = 0;
    virtual kern_return_t IOServiceClose(io_connect_t connection) = 0;
    /// One request of 64-bit numbers. `outputCount` holds the room at `output`, and receives how many were
    /// written there.
    virtual kern_return_t IOConnectCallScalarMethod(io_connect_t connection, std::uint32_t selector,
                                                    std::span<const std::uint64_t> input,
                                                    std::uint64_t* output, std::uint32_t& outputCount) = 0;
    virtual kern_return_t IORegistryEntryCreateCFProperties(io_object_t entry,
                                                            RegistryProperties& properties) = 0;
};

}  // namespace calorivo
