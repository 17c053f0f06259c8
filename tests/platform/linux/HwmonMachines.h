#pragma once

#include "platform/linux/HwmonChip.h"

#include <string>
#include <utility>
#include <vector>

// Machines for the naming tests, as the scan of their hwmon chips would describe them.

namespace calorivo::machines {

inline HwmonChannel temperature(int number, std::string label = {}, long firstValue = 41500) {
    HwmonChannel channel;
    channel.number = number;
    channel.label = std::move(label);
    channel.firstValue = firstValue;
    channel.wasRead = true;
    return channel;
}

inline HwmonChannel fan(int number, std::string label = {}, long firstValue = 1234, long minimum = 0) {
    HwmonChannel channel = temperature(number, std::move(label), firstValue);
    channel.kind = HwmonChannel::Kind::fan;
    channel.minimum = minimum;
    return channel;
}

inline HwmonChip chip(std::string name, std::string devicePath, std::vector<HwmonChannel> channels) {
    HwmonChip result;
    result.name = std::move(name);
    result.devicePath = std::move(devicePath);
    result.channels = std::move(channels);
    return result;
}

/// A GPU on a PCI bus: "0000:01:00.0".
inline HwmonChip gpu(std::string name, const std::string& address, std::uint32_t vendor, std::uint32_t device,
                     std::vector<HwmonChannel> channels) {
    HwmonChip result = chip(std::move(name), "/devices/pci0000:00/" + address, std::move(channels));
    result.pciAddress = address;
    result.pciVendor = vendor;
    result.pciDevice = device;
    result.pciClass = 0x0300;
    return result;
}

inline HwmonChip amdCard(const std::string& address, std::uint32_t device = 0x73bf) {
    return gpu("amdgpu", address, 0x1002, device,
               {temperature(1, "edge"), temperature(2, "junction"), temperature(3, "mem"), fan(1)});
}

inline HwmonChip amdIntegrated(const std::string& address) {
    return gpu("amdgpu", address, 0x1002, 0x1638, {temperature(1, "edge")});
}

inline HwmonChip nvme(const std::string& path, std::string model) {
    HwmonChip result = chip(
        "nvme", path, {temperature(1, "Composite"), temperature(2, "Sensor 1"), temperature(3, "Sensor 2")});
    result.driveModel = std::move(model);
    return result;
}

inline HwmonChip battery(const std::string& name, std::string scope = "System") {
    HwmonChip result = chip(name, "/devices/acpi/" + name, {temperature(1, "temp")});
    result.supplyType = "Battery";
    result.supplyScope = std::move(scope);
    return result;
}

inline HwmonChip coretemp(int package, int cores) {
    const std::string number = std::to_string(package);
    HwmonChip result =
        chip("coretemp", "/devices/platform/coretemp." + number, {temperature(1, "Package id " + number)});
    for (int core = 0; core < cores; ++core)
        result.channels.push_back(temperature(core + 2, "Core " + std::to_string(core)));
    return result;
}

inline HwmonChip acpitz(int zones) {
    HwmonChip result = chip("acpitz", "acpitz", {});
    for (int zone = 1; zone <= zones; ++zone) result.channels.push_back(temperature(zone));
    return result;
}

inline HwmonChip wireless(const std::string& name) { return chip(name, name, {temperature(1)}); }

inline HwmonChip memoryModule(int address) {
    return chip("jc42", "/devices/pci0000:00/0000:00:14.0/i2c-0/0-001" + std::to_string(address),
                {temperature(1)});
}

inline std::vector<HwmonChip> intelLaptop() {
    return {
        acpitz(2),
        battery("BAT0"),
        wireless("iwlwifi_1"),
        nvme("/devices/pci0000:00/0000:00:1d.0/0000:3d:00.0/nvme/nvme0", "Fast Drive 512"),
        chip("pch_cannonlake", "pch_cannonlake", {temperature(1)}),
        coretemp(0, 4),
        gpu("i915", "0000:00:02.0", 0x8086, 0x3e9b, {temperature(1)}),
        amdCard("0000:01:00.0", 0x67ef),
    };
}

inline HwmonChip nct6798() {
    return chip("nct6798", "/devices/platform/nct6775.656",
                {temperature(1, "SYSTIN"), temperature(2, "CPUTIN"), temperature(3, "AUXTIN0"),
                 temperature(4, "AUXTIN1", -62000), temperature(5, "AUXTIN2"), temperature(6, "AUXTIN3"),
                 temperature(7, "PECI Agent 0 Calibration"), temperature(8, "PCH_CHIP_CPU_MAX_TEMP", 0),
                 temperature(9, "PCH_CHIP_TEMP"), temperature(10, "PCH_CPU_TEMP"),
                 temperature(11, "TSI0_TEMP"), temperature(12, "Virtual_TEMP"), temperature(13),
                 temperature(14, "SMBUSMASTER 0"), fan(1, "", 0), fan(2), fan(3, "", 0, 600), fan(4, "", 0)});
}

inline std::vector<HwmonChip> amdDesktop() {
    HwmonChip processor = chip(
        "k10temp", "/devices/pci0000:00/0000:00:18.3",
        {temperature(1, "Tctl"), temperature(2, "Tdie"), temperature(3, "Tccd1"), temperature(5, "Tccd3")});
    processor.pciAddress = "0000:00:18.3";
    return {
        nvme("/devices/pci0000:00/0000:00:01.2/0000:04:00.0/nvme/nvme1", "Solid 2TB"),
        nvme("/devices/pci0000:00/0000:00:01.1/0000:03:00.0/nvme/nvme0", "Solid 2TB"),
        nct6798(),
        memoryModule(9),
        memoryModule(8),
        memoryModule(3),
        memoryModule(5),
        amdCard("0000:0b:00.0"),
        processor,
    };
}

inline std::vector<HwmonChip> thinkpad() {
    return {
        coretemp(0, 2),
        acpitz(1),
        chip("thinkpad", "/devices/platform/thinkpad_hwmon",
             {temperature(1, "CPU"), temperature(2, "GPU"), temperature(3), temperature(4, "", 0), fan(1),
              fan(2, "", 65535)}),
    };
}

inline std::vector<HwmonChip> dell() {
    HwmonChip card =
        chip("mlx5", "/devices/pci0000:00/0000:00:1c.0/0000:02:00.0", {temperature(1, "sensor0")});
    card.pciClass = 0x0200;
    card.interfaceName = "enp2s0";
    return {
        chip("dell_smm", "/devices/platform/dell_smm_hwmon",
             {temperature(1, "CPU"), temperature(2, "GPU"), temperature(3, "SODIMM"),
              temperature(4, "Ambient"), temperature(5, "Other"), temperature(6, "Other"),
              temperature(7, "Other"), fan(1, "Processor Fan"), fan(2, "Other_Fan")}),
        battery("BAT0"),
        battery("BAT1"),
        battery("hidpp_battery_0", "Device"),
        wireless("iwlwifi_2"),
        wireless("iwlwifi_1"),
        card,
    };
}

inline std::vector<HwmonChip> appleSilicon() {
    HwmonChip controller =
        chip("macsmc_hwmon", "/devices/platform/soc/23e400000.smc/macsmc_hwmon",
             {temperature(1, "NAND Flash Temperature"), temperature(2, "Battery Hotspot"),
              temperature(3, "Charge Regulator Temp"), temperature(4, "WiFi/BT Module Temp"),
              temperature(5, "Palm Area Temp"), fan(1, "Left Fan")});
    controller.labelKeys = {{"NAND Flash Temperature", "TH0x"},
                            {"Battery Hotspot", "TB0T"},
                            {"Charge Regulator Temp", "TCHP"},
                            {"WiFi/BT Module Temp", "TW0P"},
                            {"Palm Area Temp", "Ts0x"}};
    return {controller};
}

inline std::vector<HwmonChip> server() { return {coretemp(0, 40), coretemp(1, 40)}; }

/// A hundred chips with six channels each.
inline std::vector<HwmonChip> manyChannels(int chips = 100) {
    std::vector<HwmonChip> result;
    for (int i = 0; i < chips; ++i) {
        result.push_back(
            chip("pmbus" + std::to_string(i), "/devices/platform/i2c/" + std::to_string(1000 + i), {}));
        for (int n = 1; n <= 6; ++n) result.back().channels.push_back(temperature(n, "phase"));
    }
    return result;
}

}  // namespace calorivo::machines
