#pragma once

#include "platform/AppleGraphicsControl.h"
#include "platform/CoreGraphics.h"
#include "platform/SystemLog.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace calorivo::test {

/// The log of the system, as a list of lines.
class LinesLog final : public SystemLog {
  public:
    void log(std::string_view line) override { lines.emplace_back(line); }
    [[nodiscard]] std::vector<std::string> take() { return std::exchange(lines, {}); }

    std::vector<std::string> lines;
};

/// A display device of the registry with this model, as "IOName" spells it.
[[nodiscard]] RegistryProperties displayDevice(std::string_view model, std::string ioName = "display");

/// A switch between two graphics processors, and PCI devices, in memory. Writes down every request.
class FakeGraphicsControl final : public AppleGraphicsControl {
  public:
    bool hasDriver = true;
    std::vector<RegistryProperties> devices;
    std::map<std::uint64_t, std::uint64_t> muxStates{{7, 1}};
    /// The results of what is to fail.
    kern_return_t matching = io_return::success;
    kern_return_t serviceOpen = io_return::success;
    kern_return_t serviceClose = io_return::success;
    std::map<std::uint32_t, kern_return_t> selectors;
    /// Each request as "selector: inputs".
    std::vector<std::string> requests;
    int searches = 0;
    /// The service that was opened last. Objects are numbered from 1 on, an iterator before its services.
    io_service_t opened = 0;
    /// Services and iterators that were not given back, and connections that are open.
    std::set<io_object_t> objects;
    std::set<io_connect_t> connections;

    kern_return_t IOServiceGetMatchingServices(mach_port_t masterPort, const MatchingDictionary& matching,
                                               io_iterator_t& services) override;
    [[nodiscard]] io_object_t IOIteratorNext(io_iterator_t iterator) override;
    kern_return_t IOObjectRelease(io_object_t object) override;
    [[nodiscard]] task_port_t machTaskSelf() const override { return 77; }
    kern_return_t IOServiceOpen(io_service_t service, task_port_t owningTask, std::uint32_t type,
                                io_connect_t& connection) override;
    kern_return_t IOServiceClose(io_connect_t connection) override;
    kern_return_t IOConnectCallScalarMethod(io_connect_t connection, std::uint32_t selector,
                                            std::span<const std::uint64_t> input, std::uint64_t* output,
                                            std::uint32_t& outputCount) override;
    kern_return_t IORegistryEntryCreateCFProperties(io_object_t entry,
                                                    RegistryProperties& properties) override;

  private:
    [[nodiscard]] io_object_t newObject();

    io_object_t lastObject_ = 0;
    io_connect_t lastConnection_ = 900;
    /// What each iterator has still to give, and the device of each service.
    std::map<io_iterator_t, std::vector<io_object_t>> rests_;
    std::map<io_object_t, std::size_t> deviceOf_;
};

/// Two displays, of which the first is the main and the only built-in one.
class FakeDisplays final : public CoreGraphics {
  public:
    static constexpr CGDirectDisplayID builtIn = 41;
    static constexpr CGDirectDisplayID external = 42;

    [[nodiscard]] Observation CGDisplayRegisterReconfigurationCallback(
        ReconfigurationCallback callback) override;
    [[nodiscard]] bool CGDisplayIsBuiltin(CGDirectDisplayID display) override { return display == builtIn; }
    [[nodiscard]] CGDirectDisplayID CGMainDisplayID() override { return builtIn; }

    /// A change of a display; does nothing without a callback.
    void reconfigure(CGDirectDisplayID display, CGDisplayChangeSummaryFlags flags) {
        if (callback_) callback_(display, flags);
    }

  private:
    ReconfigurationCallback callback_;
};

}  // namespace calorivo::test
