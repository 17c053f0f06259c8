#pragma once

#include "platform/linux/HwmonChip.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace calorivo {

/// What kind of PCI device it is, and whose version of it; 0 where that is unknown.
struct PciIdentity {
    std::uint32_t vendor = 0;
    std::uint32_t device = 0;
    std::uint32_t subvendor = 0;
    std::uint32_t subdevice = 0;
    friend bool operator==(const PciIdentity&, const PciIdentity&) = default;
};

/// Where systems keep the file with the names of PCI devices ("pci.ids").
inline constexpr const char* pciIdsPlaces = "/usr/share/misc/pci.ids:/usr/share/hwdata/pci.ids";

/// The names of PCI devices, from the text file that systems carry for them. The file is read when the first
/// name is asked for.
class PciNames {
  public:
    /// Paths separated by colons: the first that can be read counts.
    explicit PciNames(std::string places) : places_(std::move(places)) {}

    /// "AMD Radeon RX 6800"; "Intel GPU 3e9b" when the file does not know it; "GPU" for no PCI device.
    [[nodiscard]] std::string gpuName(const PciIdentity& gpu);
    [[nodiscard]] std::string gpuName(const HwmonChip& chip) {
        return gpuName({chip.pciVendor, chip.pciDevice, chip.pciSubvendor, chip.pciSubdevice});
    }

  private:
    void read();
    [[nodiscard]] bool readFile(const std::string& path);

    std::string places_;
    bool isRead_ = false;
    std::unique_ptr<char[]> buffer_;
    std::string_view text_;
};

/// What the file's text says about a device, by vendor and device in hexadecimal ("1002", "73ff") and, where
/// `subsystem` ("106b 017a") is not empty and known, about that very version of it. Empty when nothing.
[[nodiscard]] std::string_view pciDeviceText(std::string_view text, std::string_view vendor,
                                             std::string_view device, std::string_view subsystem);

}  // namespace calorivo
