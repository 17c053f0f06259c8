#pragma once

#include "platform/AppleGraphicsControl.h"
#include "platform/linux/GraphicsReader.h"

#include <map>
#include <mutex>
#include <set>
#include <string>
#include <utility>

namespace calorivo {

/// The switch between the graphics processors of a Linux machine, as the platform's driver would answer, and
/// the names of those processors. It answers only; it never switches anything.
class LinuxGraphicsControl final : public AppleGraphicsControl {
  public:
    /// `pciIds` is where the names of PCI devices are, as PciNames takes it, read when the services for
    /// "IOPCIDevice" are asked for. `reader` must outlive the object.
    explicit LinuxGraphicsControl(GraphicsReader& reader, std::string pciIds = pciIdsPlaces)
        : reader_(reader), pciIds_(std::move(pciIds)) {}

    /// "AppleGraphicsControl" is there on a machine with an integrated and a discrete processor.
    /// "IOPCIDevice" gives the graphics processors; other devices are left out.
    kern_return_t IOServiceGetMatchingServices(mach_port_t masterPort, const MatchingDictionary& matching,
                                               io_iterator_t& services) override;
    [[nodiscard]] io_object_t IOIteratorNext(io_iterator_t iterator) override;
    kern_return_t IOObjectRelease(io_object_t object) override;
    [[nodiscard]] task_port_t machTaskSelf() const override { return taskSelf; }
    kern_return_t IOServiceOpen(io_service_t service, task_port_t owningTask, std::uint32_t type,
                                io_connect_t& connection) override;
    kern_return_t IOServiceClose(io_connect_t connection) override;
    /// Opening and closing succeed, setting is not permitted, and of the states there are 4 (the system
    /// switches by itself), 5 (its policy, always 0) and 7 (the integrated processor is in use).
    kern_return_t IOConnectCallScalarMethod(io_connect_t connection, std::uint32_t selector,
                                            std::span<const std::uint64_t> input, std::uint64_t* output,
                                            std::uint32_t& outputCount) override;
    kern_return_t IORegistryEntryCreateCFProperties(io_object_t entry,
                                                    RegistryProperties& properties) override;

  private:
    static constexpr task_port_t taskSelf = 1;

    [[nodiscard]] std::vector<RegistryProperties> servicesOf(const std::string& className) const;
    kern_return_t getState(std::span<const std::uint64_t> input, std::uint64_t* output,
                           std::uint32_t& outputCount);

    GraphicsReader& reader_;
    const std::string pciIds_;
    std::mutex mutex_;
    std::uint32_t lastHandle_ = 0;
    /// The services that are not given back yet. The switch has no properties.
    std::map<io_service_t, RegistryProperties> services_;
    /// What each iterator has still to give, the next one last.
    std::map<io_iterator_t, std::vector<RegistryProperties>> iterators_;
    std::set<io_connect_t> connections_;
};

}  // namespace calorivo
