#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace calorivo {

/// A process as the kernel's table has it.
struct KernelProcess {
    std::int32_t processIdentifier = 0;
    std::uint32_t effectiveUser = 0;
};

/// A process among the registered applications.
struct ProcessSerialNumber {
    std::uint64_t value = 0;
};

/// The running processes, as the kernel and as the desktop know them. Main thread.
class ProcessListing {
  public:
    /// The table was larger than the buffer.
    static constexpr std::int32_t outOfMemory = 12;

    ProcessListing() = default;
    ProcessListing(const ProcessListing&) = delete;
    ProcessListing& operator=(const ProcessListing&) = delete;
    virtual ~ProcessListing() = default;

    /// The kernel's table of all processes (CTL_KERN, KERN_PROC, KERN_PROC_ALL). Without a buffer `size`
    /// becomes the number of bytes that it needs; with one it is the bytes in it, and becomes those that were
    /// filled. Returns 0 or an error number.
    virtual std::int32_t sysctlKernProcAll(KernelProcess* buffer, std::size_t& size) = 0;
    /// None for a process that is registered as no application.
    [[nodiscard]] virtual std::optional<ProcessSerialNumber> GetProcessForPID(
        std::int32_t processIdentifier) = 0;
    [[nodiscard]] virtual std::optional<std::string> CopyProcessName(ProcessSerialNumber process) = 0;
    /// The login name in the user database.
    [[nodiscard]] virtual std::optional<std::string> getpwuid(std::uint32_t user) = 0;
};

}  // namespace calorivo
