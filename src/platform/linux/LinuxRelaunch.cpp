#include "platform/linux/LinuxRelaunch.h"

#include "platform/linux/MountPoint.h"
#include "platform/linux/SmallFile.h"
#include "platform/linux/SpawnedProcess.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <system_error>

namespace calorivo {

namespace {

namespace fs = std::filesystem;

constexpr const char* shell = "/bin/sh";
// The texts are fixed; what differs comes as the arguments $1, $2 and so on.
// A process that has ended keeps its number until its parent asks for its end, which some never do: by then
// nothing stands behind its "exe" any more.
constexpr std::string_view waitThenRun =
    R"(while kill -0 "$1" 2>/dev/null && [ -e "/proc/$1/exe" ]; do sleep 0.1; done; shift; exec "$@")";
constexpr std::string_view sleepThenRun = R"(sleep "$1"; shift; exec "$@")";

bool isProcess(std::string_view name) {
    return !name.empty() && name.find_first_not_of("0123456789") == std::string_view::npos;
}

/// The value of a variable in the block of "NAME=value" texts, each ended by a zero byte.
std::string variableIn(std::string_view block, std::string_view nameAndEqualSign) {
    while (!block.empty()) {
        const std::string_view variable = block.substr(0, block.find('\0'));
        if (variable.starts_with(nameAndEqualSign))
            return std::string(variable.substr(nameAndEqualSign.size()));
        block.remove_prefix(std::min(block.size(), variable.size() + 1));
    }
    return {};
}

std::string executableOf(const fs::path& process) {
    constexpr std::string_view deleted = " (deleted)";
    std::error_code error;
    std::string path = fs::read_symlink(process / "exe", error).string();
    if (path.ends_with(deleted)) path.resize(path.size() - deleted.size());
    return path;
}

/// Empty for a program that runs from none, or that another one's AppImage started.
std::string appImageOf(const fs::path& process, const std::string& executable) {
    const SmallFile block = readSmallFile((process / "environ").string(), SymbolicLinks::followed);
    const std::string folder = variableIn(block.text, "APPDIR=");
    return !folder.empty() && executable.starts_with(folder + '/') ? variableIn(block.text, "APPIMAGE=")
                                                                   : std::string();
}

}  // namespace

std::int32_t LinuxRelaunch::processIdentifier() const { return ::getpid(); }

bool LinuxRelaunch::isRunning(const RunningSearch& search) {
    const std::vector<std::string> running = runningApplicationExecutablePaths();
    return std::any_of(running.begin(), running.end(), [&search](const std::string& executable) {
        return executable == search.destination || executable.starts_with(search.destination + '/');
    });
}

std::vector<std::string> LinuxRelaunch::runningApplicationExecutablePaths() {
    std::vector<std::string> paths;
    std::error_code error;
    for (fs::directory_iterator entry(settings_.procFolder, error), end; !error && entry != end;
         entry.increment(error)) {
        if (!isProcess(entry->path().filename().string())) continue;
        const std::string executable = executableOf(entry->path());
        if (executable.empty()) continue;
        paths.push_back(executable);
        std::string image = appImageOf(entry->path(), executable);
        if (!image.empty()) paths.push_back(std::move(image));
    }
    return paths;
}

void LinuxRelaunch::open(const std::string& path) {
    lastStarted_ = spawn(bundle_.executableAt(path), {}, Session::own);
}

void LinuxRelaunch::openAfterExit(const OpenAfterExit& request) {
    lastStarted_ = spawn(shell,
                         {"-c", std::string(waitThenRun), "sh", std::to_string(request.processIdentifier),
                          bundle_.executableAt(request.destination)},
                         Session::own);
}

void LinuxRelaunch::detachLater(const DetachLater& request) {
    const SmallFile mounts = readSmallFile(settings_.procFolder + "/self/mountinfo", SymbolicLinks::followed);
    const std::optional<Mount> mount = mountOf(request.folder, parseMounts(mounts.text));
    if (!mount || !mount->isReadOnly || !mount->source.starts_with("/dev/")) return;
    lastStarted_ =
        spawn(shell,
              {"-c", std::string(sleepThenRun), "sh", settings_.delaySeconds, settings_.unmountTool,
               "unmount", "--no-user-interaction", "--block-device", mount->source},
              Session::own);
}

void LinuxRelaunch::exit(std::int32_t status) { std::_Exit(status); }

}  // namespace calorivo
