#include "app/ProcessList.h"

#include <cstddef>
#include <exception>

namespace calorivo {

namespace {

/// As many as there is room for in `size` bytes; none when there is no memory for them.
std::optional<std::vector<KernelProcess>> makeTable(std::size_t size) {
    try {
        return std::vector<KernelProcess>(size / sizeof(KernelProcess));
    } catch (const std::exception&) {
        return std::nullopt;
    }
}

std::vector<KernelProcess> kernelTable(ProcessListing& listing) {
    for (;;) {
        std::size_t size = 0;
        if (listing.sysctlKernProcAll(nullptr, size) != 0) return {};
        std::optional<std::vector<KernelProcess>> table = makeTable(size);
        if (!table) return {};
        size = table->size() * sizeof(KernelProcess);
        const std::int32_t error = listing.sysctlKernProcAll(table->data(), size);
        // The table grew in between: its size is asked for anew.
        if (error == ProcessListing::outOfMemory) continue;
        if (error != 0) return {};
        table->resize(size / sizeof(KernelProcess));
        return *table;
    }
}

ProcessRecord recordOf(const KernelProcess& process, ProcessListing& listing) {
    ProcessRecord record{.processID = process.processIdentifier};
    if (const auto serialNumber = listing.GetProcessForPID(process.processIdentifier))
        record.processName = listing.CopyProcessName(*serialNumber);
    record.userName = listing.getpwuid(process.effectiveUser);
    if (record.userName) record.userID = process.effectiveUser;
    return record;
}

}  // namespace

std::vector<ProcessRecord> Utils::getBSDProcessList(ProcessListing& listing) {
    std::vector<ProcessRecord> records;
    for (const KernelProcess& process : kernelTable(listing)) records.push_back(recordOf(process, listing));
    return records;
}

}  // namespace calorivo
