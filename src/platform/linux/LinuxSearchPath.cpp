#include "platform/linux/LinuxSearchPath.h"

#include <array>
#include <string_view>

namespace calorivo {

namespace {

/// Where packages put programs; a program there is its package's matter. Each ends in a separator, so that a
/// folder whose name only begins like one of them is another folder.
constexpr std::array<std::string_view, 8> packagedApplications{"/opt/", "/usr/",     "/bin/", "/snap/",
                                                               "/app/", "/var/lib/", "/nix/", "/gnu/"};

}  // namespace

std::vector<std::string> LinuxSearchPath::directoriesInDomains(std::int32_t directory,
                                                               std::int32_t domainMask) const {
    const bool isUser = (domainMask & SearchPathDomainMask::user) != 0;
    const bool isLocal = (domainMask & SearchPathDomainMask::local) != 0;
    std::vector<std::string> paths;
    const auto addBelow = [&paths, isUser](const std::string& folder, std::string_view name) {
        if (isUser && !folder.empty()) paths.push_back(std::string(folder).append(name));
    };
    switch (directory) {
        case SearchPathDirectory::applications:
            addBelow(folders_.home, "/Applications");
            if (isLocal)
                paths.insert(paths.end(), folders_.applications.begin(), folders_.applications.end());
            break;
        case SearchPathDirectory::allApplications:
            addBelow(folders_.home, "/Applications/");
            addBelow(folders_.home, "/.local/");
            if (isLocal) paths.insert(paths.end(), packagedApplications.begin(), packagedApplications.end());
            break;
        case SearchPathDirectory::applicationSupport:
            addBelow(folders_.data, "");
            break;
        case SearchPathDirectory::downloads:
            addBelow(folders_.downloads, "");
            break;
        default:
            break;
    }
    return paths;
}

}  // namespace calorivo
