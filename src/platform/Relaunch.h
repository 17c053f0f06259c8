#pragma once

#include <cstdint>
#include <string>
#include <vector>

// Starting the program anew, and what belongs to it. Each request carries what is to be done as data, and as
// the text of a shell that would do it. Where a path cannot safely be a part of a shell's text, the data is
// carried out instead.

namespace calorivo {

/// A search among the running programs.
struct RunningSearch {
    std::string destination;
    /// Its exit status 0 means that one runs.
    std::string shellCommand;
    friend bool operator==(const RunningSearch&, const RunningSearch&) = default;
};

/// How far the mark of a downloaded file is to be taken off the program.
enum class QuarantineRemoval { none, topOnly, recursive };

/// Waiting until a process has gone, then opening a program.
struct OpenAfterExit {
    std::int32_t processIdentifier = 0;
    QuarantineRemoval quarantineRemoval = QuarantineRemoval::none;
    std::string destination;
    std::string shellCommand;
    friend bool operator==(const OpenAfterExit&, const OpenAfterExit&) = default;
};

/// Giving back, after five seconds, the disk image that is mounted on a folder.
struct DetachLater {
    std::string folder;
    std::string shellCommand;
    friend bool operator==(const DetachLater&, const DetachLater&) = default;
};

/// Starts programs that outlive this one, and ends this one. Main thread.
class Relaunch {
  public:
    Relaunch() = default;
    Relaunch(const Relaunch&) = delete;
    Relaunch& operator=(const Relaunch&) = delete;
    virtual ~Relaunch() = default;

    [[nodiscard]] virtual std::int32_t processIdentifier() const = 0;
    [[nodiscard]] virtual bool isRunning(const RunningSearch& search) = 0;
    /// The executable of each running application.
    [[nodiscard]] virtual std::vector<std::string> runningApplicationExecutablePaths() = 0;
    /// Opens the program and waits until it was handed over.
    virtual void open(const std::string& path) = 0;
    virtual void openAfterExit(const OpenAfterExit& request) = 0;
    virtual void detachLater(const DetachLater& request) = 0;
    /// Ends this process at once. Where it returns nevertheless, nothing more is to be done.
    virtual void exit(std::int32_t status) = 0;
};

}  // namespace calorivo
