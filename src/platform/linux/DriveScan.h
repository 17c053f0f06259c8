#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace calorivo {

/// A drive that was found.
struct LocatedDrive {
    /// As the kernel calls it at present: "sda", "nvme0".
    std::string name;
    /// Tells this drive from every other one, also from the next one in its place: its device path, the
    /// kernel's running number of the disk where there is one, model and serial number.
    std::string identity;
    /// False for a disk that is only tried where no other drive has a temperature: one behind USB, a disk of
    /// a storage array, a virtual one.
    bool isSmartCapable = false;
    friend bool operator==(const LocatedDrive&, const LocatedDrive&) = default;
};

[[nodiscard]] bool isNvmeName(std::string_view name);

/// Every disk and NVMe drive below `sys`, disks first, each in the order of the alphabet ("sdb" before
/// "sdaa"). Asks no drive for anything: what is read is in the kernel's memory, so that a drive that sleeps
/// goes on sleeping, and one that hangs holds nobody.
[[nodiscard]] std::vector<LocatedDrive> locateDrives(const std::string& sys);

}  // namespace calorivo
