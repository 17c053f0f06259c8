#pragma once

#include "DriveTrees.h"
#include "platform/linux/DriveBlocks.h"
#include "platform/linux/DriveRead.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <map>
#include <ostream>
#include <string>
#include <vector>

namespace calorivo {

inline void PrintTo(const DriveReading& reading, std::ostream* out) {
    *out << "source " << static_cast<int>(reading.source) << (reading.hasIdentify ? " identify" : "")
         << (reading.isSwitchedOn ? " on" : "") << (reading.hasStatus ? " status" : "")
         << (reading.hasData ? " data" : "") << (reading.isAsleep ? " asleep" : "") << " error "
         << reading.error << " at byte 7: " << static_cast<int>(reading.smart[7]);
}

namespace test {

using Commands = std::vector<std::string>;

inline std::string nameOf(const AtaCommand& command) {
    if (command == ataIdentifyDevice) return "identify";
    if (command == ataCheckPowerMode) return "power mode";
    if (command == ataSmartReadData) return "read data";
    return command == ataSmartReturnStatus ? "return status" : "?";
}

/// The machine's disks and NVMe drives behind their device files.
struct FakeDevices {
    AtaBlock identify = identifyData("WHOLE MODEL OF THE DISK", "A1");
    AtaBlock smart = smartData({{194, {41}}});
    NvmeSmartLog log{};
    std::uint8_t powerMode = 0xFF;
    int openError = 0;
    int logError = 0;
    /// What UDisks2 tells; where it does not run it knows nothing.
    UDisksReading udisks{.error = ENOENT};
    bool isInStandby = false;
    /// What a command is answered with, if not with success.
    std::map<std::string, int> errors;
    /// Every command and every device that was opened.
    Commands sent;

    struct Disk final : AtaDevice {
        explicit Disk(FakeDevices& owner) : devices(owner) {}
        int answer(const AtaCommand& command) const {
            devices.sent.push_back(nameOf(command));
            const auto error = devices.errors.find(nameOf(command));
            return error == devices.errors.end() ? 0 : error->second;
        }
        int read(const AtaCommand& command, AtaBlock& data) override {
            const int error = answer(command);
            data = command == ataIdentifyDevice ? devices.identify : devices.smart;
            if (error != 0) data.fill(0x3F);  // a failing drive may leave anything there
            return error;
        }
        int ask(const AtaCommand& command, AtaRegisters& registers) override {
            const int error = answer(command);
            if (error == 0) registers.count = devices.powerMode;
            return error;
        }
        FakeDevices& devices;
    };

    DriveDevices devices() {
        return {[this](const std::string& path, int& error) -> std::unique_ptr<AtaDevice> {
                    sent.push_back("open " + path);
                    error = openError;
                    if (openError != 0) return nullptr;
                    return std::make_unique<Disk>(*this);
                },
                [this](const std::string& path, NvmeSmartLog& read) {
                    sent.push_back("log " + path);
                    read = log;
                    return logError;
                },
                [this](const std::string& block) {
                    sent.push_back("standby " + block);
                    return isInStandby;
                },
                [this](const std::string& block) {
                    sent.push_back("udisks " + block);
                    return udisks;
                }};
    }
};

/// Reads the drives of a made tree, with those devices.
class DriveReadFixture : public testing::Test {
  protected:
    DriveReading read(const std::string& name = "sda") {
        return readDrive(name, {tree.root(), "/d"}, fake.devices());
    }
    /// A reading from a temperature that the kernel or the log told.
    static DriveReading told(DriveSource source, const AtaBlock& identify, int celsius) {
        DriveReading reading;
        reading.identify = identify;
        reading.smart = temperatureBlock(celsius);
        reading.source = source;
        reading.hasIdentify = reading.isSwitchedOn = reading.hasStatus = reading.hasData = true;
        return reading;
    }
    /// A disk that was identified and gave no temperature.
    static DriveReading unread(int error) {
        DriveReading reading;
        reading.identify = identifyData("SAMPLE DISK", "A1");
        reading.hasIdentify = true;
        reading.error = error;
        return reading;
    }

    FakeTree tree;
    FakeDevices fake;
    const FakeDisk disk{};
    const FakeNvme nvme{};
};

}  // namespace test
}  // namespace calorivo
