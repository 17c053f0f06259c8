#include "platform/linux/Sysfs.h"

#include <dirent.h>
#include <linux/magic.h>
#include <sys/resource.h>
#include <sys/vfs.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <limits>

namespace calorivo {

namespace {

std::string_view withoutLineFeed(std::string_view text) {
    if (text.ends_with('\n')) text.remove_suffix(1);
    return text;
}

ssize_t readWhole(int descriptor, std::span<char> buffer) {
    ssize_t length = 0;
    do length = pread(descriptor, buffer.data(), buffer.size(), 0);
    while (length < 0 && errno == EINTR);
    return length;
}

}  // namespace

std::optional<long> parseAttributeNumber(std::string_view text) {
    text = withoutLineFeed(text);
    long number = 0;
    // As nearly all are: digits only, and too few of them to be out of range.
    if (!text.empty() && text.size() <= std::numeric_limits<long>::digits10) {
        const auto* digit = text.begin();
        for (; digit != text.end() && *digit >= '0' && *digit <= '9'; ++digit)
            number = number * 10 + (*digit - '0');
        if (digit == text.end()) return number;
    }
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return number;
}

FileDescriptor openFolder(const std::string& path) { return openFolderAt(AT_FDCWD, path.c_str()); }

FileDescriptor openFolderAt(int folder, const char* name) {
    return FileDescriptor(openat(folder, name, O_RDONLY | O_DIRECTORY | O_CLOEXEC));
}

FileDescriptor openAttribute(int folder, const char* name) {
    return FileDescriptor(openat(folder, name, O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
}

void makeRoomForDescriptors(int open, std::size_t count) {
    // The usual soft limit is for programs that wait with select(); a server with many channels needs more.
    rlimit limit{};
    if (getrlimit(RLIMIT_NOFILE, &limit) == 0 && limit.rlim_cur < count) {
        limit.rlim_cur = std::min<rlim_t>(count, limit.rlim_max);
        setrlimit(RLIMIT_NOFILE, &limit);
    }
    // More than the process may have is refused, and does no harm.
    const FileDescriptor last(fcntl(open, F_DUPFD_CLOEXEC, static_cast<int>(count) - 1));
}

std::optional<std::string> readAttribute(int folder, const char* name) {
    const FileDescriptor file = openAttribute(folder, name);
    if (!file.isOpen()) return std::nullopt;
    std::array<char, 4096> buffer;  // NOLINT(cppcoreguidelines-pro-type-member-init): filled by the read
    const ssize_t length = readWhole(file.get(), buffer);
    if (length < 0) return std::nullopt;
    return std::string(withoutLineFeed({buffer.data(), static_cast<std::size_t>(length)}));
}

std::optional<long> readAttributeNumber(int folder, const char* name) {
    const FileDescriptor file = openAttribute(folder, name);
    if (!file.isOpen()) return std::nullopt;
    const AttributeReading reading = readOpenNumber(file.get());
    return reading.error == 0 ? std::optional(reading.value) : std::nullopt;
}

std::uint32_t readAttributeHex(int folder, const char* name) {
    const auto text = readAttribute(folder, name);
    if (!text || !text->starts_with("0x")) return 0;
    std::uint32_t number = 0;
    std::from_chars(text->data() + 2, text->data() + text->size(), number, 16);
    return number;
}

AttributeReading readOpenNumber(int descriptor) {
    std::array<char, 32> buffer;  // NOLINT(cppcoreguidelines-pro-type-member-init): filled by the read
    const ssize_t length = readWhole(descriptor, buffer);
    if (length < 0) return {0, errno};
    const auto number = parseAttributeNumber({buffer.data(), static_cast<std::size_t>(length)});
    return number ? AttributeReading{*number, 0} : AttributeReading{0, EINVAL};
}

std::vector<std::string> namesInFolder(int folder) {
    // Straight from the kernel: a directory stream of the C library takes five more calls for each folder.
    std::vector<std::string> names;
    constexpr std::size_t usually = 32;
    names.reserve(usually);
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): filled by the call
    alignas(dirent64) std::array<char, 32768> buffer;
    ssize_t length = getdents64(folder, buffer.data(), buffer.size());
    if (length == 0) {
        // Every folder lists at least itself: this one has been listed before, and stands at its end.
        lseek(folder, 0, SEEK_SET);
        length = getdents64(folder, buffer.data(), buffer.size());
    }
    for (; length > 0; length = getdents64(folder, buffer.data(), buffer.size())) {
        for (ssize_t at = 0; at < length;) {
            const auto* const entry = reinterpret_cast<const dirent64*>(buffer.data() + at);
            const std::string_view name(entry->d_name);
            if (name != "." && name != "..") names.emplace_back(name);
            at += entry->d_reclen;
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::optional<std::string> linkTarget(int folder, const char* name) {
    std::array<char, 4096> buffer;  // NOLINT(cppcoreguidelines-pro-type-member-init): filled by the call
    const ssize_t length = readlinkat(folder, name, buffer.data(), buffer.size());
    if (length < 0) return std::nullopt;
    return std::string(buffer.data(), static_cast<std::size_t>(length));
}

std::string joinedPath(std::string_view folder, std::string_view relative) {
    std::string path(relative.starts_with('/') ? std::string_view() : folder);
    while (path.ends_with('/')) path.pop_back();
    while (!relative.empty()) {
        const std::size_t slash = relative.find('/');
        const std::string_view part = relative.substr(0, slash);
        relative = slash == std::string_view::npos ? std::string_view() : relative.substr(slash + 1);
        if (part.empty() || part == ".") continue;
        if (part == "..")
            path.resize(path.rfind('/') == std::string::npos ? 0 : path.rfind('/'));
        else
            path.append("/").append(part);
    }
    return path;
}

std::string_view lastComponent(std::string_view path) { return path.substr(path.rfind('/') + 1); }

bool isRealSysfs(int folder) {
    struct statfs info {};
    return fstatfs(folder, &info) == 0 && info.f_type == SYSFS_MAGIC;
}

}  // namespace calorivo
