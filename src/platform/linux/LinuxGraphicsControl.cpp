#include "platform/linux/LinuxGraphicsControl.h"

#include "platform/linux/PciNames.h"

#include <algorithm>
#include <iterator>

namespace calorivo {

namespace {

namespace selector = graphics_switch::selector;
namespace state = graphics_switch::state;

/// A text as the registry holds it in bytes: with a NUL at its end.
std::vector<std::uint8_t> registryBytes(const std::string& text) {
    std::vector<std::uint8_t> bytes(text.begin(), text.end());
    bytes.push_back(0);
    return bytes;
}

}  // namespace

std::vector<RegistryProperties> LinuxGraphicsControl::servicesOf(const std::string& className) const {
    std::vector<RegistryProperties> services;
    if (className == "AppleGraphicsControl" && canSwitchGraphics(reader_.findCards()))
        services.emplace_back();
    if (className == "IOPCIDevice") {
        PciNames names(pciIds_);  // a megabyte of text, which goes again at once
        for (const GraphicsCard& card : reader_.findCards())
            services.push_back(
                {{"IOName", "display"}, {"model", registryBytes(names.gpuName(card.identity))}});
    }
    return services;
}

kern_return_t LinuxGraphicsControl::IOServiceGetMatchingServices(mach_port_t masterPort,
                                                                 const MatchingDictionary& matching,
                                                                 io_iterator_t& services) {
    if (masterPort != kIOMasterPortDefault) return io_return::badArgument;
    std::vector<RegistryProperties> found = servicesOf(matching.className);
    std::ranges::reverse(found);
    const std::lock_guard lock(mutex_);
    services = ++lastHandle_;
    iterators_.emplace(services, std::move(found));
    return io_return::success;
}

io_object_t LinuxGraphicsControl::IOIteratorNext(io_iterator_t iterator) {
    const std::lock_guard lock(mutex_);
    const auto found = iterators_.find(iterator);
    if (found == iterators_.end() || found->second.empty()) return 0;
    services_.emplace(++lastHandle_, std::move(found->second.back()));
    found->second.pop_back();
    return lastHandle_;
}

kern_return_t LinuxGraphicsControl::IOObjectRelease(io_object_t object) {
    const std::lock_guard lock(mutex_);
    return services_.erase(object) + iterators_.erase(object) == 1 ? io_return::success
                                                                   : io_return::badArgument;
}

kern_return_t LinuxGraphicsControl::IOServiceOpen(io_service_t service, task_port_t owningTask,
                                                  std::uint32_t type, io_connect_t& connection) {
    const std::lock_guard lock(mutex_);
    const auto found = services_.find(service);
    if (found == services_.end() || owningTask != taskSelf || type != 0) return io_return::badArgument;
    if (!found->second.empty()) return io_return::unsupported;  // a graphics processor, not the switch
    connection = ++lastHandle_;
    connections_.insert(connection);
    return io_return::success;
}

kern_return_t LinuxGraphicsControl::IOServiceClose(io_connect_t connection) {
    const std::lock_guard lock(mutex_);
    return connections_.erase(connection) == 1 ? io_return::success : io_return::notOpen;
}

kern_return_t LinuxGraphicsControl::IOConnectCallScalarMethod(io_connect_t connection, std::uint32_t selector,
                                                              std::span<const std::uint64_t> input,
                                                              std::uint64_t* output,
                                                              std::uint32_t& outputCount) {
    {
        const std::lock_guard lock(mutex_);
        if (!connections_.contains(connection)) return io_return::notOpen;
    }
    switch (selector) {
        case selector::open:
        case selector::close:
            outputCount = 0;
            return io_return::success;
        case selector::setMuxState:
            return io_return::notPermitted;
        case selector::getMuxState:
            return getState(input, output, outputCount);
        default:
            return io_return::unsupported;
    }
}

kern_return_t LinuxGraphicsControl::getState(std::span<const std::uint64_t> input, std::uint64_t* output,
                                             std::uint32_t& outputCount) {
    if (input.size() != 2 || input[0] != graphics_switch::number || output == nullptr || outputCount < 1)
        return io_return::badArgument;
    switch (input[1]) {
        case state::dynamicSwitching:
            *output = reader_.read().isSwitchedDynamically ? 1 : 0;
            break;
        case state::switchPolicy:
            *output = 0;
            break;
        case state::graphicsSelection:
            *output = reader_.read().isIntegratedInUse ? 1 : 0;
            break;
        default:
            return io_return::unsupported;
    }
    outputCount = 1;
    return io_return::success;
}

kern_return_t LinuxGraphicsControl::IORegistryEntryCreateCFProperties(io_object_t entry,
                                                                      RegistryProperties& properties) {
    const std::lock_guard lock(mutex_);
    const auto found = services_.find(entry);
    if (found == services_.end()) return io_return::badArgument;
    properties = found->second;
    return io_return::success;
}

}  // namespace calorivo
