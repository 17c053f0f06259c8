#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

namespace calorivo {

/// The SMART / health log of an NVMe drive.
using NvmeSmartLog = std::array<std::uint8_t, 512>;

/// The drive's temperature in whole °C; 0 when the log tells none.
[[nodiscard]] int temperatureInNvmeLog(const NvmeSmartLog& log);

/// Reads the log of a drive ("/dev/nvme0"); an errno, 0 for success. Needs CAP_SYS_ADMIN. May block.
[[nodiscard]] int readNvmeLog(const std::string& path, NvmeSmartLog& log);

}  // namespace calorivo
