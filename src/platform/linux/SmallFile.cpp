#include "platform/linux/SmallFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string_view>
#include <system_error>

namespace calorivo {
namespace {

SmallFile unusable(std::string reason) {
    SmallFile file;
    file.state = SmallFile::State::unusable;
    file.reason = std::move(reason);
    return file;
}

SmallFile readOpened(int descriptor, std::size_t limit) {
    struct stat status {};
    if (::fstat(descriptor, &status) != 0) return unusable(errorText(errno));
    if (S_ISDIR(status.st_mode)) return unusable("it is a folder");
    if (!S_ISREG(status.st_mode)) return unusable("it is no regular file");
    const std::string tooLong = "it is longer than " + std::to_string(limit) + " bytes";
    if (status.st_size > static_cast<off_t>(limit)) return unusable(tooLong);

    SmallFile file;
    file.state = SmallFile::State::read;
    // One byte more than expected, so that the end is seen by the second call; a file that grows meanwhile
    // makes the loop go on.
    file.text.resize(static_cast<std::size_t>(status.st_size) + 1);
    std::size_t length = 0;
    for (;;) {
        const ssize_t count = ::read(descriptor, file.text.data() + length, file.text.size() - length);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return unusable(errorText(errno));
        if (count == 0) break;
        length += static_cast<std::size_t>(count);
        if (length > limit) return unusable(tooLong);
        if (length == file.text.size()) file.text.resize(length * 2);
    }
    file.text.resize(length);
    return file;
}

}  // namespace

std::string errorText(int error) { return std::generic_category().message(error); }

SmallFile readSmallFile(const std::string& path, SymbolicLinks links, std::size_t limit) {
    const int noLinks = links == SymbolicLinks::refused ? O_NOFOLLOW : 0;
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY | noLinks);
    if (descriptor < 0) {
        if (errno == ENOENT) return {};
        if (errno == ELOOP && links == SymbolicLinks::refused) return unusable("it is a symbolic link");
        return unusable(errorText(errno));
    }
    SmallFile file = readOpened(descriptor, limit);
    ::close(descriptor);
    return file;
}

}  // namespace calorivo
