#include "desktop/MoveOffer.h"

#include "platform/linux/UserDirectories.h"

#include <QGuiApplication>

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>

namespace calorivo {

namespace {

namespace fs = std::filesystem;

// Newer than every step in the framework's versions.
constexpr double appKitVersion = 1000.0;
constexpr const char* applicationsName = "/Applications";

std::string withoutLinks(const std::string& path) {
    if (path.empty()) return path;
    std::error_code error;
    const std::string resolved = fs::weakly_canonical(path, error).string();
    return error ? path : resolved;
}

std::string absoluteFolder(const Environment& environment, const char* name) {
    const std::string folder = environment(name).value_or("");
    return folder.starts_with('/') ? withoutLinks(folder) : std::string();
}

LinuxSearchPath::Folders foldersOf(const Environment& environment, const std::string& machineFolder) {
    LinuxSearchPath::Folders folders;
    folders.home = absoluteFolder(environment, "HOME");
    folders.data = absoluteFolder(environment, "XDG_DATA_HOME");
    if (folders.data.empty() && !folders.home.empty()) folders.data = folders.home + "/.local/share";
    folders.downloads = withoutLinks(userDirectories(environment).downloads);
    // As that of a user who has none is told.
    if (folders.downloads == folders.home) folders.downloads.clear();
    folders.applications = {machineFolder};
    const Trash trash(Trash::system(folders.data));
    LinuxFileOperations files(trash);
    if (folders.home.empty() || files.isWritableFileAtPath(machineFolder)) return folders;
    const std::string own = folders.home + applicationsName;
    const LinuxFileLinks links;
    if (FolderOnDemand(own, links, files).isWritableFileAtPath(own)) folders.applications.push_back(own);
    return folders;
}

/// A single file is named for this program. The name of a folder says less: only what is such a folder itself
/// may be replaced by it.
bool mayTakeItsPlace(const ProgramBundle& bundle, const LinuxSearchPath::Folders& folders) {
    if (bundle.executable.empty()) return true;
    const std::vector<std::string> places = LinuxSearchPath(folders).directoriesInDomains(
        SearchPathDirectory::applications, SearchPathDomainMask::all);
    return std::all_of(places.begin(), places.end(), [&bundle](const std::string& place) {
        const fs::path destination = fs::path(place) / fs::path(bundle.path).filename();
        std::error_code error;
        return !fs::exists(fs::symlink_status(destination, error)) ||
               (fs::is_regular_file(destination / "portable", error) &&
                fs::is_regular_file(destination / bundle.executable, error));
    });
}

MoveConfiguration configurationOf(const ProgramBundle& bundle) {
    MoveConfiguration configuration{.bundlePath = bundle.path,
                                    .appKitVersion = appKitVersion,
                                    .diskImageFolders = {"/media/", "/run/media/", "/mnt/"},
                                    .programExtensions = {"app", "AppImage"},
                                    .bundleEndings = {".AppImage"}};
    if (!bundle.executable.empty())
        configuration.bundleEndings.push_back('/' + fs::path(bundle.path).filename().string());
    return configuration;
}

std::vector<std::string> languagesOf(const Environment& environment) {
    const auto value = [&environment](const char* name) { return environment(name).value_or(""); };
    const std::string language = value("LANGUAGE");
    const std::string all = value("LC_ALL");
    const std::string messages = value("LC_MESSAGES");
    const std::string lang = value("LANG");
    return preferredLanguages({language, all, messages, lang});
}

}  // namespace

std::optional<MovePlaces> movePlaces(const Environment& environment, const std::string& executablePath,
                                     const std::string& dataFolder, const std::string& machineFolder) {
    std::optional<ProgramBundle> bundle = programBundle(environment, executablePath);
    if (!bundle) return std::nullopt;
    LinuxSearchPath::Folders folders = foldersOf(environment, machineFolder);
    // Without a folder for data there is no trash.
    if (folders.data.empty() || !mayTakeItsPlace(*bundle, folders)) return std::nullopt;
    return MovePlaces{std::move(*bundle), std::move(folders),
                      dataFolder.empty() ? std::string() : dataFolder + "/strings", languagesOf(environment)};
}

MoveOffer::MoveOffer(MoveServices services, MovePlaces places)
    : services_(std::move(services)),
      places_(std::move(places)),
      trash_(Trash::system(places_.folders.data)),
      applications_(places_.folders.home.empty() ? std::string() : places_.folders.home + applicationsName,
                    links_, files_),
      strings_(services_.fileManager, places_.strings, places_.languages),
      move_(parts(), configurationOf(places_.bundle)) {}

MoveParts MoveOffer::parts() {
    return {.userDefaults = services_.userDefaults,
            .log = services_.log,
            .strings = strings_,
            .questionPanel = question_,
            .alertPanel = services_.alertPanel,
            .searchPath = searchPath_,
            .links = applications_,
            .files = applications_,
            .authorization = authorization_,
            .relaunch = relaunch_,
            .isActive = [] { return QGuiApplication::applicationState() == Qt::ApplicationActive; },
            .activateIgnoringOtherApps = services_.activateIgnoringOtherApps};
}

}  // namespace calorivo
