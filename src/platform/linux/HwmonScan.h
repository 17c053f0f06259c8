#pragma once

#include "platform/linux/FileDescriptor.h"
#include "platform/linux/HwmonChip.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace calorivo {

/// A chip that was found, before anything but its name was read.
struct LocatedChip {
    /// The open folder of its files. It stays this chip's: whoever gets its number later has another folder.
    std::shared_ptr<const FileDescriptor> files;
    /// The folder with its files, below the root of sysfs: "/class/hwmon/hwmon3" or
    /// "/class/hwmon/hwmon3/device".
    std::string folder;
    std::string name;
    /// As in HwmonChip.
    std::string devicePath;
    /// The whole device path below the root of sysfs, with its moving numbers; empty without a device.
    std::string rawDevicePath;
    /// The path tells this device from every other one. Where it does not (chips without a device), two chips
    /// of one name are told apart by counting only.
    bool isPathUnique = false;
};

/// Every chip below `sys`, sorted by device path and name. Reads names and links only. An absent folder has
/// no chips.
[[nodiscard]] std::vector<LocatedChip> locateHwmonChips(const std::string& sys);

/// A chip without its readings, and the names of all its files, sorted.
struct DescribedChip {
    HwmonChip chip;
    std::vector<std::string> files;
};

/// What there is to know about a chip but its readings: no input is read, so that a device that sleeps goes
/// on sleeping.
[[nodiscard]] DescribedChip describeHwmonChip(const std::string& sys, const LocatedChip& located);

/// Whether a device whose "power/runtime_status" is this would be woken by reading it.
[[nodiscard]] bool isAsleepStatus(std::string_view status);

}  // namespace calorivo
