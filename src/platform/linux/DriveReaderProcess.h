#pragma once

#include "platform/linux/DriveRead.h"
#include "platform/linux/DriveReading.h"
#include "platform/linux/FileDescriptor.h"

#include <sys/types.h>

#include <optional>
#include <string>
#include <vector>

namespace calorivo {

/// The argument that makes a program of ours a reader of drives instead; the roots of sysfs and of the
/// devices follow it.
inline constexpr const char* driveReaderArgument = "--drive-reader";

/// For the beginning of main(): the exit code when the arguments ask for a reader, which has then done its
/// work; none for every other program.
[[nodiscard]] std::optional<int> runAsDriveReader(int argc, char* const* argv);

/// Answers on this socket until the other end closes it: each message is the name of a drive, each answer a
/// reading. False when the socket fails.
bool serveDriveReadings(int socket, const DriveRoots& roots, const DriveDevices& devices);

/// The command that starts a reader: `program` with its arguments.
[[nodiscard]] std::vector<std::string> driveReaderCommand(const std::string& program,
                                                          const DriveRoots& roots);

/// The owner's end of one reader, a child process. When it goes the process is killed; one that hangs in the
/// kernel dies when the kernel lets it.
class DriveReaderProcess {
  public:
    /// Starts it. Null when that is not possible.
    [[nodiscard]] static std::optional<DriveReaderProcess> start(const std::vector<std::string>& command);
    DriveReaderProcess(DriveReaderProcess&& other) noexcept;
    DriveReaderProcess& operator=(DriveReaderProcess&& other) noexcept;
    DriveReaderProcess(const DriveReaderProcess&) = delete;
    DriveReaderProcess& operator=(const DriveReaderProcess&) = delete;
    ~DriveReaderProcess();

    /// False when the process is gone.
    [[nodiscard]] bool ask(const std::string& drive);
    /// To wait for with poll().
    [[nodiscard]] int socket() const { return socket_.get(); }
    /// The answer that has come; none when the process is gone, or is none of this program's version.
    [[nodiscard]] std::optional<DriveReading> receive();
    void kill();
    /// True when it has ended; asks the system only once it was killed.
    [[nodiscard]] bool hasEnded();

  private:
    DriveReaderProcess(pid_t process, FileDescriptor socket)
        : process_(process), socket_(std::move(socket)) {}

    pid_t process_;
    FileDescriptor socket_;
};

}  // namespace calorivo
