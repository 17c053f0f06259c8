#include "platform/linux/Trash.h"

#include "platform/linux/FileDescriptor.h"
#include "platform/linux/FileOperationsCopy.h"
#include "platform/linux/MountPoint.h"
#include "platform/linux/SmallFile.h"
#include "platform/linux/StateFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <string_view>
#include <system_error>

namespace calorivo {

namespace {

constexpr std::string_view infoEnding = ".trashinfo";
// A name with its number and the ending of its information has to fit into the 255 bytes of a name.
constexpr std::size_t longestName = 230;
constexpr int mostNames = 10'000;

dev_t deviceOfNearest(const std::string& path) {
    struct stat status {};
    if (::lstat(path.c_str(), &status) == 0) return status.st_dev;
    for (std::filesystem::path folder = std::filesystem::path(path).parent_path();;
         folder = folder.parent_path())
        if (::stat(folder.c_str(), &status) == 0 || folder == folder.parent_path()) return status.st_dev;
}

std::string mountedTopFolder(const std::string& path) {
    const SmallFile mounts = readSmallFile("/proc/self/mountinfo", SymbolicLinks::followed);
    const auto mount = mountOf(path, parseMounts(mounts.text));
    return mount ? mount->point : "/";
}

int renameUntaken(const std::string& from, const std::string& to) {
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return 0;
    if (errno != EINVAL && errno != ENOSYS) return errno;
    // A file system without that: nobody but this user writes here, so that looking first is enough.
    struct stat status {};
    if (::lstat(to.c_str(), &status) == 0) return EEXIST;
    return ::rename(from.c_str(), to.c_str()) == 0 ? 0 : errno;
}

bool isOwnFolder(const std::string& path, uid_t user) {
    struct stat status {};
    return ::lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode) && status.st_uid == user;
}

bool isSharedTrash(const std::string& path) {
    struct stat status {};
    return ::lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode) && (status.st_mode & S_ISVTX) != 0;
}

/// Returns 0 or an error number.
int makeOwnFolder(const std::string& path, uid_t user) {
    if (::mkdir(path.c_str(), S_IRWXU) != 0 && errno != EEXIST) return errno;
    return isOwnFolder(path, user) ? 0 : EACCES;
}

std::string escaped(std::string_view path) {
    constexpr std::string_view plain = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~/";
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string out;
    for (const char c : path) {
        if (plain.find(c) != std::string_view::npos) {
            out.push_back(c);
            continue;
        }
        const auto byte = static_cast<unsigned char>(c);
        out.append({'%', digits[byte >> 4U], digits[byte & 0xFU]});
    }
    return out;
}

/// The entry's name, cut between two characters if it is too long.
std::string shortened(const std::string& name) {
    if (name.size() <= longestName) return name;
    std::size_t end = longestName;
    while (end > 0 && (static_cast<unsigned char>(name[end]) & 0xC0U) == 0x80) --end;
    return name.substr(0, end > 0 ? end : longestName);
}

/// Creates the information file under a name that no other trashed entry has. Returns 0 or an error number.
int createInfo(const std::string& path, std::string_view text) {
    const FileDescriptor file(
        ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR));
    if (!file.isOpen()) return errno;
    const ssize_t written = ::write(file.get(), text.data(), text.size());
    if (written == static_cast<ssize_t>(text.size())) return 0;
    const int error = written < 0 ? errno : ENOSPC;
    ::unlink(path.c_str());
    return error;
}

/// Desktops keep the sizes of trashed folders, so that they need not walk them. Without one they do walk.
void recordSize(const std::string& trash, const std::string& name) {
    struct stat entry {};
    struct stat info {};
    if (::lstat((trash + "/files/" + name).c_str(), &entry) != 0 || !S_ISDIR(entry.st_mode)) return;
    if (::stat((trash + "/info/" + name).append(infoEnding).c_str(), &info) != 0) return;
    SmallFile sizes = readSmallFile(trash + "/directorysizes", SymbolicLinks::refused);
    if (sizes.state == SmallFile::State::unusable) return;
    sizes.text += std::to_string(treeSize(trash + "/files/" + name)) + ' ' +
                  std::to_string(info.st_mtim.tv_sec) + ' ' + escaped(name) + '\n';
    static_cast<void>(replaceFile(trash, "directorysizes", sizes.text));
}

}  // namespace

