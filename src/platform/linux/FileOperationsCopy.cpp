#include "platform/linux/FileOperationsCopy.h"

#include "platform/linux/FileDescriptor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <filesystem>
#include <limits>
#include <string_view>
#include <system_error>

namespace calorivo {

namespace {

namespace fs = std::filesystem;

// Not the bits that give a program another user's rights.
constexpr mode_t copiedModeBits = S_IRWXU | S_IRWXG | S_IRWXO | S_ISVTX;

int writeAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::write(descriptor, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return errno;
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return 0;
}

int copyBytes(int from, int to) {
    std::array<char, 65536> buffer{};
    for (;;) {
        const ssize_t count = ::read(from, buffer.data(), buffer.size());
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return count < 0 ? errno : 0;
        if (const int error = writeAll(to, {buffer.data(), static_cast<std::size_t>(count)})) return error;
    }
}

int keepModeAndTimes(int descriptor, const struct stat& status) {
    const std::array<timespec, 2> times{status.st_atim, status.st_mtim};
    if (::fchmod(descriptor, status.st_mode & copiedModeBits) != 0) return errno;
    return ::futimens(descriptor, times.data()) != 0 ? errno : 0;
}

int copyFile(const std::string& source, const std::string& destination, const struct stat& status) {
    const FileDescriptor from(::open(source.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    if (!from.isOpen()) return errno;
    const FileDescriptor to(
        ::open(destination.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR));
    if (!to.isOpen()) return errno;
    if (const int error = copyBytes(from.get(), to.get())) return error;
    if (const int error = keepModeAndTimes(to.get(), status)) return error;
    // Whoever asked for the copy will remove the original: not before the copy is safe.
    return ::fsync(to.get()) != 0 ? errno : 0;
}

int copyLink(const std::string& source, const std::string& destination) {
    std::error_code error;
    const fs::path target = fs::read_symlink(source, error);
    if (error) return error.value();
    return ::symlink(target.c_str(), destination.c_str()) != 0 ? errno : 0;
}

int copyEntry(const std::string& source, const std::string& destination);

int copyFolder(const std::string& source, const std::string& destination, const struct stat& status) {
    if (::mkdir(destination.c_str(), S_IRWXU) != 0) return errno;
    std::error_code error;
    for (fs::directory_iterator entry(source, error), end; !error && entry != end; entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        const int failed = copyEntry(source + '/' + name, destination + '/' + name);
        if (failed != 0) return failed;
    }
    if (error) return error.value();
    const FileDescriptor folder(::open(destination.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    return folder.isOpen() ? keepModeAndTimes(folder.get(), status) : errno;
}

int copyEntry(const std::string& source, const std::string& destination) {
    struct stat status {};
    if (::lstat(source.c_str(), &status) != 0) return errno;
    if (S_ISREG(status.st_mode)) return copyFile(source, destination, status);
    if (S_ISDIR(status.st_mode)) return copyFolder(source, destination, status);
    if (S_ISLNK(status.st_mode)) return copyLink(source, destination);
    return ENOTSUP;
}

/// Whether the destination's folder is the source or within it, links followed.
bool isIntoItself(const std::string& source, const std::string& destination) {
    std::error_code error;
    const std::string from = fs::canonical(source, error).string();
    if (error) return false;
    const std::string into = fs::canonical(fs::path(destination).parent_path(), error).string() + '/';
    return !error && into.starts_with(from + '/');
}

}  // namespace

int copyTree(const std::string& source, const std::string& destination) {
    struct stat status {};
    if (::lstat(source.c_str(), &status) != 0) return errno;
    if (S_ISDIR(status.st_mode) && isIntoItself(source, destination)) return EINVAL;
    struct stat existing {};
    if (::lstat(destination.c_str(), &existing) == 0) return EEXIST;
    const int error = copyEntry(source, destination);
    // Somebody else's entry, made in between, stays.
    if (error != 0 && error != EEXIST) static_cast<void>(removeTree(destination));
    return error;
}

int removeTree(const std::string& path) {
    std::error_code error;
    const std::uintmax_t count = fs::remove_all(path, error);
    return error ? error.value() : count == 0 ? ENOENT : 0;
}

std::uintmax_t treeSize(const std::string& path) {
    std::error_code error;
    const fs::file_status status = fs::symlink_status(path, error);
    if (error) return 0;
    if (!fs::is_directory(status)) return fs::is_regular_file(status) ? fs::file_size(path, error) : 0;
    std::uintmax_t size = 0;
    for (fs::recursive_directory_iterator entry(path, error), end; !error && entry != end;
         entry.increment(error)) {
        std::error_code ignored;
        if (!entry->is_regular_file(ignored) || entry->is_symlink(ignored)) continue;
        const std::uintmax_t bytes = entry->file_size(ignored);
        if (!ignored) size += bytes;
    }
    return size;
}

}  // namespace calorivo
