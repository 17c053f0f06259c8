#include "platform/linux/LinuxFileManager.h"

#include "platform/Format.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <system_error>

namespace calorivo {

namespace {

class Descriptor {
  public:
    explicit Descriptor(int number) : number_(number) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() {
        if (number_ >= 0) close(number_);
    }
    [[nodiscard]] int number() const { return number_; }

  private:
    int number_;
};

FileContents problem(std::string reason) { return {{}, std::move(reason)}; }
FileContents systemProblem() { return problem(std::generic_category().message(errno)); }
FileContents tooLong(std::size_t limit) {
    return problem(format("Larger than %llu bytes, the most that is read", limit));
}

}  // namespace

FileContents LinuxFileManager::contentsAtPath(const std::string& path, std::size_t limit) {
    // Without waiting: opening a FIFO to which nobody writes would never end.
    const Descriptor file(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY));
    if (file.number() < 0) return systemProblem();
    struct stat status {};
    if (fstat(file.number(), &status) != 0) return systemProblem();
    if (S_ISDIR(status.st_mode)) return problem("Is a directory");
    if (!S_ISREG(status.st_mode)) return problem("Not a regular file");
    if (static_cast<std::uintmax_t>(status.st_size) > limit) return tooLong(limit);

    // The size is a hint only: the file may grow meanwhile, and files of /sys and /proc do not tell theirs.
    constexpr std::size_t step = 65536;
    FileContents contents;
    std::size_t length = 0;
    for (;;) {
        const std::size_t hint = static_cast<std::size_t>(status.st_size) + 1;
        const std::size_t room = length < hint ? hint - length : step;
        contents.text.resize(std::min(length + room, limit + 1));
        const ssize_t got = read(file.number(), contents.text.data() + length, contents.text.size() - length);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) return systemProblem();
        length += static_cast<std::size_t>(got);
        if (length > limit) return tooLong(limit);
        if (got == 0) break;
    }
    contents.text.resize(length);
    return contents;
}

}  // namespace calorivo