TrashSystem Trash::system(std::string dataFolder) {
    return {std::move(dataFolder), ::geteuid(),   deviceOfNearest,
            mountedTopFolder,      renameUntaken, [] { return std::time(nullptr); }};
}

std::string Trash::put(const std::string& given) const {
    const std::filesystem::path split(given);
    const std::string name = split.filename().string();
    if (!split.is_absolute() || name.empty() || name == "." || name == "..") return errorText(EINVAL);
    std::error_code error;
    const std::string folder = std::filesystem::canonical(split.parent_path(), error).string();
    if (error) return error.message();
    const std::string path = (folder == "/" ? folder : folder + '/') + name;
    struct stat status {};
    if (::lstat(path.c_str(), &status) != 0) return errorText(errno);

    if (system_.deviceOf(path) == system_.deviceOf(system_.dataFolder)) return putHome(path);
    const std::string topFolder = system_.topFolderOf(path);
    const std::string trash = topTrash(topFolder);
    if (!trash.empty()) {
        const std::size_t prefix = topFolder == "/" ? 1 : topFolder.size() + 1;
        if (putInto(trash, path, path.substr(prefix)).empty()) return {};
    }
    return putHome(path);
}

std::string Trash::putHome(const std::string& path) const {
    const std::string trash = system_.dataFolder + "/Trash";
    if (std::string reason = createPrivateFolder(trash); !reason.empty()) return reason;
    return putInto(trash, path, path);
}

std::string Trash::topTrash(const std::string& topFolder) const {
    const std::string top = topFolder == "/" ? "" : topFolder;
    const std::string user = std::to_string(system_.user);
    // The shared one counts only with the sticky bit: without it others could take away what is in it.
    if (isSharedTrash(top + "/.Trash")) {
        std::string trash = top + "/.Trash/" + user;
        if (makeOwnFolder(trash, system_.user) == 0) return trash;
    }
    std::string trash = top + "/.Trash-" + user;
    return makeOwnFolder(trash, system_.user) == 0 ? trash : std::string();
}

std::string Trash::putInto(const std::string& trash, const std::string& path,
                           const std::string& recordedPath) const {
    for (const char* part : {"/files", "/info"})
        if (const int error = makeOwnFolder(trash + part, system_.user)) return errorText(error);
    const std::string wanted = shortened(std::filesystem::path(path).filename().string());
    const std::string text = infoText(recordedPath);
    for (int number = 1; number < mostNames; ++number) {
        const std::string name = number == 1 ? wanted : wanted + '.' + std::to_string(number);
        const std::string info = (trash + "/info/" + name).append(infoEnding);
        int error = createInfo(info, text);
        if (error == EEXIST) continue;
        if (error != 0) return errorText(error);
        error = moveEntry(path, trash + "/files/" + name);
        if (error == 0) {
            recordSize(trash, name);
            return {};
        }
        struct stat status {};
        // Where the copy is whole but the entry could not be removed, its information stays with it.
        if (error == EEXIST || ::lstat((trash + "/files/" + name).c_str(), &status) != 0)
            ::unlink(info.c_str());
        if (error != EEXIST) return errorText(error);
    }
    return errorText(EEXIST);
}

int Trash::moveEntry(const std::string& from, const std::string& to) const {
    const int error = system_.rename(from, to);
    if (error != EXDEV) return error;
    if (const int copyError = copyTree(from, to)) return copyError;
    return removeTree(from);
}

std::string Trash::infoText(const std::string& recordedPath) const {
    const std::time_t now = system_.now();
    std::tm local{};
    ::localtime_r(&now, &local);
    std::array<char, 32> date{};
    const std::size_t length = std::strftime(date.data(), date.size(), "%Y-%m-%dT%H:%M:%S", &local);
    return "[Trash Info]\nPath=" + escaped(recordedPath) +
           "\nDeletionDate=" + std::string(date.data(), length) + '\n';
}

}  // namespace calorivo
