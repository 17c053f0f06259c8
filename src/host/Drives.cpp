#include "host/Drives.h"

#include "monitor/AtaIdentify.h"
#include "monitor/ISPSmartController.h"
#include "monitor/SmartData.h"
#include "platform/linux/AtaSmartDrives.h"
#include "platform/linux/DriveBlocks.h"
#include "platform/linux/DriveReaderPool.h"
#include "platform/linux/DriveScan.h"
#include "platform/linux/LinuxPaths.h"
#include "platform/linux/SmallFile.h"

#include <unistd.h>

#include <cerrno>
#include <mutex>
#include <string_view>
#include <utility>

namespace calorivo {

namespace {

const char* nameOf(DriveSource source) {
    switch (source) {
        case DriveSource::none:
            return "";
        case DriveSource::drivetemp:
            return "drivetemp";
        case DriveSource::nvme:
            return "nvme";
        case DriveSource::smart:
            return "smart";
        case DriveSource::smartLog:
            return "nvme log";
    }
    return "";
}

std::optional<std::int32_t> celsiusIn(const DriveReading& reading) {
    if (!reading.hasData || !isChecksumRight(reading.smart)) return std::nullopt;
    const auto celsius = temperatureInSMARTData(reading.smart);
    return celsius && *celsius > 0 ? std::optional<std::int32_t>(*celsius) : std::nullopt;
}

/// What stands in the way of a reading of this drive that failed.
std::string troubleText(std::string_view name, const DriveReading& reading) {
    switch (reading.error) {
        case EACCES:
        case EPERM:
        case ENOENT:
            return isNvmeName(name)
                       ? "the kernel gives no reading of it, and only root may ask the drive itself"
                       : "the kernel module drivetemp is not loaded, and only root may ask the drive itself";
        case 0:
            return "it has no temperature";
        default:
            return errorText(reading.error);
    }
}

std::string troubleOf(const DriveStatus& status) {
    const DriveReading& reading = status.reading;
    switch (status.state) {
        case DriveAnswer::State::hung:
            return "it does not answer";
        case DriveAnswer::State::failed:
            return "the reader of drives failed";
        case DriveAnswer::State::late:
            return "it has not answered yet";
        case DriveAnswer::State::read:
            break;
    }
    if (reading.isAsleep) return "it sleeps";
    if (reading.source == DriveSource::smart && !reading.isSwitchedOn) return "its SMART is switched off";
    if (reading.hasData && !isChecksumRight(reading.smart)) return "its SMART data is damaged";
    return troubleText(status.name, reading);
}

/// None for what is no drive with SMART, as far as one can tell.
std::optional<DriveDetails> detailsOf(const DriveStatus& status) {
    const DriveReading& reading = status.reading;
    DriveDetails details;
    details.device = status.name;
    if (reading.hasIdentify) {
        const auto dictionary = driveFromIdentifyData(reading.identify);
        if (!dictionary) return std::nullopt;
        details.model = dictionary->model;
        details.serial = trimmed(dictionary->serial);
    }
    details.celsius = celsiusIn(reading);
    if (!details.celsius && !status.isSmartCapable) return std::nullopt;
    details.isAsleep = reading.isAsleep;
    if (details.celsius)
        details.source = nameOf(reading.source);
    else
        details.trouble = troubleOf(status);
    return details;
}

/// Marks those that are among the disks, which are in the same order.
void markListed(std::vector<DriveDetails>& drives, const std::vector<DriveDictionary>& disks) {
    auto disk = disks.begin();
    for (DriveDetails& drive : drives) {
        if (disk == disks.end()) return;
        drive.isListed = disk->model == drive.model && trimmed(disk->serial) == drive.serial &&
                         disk->temp == drive.celsius.value_or(0);
        if (drive.isListed) ++disk;
    }
}

class LinuxDrives final : public Drives {
  public:
    explicit LinuxDrives(std::string sys, std::unique_ptr<DriveReaders> readers)
        : ataSmart_(std::move(sys), std::move(readers)), controller_(ataSmart_) {}

    void update() override {
        controller_.update();
        std::vector<DriveDetails> found;
        for (const DriveStatus& status : ataSmart_.statuses())
            if (auto details = detailsOf(status)) found.push_back(std::move(*details));
        markListed(found, controller_.allDisks());
        const std::lock_guard lock(mutex_);
        details_ = std::move(found);
    }
    [[nodiscard]] std::vector<DriveDictionary> allDisks() const override { return controller_.allDisks(); }
    [[nodiscard]] std::vector<DriveDetails> details() const override {
        const std::lock_guard lock(mutex_);
        return details_;
    }

  private:
    AtaSmartDrives ataSmart_;
    ISPSmartController controller_;
    mutable std::mutex mutex_;
    std::vector<DriveDetails> details_;
};

}  // namespace

std::unique_ptr<Drives> makeDrives(const SourceOptions& options, const std::string& reader,
                                   std::chrono::nanoseconds patience) {
    if (options.keysFile || options.simulationSeed) return nullptr;
    DriveRoots roots;
    // A recorded machine's drives are not in this one.
    if (options.sys) roots = {*options.sys, {}};
    auto readers = std::make_unique<DriveReaderPool>(
        DriveReaderOptions{.command = driveReaderCommand(reader, roots), .patience = patience});
    return std::make_unique<LinuxDrives>(roots.sys, std::move(readers));
}

std::string driveReaderProgram() {
    const std::string own = executablePath();
    const std::string beside = own.substr(0, own.rfind('/') + 1) + "calorivo-cli";
    // By this name it starts even when the program's file has been replaced meanwhile.
    return beside != own && access(beside.c_str(), X_OK) == 0 ? beside : "/proc/self/exe";
}

}  // namespace calorivo
