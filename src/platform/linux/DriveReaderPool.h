#pragma once

#include "platform/linux/DriveReaderProcess.h"
#include "platform/linux/DriveReaders.h"
#include "platform/linux/SleepWatch.h"

#include <chrono>
#include <cstddef>
#include <span>
#include <string>
#include <vector>

namespace calorivo {

struct DriveReaderOptions {
    /// What starts a reader, as driveReaderCommand() gives it.
    std::vector<std::string> command;
    /// How long one read() may take; twice that when the machine sleeps in the middle of it.
    std::chrono::nanoseconds patience = std::chrono::milliseconds(500);
    /// How long a drive may take before it is given up.
    std::chrono::nanoseconds deadline = std::chrono::seconds(10);
    /// How many drives are read at the same time.
    std::size_t atOnce = 4;
    /// How long the machine has slept so far.
    MachineClocks::Clock asleep = timeAsleep;
};

/// Reads drives in child processes: a process that hangs in the kernel for a drive's sake can be left behind,
/// and this one still ends at once, which it could not with a thread that hangs. Readers are started when
/// there is work for them and serve all drives, one after another; a drive that takes longer than the
/// patience keeps its reader to itself, one beyond the deadline has it killed. A drive is not asked again
/// before the reader that hung on it has died: there is never more than one for a drive. What a reader was
/// asked before a sleep of the machine is asked again after it.
class DriveReaderPool final : public DriveReaders {
  public:
    explicit DriveReaderPool(DriveReaderOptions options)
        : options_(std::move(options)), sleepWatch_(options_.asleep) {}

    [[nodiscard]] std::vector<DriveAnswer> read(std::span<const DriveRequest> requests) override;
    /// How many processes there are, dying ones included.
    [[nodiscard]] std::size_t processCount() const { return readers_.size(); }

  private:
    /// Stands still while the machine sleeps: no reader is late for that.
    using Clock = std::chrono::steady_clock;
    static constexpr std::size_t nowhere = static_cast<std::size_t>(-1);

    struct Reader {
        DriveReaderProcess process;
        /// The identity of the drive that it is at; empty when it has nothing to do.
        std::string drive{};
        Clock::time_point since{};
        /// The request that its answer is for, if any.
        std::size_t place = nowhere;
        /// It was given that request in this round: the round ends when it has answered.
        bool isAwaited = false;
        /// The machine has slept since it was asked: its answer may be from before.
        bool isOutdated = false;
        bool isKilled = false;
    };
    struct Round;

    [[nodiscard]] std::vector<DriveAnswer> readOnce(std::span<const DriveRequest> requests);
    /// True when the machine has slept since the last time.
    bool noteSleep();
    void removeEnded();
    void takeUpEarlierReadings(Round& round);
    void assign(Round& round);
    [[nodiscard]] bool assignTo(Reader& reader, const DriveRequest& request, std::size_t place);
    void settle(Round& round, Reader& reader);
    void wait(Round& round, Clock::time_point until);
    void giveUpOverdue(Round& round);

    DriveReaderOptions options_;
    SleepWatch sleepWatch_;
    std::vector<Reader> readers_;
};

}  // namespace calorivo
