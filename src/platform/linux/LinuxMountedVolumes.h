#pragma once

#include "platform/AtaSmart.h"

#include <string>
#include <vector>

namespace calorivo {

/// The mounted volumes that stand on block devices, as the kernel lists them at each call. What the desktop
/// mounts for its users, in /media/USER and /run/media/USER, is "/Volumes/NAME" here, a second one of the
/// same name "/Volumes/NAME 1". Disks are numbered: "disk7s2" is the second partition of the disk with the
/// kernel's running number 7. Any thread.
class LinuxMountedVolumes final : public MountedVolumes {
  public:
    explicit LinuxMountedVolumes(std::string proc = "/proc", std::string sys = "/sys");

    [[nodiscard]] std::vector<std::string> mountedLocalVolumePaths() override;
    [[nodiscard]] std::string BSDNameOfVolume(const std::string& path) override;
    /// The last part of the folder that it is mounted on; empty for no volume.
    [[nodiscard]] std::string displayNameAtPath(const std::string& path) override;

  private:
    struct Volume {
        std::string path;
        std::string device;
        std::string name;
    };
    [[nodiscard]] std::vector<Volume> volumes() const;
    [[nodiscard]] Volume volumeAt(const std::string& path) const;

    std::string proc_;
    std::string sys_;
};

}  // namespace calorivo
