#pragma once

#include "support/DriveData.h"
#include "support/FakeTree.h"

#include <string>
#include <string_view>

namespace calorivo::test {

/// An ATA disk as the kernel shows it: "sda" at the SCSI address "2:0:0:0".
struct FakeDisk {
    std::string_view name = "sda";
    std::string_view address = "0:0:0:0";
    std::string_view model = "SAMPLE DISK";
    std::string_view serial = "A1";
    /// The kernel's running number of the disk.
    std::string_view sequence = "7";

    [[nodiscard]] std::string device() const {
        return "devices/pci0000:00/0000:00:1f.2/ata1/host0/target0:0:0/" + std::string(address);
    }
};

inline void addDisk(FakeTree& tree, const FakeDisk& disk) {
    const std::string device = disk.device();
    const std::string block = device + "/block/" + std::string(disk.name);
    const AtaBlock identify = identifyData(disk.model, disk.serial);
    std::string page(60, '\0');
    page[1] = '\x89';
    page.append(identify.begin(), identify.end());
    std::string serial(disk.serial);
    serial.resize(20, ' ');
    tree.file(device + "/vendor", "ATA     \n");
    tree.file(device + "/model", std::string(disk.model) + "\n");
    tree.file(device + "/vpd_pg80", std::string("\0\x80\0\x14", 4) + serial);
    tree.file(device + "/vpd_pg89", page);
    tree.file(device + "/power/runtime_status", "active\n");
    tree.file(block + "/diskseq", std::string(disk.sequence) + "\n");
    tree.link(block + "/device", "../../../" + std::string(disk.address));
    tree.link("block/" + std::string(disk.name), "../" + block);
}

/// The kernel's own reading of the disk's temperature.
inline void addDrivetemp(FakeTree& tree, const FakeDisk& disk, std::string_view millidegrees) {
    tree.file(disk.device() + "/hwmon/hwmon4/name", "drivetemp\n");
    tree.file(disk.device() + "/hwmon/hwmon4/temp1_input", std::string(millidegrees) + "\n");
}

inline void removeDisk(FakeTree& tree, const FakeDisk& disk) {
    tree.remove("block/" + std::string(disk.name)).remove(disk.device());
}

/// An NVMe drive: "nvme0" in a PCI slot.
struct FakeNvme {
    std::string_view name = "nvme0";
    std::string_view model = "SAMPLE NVME";
    std::string_view serial = "N1";

    [[nodiscard]] std::string device() const { return "devices/pci0000:00/0000:01:00.0"; }
    [[nodiscard]] std::string folder() const { return device() + "/nvme/" + std::string(name); }
};

inline void addNvme(FakeTree& tree, const FakeNvme& drive) {
    std::string model(drive.model);
    model.resize(40, ' ');
    std::string serial(drive.serial);
    serial.resize(20, ' ');
    tree.file(drive.device() + "/power/runtime_status", "active\n");
    tree.file(drive.folder() + "/model", model + "\n");
    tree.file(drive.folder() + "/serial", serial + "\n");
    tree.file(drive.folder() + "/state", "live\n");
    tree.link(drive.folder() + "/device", "../../../0000:01:00.0");
    tree.link("class/nvme/" + std::string(drive.name), "../../" + drive.folder());
}

inline void addNvmeChip(FakeTree& tree, const FakeNvme& drive, std::string_view millidegrees) {
    tree.file(drive.folder() + "/hwmon2/name", "nvme\n");
    tree.file(drive.folder() + "/hwmon2/temp1_input", std::string(millidegrees) + "\n");
}

}  // namespace calorivo::test
