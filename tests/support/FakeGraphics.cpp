#include "support/FakeGraphics.h"

#include <algorithm>

namespace calorivo::test {

RegistryProperties displayDevice(std::string_view model, std::string ioName) {
    return {{"IOName", std::move(ioName)}, {"model", std::vector<std::uint8_t>(model.begin(), model.end())}};
}

io_object_t FakeGraphicsControl::newObject() {
    objects.insert(++lastObject_);
    return lastObject_;
}

kern_return_t FakeGraphicsControl::IOServiceGetMatchingServices(mach_port_t masterPort,
                                                                const MatchingDictionary& sought,
                                                                io_iterator_t& services) {
    ++searches;
    if (matching != io_return::success) return matching;
    if (masterPort != kIOMasterPortDefault) return io_return::badArgument;
    services = newObject();
    auto& rest = rests_[services];
    if (sought.className == "AppleGraphicsControl" && hasDriver) rest = {newObject(), newObject()};
    if (sought.className == "IOPCIDevice")
        for (std::size_t i = 0; i < devices.size(); ++i) deviceOf_[rest.emplace_back(newObject())] = i;
    return io_return::success;
}

io_object_t FakeGraphicsControl::IOIteratorNext(io_iterator_t iterator) {
    auto& rest = rests_.at(iterator);
    if (rest.empty()) return 0;
    const io_object_t first = rest.front();
    rest.erase(rest.begin());
    return first;
}

kern_return_t FakeGraphicsControl::IOObjectRelease(io_object_t object) {
    // What an iterator has not given goes with it.
    if (const auto rest = rests_.find(object); rest != rests_.end())
        for (const io_object_t ungiven : rest->second) objects.erase(ungiven);
    return objects.erase(object) == 1 ? io_return::success : io_return::badArgument;
}

kern_return_t FakeGraphicsControl::IOServiceOpen(io_service_t service, task_port_t owningTask,
                                                 std::uint32_t type, io_connect_t& connection) {
    if (serviceOpen != io_return::success) return serviceOpen;
    if (!objects.contains(service) || owningTask != machTaskSelf() || type != 0)
        return io_return::badArgument;
    connection = ++lastConnection_;
    connections.insert(connection);
    opened = service;
    return io_return::success;
}

kern_return_t FakeGraphicsControl::IOServiceClose(io_connect_t connection) {
    connections.erase(connection);
    return serviceClose;
}

kern_return_t FakeGraphicsControl::IOConnectCallScalarMethod(io_connect_t connection, std::uint32_t selector,
                                                             std::span<const std::uint64_t> input,
                                                             std::uint64_t* output,
                                                             std::uint32_t& outputCount) {
    std::string request = std::to_string(selector) + ':';
    for (const std::uint64_t number : input) request += ' ' + std::to_string(number);
    requests.push_back(request);
    if (!connections.contains(connection)) return io_return::notOpen;
    if (const auto failing = selectors.find(selector); failing != selectors.end()) return failing->second;
    if (selector == 2) {
        if (input.size() != 3 || outputCount != 0) return io_return::badArgument;
        muxStates[input[1]] = input[2];
    }
    if (selector == 3) {
        if (input.size() != 2 || output == nullptr || outputCount != 1) return io_return::badArgument;
        *output = muxStates[input[1]];
    }
    return io_return::success;
}

kern_return_t FakeGraphicsControl::IORegistryEntryCreateCFProperties(io_object_t entry,
                                                                     RegistryProperties& properties) {
    const auto device = deviceOf_.find(entry);
    if (device == deviceOf_.end() || !objects.contains(entry)) return io_return::badArgument;
    properties = devices[device->second];
    return properties.empty() ? io_return::error : io_return::success;
}

Observation FakeDisplays::CGDisplayRegisterReconfigurationCallback(ReconfigurationCallback callback) {
    callback_ = std::move(callback);
    return Observation([this] { callback_ = nullptr; });
}

}  // namespace calorivo::test
