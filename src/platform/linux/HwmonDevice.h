#pragma once

#include "platform/linux/HwmonScan.h"
#include "platform/linux/ReadingsDevice.h"
#include "platform/linux/RuntimePower.h"

#include <chrono>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

namespace calorivo {

/// One hwmon chip with its files kept open. When its device goes away the files give nothing; when the same
/// device comes back, under whatever number, they are opened again; so they are after a sleep of the machine.
/// Another device never answers in its place.
class HwmonDevice final : public ReadingsDevice {
  public:
    HwmonDevice(std::string sys, LocatedChip located, MachineClocks clocks = {})
        : ReadingsDevice(std::move(clocks)), sys_(std::move(sys)), located_(std::move(located)) {}

    /// What was found; only once the device is described: it does not change any more.
    [[nodiscard]] const HwmonChip& chip() const { return chip_; }
    /// The place of a file among the items, "temp1_input"; `none` when the chip has no such file.
    [[nodiscard]] std::size_t itemOf(std::string_view file) const;
    /// The chip and where it is, for messages: "coretemp at /devices/platform/coretemp.0".
    [[nodiscard]] std::string place() const;
    /// The whole path of an item's file.
    [[nodiscard]] std::string pathOf(std::size_t item) const;
    static constexpr std::size_t none = static_cast<std::size_t>(-1);

  protected:
    bool describe() override;
    void firstPassEnded() override;
    void machineHasSlept() override;
    Pass beginPass() override;
    void readItem(std::size_t item, const Reading& last, Reading& reading) override;

  private:
    struct File {
        std::string name;
        FileDescriptor descriptor;
        /// The file that says whether the sensor is broken; empty when there is none.
        std::string faultName;
        /// The label that the channel had when it was found: a changed one is another sensor.
        std::string labelName;
        std::string label;
    };
    void addFile(std::string name, FirstPass firstPass);
    void addChannel(const HwmonChannel& channel);
    void openRuntimePower();
    bool isFaulty(const File& file) const;
    int openFile(File& file);
    void loseIfGone();
    bool findAgain();

    const std::string sys_;
    /// Guards the place, which changes when the device comes back under another number.
    mutable std::mutex placeMutex_;
    LocatedChip located_;
    HwmonChip chip_;
    std::shared_ptr<const FileDescriptor> folder_;
    /// GPUs only.
    RuntimePower runtimePower_;
    std::vector<File> files_;
    std::map<std::string, std::size_t, std::less<>> items_;
    std::vector<std::string> names_;
    bool isLost_ = false;
    std::chrono::nanoseconds nextSearch_{};
};

}  // namespace calorivo
