#include "host/Drives.h"

#include "monitor/ISPSmartController.h"
#include "platform/linux/AtaSmartDrives.h"
#include "platform/linux/DriveReaderPool.h"
#include "platform/linux/LinuxMountedVolumes.h"
#include "platform/linux/LinuxPaths.h"

#include <unistd.h>

#include <mutex>
#include <utility>

namespace calorivo {

namespace {

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
        : volumes_("/proc", sys),
          ataSmart_(std::move(sys), std::move(readers)),
          controller_(ataSmart_, &volumes_) {}

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
    LinuxMountedVolumes volumes_;
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
