#pragma once

#include "platform/linux/HwmonChip.h"

#include <memory>
#include <string>
#include <string_view>

namespace calorivo {

/// The names of PCI devices, from the text file that systems carry for them ("pci.ids"). The file is read
/// when the first name is asked for.
class PciNames {
  public:
    explicit PciNames(std::string file) : file_(std::move(file)) {}

    /// "AMD Radeon RX 6800"; "Intel GPU 3e9b" when the file does not know it; "GPU" for no PCI device.
    [[nodiscard]] std::string gpuName(const HwmonChip& chip);

  private:
    void read();

    std::string file_;
    bool isRead_ = false;
    std::unique_ptr<char[]> buffer_;
    std::string_view text_;
};

/// What the file's text says about a device, by vendor and device in hexadecimal ("1002", "73ff") and, where
/// `subsystem` ("106b 017a") is not empty and known, about that very version of it. Empty when nothing.
[[nodiscard]] std::string_view pciDeviceText(std::string_view text, std::string_view vendor,
                                             std::string_view device, std::string_view subsystem);

}  // namespace calorivo
