#include "platform/linux/LinuxFileOperations.h"

#include "platform/linux/FileOperationsCopy.h"
#include "platform/linux/SmallFile.h"
#include "platform/linux/Trash.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <system_error>

namespace calorivo {

namespace {

Error posixError(int number) {
    return {
        std::string(posixErrorDomain), number, {{std::string(localizedDescriptionKey), errorText(number)}}};
}

}  // namespace

std::optional<FileType> LinuxFileLinks::lstat(const std::string& path) const {
    struct stat status {};
    if (::lstat(path.c_str(), &status) != 0) return std::nullopt;
    if (S_ISDIR(status.st_mode)) return FileType::directory;
    return S_ISLNK(status.st_mode) ? FileType::symbolicLink : FileType::other;
}

std::optional<std::string> LinuxFileLinks::destinationOfSymbolicLink(const std::string& path) const {
    std::error_code error;
    const std::filesystem::path target = std::filesystem::read_symlink(path, error);
    return error ? std::nullopt : std::optional(target.string());
}

std::optional<std::string> LinuxFileLinks::resolveAliasFile(const std::string& /*path*/) const {
    return std::nullopt;
}

bool LinuxFileOperations::fileExistsAtPath(const std::string& path) const {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0;
}

bool LinuxFileOperations::isDirectoryAtPath(const std::string& path) const {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

bool LinuxFileOperations::isWritableFileAtPath(const std::string& path) const {
    return ::faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0;
}

std::vector<std::string> LinuxFileOperations::contentsOfDirectoryAtPath(const std::string& path) const {
    std::vector<std::string> names;
    std::error_code error;
    for (std::filesystem::directory_iterator entry(path, error), end; !error && entry != end;
         entry.increment(error))
        names.push_back(entry->path().filename().string());
    return names;
}

std::optional<Error> LinuxFileOperations::createDirectoryAtPath(const std::string& path) {
    std::error_code error;
    std::filesystem::create_directories(path, error);
    return error ? std::optional(posixError(error.value())) : std::nullopt;
}

std::optional<Error> LinuxFileOperations::copyItemAtPathToPath(const std::string& source,
                                                               const std::string& destination) {
    const int error = copyTree(source, destination);
    return error != 0 ? std::optional(posixError(error)) : std::nullopt;
}

bool LinuxFileOperations::recycle(const std::string& folder, const std::string& name) {
    return trash_.put((std::filesystem::path(folder) / name).string()).empty();
}

}  // namespace calorivo
