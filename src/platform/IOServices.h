#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace calorivo {

using kern_return_t = std::int32_t;
using mach_port_t = std::uint32_t;
using task_port_t = std::uint32_t;
using io_object_t = std::uint32_t;
using io_iterator_t = io_object_t;
using io_service_t = io_object_t;
using io_connect_t = std::uint32_t;

/// 0 for the platform's own port.
inline constexpr mach_port_t kIOMasterPortDefault = 0;

/// What to look for in the registry: services of one class.
struct MatchingDictionary {
    std::string className;
};

/// Result codes, 0 being success.
namespace io_return {
inline constexpr auto code(std::uint32_t value) { return static_cast<kern_return_t>(value); }
inline constexpr kern_return_t success = 0;
inline constexpr kern_return_t error = code(0xe00002bc);
inline constexpr kern_return_t noDevice = code(0xe00002c0);
inline constexpr kern_return_t notPrivileged = code(0xe00002c1);
inline constexpr kern_return_t badArgument = code(0xe00002c2);
inline constexpr kern_return_t unsupported = code(0xe00002c7);
inline constexpr kern_return_t ioError = code(0xe00002ca);
inline constexpr kern_return_t notOpen = code(0xe00002cd);
inline constexpr kern_return_t timeout = code(0xe00002d6);
inline constexpr kern_return_t notPermitted = code(0xe00002e2);
inline constexpr kern_return_t notFound = code(0xe00002f0);
}  // namespace io_return

/// What every client of the platform's registry does: finding services and opening their user clients. The
/// kinds of requests are the heirs'.
class IOServices {
  public:
    IOServices() = default;
    IOServices(const IOServices&) = delete;
    IOServices& operator=(const IOServices&) = delete;
    virtual ~IOServices() = default;

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
};

}  // namespace calorivo
