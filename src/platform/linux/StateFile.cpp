#include "platform/linux/StateFile.h"

#include "platform/linux/SmallFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>

namespace calorivo {
namespace {

bool writeAll(int descriptor, std::string_view text) {
    while (!text.empty()) {
        const ssize_t count = ::write(descriptor, text.data(), text.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return false;
        text.remove_prefix(static_cast<std::size_t>(count));
    }
    return ::fsync(descriptor) == 0;
}

/// So that the new name survives a power failure. Some file systems cannot do it; the file is whole anyway.
void syncFolder(const std::string& folder) {
    const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) return;
    ::fsync(descriptor);
    ::close(descriptor);
}

}  // namespace

std::string createPrivateFolder(const std::string& folder) {
    std::size_t end = 0;
    do {
        end = folder.find('/', end + 1);
        const std::string part = folder.substr(0, end);
        if (::mkdir(part.c_str(), 0700) == 0 || errno == EEXIST) continue;
        const int error = errno;
        // A parent that exists may be on a read-only system, which is no failure yet.
        struct stat status {};
        if (::stat(part.c_str(), &status) != 0) return errorText(error);
    } while (end != std::string::npos);
    return {};
}

std::string replaceFile(const std::string& folder, const std::string& name, std::string_view text) {
    const std::string path = folder + '/' + name;
    std::string temporary = path + ".XXXXXX";
    const int descriptor = ::mkostemp(temporary.data(), O_CLOEXEC);
    if (descriptor < 0) return errorText(errno);
    std::string reason;
    if (!writeAll(descriptor, text)) reason = errorText(errno);
    if (::close(descriptor) != 0 && reason.empty()) reason = errorText(errno);
    if (reason.empty() && ::rename(temporary.c_str(), path.c_str()) != 0) reason = errorText(errno);
    if (reason.empty())
        syncFolder(folder);
    else
        ::unlink(temporary.c_str());
    return reason;
}

}  // namespace calorivo
