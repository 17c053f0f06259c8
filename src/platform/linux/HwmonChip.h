#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace calorivo {

/// One temperature or fan of a chip.
struct HwmonChannel {
    enum class Kind { temperature, fan };
    Kind kind = Kind::temperature;
    /// N of tempN_input or fanN_input; starts at 1 and may have gaps.
    int number = 0;
    /// Empty when the driver gives none. Trailing blanks count.
    std::string label;
    /// The "fault" file said that the value is not to be trusted.
    bool isFaulty = false;
    /// What the channel read when the chip was found: thousandths of a degree, or revolutions per minute.
    /// Meaningless unless `wasRead`; a chip that sleeps is not read.
    long firstValue = 0;
    bool wasRead = false;
    /// Fans only: the minimum speed, 0 when there is none.
    long minimum = 0;
    friend bool operator==(const HwmonChannel&, const HwmonChannel&) = default;
};

/// One chip as the kernel shows it, with what is known about the device behind it.
struct HwmonChip {
    /// What the driver calls it: "coretemp".
    std::string name;
    /// The real path of the device, without the root of sysfs: "/devices/platform/coretemp.0". Never a hwmon
    /// number. Chips without a device have their name and a counting number instead. Thermal zones and
    /// wireless chips, whose device numbers move, have their name.
    std::string devicePath;
    /// The folder that holds the channel files, with the root of sysfs.
    std::string folder;
    /// Free text of the firmware; may be empty.
    std::string label;

    /// The device's PCI address, vendor and device, when it is a PCI device: "0000:01:00.0", 0x1002, 0x73ff.
    std::string pciAddress;
    std::uint32_t pciVendor = 0;
    std::uint32_t pciDevice = 0;
    std::uint32_t pciSubvendor = 0;
    std::uint32_t pciSubdevice = 0;
    /// Base class and subclass, 0x0300 for a VGA controller; 0 when it is no PCI device.
    std::uint32_t pciClass = 0;
    /// The firmware's first display: mostly the integrated GPU.
    bool isBootVGA = false;
    /// A GPU that sleeps: none of its inputs may be read, or it would wake.
    bool isAsleep = false;
    /// Drives only: the model text of the device and its serial number, trimmed.
    std::string driveModel;
    std::string driveSerial;
    /// Network devices only: the interface's name, "enp3s0".
    std::string interfaceName;
    /// Power supplies only: "Battery", "Mains" ... and their scope, "System" or "Device".
    std::string supplyType;
    std::string supplyScope;
    /// Apple silicon only: the controller's own key for each labelled sensor, "TB0T" for "Battery Hotspot".
    std::vector<std::pair<std::string, std::string>> labelKeys;

    std::vector<HwmonChannel> channels;
    friend bool operator==(const HwmonChip&, const HwmonChip&) = default;
};

/// The chip's name without a number that its driver hands out anew at each load: "iwlwifi" for "iwlwifi_1".
[[nodiscard]] std::string steadyName(const HwmonChip& chip);
/// The device's path, or the steady name where there is none.
[[nodiscard]] std::string steadyPath(const HwmonChip& chip);
/// The beginning of the channel's file names: "temp3", "fan1".
[[nodiscard]] std::string channelName(const HwmonChannel& channel);
/// One of the channel's files: "temp1_input" for the suffix "input".
[[nodiscard]] std::string channelFile(const HwmonChannel& channel, std::string_view suffix);

/// What makes a channel the same one after a reboot, a renumbering or a reload of its driver:
/// "/devices/platform/coretemp.0|coretemp|temp2|Core 0".
[[nodiscard]] std::string identityOf(const HwmonChip& chip, const HwmonChannel& channel);

}  // namespace calorivo
