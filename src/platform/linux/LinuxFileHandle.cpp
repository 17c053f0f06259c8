#include "platform/linux/LinuxFileHandle.h"

#include "platform/FileURL.h"
#include "platform/linux/SmallFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace calorivo {

namespace {

// Never through a link in the last place, and never waiting for what turns out to be a FIFO or a device.
constexpr int careful = O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
// Each write goes to the end as it is at that moment: the file may be emptied between two calls, and a write
// at a remembered place would leave a hole.
constexpr int appending = O_APPEND | careful;

struct OpenedDescriptor {
    FileDescriptor file;
    FileProblem problem;
};

FileProblem problemWith(const FileDescriptor& file) {
    struct stat status {};
    if (fstat(file.get(), &status) != 0) return errorText(errno);
    if (S_ISDIR(status.st_mode)) return errorText(EISDIR);
    if (!S_ISREG(status.st_mode)) return "Not a regular file";
    if (status.st_uid != geteuid()) return "The file belongs to another user";
    return {};
}

OpenedDescriptor openRegularFile(const std::string& path, int flags) {
    constexpr mode_t mode = 0666;
    if (path.empty()) return {{}, errorText(ENOENT)};
    int number = open(path.c_str(), O_RDWR | flags, mode);
    // Reading is a help only: see endsInsideLine().
    if (number < 0 && errno == EACCES) number = open(path.c_str(), O_WRONLY | flags, mode);
    if (number < 0) return {{}, errno == ELOOP ? "Is a symbolic link" : errorText(errno)};
    OpenedDescriptor opened{FileDescriptor(number), {}};
    opened.problem = problemWith(opened.file);
    return opened;
}

}  // namespace

FileProblem LinuxFileHandle::seekToEndOfFile() {
    return lseek(file_.get(), 0, SEEK_END) < 0 ? errorText(errno) : FileProblem();
}

bool LinuxFileHandle::endsInsideLine() {
    struct stat status {};
    char last = '\n';
    return fstat(file_.get(), &status) == 0 && status.st_size > 0 &&
           pread(file_.get(), &last, 1, status.st_size - 1) == 1 && last != '\n';
}

FileProblem LinuxFileHandle::writeData(std::string_view data) {
    std::size_t written = 0;
    while (written < data.size()) {
        const ssize_t count = write(file_.get(), data.data() + written, data.size() - written);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) {
            const FileProblem problem = errorText(count < 0 ? errno : ENOSPC);
            takeBack(written);
            return problem;
        }
        written += static_cast<std::size_t>(count);
    }
    return {};
}

void LinuxFileHandle::takeBack(std::size_t length) const {
    struct stat status {};
    const auto size = static_cast<off_t>(length);
    if (size == 0 || fstat(file_.get(), &status) != 0 || status.st_size < size) return;
    // Where even this fails the next line is begun after a line end.
    static_cast<void>(ftruncate(file_.get(), status.st_size - size) == 0);
}

FileProblem LinuxFileHandle::synchronizeFile() {
    while (fdatasync(file_.get()) != 0) {
        // A file system that has no such thing has taken the data all the same.
        if (errno == EINVAL || errno == ENOSYS) break;
        if (errno != EINTR) return errorText(errno);
    }
    return {};
}

bool LinuxFileHandles::fileExistsAtPath(const std::string& path) {
    struct stat status {};
    return lstat(path.c_str(), &status) == 0;
}

FileProblem LinuxFileHandles::createFileAtPath(const std::string& path) {
    const OpenedDescriptor opened = openRegularFile(path, O_CREAT | appending);
    if (!opened.problem.empty()) return opened.problem;
    // Emptied only now: what it is has been looked at.
    return ftruncate(opened.file.get(), 0) == 0 ? FileProblem() : errorText(errno);
}

OpenedFile LinuxFileHandles::fileHandleForWritingToURL(const std::string& url) {
    OpenedDescriptor opened = openRegularFile(pathOfFileURL(url), appending);
    if (!opened.problem.empty()) return {nullptr, std::move(opened.problem)};
    return {std::make_unique<LinuxFileHandle>(std::move(opened.file)), {}};
}

}  // namespace calorivo
