#include "support/OpenedFiles.h"

#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <cstddef>
#include <cstring>
#include <filesystem>
#include <stdexcept>

namespace calorivo::test {

OpenedFiles::OpenedFiles(const std::string& folder) : descriptor_(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
    if (descriptor_ < 0) throw std::runtime_error("no inotify");
    watch(folder, "");
    // Watching folders has opened them, and nothing else.
    static_cast<void>(take());
}

OpenedFiles::~OpenedFiles() { close(descriptor_); }

void OpenedFiles::watch(const std::string& folder, const std::string& prefix) {
    const int number = inotify_add_watch(descriptor_, folder.c_str(), IN_OPEN | IN_ACCESS);
    if (number < 0) throw std::runtime_error("inotify watches no folder: " + folder);
    prefixes_[number] = prefix;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        if (entry.is_directory() && !entry.is_symlink())
            watch(entry.path().string(), prefix + entry.path().filename().string() + '/');
}

std::set<std::string> OpenedFiles::take() {
    std::set<std::string> opened;
    std::array<char, 65536> buffer{};
    for (;;) {
        const ssize_t length = read(descriptor_, buffer.data(), buffer.size());
        if (length <= 0) return opened;
        for (std::size_t at = 0; at < static_cast<std::size_t>(length);) {
            inotify_event event{};
            std::memcpy(&event, buffer.data() + at, sizeof event);
            if ((event.mask & IN_Q_OVERFLOW) != 0) throw std::runtime_error("inotify lost events");
            if ((event.mask & IN_ISDIR) == 0 && event.len > 0)
                opened.insert(prefixes_.at(event.wd) + (buffer.data() + at + sizeof event));
            at += sizeof event + event.len;
        }
    }
}

}  // namespace calorivo::test
