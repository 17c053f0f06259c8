#pragma once

#include "platform/linux/AtaCommand.h"
#include "platform/linux/DriveReading.h"
#include "platform/linux/NvmeLog.h"
#include "platform/linux/UDisks.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace calorivo {

/// Where the drives are. Without `dev` no device is opened: what a recorded machine is read by.
struct DriveRoots {
    std::string sys = "/sys";
    std::string dev = "/dev";
};

/// The ways to a drive beside the kernel's readings: two that need a privilege, and for those who have none
/// the service UDisks2, which may be absent.
struct DriveDevices {
    std::function<std::unique_ptr<AtaDevice>(const std::string& path, int& error)> openAta;
    std::function<int(const std::string& path, NvmeSmartLog& log)> readLog;
    /// As UDisks has them, by the name of a block device.
    std::function<bool(const std::string& block)> isInStandby{};
    std::function<UDisksReading(const std::string& block)> readUDisks{};
};
/// Those of the system.
[[nodiscard]] DriveDevices systemDriveDevices();

/// What the kernel has kept of the drive's identify data, or a block made of what it tells elsewhere; none
/// for a drive that is gone. Asks the drive for nothing.
[[nodiscard]] std::optional<AtaBlock> identifyDrive(const std::string& name, const std::string& sys);

/// Reads the drive of this name ("sda", "nvme0") from the best source that it has. A drive that sleeps is
/// left alone. May block for as long as the drive likes.
[[nodiscard]] DriveReading readDrive(const std::string& name, const DriveRoots& roots,
                                     const DriveDevices& devices);

}  // namespace calorivo
