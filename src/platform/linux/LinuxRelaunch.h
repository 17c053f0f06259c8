#pragma once

#include "platform/Relaunch.h"
#include "platform/linux/RelaunchBundle.h"

#include <sys/types.h>

#include <optional>
#include <string>
#include <vector>

namespace calorivo {

/// Starts programs that outlive this one, with their paths as arguments: no shell reads a path.
class LinuxRelaunch final : public Relaunch {
  public:
    struct Settings {
        std::string procFolder = "/proc";
        std::string unmountTool = "/usr/bin/udisksctl";
        /// Of the wait before a disk image is given back.
        std::string delaySeconds = "5";
    };

    explicit LinuxRelaunch(ProgramBundle bundle) : LinuxRelaunch(std::move(bundle), Settings()) {}
    LinuxRelaunch(ProgramBundle bundle, Settings settings)
        : bundle_(std::move(bundle)), settings_(std::move(settings)) {}

    [[nodiscard]] std::int32_t processIdentifier() const override;
    [[nodiscard]] bool isRunning(const RunningSearch& search) override;
    /// The AppImage of a program that runs from one counts as its executable too.
    [[nodiscard]] std::vector<std::string> runningApplicationExecutablePaths() override;
    void open(const std::string& path) override;
    /// There is no mark of a download on files to be taken off here.
    void openAfterExit(const OpenAfterExit& request) override;
    /// Only a read-only file system on a device is given back: a stick that can be written stays.
    void detachLater(const DetachLater& request) override;
    void exit(std::int32_t status) override;

    /// The process that was started last.
    [[nodiscard]] std::optional<pid_t> lastStarted() const { return lastStarted_; }

  private:
    const ProgramBundle bundle_;
    const Settings settings_;
    std::optional<pid_t> lastStarted_;
};

}  // namespace calorivo
