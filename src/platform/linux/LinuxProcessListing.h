#pragma once

#include "platform/ProcessListing.h"

#include <sys/types.h>

#include <string>
#include <utility>

namespace calorivo {

/// The processes in /proc. As registered applications count this user's own programs, under the name that
/// each carries itself (at most 15 bytes); not the kernel's threads.
class LinuxProcessListing final : public ProcessListing {
  public:
    LinuxProcessListing(std::string procFolder, uid_t user)
        : procFolder_(std::move(procFolder)), user_(user) {}

    std::int32_t sysctlKernProcAll(KernelProcess* buffer, std::size_t& size) override;
    [[nodiscard]] std::optional<ProcessSerialNumber> GetProcessForPID(
        std::int32_t processIdentifier) override;
    [[nodiscard]] std::optional<std::string> CopyProcessName(ProcessSerialNumber process) override;
    [[nodiscard]] std::optional<std::string> getpwuid(std::uint32_t user) override;

  private:
    const std::string procFolder_;
    const uid_t user_;
};

}  // namespace calorivo
