#pragma once

#include <cstddef>
#include <string_view>

namespace calorivo {

/// System values by name.
class SysCtl {
  public:
    SysCtl() = default;
    SysCtl(const SysCtl&) = delete;
    SysCtl& operator=(const SysCtl&) = delete;
    virtual ~SysCtl() = default;

    /// Copies the value, with its closing NUL, to `buffer`, whose room is `size`; with a null buffer only
    /// `size` is set. An unknown value has size 0. Returns 0, or −1 when the value is unknown or the room too
    /// small.
    virtual int sysctlbyname(std::string_view name, char* buffer, std::size_t& size) = 0;
};

}  // namespace calorivo
