#include "platform/linux/DriveReaderProcess.h"

#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <string_view>
#include <utility>

namespace calorivo {

namespace {

/// What goes over the socket. The size and the number tell a reader of another version of this program, as
/// there is one for a moment while the program is being updated.
struct Message {
    static constexpr std::uint64_t expectedVersion = 0xCA10'0002;
    std::uint64_t version = expectedVersion;
    DriveReading reading;
};

constexpr int readerSocket = 0;
constexpr std::size_t longestName = 256;

template <typename Call>
auto uninterrupted(Call call) {
    auto result = call();
    while (result < 0 && errno == EINTR) result = call();
    return result;
}

/// What a reader is started with: nothing of this process but one socket, and no say on its terminal.
class SpawnSettings {
  public:
    explicit SpawnSettings(int socket) {
        posix_spawn_file_actions_init(&actions_);
        posix_spawn_file_actions_adddup2(&actions_, socket, readerSocket);
        // Who waits for the end of this program's output must not wait for a reader that hangs.
        posix_spawn_file_actions_addopen(&actions_, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
        posix_spawn_file_actions_addopen(&actions_, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
        posix_spawn_file_actions_addclosefrom_np(&actions_, STDERR_FILENO + 1);
        posix_spawnattr_init(&attributes_);
        posix_spawnattr_setflags(&attributes_,
                                 POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETPGROUP);
        sigset_t signals;
        sigemptyset(&signals);
        posix_spawnattr_setsigmask(&attributes_, &signals);
        sigfillset(&signals);
        posix_spawnattr_setsigdefault(&attributes_, &signals);
    }
    ~SpawnSettings() {
        posix_spawn_file_actions_destroy(&actions_);
        posix_spawnattr_destroy(&attributes_);
    }
    SpawnSettings(const SpawnSettings&) = delete;
    SpawnSettings& operator=(const SpawnSettings&) = delete;

    [[nodiscard]] bool spawn(pid_t& process, char* const* arguments) const {
        return posix_spawn(&process, arguments[0], &actions_, &attributes_, arguments, environ) == 0;
    }

  private:
    posix_spawn_file_actions_t actions_{};
    posix_spawnattr_t attributes_{};
};

}  // namespace

bool serveDriveReadings(int socket, const DriveRoots& roots, const DriveDevices& devices) {
    for (;;) {
        std::array<char, longestName> name{};
        const ssize_t length = uninterrupted([&] { return recv(socket, name.data(), name.size(), 0); });
        if (length <= 0) return length == 0;
        Message message;
        message.reading =
            readDrive(std::string(name.data(), static_cast<std::size_t>(length)), roots, devices);
        if (uninterrupted([&] { return send(socket, &message, sizeof message, MSG_NOSIGNAL); }) < 0)
            return false;
    }
}

std::optional<int> runAsDriveReader(int argc, char* const* argv) {
    constexpr int argumentCount = 4;
    if (argc != argumentCount || std::string_view(argv[1]) != driveReaderArgument) return std::nullopt;
    return serveDriveReadings(readerSocket, {argv[2], argv[3]}, systemDriveDevices()) ? 0 : 1;
}

std::vector<std::string> driveReaderCommand(const std::string& program, const DriveRoots& roots) {
    return {program, driveReaderArgument, roots.sys, roots.dev};
}

std::optional<DriveReaderProcess> DriveReaderProcess::start(const std::vector<std::string>& command) {
    std::array<int, 2> ends{};
    if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends.data()) != 0) return std::nullopt;
    FileDescriptor own(ends[0]);
    const FileDescriptor other(ends[1]);
    std::vector<std::string> words = command;
    std::vector<char*> arguments;
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    pid_t process = 0;
    if (!SpawnSettings(other.get()).spawn(process, arguments.data())) return std::nullopt;
    return DriveReaderProcess(process, std::move(own));
}

DriveReaderProcess::DriveReaderProcess(DriveReaderProcess&& other) noexcept
    : process_(std::exchange(other.process_, 0)), socket_(std::move(other.socket_)) {}

DriveReaderProcess& DriveReaderProcess::operator=(DriveReaderProcess&& other) noexcept {
    std::swap(process_, other.process_);
    std::swap(socket_, other.socket_);
    return *this;
}

DriveReaderProcess::~DriveReaderProcess() {
    if (process_ == 0) return;
    kill();
    static_cast<void>(hasEnded());
}

bool DriveReaderProcess::ask(const std::string& drive) {
    const ssize_t sent = uninterrupted(
        [&] { return send(socket_.get(), drive.data(), drive.size(), MSG_NOSIGNAL | MSG_DONTWAIT); });
    return sent == static_cast<ssize_t>(drive.size());
}

std::optional<DriveReading> DriveReaderProcess::receive() {
    Message message;
    const ssize_t length = uninterrupted(
        [&] { return recv(socket_.get(), &message, sizeof message, MSG_DONTWAIT | MSG_TRUNC); });
    if (length != static_cast<ssize_t>(sizeof message) || message.version != Message::expectedVersion)
        return std::nullopt;
    return message.reading;
}

void DriveReaderProcess::kill() {
    socket_.reset();
    if (process_ > 0) ::kill(process_, SIGKILL);
}

bool DriveReaderProcess::hasEnded() {
    if (process_ <= 0) return true;
    if (socket_.isOpen()) return false;
    const pid_t ended = uninterrupted([this] { return waitpid(process_, nullptr, WNOHANG); });
    if (ended == 0) return false;
    process_ = 0;
    return true;
}

}  // namespace calorivo
