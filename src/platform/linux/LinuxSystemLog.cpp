#include "platform/linux/LinuxSystemLog.h"

#include "platform/Format.h"
#include "platform/Utf8.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <ctime>
#include <utility>

namespace calorivo {

namespace {

/// Below what a pipe and every log take in one piece, with the name and the time before it.
constexpr std::size_t longestLine = 2000;
/// Facility "user", importance "info".
constexpr int importance = 6;
constexpr int priority = 1 * 8 + importance;

bool isJournal(int descriptor, const std::string& journalStream) {
    struct stat status {};
    if (journalStream.empty() || fstat(descriptor, &status) != 0) return false;
    return journalStream == format("%llu:%llu", status.st_dev, status.st_ino);
}

/// The head of a line as log daemons expect it, with the month in English whatever the locale is.
std::string header(const std::string& identifier) {
    constexpr std::array<const char*, 12> months{"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                 "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    return format("<%d>%@ %2d %02d:%02d:%02d %@[%d]: ", priority,
                  months.at(static_cast<std::size_t>(local.tm_mon)), local.tm_mday, local.tm_hour,
                  local.tm_min, local.tm_sec, identifier, getpid());
}

FileDescriptor connectedSocket(const std::string& path) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.empty() || path.size() >= sizeof address.sun_path) return {};
    std::memcpy(address.sun_path, path.data(), path.size());
    FileDescriptor descriptor(socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    if (!descriptor.isOpen()) return {};
    const auto* const where = static_cast<const sockaddr*>(static_cast<const void*>(&address));
    if (connect(descriptor.get(), where, sizeof address) != 0) return {};
    return descriptor;
}

}  // namespace

std::string systemLogLine(std::string_view text) {
    std::string line;
    while (!text.empty()) {
        const Utf8Character next = firstCharacter(text);
        const std::size_t length = next.isValid ? next.length : 1;
        const bool isControl = next.code < U' ' || (next.code >= U'\x7F' && next.code <= U'\x9F') ||
                               next.code == U'\u2028' || next.code == U'\u2029';
        const std::string_view shown = !next.isValid ? "\uFFFD" : isControl ? " " : text.substr(0, length);
        if (line.size() + shown.size() > longestLine) break;
        line += shown;
        text.remove_prefix(length);
    }
    return line;
}

LinuxSystemLog::LinuxSystemLog(SystemLogTargets targets)
    : targets_(std::move(targets)),
      isStandardErrorJournal_(isJournal(targets_.standardError, targets_.journalStream)),
      isStandardErrorTerminal_(isatty(targets_.standardError) == 1) {}

void LinuxSystemLog::log(std::string_view line) {
    const std::string text = systemLogLine(line);
    const std::lock_guard guard(lock_);
    if (isStandardErrorJournal_) {
        print(format("<%d>%@\n", importance, text));
        return;
    }
    const bool isTaken = sendToSystem(text);
    if (!isTaken || isStandardErrorTerminal_) print(format("%@: %@\n", targets_.identifier, text));
}

bool LinuxSystemLog::sendToSystem(const std::string& line) {
    const std::string message = header(targets_.identifier) + line;
    // Twice: the log daemon may have been started anew since the last line.
    for (int attempt = 0; attempt < 2; ++attempt) {
        if (!socket_.isOpen()) socket_ = connectedSocket(targets_.socket);
        if (!socket_.isOpen()) return false;
        if (send(socket_.get(), message.data(), message.size(), MSG_NOSIGNAL | MSG_DONTWAIT) >= 0)
            return true;
        // A log that is busy takes no more for now; the connection is good.
        if (errno == EAGAIN || errno == ENOBUFS) return false;
        socket_.reset();
    }
    return false;
}

void LinuxSystemLog::print(const std::string& text) const {
    // What takes a line now takes it whole: it is shorter than the room that a pipe then has.
    pollfd stream{targets_.standardError, POLLOUT, 0};
    // A stream whose reader is gone would end the process.
    if (poll(&stream, 1, 0) != 1 || stream.revents != POLLOUT) return;
    [[maybe_unused]] const ssize_t ignored = write(targets_.standardError, text.data(), text.size());
}

}  // namespace calorivo
