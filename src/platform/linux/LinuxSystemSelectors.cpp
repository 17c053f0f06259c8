#include "platform/linux/LinuxSystemSelectors.h"

#include "platform/linux/SmallFile.h"

#include <sys/utsname.h>

#include <algorithm>
#include <charconv>
#include <cstddef>

namespace calorivo {

namespace {

/// The value of VERSION_ID, without its quotation marks; empty when there is none.
std::string_view versionId(std::string_view osRelease) {
    constexpr std::string_view name = "VERSION_ID=";
    while (!osRelease.empty()) {
        std::string_view line = osRelease.substr(0, osRelease.find('\n'));
        osRelease.remove_prefix(std::min(osRelease.size(), line.size() + 1));
        if (!line.starts_with(name)) continue;
        line.remove_prefix(name.size());
        line.remove_prefix(std::min(line.size(), line.find_first_not_of("\"'")));
        return line.substr(0, line.find_first_of("\"'"));
    }
    return {};
}

/// "6.1.0-13" is 6, 1, 0: the numbers up to the first character that is neither digit nor dot.
std::optional<VersionNumbers> numbersIn(std::string_view text) {
    VersionNumbers numbers{};
    const char* const end = text.data() + text.size();
    const char* at = text.data();
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        const auto [next, error] = std::from_chars(at, end, numbers[i]);
        if (error != std::errc() || numbers[i] < 0) {
            if (i == 0) return std::nullopt;
            numbers[i] = 0;
            break;
        }
        if (next == end || *next != '.') break;
        at = next + 1;
    }
    return numbers;
}

std::optional<VersionNumbers> runningVersion() {
    SmallFile release = readSmallFile("/etc/os-release", SymbolicLinks::followed);
    if (release.state != SmallFile::State::read)
        release = readSmallFile("/usr/lib/os-release", SymbolicLinks::followed);
    utsname kernel{};
    const bool isKernelKnown = ::uname(&kernel) == 0;
    return systemVersion(release.text, isKernelKnown ? kernel.release : "");
}

}  // namespace

std::optional<VersionNumbers> systemVersion(std::string_view osRelease, std::string_view kernelRelease) {
    const auto distribution = numbersIn(versionId(osRelease));
    return distribution ? distribution : numbersIn(kernelRelease);
}

LinuxSystemSelectors::LinuxSystemSelectors() : version_(runningVersion()) {}

OSErr LinuxSystemSelectors::Gestalt(OSType selector, std::int32_t& response) const {
    if (!version_) return gestaltUndefSelectorErr;
    const auto& [major, minor, bugFix] = *version_;
    switch (selector) {
        case gestaltSystemVersion:
            // Two decimal digits of the major number, each in four bits, then one digit of each other.
            response =
                (major / 10 % 10 << 12) | (major % 10 << 8) | (std::min(minor, 9) << 4) | std::min(bugFix, 9);
            return noErr;
        case gestaltSystemVersionMajor:
            response = major;
            return noErr;
        case gestaltSystemVersionMinor:
            response = minor;
            return noErr;
        case gestaltSystemVersionBugFix:
            response = bugFix;
            return noErr;
        default:
            return gestaltUndefSelectorErr;
    }
}

}  // namespace calorivo
