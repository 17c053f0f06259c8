#include "platform/qt/PreferencesStoreFile.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <system_error>
#include <utility>

namespace calorivo {

namespace {

std::string errorText(int error) { return std::generic_category().message(error); }

PreferencesFile unusable(std::string reason) {
    PreferencesFile file;
    file.state = PreferencesFile::State::unusable;
    file.reason = std::move(reason);
    return file;
}

PreferencesFile readOpened(int descriptor) {
    struct stat status {};
    if (fstat(descriptor, &status) != 0) return unusable(errorText(errno));
    if (!S_ISREG(status.st_mode)) return unusable("it is no regular file");
    PreferencesFile file;
    file.state = PreferencesFile::State::read;
    for (constexpr std::size_t step = 65536; file.text.size() <= preferencesFileLimit;) {
        const std::size_t length = file.text.size();
        file.text.resize(length + step);
        const ssize_t count = read(descriptor, file.text.data() + length, step);
        file.text.resize(length + static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
        if (count == 0) return file;
        if (count < 0 && errno != EINTR) return unusable(errorText(errno));
    }
    file.isTooLong = true;
    // Whole lines only: one that is cut by the limit is no damage of its own.
    file.text.resize(file.text.rfind('\n', preferencesFileLimit) + 1);
    return file;
}

void createPrivateFolder(const std::string& folder) {
    for (std::size_t end = 0; end != std::string::npos;) {
        end = folder.find('/', end + 1);
        mkdir(folder.substr(0, end).c_str(), 0700);
    }
}

std::string folderOf(const std::string& path) { return path.substr(0, path.rfind('/') + 1); }

/// So that the new name survives a power failure. Some file systems cannot do it; the file is whole anyway.
void syncFolder(const std::string& folder) {
    const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) return;
    fsync(descriptor);
    close(descriptor);
}

bool isSameFile(const struct stat& one, const struct stat& other) {
    return one.st_dev == other.st_dev && one.st_ino == other.st_ino;
}

/// For file systems without second names.
bool copyFile(const std::string& from, const std::string& to) {
    std::error_code error;
    return std::filesystem::copy_file(from, to, std::filesystem::copy_options::none, error) && !error;
}

bool takeLock(int descriptor, int patienceMilliseconds) {
    constexpr int pauseMilliseconds = 20;
    for (int waited = 0;; waited += pauseMilliseconds) {
        if (flock(descriptor, LOCK_EX | LOCK_NB) == 0) return true;
        if (errno != EWOULDBLOCK || waited >= patienceMilliseconds) return false;
        poll(nullptr, 0, pauseMilliseconds);
    }
}

}  // namespace

PreferencesFile readPreferencesFile(const std::string& path) {
    const int descriptor = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
    if (descriptor < 0) return errno == ENOENT ? PreferencesFile{} : unusable(errorText(errno));
    PreferencesFile file = readOpened(descriptor);
    close(descriptor);
    return file;
}

std::string behindSymbolicLinks(const std::string& path) {
    constexpr int mostLinks = 40;
    std::filesystem::path place = path;
    for (int i = 0; i < mostLinks; ++i) {
        std::error_code error;
        const std::filesystem::path target = std::filesystem::read_symlink(place, error);
        if (error) return place.string();
        place = place.parent_path() / target;  // an absolute target stands alone
    }
    return path;
}

std::string keepAside(const std::string& path) {
    constexpr int mostNames = 1000;
    struct stat damaged {};
    if (stat(path.c_str(), &damaged) != 0) return {};
    for (int i = 1; i <= mostNames; ++i) {
        const std::string name = path + ".damaged-" + std::to_string(i);
        if (link(path.c_str(), name.c_str()) == 0) return name;
        struct stat kept {};
        const bool isTaken = errno == EEXIST || lstat(name.c_str(), &kept) == 0;
        if (isTaken && lstat(name.c_str(), &kept) == 0 && isSameFile(kept, damaged)) return name;
        if (!isTaken) return copyFile(path, name) ? name : std::string();
    }
    return {};
}

PreferencesFileWriter::PreferencesFileWriter(const std::string& path, int patienceMilliseconds)
    : path_(behindSymbolicLinks(path)), temporary_(path_ + ".new") {
    createPrivateFolder(folderOf(path_));
    open(patienceMilliseconds);
}

PreferencesFileWriter::~PreferencesFileWriter() {
    if (isLocked_) unlink(temporary_.c_str());
    if (descriptor_ >= 0) close(descriptor_);
}

/// The file to be is the lock as well, so that nothing else has to lie about, and what a killed process left
/// is used again. Whoever had it before may have made it the real file meanwhile: then it is not the lock any
/// more.
void PreferencesFileWriter::open(int patienceMilliseconds) {
    constexpr int attempts = 100;
    for (int i = 0; i < attempts; ++i) {
        descriptor_ =
            ::open(temporary_.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0600);
        if (descriptor_ < 0 || !takeLock(descriptor_, patienceMilliseconds)) {
            problem_ = errno == EWOULDBLOCK ? "another instance is writing it" : errorText(errno);
            return;
        }
        struct stat opened {};
        struct stat named {};
        const bool isLock = fstat(descriptor_, &opened) == 0 && lstat(temporary_.c_str(), &named) == 0 &&
                            isSameFile(opened, named);
        isLocked_ = isLock;
        if (isLock) return;
        close(std::exchange(descriptor_, -1));
    }
    problem_ = "other instances are writing it";
}

bool PreferencesFileWriter::fail() {
    problem_ = errorText(errno);
    return false;
}

mode_t PreferencesFileWriter::permissions() const {
    constexpr mode_t ownerOnly = 0600;
    constexpr mode_t allPermissions = 0777;
    struct stat old {};
    return stat(path_.c_str(), &old) == 0 ? old.st_mode & allPermissions : ownerOnly;
}

bool PreferencesFileWriter::replaceWith(std::string_view text) {
    if (!problem_.empty()) return false;
    // Renaming would get past a file that its owner made read-only.
    if (access(path_.c_str(), W_OK) != 0 && errno != ENOENT) return fail();
    if (ftruncate(descriptor_, 0) != 0) return fail();
    while (!text.empty()) {
        const ssize_t count = write(descriptor_, text.data(), text.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return fail();
        text.remove_prefix(static_cast<std::size_t>(count));
    }
    if (fchmod(descriptor_, permissions()) != 0 || fsync(descriptor_) != 0) return fail();
    if (rename(temporary_.c_str(), path_.c_str()) != 0) return fail();
    isLocked_ = false;
    syncFolder(folderOf(path_));
    return true;
}

}  // namespace calorivo
