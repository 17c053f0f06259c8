#pragma once

#include "platform/ProcessListing.h"

#include <algorithm>
#include <cstddef>
#include <deque>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace calorivo::test {

/// A process table in memory.
class FakeProcessListing final : public ProcessListing {
  public:
    std::vector<KernelProcess> processes;
    /// The registered applications.
    std::map<std::int32_t, std::optional<std::string>> names;
    std::map<std::uint32_t, std::string> users;
    /// What the next calls answer instead, one after another; 0 for the true answer.
    std::deque<std::int32_t> sizeErrors;
    std::deque<std::int32_t> fetchErrors;
    std::optional<std::size_t> claimedSize;
    int sizeCalls = 0;
    int fetchCalls = 0;

    std::int32_t sysctlKernProcAll(KernelProcess* buffer, std::size_t& size) override {
        ++(buffer == nullptr ? sizeCalls : fetchCalls);
        std::deque<std::int32_t>& errors = buffer == nullptr ? sizeErrors : fetchErrors;
        const std::int32_t error = errors.empty() ? 0 : errors.front();
        if (!errors.empty()) errors.pop_front();
        if (error != 0) return error;
        const std::size_t needed = processes.size() * sizeof(KernelProcess);
        if (buffer == nullptr) {
            // With room to spare, as kernels do.
            size = claimedSize.value_or(needed + 3 * sizeof(KernelProcess));
            return 0;
        }
        if (size < needed) return outOfMemory;
        std::copy(processes.begin(), processes.end(), buffer);
        size = needed;
        return 0;
    }
    [[nodiscard]] std::optional<ProcessSerialNumber> GetProcessForPID(
        std::int32_t processIdentifier) override {
        if (!names.contains(processIdentifier)) return std::nullopt;
        return ProcessSerialNumber{static_cast<std::uint64_t>(processIdentifier) + 1000};
    }
    [[nodiscard]] std::optional<std::string> CopyProcessName(ProcessSerialNumber process) override {
        return names.at(static_cast<std::int32_t>(process.value - 1000));
    }
    [[nodiscard]] std::optional<std::string> getpwuid(std::uint32_t user) override {
        const auto found = users.find(user);
        return found != users.end() ? std::optional(found->second) : std::nullopt;
    }
};

}  // namespace calorivo::test
