#include "platform/linux/LinuxProcessListing.h"

#include "platform/linux/SmallFile.h"

#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <vector>

namespace calorivo {

namespace {

std::optional<std::int32_t> processNumber(std::string_view name) {
    std::int32_t number = 0;
    const char* const end = name.data() + name.size();
    const auto [next, error] = std::from_chars(name.data(), end, number);
    return error == std::errc() && next == end && number > 0 ? std::optional(number) : std::nullopt;
}

/// The second number of the line "Uid:": real, effective, saved, of the file system.
std::optional<std::uint32_t> effectiveUser(std::string_view status) {
    const std::size_t line = status.find("\nUid:\t");
    if (line == std::string_view::npos) return std::nullopt;
    const std::size_t second = status.find('\t', line + 6);
    if (second == std::string_view::npos) return std::nullopt;
    std::uint32_t user = 0;
    const auto result = std::from_chars(status.data() + second + 1, status.data() + status.size(), user);
    return result.ec == std::errc() ? std::optional(user) : std::nullopt;
}

std::string readProcessFile(const std::string& procFolder, std::int32_t process, std::string_view name) {
    std::string path = procFolder;
    path.append("/").append(std::to_string(process)).append("/").append(name);
    return readSmallFile(path, SymbolicLinks::followed).text;
}

/// In the order of their numbers. A process that ends meanwhile is left out.
std::vector<KernelProcess> processesIn(const std::string& procFolder, std::error_code& error) {
    std::vector<KernelProcess> processes;
    for (std::filesystem::directory_iterator entry(procFolder, error), end; !error && entry != end;
         entry.increment(error)) {
        const auto number = processNumber(entry->path().filename().string());
        if (!number) continue;
        if (const auto user = effectiveUser(readProcessFile(procFolder, *number, "status")))
            processes.push_back({*number, *user});
    }
    std::sort(processes.begin(), processes.end(), [](const KernelProcess& a, const KernelProcess& b) {
        return a.processIdentifier < b.processIdentifier;
    });
    return processes;
}

}  // namespace

std::int32_t LinuxProcessListing::sysctlKernProcAll(KernelProcess* buffer, std::size_t& size) {
    static_assert(outOfMemory == ENOMEM);
    // Some processes more than there are: others may start until the table is fetched.
    constexpr std::size_t spare = 32;
    std::error_code error;
    const std::vector<KernelProcess> processes = processesIn(procFolder_, error);
    if (error) return error.value();
    if (buffer == nullptr) {
        size = (processes.size() + spare) * sizeof(KernelProcess);
        return 0;
    }
    if (size < processes.size() * sizeof(KernelProcess)) return ENOMEM;
    std::copy(processes.begin(), processes.end(), buffer);
    size = processes.size() * sizeof(KernelProcess);
    return 0;
}

std::optional<ProcessSerialNumber> LinuxProcessListing::GetProcessForPID(std::int32_t processIdentifier) {
    const bool isKernelThread = readProcessFile(procFolder_, processIdentifier, "cmdline").empty();
    const auto user = effectiveUser(readProcessFile(procFolder_, processIdentifier, "status"));
    if (isKernelThread || user != user_) return std::nullopt;
    return ProcessSerialNumber{static_cast<std::uint64_t>(processIdentifier)};
}

std::optional<std::string> LinuxProcessListing::CopyProcessName(ProcessSerialNumber process) {
    std::string name = readProcessFile(procFolder_, static_cast<std::int32_t>(process.value), "comm");
    if (name.ends_with('\n')) name.pop_back();
    return name.empty() ? std::nullopt : std::optional(std::move(name));
}

std::optional<std::string> LinuxProcessListing::getpwuid(std::uint32_t user) {
    std::vector<char> buffer(4096);
    passwd entry{};
    passwd* found = nullptr;
    while (::getpwuid_r(user, &entry, buffer.data(), buffer.size(), &found) == ERANGE)
        buffer.resize(buffer.size() * 2);
    return found != nullptr ? std::optional<std::string>(found->pw_name) : std::nullopt;
}

}  // namespace calorivo
