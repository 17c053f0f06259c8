#pragma once

#include "monitor/CyclePorts.h"
#include "output/LogFileFailures.h"
#include "platform/Dispatch.h"
#include "platform/FileHandle.h"
#include "platform/Property.h"
#include "platform/SystemLog.h"
#include "platform/TryLock.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace calorivo {

/// What the writer works with. All must outlive it but the log queue, which is to be destroyed first.
struct LogWriterParts {
    const Dispatch& dispatch;
    Queue& logQueue;
    FileHandles& files;
    SystemLog& systemLog;
    /// Read by the log queue while it holds the lock.
    const Property<std::string>& logFileURL;
    TryLock& logURLLock;
    /// Called on the log queue when a failure has been told; may be empty.
    std::function<void()> failed;
};

/// Appends lines to the log on the log queue, in the order in which they were requested: each with an opening
/// and a synchronisation of its own, so that a crash costs the line that is being written at most. While the
/// disk keeps the queue waiting, `mostWaitingLines` are kept; those that come on top of them are dropped and
/// counted. A line that cannot be written is lost, and the next one is tried anew. Any thread.
class LogWriter final : public CycleLog {
  public:
    static constexpr std::size_t mostWaitingLines = 1000;

    explicit LogWriter(LogWriterParts parts);

    void logStringIncludeDateTime(std::shared_ptr<const CSVRow> row,
                                  IncludeDateTime includeDateTime) override;
    /// The same for a line that does not change any more.
    void logStringIncludeDateTime(std::string line, IncludeDateTime includeDateTime);

    /// The lines dropped because too many were waiting.
    [[nodiscard]] std::uint64_t droppedLines() const { return droppedLines_; }
    /// The lines for which the file could not be opened or written.
    [[nodiscard]] std::uint64_t failedLines() const { return failedLines_; }

  private:
    /// Log queue.
    void write(const CSVRow& row, IncludeDateTime includeDateTime);
    [[nodiscard]] FileProblem appendToFile(const CSVRow& row, IncludeDateTime includeDateTime);
    [[nodiscard]] std::string lineOf(const CSVRow& row, IncludeDateTime includeDateTime) const;
    void drop();

    LogWriterParts parts_;
    LogFileFailures failures_;
    std::atomic<std::size_t> waitingLines_ = 0;
    std::atomic<std::uint64_t> droppedLines_ = 0;
    std::atomic<std::uint64_t> failedLines_ = 0;
};

}  // namespace calorivo
