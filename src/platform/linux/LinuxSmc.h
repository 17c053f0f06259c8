#pragma once

#include "platform/linux/PciNames.h"
#include "platform/linux/SleepWatch.h"
#include "smc/SmcService.h"

#include <chrono>
#include <memory>
#include <string>
#include <vector>

namespace calorivo {

/// Where a Linux provider finds things. Tests and recorded machines name folders of their own.
struct LinuxSmcOptions {
    /// The root of sysfs.
    std::string sys = "/sys";
    /// Where the assignment of keys to sensors is kept, so that it survives reboots; empty: nothing is kept.
    std::string stateFolder;
    /// The naming rules, read in this order; rules of a later file win. Files that are absent are passed
    /// over.
    std::vector<std::string> namingFiles;
    /// The names of PCI devices; see PciNames.
    std::string pciIds = pciIdsPlaces;
    /// On a Mac, show also the chips beside the controller, which mostly measure the same parts again.
    bool isUsingAllChips = false;
    /// How old a value may be before asking for it reads the hardware again. With 0 a key that is asked for a
    /// second time is read again, for measuring.
    std::chrono::milliseconds minimumAge{100};
    /// How long a request waits for the devices before it answers from the last good values.
    std::chrono::milliseconds patience{50};
    MachineClocks clocks{};
};

/// Real hardware behind the record exchange: a Mac's controller through the kernel's applesmc driver, or any
/// PC's chips through hwmon, their channels under keys of the same kind.
///
/// Chips are read on threads of the provider's own, so that a slow or dead one holds nobody: a request waits
/// for its chip up to a deadline and then answers from the last good value, as long as that has not expired.
/// After a sleep of the machine the chips' files are opened anew, and no value from before it is answered.
class LinuxSmc final : public SmcService {
  public:
    explicit LinuxSmc(LinuxSmcOptions options);
    ~LinuxSmc() override;

    [[nodiscard]] std::string_view sourceName() const override;
    [[nodiscard]] std::optional<std::string> modelName() const override;
    [[nodiscard]] std::vector<ModelTableEntry> machineSensors() const override;
    [[nodiscard]] std::optional<KeyOrigin> originOf(std::string_view key) override;
    [[nodiscard]] std::string driveMeasuredBy(std::string_view key) override;
    [[nodiscard]] std::vector<std::string> problems() const override;

  protected:
    bool isPresent() override;
    kern_return_t open() override;
    void close() override;
    std::optional<std::uint32_t> keyAt(std::uint32_t index) override;
    kern_return_t keyInformation(std::uint32_t key, SmcKeyInformation& information) override;
    kern_return_t readBytes(std::uint32_t key, std::span<std::uint8_t, 32> bytes) override;

  private:
    class Machine;
    LinuxSmcOptions options_;
    std::unique_ptr<Machine> machine_;
};

}  // namespace calorivo
