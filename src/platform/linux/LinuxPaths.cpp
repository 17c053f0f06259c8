#include "platform/linux/LinuxPaths.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <string_view>
#include <system_error>

namespace calorivo {

namespace {

constexpr std::string_view ownName = "/calorivo";

std::string absoluteFolder(const Environment& environment, const char* name) {
    const std::optional<std::string> value = environment(name);
    return value && value->starts_with('/') ? *value : std::string();
}

/// The folder of the variable, or `standard` in the home folder.
std::string homeFolder(const Environment& environment, const char* name, std::string_view standard) {
    std::string folder = absoluteFolder(environment, name);
    if (folder.empty()) {
        folder = absoluteFolder(environment, "HOME");
        if (folder.empty()) return {};
        folder += standard;
    }
    return folder.append(ownName);
}

bool isFolder(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

std::string sharedFolder(const Environment& environment) {
    const std::string value = environment("XDG_DATA_DIRS").value_or("");
    std::string_view rest = value.empty() ? "/usr/local/share:/usr/share" : std::string_view(value);
    while (!rest.empty()) {
        std::string folder(rest.substr(0, rest.find(':')));
        rest.remove_prefix(std::min(rest.size(), folder.size() + 1));
        if (folder.starts_with('/') && isFolder(folder.append(ownName))) return folder;
    }
    return {};
}

std::string dataFolder(const Environment& environment, const std::string& executable) {
    const std::size_t slash = executable.rfind('/');
    if (slash != std::string::npos) {
        const std::string programs = executable.substr(0, slash);
        std::string beside = programs.substr(0, programs.rfind('/')).append("/share").append(ownName);
        if (isFolder(beside)) return beside;
    }
    return sharedFolder(environment);
}

}  // namespace

std::optional<std::string> processEnvironment(const char* name) {
    const char* const value = std::getenv(name);
    return value != nullptr ? std::optional<std::string>(value) : std::nullopt;
}

LinuxPaths linuxPaths(const Environment& environment, const std::string& executable) {
    return {homeFolder(environment, "XDG_CONFIG_HOME", "/.config"),
            homeFolder(environment, "XDG_STATE_HOME", "/.local/state"), dataFolder(environment, executable)};
}

std::string folderProblem(const std::string& path) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) return std::generic_category().message(errno);
    return S_ISDIR(status.st_mode) ? std::string() : std::generic_category().message(ENOTDIR);
}

std::string executablePath() {
    std::array<char, PATH_MAX> path{};
    const ssize_t length = readlink("/proc/self/exe", path.data(), path.size());
    return length > 0 ? std::string(path.data(), static_cast<std::size_t>(length)) : std::string();
}

}  // namespace calorivo
