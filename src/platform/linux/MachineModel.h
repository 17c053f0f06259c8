#pragma once

#include "platform/SysCtl.h"

#include <optional>
#include <string>

namespace calorivo {

/// The machine's model identifier: the product's name by its firmware, the board's where the product has only
/// a filler for a name, the device tree's where there is no such firmware. None when nothing tells it.
[[nodiscard]] std::optional<std::string> machineModel(const std::string& sys);

/// System values of this machine, or of a recorded one.
class LinuxSysCtl final : public SysCtl {
  public:
    explicit LinuxSysCtl(std::string sys = "/sys") : sys_(std::move(sys)) {}
    int sysctlbyname(std::string_view name, char* buffer, std::size_t& size) override;

  private:
    std::string sys_;
};

}  // namespace calorivo
